// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "core/device/THIDagent.h"

namespace kestrin::support {

/// Writes down every event as a line of text, and lets a test act inside a handler.
class RecordedAgentEvents final : public core::device::HidAgentEvents {
 public:
  std::vector<std::string> lines;
  std::function<void(std::int32_t)> onOpened;
  std::function<void(std::int32_t)> onClosed;
  std::function<void(const std::string&)> onArrival;

  void InterfaceOpened(std::int32_t handle, std::int32_t in, std::int32_t out, const std::string& path) override {
    lines.push_back("opened " + std::to_string(handle) + " " + std::to_string(in) + "/" + std::to_string(out) + " " +
                    path);
    if (onOpened) onOpened(handle);
  }
  void InterfaceClosed(std::int32_t handle, const std::string& path) override {
    lines.push_back("closed " + std::to_string(handle) + " " + path);
    if (onClosed) onClosed(handle);
  }
  void DeviceRemoved(std::int32_t handle, const std::string& path) override {
    lines.push_back("removed " + std::to_string(handle) + " " + path);
  }
  void DeviceArrival(const std::string& path) override {
    lines.push_back("arrival " + path);
    if (onArrival) onArrival(path);
  }
  void ReportArrived(std::int32_t handle, std::int32_t report) override {
    lines.push_back("report " + std::to_string(handle) + " " + std::to_string(report));
  }
  void ReportTimedOut(std::int32_t handle, std::int32_t report) override {
    lines.push_back("timeout " + std::to_string(handle) + " " + std::to_string(report));
  }
};

}  // namespace kestrin::support
