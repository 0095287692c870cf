#pragma once

#include "sound/MemoryUse.h"
#include "sound/ui/Card.h"

class QHBoxLayout;
class QLabel;

namespace kestrin::sound::ui {

class MemoryBar;

/// How much of the board's memory the sounds take, slot by slot, and how long a download takes.
class MemoryGauge : public Card {
  Q_OBJECT

 public:
  explicit MemoryGauge(QWidget* parent = nullptr);

  void Show(const MemoryUse& use);

 private:
  QLabel* m_title;
  QLabel* m_text;
  MemoryBar* m_bar;
};

}  // namespace kestrin::sound::ui
