// SPDX-License-Identifier: MIT
#pragma once

#include "ui/kit/Card.h"

namespace kestrin::ui::kit {

/// A small card in the middle of the window that asks for patience. It blocks nothing.
class WaitFrame : public Card {
  Q_OBJECT

 public:
  /// Starts hidden.
  explicit WaitFrame(QWidget& window);

 protected:
  void showEvent(QShowEvent* event) override;
};

}  // namespace kestrin::ui::kit
