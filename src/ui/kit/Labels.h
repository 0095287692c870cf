// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QLabel;
class QWidget;

namespace kestrin::ui::kit {

/// What a text of the window is for; its size, weight and colour follow from that.
enum class TextStyle {
  Plain,
  Soft,      ///< captions, hints, figures beside a name: steps back
  Title,     ///< the name of a card or of what is chosen in it
  Caption,   ///< the name of a panel that lies over the window
  Headline,  ///< how something stands that the person waits for
};

/// Gives a control the look of such a text. Its font is set once: from the control's own as it is by now.
void SetTextStyle(QWidget& control, TextStyle style);

/// A label of plain text (nothing in it is taken for markup) in that style. `name` is its object name.
[[nodiscard]] QLabel* MakeLabel(const QString& name, TextStyle style, const QString& text, QWidget* parent);

}  // namespace kestrin::ui::kit
