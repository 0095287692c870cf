// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "ui/led/BladeLight.h"

namespace kestrin::ui::led {

/// A picture of the saber: the hilt, and the blade in the light that the LED would give it. The ground is dark in
/// every scheme, as light shows its colour in the dark only.
class BladeView : public QWidget {
  Q_OBJECT

 public:
  /// The ground that light is shown on.
  static constexpr QRgb kGround = 0xff0e1116;

  explicit BladeView(QWidget* parent = nullptr);

  void Show(const BladeLight& light);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  BladeLight m_light;
};

}  // namespace kestrin::ui::led
