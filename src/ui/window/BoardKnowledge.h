// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/sound/SoundSetListener.h"
#include "core/sound/board/BoardComparison.h"
#include "core/sound/board/BoardInquiry.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::core::device {
class DeviceSession;
}
namespace kestrin::core::sound {
class SoundSet;
}
namespace kestrin::ui::kit {
class CommandGate;
}

namespace kestrin::ui::window {

struct Surroundings;

/// Finds out what the sound board of the session holds, and how that stands to the open set. The board is asked while
/// nothing else talks to it, and left alone as soon as anything else wants to; what it has told is not asked again, so
/// a change of the set costs it nothing. All files are read on a thread. Nothing is written into the board.
class BoardKnowledge : public QObject, private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  /// How far it has come.
  enum class State {
    NoBoard,   ///< there is no sound board, or nobody may ask
    Asking,    ///< the board has not told all yet
    NotKnown,  ///< the board does not tell
    Told       ///< all is known that can be
  };

  /// All must outlive the object. `recent` tells the files of the sets that the person has used last; they are known
  /// beside the sound fonts.
  BoardKnowledge(core::sound::SoundSet& set, core::device::DeviceSession& session, const Surroundings& around,
                 std::function<std::vector<std::filesystem::path>()> recent, QObject* parent = nullptr);
  ~BoardKnowledge() override;

  /// Whether the surroundings have a place to keep what is known; if not, no board is ever asked.
  [[nodiscard]] bool IsThere() const { return m_known != nullptr; }
  /// The session's state has changed.
  void Follow();
  /// Something is written into the board from now on: what was known of it counts no longer.
  void Forget();
  /// The board may be asked again.
  void LookAgain();
  /// The program ends.
  void Stop();

  [[nodiscard]] State GetState() const { return m_state; }
  /// The sounds on the board; none while it has not told, and none when it holds nothing.
  [[nodiscard]] const std::vector<core::sound::FlashSound>& Sounds() const { return m_sounds; }
  /// The open set beside the board; only when all is told.
  [[nodiscard]] const core::sound::ComparedPlaces& Places() const { return m_places; }
  /// What the known set is called that the board holds; "" when it holds none.
  [[nodiscard]] const std::string& NameOnBoard() const { return m_name; }
  /// When the board has told.
  [[nodiscard]] const QDateTime& Time() const { return m_time; }

 signals:
  /// Something of it is another now.
  void changed();

 private:
  using KnownSet = core::sound::KnownSet;
  using Guesses = std::vector<std::vector<core::sound::SoundGuess>>;

  /// What was read from this computer's disks.
  struct Learned {
    KnownSet here;
    std::vector<KnownSet> sets;
    /// Of the board's sounds, when these were known.
    std::optional<Guesses> guesses;
  };

  void SlotChanged(core::sound::SlotKind) override { LearnSoon(); }
  void ModifiedChanged() override { LearnSoon(); }
  void LearnSoon();
  void Learn();
  void TakeIn(Learned learned);
  /// Asks the board as soon as nobody else does.
  void AskSoon(int milliseconds);
  void Ask();
  /// Asks for all that is not known yet.
  core::base::Result<> AskFor(core::sound::BoardInquiry& inquiry);
  /// Which of the guesses the board confirms.
  core::base::Result<> Confirm(core::sound::BoardInquiry& inquiry);
  void Conclude(const std::vector<std::optional<core::sound::SoundGuess>>& found);
  void Reset(std::int32_t board);
  void SetState(State state);

  core::sound::SoundSet& m_set;
  core::device::DeviceSession& m_session;
  kit::CommandGate& m_gate;
  std::function<std::vector<std::filesystem::path>()> m_recent;
  /// Where sound fonts may lie.
  std::vector<std::filesystem::path> m_fontPlaces;
  std::filesystem::path m_historyFolder;
  core::base::Disk& m_disk;
  /// The thread's; nullptr when nobody may ask.
  std::shared_ptr<core::sound::KnownSounds> m_known;

  State m_state = State::NoBoard;
  /// TLS::ClassDebugID() of the board; 0 for none.
  std::int32_t m_board = 0;
  core::sound::BoardInquiry::Told m_told;
  bool m_hasSounds = false;
  std::vector<core::sound::FlashSound> m_sounds;
  std::string m_name;
  core::sound::ComparedPlaces m_places;
  QDateTime m_time;
  std::optional<Learned> m_learned;

  QTimer m_learnTimer;
  QTimer m_askTimer;
  kit::LatestJob m_job;
};

}  // namespace kestrin::ui::window
