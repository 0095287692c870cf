// SPDX-License-Identifier: MIT
#include "ui/kit/TopicOf.h"

#include <QVariant>
#include <QWidget>

namespace kestrin::ui::kit {

void SetHelpContext(QWidget& widget, HelpContext context) {
  widget.setProperty(kHelpContextProperty, static_cast<int>(context));
}

HelpContext TopicOf(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    bool isNumber = false;
    const int context = widget->property(kHelpContextProperty).toInt(&isNumber);
    if (isNumber) return static_cast<HelpContext>(context);
  }
  return HelpContext::Overview;
}

}  // namespace kestrin::ui::kit
