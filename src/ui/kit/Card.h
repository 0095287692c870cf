// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <optional>

#include "core/sound/SlotKind.h"

namespace kestrin::ui::kit {

/// A rounded ground that keeps together what belongs together. It may carry a slot's colour along its left side and be
/// marked as the one that is chosen.
class Card : public QFrame {
  Q_OBJECT

 public:
  explicit Card(QWidget* parent = nullptr);

  /// The slot whose colour the card carries, or none.
  void SetSlot(std::optional<core::sound::SlotKind> slot);
  /// Whether the card is the chosen one of its kind: its line is then in the accent's colour.
  void SetChosen(bool isChosen);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<core::sound::SlotKind> m_slot;
  bool m_isChosen = false;
};

}  // namespace kestrin::ui::kit
