// SPDX-License-Identifier: MIT
#include "ui/kit/FileFilter.h"

#include <QRegularExpression>
#include <QStringList>

namespace kestrin::ui::kit {

QString QtFileFilter(const QString& filter) {
  static const QRegularExpression kShownPattern(R"(\s*\([^()]*\)\s*$)");
  const QStringList pieces = filter.split('|');
  QStringList entries;
  for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
    QStringList patterns = pieces[i + 1].toLower().split(';');
    // Only where names have endings by law does this mean all of them.
    patterns.replaceInStrings(QRegularExpression(R"(^\*\.\*$)"), "*");
    entries.append(QString(pieces[i]).remove(kShownPattern) + " (" + patterns.join(' ') + ")");
  }
  return entries.join(";;");
}

}  // namespace kestrin::ui::kit
