#include "sound/SoundSet.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/RaisedFlag.h"
#include "base/Text.h"
#include "sound/PathText.h"

namespace kestrin::sound {

namespace fs = std::filesystem;

namespace {

std::string NameOf(const fs::path& path) { return base::LastPathPiece(TextOf(path)); }

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

bool SaveAlike(const LSU_Configuration& a, const LSU_Configuration& b) {
  return std::all_of(kSlots.begin(), kSlots.end(), [&](const Slot& slot) { return SavesAlike(a, b, slot.kind); });
}

}  // namespace

/// Passes on what a load shows, and gives the window its turn between the sounds.
class SoundSet::LoadView : public ConfigurationView {
 public:
  LoadView(SoundSet& set, const base::EventPump& pump) : m_set(set), m_pump(pump) {}

  void EmptySlot(SlotKind kind) override { TellSlot(kind); }
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
  return m_configuration.FileAt(place.kind, place.position);
}

std::string SoundSet::FullMessage(SlotKind kind) {
  const Slot& slot = SlotOf(kind);
  return slot.isList ? "Maximum number of " + std::string(slot.title) + " files reached" : "";
}

std::string SoundSet::Add(SlotKind kind, const fs::path& path) {
  if (m_loading) return std::string(kBusy);
  if (SlotOf(kind).isList && Count(kind) == kListCapacity) return FullMessage(kind);
  Moment before = Now();
  if (!m_configuration.AddFile(path, kind)) {
    // The model has emptied a single slot whose new file it refused; the person keeps the sound that is shown.
    PutBack(before.configuration);
    return std::string(kNotValid);
  }
  Remember(std::move(before), "Add " + NameOf(path));
  Tell({kind});
  return "";
}

std::string SoundSet::Remove(SlotKind kind, int position) {
  if (m_loading) return std::string(kBusy);
  if (!Holds({kind, position})) return "";
  Moment before = Now();
  const std::string name = NameOf(At({kind, position}).FileNameAndPath());
  m_configuration.RemoveFile(position, kind);
  Remember(std::move(before), "Remove " + name);
  Tell({kind});
  return "";
}

std::string SoundSet::Move(SlotKind kind, int from, int to) {
  if (m_loading) return std::string(kBusy);
  if (!Holds({kind, from}) || !Holds({kind, to}) || from == to) return "";
  Moment before = Now();
  const std::string name = NameOf(At({kind, from}).FileNameAndPath());
  m_configuration.MoveFile(kind, from, to);
  Remember(std::move(before), "Move " + name);
  Tell({kind});
  return "";
}

std::string SoundSet::MoveTo(const SoundPlace& from, SlotKind kind, int to) {
  if (from.kind == kind) return Move(kind, from.position, std::clamp(to, 1, std::max(1, Count(kind))));
  return Transfer(from, kind, to, false);
}

std::string SoundSet::CopyTo(const SoundPlace& from, SlotKind kind, int to) { return Transfer(from, kind, to, true); }

std::string SoundSet::Transfer(const SoundPlace& from, SlotKind kind, int to, bool copy) {
  const bool isList = SlotOf(kind).isList;
  if (m_loading) return std::string(kBusy);
  if (!Holds(from) || (from.kind == kind && !isList)) return "";
  if (isList && Count(kind) == kListCapacity) return FullMessage(kind);
  Moment before = Now();
  const fs::path path = At(from).FileNameAndPath();
  const std::int16_t volume = At(from).Volume();
  if (!m_configuration.AddFile(path, kind)) {
    PutBack(before.configuration);
    return std::string(kNotValid);
  }
  const int end = Count(kind);
  m_configuration.SetVolume(kind, end, volume);
  if (isList) m_configuration.MoveFile(kind, end, std::clamp(to, 1, end));
  if (!copy) {
    // Behind the others first, so that they keep their own volumes when it goes.
    const int last = Count(from.kind);
    if (SlotOf(from.kind).isList) m_configuration.MoveFile(from.kind, from.position, last);
    m_configuration.RemoveFile(last, from.kind);
  }
  Remember(std::move(before), (copy ? "Copy " : "Move ") + NameOf(path));
  Tell({from.kind, kind});
  return "";
}

std::string SoundSet::SetVolume(SlotKind kind, int position, std::int16_t percent) {
  if (m_loading) return std::string(kBusy);
  const SoundPlace place{kind, position};
  if (!Holds(place) || m_configuration.GetVolume(kind, position) == percent) return "";
  if (m_volumeStep != place) {
    Remember(Now(), "Change volume of " + NameOf(At(place).FileNameAndPath()));
    m_volumeStep = place;
  }
  m_configuration.SetVolume(kind, position, percent);
  Tell({kind});
  return "";
}

std::string SoundSet::Clear() {
  if (m_loading) return std::string(kBusy);
  if (Path().empty() && SaveAlike(m_configuration, {})) return "";
  Remember(Now(), "New set");
  PutBack({});
  m_origin = std::make_shared<Origin>();
  TellAll();
  return "";
}

LoadResult SoundSet::Load(const fs::path& path, const base::EventPump& pump) {
  if (m_loading) return {false, {}, std::string(kBusy)};
  Moment before = Now();
  LoadResult result;
  {
    const base::RaisedFlag loading(m_loading);
    LoadView view(*this, pump);
    result = ConfigurationFile::Load(path, m_configuration, view);
  }
  if (result.valid || !SaveAlike(before.configuration, m_configuration))
    Remember(std::move(before), "Load " + NameOf(path));
  if (result.valid)
    m_origin = std::make_shared<Origin>(Origin{path, m_configuration.WithoutStreams(), result.failed.empty()});
  TellAll();
  return result;
}

std::string SoundSet::Save(const fs::path& path, base::Disk& disk) {
  if (m_loading) return std::string(kBusy);
  std::string failure = ConfigurationFile::Save(m_configuration, path, disk);
  if (!failure.empty()) return failure;
  m_origin->path = path;
  m_origin->saved = m_configuration.WithoutStreams();
  m_origin->complete = true;
  // What the volume was when it was saved can be brought back.
  m_volumeStep.reset();
  for (SoundSetListener* listener : m_listeners) listener->ModifiedChanged();
  return "";
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
  PutBack(step.moment.configuration);
  m_origin = step.moment.origin;
  m_volumeStep.reset();
  TellAll();
}

std::string SoundSet::Name() const { return Path().empty() ? "New set" : base::LastPathPiece(TextOf(Path().stem())); }

bool SoundSet::IsModified() const { return !m_origin->complete || !SaveAlike(m_configuration, m_origin->saved); }

void SoundSet::SetCapacity(std::int32_t samples) {
  m_configuration.SetMaxNrOfSamples(samples);
  for (SoundSetListener* listener : m_listeners) listener->MemoryChanged();
}

void SoundSet::AddListener(SoundSetListener& listener) { m_listeners.push_back(&listener); }

void SoundSet::RemoveListener(SoundSetListener& listener) {
  m_listeners.erase(std::remove(m_listeners.begin(), m_listeners.end(), &listener), m_listeners.end());
}

void SoundSet::BeginGroup() {
  if (m_groupDepth++ == 0) m_groupHasStep = false;
}

void SoundSet::EndGroup() { --m_groupDepth; }

SoundSet::Moment SoundSet::Now() const { return {m_configuration.WithoutStreams(), m_origin}; }

void SoundSet::PutBack(const LSU_Configuration& configuration) {
  const std::int32_t capacity = m_configuration.MaxNrOfSamples();
  m_configuration = configuration;
  m_configuration.SetMaxNrOfSamples(capacity);
}

void SoundSet::Remember(Moment&& before, std::string text) {
  m_volumeStep.reset();
  m_redo.clear();
  const bool joins = m_groupDepth > 0 && m_groupHasStep;
  m_groupHasStep = m_groupDepth > 0;
  if (joins) return;
  m_undo.push_back({std::move(text), std::move(before)});
  if (m_undo.size() > kHistory) m_undo.pop_front();
}

void SoundSet::Tell(std::initializer_list<SlotKind> kinds) {
  for (SoundSetListener* listener : m_listeners) {
    for (const SlotKind kind : kinds) listener->SlotChanged(kind);
    listener->MemoryChanged();
    listener->ModifiedChanged();
  }
}

void SoundSet::TellAll() {
  Tell({SlotKind::Boot, SlotKind::PwrOn, SlotKind::PwrOff, SlotKind::Idle, SlotKind::Motion, SlotKind::Impact,
        SlotKind::Lockup});
}

}  // namespace kestrin::sound
