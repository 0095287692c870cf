// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "ui/kit/Card.h"
#include "ui/kit/SpecialFolders.h"

class QFileSystemWatcher;
class QComboBox;
class QLabel;
class QSettings;
class QTimer;
class QToolButton;

namespace kestrin::ui::kit {
class HintLabel;
class LatestJob;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::sound {

class DriveList;
class FileListModel;
struct FolderContents;
enum class SoundFilter;
class SoundListView;

/// Finds sounds on the computer: a drive list, the folders of the current folder, its sound files. Folders are read on
/// a thread of their own.
class FileExplorer : public kit::Card {
  Q_OBJECT

 public:
  /// The folders must outlive the explorer.
  explicit FileExplorer(const kit::SpecialFolders& folders, QWidget* parent = nullptr);

  /// Shows the folder, and its drive in the drive list.
  void SetFolder(const std::filesystem::path& folder);
  /// The folder that is shown.
  [[nodiscard]] const std::filesystem::path& Folder() const { return m_folder; }
  /// The chosen files, from the first to the last.
  [[nodiscard]] std::vector<std::filesystem::path> SelectedFiles() const;
  /// The file of a row; empty when there is none.
  [[nodiscard]] std::filesystem::path FileAt(int row) const;
  [[nodiscard]] SoundListView* Files() const { return m_fileList; }
  void SetPlaying(const std::filesystem::path& path);
  void SetHint(const QString& hint);
  /// Lets the person choose whether sounds are shown that have to be imported first; the settings remember that.
  void OfferFilter(QSettings& settings);

 signals:
  /// The contents of the folder are shown.
  void folderShown();

 private:
  void MakeLayout();
  /// Asks for the drives anew; the one that is shown stays shown.
  void FillDrives();
  void ChooseDrive(int index);
  void Open(const std::filesystem::path& folder);
  void GoUp();
  void Read();
  void Show(FolderContents& contents);
  void OpenChosenFolder();
  [[nodiscard]] QString NoSounds() const;

  const kit::SpecialFolders& m_specialFolders;
  std::vector<kit::Drive> m_drives;
  std::filesystem::path m_folder;
  /// Nobody has to choose: those of the board's own format are shown.
  SoundFilter m_filter;
  /// The folder that GoUp() has left: it is selected among its neighbours.
  std::filesystem::path m_left;
  kit::LatestJob* m_job;
  FileListModel* m_folders;
  FileListModel* m_files;
  DriveList* m_driveList;
  QToolButton* m_up;
  QLabel* m_path;
  SoundListView* m_dirList;
  QComboBox* m_filterList;
  SoundListView* m_fileList;
  kit::HintLabel* m_hint;
  QFileSystemWatcher* m_watcher;
  QTimer* m_readAgain;
};

}  // namespace kestrin::ui::sound
