// SPDX-License-Identifier: MIT
#include "ui/window/SetKeeper.h"

#include <QFileInfo>
#include <QLocale>
#include <mutex>
#include <utility>

#include "ui/kit/CommandGate.h"
#include "ui/kit/Dialogs.h"
#include "ui/kit/PathText.h"
#include "ui/kit/Translated.h"
#include "ui/window/SetFile.h"
#include "ui/window/Surroundings.h"

namespace kestrin::ui::window {

using core::sound::UnsavedFolder;
using core::sound::UnsavedSet;

struct SetKeeper::Store {
  Store(const std::filesystem::path& folder, core::base::Disk& disk) : files(folder, disk) {}

  std::mutex mutex;
  UnsavedFolder files;
};

namespace {

/// When the set was kept, as the person's desktop writes it.
QString When(const UnsavedFolder::Left& left) {
  return QLocale().toString(QFileInfo(kit::TextOf(left.file)).lastModified(), QLocale::ShortFormat);
}

}  // namespace

SetKeeper::SetKeeper(core::sound::SoundSet& set, SetFile& file, const Surroundings& surroundings, QObject* parent)
    : QObject(parent),
      m_set(set),
      m_file(file),
      m_gate(surroundings.gate),
      m_dialogs(surroundings.dialogs),
      // The last one is this person's own; a folder of programs may be shared.
      m_store(std::make_shared<Store>(surroundings.foldersToWriteIn.back() / UnsavedFolder::kFolderName,
                                      surroundings.disk)),
      m_job(this) {
  m_timer.setObjectName("KeepTimer");
  m_timer.setParent(this);
  m_timer.setSingleShot(true);
  m_timer.setInterval(kMilliseconds);
  connect(&m_timer, &QTimer::timeout, this, &SetKeeper::Keep);
  m_set.AddListener(*this);
}

SetKeeper::~SetKeeper() { m_set.RemoveListener(*this); }

void SetKeeper::ModifiedChanged() {
  if (!m_timer.isActive()) m_timer.start();
}

void SetKeeper::Keep() {
  if (m_hasFinished) return;
  // What is loaded tells of itself when it is there.
  if (m_set.IsLoading()) return m_timer.start();
  using Content = core::base::Result<std::string>;
  const bool isModified = m_set.IsModified();
  Content content = isModified ? UnsavedSet::ContentOf(m_set) : Content(std::string());
  if (!content) return ShowResult(content.Why());
  m_job.Start([this, store = m_store, isModified, text = *std::move(content)](const kit::LatestJob::GoOn& goOn,
                                                                              const kit::LatestJob::Deliver& deliver) {
    const std::lock_guard lock(store->mutex);
    if (!goOn()) return;
    if (!isModified) return store->files.Forget();
    deliver([this, kept = store->files.Keep(text)] { ShowResult(kept); });
  });
}

void SetKeeper::ShowResult(const core::base::Result<>& kept) {
  if (!kept && !std::exchange(m_toldTrouble, true))
    emit news(tr("Unsaved changes would not survive a crash now: %1. Save the set to be safe.")
                  .arg(kit::Translated(kept.Text())));
  if (kept) m_toldTrouble = false;
}

void SetKeeper::Finish(bool isAsked) {
  if (std::exchange(m_hasFinished, true)) return;
  m_timer.stop();
  m_job.Cancel();
  const std::lock_guard lock(m_store->mutex);
  if (isAsked || (!m_set.IsLoading() && !m_set.IsModified())) return m_store->files.Forget();
  // What is loaded only in part is no set of the person's.
  if (m_set.IsLoading()) return;
  if (const auto content = UnsavedSet::ContentOf(m_set)) static_cast<void>(m_store->files.Keep(*content));
}

void SetKeeper::Offer() {
  if (std::exchange(m_hasOffered, true)) return;
  std::vector<Left> left;
  {
    const std::lock_guard lock(m_store->mutex);
    left = m_store->files.Find();
  }
  if (left.empty()) return;
  m_offers = true;
  // Functions that are passed on can be copied, locks cannot.
  const auto shared = std::make_shared<std::vector<Left>>(std::move(left));
  QMetaObject::invokeMethod(
      this, [this, shared] { m_gate.WhenFree([this, shared] { Ask(std::move(*shared)); }); }, Qt::QueuedConnection);
}

void SetKeeper::Ask(std::vector<Left> left) {
  for (Left& set : left) {
    if (m_hasFinished) return;
    const QString question = tr("The set \"%1\" has changes that were not saved, from %2.\nOpen it again as it was?")
                                 .arg(QString::fromStdString(set.set.Name()), When(set));
    QString advice = tr(
        "The program ended before they were saved. Its file stays as it is until you save the set. What you leave is "
        "kept and offered again at the next start.");
    if (set.isOriginNewer) advice += ' ' + tr("Mind that its file was written after these changes.");
    const kit::Dialogs::LeftSet answer = m_dialogs.AskLeftSet(question, advice);
    if (answer == kit::Dialogs::LeftSet::Open) {
      BringBack(std::move(set));
      break;
    }
    if (answer == kit::Dialogs::LeftSet::ThrowAway) UnsavedFolder::Remove(std::move(set));
  }
  m_offers = false;
  emit offered();
}

void SetKeeper::BringBack(Left&& left) {
  // Until it is loaded nothing may take the file away, and if it cannot be, it stays for another time.
  if (!m_file.BringBack(left.file, left.set.Origin()) || m_hasFinished) return;
  {
    const std::lock_guard lock(m_store->mutex);
    m_store->files.TakeOver(std::move(left));
  }
  ModifiedChanged();
  emit news(tr("The set is back as it was. Save it to keep it."));
}

}  // namespace kestrin::ui::window
