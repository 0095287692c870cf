#pragma once

#include "sound/ui/SoundListView.h"

class QMimeData;

namespace kestrin::sound::ui {

class SlotListModel;
class SoundActions;

/// The list of a slot, which takes dropped sounds, files and folders.
class SlotList : public SoundListView {
  Q_OBJECT

 public:
  SlotList(SoundActions& actions, SlotListModel& sounds, QWidget* parent = nullptr);

  /// The selected positions, from 1.
  [[nodiscard]] std::vector<int> SelectedPositions() const;
  /// Moves the selected sound up or down by that many positions, and stays on it.
  void Shift(int by);
  void RemoveSelected();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] bool Takes(const QMimeData& dragged) const;
  [[nodiscard]] int PositionAt(const QPoint& point) const;

  SoundActions& m_actions;
  SlotListModel& m_sounds;
};

}  // namespace kestrin::sound::ui
