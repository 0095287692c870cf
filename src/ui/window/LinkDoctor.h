// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace kestrin::core::device {
class DeviceSession;
}
namespace kestrin::ui::doctor {
class DoctorControl;
class DoctorFrame;
}  // namespace kestrin::ui::doctor
namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::window {

struct Surroundings;

/// The sheet "Connection doctor" over the board of the session.
class LinkDoctor : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object.
  LinkDoctor(core::device::DeviceSession& session, const Surroundings& around, const kit::Pictures& pictures,
             QObject* parent = nullptr);

  /// Whether the surroundings have what a doctor needs; if not, nothing below does anything.
  [[nodiscard]] bool IsThere() const { return m_control != nullptr; }
  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] doctor::DoctorFrame& Frame() const { return *m_frame; }
  void Open();
  /// The session's state has changed.
  void Follow();
  /// The program ends.
  void Stop();

 private:
  doctor::DoctorFrame* m_frame;
  /// nullptr without the means.
  doctor::DoctorControl* m_control = nullptr;
};

}  // namespace kestrin::ui::window
