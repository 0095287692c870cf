// SPDX-License-Identifier: MIT
#include "ui/window/BoardKnowledge.h"

#include <algorithm>
#include <utility>

#include "core/device/DeviceSession.h"
#include "core/sound/SoundSet.h"
#include "core/sound/board/BoardHistory.h"
#include "ui/kit/CommandGate.h"
#include "ui/window/SetsOfComputer.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

using core::base::FailureKind;
using core::base::Result;
using core::sound::BoardComparison;
using core::sound::BoardHistory;
using core::sound::BoardInquiry;
using core::sound::KnownSounds;
using core::sound::SoundGuess;

namespace {

/// From the last of several changes of the set until they are looked at.
constexpr int kLearnMilliseconds = 150;
/// Until it is looked again whether the board is free.
constexpr int kRetryMilliseconds = 100;

/// Ends what is read on the thread.
struct Stopped {};

}  // namespace

BoardKnowledge::BoardKnowledge(core::sound::SoundSet& set, core::device::DeviceSession& session,
                               const Surroundings& around, std::function<std::vector<std::filesystem::path>()> recent,
                               QObject* parent)
    : QObject(parent),
      m_set(set),
      m_session(session),
      m_gate(around.gate),
      m_recent(std::move(recent)),
      m_fontPlaces(around.foldersToWriteIn),
      m_historyFolder(around.dataFolder / BoardHistory::kFolderName),
      m_disk(around.disk),
      m_learnTimer(this),
      m_askTimer(this),
      m_job(this) {
  m_learnTimer.setObjectName("LearnTimer");
  m_askTimer.setObjectName("AskBoardTimer");
  m_learnTimer.setSingleShot(true);
  m_askTimer.setSingleShot(true);
  connect(&m_learnTimer, &QTimer::timeout, this, &BoardKnowledge::Learn);
  connect(&m_askTimer, &QTimer::timeout, this, &BoardKnowledge::Ask);
  if (around.dataFolder.empty()) return;
  m_known = std::make_shared<KnownSounds>(around.dataFolder / KnownSounds::kFileName);
  m_set.AddListener(*this);
}

BoardKnowledge::~BoardKnowledge() {
  if (IsThere()) m_set.RemoveListener(*this);
}

void BoardKnowledge::Follow() {
  if (!IsThere()) return;
  const core::device::SessionState& state = m_session.State();
  const std::int32_t board = state.HasSoundBoard() ? state.board : 0;
  if (board != m_board) Reset(board);
}

void BoardKnowledge::Reset(std::int32_t board) {
  m_board = board;
  m_told.clear();
  m_hasSounds = false;
  m_sounds.clear();
  m_name.clear();
  m_places.clear();
  m_learned.reset();
  m_job.Cancel();
  m_learnTimer.stop();
  m_askTimer.stop();
  SetState(board == 0 ? State::NoBoard : State::Asking);
  if (board != 0) m_learnTimer.start(0);
}

void BoardKnowledge::Forget() {
  if (IsThere()) Reset(0);
}

void BoardKnowledge::LookAgain() {
  m_board = 0;
  Follow();
}

void BoardKnowledge::Stop() {
  if (!IsThere()) return;
  m_job.Cancel();
  m_learnTimer.stop();
  m_askTimer.stop();
  m_board = 0;
}

void BoardKnowledge::SetState(State state) {
  m_state = state;
  emit changed();
}

void BoardKnowledge::LearnSoon() {
  if (m_board != 0) m_learnTimer.start(kLearnMilliseconds);
}

void BoardKnowledge::Learn() {
  if (m_board == 0) return;
  if (m_set.IsLoading()) return LearnSoon();
  const auto configuration = std::make_shared<core::sound::LSU_Configuration>(m_set.Configuration().WithoutStreams());
  const auto sounds = m_hasSounds ? std::optional(m_sounds) : std::nullopt;
  m_job.Start([this, configuration, path = m_set.Path(), recent = m_recent(), places = m_fontPlaces, sounds,
               known = m_known, history = BoardHistory(m_historyFolder, m_disk)](
                  const kit::LatestJob::GoOn& goOn, const kit::LatestJob::Deliver& deliver) {
    const core::base::EventPump pump = [&goOn] {
      if (!goOn()) throw Stopped();
    };
    try {
      auto learned = std::make_shared<Learned>();
      learned->here = KnownSet::Of(*configuration, path, *known, pump);
      const std::vector<core::sound::HistoryEntry> entries = history.Entries();
      // What a board has got is known even when its files are gone.
      for (const core::sound::HistoryEntry& entry : entries) learned->sets.push_back(entry.set);
      for (const std::filesystem::path& file : SetsOfComputer(recent, places)) {
        pump();
        if (std::optional<KnownSet> set = KnownSet::Load(file, *known, pump)) learned->sets.push_back(*std::move(set));
      }
      if (sounds) learned->guesses = BoardComparison::Guess(learned->here, learned->sets, *sounds, *known, pump);
      known->Keep();
      deliver([this, learned] { TakeIn(std::move(*learned)); });
    } catch (const Stopped&) {
      // A later job does better.
    }
  });
}

void BoardKnowledge::TakeIn(Learned learned) {
  if (m_board == 0 || m_state == State::NotKnown) return;
  m_learned = std::move(learned);
  core::device::TLS* const board = m_session.Board();
  if (board != nullptr && m_hasSounds) {
    // Without a question, when the board has told enough already.
    BoardInquiry inquiry(
        *board, [] { return false; }, m_told);
    if (Confirm(inquiry)) return;
  }
  AskSoon(0);
}

void BoardKnowledge::AskSoon(int milliseconds) { m_askTimer.start(milliseconds); }

void BoardKnowledge::Ask() {
  if (m_board == 0 || !m_learned) return;
  core::device::TLS* const board = m_session.Board();
  if (board == nullptr) return;
  if (m_gate.IsBusy() || m_set.IsLoading()) return AskSoon(kRetryMilliseconds);
  const kit::CommandGate::Passage passage(m_gate);
  const std::int32_t asked = m_board;
  BoardInquiry inquiry(
      *board,
      [this, asked, pump = m_gate.Pump()] {
        // A board that answers at once would leave the window no turn.
        pump();
        return !m_gate.IsAwaited() && m_board == asked;
      },
      m_told);
  const Result<> told = AskFor(inquiry);
  if (m_board != asked) return;
  m_told = inquiry.WhatWasTold();
  if (told) return;
  if (told.Why().kind == FailureKind::Cancelled) return AskSoon(kRetryMilliseconds);
  if (told.Why().kind == FailureKind::NoAnswer) m_session.ExpectLateAnswer();
  SetState(State::NotKnown);
}

Result<> BoardKnowledge::AskFor(BoardInquiry& inquiry) {
  if (m_hasSounds) return Confirm(inquiry);
  // While the board answers, the person may change the set, and another learning may come in.
  std::vector<KnownSet> sets = {m_learned->here};
  sets.insert(sets.end(), m_learned->sets.begin(), m_learned->sets.end());
  std::optional<std::vector<core::sound::FlashSound>> sounds;
  for (const KnownSet& set : sets) {
    const std::optional<core::sound::SetImage> image = set.Image();
    if (!image) continue;
    const Result<bool> holds = inquiry.Holds(*image);
    if (!holds) return holds.Why();
    if (!*holds) continue;
    sounds = image->sounds;
    break;
  }
  if (!sounds) {
    Result<std::vector<core::sound::FlashSound>> read = inquiry.Read(m_session.State().MostFlash());
    if (!read) return read.Why();
    sounds = *std::move(read);
  }
  m_sounds = *std::move(sounds);
  m_hasSounds = true;
  m_time = QDateTime::currentDateTime();
  Learn();
  return {};
}

Result<> BoardKnowledge::Confirm(BoardInquiry& inquiry) {
  // Those of the sounds that are known now come with the learning that is under way.
  if (!m_learned->guesses) return {};
  const Guesses guesses = *m_learned->guesses;
  std::vector<std::optional<SoundGuess>> found(m_sounds.size());
  for (std::size_t i = 0; i < found.size() && i < guesses.size(); ++i) {
    for (const SoundGuess& guess : guesses[i]) {
      if (found[i]) break;
      if (guess.toConfirm) {
        const Result<bool> matches = inquiry.Matches(m_sounds[i], *guess.toConfirm);
        if (!matches) return matches.Why();
        if (!*matches) continue;
      }
      found[i] = guess;
    }
  }
  Conclude(found);
  return {};
}

void BoardKnowledge::Conclude(const std::vector<std::optional<SoundGuess>>& found) {
  m_places = BoardComparison::WithBoard(m_learned->here, m_sounds, found);
  m_name.clear();
  for (const KnownSet& set : m_learned->sets)
    if (const auto image = set.Image(); m_name.empty() && image && image->sounds == m_sounds) m_name = set.name;
  SetState(State::Told);
}

}  // namespace kestrin::ui::window
