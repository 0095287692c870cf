// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

namespace kestrin::ui::window {

/// What the button "Help" offers: the help itself, and the connection doctor.
class HelpMenu : public QMenu {
  Q_OBJECT

 public:
  explicit HelpMenu(QWidget* parent = nullptr);

  /// Adds the entry of the connection doctor. It cannot be used for this reason, which it then gives; "" when it can.
  void OfferDoctor(const QString& whyNot);

 signals:
  void helpRequested();
  void doctorRequested();

 private:
  QAction* m_doctor;
};

}  // namespace kestrin::ui::window
