// SPDX-License-Identifier: MIT
#include "ui/sound/SoundActions.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>
#include <system_error>

#include "core/sound/LSU_SoundFile.h"
#include "core/sound/import/SoundEnding.h"
#include "core/sound/import/SourceList.h"
#include "ui/kit/Translated.h"
#include "ui/sound/FolderContents.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace fs = std::filesystem;

/// One thing that the person asked for: one step to undo and one message, and nothing else meanwhile.
class SoundActions::Work {
 public:
  explicit Work(SoundActions& actions) : m_actions(actions), m_group(actions.m_set) { m_actions.m_isWorking = true; }
  ~Work() { m_actions.m_isWorking = false; }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  /// Takes the answer of the set about a file. False: there is no use in going on.
  bool Take(const core::base::Result<>& answer, const fs::path& path) {
    ++m_files;
    // Measuring sounds takes a while; the window shows what has been done.
    if (m_files > 1) QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    if (answer) return true;
    const QString text = kit::Translated(answer.Text());
    if (answer.Why().kind != core::base::FailureKind::NotValid) {
      m_end = text;
      return false;
    }
    m_notValidText = text;
    m_notValid.append(FileName(path));
    m_reasons.append(WhyNotValid(path));
    return true;
  }

  [[nodiscard]] QString Message() const {
    QStringList lines;
    if (!m_notValid.isEmpty()) lines.append(m_notValidText);
    // With one file the person knows which.
    if (m_files > 1) lines.append(m_notValid);
    if (!m_end.isEmpty()) lines.append(m_end);
    return lines.join(QLatin1Char('\n'));
  }
  /// Why the files are not valid, a line for each.
  [[nodiscard]] QString Reasons() const { return m_reasons.join(QLatin1Char('\n')); }

 private:
  SoundActions& m_actions;
  core::sound::SoundSet::Group m_group;
  QString m_notValidText;
  QStringList m_notValid;
  QStringList m_reasons;
  QString m_end;
  int m_files = 0;
};

namespace {

/// The files, with the sounds of a folder in its place.
std::vector<fs::path> WithoutFolders(const std::vector<fs::path>& paths) {
  std::vector<fs::path> files;
  for (const fs::path& path : paths) {
    std::error_code ignored;
    if (!fs::is_directory(path, ignored)) {
      files.push_back(path);
      continue;
    }
    for (const FolderEntry& sound : FolderContents::Of(path).sounds) files.push_back(sound.path);
  }
  return files;
}

}  // namespace

SoundActions::SoundActions(core::sound::SoundSet& set, QObject* parent) : QObject(parent), m_set(set) {}

void SoundActions::SetBusy(bool busy) { m_busy = busy; }

std::vector<fs::path> SoundActions::WithoutImports(core::sound::SlotKind kind, const std::vector<fs::path>& paths) {
  if (!m_canImport) return paths;
  std::vector<fs::path> ready;
  std::vector<fs::path> sounds;
  std::vector<fs::path> folders;
  for (const fs::path& path : paths) {
    std::error_code ignored;
    const bool isFolder = fs::is_directory(path, ignored);
    if (isFolder && FolderContents::Of(path).sounds.empty())
      folders.push_back(path);
    else if (!isFolder && core::sound::SourceList::HasArchiveName(path))
      folders.push_back(path);
    else if (!isFolder && !core::sound::LSU_SoundFile::HasSoundName(path) &&
             core::sound::EndingOf(path) != core::sound::SoundEnding::None)
      sounds.push_back(path);
    else
      ready.push_back(path);
  }
  // What is in folders and archives is sorted by names.
  if (!folders.empty()) {
    folders.insert(folders.end(), sounds.begin(), sounds.end());
    emit importWanted(folders, std::nullopt);
  } else if (!sounds.empty()) {
    emit importWanted(sounds, kind);
  }
  return ready;
}

void SoundActions::Add(core::sound::SlotKind kind, const std::vector<fs::path>& all, int to) {
  if (!MayChange()) return;
  const std::vector<fs::path> paths = WithoutImports(kind, all);
  if (paths.empty()) return;
  const bool isList = core::sound::SlotOf(kind).isList;
  QString text;
  QString reasons;
  {
    Work work(*this);
    for (const fs::path& path : WithoutFolders(paths)) {
      const core::base::Result<> answer = m_set.Add(kind, path);
      if (answer && isList && to < m_set.Rows(kind)) m_set.Move(kind, m_set.Rows(kind), to++);
      if (!work.Take(answer, path) || (answer && !isList)) break;
    }
    text = work.Message();
    reasons = work.Reasons();
  }
  if (!text.isEmpty()) emit message(text, reasons);
}

void SoundActions::Remove(core::sound::SlotKind kind, const std::vector<int>& positions) {
  if (!MayChange()) return;
  const core::sound::SoundSet::Group group(m_set);
  // From the last to the first, so that the positions stay what they are.
  for (auto position = positions.rbegin(); position != positions.rend(); ++position) m_set.Remove(kind, *position);
}

void SoundActions::Bring(core::sound::SlotKind from, const std::vector<int>& positions, core::sound::SlotKind kind,
                         int to, bool copy) {
  if (!MayChange()) return;
  if (from == kind && !copy) {
    MoveInside(kind, positions, to);
    return;
  }
  QString text;
  QString reasons;
  int done = 0;
  to = std::min(to, m_set.Rows(kind) + 1);
  {
    Work work(*this);
    for (const int position : positions) {
      // Sounds that left, or that were copied in before this one, have shifted it.
      int now = position;
      if (!copy) now -= done;
      if (from == kind && position >= to) now += done;
      if (!m_set.HasRow({from, now})) continue;
      const fs::path path = m_set.PathAt({from, now});
      const core::base::Result<> answer =
          copy ? m_set.CopyTo({from, now}, kind, to + done) : m_set.MoveTo({from, now}, kind, to + done);
      if (answer) ++done;
      if (!work.Take(answer, path) || (answer && !core::sound::SlotOf(kind).isList)) break;
    }
    text = work.Message();
    reasons = work.Reasons();
  }
  if (done > 0 && !copy) emit moved(kind, core::sound::SlotOf(kind).isList ? to : 1, done);
  if (!text.isEmpty()) emit message(text, reasons);
}

void SoundActions::MoveInside(core::sound::SlotKind kind, const std::vector<int>& positions, int to) {
  to = std::min(to, m_set.Rows(kind) + 1);
  int before = 0;
  int behind = 0;
  {
    const core::sound::SoundSet::Group group(m_set);
    for (const int position : positions) {
      if (position < to)
        m_set.Move(kind, position - before++, to - 1);
      else
        m_set.Move(kind, position, to + behind++);
    }
  }
  emit moved(kind, to - before, before + behind);
}

void SoundActions::SetVolume(const std::vector<core::sound::SoundPlace>& places, int percent) {
  if (MayChange()) m_set.SetVolume(places, static_cast<std::int16_t>(percent));
}

void SoundActions::Undo() {
  if (MayChange()) m_set.Undo();
}

void SoundActions::Redo() {
  if (MayChange()) m_set.Redo();
}

core::sound::HeardSound SoundActions::Heard(const core::sound::SoundPlace& place) const {
  if (!m_set.Holds(place)) return {};
  const core::sound::LSU_SoundFile& sound = m_set.At(place);
  return {sound.FileNameAndPath(), m_asOnBoard, sound.WithoutStream()};
}

void SoundActions::Play(const core::sound::HeardSound& sound) {
  if (sound.path.empty()) return;
  if (sound.asOnBoard)
    emit playAsOnBoardRequested(sound);
  else
    emit playRequested(sound.path);
}

}  // namespace kestrin::ui::sound
