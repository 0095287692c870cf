// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QPointer>
#include <array>

#include "core/ledsetup/LedSetupState.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;

namespace kestrin::ui::led {

class BladeView;
class ChannelLabel;

/// The colour picker "LED setting": a slider for each channel's level, over the panel whose pulse it edits. It can be
/// dragged aside. Escape stands for "Cancel", Enter for OK. It shows what is set; showing something is not told as the
/// person's action.
class PickColorFrame : public kit::Card {
  Q_OBJECT

 public:
  explicit PickColorFrame(QWidget* parent);

  /// What is edited: "Idle Pulse, high level".
  void SetSubject(const QString& subject);
  /// Shows it, with the keyboard in its first slider; beside `opener`, unless the person has dragged it somewhere.
  void Open(QWidget& opener);
  /// Hides it; the keyboard goes back to where it was opened from.
  void Close();

  /// The rows of the LED type's channels, and whether a colour can be picked for it.
  void ShowRows(const core::ledsetup::LedSetupState& state);
  /// The levels, and the blade in their light.
  void ShowLevels(const core::ledsetup::LedSetupState& state);
  /// "Apply" can be used; or cannot for this reason.
  void EnableApply(const QString& whyNot);

 signals:
  /// The person has moved the slider of a channel, 1 .. 4.
  void levelMoved(int channel, int level);
  void colorFidelityChanged(bool checked);
  void pickColorRequested();
  void applyRequested();
  void okRequested();
  void cancelRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  struct Row {
    ChannelLabel* label = nullptr;
    QSlider* slider = nullptr;
    QSpinBox* value = nullptr;
  };

  void AddHead(QBoxLayout& layout);
  void AddRows(QBoxLayout& layout);
  void AddPicking(QBoxLayout& layout);
  void AddButtons(QBoxLayout& layout);
  [[nodiscard]] QPushButton* MakeButton(const char* name, const QString& text, void (PickColorFrame::*signal)());
  /// Moves it there, or as near as the panel, or a part of it, allows.
  void MoveInside(const QPoint& place);
  void MoveInside(const QPoint& place, const QRect& room);

  QLabel* m_subject = nullptr;
  BladeView* m_blade = nullptr;
  std::array<Row, core::led::LED_Driver::kChannels> m_rows;
  QPushButton* m_pick = nullptr;
  QCheckBox* m_fidelity = nullptr;
  QPushButton* m_apply = nullptr;
  QPointer<QWidget> m_opener;
  /// Where the mouse holds it while it is dragged.
  QPoint m_grip;
  bool m_isDragged = false;
  bool m_wasDragged = false;
};

}  // namespace kestrin::ui::led
