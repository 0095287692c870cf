// SPDX-License-Identifier: MIT
#include "demo/pictures/BoardScenes.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolButton>
#include <filesystem>
#include <fstream>
#include <functional>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/sound/board/BoardHistory.h"
#include "demo/pictures/Stage.h"
#include "ui/board/BoardChip.h"
#include "ui/kit/PathText.h"

namespace kestrin::demo {

namespace {

namespace fs = std::filesystem;

/// The demo set's file, once more with changes to its text.
fs::path Changed(const Place& place, const fs::path& folder,
                 const std::vector<std::pair<std::string, std::string>>& by) {
  std::ifstream file(place.sounds / "demo.lscfg", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  std::string content = text.str();
  for (const auto& [from, to] : by) content = std::regex_replace(content, std::regex(from), to);
  // Its sounds lie beside the original.
  content =
      std::regex_replace(content, std::regex("(^|\n)([^\r\n/]+\\.lsu)"), "$1" + place.sounds.generic_string() + "/$2");
  fs::path path = folder / "Ember knight.lscfg";
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

/// The window over a board that got one set from here, and has another one open now.
class BoardStage {
 public:
  BoardStage(const Place& place, const std::string& board)
      : m_stage(place.program, place.sounds, board, nullptr, true) {
    m_stage.Open(place.size, false);
  }

  void Send(const fs::path& set) {
    Open(set);
    m_stage.Find<QAbstractButton>("SendBtn").click();
    Await([this] { return Chip().Shown() == ui::board::BoardChip::State::Same; });
    m_stage.Find<QAbstractButton>("CancelBtn").click();
  }
  void Open(const fs::path& set) { m_stage.Window().OpenSet(set); }
  void AwaitChip(ui::board::BoardChip::State state) {
    Await([this, state] { return Chip().Shown() == state; });
    m_stage.Settle(m_stage.Window());
  }
  [[nodiscard]] ui::board::BoardChip& Chip() { return m_stage.Find<ui::board::BoardChip>("BoardChip"); }
  void NewSet() { m_stage.Find<QToolButton>("LoadBtn").menu()->actions().front()->trigger(); }
  void Press(const char* button) { m_stage.Find<QAbstractButton>(button).click(); }
  [[nodiscard]] fs::path DataFolder() const { return m_stage.DataFolder(); }
  [[nodiscard]] QPixmap Grab() {
    m_stage.Settle(m_stage.Window());
    return m_stage.Window().grab();
  }

 private:
  static void Await(const std::function<bool()>& condition) {
    while (!condition()) QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
  }

  Stage m_stage;
};

/// The differences of the scenes: another idle sound, another volume, a lock-up sound that is only here.
const std::vector<std::pair<std::string, std::string>> kChanges = {
    {"idle\\.lsu", "boot.lsu"}, {"(swing2\\.lsu\r?\n) *[0-9]+", "$1 60"}, {"LOCKUP-2", "LOCKUP-1"}};

QPixmap TakeDiffers(const Place& place, const std::string& board, bool isOpen) {
  const QTemporaryDir folder;
  BoardStage stage(place, board);
  stage.Send(Changed(place, ui::kit::PathOf(folder.path()), kChanges));
  stage.Open(Changed(place, place.sounds, {}));
  stage.AwaitChip(ui::board::BoardChip::State::Differs);
  if (isOpen) stage.Chip().click();
  return stage.Grab();
}

}  // namespace

QPixmap TakeBoardSame(const Place& place, const std::string& board) {
  BoardStage stage(place, board);
  stage.Send(Changed(place, place.sounds, {}));
  stage.Chip().click();
  return stage.Grab();
}

QPixmap TakeBoardDiffers(const Place& place, const std::string& board) { return TakeDiffers(place, board, true); }

QPixmap TakeBoardChip(const Place& place, const std::string& board) { return TakeDiffers(place, board, false); }

QPixmap TakeBoardUnknown(const Place& place, const std::string& board) {
  BoardStage stage(place, board);
  {
    const QTemporaryDir folder;
    const fs::path copies = ui::kit::PathOf(folder.path()) / "copies";
    fs::copy(place.sounds, copies);
    stage.Send(copies / "demo.lscfg");
  }
  fs::remove_all(stage.DataFolder() / core::sound::BoardHistory::kFolderName);
  stage.NewSet();
  stage.AwaitChip(ui::board::BoardChip::State::Other);
  stage.Chip().click();
  return stage.Grab();
}

QPixmap TakeBoardHeld(const Place& place, const std::string& board) {
  BoardStage stage(place, board);
  stage.Send(Changed(place, place.sounds, {}));
  stage.Press("SendBtn");
  return stage.Grab();
}

}  // namespace kestrin::demo
