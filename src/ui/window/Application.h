// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <filesystem>

namespace kestrin::ui::window {

/// The application, which turns a mishap in any event handler into a message instead of ending. The message comes once
/// that handler is left: a timer whose handler waits for the person would not run again until then.
class Application : public QApplication {
  Q_OBJECT

 public:
  Application(int& argc, char** argv);

  bool notify(QObject* receiver, QEvent* event) override;

 signals:
  /// Something went wrong; the text is for the person. What goes wrong before everybody who hears of it is done is not
  /// told.
  void mishap(const QString& text);
  /// The desktop asks this program to open the file or folder, as that of macOS does.
  void openRequested(const std::filesystem::path& path);

 protected:
  bool event(QEvent* event) override;

 private:
  void Tell(const QString& text);

  bool m_telling = false;
};

}  // namespace kestrin::ui::window
