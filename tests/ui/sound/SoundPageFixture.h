// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QStringList>
#include <QTest>
#include <optional>

#include "support/SoundSetFixture.h"
#include "ui/kit/PathText.h"
#include "ui/kit/SpecialFolders.h"
#include "ui/sound/FileExplorer.h"
#include "ui/sound/SoundPage.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

/// Folders of a test.
class FakeFolders : public kit::SpecialFolders {
 public:
  [[nodiscard]] std::filesystem::path Desktop() const override { return desktop; }
  [[nodiscard]] std::filesystem::path Documents() const override { return documents; }
  [[nodiscard]] std::vector<kit::Drive> Drives() const override { return drives; }

  std::filesystem::path desktop;
  std::filesystem::path documents;
  std::vector<kit::Drive> drives;
};

/// A sound page over an empty set, and what it says.
class SoundPageFixture : public support::SoundSetFixture {
 protected:
  /// Shows the page; the file explorer shows the test's folder as it is now.
  void Open() {
    folders.desktop = folder / "desktop";
    folders.documents = folder / "documents";
    std::filesystem::create_directories(folders.desktop);
    std::filesystem::create_directories(folders.documents);
    folders.drives = {{"Root", folder.Path().root_path()}, {"Stick", folder.Path()}};
    page.emplace(set, folders);
    QObject::connect(&*page, &SoundPage::message, &*page, [this](const QString& text, const QString& detail) {
      messages.append(text);
      details.append(detail);
    });
    QObject::connect(&*page, &SoundPage::playRequested, &*page,
                     [this](const std::filesystem::path& path) { played.append(kit::TextOf(path)); });
    QObject::connect(&*page, &SoundPage::stopRequested, &*page, [this] { ++stops; });
    QObject::connect(&*page, &SoundPage::hint, &*page, [this](const QString& text) { hints.append(text); });
    page->resize(960, 560);
    page->show();
    page->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*page, 20000));
    ASSERT_NO_FATAL_FAILURE(ShowFolder([this] { page->SetFolder(folder.Path()); }));
  }

  /// Does what makes the file explorer show a folder, and waits until it does.
  template <typename Action>
  void ShowFolder(const Action& action) {
    bool shown = false;
    const auto connection = QObject::connect(Get<FileExplorer>(), &FileExplorer::folderShown, [&] { shown = true; });
    action();
    const bool inTime = QTest::qWaitFor([&] { return shown; }, 20000);
    QObject::disconnect(connection);
    ASSERT_TRUE(inTime) << "the folder is not shown";
  }

  /// The control of that name.
  template <typename Control>
  Control* Get(const char* name = nullptr) {
    auto* control = page->findChild<Control*>(name == nullptr ? QString() : QLatin1String(name));
    if (control == nullptr) throw std::runtime_error(std::string("there is no control ") + (name ? name : ""));
    return control;
  }
  QListView* List(const char* name) { return Get<QListView>(name); }

  /// The names in a list, like "a.lsu b.lsu".
  std::string Shown(const char* list) {
    QStringList names;
    const QAbstractItemModel* model = List(list)->model();
    for (int row = 0; row < model->rowCount(); ++row) names.append(model->index(row, 0).data().toString());
    return names.join(QLatin1Char(' ')).toStdString();
  }
  QModelIndex IndexOf(const char* list, const QString& name) {
    const QAbstractItemModel* model = List(list)->model();
    for (int row = 0; row < model->rowCount(); ++row)
      if (model->index(row, 0).data().toString() == name) return model->index(row, 0);
    throw std::runtime_error(name.toStdString() + " is not in " + list);
  }
  QPoint PointOf(const char* list, const QString& name) {
    List(list)->scrollTo(IndexOf(list, name));
    return List(list)->visualRect(IndexOf(list, name)).center();
  }

  void Press(const char* list, const QString& name, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::mousePress(List(list)->viewport(), Qt::LeftButton, held, PointOf(list, name));
  }
  void Click(const char* list, const QString& name, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::mouseClick(List(list)->viewport(), Qt::LeftButton, held, PointOf(list, name));
  }
  void DoubleClick(const char* list, const QString& name) {
    const QPoint where = PointOf(list, name);
    QTest::mouseClick(List(list)->viewport(), Qt::LeftButton, Qt::NoModifier, where);
    QTest::mouseDClick(List(list)->viewport(), Qt::LeftButton, Qt::NoModifier, where);
  }
  std::string Text(const char* label) { return Get<QLabel>(label)->text().toStdString(); }
  QString PathText(const std::string& name) { return kit::TextOf(folder / name); }

  FakeFolders folders;
  std::optional<SoundPage> page;
  QStringList messages;
  QStringList details;
  QStringList played;
  QStringList hints;
  int stops = 0;
};

}  // namespace kestrin::ui::sound
