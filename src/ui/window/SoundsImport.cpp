// SPDX-License-Identifier: MIT
#include "ui/window/SoundsImport.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/sound/import/SoundEnding.h"
#include "core/sound/import/SourceList.h"
#include "ui/import/ImportControl.h"
#include "ui/import/ImportFrame.h"
#include "ui/kit/CommandGate.h"
#include "ui/sound/SoundPage.h"
#include "ui/window/Preview.h"
#include "ui/window/SetLevelling.h"
#include "ui/window/Surroundings.h"
#include "ui/window/ToolRow.h"

namespace kestrin::ui::window {

using imports::ImportControl;

SoundsImport::SoundsImport(core::sound::SoundSet& set, Preview& preview, const SetLevelling& levelling,
                           const Surroundings& around, const kit::Pictures& pictures, QObject* parent)
    : QObject(parent),
      m_rows(new imports::ImportModel(this)),
      m_frame(new imports::ImportFrame(*m_rows, pictures)),
      m_settings(around.settings) {
  if (around.audio == nullptr || around.archives == nullptr) return;
  imports::ImportMeans means = imports::MeansOver(*around.audio, *around.archives, around.disk);
  m_control = new ImportControl(
      *m_frame, *m_rows,
      {std::move(means), set, around.dialogs, around.folders, [&levelling] { return levelling.Kept(); }}, m_frame);
  connect(m_control, &ImportControl::playRequested, &preview, qOverload<const std::filesystem::path&>(&Preview::Play));
  connect(m_control, &ImportControl::stopRequested, &preview, &Preview::Stop);
  connect(&preview, &Preview::playing, m_control, &ImportControl::SetPlaying);
  connect(&preview, &Preview::failed, m_control, &ImportControl::TellFailure);
  connect(m_control, &ImportControl::news, this, &SoundsImport::news);

  m_menu.setObjectName("ImportMenu");
  const auto add = [&](const char* name, const QString& text, ImportControl* control, void (ImportControl::*ask)()) {
    QAction* const action = m_menu.addAction(text);
    action->setObjectName(name);
    // Questions wait until nothing else is under way.
    connect(
        action, &QAction::triggered, control,
        [control, ask, &gate = around.gate] { gate.WhenFree([control, ask] { (control->*ask)(); }); },
        Qt::QueuedConnection);
  };
  add("ImportFilesAction", tr("&Sounds ..."), m_control, &ImportControl::AskForFiles);
  add("ImportFolderAction", tr("A &folder of sounds ..."), m_control, &ImportControl::AskForFolder);
}

SoundsImport::~SoundsImport() = default;

void SoundsImport::Attach(ToolRow& tools, sound::SoundPage& page, std::function<bool()> mayOpen) {
  if (!IsThere()) return;
  m_mayOpen = std::move(mayOpen);
  tools.SetImportMenu(m_menu);
  page.OfferImport(m_settings);
  connect(&page, &sound::SoundPage::importRequested, this, &SoundsImport::Open);
}

void SoundsImport::AskForFiles() {
  if (IsThere() && m_mayOpen()) m_control->AskForFiles();
}

void SoundsImport::Open(const std::vector<std::filesystem::path>& named, std::optional<core::sound::SlotKind> slot) {
  if (IsThere() && m_mayOpen()) m_control->Open(named, slot);
}

void SoundsImport::Stop() {
  if (IsThere()) m_control->Stop();
}

bool SoundsImport::Takes(const std::vector<std::filesystem::path>& named) const {
  return IsThere() && m_mayOpen() && !named.empty() &&
         std::all_of(named.begin(), named.end(), [](const std::filesystem::path& path) {
           std::error_code ignored;
           return core::sound::EndingOf(path) != core::sound::SoundEnding::None ||
                  core::sound::SourceList::HasArchiveName(path) || std::filesystem::is_directory(path, ignored);
         });
}

}  // namespace kestrin::ui::window
