// SPDX-License-Identifier: MIT
#pragma once

#include "ui/sound/SoundListView.h"

class QMimeData;

namespace kestrin::ui::sound {

class SlotListModel;
class SoundActions;

/// The list of a slot, which takes dropped sounds, files and folders, and shows where they will land.
class SlotList : public SoundListView {
  Q_OBJECT

 public:
  SlotList(SoundActions& actions, SlotListModel& sounds, QWidget* parent = nullptr);

  /// The selected positions, from 1.
  [[nodiscard]] std::vector<int> SelectedPositions() const;
  /// Moves the selected sound up or down by that many positions, and stays on it.
  void Shift(int by);
  void RemoveSelected();
  /// Whether a sound is missing in that row, or in one of those that are selected.
  [[nodiscard]] bool IsMissing(int row) const;
  [[nodiscard]] bool HasMissingSelected() const;

  /// A short one keeps no room for more than one row.
  void SetShort(bool isShort);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  /// The person wants to show the program the missing sound of that row.
  void locateWanted(int row);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] int RowsAtLeast(int ofList) const;
  [[nodiscard]] bool Takes(const QMimeData& dragged) const;
  [[nodiscard]] int PositionAt(const QPoint& point) const;
  /// The row whose "Locate ..." lies under the point, -1 for none.
  [[nodiscard]] int ActionAt(const QPoint& point) const;
  /// Marks where a drop would land; -1: nowhere.
  void ShowDropAt(int position);
  [[nodiscard]] QRect DropMark() const;

  SoundActions& m_actions;
  SlotListModel& m_sounds;
  bool m_isShort = false;
  int m_dropPosition = -1;
  /// The row on whose action the mouse was pressed, -1 for none.
  int m_pressedAction = -1;
};

}  // namespace kestrin::ui::sound
