// SPDX-License-Identifier: MIT
#include "ui/window/HelpMenu.h"

namespace kestrin::ui::window {

HelpMenu::HelpMenu(QWidget* parent) : QMenu(parent) {
  setObjectName("HelpMenu");
  setToolTipsVisible(true);
  // The key is written here and not bound: wherever it is pressed, it opens what belongs to that place.
  QAction* const help = addAction(tr("&Help") + "\tF1");
  help->setObjectName("HelpAction");
  help->setToolTip(tr("What the program does, and how"));
  connect(help, &QAction::triggered, this, &HelpMenu::helpRequested);
  m_doctor = addAction(tr("&Connection ..."));
  m_doctor->setObjectName("ConnectionAction");
  m_doctor->setVisible(false);
  connect(m_doctor, &QAction::triggered, this, &HelpMenu::doctorRequested);
  m_about = addAction(tr("&About Kestrin Launcher ..."));
  m_about->setObjectName("AboutAction");
  m_about->setToolTip(tr("Version, licence, libraries, and where your data lies"));
  m_about->setVisible(false);
  connect(m_about, &QAction::triggered, this, &HelpMenu::aboutRequested);
}

void HelpMenu::OfferAbout() { m_about->setVisible(true); }

void HelpMenu::OfferDoctor(const QString& whyNot) {
  m_doctor->setVisible(true);
  m_doctor->setEnabled(whyNot.isEmpty());
  m_doctor->setToolTip(whyNot.isEmpty() ? tr("Whether the board is found, and what to do when it is not") : whyNot);
}

}  // namespace kestrin::ui::window
