// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QApplication>
#include <QByteArray>
#include <QStandardPaths>

/// The one QApplication that all tests of a program share. Without a wish in QT_QPA_PLATFORM nothing is shown, so that
/// the tests run on machines without a display; the person's own settings and data folders are never touched.
int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleMock(&argc, argv);
  QStandardPaths::setTestModeEnabled(true);
  QApplication application(argc, argv);
  // A test that closes its last window has not ended the program.
  QApplication::setQuitOnLastWindowClosed(false);
  return RUN_ALL_TESTS();
}
