// SPDX-License-Identifier: MIT
#include "ui/sound/NaturalOrder.h"

#include <QString>
#include <QStringView>

namespace kestrin::ui::sound {

namespace {

bool IsDigit(QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); }

/// Takes the digits from the front of the text, leading zeros left out.
QStringView TakeNumber(QStringView& text) {
  qsizetype end = 0;
  while (end < text.size() && IsDigit(text[end])) ++end;
  QStringView number = text.first(end);
  text = text.sliced(end);
  while (number.size() > 1 && number.front() == QLatin1Char('0')) number = number.sliced(1);
  return number;
}

/// Below 0, 0, above 0.
int Compare(QStringView a, QStringView b) {
  while (!a.isEmpty() && !b.isEmpty()) {
    if (IsDigit(a.front()) && IsDigit(b.front())) {
      const QStringView one = TakeNumber(a);
      const QStringView other = TakeNumber(b);
      if (one.size() != other.size()) return one.size() < other.size() ? -1 : 1;
      if (const int order = one.compare(other); order != 0) return order;
      continue;
    }
    const QChar one = a.front().toCaseFolded();
    const QChar other = b.front().toCaseFolded();
    if (one != other) return one < other ? -1 : 1;
    a = a.sliced(1);
    b = b.sliced(1);
  }
  return static_cast<int>(!a.isEmpty()) - static_cast<int>(!b.isEmpty());
}

}  // namespace

bool NaturallyBefore(const QString& a, const QString& b) {
  const int order = Compare(a, b);
  return order != 0 ? order < 0 : a < b;
}

}  // namespace kestrin::ui::sound
