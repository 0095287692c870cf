// SPDX-License-Identifier: MIT
#include "rig/MockBoard.h"

#include <fcntl.h>
#include <linux/hidraw.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

namespace kestrin::rig {

namespace {

/// Room for as many waiting reports as the kernel keeps.
constexpr int kQueueBytes = 64 * 4096;
/// The longest report that the kernel takes.
constexpr std::size_t kMostReportBytes = 16384;

template <class... Arguments>
std::string Format(const char* format, Arguments... arguments) {
  std::array<char, 256> text{};
  std::snprintf(text.data(), text.size(), format, arguments...);
  return text.data();
}

void Check(bool done, GError* error, const char* what) {
  if (!done) throw std::runtime_error(std::string(what) + ": " + (error != nullptr ? error->message : "failed"));
}

void Fail(UMockdevIoctlClient* client, int error) { umockdev_ioctl_client_complete(client, -1, error); }

/// Completes a request by filling the caller's memory.
template <class Filler>
void Fill(UMockdevIoctlClient* client, std::size_t size, Filler filler) {
  const std::unique_ptr<UMockdevIoctlData, ObjectDeleter> data(
      umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, nullptr));
  filler(data->data);
  umockdev_ioctl_client_complete(client, 0, 0);
}

}  // namespace

MockBoard::MockBoard(MockHost& host) : MockBoard(host, Description{}) {}

MockBoard::MockBoard(MockHost& host, Description description)
    : m_host(host), m_description(std::move(description)), m_handler(umockdev_ioctl_base_new()) {
  g_signal_connect(m_handler.get(), "handle-ioctl", G_CALLBACK(&MockBoard::OnIoctl), this);
  g_signal_connect(m_handler.get(), "handle-write", G_CALLBACK(&MockBoard::OnWrite), this);
  g_signal_connect(m_handler.get(), "handle-read", G_CALLBACK(&MockBoard::OnRead), this);
  g_signal_connect(m_handler.get(), "client-connected", G_CALLBACK(&MockBoard::OnOpen), this);
  g_signal_connect(m_handler.get(), "client-vanished", G_CALLBACK(&MockBoard::OnClose), this);
}

MockBoard::~MockBoard() {
  if (m_plugged) Unplug();
}

void MockBoard::AnswerWith(simulator::VirtualBoard& board) {
  onReport = [&board](const Bytes& report) {
    board.Receive(report, {});
    std::vector<Bytes> answers;
    while (const auto answer = board.NextAnswer({})) answers.emplace_back(answer->begin(), answer->end());
    return answers;
  };
}

void MockBoard::Plug(int number) {
  m_number = number;
  m_gone = false;
  m_writes = 0;
  GError* error = nullptr;
  // First the handler, so that whoever reacts to the notice finds it.
  Check(umockdev_testbed_attach_ioctl(m_host.Testbed(), Node().c_str(), m_handler.get(), &error), error, "attach");
  Check(umockdev_testbed_add_from_string(m_host.Testbed(), Tree().c_str(), &error), error, "add");
  // The mock offers no waiting for a node of its own. A pipe in packet mode does, and keeps each report by itself;
  // opened by its real path, it is not redirected.
  const std::string node = RealNode();
  ::unlink(node.c_str());
  Check(::mkfifo(node.c_str(), 0600) == 0, nullptr, "mkfifo");
  m_queue = ::open(node.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  Check(m_queue >= 0 && ::fcntl(m_queue, F_SETFL, O_RDWR | O_NONBLOCK | O_DIRECT) == 0, nullptr, "packet mode");
  Check(::fcntl(m_queue, F_SETPIPE_SZ, kQueueBytes) >= 0, nullptr, "queue size");
  umockdev_testbed_uevent(m_host.Testbed(), (HidPath() + Format("/hidraw/hidraw%d", number)).c_str(), "add");
  m_plugged = true;
}

void MockBoard::MakeGone() {
  m_gone = true;
  const char wake = 0;  // Whoever waits looks again, and finds an error.
  static_cast<void>(::write(m_queue, &wake, 1) == 1);
}

void MockBoard::Unplug() {
  MakeGone();
  // The kernel's order: node and links vanish, then the notice goes out, then the rest of the tree. The mock removes
  // links of the topmost device only.
  const std::string name = Format("hidraw%d", m_number);
  const std::string hidName = HidPath().substr(HidPath().rfind('/') + 1);
  for (const std::string& path :
       {Node(), "/dev/.node/" + name, "/sys/class/hidraw/" + name, Format("/sys/dev/char/240:%d", m_number),
        "/sys/bus/hid/devices/" + hidName, Format("/sys/bus/usb/devices/1-%d:1.0", m_description.port)}) {
    ::unlink(m_host.RealPath(path).c_str());
  }
  umockdev_testbed_uevent(m_host.Testbed(), (HidPath() + "/hidraw/" + name).c_str(), "remove");
  umockdev_testbed_remove_device(m_host.Testbed(), DevicePath().c_str());
  umockdev_testbed_detach_ioctl(m_host.Testbed(), Node().c_str(), nullptr);
  ::close(m_queue);
  m_queue = -1;
  m_plugged = false;
}

void MockBoard::Send(const Bytes& report) {
  Check(::write(m_queue, report.data(), report.size()) == static_cast<ssize_t>(report.size()), nullptr, "send");
}

void MockBoard::WaitUntilAWriteIsHeld() {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_held != nullptr; });
}

bool MockBoard::IsAWriteHeld() {
  const std::lock_guard lock(m_mutex);
  return m_held != nullptr;
}

void MockBoard::EndHeldWrite(int error) {
  heldWrite = 0;
  const std::lock_guard lock(m_mutex);
  Fail(m_held.get(), error);
  m_held.reset();
}

void MockBoard::WaitUntilItIsFree() const {
  struct flock whole {};
  whole.l_type = F_WRLCK;
  const int file = ::open(RealNode().c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  Check(file >= 0 && ::fcntl(file, F_OFD_SETLKW, &whole) == 0, nullptr, "wait for the claim");
  ::close(file);
}

std::string MockBoard::DevicePath() const {
  if (m_description.virtualBus) return HidPath();
  return Format("/sys/devices/pci0000:00/0000:00:14.0/usb1/1-%d", m_description.port);
}

std::string MockBoard::HidPath() const {
  const std::string name =
      Format("0003:%04X:%04X.%04X", m_description.vendorId, m_description.productId, m_description.port);
  if (m_description.virtualBus) return "/sys/devices/virtual/misc/uhid/" + name;
  return DevicePath() + Format("/1-%d:1.0/", m_description.port) + name;
}

std::string MockBoard::Tree() const {
  const Description& d = m_description;
  std::string hex;
  for (const std::uint8_t byte : d.descriptor) hex += Format("%02X", byte);
  const std::string hid = HidPath().substr(4);
  const std::string hidName = hid.substr(hid.rfind('/') + 1);
  std::string tree;
  if (!d.virtualBus) {
    const std::string usb = DevicePath().substr(4);
    const std::string bus = Format("bus/usb/001/%03d", d.port + 1);
    tree += "P: " + usb + "\nN: " + bus + "=00\nE: BUSNUM=001\n" + Format("E: DEVNUM=%03d\n", d.port + 1) +
            "E: DEVNAME=/dev/" + bus + "\nE: DEVTYPE=usb_device\nE: MAJOR=189\n" + Format("E: MINOR=%d\n", d.port) +
            Format("E: PRODUCT=%x/%x/100\n", d.vendorId, d.productId) + "E: SUBSYSTEM=usb\n" +
            Format("A: idVendor=%04x\\n\nA: idProduct=%04x\\n\n", d.vendorId, d.productId) +
            "A: bcdDevice=0100\\n\nA: manufacturer=Kestrin\\n\nA: product=Kestrin Bl\xC3\xA5tt\\n\n" +
            Format("A: serial=SN%04d\\n\nA: dev=189:%d\\n\n\n", d.port, d.port);
    tree += "P: " + usb + Format("/1-%d:1.0", d.port) +
            "\nE: DEVTYPE=usb_interface\nE: SUBSYSTEM=usb\nE: INTERFACE=3/0/0\n"
            "A: bInterfaceClass=03\\n\nA: bInterfaceNumber=00\\n\n\n";
  }
  tree += "P: " + hid + "\nE: DRIVER=hid-generic\n" +
          Format("E: HID_ID=0003:0000%04X:0000%04X\n", d.vendorId, d.productId) + "E: HID_NAME=Kestrin Board\n" +
          "E: HID_PHYS=mock/input0\n" + Format("E: HID_UNIQ=SN%04d\n", d.port) +
          Format("E: MODALIAS=hid:b0003g0001v0000%04Xp0000%04X\n", d.vendorId, d.productId) +
          "E: SUBSYSTEM=hid\nA: country=00\\n\nH: report_descriptor=" + hex + "\n\n";
  tree += "P: " + hid +
          Format("/hidraw/hidraw%d\nN: hidraw%d=00\nE: DEVNAME=/dev/hidraw%d\n", m_number, m_number, m_number) +
          Format("E: MAJOR=240\nE: MINOR=%d\nE: SUBSYSTEM=hidraw\nA: dev=240:%d\\n\n", m_number, m_number) +
          "L: device=../../../" + hidName + "\n";
  return tree;
}

// --- Called in the mock's thread ---

void MockBoard::OnOpen(UMockdevIoctlBase*, UMockdevIoctlClient*, MockBoard* board) {
  // Each opening of a HID device begins with an empty queue. There is one for all, so that whoever comes while another
  // has it open must leave the other's answers alone.
  if (++board->m_clients > 1) return;
  std::array<char, 4096> late{};
  while (::read(board->m_queue, late.data(), late.size()) > 0) {
  }
}

void MockBoard::OnClose(UMockdevIoctlBase*, UMockdevIoctlClient*, MockBoard* board) { --board->m_clients; }

gboolean MockBoard::OnIoctl(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board) {
  const Bytes& descriptor = board->m_description.descriptor;
  const auto request = static_cast<unsigned long>(umockdev_ioctl_client_get_request(client));
  if (board->m_gone) {
    Fail(client, ENODEV);
  } else if (request == HIDIOCGRDESCSIZE) {
    const auto size = static_cast<int>(descriptor.size());
    Fill(client, sizeof size, [&](std::uint8_t* to) { std::memcpy(to, &size, sizeof size); });
  } else if (request == HIDIOCGRDESC) {
    Fill(client, sizeof(hidraw_report_descriptor), [&](std::uint8_t* to) {
      auto* const out = reinterpret_cast<hidraw_report_descriptor*>(to);
      std::memcpy(out->value, descriptor.data(), std::min<std::size_t>(out->size, descriptor.size()));
    });
  } else {
    Fail(client, EINVAL);
  }
  return TRUE;
}

gboolean MockBoard::OnWrite(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board) {
  const UMockdevIoctlData* const data = umockdev_ioctl_client_get_arg(client);
  const auto length = static_cast<std::size_t>(data->data_len);
  const int number = ++board->m_writes;
  if (board->goneAtWrite != 0 && number >= board->goneAtWrite) board->MakeGone();
  if (board->m_gone) {
    Fail(client, ENODEV);
  } else if (board->heldWrite != 0 && number >= board->heldWrite) {
    const std::lock_guard lock(board->m_mutex);
    board->m_held.reset(static_cast<UMockdevIoctlClient*>(g_object_ref(client)));
    board->m_changed.notify_all();
  } else if (const int error = board->writeError) {
    Fail(client, error);
  } else if (length < 2 || length > kMostReportBytes) {
    Fail(client, EINVAL);
  } else {
    const Bytes report(data->data, data->data + length);
    if (board->onReport) {
      for (const Bytes& answer : board->onReport(report)) board->Send(answer);
    }
    umockdev_ioctl_client_complete(client, static_cast<glong>(length), 0);
  }
  return TRUE;
}

gboolean MockBoard::OnRead(UMockdevIoctlBase*, UMockdevIoctlClient* client, MockBoard* board) {
  if (!board->m_gone) return FALSE;  // The pipe itself is read.
  Fail(client, EIO);
  return TRUE;
}

}  // namespace kestrin::rig
