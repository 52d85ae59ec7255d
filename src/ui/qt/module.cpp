#include <string_view>

#include "ui/qt/toolkit.h"
#include "ui/toolkit_module.h"

// The function for which the program loads this library.
extern "C" krnqb::ui::MakeToolkitFunction KrnqbMakeToolkit;

const char* KrnqbMakeToolkit(const char* programVersion, krnqb::ui::MadeToolkit* made) noexcept {
  constexpr const char* ownVersion = KRNQB_MODULE_VERSION;
  if (std::string_view(programVersion) != ownVersion) return ownVersion;
  try {
    made->toolkit = krnqb::ui::qt::QtToolkit();
  } catch (...) {
    made->failure = std::current_exception();
  }
  return ownVersion;
}
