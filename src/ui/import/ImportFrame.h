// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "ui/import/ImportModel.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QProgressBar;
class QPushButton;

namespace kestrin::ui::kit {
class Pictures;
}
namespace kestrin::ui::sound {
class MemoryBar;
}

namespace kestrin::ui::imports {

class ImportHeader;
class ImportList;

/// The sheet "Import sounds": what will become of the sounds that the person has brought, to be looked at, heard and
/// changed before any of it is done. It touches no file; ImportControl does what its buttons say.
class ImportFrame : public kit::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = QT_TR_NOOP("Import sounds");

  /// What goes on.
  enum class Work {
    None,
    Looking,    ///< for the sounds in what was named
    Importing,  ///< they are moved into the folder
  };

  /// Starts hidden. Both must outlive the sheet.
  ImportFrame(ImportModel& rows, const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Shows the sheet, with the options as the person left them.
  void Open();
  /// Where the sounds come from, the name of a folder or archive; "" for several.
  void ShowOrigin(const QString& name);
  /// Where the sounds go.
  void ShowFolder(const std::filesystem::path& folder);
  void ShowWork(Work work);
  /// What has gone wrong, for the person; "" takes it away.
  void ShowFailure(const QString& text);
  /// Whether the volumes of the set are to be levelled after the import.
  [[nodiscard]] bool IsLevelled() const;

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  void addWanted();
  void folderWanted();
  void importWanted();
  void playWanted(int id, imports::ImportModel::Half half);
  /// The sheet is gone, whatever closed it.
  void closed();

 protected:
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] QBoxLayout* MakeHead();
  [[nodiscard]] QWidget* MakeTable();
  [[nodiscard]] QBoxLayout* MakeOptions();
  [[nodiscard]] QBoxLayout* MakeOption(QCheckBox*& box, QLabel*& hint, const char* name, const QString& text,
                                       const QString& help);
  [[nodiscard]] QBoxLayout* MakeMemory();
  [[nodiscard]] QBoxLayout* MakePlace();
  [[nodiscard]] QBoxLayout* MakeFooter();
  /// Shows all that follows from the rows.
  void Refresh();
  void ShowProgress();
  [[nodiscard]] QString Summary() const;
  [[nodiscard]] QString WhyNotImport() const;

  ImportModel& m_model;
  QString m_origin;
  std::filesystem::path m_folder;
  Work m_work = Work::None;
  QString m_failure;

  QLabel* m_summary = nullptr;
  QPushButton* m_add = nullptr;
  ImportHeader* m_header = nullptr;
  ImportList* m_list = nullptr;
  QCheckBox* m_trim = nullptr;
  QLabel* m_trimHint = nullptr;
  QCheckBox* m_level = nullptr;
  QLabel* m_levelHint = nullptr;
  QCheckBox* m_loop = nullptr;
  QLabel* m_loopHint = nullptr;
  QLabel* m_use = nullptr;
  sound::MemoryBar* m_bar = nullptr;
  QLabel* m_advice = nullptr;
  QLabel* m_place = nullptr;
  QPushButton* m_change = nullptr;
  QWidget* m_legend = nullptr;
  QLabel* m_progressText = nullptr;
  QProgressBar* m_progress = nullptr;
  QPushButton* m_cancel = nullptr;
  QPushButton* m_import = nullptr;
};

}  // namespace kestrin::ui::imports
