#pragma once

#include "app/theme/Card.h"

namespace kestrin::app {

/// A small card in the middle of the window that asks for patience. It blocks nothing.
class WaitFrame : public Card {
  Q_OBJECT

 public:
  /// Starts hidden.
  explicit WaitFrame(QWidget& window);

 protected:
  void showEvent(QShowEvent* event) override;
};

}  // namespace kestrin::app
