// SPDX-License-Identifier: MIT
#include "ui/kit/HelpText.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

#include "ui/kit/TopicOf.h"

namespace kestrin::ui::kit {

namespace {

constexpr const char* kGroundProperty = "isGround";

}  // namespace

void SetHelp(QWidget& control, const QString& text) { control.setStatusTip(text); }

void SetHelp(QWidget& control, const QString& text, HelpContext context) {
  SetHelp(control, text);
  SetHelpContext(control, context);
}

void SetHelpOfGround(QWidget& ground) {
  SetHelp(ground, PressF1());
  ground.setProperty(kGroundProperty, true);
}

void SetHelpOfGround(QWidget& ground, HelpContext context) {
  SetHelpOfGround(ground);
  SetHelpContext(ground, context);
}

bool IsGround(const QWidget& widget) { return widget.property(kGroundProperty).toBool(); }

QString HelpTextOf(const QWidget& control) { return control.statusTip(); }

QString PressF1() { return QCoreApplication::translate("HelpText", "Press F1 for help"); }

}  // namespace kestrin::ui::kit
