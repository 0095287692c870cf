// SPDX-License-Identifier: MIT
#include "ui/sound/SlotList.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/kit/ThemeColors.h"
#include "ui/sound/SlotListModel.h"
#include "ui/sound/SoundActions.h"
#include "ui/sound/SoundRowDelegate.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

SlotList::SlotList(SoundActions& actions, SlotListModel& sounds, QWidget* parent)
    : SoundListView(parent), m_actions(actions), m_sounds(sounds) {
  setModel(&sounds);
  setDragDropMode(QAbstractItemView::DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  // Qt would mark rows; here sounds go between them.
  setDropIndicatorShown(false);
  SetShort(false);
  if (!core::sound::SlotOf(sounds.Kind()).isList) {
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  }
}

std::vector<int> SlotList::SelectedPositions() const {
  std::vector<int> positions;
  for (const int row : SelectedRows()) positions.push_back(row + 1);
  return positions;
}

void SlotList::Shift(int by) {
  const int from = currentIndex().row() + 1;
  const int to = from + by;
  if (from < 1 || to < 1 || to > m_sounds.rowCount() || !m_actions.MayChange()) return;
  m_actions.Set().Move(m_sounds.Kind(), from, to);
  SelectRow(to - 1);
}

bool SlotList::IsMissing(int row) const {
  return m_actions.Set().AllMissing().At({m_sounds.Kind(), row + 1}) != nullptr;
}

bool SlotList::HasMissingSelected() const {
  const QList<int> rows = SelectedRows();
  return std::any_of(rows.begin(), rows.end(), [this](int row) { return IsMissing(row); });
}

void SlotList::RemoveSelected() { m_actions.Remove(m_sounds.Kind(), SelectedPositions()); }

void SlotList::SetShort(bool isShort) {
  m_isShort = isShort;
  const bool grows = core::sound::SlotOf(m_sounds.Kind()).isList && !isShort;
  setSizePolicy(QSizePolicy::Ignored, grows ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  updateGeometry();
}

int SlotList::RowsAtLeast(int ofList) const {
  return core::sound::SlotOf(m_sounds.Kind()).isList && !m_isShort ? ofList : 1;
}

QSize SlotList::sizeHint() const { return {160, RowsAtLeast(4) * SoundRowDelegate::RowHeight(fontMetrics())}; }

QSize SlotList::minimumSizeHint() const { return {80, RowsAtLeast(3) * SoundRowDelegate::RowHeight(fontMetrics())}; }

bool SlotList::Takes(const QMimeData& dragged) const {
  if (!m_actions.MayChange()) return false;
  if (SlotListModel::DraggedFrom(dragged)) return true;
  const auto files = SlotListModel::FilesOf(dragged);
  // A set is opened by the window, not put into a slot.
  return std::any_of(files.begin(), files.end(), [](const std::filesystem::path& path) {
    return !FileName(path).endsWith(QLatin1String(".lscfg"), Qt::CaseInsensitive);
  });
}

int SlotList::PositionAt(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!index.isValid()) return SoundActions::kEnd;
  return index.row() + (point.y() > visualRect(index).center().y() ? 2 : 1);
}

int SlotList::ActionAt(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!index.isValid()) return -1;
  return SoundRowDelegate::ActionRect(visualRect(index), fontMetrics(), index).contains(point) ? index.row() : -1;
}

void SlotList::mousePressEvent(QMouseEvent* event) {
  const bool isPlain = event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier;
  m_pressedAction = isPlain ? ActionAt(event->position().toPoint()) : -1;
  SoundListView::mousePressEvent(event);
}

void SlotList::mouseReleaseEvent(QMouseEvent* event) {
  SoundListView::mouseReleaseEvent(event);
  const int pressed = std::exchange(m_pressedAction, -1);
  if (pressed >= 0 && ActionAt(event->position().toPoint()) == pressed) emit locateWanted(pressed);
}

void SlotList::mouseDoubleClickEvent(QMouseEvent* event) {
  // Who clicks twice on "Locate ..." does not want the row to go.
  if (ActionAt(event->position().toPoint()) < 0) SoundListView::mouseDoubleClickEvent(event);
}

void SlotList::mouseMoveEvent(QMouseEvent* event) {
  const bool isAction = ActionAt(event->position().toPoint()) >= 0;
  viewport()->setCursor(isAction ? Qt::PointingHandCursor : Qt::ArrowCursor);
  SoundListView::mouseMoveEvent(event);
}

void SlotList::ShowDropAt(int position) {
  m_dropPosition = position;
  viewport()->update();
}

QRect SlotList::DropMark() const {
  if (m_dropPosition < 0) return {};
  const QRect all = viewport()->rect();
  // A single slot takes the sound in place of its own.
  if (!core::sound::SlotOf(m_sounds.Kind()).isList) return all.adjusted(1, 1, -2, -2);
  const int rows = m_sounds.rowCount();
  const int above = std::min(m_dropPosition, rows + 1) - 2;
  const int gap = above < 0 ? all.top() + 1 - verticalOffset() : visualRect(m_sounds.index(above)).bottom() + 1;
  return {all.left() + 4, gap - 1, all.width() - 8, 2};
}

void SlotList::paintEvent(QPaintEvent* event) {
  SoundListView::paintEvent(event);
  const QRect mark = DropMark();
  if (!mark.isValid()) return;
  QPainter painter(viewport());
  const QColor accent = kit::ColorOf(kit::ColorRole::Accent, palette());
  if (core::sound::SlotOf(m_sounds.Kind()).isList) {
    painter.fillRect(mark, accent);
  } else {
    painter.setPen(QPen(accent, 2));
    painter.drawRect(mark);
  }
}

void SlotList::dragEnterEvent(QDragEnterEvent* event) {
  if (!Takes(*event->mimeData())) {
    event->ignore();
    return;
  }
  SoundListView::dragEnterEvent(event);
  event->acceptProposedAction();
}

void SlotList::dragMoveEvent(QDragMoveEvent* event) {
  if (!Takes(*event->mimeData())) {
    ShowDropAt(-1);
    event->ignore();
    return;
  }
  SoundListView::dragMoveEvent(event);
  ShowDropAt(PositionAt(event->position().toPoint()));
  event->acceptProposedAction();
}

void SlotList::dragLeaveEvent(QDragLeaveEvent* event) {
  SoundListView::dragLeaveEvent(event);
  ShowDropAt(-1);
}

void SlotList::dropEvent(QDropEvent* event) {
  // Leaving ends the marks of the drag; the list takes the sounds itself, at any place.
  QDragLeaveEvent leave;
  dragLeaveEvent(&leave);
  if (!Takes(*event->mimeData())) {
    event->ignore();
    return;
  }
  const int position = PositionAt(event->position().toPoint());
  if (const auto dragged = SlotListModel::DraggedFrom(*event->mimeData())) {
    const bool copy = event->dropAction() == Qt::CopyAction;
    m_actions.Bring(dragged->kind, dragged->positions, m_sounds.Kind(), position, copy);
  } else {
    event->setDropAction(Qt::CopyAction);
    m_actions.Add(m_sounds.Kind(), SlotListModel::FilesOf(*event->mimeData()), position);
  }
  event->accept();
}

void SlotList::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() == Qt::ControlModifier && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
    Shift(event->key() == Qt::Key_Up ? -1 : 1);
    return;
  }
  SoundListView::keyPressEvent(event);
}

void SlotList::resizeEvent(QResizeEvent* event) {
  SoundListView::resizeEvent(event);
  scrollTo(currentIndex());
}

}  // namespace kestrin::ui::sound
