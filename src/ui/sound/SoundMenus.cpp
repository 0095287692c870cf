// SPDX-License-Identifier: MIT
#include "ui/sound/SoundMenus.h"

#include <QAction>
#include <QCoreApplication>
#include <QMenu>
#include <utility>

#include "ui/sound/SlotList.h"
#include "ui/sound/SlotListModel.h"
#include "ui/sound/SoundActions.h"
#include "ui/sound/SoundTexts.h"

namespace kestrin::ui::sound {

namespace {

struct MenuTexts {
  Q_DECLARE_TR_FUNCTIONS(SoundMenus)
};

/// Adds an entry with the key that does the same outside the menu.
QAction* AddEntry(QMenu& menu, const QString& text, const QKeySequence& key, bool enabled, std::function<void()> does) {
  QAction* action = menu.addAction(text);
  action->setShortcut(key);
  action->setShortcutVisibleInContextMenu(true);
  // The lists hear the key themselves; the entry only shows it.
  action->setShortcutContext(Qt::WidgetShortcut);
  action->setEnabled(enabled);
  QObject::connect(action, &QAction::triggered, &menu, std::move(does));
  return action;
}

}  // namespace

std::unique_ptr<QMenu> MakeFileMenu(SoundActions& actions, const std::vector<std::filesystem::path>& files,
                                    core::sound::SlotKind target, QWidget* parent) {
  auto menu = std::make_unique<QMenu>(parent);
  const bool mayAdd = actions.MayChange() && !files.empty();
  AddEntry(*menu, MenuTexts::tr("Add to %1").arg(SlotTitle(target)), Qt::Key_Return, mayAdd,
           [&actions, files, target] { actions.Add(target, files); });
  AddEntry(*menu, MenuTexts::tr("Play"), Qt::Key_Space, !files.empty(),
           [&actions, files] { actions.Play(files.front()); });
  menu->addSeparator();
  QMenu* others = menu->addMenu(MenuTexts::tr("Add to slot"));
  others->setEnabled(mayAdd);
  for (const core::sound::Slot& slot : core::sound::kSlots)
    AddEntry(*others, SlotMnemonic(slot.kind), {}, mayAdd,
             [&actions, files, kind = slot.kind] { actions.Add(kind, files); });
  return menu;
}

std::unique_ptr<QMenu> MakeSlotMenu(SoundActions& actions, SlotList& list, const SlotListModel& sounds,
                                    std::function<void()> locateAll, QAction* level) {
  auto menu = std::make_unique<QMenu>(&list);
  const core::sound::SlotKind kind = sounds.Kind();
  const std::vector<int> positions = list.SelectedPositions();
  const bool isAny = !positions.empty();
  const bool mayChange = isAny && actions.MayChange();
  if (list.HasMissingSelected()) {
    const int row = list.currentIndex().row();
    AddEntry(*menu, MenuTexts::tr("Locate ..."), Qt::Key_Return, mayChange && list.IsMissing(row),
             [&list, row] { emit list.locateWanted(row); });
    AddEntry(*menu, MenuTexts::tr("Locate the sounds ..."), {}, mayChange, std::move(locateAll));
    menu->addSeparator();
  }
  const bool isSound = isAny && actions.Set().Holds({kind, positions.front()});
  AddEntry(*menu, MenuTexts::tr("Play"), Qt::Key_Space, isSound, [&actions, kind, positions] {
    actions.Play(core::sound::SoundPlace{kind, positions.front()});
  });
  AddEntry(*menu, MenuTexts::tr("Remove"), Qt::Key_Delete, mayChange, [&list] { list.RemoveSelected(); });
  if (core::sound::SlotOf(kind).isList) {
    const bool isOne = mayChange && positions.size() == 1;
    menu->addSeparator();
    AddEntry(*menu, MenuTexts::tr("Move up"), Qt::CTRL | Qt::Key_Up, isOne && positions.front() > 1,
             [&list] { list.Shift(-1); });
    AddEntry(*menu, MenuTexts::tr("Move down"), Qt::CTRL | Qt::Key_Down, isOne && positions.front() < sounds.rowCount(),
             [&list] { list.Shift(1); });
  }
  menu->addSeparator();
  for (const bool copy : {false, true}) {
    QMenu* others = menu->addMenu(copy ? MenuTexts::tr("Copy to") : MenuTexts::tr("Move to"));
    others->setEnabled(mayChange);
    for (const core::sound::Slot& slot : core::sound::kSlots)
      if (slot.kind != kind)
        AddEntry(*others, SlotMnemonic(slot.kind), {}, mayChange, [&actions, kind, positions, to = slot.kind, copy] {
          actions.Bring(kind, positions, to, SoundActions::kEnd, copy);
        });
  }
  menu->addSeparator();
  menu->addAction(level);
  return menu;
}

}  // namespace kestrin::ui::sound
