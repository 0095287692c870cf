// SPDX-License-Identifier: MIT
#include "platform/hid/HidAgent.h"

#include <utility>

#include "platform/hid/BoardList.h"
#include "platform/hid/HidapiStack.h"
#include "platform/hid/StackAgent.h"
#ifdef KESTRIN_HAVE_UDEV
#include "platform/hid/UdevMonitor.h"
#endif
#ifdef _WIN32
#include "platform/hid/WindowsMonitor.h"
#endif
#include "platform/hid/PollingMonitor.h"

namespace kestrin::platform::hid {

namespace {

std::unique_ptr<DeviceMonitor> MakeMonitor([[maybe_unused]] HidStack& stack,
                                           [[maybe_unused]] const core::base::Clock& clock) {
#ifdef KESTRIN_HAVE_UDEV
  auto monitor = std::make_unique<UdevMonitor>(UdevMonitor::PreferredSource());
  if (monitor->IsListening()) return monitor;
#elif defined(_WIN32)
  auto monitor = std::make_unique<WindowsMonitor>(stack, clock);
  if (monitor->IsListening()) return monitor;
#endif
  return std::make_unique<PollingMonitor>(stack, clock);
}

}  // namespace

std::unique_ptr<core::device::THIDagent> CreateHidAgent(const core::base::Clock& clock, HidAgentOptions options) {
  auto stack = std::make_unique<HidapiStack>();
  // The agent owns both the stack and what this makes, and lets go of the monitor first.
  auto makeMonitor = [&used = *stack, &clock] { return MakeMonitor(used, clock); };
  return std::make_unique<StackAgent>(std::move(stack), std::move(makeMonitor), clock, std::move(options.pump),
                                      std::move(options.onlyPath));
}

std::vector<BoardListing> ListBoards() {
  HidapiStack stack;
  return ListBoards(stack);
}

}  // namespace kestrin::platform::hid
