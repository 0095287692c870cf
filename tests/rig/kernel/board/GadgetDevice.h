// SPDX-License-Identifier: MIT
#pragma once

#include <linux/usb/functionfs.h>

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <span>
#include <string>
#include <vector>

#include "rig/kernel/board/ServedBoard.h"

namespace kestrin::rig {

/// Serves a board as a USB device: FunctionFS on this side, the kernel's own USB host on the other one of an emulated
/// cable. The gadget itself (configfs) is somebody else's to make.
///
/// Signals and log as with UhidDevice, but nobody tells it when a program opens the node. When FunctionFS has taken its
/// descriptors the log says READY; from then on it can be plugged in.
class GadgetDevice {
 public:
  struct Place {
    /// Where FunctionFS is mounted.
    std::filesystem::path functions;
    /// The gadget's attribute that binds it to a controller, and the controller's name.
    std::filesystem::path binding;
    std::string controller;
  };

  GadgetDevice(ServedBoard board, Place place);

  /// Returns only when something is wrong, with the exit status of the program; SIGTERM ends the program in here.
  int Serve();

 private:
  /// Each of these has a thread of its own and never ends.
  void ObeySignals();
  void SendAnswers();
  void TakeReports();

  void Bind(const std::string& controller) const;
  void Handle(const usb_functionfs_event& event);
  void HandleRequest(const usb_ctrlrequest& request);
  void Take(std::span<const std::uint8_t> report, const std::string& way);
  [[nodiscard]] int OpenEndpoint(const char* name) const;

  /// Guards the board.
  std::mutex m_mutex;
  std::condition_variable m_news;
  ServedBoard m_board;
  bool m_plugged = false;
  Place m_place;
  std::vector<std::uint8_t> m_descriptor;
  int m_control = -1;
};

}  // namespace kestrin::rig
