// SPDX-License-Identifier: MIT
#include "ui/sound/SoundListView.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <array>

#include "core/base/RaisedFlag.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/SoundRowDelegate.h"

namespace kestrin::ui::sound {

namespace {

/// CTRL and nothing else; the number block does not count as a key that is held.
bool IsExactlyCtrl(Qt::KeyboardModifiers held) { return (held & ~Qt::KeypadModifier) == Qt::ControlModifier; }

/// Whether the key leads from row to row.
bool IsTravel(int key) {
  constexpr std::array kKeys{Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
  return std::find(kKeys.begin(), kKeys.end(), key) != kKeys.end();
}

}  // namespace

SoundListView::SoundListView(QWidget* parent) : QListView(parent) {
  setItemDelegate(new SoundRowDelegate(this));
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setUniformItemSizes(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTextElideMode(Qt::ElideMiddle);
  setMouseTracking(true);
  setDragEnabled(true);
  setFrameShape(QFrame::NoFrame);
  // It lies on a card, whose ground and round corners stay to be seen.
  viewport()->setAutoFillBackground(false);
}

void SoundListView::SetEmptyText(const QString& text, const QString& shorter) {
  m_emptyText = text;
  m_shorterEmptyText = shorter;
  viewport()->update();
}

QList<int> SoundListView::SelectedRows() const {
  QList<int> rows;
  if (selectionModel() == nullptr) return rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.append(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void SoundListView::SelectRow(int row) {
  const QModelIndex index = model()->index(row, 0);
  if (index.isValid())
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
  else
    selectionModel()->clear();
}

void SoundListView::Place(const QList<int>& selected, int keyboard) {
  const core::base::RaisedFlag placing(m_placing);
  const int scrolled = verticalScrollBar()->value();
  QItemSelection rows;
  for (qsizetype first = 0, end = 0; first < selected.size(); first = end) {
    // Neighbours make one range: thousands of single rows would be slow to paint.
    for (end = first + 1; end < selected.size() && selected[end] == selected[end - 1] + 1;) ++end;
    rows.select(model()->index(selected[first], 0), model()->index(selected[end - 1], 0));
  }
  selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
  selectionModel()->setCurrentIndex(model()->index(keyboard, 0), QItemSelectionModel::NoUpdate);
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(scrolled);
}

void SoundListView::SelectCurrent() {
  if (!currentIndex().isValid() || !SelectedRows().isEmpty()) return;
  SelectRow(currentIndex().row());
  emit rowChosen(currentIndex().row());
}

bool SoundListView::event(QEvent* event) {
  if (event->type() == QEvent::ContextMenu &&
      static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard)
    SelectCurrent();
  return QListView::event(event);
}

void SoundListView::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  QListView::mousePressEvent(event);
  emit clickedInto();
  if (!index.isValid()) return;
  if (event->button() != Qt::MiddleButton) emit rowChosen(index.row());
  if (event->button() == Qt::LeftButton && IsExactlyCtrl(event->modifiers())) emit playWanted(index);
}

void SoundListView::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->modifiers() != Qt::NoModifier) {
    // Pressing fast with CTRL plays each time.
    if (event->button() == Qt::LeftButton && IsExactlyCtrl(event->modifiers()) && index.isValid())
      emit playWanted(index);
    return;
  }
  QListView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && index.isValid()) emit doubleClickedPlain(index);
}

void SoundListView::keyPressEvent(QKeyEvent* event) {
  const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
  const bool isDelete = event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace;
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isPlain && isDelete) {
    SelectCurrent();
    emit deletePressed();
    return;
  }
  if (isPlain && currentIndex().isValid() && isEnter) {
    SelectCurrent();
    emit enterPressed();
    return;
  }
  if (isPlain && currentIndex().isValid() && event->key() == Qt::Key_Space) {
    SelectCurrent();
    emit playWanted(currentIndex());
    return;
  }
  QListView::keyPressEvent(event);
  // At the end of the list, or in one of a single row, there is no other row to go to.
  if (isPlain && IsTravel(event->key())) SelectCurrent();
}

void SoundListView::focusInEvent(QFocusEvent* event) {
  {
    const core::base::RaisedFlag placing(m_placing);
    QListView::focusInEvent(event);
    if (!currentIndex().isValid())
      selectionModel()->setCurrentIndex(model()->index(0, 0), QItemSelectionModel::NoUpdate);
  }
  // Only a key that leads to just this list takes up its sound. Whoever comes by on the way to somewhere else, or back
  // to the window, keeps what is selected; a click names its row itself.
  if (event->reason() == Qt::ShortcutFocusReason && currentIndex().isValid()) {
    if (SelectedRows().isEmpty()) SelectRow(currentIndex().row());
    emit rowChosen(currentIndex().row());
  }
  viewport()->update();
}

void SoundListView::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  viewport()->update();
}

void SoundListView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  if (current.isValid() && hasFocus() && !m_placing) emit rowChosen(current.row());
}

QItemSelectionModel::SelectionFlags SoundListView::selectionCommand(const QModelIndex& index,
                                                                    const QEvent* event) const {
  // CTRL and the mouse play a sound; they do not pick rows one by one.
  if (event != nullptr && event->type() == QEvent::MouseButtonPress &&
      IsExactlyCtrl(static_cast<const QMouseEvent*>(event)->modifiers()))
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::Clear;
  return QListView::selectionCommand(index, event);
}

QString SoundListView::EmptyTextFor(const QSize& room) const {
  const QFontMetrics metrics = fontMetrics();
  const bool fits = room.height() >= 2 * metrics.height() || metrics.horizontalAdvance(m_emptyText) <= room.width();
  return fits || m_shorterEmptyText.isEmpty() ? m_emptyText : m_shorterEmptyText;
}

void SoundListView::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  QPainter painter(viewport());
  const bool isEmpty = model() == nullptr || model()->rowCount() == 0;
  if (isEmpty && !m_emptyText.isEmpty()) {
    painter.setPen(kit::ColorOf(kit::ColorRole::Soft, palette()));
    const QRect room = viewport()->rect().adjusted(8, 4, -2, -4);
    painter.drawText(room, Qt::AlignTop | Qt::AlignLeft | Qt::TextWordWrap, EmptyTextFor(room.size()));
  }
  // With a current row the row shows where the keyboard is.
  if (hasFocus() && !currentIndex().isValid()) {
    painter.setPen(kit::ColorOf(kit::ColorRole::Accent, palette()));
    painter.drawRect(viewport()->rect().adjusted(0, 0, -1, -1));
  }
}

}  // namespace kestrin::ui::sound
