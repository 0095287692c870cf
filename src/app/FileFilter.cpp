#include "app/FileFilter.h"

#include <QRegularExpression>
#include <QStringList>

namespace kestrin::app {

QString QtFileFilter(const QString& filter) {
  static const QRegularExpression kShownPattern(R"(\s*\([^()]*\)\s*$)");
  const QStringList pieces = filter.split('|');
  QStringList entries;
  for (qsizetype i = 0; i + 1 < pieces.size(); i += 2)
    entries.append(QString(pieces[i]).remove(kShownPattern) + " (" + QString(pieces[i + 1]).replace(';', ' ') + ")");
  return entries.join(";;");
}

}  // namespace kestrin::app
