// SPDX-License-Identifier: MIT
#include "ui/window/SetFile.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <vector>

#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Translated.h"
#include "ui/window/ExistingFolder.h"
#include "ui/window/PackedSets.h"

namespace kestrin::ui::window {

namespace {

constexpr const char* kRecentKey = "recentSets";
constexpr const char* kSuffix = "lscfg";

}  // namespace

SetFile::SetFile(core::sound::SoundSet& set, kit::Dialogs& dialogs, core::base::Disk& disk, kit::CommandGate& gate,
                 QSettings& settings, std::filesystem::path example, PackedSets& packed, QObject* parent)
    : QObject(parent),
      m_set(set),
      m_dialogs(dialogs),
      m_disk(disk),
      m_gate(gate),
      m_settings(settings),
      m_example(std::move(example)),
      m_locator(set, dialogs, gate),
      m_recent(RecentSets(settings)),
      m_packed(packed) {
  m_menu.setObjectName("LoadMenu");
  m_menu.setToolTipsVisible(true);
  connect(&m_locator, &SoundLocator::searching, this, &SetFile::loading);
  connect(&m_locator, &SoundLocator::news, this, &SetFile::news);
  FillMenu();
  FillSaveMenu();
}

std::vector<std::filesystem::path> SetFile::RecentSets(const QSettings& settings) {
  return kit::PathsOfSetting(settings.value(kRecentKey));
}

QString SetFile::Filter() {
  return kit::QtFileFilter(tr("Light Saber Configuration File (*.LSCFG)|*.lscfg|All files (*.*)|*.*"));
}

void SetFile::Open() {
  const QString path = m_dialogs.OpenFile(tr("Open a sound set"), StartPlace(), Filter(), kit::HelpContext::Open);
  if (!path.isEmpty()) OpenPath(kit::PathOf(path));
}

void SetFile::OpenPath(const std::filesystem::path& path) {
  if (m_packed.Takes(path)) return OpenPacked(path);
  if (MayLose()) Load(path);
}

void SetFile::OpenPacked(const std::filesystem::path& path) {
  if (!m_packed.HoldsSet(path)) return emit noSet(path);
  if (!MayLose()) return;
  core::base::Result<std::filesystem::path> set = std::filesystem::path();
  {
    const kit::CommandGate::Passage passage(m_gate);
    emit loading(true);
    set = m_packed.Unpack(path, m_gate.Pump());
    emit loading(false);
  }
  if (!set) return m_dialogs.ShowError(kit::Translated(set.Text()));
  Load(*set);
  emit news(tr("The packed set was unpacked into \"%1\".").arg(kit::TextOf(set->parent_path())));
}

void SetFile::Pack() {
  const std::filesystem::path start = kit::PathOf(StartPlace());
  std::error_code ignored;
  const bool isFolder = std::filesystem::is_directory(start, ignored);
  const std::filesystem::path file = m_packed.AskForFile(isFolder ? start : start.parent_path(), m_set.Name());
  if (file.empty()) return;
  core::base::Result<> packed;
  {
    const kit::CommandGate::Passage passage(m_gate);
    emit loading(true);
    packed = m_packed.Pack(m_set, file, m_gate.Pump());
    emit loading(false);
  }
  if (!packed) return m_dialogs.ShowError(kit::Translated(packed.Text()));
  emit news(tr("The set was packed with its sounds as \"%1\".").arg(kit::TextOf(file)));
}

void SetFile::FillSaveMenu() {
  m_saveMenu.setObjectName("SaveMenu");
  m_saveMenu.setToolTipsVisible(true);
  QAction* const pack = m_saveMenu.addAction(tr("&Pack with its sounds ..."));
  pack->setObjectName("PackAction");
  connect(
      pack, &QAction::triggered, this, [this] { m_gate.WhenFree([this] { Pack(); }); }, Qt::QueuedConnection);
  connect(&m_saveMenu, &QMenu::aboutToShow, this, [this, pack] {
    const QString whyNot = m_packed.WhyNot(m_set);
    pack->setEnabled(whyNot.isEmpty());
    pack->setToolTip(whyNot.isEmpty() ? tr("The set and its sounds as one file, to take along") : whyNot);
  });
}

void SetFile::OfferNew(const std::vector<std::filesystem::path>& paths) {
  if (paths.empty()) return;
  QStringList names;
  for (const std::filesystem::path& path : paths) names.append(QFileInfo(kit::TextOf(path)).completeBaseName());
  const bool one = paths.size() == 1;
  const QString question = one ? tr("The new font \"%1\" is on this computer. Open it now?").arg(names.constFirst())
                               : tr("New fonts are on this computer: %1.\nOpen one of them now?").arg(names.join(", "));
  if (!m_dialogs.AskOkCancel(question, "", kit::Dialogs::Harmless::Both, kit::HelpContext::Update)) return;
  if (one) return OpenPath(paths.front());
  // Each lies in a folder of its own, side by side.
  const QString path = m_dialogs.OpenFile(tr("Open a new font"), kit::TextOf(paths.front().parent_path().parent_path()),
                                          Filter(), kit::HelpContext::Open);
  if (!path.isEmpty()) OpenPath(kit::PathOf(path));
}

core::sound::LoadResult SetFile::LoadBy(
    const std::function<core::sound::LoadResult(const core::base::EventPump& pump)>& load) {
  const kit::CommandGate::Passage passage(m_gate);
  emit loading(true);
  core::sound::LoadResult result = load(m_gate.Pump());
  emit loading(false);
  return result;
}

void SetFile::OpenCopy(const std::filesystem::path& path) {
  if (MayLose()) Load(path, true);
}

std::filesystem::path SetFile::AskForSet(const QString& title) {
  return kit::PathOf(m_dialogs.OpenFile(title, StartPlace(), Filter(), kit::HelpContext::Board));
}

void SetFile::SetMore(std::function<void(QMenu&)> more) {
  m_more = std::move(more);
  FillMenu();
}

void SetFile::Load(const std::filesystem::path& path, bool isCopy) {
  const auto result = LoadBy(
      [&](const core::base::EventPump& pump) { return isCopy ? m_set.LoadCopy(path, pump) : m_set.Load(path, pump); });
  std::error_code ignored;
  if (result.valid && !isCopy)
    Remember(path);
  else if (!std::filesystem::exists(path, ignored))
    m_recent.Forget(path);
  FillMenu();
  Tell(result);
}

bool SetFile::BringBack(const std::filesystem::path& unsaved, const std::filesystem::path& origin) {
  const auto result = LoadBy([&](const core::base::EventPump& pump) { return m_set.BringBack(unsaved, origin, pump); });
  Tell(result);
  return static_cast<bool>(result.valid);
}

void SetFile::Tell(const core::sound::LoadResult& result) {
  if (result.valid) emit opened();
  if (!result.valid)
    m_dialogs.ShowError(kit::Translated(result.Message()));
  else if (!result.failed.empty())
    m_locator.Tell(kit::Translated(core::sound::LoadResult::kFailedHeadline));
  else if (result.foundBeside > 0)
    emit news(tr("The sounds have moved with the set: they were found beside it."));
}

bool SetFile::Save() {
  const auto missing = AskMissing();
  if (!missing) return false;
  const QString path =
      m_dialogs.SaveFile(tr("Save the sound set"), StartPlace(), Filter(), kSuffix, kit::HelpContext::Save);
  return !path.isEmpty() && Write(kit::PathOf(path), *missing);
}

bool SetFile::SaveNamed() {
  if (m_set.Path().empty()) return Save();
  const auto missing = AskMissing();
  if (!missing || !Write(m_set.Path(), *missing)) return false;
  emit news(tr("The set was saved as \"%1\".").arg(kit::TextOf(m_set.Path())));
  return true;
}

std::optional<core::sound::SoundSet::Missing> SetFile::AskMissing() {
  using Missing = core::sound::SoundSet::Missing;
  if (m_set.AllMissing().IsEmpty()) return Missing::Keep;
  const QString name = QString::fromStdString(m_set.Name());
  const QString question = tr("Sounds of the set \"%1\" are missing: %2.\nSave it without them?")
                               .arg(name)
                               .arg(m_set.AllMissing().All().size());
  const QString advice = tr(
      "Saved without them, the set forgets them. Kept in the file, they are looked for when the set is opened again. "
      "\"Locate ...\" in their rows finds them.");
  switch (m_dialogs.AskMissing(question, advice)) {
    case kit::Dialogs::MissingSounds::LeaveOut:
      return Missing::LeaveOut;
    case kit::Dialogs::MissingSounds::Keep:
      return Missing::Keep;
    case kit::Dialogs::MissingSounds::GoBack:
      return std::nullopt;
  }
  return std::nullopt;
}

bool SetFile::Write(const std::filesystem::path& path, core::sound::SoundSet::Missing missing) {
  if (const core::base::Result<> saved = m_set.Save(path, m_disk, missing); !saved) {
    m_dialogs.ShowError(kit::Translated(saved.Text()));
    return false;
  }
  Remember(path);
  return true;
}

void SetFile::New() {
  if (!MayLose()) return;
  m_set.Clear();
  emit opened();
}

bool SetFile::MayLose() {
  if (!m_set.IsModified()) return true;
  const QString question =
      tr("The set \"%1\" has changes that are not saved.\nSave them?").arg(QString::fromStdString(m_set.Name()));
  switch (m_dialogs.AskUnsaved(question)) {
    case kit::Dialogs::Unsaved::Save:
      return Save();
    case kit::Dialogs::Unsaved::Discard:
      return true;
    case kit::Dialogs::Unsaved::GoBack:
      return false;
  }
  return false;
}

void SetFile::Remember(const std::filesystem::path& path) {
  std::error_code failed;
  const std::filesystem::path absolute = std::filesystem::absolute(path, failed);
  m_recent.Use(failed ? path : absolute);
  FillMenu();
}

void SetFile::FillMenu() {
  int number = 0;
  m_menu.clear();
  QAction* const fresh = m_menu.addAction(tr("&New set"), QKeySequence::New);
  // The actions must outlive their own signals, and saving and loading fill the menu anew.
  connect(
      fresh, &QAction::triggered, this, [this] { m_gate.WhenFree([this] { New(); }); }, Qt::QueuedConnection);
  if (std::error_code ignored; std::filesystem::exists(m_example, ignored)) {
    QAction* const example = m_menu.addAction(tr("A set to &try"));
    example->setToolTip(kit::TextOf(m_example));
    ConnectTo(*example, m_example);
  }
  if (!m_recent.Paths().empty()) m_menu.addSection(tr("Recent sets"));
  for (const std::filesystem::path& path : m_recent.Paths()) {
    const QString text = kit::TextOf(path);
    // The digit leads there from the keyboard; an ampersand in a file's name does not.
    const QString name = QFileInfo(text).completeBaseName().replace('&', "&&");
    QAction* const action = m_menu.addAction(QString("&%1  %2").arg(++number).arg(name));
    action->setToolTip(text);
    ConnectTo(*action, path);
  }
  if (m_more) {
    m_menu.addSeparator();
    m_more(m_menu);
  }
  if (kit::PathsOfSetting(m_settings.value(kRecentKey)) != m_recent.Paths())
    m_settings.setValue(kRecentKey, kit::SettingOf(m_recent.Paths()));
}

void SetFile::ConnectTo(QAction& action, const std::filesystem::path& path) {
  connect(
      &action, &QAction::triggered, this, [this, path] { m_gate.WhenFree([this, path] { OpenPath(path); }); },
      Qt::QueuedConnection);
}

QString SetFile::StartPlace() const {
  const std::filesystem::path& file = m_set.Path();
  // A folder that is gone would be taken for the name of a file.
  if (const std::filesystem::path folder = ExistingFolder(file.parent_path()); !folder.empty())
    return kit::TextOf(folder / file.filename());
  const std::filesystem::path documents =
      kit::PathOf(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  const std::filesystem::path recent =
      m_recent.Paths().empty() ? documents : ExistingFolder(m_recent.Paths().front().parent_path());
  return kit::TextOf(ExistingFolder(recent.empty() ? documents : recent));
}

}  // namespace kestrin::ui::window
