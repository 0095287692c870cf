// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

#include "core/led/Color.h"

namespace kestrin::ui::led {

/// A label in the colour of an LED channel. It stands on a ground of its own, as most of these colours cannot be read
/// on a light one: a dark ground for the colours of channels, a grey one for the black of a channel that is not used.
class ChannelLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ChannelLabel(const QString& text, QWidget* parent = nullptr);

  /// The text's colour; 0 (black) for a channel that is not used.
  void ShowColor(core::led::Color color);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  /// What the text stands on.
  [[nodiscard]] QColor Ground() const;

  core::led::Color m_color = 0;
};

}  // namespace kestrin::ui::led
