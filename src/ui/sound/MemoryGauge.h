// SPDX-License-Identifier: MIT
#pragma once

#include "core/sound/MemoryUse.h"
#include "ui/kit/Card.h"

class QLabel;

namespace kestrin::ui::sound {

class MemoryBar;

/// How much of the board's memory the sounds take, slot by slot, and how long a download takes.
class MemoryGauge : public kit::Card {
  Q_OBJECT

 public:
  explicit MemoryGauge(QWidget* parent = nullptr);

  void Show(const core::sound::MemoryUse& use);

 private:
  QLabel* m_title;
  QLabel* m_text;
  MemoryBar* m_bar;
};

}  // namespace kestrin::ui::sound
