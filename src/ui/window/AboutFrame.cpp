// SPDX-License-Identifier: MIT
#include "ui/window/AboutFrame.h"

#include <QAccessible>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "ui/doctor/Shelf.h"
#include "ui/kit/Grid.h"
#include "ui/kit/HelpText.h"
#include "ui/kit/Labels.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Pictures.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/WrapLabel.h"

namespace kestrin::ui::window {

namespace {

using kit::kBroad;
using kit::kGrid;
using kit::kHalf;
using kit::kInset;
using kit::kWide;

constexpr int kWidth = 640;
/// The part of the right margin in which the scroll bar of a low window stands.
constexpr int kScrollRoom = kWide;
constexpr int kCloseWidth = 88;
constexpr int kLogoSide = 40;

}  // namespace

AboutFrame::AboutFrame(const kit::Pictures& pictures, QWidget* parent) : Card(parent), m_pictures(pictures) {
  setObjectName("AboutFrame");
  const QString name = tr("About Kestrin Launcher");
  setWindowTitle(name);
  setAccessibleName(name);
  kit::SetHelpContext(*this, kit::HelpContext::About);
  MakeLayout();
  hide();
}

void AboutFrame::MakeLayout() {
  auto* const facts = new QWidget;
  m_grid = new QGridLayout(facts);
  m_grid->setContentsMargins(0, 0, 0, 0);
  m_grid->setHorizontalSpacing(kWide);
  m_grid->setVerticalSpacing(kHalf);
  m_grid->setColumnStretch(1, 1);
  m_shelf = new doctor::Shelf(*facts, kWidth - 2 * kBroad + kScrollRoom, kScrollRoom, this);
  m_shelf->setObjectName("AboutShelf");
  m_shelf->setFocusPolicy(Qt::NoFocus);

  auto* const all = new QVBoxLayout(this);
  all->setContentsMargins(kBroad, kBroad, kBroad - kScrollRoom, kBroad);
  all->setSpacing(0);
  all->addWidget(MakeHead());
  all->addSpacing(kInset);
  all->addWidget(m_shelf, 1);
  all->addSpacing(kWide);
  all->addWidget(MakeFooter());
  setFixedWidth(kWidth);
}

QWidget* AboutFrame::MakeHead() {
  auto* const head = new QWidget(this);
  m_logo = kit::MakeLabel("AboutPicture", kit::TextStyle::Plain, "", head);
  m_version = kit::MakeLabel("AboutVersion", kit::TextStyle::Soft, "", head);
  m_licence = kit::MakeLabel("AboutLicence", kit::TextStyle::Soft, "", head);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(kit::kHair);
  texts->addWidget(kit::MakeLabel("AboutCaption", kit::TextStyle::Caption, tr(kCaption), head));
  texts->addWidget(m_version);
  texts->addWidget(m_licence);
  auto* const row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, kScrollRoom, 0);
  row->setSpacing(kWide);
  row->addWidget(m_logo, 0, Qt::AlignTop);
  row->addLayout(texts, 1);
  return head;
}

QWidget* AboutFrame::MakeFooter() {
  auto* const footer = new QWidget(this);
  m_copy = new QPushButton(m_pictures.Icon("copy.bmp"), tr("Copy report"), footer);
  m_copy->setObjectName("CopyAboutBtn");
  kit::SetHelp(*m_copy, tr("Copy all of this, as a text for somebody who helps"));
  m_copyHint = kit::MakeLabel("CopyAboutHint", kit::TextStyle::Soft, "", footer);
  m_copyHint->setWordWrap(true);
  m_close = new QPushButton(tr("Close"), footer);
  m_close->setObjectName("CloseAboutBtn");
  m_close->setMinimumWidth(kCloseWidth);
  kit::SetHelp(*m_close, tr("Go back to the window"));
  connect(m_copy, &QPushButton::clicked, this, &AboutFrame::Copy);
  connect(m_close, &QPushButton::clicked, this, &QWidget::hide);
  auto* const row = new QHBoxLayout(footer);
  row->setContentsMargins(0, 0, kScrollRoom, 0);
  row->setSpacing(kInset);
  row->addWidget(m_copy);
  row->addWidget(m_copyHint, 1);
  row->addWidget(m_close);
  return footer;
}

void AboutFrame::AddTitle(const QString& name, const QString& text) {
  auto* const title = kit::MakeLabel(name, kit::TextStyle::Title, text, m_grid->parentWidget());
  const int row = m_rows++;
  // Further from what stands above than from its own.
  m_grid->setRowMinimumHeight(row, title->sizeHint().height() + kGrid);
  m_grid->addWidget(title, row, 0, 1, 2, Qt::AlignBottom);
}

void AboutFrame::AddRow(const QString& what, const QString& text) {
  QWidget* const facts = m_grid->parentWidget();
  const int row = m_rows++;
  m_grid->addWidget(kit::MakeLabel("AboutWhat", kit::TextStyle::Soft, what, facts), row, 0, Qt::AlignTop);
  auto* const label = new kit::WrapLabel(facts);
  label->setObjectName("AboutText");
  label->setText(text);
  label->setAccessibleName(what + ": " + text);
  m_grid->addWidget(label, row, 1);
}

void AboutFrame::Open(const AboutFacts& facts) {
  m_report = QString::fromStdString(AboutReport(facts));
  m_logo->setPixmap(m_pictures.Pixmap("kestrin.bmp", {kLogoSide, kLogoSide}, devicePixelRatioF()));
  m_logo->setVisible(!m_logo->pixmap().isNull());
  m_version->setText(tr("Version %1").arg(QString::fromStdString(facts.version)));
  m_licence->setText(QString::fromStdString(facts.licence));
  m_copyHint->setText(tr("for a question to somebody else; nothing is sent"));

  for (; m_rows > 0; --m_rows) m_grid->setRowMinimumHeight(m_rows - 1, 0);
  qDeleteAll(m_grid->parentWidget()->findChildren<QLabel*>(Qt::FindDirectChildrenOnly));
  AddTitle("PlacesTitle", tr("Where things lie"));
  for (const AboutFacts::Place& place : facts.places)
    AddRow(QString::fromStdString(place.what), place.path.empty() ? tr("nowhere") : kit::TextOf(place.path));
  AddTitle("LibrariesTitle", tr("Libraries"));
  for (const std::string& library : facts.libraries) {
    const QString name = QString::fromStdString(library);
    const QString version = name.section(' ', 1);
    AddRow(name.section(' ', 0, 0), version.isEmpty() ? tr("tells no version") : version);
  }
  m_shelf->updateGeometry();
  m_shelf->verticalScrollBar()->setValue(0);
  show();
  m_close->setFocus();
}

void AboutFrame::Copy() {
  QGuiApplication::clipboard()->setText(m_report);
  m_copyHint->setText(tr("Copied. Paste it where you ask; nothing is sent."));
  QAccessibleEvent alert(m_copyHint, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void AboutFrame::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      hide();
      break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      // Nothing in the list takes the keyboard.
      m_shelf->verticalScrollBar()->triggerAction(event->key() == Qt::Key_PageUp ? QAbstractSlider::SliderPageStepSub
                                                                                 : QAbstractSlider::SliderPageStepAdd);
      break;
    default:
      Card::keyPressEvent(event);
  }
}

}  // namespace kestrin::ui::window
