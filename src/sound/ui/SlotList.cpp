#include "sound/ui/SlotList.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <algorithm>

#include "sound/ui/SlotListModel.h"
#include "sound/ui/SoundActions.h"
#include "sound/ui/SoundRowDelegate.h"
#include "sound/ui/SoundTexts.h"

namespace kestrin::sound::ui {

SlotList::SlotList(SoundActions& actions, SlotListModel& sounds, QWidget* parent)
    : SoundListView(parent), m_actions(actions), m_sounds(sounds) {
  setModel(&sounds);
  setDragDropMode(QAbstractItemView::DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  setDropIndicatorShown(true);
  const bool isList = SlotOf(sounds.Kind()).isList;
  setSizePolicy(QSizePolicy::Ignored, isList ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  if (!isList) {
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

void SlotList::RemoveSelected() { m_actions.Remove(m_sounds.Kind(), SelectedPositions()); }

QSize SlotList::sizeHint() const {
  const int rows = SlotOf(m_sounds.Kind()).isList ? 4 : 1;
  return {160, rows * SoundRowDelegate::RowHeight(fontMetrics())};
}

QSize SlotList::minimumSizeHint() const {
  const int rows = SlotOf(m_sounds.Kind()).isList ? 3 : 1;
  return {80, rows * SoundRowDelegate::RowHeight(fontMetrics())};
}

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
    event->ignore();
    return;
  }
  SoundListView::dragMoveEvent(event);
  event->acceptProposedAction();
}

void SlotList::dropEvent(QDropEvent* event) {
  // Leaving ends the marks of the drag; the list takes the sounds itself, at any place.
  QDragLeaveEvent leave;
  SoundListView::dragLeaveEvent(&leave);
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

}  // namespace kestrin::sound::ui
