// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

class QStaticText;

namespace kestrin::ui::kit {

/// A label of plain text that is broken at ends of lines, and where it must at blanks if there are any, else anywhere:
/// a long path is never cut off.
class WrapLabel : public QLabel {
  Q_OBJECT

 public:
  explicit WrapLabel(QWidget* parent = nullptr);

  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] QStaticText Laid(int width) const;
};

}  // namespace kestrin::ui::kit
