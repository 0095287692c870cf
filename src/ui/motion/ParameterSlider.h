// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>
#include <optional>

namespace kestrin::ui::motion {

/// A slider with a tick at every value that it can take, longer ones at round numbers, and marks at one or two of them.
class ParameterSlider : public QSlider {
  Q_OBJECT

 public:
  /// A tick every `unit` values, a longer one every fifth, the longest every `round` values.
  ParameterSlider(int minimum, int maximum, int unit, int round, QWidget* parent = nullptr);

  /// The value that is marked; empty for none. One outside the range is marked at the end that is nearest to it.
  void SetMark(std::optional<int> value);
  [[nodiscard]] std::optional<int> Mark() const { return m_mark; }

  /// The value that is suggested, marked above the knob; empty for none.
  void SetSuggestion(std::optional<int> value);
  /// A narrow slider is a third as wide, and leaves out the ticks for which there is no room then.
  void SetNarrow(bool isNarrow);

  /// Wide enough for two pixels from tick to tick, so that each can be seen and all are equally far apart,
  /// unless it is narrow.
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void initStyleOption(QStyleOptionSlider* option) const override;
  void paintEvent(QPaintEvent* event) override;

 private:
  /// Where the knob's middle is at that value.
  [[nodiscard]] int PlaceOf(int value) const;
  /// The room of the knob; ticks and mark are below.
  [[nodiscard]] int KnobExtent() const;
  void PaintTicks(QPainter& painter) const;
  void PaintMark(QPainter& painter) const;
  void PaintSuggestion(QPainter& painter) const;

  int m_round;
  std::optional<int> m_mark;
  std::optional<int> m_suggestion;
  bool m_isNarrow = false;
};

}  // namespace kestrin::ui::motion
