// SPDX-License-Identifier: MIT
#include "ui/stage/TryList.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "ui/stage/TryRowDelegate.h"
#include "ui/stage/TryRows.h"

namespace kestrin::ui::stage {

TryList::TryList(TryRows& rows, QWidget* parent)
    : QListView(parent), m_rows(rows), m_delegate(new TryRowDelegate(this)) {
  setObjectName(QStringLiteral("TryList"));
  setAccessibleName(tr("Sounds"));
  setModel(&rows);
  setItemDelegate(m_delegate);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setMinimumWidth(200);
}

void TryList::Move() {
  if (!m_rows.IsAnyLit()) return;
  m_delegate->SetStep(++m_step);
  for (int row = 0; row < m_rows.rowCount(); ++row)
    if (const QModelIndex index = m_rows.index(row); index.data(TryRows::kIsLit).toBool()) update(index);
}

void TryList::Reveal(const core::sound::SoundPlace& place) {
  if (hasFocus() || underMouse()) return;
  const QModelIndex index = m_rows.IndexOf(place);
  if (index.isValid()) scrollTo(index);
}

void TryList::SetVolumeAt(int x) {
  m_rows.SetVolume(m_held, TryRowDelegate::VolumeAt(x, visualRect(m_held), fontMetrics()));
}

void TryList::mousePressEvent(QMouseEvent* event) {
  const QPoint where = event->position().toPoint();
  const QModelIndex index = indexAt(where);
  const auto place = m_rows.PlaceOf(index);
  if (event->button() != Qt::LeftButton || !place) return QListView::mousePressEvent(event);
  setCurrentIndex(index);
  if (TryRowDelegate::VolumeRect(visualRect(index), fontMetrics()).contains(where)) {
    m_held = index;
    SetVolumeAt(where.x());
  } else {
    emit chosen(*place);
  }
}

void TryList::mouseMoveEvent(QMouseEvent* event) {
  if (m_held.isValid()) return SetVolumeAt(event->position().toPoint().x());
  QListView::mouseMoveEvent(event);
}

void TryList::mouseReleaseEvent(QMouseEvent* event) {
  m_held = QModelIndex();
  QListView::mouseReleaseEvent(event);
}

void TryList::keyPressEvent(QKeyEvent* event) {
  const QModelIndex index = currentIndex();
  const int volume = index.data(TryRows::kVolume).toInt();
  switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Minus:
      return m_rows.SetVolume(index, volume - kStep);
    case Qt::Key_Right:
    case Qt::Key_Plus:
      return m_rows.SetVolume(index, volume + kStep);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (const auto place = m_rows.PlaceOf(index); place && !event->isAutoRepeat()) emit chosen(*place);
      return;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
      return QListView::keyPressEvent(event);
    default:
      // Letters move the saber: the list looks for no names.
      event->ignore();
  }
}

void TryList::changeEvent(QEvent* event) {
  QListView::changeEvent(event);
  if (event->type() == QEvent::FontChange) scheduleDelayedItemsLayout();
}

}  // namespace kestrin::ui::stage
