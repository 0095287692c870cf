// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>

#include "ui/import/ImportModel.h"

class QMenu;

namespace kestrin::ui::imports {

/// The rows of the import sheet, by mouse and keyboard: ticks, slots, what is heard, and the order by dragging.
class ImportList : public QListView {
  Q_OBJECT

 public:
  /// The model must outlive the list.
  explicit ImportList(ImportModel& rows, QWidget* parent = nullptr);

  /// The selected rows are let go at that point of the rows: before or behind the sound there, and in its slot.
  void DropAt(const QPoint& point);
  [[nodiscard]] QSize sizeHint() const override;

 signals:
  /// The person wants to hear this copy of a sound, or silence when it is the one that plays.
  void playWanted(int id, imports::ImportModel::Half half);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// What of a row lies under a point.
  enum class Part { None, Tick, Slot, Before, After };

  [[nodiscard]] Part PartAt(const QPoint& point) const;
  /// The selected rows from the first to the last; the one with the keyboard when none is.
  [[nodiscard]] QList<int> Chosen() const;
  /// The row itself, or all selected ones when it is one of them.
  [[nodiscard]] QList<int> With(int row) const;
  void Press(Part part, const QModelIndex& index);
  void Play(int row, ImportModel::Half half);
  void ToggleTicks();
  bool ChooseSlotByKey(int key);
  void Shift(int by);
  /// Opens the menu of slots for these rows, with all else that can be done when it is the whole menu.
  void OpenMenu(const QList<int>& rows, const QPoint& where, bool whole);
  void AddSlots(QMenu& menu, const QList<int>& rows);
  /// Where a drop would put the rows, as the row that they would come before; -1: nowhere.
  void ShowDropAt(int row);
  [[nodiscard]] int DropRow(const QPoint& point) const;

  ImportModel& m_model;
  int m_dropRow = -1;
  Part m_pressed = Part::None;
  QPersistentModelIndex m_pressedRow;
};

}  // namespace kestrin::ui::imports
