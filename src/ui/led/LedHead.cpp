// SPDX-License-Identifier: MIT
#include "ui/led/LedHead.h"

#include <QDir>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QLabel>
#include <QPushButton>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/TopicOf.h"
#include "ui/led/Metrics.h"

namespace kestrin::ui::led {

LedHead::LedHead(const kit::Pictures& pictures, const QString& programFolder, QWidget* parent)
    : QWidget(parent),
      m_programFolder(programFolder),
      m_notice(kit::MakeLabel(QStringLiteral("LEDNotice"), kit::TextStyle::Plain, QString(), this)) {
  QLabel* const caption = kit::MakeLabel(QStringLiteral("LEDCaption"), kit::TextStyle::Title, tr(kCaption), this);
  m_notice->setWordWrap(true);
  // The name of a file, however long, must not widen the window.
  m_notice->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  // The theme's colour for what went wrong.
  m_notice->setForegroundRole(QPalette::BrightText);
  m_bringBack = MakeButton("btnBringBackLED", tr("Bring back unsent pulses"), &LedHead::bringBackRequested);
  m_bringBack->setToolTip(tr("Show the pulses that were on this page before the board came online"));
  m_bringBack->hide();
  m_open = MakeButton("btnOpenLED", tr("Open settings"), &LedHead::openRequested);
  m_open->setAccessibleName(tr("Open LED settings"));
  AddPicture(*m_open, pictures, QStringLiteral("open"));
  m_save = MakeButton("btnSaveLED", tr("Save settings"), &LedHead::saveRequested);
  m_save->setAccessibleName(tr("Save the LED settings"));
  AddPicture(*m_save, pictures, QStringLiteral("save"));
  SetShortcut(*m_save, QKeySequence::Save);
  SetOnline(false);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kit::kGrid);
  row->addWidget(caption);
  row->addSpacing(kit::kGrid);
  row->addWidget(m_notice, 1);
  row->addWidget(m_bringBack);
  row->addWidget(m_open);
  row->addWidget(m_save);
}

QPushButton* LedHead::MakeButton(const char* name, const QString& text, void (LedHead::*signal)()) {
  auto* const button = new QPushButton(text, this);
  button->setObjectName(QLatin1String(name));
  kit::SetHelpContext(*button, kit::HelpContext::LedSettings);
  connect(button, &QPushButton::clicked, this, signal);
  return button;
}

void LedHead::AddPicture(QPushButton& button, const kit::Pictures& pictures, const QString& picture) {
  button.setIcon(pictures.Icon(picture + QStringLiteral(".bmp"), picture + QStringLiteral("_off.bmp")));
  button.setIconSize({kPicture, kPicture});
}

void LedHead::SetShortcut(QPushButton& button, const QKeySequence& keys) {
  button.setShortcut(keys);
  const QString purpose = button.accessibleName();
  button.setToolTip(keys.isEmpty() ? purpose : tr("%1 (%2)").arg(purpose, keys.toString(QKeySequence::NativeText)));
}

void LedHead::ShowNotice(const QString& text) {
  // The file stands where it always does; what is wrong in it must be in sight.
  QString shown = text;
  m_notice->setText(shown.remove(m_programFolder + QDir::separator()));
  m_notice->setToolTip(text);
}

void LedHead::OfferBringBack(bool offered) { m_bringBack->setVisible(offered); }

void LedHead::SetOnline(bool online) {
  // Without an LED driver this key opens a sound set, which takes the page's place.
  SetShortcut(*m_open, online ? QKeySequence(QKeySequence::Open) : QKeySequence());
}

}  // namespace kestrin::ui::led
