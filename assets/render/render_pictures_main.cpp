// SPDX-License-Identifier: MIT
// Turns the drawings into the bitmap files that the window reads from the program's folder.
//
//     render_pictures <folder of the SVG files> <folder for the pictures>

#include <QCoreApplication>
#include <QSaveFile>
#include <QTextStream>

#include "render/BitmapFile.h"
#include "render/Drawing.h"

namespace {

/// An icon fills 24 x 24 points; four pixels a point are whole steps at 100, 200 and 400 % and plenty in between.
constexpr int kIconSide = 96;
/// The logo and the program's own icon are shown larger.
constexpr int kEmblemSide = 256;

struct Picture {
  const char* file;
  const char* drawing;
  int side;
  bool muted;
};

constexpr Picture kPictures[] = {
    {"corvent_small.bmp", "corvent_small.svg", kEmblemSide, false},
    {"kestrin.bmp", "kestrin.svg", kEmblemSide, false},
    {"LS_on.bmp", "LS_on.svg", kIconSide, false},
    {"LS_off.bmp", "LS_off.svg", kIconSide, false},
    {"open.bmp", "open.svg", kIconSide, false},
    {"save.bmp", "save.svg", kIconSide, false},
    {"setup.bmp", "setup.svg", kIconSide, false},
    {"setup_off.bmp", "setup.svg", kIconSide, true},
    {"view.bmp", "view.svg", kIconSide, false},
    {"help.bmp", "help.svg", kIconSide, false},
    {"copy.bmp", "copy.svg", kIconSide, false},
    {"shield.bmp", "shield.svg", kIconSide, false},
    {"import.bmp", "import.svg", kIconSide, false},
    {"try.bmp", "try.svg", kIconSide, false},
    {"download.bmp", "download.svg", kIconSide, false},
    {"download_off.bmp", "download.svg", kIconSide, true},
    {"update.bmp", "update.svg", kIconSide, false},
    {"update_off.bmp", "update.svg", kIconSide, true},
    {"play.bmp", "play.svg", kIconSide, false},
    {"stop.bmp", "stop.svg", kIconSide, false},
    {"undo.bmp", "undo.svg", kIconSide, false},
    {"redo.bmp", "redo.svg", kIconSide, false},
    {"remove.bmp", "remove.svg", kIconSide, false},
    {"open_off.bmp", "open.svg", kIconSide, true},
    {"save_off.bmp", "save.svg", kIconSide, true},
    {"UpdLED.bmp", "UpdLED.svg", kIconSide, false},
    {"UpdLED_off.bmp", "UpdLED.svg", kIconSide, true},
    {"apply.bmp", "apply.svg", kIconSide, false},
    {"apply_off.bmp", "apply.svg", kIconSide, true},
};

/// "" when the picture stands in the folder, else what went wrong.
QString Render(const Picture& picture, const QString& drawings, const QString& folder) {
  const QString drawing = drawings + '/' + picture.drawing;
  QImage image = kestrin::assets::Draw(drawing, picture.side);
  if (image.isNull()) return drawing + " is missing or is not an SVG drawing.";
  if (picture.muted) image = kestrin::assets::Muted(image);

  QSaveFile file(folder + '/' + picture.file);
  if (!file.open(QIODevice::WriteOnly)) return file.fileName() + ": " + file.errorString();
  file.write(kestrin::assets::BitmapFile(image));
  return file.commit() ? QString() : file.fileName() + ": " + file.errorString();
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QTextStream errors(stderr);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() != 3) {
    errors << "Usage: render_pictures <folder of the SVG files> <folder for the pictures>\n";
    return 2;
  }
  for (const Picture& picture : kPictures) {
    const QString problem = Render(picture, words[1], words[2]);
    if (problem.isEmpty()) continue;
    errors << problem << '\n';
    return 1;
  }
  return 0;
}
