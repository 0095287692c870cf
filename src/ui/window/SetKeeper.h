// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "core/sound/SoundSet.h"
#include "core/sound/SoundSetListener.h"
#include "core/sound/unsaved/UnsavedFolder.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::ui::kit {
class CommandGate;
class Dialogs;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::window {

class SetFile;
struct Surroundings;

/// Lets a set that is not saved outlive the program, however it ends: keeps its changes in a folder of the program's
/// own, and offers at the next start what was left there. The set's own file is never written to.
class SetKeeper : public QObject, private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  /// How long after the first change that is not kept yet the set is kept. Further changes do not put it off.
  static constexpr int kMilliseconds = 1000;

  /// All must outlive the object. `file` brings sets back.
  SetKeeper(core::sound::SoundSet& set, SetFile& file, const Surroundings& surroundings, QObject* parent = nullptr);
  ~SetKeeper() override;

  /// Asks the person what becomes of the sets that were left, if there are any, from the event loop and once. They are
  /// asked about one after the other until one is opened; the others wait for the next start.
  void Offer();
  /// Whether that question is still to come or stands.
  [[nodiscard]] bool IsOffering() const { return m_offers; }
  /// The program ends. `isAsked`: the person was asked about the set, so that nothing of it is needed any more.
  /// Otherwise it is kept as it is now, which takes as long as the disk takes.
  void Finish(bool isAsked);

 signals:
  /// A line for the person.
  void news(const QString& text);
  /// The question that Offer() had is answered.
  void offered();

 private:
  /// What the thread works with. It goes with the last job.
  struct Store;
  using Left = core::sound::UnsavedFolder::Left;

  void ModifiedChanged() override;
  void Keep();
  void ShowResult(const core::base::Result<>& kept);
  void Ask(std::vector<Left> left);
  void BringBack(Left&& left);

  core::sound::SoundSet& m_set;
  SetFile& m_file;
  kit::CommandGate& m_gate;
  kit::Dialogs& m_dialogs;
  std::shared_ptr<Store> m_store;
  QTimer m_timer;
  bool m_hasOffered = false;
  bool m_offers = false;
  bool m_hasFinished = false;
  /// The person knows that the set cannot be kept.
  bool m_toldTrouble = false;
  /// Last: it ends before what it works with.
  kit::LatestJob m_job;
};

}  // namespace kestrin::ui::window
