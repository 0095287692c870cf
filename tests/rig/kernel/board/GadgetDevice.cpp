// SPDX-License-Identifier: MIT
#include "rig/kernel/board/GadgetDevice.h"

#include <endian.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>
#include <utility>

#include "rig/kernel/board/Descriptors.h"
#include "rig/kernel/board/Log.h"
#include "rig/kernel/board/UsbDescriptors.h"

namespace kestrin::rig {

namespace {

/// Requests of the HID class, and the report descriptor's type in the upper half of a request's value.
constexpr std::uint8_t kSetReport = 0x09;
constexpr std::uint8_t kSetIdle = 0x0A;
constexpr unsigned kReportDescriptor = 0x22;
/// To and from the interface.
constexpr std::uint8_t kStandardIn = USB_DIR_IN | USB_RECIP_INTERFACE;
constexpr std::uint8_t kClassOut = USB_TYPE_CLASS | USB_RECIP_INTERFACE;

/// More than the longest report.
using Buffer = std::array<std::uint8_t, 8192>;

void LogError(const std::string& what) { Log(what + ": " + std::strerror(errno)); }

bool WriteAll(int file, const std::vector<std::uint8_t>& bytes) {
  return ::write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
}

sigset_t Signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGUSR1, SIGUSR2, SIGHUP, SIGTERM}) sigaddset(&signals, number);
  return signals;
}

}  // namespace

GadgetDevice::GadgetDevice(ServedBoard board, Place place)
    : m_board(std::move(board)), m_place(std::move(place)), m_descriptor(ReportDescriptor(m_board.Plan().kind)) {}

int GadgetDevice::OpenEndpoint(const char* name) const {
  return ::open((m_place.functions / name).c_str(), O_RDWR | O_CLOEXEC);
}

int GadgetDevice::Serve() {
  // Before there are threads: they all leave the signals to one of them.
  const sigset_t signals = Signals();
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  const bool out = m_board.Plan().outEndpoint;
  m_control = OpenEndpoint("ep0");
  if (m_control < 0 || !WriteAll(m_control, FunctionDescriptors(out, m_descriptor.size())) ||
      !WriteAll(m_control, FunctionStrings())) {
    LogError("FunctionFS does not take the descriptors");
    return 1;
  }
  std::thread([this] { ObeySignals(); }).detach();
  std::thread([this] { SendAnswers(); }).detach();
  if (out) std::thread([this] { TakeReports(); }).detach();
  Log("READY");
  for (;;) {
    usb_functionfs_event event{};
    if (::read(m_control, &event, sizeof event) == sizeof event) {
      Handle(event);
    } else if (errno != EINTR && errno != EAGAIN) {
      LogError("FunctionFS tells no more");
      return 1;
    }
  }
}

// Unbinding waits for the thread that serves the control endpoint, so it must be another one that does it.
void GadgetDevice::ObeySignals() {
  const sigset_t signals = Signals();
  for (;;) {
    int signal = 0;
    sigwait(&signals, &signal);
    if (signal == SIGUSR2) {
      Bind(m_place.controller);
    } else if (signal == SIGHUP) {
      const std::lock_guard lock(m_mutex);
      m_board.LetGo();
      m_news.notify_all();
    } else {
      Bind("\n");
      if (signal == SIGTERM) ::_exit(0);
    }
  }
}

void GadgetDevice::Bind(const std::string& controller) const {
  const int file = ::open(m_place.binding.c_str(), O_WRONLY | O_CLOEXEC);
  // What is not bound cannot be unbound; the kernel says so, and nothing is lost.
  if (::write(file, controller.data(), controller.size()) < 0 && errno != ENODEV) LogError("binding");
  ::close(file);
}

void GadgetDevice::Handle(const usb_functionfs_event& event) {
  switch (event.type) {
    case FUNCTIONFS_SETUP:
      HandleRequest(event.u.setup);
      break;
    case FUNCTIONFS_ENABLE: {
      const std::lock_guard lock(m_mutex);
      m_plugged = true;
      m_board.Plugged();
      Log("PLUGGED");
      break;
    }
    case FUNCTIONFS_DISABLE:
    case FUNCTIONFS_UNBIND: {
      const std::lock_guard lock(m_mutex);
      if (std::exchange(m_plugged, false)) m_board.Unplugged();
      break;
    }
    default:
      break;
  }
}

void GadgetDevice::HandleRequest(const usb_ctrlrequest& request) {
  const unsigned value = le16toh(request.wValue);
  const std::size_t length = le16toh(request.wLength);
  Buffer buffer;
  if (request.bRequestType == kStandardIn && request.bRequest == USB_REQ_GET_DESCRIPTOR &&
      value >> 8 == kReportDescriptor) {
    if (::write(m_control, m_descriptor.data(), std::min(length, m_descriptor.size())) < 0) LogError("descriptor");
  } else if (request.bRequestType == kClassOut && request.bRequest == kSetIdle) {
    if (::read(m_control, buffer.data(), 0) < 0) LogError("SET_IDLE");
  } else if (request.bRequestType == kClassOut && request.bRequest == kSetReport) {
    const ssize_t size = ::read(m_control, buffer.data(), std::min(length, buffer.size()));
    if (size > 0) Take({buffer.data(), static_cast<std::size_t>(size)}, "SET_REPORT");
  } else if ((request.bRequestType & USB_DIR_IN) != 0) {
    // Moving in the wrong direction is how FunctionFS is told to refuse.
    if (::read(m_control, buffer.data(), 0) < 0 && errno != EL2HLT) LogError("refusing");
  } else if (::write(m_control, buffer.data(), 0) < 0 && errno != EL2HLT) {
    LogError("refusing");
  }
}

void GadgetDevice::Take(std::span<const std::uint8_t> report, const std::string& way) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_board.Take(report, way) == ServedBoard::Fate::Unplug) ::kill(::getpid(), SIGUSR1);
  }
  m_news.notify_all();
}

void GadgetDevice::SendAnswers() {
  const int endpoint = OpenEndpoint("ep1");
  for (;;) {
    std::vector<std::uint8_t> answer;
    {
      std::unique_lock lock(m_mutex);
      for (;;) {
        if (auto next = m_board.NextAnswer()) {
          answer = *std::move(next);
          break;
        }
        if (const auto busy = m_board.Busy())
          m_news.wait_for(lock, *busy);
        else
          m_news.wait(lock);
      }
    }
    // Waits until the host asks for it; the host asks while a program has the node open. Lost with the cable.
    if (!WriteAll(endpoint, answer)) LogError("an answer is lost");
  }
}

void GadgetDevice::TakeReports() {
  const int endpoint = OpenEndpoint("ep2");
  Buffer buffer;
  for (;;) {
    const ssize_t size = ::read(endpoint, buffer.data(), buffer.size());
    if (size > 0) {
      Take({buffer.data(), static_cast<std::size_t>(size)}, "OUT endpoint");
    } else {
      // Between pulling out and plugging in there is nothing to wait for; the next read waits by itself.
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
  }
}

}  // namespace kestrin::rig
