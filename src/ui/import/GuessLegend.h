// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace kestrin::ui::imports {

/// Says what the dashed chip of a slot means.
class GuessLegend : public QWidget {
  Q_OBJECT

 public:
  explicit GuessLegend(QWidget* parent = nullptr);

  /// Whether there is a guess to look at; otherwise only the room is kept.
  void Show(bool isAnyGuess);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool m_isAnyGuess = false;
};

}  // namespace kestrin::ui::imports
