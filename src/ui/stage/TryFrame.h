// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "core/sound/SoundSet.h"
#include "ui/stage/PlayedPieces.h"

class QBoxLayout;
class QCheckBox;
class QLabel;

namespace kestrin::ui::stage {

class ActionButton;
class StageView;
class Timeline;
class TryList;
class TryRows;

/// The page "Try the saber": the stage with the buttons for what can happen to the saber, the last 12 seconds, and the
/// sounds of the set. It shows and asks; what comes of it is the control's.
class TryFrame : public QWidget {
  Q_OBJECT

 public:
  /// Set and pieces must outlive the frame.
  TryFrame(core::sound::SoundSet& set, const PlayedPieces& pieces, QWidget* parent = nullptr);

  [[nodiscard]] StageView& Stage() const { return *m_stage; }
  [[nodiscard]] Timeline& Times() const { return *m_times; }
  [[nodiscard]] TryList& List() const { return *m_list; }
  [[nodiscard]] TryRows& Rows() const { return *m_rows; }
  /// Whether the blade is out, or locked up.
  void ShowState(bool isOn, bool isLocked);
  void ShowFewer(bool isFewer);
  void ShowAsOnBoard(bool asOnBoard);

 signals:
  void powerRequested();
  /// `way` is 1 upwards, -1 downwards, 0 for the one that is due.
  void swingRequested(int way);
  void hitRequested();
  /// Key or button for the lock-up are held from now on, or are held no longer.
  void lockupHeld(bool isHeld);
  void fewerChosen(bool isFewer);
  void asOnBoardChosen(bool asOnBoard);
  /// The person wants to go back to the set.
  void backRequested();
  /// The page is seen, or is seen no longer.
  void shown(bool isShown);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void MakeHead(QBoxLayout& layout);
  void MakeButtons(QBoxLayout& layout);
  [[nodiscard]] QWidget* MakeTimes(const PlayedPieces& pieces);
  [[nodiscard]] QWidget* MakeSounds();
  [[nodiscard]] bool TakeKey(int key);

  TryRows* m_rows;
  StageView* m_stage;
  Timeline* m_times = nullptr;
  TryList* m_list = nullptr;
  QCheckBox* m_fewer = nullptr;
  QCheckBox* m_asOnBoard = nullptr;
  ActionButton* m_power = nullptr;
  ActionButton* m_lockup = nullptr;
  bool m_isOn = false;
};

}  // namespace kestrin::ui::stage
