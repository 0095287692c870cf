// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace kestrin::rig {

/// A screen with mouse and keyboard that nobody sees, and a session with a bus of its own, on which screen readers and
/// programs find each other.
class PrivateDesktop {
 public:
  /// Throws when it does not start.
  PrivateDesktop();
  ~PrivateDesktop();
  PrivateDesktop(const PrivateDesktop&) = delete;
  PrivateDesktop& operator=(const PrivateDesktop&) = delete;

  /// The screen's name, as in DISPLAY.
  [[nodiscard]] const std::string& Display() const { return m_display; }
  [[nodiscard]] const std::string& SessionBus() const { return m_sessionBus; }
  /// What makes a program run on this desktop: "NAME=VALUE", or "NAME" for a variable that it must not see.
  [[nodiscard]] std::vector<std::string> Environment() const;

 private:
  /// Starts a program that writes one line into the descriptor 3 once it is ready. Returns that line.
  std::string Start(const std::vector<std::string>& command, const std::vector<std::string>& environment);
  void Stop();

  /// Without a blank: addresses of buses cannot hold one.
  std::filesystem::path m_folder;
  std::vector<pid_t> m_processes;
  std::string m_display;
  std::string m_sessionBus;
};

}  // namespace kestrin::rig
