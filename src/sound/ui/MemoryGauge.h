#pragma once

#include "app/theme/Card.h"
#include "sound/MemoryUse.h"

class QLabel;

namespace kestrin::sound::ui {

class MemoryBar;

/// How much of the board's memory the sounds take, slot by slot, and how long a download takes.
class MemoryGauge : public app::Card {
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
