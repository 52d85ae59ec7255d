#include "ui/application.h"

#include "ui/texts.h"

namespace krnqb::ui {

std::string_view ApplicationTitle() noexcept {
  return text::applicationTitle;
}

std::string_view ApplicationVersion() noexcept {
  return KRNQB_APPLICATION_VERSION;
}

}  // namespace krnqb::ui
