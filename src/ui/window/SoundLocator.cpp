// SPDX-License-Identifier: MIT
#include "ui/window/SoundLocator.h"

#include <QStandardPaths>
#include <QStringList>
#include <QWidget>
#include <vector>

#include "core/sound/SoundSearch.h"
#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Translated.h"
#include "ui/sound/SoundPage.h"
#include "ui/sound/SoundTexts.h"
#include "ui/window/ExistingFolder.h"

namespace kestrin::ui::window {

using core::sound::MissingSound;

SoundLocator::SoundLocator(core::sound::SoundSet& set, kit::Dialogs& dialogs, kit::CommandGate& gate, QObject* parent)
    : QObject(parent), m_set(set), m_dialogs(dialogs), m_gate(gate) {}

void SoundLocator::Attach(sound::SoundPage& page, QWidget& waitFrame) {
  connect(this, &SoundLocator::searching, &waitFrame, &QWidget::setVisible);
  connect(this, &SoundLocator::searching, &page, &sound::SoundPage::SetPreparing);
  connect(&page, &sound::SoundPage::stopRequested, this, &SoundLocator::Stop);
  connect(&page, &sound::SoundPage::locateRequested, this,
          [this](const core::sound::SoundPlace& place) { m_gate.WhenFree([this, place] { LocateOne(place); }); });
  connect(&page, &sound::SoundPage::locateAllRequested, this, [this] { m_gate.WhenFree([this] { LocateAll(); }); });
}

void SoundLocator::Tell(QString headline) {
  while (!headline.isEmpty()) {
    QStringList lines;
    for (const MissingSound& sound : m_set.AllMissing().All()) lines.append(kit::TextOf(sound.path));
    if (!m_dialogs.ShowList(headline, lines, tr("Locate the sounds ..."), kit::HelpContext::Messages)) return;
    headline = Search();
  }
}

QString SoundLocator::Search() {
  const auto missing = static_cast<int>(m_set.AllMissing().All().size());
  if (missing == 0) return {};
  const QString folder =
      m_dialogs.ChooseFolder(tr("Locate the sounds: in which folder, or below it?"),
                             StartFolder(m_set.AllMissing().All().front().path), kit::HelpContext::Files);
  if (folder.isEmpty()) return {};
  const bool complete = LookBelow(kit::PathOf(folder));
  const auto left = static_cast<int>(m_set.AllMissing().All().size());
  // Whoever stops it, maybe because the window closes, does not want a message in their way.
  if (m_stopped) emit news(tr("The search was stopped. Sounds that are missing still: %1.").arg(left));
  if (m_stopped) return {};
  if (left == 0) {
    emit news(tr("All missing sounds were found."));
    return {};
  }
  const QString found = tr("%1 of %2 sounds were found.").arg(missing - left).arg(missing);
  if (complete) return found + ' ' + tr("These are not below that folder, or are not valid:");
  return found + ' ' + tr("The folder holds too many files to look at all of them. Point at one further inside for:");
}

bool SoundLocator::LookBelow(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> wanted;
  std::vector<core::sound::LocatedSound> located;
  for (const MissingSound& sound : m_set.AllMissing().All()) {
    wanted.push_back(sound.path);
    located.push_back({sound.place, {}});
  }
  const kit::CommandGate::Passage passage(m_gate);
  m_stopped = false;
  emit searching(true);
  emit news(tr("Looking for the sounds ... Escape stops."));
  const core::base::EventPump pump = m_gate.Pump();
  core::sound::SoundSearch::Result result = core::sound::SoundSearch::Run(wanted, folder, [this, &pump] {
    core::base::Pump(pump);
    return !m_stopped;
  });
  for (std::size_t i = 0; i < located.size(); ++i) located[i].files = std::move(result.files[i]);
  // How many are missing still tells the person enough.
  static_cast<void>(m_set.Locate(located, pump));
  emit searching(false);
  return result.complete;
}

void SoundLocator::LocateOne(const core::sound::SoundPlace& place) {
  const MissingSound* const missing = m_set.AllMissing().At(place);
  if (missing == nullptr) return;
  const QString file = m_dialogs.OpenFile(tr("Locate %1").arg(kit::TextOf(missing->path)), StartFolder(missing->path),
                                          kit::QtFileFilter(tr("Sound files (*.lsu)|*.lsu|All files (*.*)|*.*")),
                                          kit::HelpContext::Files);
  if (file.isEmpty()) return;
  if (const auto located = m_set.Locate({{place, {kit::PathOf(file)}}}); !located)
    m_dialogs.ShowError(kit::Translated(located.Text()), sound::WhyNotValid(kit::PathOf(file)));
}

QString SoundLocator::StartFolder(const std::filesystem::path& nearby) const {
  // A folder that is gone has left the ones above it; the root of all is near to nothing.
  const std::filesystem::path documents =
      kit::PathOf(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  for (const std::filesystem::path& path : {nearby.parent_path(), m_set.Path().parent_path(), documents}) {
    const std::filesystem::path folder = ExistingFolder(path);
    if (folder.has_relative_path()) return kit::TextOf(folder);
  }
  return {};
}

}  // namespace kestrin::ui::window
