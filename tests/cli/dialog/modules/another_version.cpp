#include "ui/toolkit_module.h"

extern "C" krnqb::ui::MakeToolkitFunction KrnqbMakeToolkit;

const char* KrnqbMakeToolkit(const char* /*programVersion*/, krnqb::ui::MadeToolkit* /*made*/) noexcept {
  return "0.9.7";
}
