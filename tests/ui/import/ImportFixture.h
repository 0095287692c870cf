// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <memory>
#include <string>

#include "support/SoundSetFixture.h"
#include "ui/import/FakeImport.h"
#include "ui/import/ImportControl.h"
#include "ui/import/ImportFrame.h"
#include "ui/import/ImportList.h"
#include "ui/import/ImportModel.h"
#include "ui/kit/FakeDialogs.h"
#include "ui/kit/Overlay.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Pictures.h"
#include "ui/window/FakeSurroundings.h"

namespace kestrin::support {

/// The import sheet over a window of nothing else, a set, and sounds that become what the test says.
class ImportFixture : public SoundSetFixture {
 protected:
  ImportFixture() {
    folders.documents = folder / "papers";
    std::filesystem::create_directories(folders.documents);
    std::filesystem::create_directories(Heron());
  }
  ~ImportFixture() override {
    import.LetGo();
    control.reset();
  }

  /// The folder that the person drops.
  [[nodiscard]] std::filesystem::path Heron() const { return folder / "Night heron"; }
  /// A file there, of which the plan says what it becomes.
  std::filesystem::path Source(const std::string& name, const FakeImport::Plan& plan = {}) {
    import.plans[name] = plan;
    return WriteBytes(Heron() / name, name);
  }
  /// A plan for a sound of so many tenths of a second.
  static FakeImport::Plan Tenths(std::size_t tenths, std::vector<std::string> changes = {}) {
    return {tenths * 4800, std::move(changes)};
  }

  void Make(const QSize& size = {1280, 800}) {
    window.resize(size);
    frame = new ui::imports::ImportFrame(rows, pictures);
    overlay = new ui::kit::Overlay(*frame, window);
    control = std::make_unique<ui::imports::ImportControl>(
        *frame, rows, ui::imports::ImportControl::Around{import.Means(), set, dialogs, folders});
    QObject::connect(control.get(), &ui::imports::ImportControl::playRequested,
                     [this](const std::filesystem::path& path) { played.push_back(path); });
    QObject::connect(control.get(), &ui::imports::ImportControl::stopRequested, [this] { ++stops; });
    QObject::connect(control.get(), &ui::imports::ImportControl::news,
                     [this](const QString& text) { news.append(text); });
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window, 20000));
  }
  /// Opens the sheet with the folder, and waits until all sounds are ready.
  void OpenHeron() {
    if (control == nullptr) Make();
    control->Open({Heron()});
    ASSERT_TRUE(Until([this] { return rows.rowCount() > 0; }));
    AwaitReady();
  }
  void AwaitReady() {
    ASSERT_TRUE(Until([this] { return rows.Unready().empty(); }));
  }
  /// Lets the event loop run until `condition` holds; false when that takes too long.
  static bool Until(const std::function<bool()>& condition) {
    QElapsedTimer time;
    time.start();
    while (!condition()) {
      if (time.elapsed() > 20000) return false;
      QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    }
    return true;
  }
  template <typename T>
  T& Find(const char* name) const {
    T* const found = window.findChild<T*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("the sheet has no ") + name);
    return *found;
  }
  [[nodiscard]] ui::imports::ImportList& List() const { return Find<ui::imports::ImportList>("ImportList"); }
  [[nodiscard]] QPushButton& Button(const char* name) const { return Find<QPushButton>(name); }
  [[nodiscard]] std::string LabelText(const char* name) const { return Find<QLabel>(name).text().toStdString(); }
  [[nodiscard]] int RowNamed(const std::string& name) const {
    for (int row = 0; row < rows.rowCount(); ++row)
      if (rows.index(row).data().toString().toStdString() == name) return row;
    throw std::runtime_error("there is no row " + name);
  }
  [[nodiscard]] std::string Data(const std::string& name, int role) const {
    return rows.index(RowNamed(name)).data(role).toString().toStdString();
  }
  /// All rows like "[x] swing 01.wav: Motion".
  [[nodiscard]] std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (int row = 0; row < rows.rowCount(); ++row) {
      const QModelIndex index = rows.index(row);
      const bool isTicked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
      const bool isFailed = index.data(ui::imports::ImportModel::kIsFailed).toBool();
      const QString slot = isFailed ? "-" : index.data(ui::imports::ImportModel::kSlotText).toString();
      lines.push_back((isTicked ? "[x] " : "[ ] ") + index.data().toString().toStdString() + ": " + slot.toStdString());
    }
    return lines;
  }
  /// Puts the keyboard on a row alone.
  void Choose(const std::string& name) {
    List().setFocus();
    List().selectionModel()->setCurrentIndex(rows.index(RowNamed(name)), QItemSelectionModel::ClearAndSelect);
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) const { QTest::keyClick(&List(), key, held); }
  void Import() {
    Button("ImportTakeBtn").click();
    ASSERT_TRUE(Until([this] { return !frame->isVisible(); }));
  }

  FakeImport import;
  FakeDialogs dialogs;
  FakeFolders folders;
  ui::kit::Pictures pictures{KESTRIN_PICTURES};
  ui::imports::ImportModel rows;
  QWidget window;
  ui::imports::ImportFrame* frame = nullptr;
  ui::kit::Overlay* overlay = nullptr;
  std::unique_ptr<ui::imports::ImportControl> control;
  std::vector<std::filesystem::path> played;
  int stops = 0;
  QStringList news;
};

}  // namespace kestrin::support
