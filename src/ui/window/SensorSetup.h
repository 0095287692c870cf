// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <optional>

#include "core/device/TLS.h"

namespace kestrin::core::device {
class DeviceSession;
}
namespace kestrin::ui::motion {
class ConfigControl;
class ConfigFrame;
}  // namespace kestrin::ui::motion

namespace kestrin::ui::window {

struct Surroundings;

/// The panel for a sound board's acceleration sensor, over the board of the session.
class SensorSetup : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive the object.
  SensorSetup(core::device::DeviceSession& session, const Surroundings& around, QObject* parent = nullptr);

  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] motion::ConfigFrame& Frame() const { return *m_frame; }
  /// Shows the panel as it was left.
  void Open();
  void Hide();
  /// A sound board has come online: the panel shows what it holds.
  void ReadAccData();
  /// What the board that is online holds, as its sliders show it, as far as that is known.
  [[nodiscard]] std::optional<core::device::AccParam> Held() const;
  /// Whether the window may be closed: asks when values would be lost that the person has set.
  [[nodiscard]] bool MayClose();

 signals:
  /// Short news for the help line.
  void news(const QString& text);

 private:
  motion::ConfigFrame* m_frame;
  motion::ConfigControl* m_control;
};

}  // namespace kestrin::ui::window
