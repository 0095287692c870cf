// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <deque>
#include <filesystem>
#include <functional>
#include <vector>

namespace kestrin::ui::kit {
class CommandGate;
}

namespace kestrin::ui::window {

/// What the desktop asks the window to open. One after another, and not before the person is free to answer what may
/// have to be asked: nothing goes on, no sheet and no question stands.
class OpenRequests : public QObject {
  Q_OBJECT

 public:
  struct Steps {
    /// Whether the person is free, apart from what the gate knows.
    std::function<bool()> isFree;
    std::function<void(const std::filesystem::path&)> open;
    /// The path cannot be opened yet.
    std::function<void(const std::filesystem::path&)> tellWaiting;
  };
  /// More do not wait: the oldest is forgotten.
  static constexpr std::size_t kMost = 100;

  /// The gate must outlive the object.
  OpenRequests(kit::CommandGate& gate, Steps steps, QObject* parent = nullptr);

  void Add(const std::filesystem::path& path);
  /// Something has ended that the person was busy with.
  void Look();
  /// What waits and is not opened here any more.
  [[nodiscard]] std::vector<std::filesystem::path> TakeWaiting();

 private:
  void Next();

  kit::CommandGate& m_gate;
  Steps m_steps;
  std::deque<std::filesystem::path> m_waiting;
  /// The gate knows of the first one.
  bool m_isAtGate = false;
  bool m_isOpening = false;
};

}  // namespace kestrin::ui::window
