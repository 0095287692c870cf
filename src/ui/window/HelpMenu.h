// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

namespace kestrin::ui::window {

/// What the button "Help" offers: the help itself, the connection doctor, and what the program tells of itself.
class HelpMenu : public QMenu {
  Q_OBJECT

 public:
  explicit HelpMenu(QWidget* parent = nullptr);

  /// Adds the entry of the connection doctor. It cannot be used for this reason, which it then gives; "" when it can.
  void OfferDoctor(const QString& whyNot);
  /// Adds the entry of what the program tells of itself.
  void OfferAbout();

 signals:
  void helpRequested();
  void doctorRequested();
  void aboutRequested();

 private:
  QAction* m_doctor;
  QAction* m_about;
};

}  // namespace kestrin::ui::window
