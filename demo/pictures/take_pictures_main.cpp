// SPDX-License-Identifier: MIT
// take_pictures --program DIR --sounds DIR [--scheme light|dark|contrast] [--size WIDTHxHEIGHT] [--part
// WIDTHxHEIGHT+X+Y]
//   FOLDER [SCENE...]
// Takes pictures of the window, without a display when QT_QPA_PLATFORM is "offscreen": FOLDER/SCENE-SCHEME.png.

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QRect>
#include <QRegularExpression>
#include <exception>
#include <iostream>
#include <optional>

#include "demo/pictures/Scenes.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Theme.h"

namespace {

using namespace kestrin;

/// "640x400+640+0" is 640 wide, 400 high, 640 from the left, at the top; "" is all of the picture.
std::optional<QRect> PartOf(const QString& text) {
  if (text.isEmpty()) return QRect();
  static const QRegularExpression form("^(\\d+)x(\\d+)\\+(\\d+)\\+(\\d+)$");
  const QRegularExpressionMatch match = form.match(text);
  if (!match.hasMatch()) return std::nullopt;
  const auto number = [&match](int group) { return match.captured(group).toInt(); };
  return QRect(number(3), number(4), number(1), number(2));
}

int Take(QApplication& application) {
  QCommandLineParser parser;
  const QCommandLineOption program("program", "The folder with the program's pictures and help.", "DIR", ".");
  const QCommandLineOption sounds("sounds", "The folder with the demo set.", "DIR", ".");
  const QCommandLineOption scheme("scheme", "light, dark, or contrast: white on black.", "SCHEME", "light");
  const QCommandLineOption size("size", "The window's size.", "WIDTHxHEIGHT", "1280x800");
  const QCommandLineOption cut("part", "Only this part of the picture.", "WIDTHxHEIGHT+X+Y");
  parser.addOptions({program, sounds, scheme, size, cut});
  parser.addHelpOption();
  parser.addPositionalArgument("FOLDER", "Where the pictures go.");
  parser.addPositionalArgument("SCENE", "All of them when none is named.", "[SCENE...]");
  parser.process(application);

  const QStringList sides = parser.value(size).split('x');
  const QStringList names = parser.positionalArguments();
  const std::optional<QRect> part = PartOf(parser.value(cut));
  if (names.isEmpty() || sides.size() != 2 || !part) parser.showHelp(2);
  const QString look = parser.value(scheme);
  if (look == "contrast")
    ui::kit::Theme::Apply(application, ui::kit::ColorScheme::System, [] { return QPalette(Qt::black); });
  else
    ui::kit::Theme::Apply(application, look == "dark" ? ui::kit::ColorScheme::Dark : ui::kit::ColorScheme::Light);
  const demo::Place place{ui::kit::PathOf(parser.value(program)),
                          ui::kit::PathOf(parser.value(sounds)),
                          {sides.constFirst().toInt(), sides.constLast().toInt()}};
  const QDir folder(names.constFirst());
  for (const demo::Scene& scene : demo::Scenes()) {
    if (names.size() > 1 && !names.mid(1).contains(scene.name)) continue;
    const QString file = folder.filePath(QString("%1-%2.png").arg(scene.name, look));
    if (!scene.take(place, scene.board).copy(*part).save(file)) {
      std::cerr << "take_pictures: " << file.toStdString() << " could not be written\n";
      return 1;
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QCoreApplication::setApplicationName("Kestrin Launcher");
  QApplication::setQuitOnLastWindowClosed(false);
  try {
    return Take(application);
  } catch (const std::exception& error) {
    std::cerr << "take_pictures: " << error.what() << "\n";
    return 1;
  }
}
