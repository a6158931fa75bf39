#include <gtest/gtest.h>

#include "qt/Application.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const loader::Application application(argc, argv);
  return RUN_ALL_TESTS();
}
