// SPDX-License-Identifier: MIT
// Turns the drawings of the program and of its kinds of files into icons in all sizes, as desktops want them: the theme
// "hicolor" with PNG files, and .ico files.
//
//     render_icons <folder of the SVG files> <folder for the icons>

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTextStream>
#include <functional>
#include <vector>

#include "render/Drawing.h"
#include "render/IconFile.h"

namespace {

struct Drawing {
  const char* name;
  /// The group of the icon theme that it belongs to.
  const char* group;
};

constexpr Drawing kDrawings[] = {{"kestrin", "apps"},
                                 {"application-x-kestrin-sound-set", "mimetypes"},
                                 {"application-x-kestrin-led-settings", "mimetypes"},
                                 {"application-x-kestrin-sound", "mimetypes"}};

constexpr int kThemeSides[] = {16, 22, 24, 32, 48, 64, 128, 256, 512};
/// What Windows shows at 100 to 250 % and in its views of folders.
constexpr int kIconFileSides[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

/// "" when it is written, else what went wrong.
QString Write(const QString& path, const std::function<bool(QIODevice&)>& content) {
  QSaveFile file(path);
  if (!QFileInfo(path).dir().mkpath(".") || !file.open(QIODevice::WriteOnly) || !content(file) || !file.commit())
    return path + ": " + file.errorString();
  return "";
}

/// "" when all icons of the drawing are written, else what went wrong.
QString Render(const Drawing& drawing, const QString& drawings, const QString& folder) {
  const QString file = QString("%1/%2.svg").arg(drawings, drawing.name);
  for (const int side : kThemeSides) {
    const QImage image = kestrin::assets::Draw(file, side);
    if (image.isNull()) return file + " is missing or is not an SVG drawing.";
    const QString path = QString("%1/hicolor/%2x%2/%3/%4.png").arg(folder).arg(side).arg(drawing.group, drawing.name);
    if (const QString problem = Write(path, [&image](QIODevice& to) { return image.save(&to, "PNG"); });
        !problem.isEmpty())
      return problem;
  }
  std::vector<QImage> images;
  for (const int side : kIconFileSides) images.push_back(kestrin::assets::Draw(file, side));
  const QByteArray bytes = kestrin::assets::IconFile(images);
  return Write(QString("%1/%2.ico").arg(folder, drawing.name),
               [&bytes](QIODevice& to) { return to.write(bytes) == bytes.size(); });
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QTextStream errors(stderr);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() != 3) {
    errors << "Usage: render_icons <folder of the SVG files> <folder for the icons>\n";
    return 2;
  }
  for (const Drawing& drawing : kDrawings) {
    const QString problem = Render(drawing, words[1], words[2]);
    if (problem.isEmpty()) continue;
    errors << problem << '\n';
    return 1;
  }
  return 0;
}
