// SPDX-License-Identifier: MIT
#include "ui/kit/Translated.h"

#include <QCoreApplication>

namespace kestrin::ui::kit {

QString Translated(const std::string& text) {
  // The translation of nothing is what a language file says of itself.
  return text.empty() ? QString() : QCoreApplication::translate("core", text.c_str());
}

}  // namespace kestrin::ui::kit
