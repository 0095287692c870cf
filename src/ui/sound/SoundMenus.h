// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "core/sound/SlotKind.h"
#include "ui/sound/FolderContents.h"

class QAction;
class QMenu;
class QWidget;

namespace kestrin::ui::sound {

class SlotList;
class SlotListModel;
class SoundActions;

/// The menu for the chosen files of the file list: add them to `target` or another slot, play the first.
[[nodiscard]] std::unique_ptr<QMenu> MakeFileMenu(SoundActions& actions,
                                                  const std::vector<std::filesystem::path>& files,
                                                  core::sound::SlotKind target, QWidget* parent);

/// The menu for the selected sounds of a slot: play, remove, reorder, move and copy to another slot; where one of them
/// is missing, also what locates it, or all by `locateAll`; and `level`, unless it is invisible. List and action must
/// outlive the menu.
[[nodiscard]] std::unique_ptr<QMenu> MakeSlotMenu(SoundActions& actions, SlotList& list, const SlotListModel& sounds,
                                                  std::function<void()> locateAll, QAction* level);

}  // namespace kestrin::ui::sound
