// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <cstddef>

#include "core/sound/SlotKind.h"

namespace kestrin::ui::motion {

/// A row of rings, one for each of a number of steps, that get their ticks one after the other; the next one stands
/// out while it is their turn.
class MarkRow : public QWidget {
  Q_OBJECT

 public:
  /// `name` is what a screen reader calls it. The rings have the colour of that slot.
  MarkRow(const QString& name, core::sound::SlotKind slot, std::size_t steps, QWidget* parent = nullptr);

  void Show(std::size_t done, bool isTheirTurn);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  core::sound::SlotKind m_slot;
  std::size_t m_steps;
  std::size_t m_done = 0;
  bool m_isTheirTurn = false;
};

}  // namespace kestrin::ui::motion
