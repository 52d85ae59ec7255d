#include <gtest/gtest.h>

#include "ui/qt/module_toolkit.h"

// All tests share one application, created by the first toolkit.
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const auto application = krnqb::ui::qt::tests::ModuleToolkit();
  return RUN_ALL_TESTS();
}
