// SPDX-License-Identifier: MIT
#pragma once

#include "core/sound/SlotKind.h"
#include "ui/kit/Card.h"

class QLabel;
class QRadioButton;

namespace kestrin::ui::sound {

class SlotList;
class SlotListModel;
class SoundActions;

/// One slot: its option button, how full it is, its list.
class SlotPanel : public kit::Card {
  Q_OBJECT

 public:
  SlotPanel(SoundActions& actions, core::sound::SlotKind kind, QWidget* parent = nullptr);

  [[nodiscard]] core::sound::SlotKind Kind() const { return m_kind; }
  [[nodiscard]] QRadioButton* Option() const { return m_option; }
  [[nodiscard]] SlotList* List() const { return m_list; }
  [[nodiscard]] SlotListModel* Sounds() const { return m_sounds; }
  /// A short one has no more height than a single slot: the room is for something else.
  void SetShort(bool isShort);
  /// Takes up what the set holds now.
  void Refresh();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void ShowSelected(bool selected);
  void ShowEmptyText();

  core::sound::SlotKind m_kind;
  bool m_isShort = false;
  SlotListModel* m_sounds;
  QRadioButton* m_option;
  /// How full a list is, or the volume of a single slot.
  QLabel* m_count;
  SlotList* m_list;
};

}  // namespace kestrin::ui::sound
