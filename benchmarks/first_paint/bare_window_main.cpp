// SPDX-License-Identifier: MIT
// A window with a line of text and nothing else, linked with everything that the program is linked with.

#include <QApplication>
#include <QLabel>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QLabel window("Press F1 for help");
  window.resize(1180, 760);
  window.show();
  return QApplication::exec();
}
