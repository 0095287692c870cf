// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

namespace kestrin::ui::kit {

/// A button that looks like a link: underlined text in the accent's colour, no ground. It takes the Tab key, and
/// carries the ring of the focus like all controls.
class LinkButton : public QPushButton {
  Q_OBJECT

 public:
  /// `name` is its object name.
  LinkButton(const QString& name, const QString& text, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kestrin::ui::kit
