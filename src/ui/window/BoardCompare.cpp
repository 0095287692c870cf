// SPDX-License-Identifier: MIT
#include "ui/window/BoardCompare.h"

#include <QDateTime>
#include <QLocale>
#include <algorithm>
#include <memory>
#include <utility>

#include "core/sound/ConfigurationFile.h"
#include "core/sound/MemoryUse.h"
#include "core/sound/QuietView.h"
#include "core/sound/SoundSet.h"
#include "core/sound/board/BoardComparison.h"
#include "core/sound/board/HoldingText.h"
#include "ui/board/BoardChip.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/PathText.h"
#include "ui/kit/TopicOf.h"
#include "ui/kit/Translated.h"
#include "ui/sound/MemoryGauge.h"
#include "ui/sound/SoundTexts.h"
#include "ui/window/BoardKnowledge.h"
#include "ui/window/Preview.h"
#include "ui/window/SetFile.h"
#include "ui/window/Surroundings.h"
#include "ui/window/ToolRow.h"

namespace kestrin::ui::window {

using board::BoardChip;
using board::CompareFrame;
using core::sound::BoardComparison;
using core::sound::ComparedPlace;
using core::sound::ComparedSound;
using core::sound::Differs;
using core::sound::HoldingText;
using core::sound::SetDifference;
using State = BoardKnowledge::State;

namespace {

/// A set in which more differs than not is another one.
bool IsThisSet(const core::sound::ComparedPlaces& places, const std::vector<SetDifference>& differences) {
  return !places.empty() && differences.size() * 2 <= places.size();
}

/// Ends what is read on the thread.
struct NotWanted {};

/// The row of the set in which the sound of that position of its configuration stands: rows of missing sounds count,
/// positions do not. Behind the last row for a position that there is not.
core::sound::SoundPlace RowOf(const core::sound::SoundSet& set, const core::sound::SoundPlace& place) {
  int left = place.position;
  for (int row = 1; row <= set.Rows(place.kind); ++row)
    if (set.Holds({place.kind, row}) && --left == 0) return {place.kind, row};
  return {place.kind, set.Rows(place.kind) + 1};
}

QString TimeOf(const core::sound::HistoryEntry& entry) {
  const QDateTime time = QDateTime::fromSecsSinceEpoch(entry.time.time_since_epoch().count());
  return QLocale().toString(time, QLocale::ShortFormat);
}

}  // namespace

BoardCompare::BoardCompare(core::sound::SoundSet& set, BoardKnowledge& knowledge, Preview& preview, SetFile& file,
                           const Surroundings& around, const kit::Pictures& pictures, QObject* parent)
    : QObject(parent),
      m_set(set),
      m_knowledge(knowledge),
      m_preview(preview),
      m_file(file),
      m_around(around),
      m_history(
          around.dataFolder.empty() ? around.dataFolder : around.dataFolder / core::sound::BoardHistory::kFolderName,
          around.disk),
      m_frame(new CompareFrame(pictures)),
      m_job(this) {
  m_menu.setObjectName("BoardMenu");
  m_historyMenu.setObjectName("BoardHistoryMenu");
  m_historyMenu.setTitle(tr("On this &board before"));
  m_historyMenu.setToolTipsVisible(true);
  connect(&m_historyMenu, &QMenu::aboutToShow, this, &BoardCompare::FillHistory);
  connect(&m_knowledge, &BoardKnowledge::changed, this, &BoardCompare::ShowKnowledge);
  connect(m_frame, &CompareFrame::playWanted, this, &BoardCompare::Play);
  connect(m_frame, &CompareFrame::stopWanted, &m_preview, &Preview::Stop);
  connect(m_frame, &CompareFrame::takeOverWanted, this, &BoardCompare::TakeOver);
  connect(m_frame, &CompareFrame::closed, this, [this] {
    m_job.Cancel();
    m_preview.Stop();
  });
  connect(&m_preview, &Preview::playing, m_frame, [this](const std::filesystem::path& path) {
    if (path.empty()) m_frame->ShowSilence();
  });
  connect(&m_preview, &Preview::failed, m_frame, &CompareFrame::ShowSilence);
}

void BoardCompare::Attach(ToolRow& tools, std::function<bool()> mayOpen, std::function<void()> send) {
  m_mayOpen = std::move(mayOpen);
  kit::CommandGate& gate = m_around.gate;
  const auto ask = [this, &gate](QMenu& menu) {
    QAction* const compare = menu.addAction(tr("&Compare with a set ..."));
    compare->setObjectName("CompareSetAction");
    compare->setToolTip(tr("Show slot by slot where the open set and another one differ"));
    connect(
        compare, &QAction::triggered, this, [this, &gate] { gate.WhenFree([this] { AskForSet(); }); },
        Qt::QueuedConnection);
    menu.addMenu(&m_historyMenu);
  };
  connect(m_frame, &CompareFrame::sendWanted, this, [this, &gate, send = std::move(send)] {
    m_frame->hide();
    gate.WhenFree(send);
  });
  if (!m_knowledge.IsThere()) return;
  m_file.SetMore(ask);
  m_chip = new BoardChip;
  kit::SetHelpContext(*m_chip, kit::HelpContext::Board);
  ask(m_menu);
  m_chip->setMenu(&m_menu);
  tools.AddBoardChip(*m_chip);
  connect(m_chip, &BoardChip::clicked, this, &BoardCompare::OpenBoard);
  ShowKnowledge();
}

void BoardCompare::ShowWhyNotSend(const QString& why) const { m_frame->ShowWhyNotSend(why); }

void BoardCompare::Stop() {
  m_job.Cancel();
  m_frame->hide();
}

BoardCompare::Words BoardCompare::WordsFor(const BoardKnowledge& knowledge) {
  switch (knowledge.GetState()) {
    case State::NoBoard:
    case State::Asking:
      return {tr("being asked ..."), 0, tr("being asked what it holds")};
    case State::NotKnown:
      return {tr("not known"), 0, tr("not known. It does not tell what it holds; download a set to be sure of it.")};
    case State::Told:
      break;
  }
  const auto same = [](const std::string& text) {
    const QString words = kit::Translated(text);
    return Words{words, 0, words};
  };
  if (knowledge.Sounds().empty()) return same(HoldingText::Of(knowledge.Sounds()));
  const std::vector<SetDifference> differences = BoardComparison::DifferencesIn(knowledge.Places());
  if (!IsThisSet(knowledge.Places(), differences))
    return same(knowledge.NameOnBoard().empty() ? HoldingText::Of(knowledge.Sounds()) : knowledge.NameOnBoard());
  const std::string set = tr("This set").toStdString();
  const auto end = differences.begin() + static_cast<std::ptrdiff_t>(std::min(kNamed, differences.size()));
  const std::vector<SetDifference> named(differences.begin(), end);
  return {kit::Translated(HoldingText::Of(set, named, kNamed)), static_cast<int>(differences.size() - named.size()),
          kit::Translated(HoldingText::Of(set, differences, differences.size()))};
}

void BoardCompare::ShowKnowledge() {
  if (m_chip != nullptr) {
    const Words words = WordsFor(m_knowledge);
    auto state = BoardChip::State::Asking;
    if (m_knowledge.GetState() == State::NotKnown) state = BoardChip::State::NotKnown;
    if (m_knowledge.GetState() == State::Told) {
      const std::vector<SetDifference> differences = BoardComparison::DifferencesIn(m_knowledge.Places());
      const bool isThis = !m_knowledge.Sounds().empty() && IsThisSet(m_knowledge.Places(), differences);
      state = !isThis ? BoardChip::State::Other
                      : (differences.empty() ? BoardChip::State::Same : BoardChip::State::Differs);
    }
    m_chip->Show(state, words.shown, words.more, words.whole);
    m_chip->setVisible(m_knowledge.GetState() != State::NoBoard);
  }
  if (m_frame->isVisible()) ShowSheet();
}

void BoardCompare::OpenBoard() {
  if (!m_mayOpen()) return;
  m_other.reset();
  ShowSheet();
  m_frame->Open();
}

QString BoardCompare::SendAdvice() const {
  const core::sound::MemoryUse use = core::sound::MemoryUse::Of(m_set.Configuration());
  const QString time = use.total == 0 || use.downloadSeconds == 0
                           ? tr("Sending replaces all that is on the board.")
                           : tr("Sending replaces all that is on the board (about %1).")
                                 .arg(sound::MemoryGauge::DownloadTime(use.downloadSeconds));
  return tr("\"Take over\" brings the board's sound or volume into this set.") + ' ' + time;
}

CompareFrame::Sides BoardCompare::BoardSides() const {
  constexpr qint64 kJustNow = 60;
  const QDateTime& time = m_knowledge.Time();
  const bool isNew = time.secsTo(QDateTime::currentDateTime()) < kJustNow;
  return {
      tr("This set and the board"),
      QString::fromStdString(m_set.Name()),
      tr("On the board"),
      m_knowledge.GetState() != State::Told
          ? QString()
          : (isNew ? tr("read just now") : tr("read at %1").arg(QLocale().toString(time.time(), QLocale::ShortFormat))),
      {tr("on the board"), tr("not on the board"), tr("not in this set")},
      SendAdvice(),
      true};
}

CompareFrame::Sides BoardCompare::SetSides() const {
  return {tr("This set and another one"),
          QString::fromStdString(m_set.Name()),
          tr("The other set"),
          kit::TextOf(m_other->stem()),
          {tr("in the other set"), tr("not in the other set"), tr("not in this set")},
          tr("\"Take over\" brings the other set's sound or volume into this set."),
          false};
}

void BoardCompare::ShowSheet() {
  if (m_other) return CompareWith(*m_other);
  const CompareFrame::Sides sides = BoardSides();
  switch (m_knowledge.GetState()) {
    case State::NoBoard:
      return m_frame->ShowNothing(sides, tr("No sound board is connected any more."));
    case State::Asking:
      return m_frame->ShowNothing(sides, tr("The board is being asked what it holds ..."));
    case State::NotKnown:
      return m_frame->ShowNothing(sides,
                                  tr("This board does not tell what it holds. Download a set to be sure of it."));
    case State::Told:
      break;
  }
  if (m_knowledge.Places().empty()) return m_frame->ShowNothing(sides, tr("The board holds nothing, and the set too."));
  m_frame->Show(sides, m_knowledge.Places());
}

void BoardCompare::AskForSet() {
  const std::filesystem::path path = m_file.AskForSet(tr("Compare with a set"));
  if (path.empty() || !m_mayOpen()) return;
  CompareWith(path);
  m_frame->ShowNothing(SetSides(), tr("The sets are being compared ..."));
  m_frame->Open();
}

void BoardCompare::CompareWith(const std::filesystem::path& path) {
  m_other = path;
  const auto here = std::make_shared<core::sound::LSU_Configuration>(m_set.Configuration().WithoutStreams());
  m_job.Start([this, path, here](const kit::LatestJob::GoOn& goOn, const kit::LatestJob::Deliver& deliver) {
    const core::base::EventPump pump = [&goOn] {
      if (!goOn()) throw NotWanted();
    };
    try {
      core::sound::LSU_Configuration there;
      core::sound::QuietView view(pump);
      const core::sound::LoadResult result = core::sound::ConfigurationFile::Load(path, there, view);
      const QString problem = kit::Translated(result.Message());
      const core::sound::ComparedPlaces places = BoardComparison::WithSet(*here, there, pump);
      deliver([this, problem, places] {
        if (m_other) problem.isEmpty() ? m_frame->Show(SetSides(), places) : m_frame->ShowNothing(SetSides(), problem);
      });
    } catch (const NotWanted&) {
      // The sheet is gone, or the set has changed.
    }
  });
}

void BoardCompare::TakeOver(const ComparedPlace& place) {
  if (!place.there || place.there->path.empty()) return;
  const QString title = sound::PlaceTitle(place.place);
  const auto volume = static_cast<std::int16_t>(place.there->volume.value_or(100));
  {
    const core::sound::SoundSet::Group group(m_set, tr("Take over %1").arg(title).toStdString());
    if (place.differs == Differs::Volume) {
      m_set.SetVolume({RowOf(m_set, place.place)}, volume);
    } else if (const core::base::Result<> put = m_set.Put(RowOf(m_set, place.place), place.there->path, volume); !put) {
      return m_around.dialogs.ShowError(tr("\"%1\" could not be taken over: %2.")
                                            .arg(sound::FileName(place.there->path), kit::Translated(put.Text())));
    }
  }
  emit news(tr("%1 was taken over into the set. Undo takes it back.").arg(title));
  if (m_other) CompareWith(*m_other);
}

void BoardCompare::Play(const ComparedSound& sound) {
  core::sound::HeardSound heard{sound.path, true, {}};
  core::sound::LSU_SoundFile file;
  if (sound.volume && file.ReadFile(sound.path)) {
    file.SetVolume(*sound.volume);
    heard.placed = file;
  }
  m_preview.Play(heard);
}

void BoardCompare::FillHistory() {
  m_historyMenu.clear();
  int number = 0;
  for (const core::sound::HistoryEntry& entry : m_history.Entries()) {
    const QString name = kit::Translated(entry.set.name).replace('&', "&&");
    const QString sounds = tr("%1 sounds").arg(entry.set.sounds.size());
    const QString key = ++number < 10 ? QString("&%1  ").arg(number) : QString();
    QAction* const action = m_historyMenu.addAction(QString("%1%2    %3, %4").arg(key, TimeOf(entry), name, sounds));
    action->setToolTip(tr("Board %1. Opens as a set that is not saved yet; the entry stays.")
                           .arg(QString::fromStdString(entry.serialNumber)));
    connect(
        action, &QAction::triggered, this,
        [this, file = entry.file] { m_around.gate.WhenFree([this, file] { m_file.OpenCopy(file); }); },
        Qt::QueuedConnection);
  }
  if (number == 0) m_historyMenu.addAction(tr("Nothing yet: each download is kept here"))->setEnabled(false);
}

}  // namespace kestrin::ui::window
