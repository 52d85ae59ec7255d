#include <gtest/gtest.h>

#include "ui/qt/toolkit.h"

// All tests share one application, created by the first toolkit.
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const auto application = krnqb::ui::qt::QtToolkit();
  return RUN_ALL_TESTS();
}
