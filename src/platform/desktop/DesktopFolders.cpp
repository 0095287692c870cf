// SPDX-License-Identifier: MIT
#include "platform/desktop/DesktopFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QStorageInfo>

#include "ui/kit/PathText.h"

namespace kestrin::platform::desktop {

using ui::kit::PathOf;

namespace {

struct Texts {
  Q_DECLARE_TR_FUNCTIONS(kestrin::platform::desktop::DesktopFolders)
};

std::filesystem::path Place(QStandardPaths::StandardLocation location) {
  // Qt writes slashes everywhere; people read what their system writes.
  return PathOf(QStandardPaths::writableLocation(location)).make_preferred();
}

}  // namespace

std::filesystem::path DesktopFolders::Desktop() const { return Place(QStandardPaths::DesktopLocation); }

std::filesystem::path DesktopFolders::Documents() const { return Place(QStandardPaths::DocumentsLocation); }

std::vector<ui::kit::Drive> DesktopFolders::Drives() const {
  std::vector<ui::kit::Drive> drives;
#ifdef _WIN32
  for (const QFileInfo& drive : QDir::drives()) {
    const QString path = drive.absoluteFilePath();
    drives.push_back({path.left(2).toStdString(), PathOf(path)});
  }
#else
  drives.push_back({"/", "/"});
  drives.push_back({Texts::tr("Home").toStdString(), PathOf(QDir::homePath())});
  // Of all that is mounted somewhere, people know what they have plugged in themselves.
  static const QStringList kPlaces{"/media/", "/run/media/", "/mnt/", "/Volumes/"};
  for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
    const QString root = volume.rootPath();
    for (const QString& place : kPlaces)
      if (root.startsWith(place)) drives.push_back({QDir(root).dirName().toStdString(), PathOf(root)});
  }
#endif
  return drives;
}

}  // namespace kestrin::platform::desktop
