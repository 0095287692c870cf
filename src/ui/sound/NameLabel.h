// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace kestrin::ui::sound {

/// A name on one line, which gives way to the controls beside it: where there is too little room its middle becomes an
/// ellipsis. The text of the label stays the whole name.
class NameLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrin::ui::sound
