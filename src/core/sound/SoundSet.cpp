// SPDX-License-Identifier: MIT
#include "sound/SoundSet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/PathText.h"
#include "base/RaisedFlag.h"
#include "base/Text.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

namespace {

std::string FileNameOf(const fs::path& path) { return base::LastPathPiece(base::TextOf(path)); }

/// Whether a configuration file would say the same about the slot.
bool SavesAlike(const LSU_Configuration& a, const LSU_Configuration& b, SlotKind kind) {
  if (a.Count(kind) != b.Count(kind)) return false;
  for (int position = 1; position <= a.Count(kind); ++position) {
    const LSU_SoundFile& one = a.FileAt(kind, position);
    const LSU_SoundFile& other = b.FileAt(kind, position);
    if (one.FileNameAndPath() != other.FileNameAndPath() || one.Volume() != other.Volume()) return false;
  }
  return true;
}

base::Failure Busy() { return {base::FailureKind::Busy, "Please wait until the sounds are loaded"}; }

base::Failure NotValidFile() { return {base::FailureKind::NotValid, "Not a valid file"}; }

base::Failure FullList(const Slot& list) {
  return {base::FailureKind::Full, "Maximum number of " + std::string(list.title) + " files reached"};
}

/// "hum.lsu", or "3 sounds" when there are several.
std::string NameOrCount(const fs::path& first, std::size_t count) {
  return count == 1 ? FileNameOf(first) : std::to_string(count) + " sounds";
}

}  // namespace

/// Passes on what a load shows, and gives the window its turn between the sounds.
class SoundSet::LoadView : public ConfigurationView {
 public:
  LoadView(SoundSet& set, const base::EventPump& pump) : m_set(set), m_pump(pump) {}

  void EmptySlot(SlotKind kind) override {
    m_set.m_missing.Forget(kind);
    TellSlot(kind);
  }
  void ShowFile(SlotKind kind, int /*position*/, const std::string& /*name*/) override { TellSlot(kind); }
  void UpdateMemoryStatus() override {
    for (SoundSetListener* listener : m_set.m_listeners) listener->MemoryChanged();
    base::Pump(m_pump);
  }

 private:
  void TellSlot(SlotKind kind) {
    for (SoundSetListener* listener : m_set.m_listeners) listener->SlotChanged(kind);
  }

  SoundSet& m_set;
  const base::EventPump& m_pump;
};

SoundSet::SoundSet(LSU_Configuration& configuration)
    : m_configuration(configuration), m_origin(std::make_shared<Origin>()) {}

const LSU_SoundFile& SoundSet::At(const SoundPlace& place) const {
  if (!Holds(place)) throw std::out_of_range("there is no sound " + std::to_string(place.position) + " in this slot");
  return m_configuration.FileAt(place.kind, PositionOf(place));
}

fs::path SoundSet::PathAt(const SoundPlace& place) const {
  if (const MissingSound* const missing = m_missing.At(place)) return missing->path;
  return Holds(place) ? At(place).FileNameAndPath() : fs::path();
}

base::Result<> SoundSet::Add(SlotKind kind, const fs::path& path) {
  if (m_loading) return Busy();
  const bool isList = SlotOf(kind).isList;
  if (isList && Rows(kind) == kListCapacity) return FullList(SlotOf(kind));
  Moment before = Now();
  if (!m_configuration.AddFile(path, kind)) {
    // The model has emptied a single slot whose new file it refused; the person keeps the sound that is shown.
    PutBack(before.contents);
    return NotValidFile();
  }
  if (!isList) m_missing.Forget(kind);
  Remember(std::move(before), "Add " + FileNameOf(path));
  Tell({kind});
  return {};
}

base::Result<int> SoundSet::Locate(const std::vector<LocatedSound>& found, const base::EventPump& pump) {
  if (m_loading) return Busy();
  Moment before = Now();
  std::vector<fs::path> filled;
  {
    const base::RaisedFlag loading(m_loading);
    for (const LocatedSound& sound : found) {
      const auto fills = [&](const fs::path& file) { return Fill(sound.place, file); };
      const auto file = std::find_if(sound.files.begin(), sound.files.end(), fills);
      if (file != sound.files.end()) filled.push_back(*file);
      base::Pump(pump);
    }
  }
  if (filled.empty()) return NotValidFile();
  Remember(std::move(before), "Locate " + NameOrCount(filled.front(), filled.size()));
  TellAll();
  return static_cast<int>(filled.size());
}

bool SoundSet::Fill(const SoundPlace& place, const fs::path& file) {
  const MissingSound* const missing = m_missing.At(place);
  if (missing == nullptr) return false;
  if (!m_configuration.AddFile(file, place.kind)) {
    // A single slot holds the name of the file that it refused.
    if (!SlotOf(place.kind).isList) m_configuration.RemoveFile(1, place.kind);
    return false;
  }
  const int end = Count(place.kind);
  m_configuration.SetVolume(place.kind, end, missing->volume);
  if (SlotOf(place.kind).isList) m_configuration.MoveFile(place.kind, end, PositionOf(place));
  m_missing.Take(place);
  return true;
}

base::Result<> SoundSet::Put(const SoundPlace& place, const fs::path& path, std::int16_t percent) {
  const SlotKind kind = place.kind;
  const bool isList = SlotOf(kind).isList;
  const bool isInstead = isList && HasRow(place);
  if (m_loading) return Busy();
  if (isList && !isInstead && Rows(kind) == kListCapacity) return FullList(SlotOf(kind));
  Moment before = Now();
  if (isInstead && Holds(place)) {
    // Behind the others first, so that they keep their own volumes when it goes.
    m_configuration.MoveFile(kind, PositionOf(place), Count(kind));
    m_configuration.RemoveFile(Count(kind), kind);
  }
  if (!m_configuration.AddFile(path, kind)) {
    PutBack(before.contents);
    return NotValidFile();
  }
  m_configuration.SetVolume(kind, Count(kind), percent);
  if (!isList) m_missing.Forget(kind);
  if (isInstead) {
    m_missing.Take(place);
    m_configuration.MoveFile(kind, Count(kind), PositionOf(place));
  }
  Remember(std::move(before), "Put " + NameOf(path));
  Tell({kind});
  return {};
}

bool SoundSet::Remove(SlotKind kind, int position) {
  const SoundPlace place{kind, position};
  if (m_loading) return false;
  if (!HasRow(place)) return true;
  Moment before = Now();
  const std::string name = FileNameOf(PathAt(place));
  if (Holds(place)) m_configuration.RemoveFile(PositionOf(place), kind);
  m_missing.CloseRow(place);
  Remember(std::move(before), "Remove " + name);
  Tell({kind});
  return true;
}

bool SoundSet::Move(SlotKind kind, int from, int to) {
  if (m_loading) return false;
  if (!HasRow({kind, from}) || !HasRow({kind, to}) || from == to) return true;
  Moment before = Now();
  const std::string name = FileNameOf(PathAt({kind, from}));
  const bool isSound = Holds({kind, from});
  const int position = PositionOf({kind, from});
  m_missing.MoveRow(kind, from, to);
  if (isSound) m_configuration.MoveFile(kind, position, PositionOf({kind, to}));
  Remember(std::move(before), "Move " + name);
  Tell({kind});
  return true;
}

base::Result<> SoundSet::MoveTo(const SoundPlace& from, SlotKind kind, int to) {
  if (from.kind != kind) return Transfer(from, kind, to, false);
  if (!Move(kind, from.position, std::clamp(to, 1, std::max(1, Rows(kind))))) return Busy();
  return {};
}

base::Result<> SoundSet::CopyTo(const SoundPlace& from, SlotKind kind, int to) {
  return Transfer(from, kind, to, true);
}

base::Result<> SoundSet::Transfer(const SoundPlace& from, SlotKind kind, int to, bool copy) {
  const bool isList = SlotOf(kind).isList;
  if (m_loading) return Busy();
  if (!HasRow(from) || (from.kind == kind && !isList)) return {};
  if (isList && Rows(kind) == kListCapacity) return FullList(SlotOf(kind));
  // Nobody knows whether a missing one is a sound at all.
  if (!Holds(from)) return NotValidFile();
  Moment before = Now();
  const fs::path path = At(from).FileNameAndPath();
  const std::int16_t volume = At(from).Volume();
  if (!m_configuration.AddFile(path, kind)) {
    PutBack(before.contents);
    return NotValidFile();
  }
  const int end = Count(kind);
  m_configuration.SetVolume(kind, end, volume);
  if (isList) {
    const SoundPlace place{kind, std::clamp(to, 1, Rows(kind))};
    m_missing.OpenRow(place);
    m_configuration.MoveFile(kind, end, PositionOf(place));
  } else {
    m_missing.Forget(kind);
  }
  if (!copy) {
    // Behind the others first, so that they keep their own volumes when it goes.
    const int last = Count(from.kind);
    if (SlotOf(from.kind).isList) m_configuration.MoveFile(from.kind, PositionOf(from), last);
    m_configuration.RemoveFile(last, from.kind);
    m_missing.CloseRow(from);
  }
  Remember(std::move(before), (copy ? "Copy " : "Move ") + FileNameOf(path));
  Tell({from.kind, kind});
  return {};
}

bool SoundSet::SetVolume(const std::vector<SoundPlace>& places, std::int16_t percent) {
  if (m_loading) return false;
  std::vector<SoundPlace> held;
  for (const SoundPlace& place : places)
    if (Holds(place)) held.push_back(place);
  if (std::all_of(held.begin(), held.end(), [&](const SoundPlace& place) { return At(place).Volume() == percent; }))
    return true;
  if (m_volumeStep != held) {
    Remember(Now(), "Change volume of " + NameOrCount(At(held.front()).FileNameAndPath(), held.size()));
    m_volumeStep = held;
  }
  for (const SoundPlace& place : held) m_configuration.SetVolume(place.kind, PositionOf(place), percent);
  for (const Slot& slot : kSlots)
    if (std::any_of(held.begin(), held.end(), [&slot](const SoundPlace& place) { return place.kind == slot.kind; }))
      Tell({slot.kind});
  return true;
}

bool SoundSet::Clear() {
  if (m_loading) return false;
  if (Path().empty() && SavesLike({})) return true;
  Remember(Now(), "New set");
  PutBack({});
  m_origin = std::make_shared<Origin>();
  TellAll();
  return true;
}

LoadResult SoundSet::Read(const fs::path& path, const base::EventPump& pump) {
  const base::RaisedFlag loading(m_loading);
  LoadView view(*this, pump);
  LoadResult result = ConfigurationFile::Load(path, m_configuration, view);
  for (const MissingSound& sound : result.failed) m_missing.Put(sound);
  return result;
}

LoadResult SoundSet::Load(const fs::path& path, const base::EventPump& pump) { return Load(path, false, pump); }

LoadResult SoundSet::LoadCopy(const fs::path& path, const base::EventPump& pump) { return Load(path, true, pump); }

LoadResult SoundSet::Load(const fs::path& path, bool isCopy, const base::EventPump& pump) {
  if (m_loading) return {Busy(), {}, 0};
  Moment before = Now();
  LoadResult result = Read(path, pump);
  if (result.valid || !SavesLike(before.contents)) Remember(std::move(before), "Load " + FileNameOf(path));
  if (result.valid) m_origin = std::make_shared<Origin>(isCopy ? Origin() : Origin{path, Held()});
  TellAll();
  return result;
}

LoadResult SoundSet::BringBack(const fs::path& unsaved, const fs::path& origin, const base::EventPump& pump) {
  if (m_loading) return {Busy(), {}, 0};
  if (origin.empty() || !Load(origin, pump).valid) {
    Clear();
    m_origin = std::make_shared<Origin>(Origin{origin, {}});
  }
  Moment before = Now();
  LoadResult result = Read(unsaved, pump);
  if (result.valid)
    Remember(std::move(before), "Bring back " + Name());
  else
    PutBack(before.contents);
  TellAll();
  return result;
}

base::Result<> SoundSet::Save(const fs::path& path, base::Disk& disk, Missing missing) {
  if (m_loading) return Busy();
  const bool leavesOut = missing == Missing::LeaveOut && !m_missing.IsEmpty();
  base::Result<> saved = ConfigurationFile::Save(m_configuration, path, disk, leavesOut ? MissingSounds() : m_missing);
  if (!saved) return saved;
  if (leavesOut) {
    const std::vector<MissingSound>& sounds = m_missing.All();
    Remember(Now(), "Leave out " + NameOrCount(sounds.front().path, sounds.size()));
    m_missing = {};
  }
  m_origin->path = path;
  m_origin->saved = Held();
  // What the volume was when it was saved can be brought back.
  m_volumeStep.clear();
  if (leavesOut)
    TellAll();
  else
    Tell({});
  return {};
}

void SoundSet::Undo() {
  if (CanUndo()) Travel(m_undo, m_redo);
}

void SoundSet::Redo() {
  if (CanRedo()) Travel(m_redo, m_undo);
}

void SoundSet::Travel(std::deque<Step>& from, std::deque<Step>& to) {
  Step step = std::move(from.back());
  from.pop_back();
  to.push_back({step.text, Now()});
  PutBack(step.moment.contents);
  m_origin = step.moment.origin;
  m_volumeStep.clear();
  TellAll();
}

std::string SoundSet::NameOf(const fs::path& file) {
  return file.empty() ? "New set" : base::LastPathPiece(base::TextOf(file.stem()));
}

bool SoundSet::IsModified() const { return !SavesLike(m_origin->saved); }

bool SoundSet::SavesLike(const Contents& contents) const {
  const auto alike = [&](const Slot& slot) { return SavesAlike(m_configuration, contents.configuration, slot.kind); };
  return m_missing == contents.missing && std::all_of(kSlots.begin(), kSlots.end(), alike);
}

void SoundSet::SetCapacity(std::int32_t samples) {
  m_configuration.SetMaxNrOfSamples(samples);
  for (SoundSetListener* listener : m_listeners) listener->MemoryChanged();
}

void SoundSet::AddListener(SoundSetListener& listener) { m_listeners.push_back(&listener); }

void SoundSet::RemoveListener(SoundSetListener& listener) {
  m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), &listener), m_listeners.end());
}

void SoundSet::BeginGroup(std::string text) {
  if (m_groupDepth++ > 0) return;
  m_groupText = std::move(text);
  m_groupHasStep = false;
  // Its changes are no part of a step before it.
  m_volumeStep.clear();
}

void SoundSet::EndGroup() {
  if (--m_groupDepth > 0) return;
  m_groupText.clear();
  // Nor is what follows a part of them.
  m_volumeStep.clear();
}

void SoundSet::PutBack(const Contents& contents) {
  const std::int32_t capacity = m_configuration.MaxNrOfSamples();
  m_configuration = contents.configuration;
  m_configuration.SetMaxNrOfSamples(capacity);
  m_missing = contents.missing;
}

void SoundSet::Remember(Moment&& before, std::string text) {
  m_volumeStep.clear();
  m_redo.clear();
  const bool joins = m_groupDepth > 0 && m_groupHasStep;
  m_groupHasStep = m_groupDepth > 0;
  if (joins) return;
  m_undo.push_back({m_groupText.empty() ? std::move(text) : m_groupText, std::move(before)});
  if (m_undo.size() > kHistory) m_undo.pop_front();
}

void SoundSet::Tell(std::initializer_list<SlotKind> kinds) const {
  for (SoundSetListener* listener : m_listeners) {
    for (const SlotKind kind : kinds) listener->SlotChanged(kind);
    listener->MemoryChanged();
    listener->ModifiedChanged();
  }
}

void SoundSet::TellAll() const {
  Tell({SlotKind::Boot, SlotKind::PwrOn, SlotKind::PwrOff, SlotKind::Idle, SlotKind::Motion, SlotKind::Impact,
        SlotKind::Lockup});
}

}  // namespace kestrin::core::sound
