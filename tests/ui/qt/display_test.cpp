#include "ui/qt/display.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <optional>

#include "krnqb/error.h"

namespace krnqb::ui::qt {
namespace {

// An environment variable of the process, restored when destroyed.
class Variable {
 public:
  Variable(const char* name, std::optional<QByteArray> value)
      : name_(name), before_(qgetenv(name)), wasSet_(qEnvironmentVariableIsSet(name)) {
    value ? qputenv(name_, *value) : qunsetenv(name_);
  }
  ~Variable() { wasSet_ ? qputenv(name_, before_) : qunsetenv(name_); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* name_;
  QByteArray before_;
  bool wasSet_;
};

std::string WhatIsMissing() {
  try {
    RequireDisplay();
    return {};
  } catch (const Error& error) {
    EXPECT_EQ(error.Number(), 429);
    return error.Description();
  }
}

TEST(Display, IsFound) {
  EXPECT_EQ(WhatIsMissing(), "");
}

TEST(Display, IsReportedMissingBeforeQtEndsTheProcess) {
  const Variable noWayland("WAYLAND_DISPLAY", std::nullopt);
  {
    const Variable none("DISPLAY", std::nullopt);
    EXPECT_EQ(WhatIsMissing(), "there is no display");
  }
  {
    const Variable empty("DISPLAY", QByteArray());
    EXPECT_EQ(WhatIsMissing(), "there is no display");
  }
  const Variable silent("DISPLAY", ":4711");
  EXPECT_EQ(WhatIsMissing(), "the display :4711 does not answer");
}

TEST(Display, IsNotCheckedIfThePlatformIsSelected) {
  const Variable none("DISPLAY", std::nullopt);
  const Variable offscreen("QT_QPA_PLATFORM", "offscreen");
  EXPECT_EQ(WhatIsMissing(), "");
}

TEST(Display, MayBeWayland) {
  const Variable none("DISPLAY", std::nullopt);
  const Variable wayland("WAYLAND_DISPLAY", "wayland-0");
  EXPECT_EQ(WhatIsMissing(), "");
}

}  // namespace
}  // namespace krnqb::ui::qt
