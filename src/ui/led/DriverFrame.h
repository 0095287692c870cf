// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/ledsetup/LedSetupState.h"
#include "ui/kit/Card.h"

class QComboBox;
class QHBoxLayout;
class QPushButton;
class QSlider;
class QSpinBox;

namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::led {

class ChannelLabel;
class FlowRow;

/// "Driver configuration": LED type, output channels, overdrive, and the button that writes them to the board. It shows
/// what is set; showing something is not told as the person's action.
class DriverFrame : public kit::Card {
  Q_OBJECT

 public:
  /// The pictures must outlive the frame.
  explicit DriverFrame(const kit::Pictures& pictures, QWidget* parent = nullptr);

  void ShowTypes(const core::ledsetup::LedSetupState& state);
  void ShowChannels(const core::ledsetup::LedSetupState& state);
  void ShowOverdrive(const core::ledsetup::LedSetupState& state);
  /// The update button can be used; or cannot for this reason.
  void EnableUpdate(const QString& whyNot);

 signals:
  /// The type at that place of the list.
  void typeChosen(int index);
  /// In percent.
  void overdriveMoved(int percent);
  void updateRequested();

 private:
  void AddType(FlowRow& fields);
  void AddChannels(FlowRow& fields);
  /// Returns the row of it, for what else stands there.
  QHBoxLayout& AddOverdrive(FlowRow& fields);
  void AddUpdate(const kit::Pictures& pictures, QHBoxLayout& row);
  /// A caption over what stands in the row that is returned.
  [[nodiscard]] QHBoxLayout* AddField(const QString& caption, QWidget* buddy, FlowRow& fields, int stretch);

  /// The names in the list.
  std::vector<std::string> m_names;
  QComboBox* m_types = nullptr;
  std::array<ChannelLabel*, core::led::LED_Driver::kChannels> m_channels{};
  QSlider* m_overdrive = nullptr;
  QSpinBox* m_percent = nullptr;
  QPushButton* m_update = nullptr;
};

}  // namespace kestrin::ui::led
