// SPDX-License-Identifier: MIT
#include "ui/import/ImportList.h"

#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/import/ImportColumns.h"
#include "ui/import/ImportRowDelegate.h"
#include "ui/kit/ThemeColors.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::imports {

using core::sound::SlotKind;

namespace {

/// Rows that are seen at a time where there is room, and the least.
constexpr int kMostRows = 20;
constexpr int kLeastRows = 4;

}  // namespace

ImportList::ImportList(ImportModel& rows, QWidget* parent) : QListView(parent), m_model(rows) {
  setModel(&rows);
  setItemDelegate(new ImportRowDelegate(this));
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setUniformItemSizes(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setDragDropMode(QAbstractItemView::DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  // Qt would mark rows; here rows go between them.
  setDropIndicatorShown(false);
  setMouseTracking(true);
  setFrameShape(QFrame::NoFrame);
  viewport()->setAutoFillBackground(false);
  // Keys have a row to work on as soon as there is one.
  connect(&m_model, &ImportModel::changed, this, [this] {
    if (!currentIndex().isValid()) selectionModel()->setCurrentIndex(m_model.index(0), QItemSelectionModel::NoUpdate);
  });
  setMinimumSize(ImportColumns::LeastWidth(fontMetrics()), kLeastRows * ImportRowDelegate::kRowHeight);
}

QSize ImportList::sizeHint() const {
  const int rows = std::clamp(m_model.rowCount(), kLeastRows, kMostRows);
  const int height = std::max(ImportRowDelegate::kRowHeight, sizeHintForRow(0));
  return {ImportColumns::LeastWidth(fontMetrics()), rows * height};
}

QList<int> ImportList::Chosen() const {
  QList<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.append(index.row());
  if (rows.isEmpty() && currentIndex().isValid()) rows.append(currentIndex().row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

QList<int> ImportList::With(int row) const {
  const QList<int> chosen = Chosen();
  return chosen.contains(row) ? chosen : QList<int>{row};
}

ImportList::Part ImportList::PartAt(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!index.isValid() || index.data(ImportModel::kIsFailed).toBool()) return Part::None;
  const ImportColumns columns = ImportColumns::Of(visualRect(index), fontMetrics());
  // The tick is easy to hit.
  if (point.x() < columns.name.left()) return Part::Tick;
  if (columns.slot.contains(point)) return Part::Slot;
  if (columns.before.contains(point)) return Part::Before;
  return columns.after.contains(point) ? Part::After : Part::None;
}

void ImportList::mousePressEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  m_pressed = event->button() == Qt::LeftButton ? PartAt(point) : Part::None;
  m_pressedRow = indexAt(point);
  if (m_pressed == Part::None) return QListView::mousePressEvent(event);
  // What is selected stays selected: a tick or a slot may be meant for all of it.
  if (!selectionModel()->isSelected(m_pressedRow))
    selectionModel()->setCurrentIndex(m_pressedRow, QItemSelectionModel::ClearAndSelect);
  event->accept();
}

void ImportList::mouseMoveEvent(QMouseEvent* event) {
  const bool isButton = PartAt(event->position().toPoint()) != Part::None;
  viewport()->setCursor(isButton ? Qt::PointingHandCursor : Qt::ArrowCursor);
  if (m_pressed == Part::None) QListView::mouseMoveEvent(event);
}

void ImportList::mouseReleaseEvent(QMouseEvent* event) {
  const Part pressed = std::exchange(m_pressed, Part::None);
  const QPoint point = event->position().toPoint();
  if (pressed == Part::None) return QListView::mouseReleaseEvent(event);
  if (PartAt(point) == pressed && indexAt(point) == m_pressedRow) Press(pressed, m_pressedRow);
}

void ImportList::mouseDoubleClickEvent(QMouseEvent* event) {
  // Two quick clicks on a tick are two clicks.
  mousePressEvent(event);
}

void ImportList::Press(Part part, const QModelIndex& index) {
  const int row = index.row();
  switch (part) {
    case Part::Tick:
      return m_model.Tick(With(row), !m_model.At(row).isTicked);
    case Part::Slot: {
      const QRect chip = ImportColumns::Of(visualRect(index), fontMetrics()).slot;
      return OpenMenu(With(row), viewport()->mapToGlobal(chip.bottomLeft()), false);
    }
    case Part::Before:
      return Play(row, ImportModel::Half::Before);
    case Part::After:
      return Play(row, ImportModel::Half::After);
    case Part::None:
      return;
  }
}

void ImportList::Play(int row, ImportModel::Half half) {
  if ((m_model.index(row).data(ImportModel::kCanPlay).toInt() & (1 << static_cast<int>(half))) != 0)
    emit playWanted(m_model.At(row).id, half);
}

void ImportList::ToggleTicks() {
  const QList<int> rows = Chosen();
  const bool areAllTicked = std::all_of(rows.begin(), rows.end(), [this](int row) {
    return m_model.At(row).isTicked || m_model.At(row).state == ImportRow::State::Failed;
  });
  m_model.Tick(rows, !areAllTicked);
}

bool ImportList::ChooseSlotByKey(int key) {
  if (key < Qt::Key_0 || key > Qt::Key_7) return false;
  const int number = key - Qt::Key_0;
  m_model.SetSlot(Chosen(), number == 0
                                ? std::nullopt
                                : std::optional(core::sound::kSlots.at(static_cast<std::size_t>(number - 1)).kind));
  return true;
}

void ImportList::Shift(int by) {
  const int from = currentIndex().row();
  if (from < 0) return;
  const int to = m_model.Move(from, by < 0 ? from - 1 : from + 2);
  selectionModel()->setCurrentIndex(m_model.index(to), QItemSelectionModel::ClearAndSelect);
  scrollTo(currentIndex());
}

void ImportList::keyPressEvent(QKeyEvent* event) {
  const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
  const int key = event->key();
  const bool isAnyRow = currentIndex().isValid();
  if (isAnyRow && held == Qt::ControlModifier && (key == Qt::Key_Up || key == Qt::Key_Down))
    return Shift(key == Qt::Key_Up ? -1 : 1);
  if (isAnyRow && key == Qt::Key_P && (held == Qt::NoModifier || held == Qt::ShiftModifier))
    return Play(currentIndex().row(), held == Qt::NoModifier ? ImportModel::Half::After : ImportModel::Half::Before);
  if (isAnyRow && held == Qt::NoModifier) {
    if (key == Qt::Key_Space) return ToggleTicks();
    if (ChooseSlotByKey(key)) return;
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
      const QRect chip = ImportColumns::Of(visualRect(currentIndex()), fontMetrics()).slot;
      return OpenMenu(Chosen(), viewport()->mapToGlobal(chip.bottomLeft()), false);
    }
  }
  // Letters look for no row: the sheet has keys of its own.
  if (held == Qt::NoModifier && !event->text().isEmpty() && event->text().front().isLetterOrNumber()) return;
  QListView::keyPressEvent(event);
}

void ImportList::contextMenuEvent(QContextMenuEvent* event) {
  const QModelIndex index = event->reason() == QContextMenuEvent::Keyboard ? currentIndex() : indexAt(event->pos());
  if (!index.isValid()) return;
  const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
  OpenMenu(With(index.row()), byKey ? viewport()->mapToGlobal(visualRect(index).bottomLeft()) : event->globalPos(),
           true);
}

void ImportList::AddSlots(QMenu& menu, const QList<int>& rows) {
  const auto add = [&](const QString& text, int key, std::optional<SlotKind> slot) {
    QAction* const action = menu.addAction(text);
    action->setShortcut(QKeySequence(key));
    action->setShortcutVisibleInContextMenu(true);
    // The list hears the key itself; the entry only shows it.
    action->setShortcutContext(Qt::WidgetShortcut);
    action->setCheckable(true);
    action->setChecked(std::all_of(rows.begin(), rows.end(), [&](int row) { return m_model.At(row).slot == slot; }));
    connect(action, &QAction::triggered, this, [this, rows, slot] { m_model.SetSlot(rows, slot); });
  };
  int key = Qt::Key_1;
  for (const core::sound::Slot& slot : core::sound::kSlots) add(sound::SlotMnemonic(slot.kind), key++, slot.kind);
  menu.addSeparator();
  add(tr("Only into the &folder"), Qt::Key_0, std::nullopt);
}

void ImportList::OpenMenu(const QList<int>& rows, const QPoint& where, bool whole) {
  QList<int> usable;
  for (const int row : rows)
    if (m_model.At(row).state != ImportRow::State::Failed) usable.append(row);
  if (usable.isEmpty()) return;
  auto* const menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("ImportRowMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& text, const QKeySequence& key, auto does) {
    QAction* const action = menu->addAction(text);
    action->setShortcut(key);
    action->setShortcutVisibleInContextMenu(true);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, does);
    return action;
  };
  if (whole) {
    const int row = usable.constFirst();
    const bool isTicked = m_model.At(row).isTicked;
    add(isTicked ? tr("&Leave out") : tr("&Import"), Qt::Key_Space,
        [this, usable, isTicked] { m_model.Tick(usable, !isTicked); });
    menu->addSeparator();
    const int canPlay = m_model.index(row).data(ImportModel::kCanPlay).toInt();
    add(tr("Hear it &before"), Qt::SHIFT | Qt::Key_P, [this, row] {
      Play(row, ImportModel::Half::Before);
    })->setEnabled((canPlay & 1) != 0);
    add(tr("Hear it &after"), Qt::Key_P, [this, row] {
      Play(row, ImportModel::Half::After);
    })->setEnabled((canPlay & 2) != 0);
    menu->addSeparator();
    add(tr("Move &up"), Qt::CTRL | Qt::Key_Up, [this] { Shift(-1); })->setEnabled(usable.size() == 1 && row > 0);
    add(tr("Move &down"), Qt::CTRL | Qt::Key_Down, [this] {
      Shift(1);
    })->setEnabled(usable.size() == 1 && row + 1 < m_model.rowCount());
    menu->addSeparator();
    AddSlots(*menu->addMenu(tr("&Slot")), usable);
  } else {
    AddSlots(*menu, usable);
  }
  menu->popup(where);
}

int ImportList::DropRow(const QPoint& point) const {
  const QModelIndex index = indexAt(point);
  if (!index.isValid()) return m_model.rowCount();
  return index.row() + (point.y() > visualRect(index).center().y() ? 1 : 0);
}

void ImportList::ShowDropAt(int row) {
  m_dropRow = row;
  viewport()->update();
}

void ImportList::dragEnterEvent(QDragEnterEvent* event) {
  // Files from elsewhere are the window's.
  if (event->source() != this) return event->ignore();
  event->acceptProposedAction();
}

void ImportList::dragMoveEvent(QDragMoveEvent* event) {
  if (event->source() != this) return event->ignore();
  QListView::dragMoveEvent(event);
  ShowDropAt(DropRow(event->position().toPoint()));
  event->acceptProposedAction();
}

void ImportList::dragLeaveEvent(QDragLeaveEvent* event) {
  QListView::dragLeaveEvent(event);
  ShowDropAt(-1);
}

void ImportList::dropEvent(QDropEvent* event) {
  QDragLeaveEvent leave;
  dragLeaveEvent(&leave);
  if (event->source() != this) return event->ignore();
  DropAt(event->position().toPoint());
  // A move would make the view that it came from take the rows away.
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void ImportList::DropAt(const QPoint& point) {
  QList<int> ids;
  for (const int row : Chosen())
    if (m_model.At(row).state != ImportRow::State::Failed) ids.append(m_model.At(row).id);
  if (ids.isEmpty()) return;
  int to = DropRow(point);
  const int over = indexAt(point).isValid() ? indexAt(point).row() : m_model.rowCount() - 1;
  const ImportRow target = m_model.At(over);
  for (const int id : std::as_const(ids)) {
    const int from = m_model.RowOf(id);
    const int end = m_model.Move(from, to);
    to = std::max(to, end + 1);
  }
  QList<int> rows;
  for (const int id : std::as_const(ids)) rows.append(m_model.RowOf(id));
  // They go to the slot of the sound on which they were let go; one that cannot be imported has none.
  const bool isOwn = ids.contains(target.id);
  if (!isOwn && target.state != ImportRow::State::Failed) m_model.SetSlot(rows, target.slot);
  selectionModel()->clearSelection();
  for (const int row : std::as_const(rows)) selectionModel()->select(m_model.index(row), QItemSelectionModel::Select);
  selectionModel()->setCurrentIndex(m_model.index(rows.constFirst()), QItemSelectionModel::NoUpdate);
}

void ImportList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (m_dropRow < 0) return;
  const int rows = m_model.rowCount();
  const int y =
      m_dropRow < rows ? visualRect(m_model.index(m_dropRow)).top() : visualRect(m_model.index(rows - 1)).bottom() + 1;
  QPainter(viewport())
      .fillRect(QRect(4, y - 1, viewport()->width() - 8, 2), kit::ColorOf(kit::ColorRole::Accent, palette()));
}

}  // namespace kestrin::ui::imports
