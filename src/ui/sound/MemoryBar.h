// SPDX-License-Identifier: MIT
#pragma once

#include <QProgressBar>

#include "core/sound/MemoryUse.h"

namespace kestrin::ui::sound {

/// The board's memory as a bar, with what each slot takes in the slot's colour.
class MemoryBar : public QProgressBar {
  Q_OBJECT

 public:
  explicit MemoryBar(QWidget* parent = nullptr);

  /// The value becomes the samples in use, or the capacity when they do not fit.
  void Show(const core::sound::MemoryUse& use);

  [[nodiscard]] QSize sizeHint() const override { return {200, 16}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {80, 16}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  core::sound::MemoryUse m_use;
};

}  // namespace kestrin::ui::sound
