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

  /// About how long a download takes: "56 s", "2 min 5 s".
  [[nodiscard]] static QString DownloadTime(int seconds);
  /// How much of the memory is used: "21.0 s of 58.2 s used".
  [[nodiscard]] static QString Used(const core::sound::MemoryUse& use);
  /// The same with the time of a download, or with what is too much.
  [[nodiscard]] static QString Summary(const core::sound::MemoryUse& use);

 private:
  QLabel* m_title;
  QLabel* m_text;
  MemoryBar* m_bar;
};

}  // namespace kestrin::ui::sound
