// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <array>
#include <string>
#include <vector>

#include "core/sound/LSU_Configuration.h"
#include "core/sound/SoundSet.h"
#include "core/sound/board/BoardHistory.h"
#include "ui/board/BoardChip.h"
#include "ui/board/CompareRow.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {

/// The window with a place to keep what it knows, over a board that keeps its state in a folder.
class BoardFixture : public MainFixture {
 protected:
  /// A sound of a set: its slot, its file and its volume.
  struct Placed {
    std::string file;
    int volume = 100;
  };
  /// Boot, power on, power off, idle, motion 1, impact 1, lock-up 1.
  using Seven = std::array<Placed, 7>;

  BoardFixture() {
    knowledge = data;
    std::filesystem::create_directories(folder / "board");
    for (unsigned i = 0; i < 7; ++i) Sound(Name(i), 200, 50 + i);
  }

  [[nodiscard]] static std::string Name(unsigned number) { return "k" + std::to_string(number) + ".lsu"; }
  /// The sounds that the fixture has written, at full volume.
  [[nodiscard]] static Seven Plain() {
    Seven sounds;
    for (unsigned i = 0; i < sounds.size(); ++i) sounds.at(i).file = Name(i);
    return sounds;
  }
  /// The same with one of them at another volume.
  [[nodiscard]] static Seven With(std::size_t number, int volume, Seven sounds = Plain()) {
    sounds.at(number).volume = volume;
    return sounds;
  }
  /// Writes the file of a set.
  std::filesystem::path WriteSet(const std::string& name, const Seven& sounds) {
    const char* const lines[] = {"BOOT", "PWRON", "PWROFF", "IDLE", "MOTION-1", "IMPACT-1", "LOCKUP-1"};
    std::string text;
    for (std::size_t i = 0; i < sounds.size(); ++i)
      text += std::string(lines[i]) + "\r\n" + Text(folder / sounds.at(i).file).toStdString() + "\r\n " +
              std::to_string(sounds.at(i).volume) + "\r\n";
    return WriteBytes(folder / name, text);
  }

  /// Writes what a download of these sounds leaves in the board's memory.
  void PutOnBoard(const Seven& sounds) {
    core::sound::LSU_Configuration set;
    const core::sound::SlotKind kinds[] = {core::sound::SlotKind::Boot,   core::sound::SlotKind::PwrOn,
                                           core::sound::SlotKind::PwrOff, core::sound::SlotKind::Idle,
                                           core::sound::SlotKind::Motion, core::sound::SlotKind::Impact,
                                           core::sound::SlotKind::Lockup};
    for (std::size_t i = 0; i < sounds.size(); ++i) {
      ASSERT_TRUE(set.AddFile(folder / sounds.at(i).file, kinds[i]));
      set.SetVolume(kinds[i], 1, static_cast<std::int16_t>(sounds.at(i).volume));
    }
    PutOnBoard(set);
  }
  /// The same of a set of any size.
  void PutOnBoard(core::sound::LSU_Configuration& set) {
    ASSERT_TRUE(set.MakeMemoryMap({}));
    std::string flash(512, '\xFF');
    const std::vector<std::uint8_t> table = set.GetFileTable();
    std::copy(table.begin(), table.end(), flash.begin() + 12);
    for (const core::sound::SlotFile& entry : set.FilesInFlashOrder()) {
      std::vector<std::uint8_t> bytes;
      ASSERT_TRUE(entry.file->GetBytes(bytes, 0, static_cast<std::size_t>(entry.file->NrOfBytes())));
      flash.append(bytes.begin(), bytes.end());
      flash += '\xFF';
    }
    WriteBytes(folder / "board" / "flash.bin", flash);
  }
  [[nodiscard]] std::string Flash() const { return ReadBytes(folder / "board" / "flash.bin"); }
  /// That board, with more about it.
  [[nodiscard]] std::string Board(const std::string& more = "") const {
    return "dir=" + (folder / "board").string() + (more.empty() ? "" : "," + more);
  }
  /// The board holds a set, and another one is open.
  void StartWith(const Seven& onBoard, const Seven& open) {
    PutOnBoard(onBoard);
    Start(Board());
    Open(open);
  }
  void Open(const Seven& sounds) { window->OpenSet(WriteSet("open.lscfg", sounds)); }

  [[nodiscard]] ui::board::BoardChip& Chip() const { return Find<ui::board::BoardChip>("BoardChip"); }
  /// Whether the chip comes to say so.
  [[nodiscard]] testing::AssertionResult Says(const QString& words) {
    if (Until([&] { return Chip().Words() == words; }, 5000)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "the chip says \"" << Chip().Words().toStdString() << '"';
  }
  /// An entry of the menu beside "Open", by its name or that of its menu.
  [[nodiscard]] QAction& MenuEntry(const QString& name) const {
    for (QAction* const action : Button("LoadBtn").menu()->actions())
      if (action->objectName() == name || (action->menu() != nullptr && action->menu()->objectName() == name))
        return *action;
    throw std::runtime_error("the menu has no " + name.toStdString());
  }
  [[nodiscard]] std::uint64_t Written() const { return agent->ReportsWritten(); }
  [[nodiscard]] std::vector<core::sound::HistoryEntry> Entries() {
    return core::sound::BoardHistory(knowledge / core::sound::BoardHistory::kFolderName, disk).Entries();
  }

  /// Presses "Take over" in the row of that name.
  void TakeOver(const QString& place) {
    for (const ui::board::CompareRow* const row : window->findChildren<ui::board::CompareRow*>()) {
      if (row->isHidden() || row->findChild<QLabel*>("PlaceLabel")->text() != place) continue;
      auto* const button = static_cast<QAbstractButton*>(row->Button(ui::board::CompareRow::Part::TakeOver));
      ASSERT_NE(button, nullptr) << place.toStdString();
      return button->click();
    }
    FAIL() << "no row " << place.toStdString();
  }
};

}  // namespace kestrin::support
