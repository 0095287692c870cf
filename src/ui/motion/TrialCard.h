// SPDX-License-Identifier: MIT
#pragma once

#include "core/motion/SwingTapTrial.h"
#include "ui/kit/Card.h"

class QGridLayout;
class QLabel;

namespace kestrin::ui::motion {

class MarkRow;

/// "Swing five times, then tap five times": how far a trial has come, and what to do next.
class TrialCard : public kit::Card {
  Q_OBJECT

 public:
  explicit TrialCard(QWidget* parent = nullptr);

  void Show(const core::motion::SwingTapTrial& trial);

 signals:
  /// The trial is to begin once more.
  void startAgainRequested();

 private:
  struct Row {
    MarkRow* marks = nullptr;
    /// What comes next, or what came of it.
    QLabel* text = nullptr;
  };

  [[nodiscard]] Row MakeRow(QGridLayout& grid, int line, core::motion::Movement::Kind kind);
  void ShowRow(const Row& row, const core::motion::SwingTapTrial& trial, core::motion::Movement::Kind kind);

  Row m_swings;
  Row m_taps;
};

}  // namespace kestrin::ui::motion
