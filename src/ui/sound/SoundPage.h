// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QWidget>
#include <filesystem>
#include <map>
#include <optional>
#include <vector>

#include "core/sound/SoundSet.h"
#include "core/sound/level/HeardSound.h"

class QAction;
class QButtonGroup;
class QHBoxLayout;
class QSettings;
class QVBoxLayout;

namespace kestrin::ui::kit {
class LinkButton;
class SpecialFolders;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::sound {

class DetailPanel;
class FileExplorer;
class MemoryGauge;
class SetLabel;
class SlotPanel;
class SoundActions;

/// The page on which a person puts sounds into the slots: file explorer, the seven slots, the selected sound, the
/// board's memory.
class SoundPage : public QWidget, private core::sound::SoundSetListener {
  Q_OBJECT

 public:
  /// The hint for the page; the run of blanks belongs to it.
  static constexpr const char* kHint =
      QT_TR_NOOP("Double-click to add/remove files          CTRL+Click to play LSU File");

  /// Set and folders must outlive the page.
  SoundPage(core::sound::SoundSet& set, const kit::SpecialFolders& folders, QWidget* parent = nullptr);
  ~SoundPage() override;

  /// Shows the folder in the file explorer and its drive in the drive list.
  void SetFolder(const std::filesystem::path& folder);
  /// The folder that the file explorer shows.
  [[nodiscard]] std::filesystem::path Folder() const;
  /// Whether a sound is being made ready to play: that can be stopped like the playing.
  void SetPreparing(bool isPreparing);
  /// Shows which sound is playing; empty: none.
  void SetPlaying(const std::filesystem::path& path);
  /// The settings keep from now on whether sounds are heard and seen as the board plays them.
  void KeepAsOnBoard(QSettings& settings);
  void SetAsOnBoard(bool asOnBoard);
  [[nodiscard]] bool IsAsOnBoard() const;
  /// The volumes can be levelled: offers that beside the set's name, by a key and in the slots' menus.
  void OfferLevelling();
  /// While something is going on that needs the set as it is, nothing can be changed; playing stays possible.
  void SetBusy(bool busy);
  /// Selects the slot's option button and gives its list the keyboard.
  void FocusSlot(core::sound::SlotKind kind);
  /// Selects the sound of that row, as a click on it does.
  void Select(const core::sound::SoundPlace& place);
  /// The slot into which sounds go: the one whose option button is selected.
  [[nodiscard]] core::sound::SlotKind SelectedSlot() const;

  /// Sounds of other kinds than the board's own can be imported: the explorer shows them too where the person wants
  /// that, which the settings remember. They must outlive the page.
  void OfferImport(QSettings& settings);

  /// As long as the set is empty, `cards` stands where its lists would be: ways to start. The Tab key comes to these
  /// `controls` of it behind those of the slots. The page takes it.
  void SetStart(QWidget& cards, const QList<QWidget*>& controls);

  /// Undo and redo with their texts, shortcuts and states, for menus and toolbars.
  [[nodiscard]] QAction* UndoAction() const { return m_undoAction; }
  [[nodiscard]] QAction* RedoAction() const { return m_redoAction; }

 signals:
  /// The person wants to hear this file, or this sound as the board plays it.
  void playRequested(const std::filesystem::path& path);
  void playAsOnBoardRequested(const core::sound::HeardSound& sound);
  /// Sounds are heard and seen as the board plays them from now on, or are not.
  void asOnBoardChanged(bool asOnBoard);
  /// The person wants to make the sounds equally loud.
  void levelRequested();
  /// The person wants silence.
  void stopRequested();
  /// The person wants to show the program a missing sound, or all of them.
  void locateRequested(const core::sound::SoundPlace& place);
  void locateAllRequested();
  /// The person wants sounds in the set that have to be imported first, all for one slot when that is given.
  void importRequested(const std::vector<std::filesystem::path>& named, std::optional<core::sound::SlotKind> slot);
  /// Something to tell the person in a message box; `detail` is "" or says why.
  void message(const QString& text, const QString& detail);
  /// What the control under the pointer is for; empty when there is nothing to say.
  void hint(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void SlotChanged(core::sound::SlotKind kind) override;
  void MemoryChanged() override;
  void ModifiedChanged() override;

  void MakeActions();
  void MakeLayout();
  void ConnectExplorer();
  void ConnectSlot(SlotPanel& panel);
  void SelectSound(const core::sound::SoundPlace& place);
  /// The sounds that were moved stay the ones that are selected, where they are now.
  void FollowMoved(core::sound::SlotKind kind, int first, int count);
  void Locate(core::sound::SlotKind kind, int row);
  /// The selected rows of the slot that is shown.
  [[nodiscard]] std::vector<core::sound::SoundPlace> SelectedPlaces() const;
  [[nodiscard]] int CountOfSelected() const;
  void ShowFile(const std::filesystem::path& path);
  /// Shows the ways to start, or the lists in their place.
  void ShowStart();

  core::sound::SoundSet& m_set;
  QAction* m_undoAction = nullptr;
  QAction* m_redoAction = nullptr;
  QAction* m_stopAction = nullptr;
  QAction* m_levelAction = nullptr;
  SoundActions* m_actions = nullptr;
  FileExplorer* m_explorer = nullptr;
  SetLabel* m_setLabel = nullptr;
  kit::LinkButton* m_level = nullptr;
  std::map<core::sound::SlotKind, SlotPanel*> m_slots;
  QButtonGroup* m_options = nullptr;
  DetailPanel* m_detail = nullptr;
  MemoryGauge* m_gauge = nullptr;
  QHBoxLayout* m_lists = nullptr;
  QVBoxLayout* m_right = nullptr;
  QWidget* m_start = nullptr;
  bool m_isPreparing = false;
  bool m_isPlaying = false;
};

}  // namespace kestrin::ui::sound
