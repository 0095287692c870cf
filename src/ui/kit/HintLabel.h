// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace kestrin::ui::kit {

/// A hint whose parts are separated by a run of blanks: in one line where there is room, else a line for each part.
class HintLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QStringList Parts() const;
  [[nodiscard]] QStringList Lines(int width) const;
};

}  // namespace kestrin::ui::kit
