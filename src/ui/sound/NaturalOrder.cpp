// SPDX-License-Identifier: MIT
#include "ui/sound/NaturalOrder.h"

#include <QString>
#include <QStringView>
#include <string_view>

#include "core/base/NaturalOrder.h"

namespace kestrin::ui::sound {

bool NaturallyBefore(const QString& a, const QString& b) {
  const auto letters = [](const QString& text) {
    return std::u16string_view(QStringView(text).utf16(), static_cast<std::size_t>(text.size()));
  };
  const auto fold = [](char16_t letter) { return QChar(letter).toCaseFolded().unicode(); };
  const int order = core::base::CompareNaturally(letters(a), letters(b), fold);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace kestrin::ui::sound
