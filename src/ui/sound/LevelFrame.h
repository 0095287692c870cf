// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "core/sound/SlotKind.h"
#include "core/sound/level/Balance.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace kestrin::ui::sound {

/// The sheet "Level the volumes": how loud the slots shall be against one another, and how far the measuring is. It
/// changes no set; whoever owns it does what its buttons say.
class LevelFrame : public kit::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = QT_TR_NOOP("Level the volumes");

  /// Starts hidden, with the usual balance.
  explicit LevelFrame(QWidget* parent = nullptr);

  /// Shows that balance, in whole units.
  void SetBalance(const core::sound::Balance& balance);
  [[nodiscard]] core::sound::Balance Balance() const;
  /// Shows the sheet, ready to begin.
  void Open();
  /// While sounds are measured the balance stays as it is, and Cancel stops.
  void SetRunning(bool isRunning);
  void ShowPercent(int percent);

 signals:
  /// `LevelNowBtn`: level with this balance.
  void levelRequested();
  /// Cancel or Escape while sounds are measured.
  void stopRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeLayout();
  [[nodiscard]] QGridLayout* MakeBalance();
  void AddSlot(QGridLayout& grid, int row, int column, core::sound::SlotKind kind);
  [[nodiscard]] QBoxLayout* MakeButtons();
  /// Ends the measuring, or closes the sheet.
  void Cancel();
  /// The usual balance can be put back only while another one is shown.
  void ShowWhetherUsual();

  /// In the order of kSlots.
  std::array<QSpinBox*, core::sound::kSlots.size()> m_boxes{};
  QLabel* m_state = nullptr;
  QProgressBar* m_bar = nullptr;
  QPushButton* m_usual = nullptr;
  QPushButton* m_cancel = nullptr;
  QPushButton* m_level = nullptr;
  bool m_isRunning = false;
};

}  // namespace kestrin::ui::sound
