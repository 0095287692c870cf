// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "core/base/PrivateFolder.h"
#include "ui/import/ImportMeans.h"
#include "ui/kit/LatestJob.h"

namespace kestrin::ui::imports {

/// Does what the import sheet does with files, on threads of its own: finds the sounds in what was named, makes them
/// ready in a private folder that goes with the sheet, and copies what is wanted to where it stays.
class SoundMaker : public QObject {
  Q_OBJECT

 public:
  /// A sound to make ready, with the number of its row.
  struct Order {
    int id = 0;
    core::sound::ImportSource source;
    core::sound::ImportOptions options;
  };
  /// A file that was made ready, with the number of its row.
  struct Made {
    int id = 0;
    std::filesystem::path file;
  };
  /// A file that is about to come into the set, with its place there.
  struct Coming {
    core::sound::SoundPlace place;
    std::filesystem::path file;
  };
  using Measured = std::vector<core::sound::MeasuredSound>;
  /// Where it is now.
  using Kept = std::vector<Made>;

  explicit SoundMaker(ImportMeans means, QObject* parent = nullptr);

  /// Looks for the sounds in these files, folders and archives, behind those that it looks for already.
  void List(const std::vector<std::filesystem::path>& named);
  /// Makes these ready, in place of what it is making ready.
  void Make(std::vector<Order> orders);
  /// Makes a copy of a sound as it is, in place of another one.
  void Copy(int id, const std::filesystem::path& sound);
  /// Measures how loud the board plays the sounds that stay in the set, and behind them those that come.
  void Measure(std::vector<core::sound::Levelling::Sound> staying, std::vector<Coming> coming);
  /// Puts copies of files into the folder, which is made when it is not there: all of them or none.
  void Keep(std::vector<Made> files, const std::filesystem::path& folder);
  /// Gives up whatever goes on, and forgets all that was made. Nothing arrives any more.
  void Stop();

 signals:
  /// What was named, and the sounds in it. `isLast`: nothing more is looked for.
  void listed(const std::filesystem::path& named, const std::vector<core::sound::ImportSource>& sources, bool isLast);
  void made(int id, const core::sound::ImportedSound& sound, const core::sound::ImportOptions& with);
  /// The copy of this row's sound; `failure` is "" or says why there is none.
  void copied(int id, const std::filesystem::path& copy, const QString& failure);
  /// Nothing where they could not be measured.
  void measured(const imports::SoundMaker::Measured& sounds);
  void kept(const imports::SoundMaker::Kept& files);
  /// They could not be put there for this reason; all is as before.
  void notKept(const QString& failure);

 private:
  void ListNext();
  /// A folder for what is made next, in the private one; nothing when there is no place for one, and why.
  [[nodiscard]] core::base::Result<std::filesystem::path> NewFolder();

  ImportMeans m_means;
  kit::LatestJob m_listing;
  kit::LatestJob m_making;
  kit::LatestJob m_copying;
  kit::LatestJob m_keeping;
  std::vector<std::filesystem::path> m_toList;
  bool m_isListing = false;
  /// Jobs that still write into it keep it.
  std::shared_ptr<core::base::PrivateFolder> m_folder;
  int m_nextFolder = 1;
  std::vector<std::shared_ptr<const void>> m_keepers;
};

}  // namespace kestrin::ui::imports
