// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <filesystem>
#include <functional>
#include <optional>

#include "core/sound/board/BoardHistory.h"
#include "core/sound/board/ComparedPlace.h"
#include "ui/board/CompareFrame.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::core::sound {
class SoundSet;
}
namespace kestrin::ui::board {
class BoardChip;
}

namespace kestrin::ui::window {

class BoardKnowledge;
class Preview;
class SetFile;
struct Surroundings;
class ToolRow;

/// What the person sees of a board's contents: the chip beside its name, the sheet that compares the set with the board
/// or with another set, and the menu of what the board has got before.
class BoardCompare : public QObject {
  Q_OBJECT

 public:
  /// Differences that the chip names.
  static constexpr std::size_t kNamed = 2;

  /// All must outlive the object.
  BoardCompare(core::sound::SoundSet& set, BoardKnowledge& knowledge, Preview& preview, SetFile& file,
               const Surroundings& around, const kit::Pictures& pictures, QObject* parent = nullptr);

  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] board::CompareFrame& Frame() const { return *m_frame; }
  /// Puts the chip onto the tool row and what belongs to it into the menu for opening sets. `mayOpen` says whether the
  /// sheet may open now; `send` begins a download.
  void Attach(ToolRow& tools, std::function<bool()> mayOpen, std::function<void()> send);
  /// Why the set cannot be sent; "" when it can.
  void ShowWhyNotSend(const QString& why) const;
  /// Opens the sheet with the board.
  void OpenBoard();
  /// Asks for a set, and opens the sheet with it.
  void AskForSet();
  /// The program ends.
  void Stop();

  /// What the board holds, in one line: "This set, but Motion 2 and Idle differ".
  struct Words {
    QString shown;
    /// Differences that are not named.
    int more = 0;
    /// With all of them.
    QString whole;
  };
  [[nodiscard]] static Words WordsFor(const BoardKnowledge& knowledge);

 signals:
  void news(const QString& text);

 private:
  void ShowKnowledge();
  void ShowSheet();
  void CompareWith(const std::filesystem::path& path);
  void TakeOver(const core::sound::ComparedPlace& place);
  void Play(const core::sound::ComparedSound& sound);
  void FillHistory();
  [[nodiscard]] board::CompareFrame::Sides BoardSides() const;
  [[nodiscard]] board::CompareFrame::Sides SetSides() const;
  [[nodiscard]] QString SendAdvice() const;

  core::sound::SoundSet& m_set;
  BoardKnowledge& m_knowledge;
  Preview& m_preview;
  SetFile& m_file;
  const Surroundings& m_around;
  core::sound::BoardHistory m_history;
  board::CompareFrame* m_frame;
  /// The tool row's.
  board::BoardChip* m_chip = nullptr;
  QMenu m_menu;
  QMenu m_historyMenu;
  std::function<bool()> m_mayOpen = [] { return false; };
  /// The set that the open one is compared with; nothing: with the board.
  std::optional<std::filesystem::path> m_other;
  kit::LatestJob m_job;
};

}  // namespace kestrin::ui::window
