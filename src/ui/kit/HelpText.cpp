// SPDX-License-Identifier: MIT
#include "ui/kit/HelpText.h"

#include <QCoreApplication>
#include <QWidget>

#include "ui/kit/TopicOf.h"

namespace kestrin::ui::kit {

void SetHelp(QWidget& control, const QString& text) { control.setStatusTip(text); }

void SetHelp(QWidget& control, const QString& text, HelpContext context) {
  SetHelp(control, text);
  SetHelpContext(control, context);
}

void SetHelpOfGround(QWidget& ground) { SetHelp(ground, PressF1()); }

QString HelpTextOf(const QWidget& control) { return control.statusTip(); }

QString PressF1() { return QCoreApplication::translate("HelpText", "Press F1 for help"); }

}  // namespace kestrin::ui::kit
