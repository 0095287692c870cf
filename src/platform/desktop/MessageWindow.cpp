// SPDX-License-Identifier: MIT
#include "platform/desktop/MessageWindow.h"

#include <QAccessible>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QShowEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/kit/Grid.h"
#include "ui/kit/Labels.h"

namespace kestrin::platform::desktop {

namespace {

using ui::kit::kGrid;
using ui::kit::kWide;
constexpr int kNarrowest = 280;
constexpr int kWidest = 560;
/// A list shows at least so many of its lines, so that it can be told from a field.
constexpr int kFewestLines = 3;
/// What the desktop puts around a window, in height.
constexpr int kFrame = 40;

/// Two thirds of it, together with the frame.
int TallestOn(const QScreen& screen) { return screen.availableGeometry().height() * 2 / 3 - kFrame; }

}  // namespace

MessageWindow::MessageWindow(QStyle::StandardPixmap sign, const QString& text, const QString& detail, QWidget* parent)
    : QDialog(parent) {
  setObjectName("MessageWindow");
  setWindowTitle(QCoreApplication::applicationName());
  m_texts = new QWidget;
  auto* const lines = new QVBoxLayout(m_texts);
  lines->setContentsMargins(0, 0, 0, 0);
  lines->setSpacing(kGrid);
  lines->addWidget(AddText("MessageText", text));
  if (!detail.isEmpty()) lines->addWidget(AddText("MessageDetail", detail));
  lines->addStretch(1);
  m_scroll = new QScrollArea(this);
  m_scroll->setWidget(m_texts);
  m_scroll->setWidgetResizable(true);
  m_scroll->setFrameShape(QFrame::NoFrame);
  // The ground of the window, not that of a field.
  m_scroll->viewport()->setAutoFillBackground(false);
  m_texts->setAutoFillBackground(false);

  auto* const picture = new QLabel(this);
  const int side = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
  picture->setPixmap(style()->standardIcon(sign, nullptr, this).pixmap(side, side));
  auto* const top = new QHBoxLayout;
  top->setSpacing(kWide);
  top->addWidget(picture, 0, Qt::AlignTop);
  top->addWidget(m_scroll, 1);
  m_buttons = new QDialogButtonBox(this);
  connect(m_buttons, &QDialogButtonBox::clicked, this, [this](const QAbstractButton* button) {
    m_pressed = button;
    accept();
  });
  m_column = new QVBoxLayout(this);
  m_column->setContentsMargins(kWide, kWide, kWide, kWide);
  m_column->setSpacing(kWide);
  m_column->addLayout(top);
  m_column->addWidget(m_buttons);
  setAccessibleDescription(m_said.join('\n'));
  connect(new QShortcut(QKeySequence::Copy, this), &QShortcut::activated, this, &MessageWindow::CopyAll);
}

QLabel* MessageWindow::AddText(const char* name, const QString& text) {
  // Texts may have the line ends of the files that they come from.
  m_said.append(QString(text).remove(QChar::CarriageReturn));
  QLabel* const label = ui::kit::MakeLabel(name, ui::kit::TextStyle::Plain, m_said.constLast(), m_texts);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  return label;
}

void MessageWindow::SetList(const QStringList& lines) {
  m_lines = lines;
  m_list = new QListWidget(this);
  m_list->setObjectName("MessageList");
  m_list->setAccessibleName(m_said.constFirst());
  m_list->addItems(lines);
  m_list->setUniformItemSizes(true);
  // A path that is cut off names no file: it is scrolled.
  m_list->setTextElideMode(Qt::ElideNone);
  m_list->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  m_list->setSelectionMode(QAbstractItemView::NoSelection);
  auto* const copy = new QPushButton(tr("Copy the list"), this);
  copy->setObjectName("MessageCopyBtn");
  copy->setAutoDefault(false);
  connect(copy, &QPushButton::clicked, this, &MessageWindow::CopyList);
  m_column->insertWidget(1, m_list, 1);
  m_column->insertWidget(2, copy, 0, Qt::AlignLeft);
}

QPushButton& MessageWindow::AddButton(QDialogButtonBox::StandardButton button) {
  QPushButton& added = *m_buttons->addButton(button);
  // Its words say it; pictures beside them are a matter of another time.
  added.setIcon({});
  return added;
}

QPushButton& MessageWindow::AddButton(const QString& caption, QDialogButtonBox::ButtonRole role) {
  return *m_buttons->addButton(caption, role);
}

void MessageWindow::Prepare(QPushButton& enter) {
  const QRect room = screen()->availableGeometry();
  const int tallest = TallestOn(*screen());
  ensurePolished();
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this);
  const int width = WidthOfTexts(std::min(kWidest, room.width() * 2 / 3));
  const int height = m_texts->layout()->totalHeightForWidth(width);
  m_scroll->setMinimumWidth(width + scrollBar);
  // What stands around the texts has its room before them.
  m_scroll->setFixedHeight(0);
  int list = 0;
  if (m_list != nullptr) {
    const int line = m_list->sizeHintForRow(0);
    const int around = 2 * m_list->frameWidth() + scrollBar;
    m_list->setMinimumHeight(std::min(kFewestLines, m_list->count()) * line + around);
    list = m_list->count() * line + around - m_list->minimumHeight();
  }
  layout()->activate();
  const int others = layout()->totalMinimumSize().height();
  const int shown = std::min(height, std::max(fontMetrics().height(), tallest - others));
  m_scroll->setFixedHeight(shown);
  // Only what can be scrolled is worth a stop on the way from button to button.
  m_scroll->setFocusPolicy(shown < height ? Qt::StrongFocus : Qt::NoFocus);
  layout()->activate();
  setMaximumHeight(tallest);
  const QSize needed = layout()->totalSizeHint();
  resize(needed.width(), std::min(tallest, layout()->totalMinimumSize().height() + list));
  enter.setDefault(true);
  enter.setFocus();
}

void MessageWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

int MessageWindow::WidthOfTexts(int widest) const {
  int width = kNarrowest;
  for (const QString& text : m_said + m_lines)
    for (const QString& line : text.split('\n')) width = std::max(width, fontMetrics().horizontalAdvance(line) + kGrid);
  return std::min(width, widest);
}

void MessageWindow::CopyAll() const { QGuiApplication::clipboard()->setText((m_said + m_lines).join('\n')); }

void MessageWindow::CopyList() const { QGuiApplication::clipboard()->setText(m_lines.join('\n')); }

}  // namespace kestrin::platform::desktop
