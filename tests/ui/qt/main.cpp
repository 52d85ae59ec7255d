#include <gtest/gtest.h>

#include "ui/qt/toolkit.h"

// One application for all tests; the toolkit that comes first makes it.
int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  const auto application = krnqb::ui::qt::QtToolkit();
  return RUN_ALL_TESTS();
}
