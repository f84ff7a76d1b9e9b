// SPDX-License-Identifier: MIT
// The main function of test programs that open windows. They appear on no screen, and the toolkit
// keeps what it remembers of them in a folder that goes when the program ends.
#include <gtest/gtest.h>

#include "support/ModalScript.h"
#include "support/TemporaryTree.h"

static Application* gApplication = nullptr;

Application& TestApplication() {
  return *gApplication;
}

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  const TemporaryTree home;
  ::setenv("HOME", home.Path().c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", home.Path("config").c_str(), 1);
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // of programs behind the helper's wall
  QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  Application application(argc, argv, [] { return false; });
  gApplication = &application;
  return RUN_ALL_TESTS();
}
