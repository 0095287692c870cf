// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>

namespace kestrin::ui::window {

/// The application, which turns a mishap in any event handler into a message instead of ending.
class Application : public QApplication {
  Q_OBJECT

 public:
  Application(int& argc, char** argv);

  bool notify(QObject* receiver, QEvent* event) override;

 signals:
  /// Something went wrong; the text is for the person.
  void mishap(const QString& text);
};

}  // namespace kestrin::ui::window
