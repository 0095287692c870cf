#include "app/SetFile.h"

#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <vector>

#include "app/CommandGate.h"
#include "app/Dialogs.h"
#include "app/FileFilter.h"
#include "app/PathText.h"
#include "sound/ConfigurationFile.h"

namespace kestrin::app {

namespace {

constexpr const char* kRecentKey = "recentSets";
constexpr const char* kSuffix = "lscfg";

sound::RecentSets ReadRecent(const QSettings& settings) {
  std::vector<std::filesystem::path> stored;
  for (const QString& path : settings.value(kRecentKey).toStringList()) stored.push_back(PathOf(path));
  return sound::RecentSets(stored);
}

}  // namespace

SetFile::SetFile(sound::SoundSet& set, Dialogs& dialogs, base::Disk& disk, CommandGate& gate, QSettings& settings,
                 QObject* parent)
    : QObject(parent),
      m_set(set),
      m_dialogs(dialogs),
      m_disk(disk),
      m_gate(gate),
      m_settings(settings),
      m_recent(ReadRecent(settings)) {
  m_menu.setObjectName("LoadMenu");
  m_menu.setToolTipsVisible(true);
  FillMenu();
}

void SetFile::Open() {
  const QString path = m_dialogs.OpenFile(tr("Open a sound set"), StartPlace(),
                                          QtFileFilter(sound::ConfigurationFile::kFilter), HelpContext::Open);
  if (!path.isEmpty()) OpenPath(PathOf(path));
}

void SetFile::OpenPath(const std::filesystem::path& path) {
  if (MayLose()) Load(path);
}

void SetFile::OfferNew(const std::vector<std::filesystem::path>& paths) {
  if (paths.empty()) return;
  QStringList names;
  for (const std::filesystem::path& path : paths) names.append(QFileInfo(TextOf(path)).completeBaseName());
  const bool one = paths.size() == 1;
  const QString question = one ? tr("The new font \"%1\" is on this computer. Open it now?").arg(names.constFirst())
                               : tr("New fonts are on this computer: %1.\nOpen one of them now?").arg(names.join(", "));
  if (!m_dialogs.AskOkCancel(question, "", Dialogs::Harmless::Both, HelpContext::Update)) return;
  if (one) return OpenPath(paths.front());
  // Each lies in a folder of its own, side by side.
  const QString path = m_dialogs.OpenFile(tr("Open a new font"), TextOf(paths.front().parent_path().parent_path()),
                                          QtFileFilter(sound::ConfigurationFile::kFilter), HelpContext::Open);
  if (!path.isEmpty()) OpenPath(PathOf(path));
}

void SetFile::Load(const std::filesystem::path& path) {
  sound::LoadResult result;
  {
    const CommandGate::Passage passage(m_gate);
    emit loading(true);
    result = m_set.Load(path, m_gate.Pump());
    emit loading(false);
  }
  std::error_code ignored;
  if (result.valid)
    Remember(path);
  else if (!std::filesystem::exists(path, ignored))
    m_recent.Forget(path);
  FillMenu();
  const std::string message = result.Message();
  if (!message.empty()) m_dialogs.ShowError(QString::fromStdString(message));
  if (result.valid) emit opened();
}

bool SetFile::Save() {
  const QString path = m_dialogs.SaveFile(tr("Save the sound set"), StartPlace(),
                                          QtFileFilter(sound::ConfigurationFile::kFilter), kSuffix, HelpContext::Save);
  if (path.isEmpty()) return false;
  const std::string problem = m_set.Save(PathOf(path), m_disk);
  if (!problem.empty()) {
    m_dialogs.ShowError(QString::fromStdString(problem));
    return false;
  }
  Remember(PathOf(path));
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
    case Dialogs::Unsaved::Save:
      return Save();
    case Dialogs::Unsaved::Discard:
      return true;
    case Dialogs::Unsaved::GoBack:
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
  QStringList stored;
  m_menu.clear();
  QAction* const fresh = m_menu.addAction(tr("New set"), QKeySequence::New);
  // The actions must outlive their own signals, and saving and loading fill the menu anew.
  connect(
      fresh, &QAction::triggered, this, [this] { m_gate.WhenFree([this] { New(); }); }, Qt::QueuedConnection);
  if (!m_recent.Paths().empty()) m_menu.addSection(tr("Recent sets"));
  for (const std::filesystem::path& path : m_recent.Paths()) {
    const QString text = TextOf(path);
    stored.append(text);
    // An ampersand in a file's name is no shortcut.
    QAction* const action = m_menu.addAction(QFileInfo(text).completeBaseName().replace('&', "&&"));
    action->setToolTip(text);
    connect(
        action, &QAction::triggered, this, [this, path] { m_gate.WhenFree([this, path] { OpenPath(path); }); },
        Qt::QueuedConnection);
  }
  if (m_settings.value(kRecentKey).toStringList() != stored) m_settings.setValue(kRecentKey, stored);
}

QString SetFile::StartPlace() const {
  if (!m_set.Path().empty()) return TextOf(m_set.Path());
  if (!m_recent.Paths().empty()) return TextOf(m_recent.Paths().front().parent_path());
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

}  // namespace kestrin::app
