// SPDX-License-Identifier: MIT
#include "ui/window/Application.h"

#include <exception>

namespace kestrin::ui::window {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    emit mishap(
        tr("Something went wrong: %1\nThe board was left as it is. Save your set, then start the program again.")
            .arg(QString::fromLocal8Bit(error.what())));
  }
  return false;
}

}  // namespace kestrin::ui::window
