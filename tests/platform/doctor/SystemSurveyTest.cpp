// SPDX-License-Identifier: MIT
#include "platform/doctor/SystemSurvey.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <map>

#include "support/BoardDescriptors.h"
#include "support/TestFiles.h"

namespace kestrin::platform::doctor {
namespace {

namespace fs = std::filesystem;
using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
using core::doctor::Access;
using core::doctor::LinkFacts;
using core::doctor::RuleState;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// A made-up /sys, /proc, /dev and /etc: one board on USB as hidraw3, and this program as process 100.
class SystemSurveyTest : public testing::Test {
 protected:
  static constexpr const char* kUsb = "sys/devices/pci0000:00/usb1/1-2";

  SystemSurveyTest() {
    AddBoard("1-2", 3);
    Write("proc/100/comm", "kestrinctl\n");
    fs::create_directory_symlink("100", root / "proc/self");
  }

  void Write(const fs::path& file, std::string_view content) {
    fs::create_directories((root / file).parent_path());
    support::WriteBytes(root / file, content);
  }
  /// A device on the bus.
  void AddUsb(const std::string& place) {
    const fs::path usb = fs::path("sys/devices/pci0000:00/usb1") / place;
    Write(usb / "idVendor", "04d8\n");
    Write(usb / "idProduct", "fa37\n");
    Write(usb / "manufacturer", "Corvent\n");
    Write(usb / "product", "Kestrin USB2\n");
    Write(usb / "serial", "KU-77123\n");
    Write(usb / "power/connected_duration", "190999\n");
    fs::create_directories(root / "sys/bus/usb/devices");
    fs::create_directory_symlink(root / usb, root / "sys/bus/usb/devices" / place);
  }
  void AddBoard(const std::string& place, int number) {
    AddUsb(place);
    const std::string name = "hidraw" + std::to_string(number);
    const fs::path hid =
        fs::path("sys/devices/pci0000:00/usb1") / place / (place + ":1.0") / ("0003:04D8:FA37.000" + place.substr(2));
    Write(hid / "uevent", "HID_ID=0003:000004D8:0000FA37\n");
    const std::vector<std::uint8_t> descriptor = support::BoardDescriptor();
    Write(hid / "report_descriptor", std::string(descriptor.begin(), descriptor.end()));
    fs::create_directories(root / hid / "hidraw" / name);
    fs::create_directory_symlink(root / hid, root / hid / "hidraw" / name / "device");
    fs::create_directories(root / "sys/class/hidraw");
    fs::create_directory_symlink(root / hid / "hidraw" / name, root / "sys/class/hidraw" / name);
    Write("dev/" + name, "");
  }
  /// A process that has a file open.
  void AddUser(const std::string& id, const std::string& name, const fs::path& file) {
    if (!name.empty()) Write("proc/" + id + "/comm", name + "\n");
    fs::create_directories(root / "proc" / id / "fd");
    fs::create_symlink(file, root / "proc" / id / "fd/7");
  }
  [[nodiscard]] fs::path Node(int number = 3) { return root / ("dev/hidraw" + std::to_string(number)); }
  [[nodiscard]] LinkFacts Look() {
    SystemSurvey survey({root.Path(), [this](const std::string& path) -> Result<> {
                           ++opened[path];
                           if (whileOpening) whileOpening();
                           return failures.contains(path) ? Result<>(failures.at(path)) : Result<>();
                         }});
    return survey.Look();
  }

  support::TemporaryFolder root;
  std::map<std::string, Failure> failures;
  std::map<std::string, int> opened;
  std::function<void()> whileOpening;
};

TEST_F(SystemSurveyTest, SeesABoardOnTheBusAndItsInterface) {
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.bus, SizeIs(1));
  EXPECT_EQ(facts.bus[0].place, "1-2");
  EXPECT_EQ(facts.bus[0].manufacturer, "Corvent");
  EXPECT_EQ(facts.bus[0].product, "Kestrin USB2");
  EXPECT_EQ(facts.bus[0].serialNumber, "KU-77123");
  EXPECT_TRUE(facts.bus[0].hasHid);
  EXPECT_EQ(facts.bus[0].pluggedFor, std::chrono::seconds(190));
  ASSERT_THAT(facts.nodes, SizeIs(1));
  EXPECT_EQ(facts.nodes[0].path, "/dev/hidraw3");
  EXPECT_EQ(facts.nodes[0].product, "Kestrin USB2");
  EXPECT_EQ(facts.nodes[0].access, Access::Open);
  EXPECT_EQ(facts.nodes[0].user, "");
  EXPECT_FALSE(facts.nodes[0].isOurs);
  EXPECT_TRUE(facts.nodes[0].hasVariables);
  EXPECT_THAT(facts.nodes[0].descriptor, ElementsAreArray(support::BoardDescriptor()));
  EXPECT_FALSE(facts.isSimulated);
}

// --- The bus ---

TEST_F(SystemSurveyTest, SeesADeviceWithoutHidInterface) {
  AddUsb("1-1");
  Write("sys/devices/pci0000:00/usb1/1-1/1-1:1.0/bInterfaceClass", "ff\n");
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.bus, SizeIs(2));
  EXPECT_EQ(facts.bus[0].place, "1-1") << "by their places";
  EXPECT_FALSE(facts.bus[0].hasHid);
  EXPECT_TRUE(facts.bus[1].hasHid);
  EXPECT_THAT(facts.nodes, SizeIs(1));
}

TEST_F(SystemSurveyTest, LeavesOutOtherDevices) {
  AddUsb("1-3");
  for (const char* product : {"fa38", "", "fa37 ", "fa37x", "64055"}) {
    Write("sys/devices/pci0000:00/usb1/1-3/idProduct", std::string(product) + "\n");
    EXPECT_THAT(Look().bus, SizeIs(1)) << product;
  }
  Write("sys/devices/pci0000:00/usb1/1-3/idProduct", "FA37\n");
  EXPECT_THAT(Look().bus, SizeIs(2));
}

TEST_F(SystemSurveyTest, SaysNothingOfATimeThatTheSystemDoesNotTell) {
  for (const char* text : {"", "-5\n", "soon\n"}) {
    Write(std::string(kUsb) + "/power/connected_duration", text);
    EXPECT_FALSE(Look().bus[0].pluggedFor) << text;
  }
  fs::remove_all(root / kUsb / "power");
  EXPECT_FALSE(Look().bus[0].pluggedFor);
}

TEST_F(SystemSurveyTest, WithoutAnythingThereIsNothing) {
  fs::remove_all(root / "sys");
  fs::remove_all(root / "proc");
  const LinkFacts facts = Look();
  EXPECT_THAT(facts.bus, IsEmpty());
  EXPECT_THAT(facts.nodes, IsEmpty());
}

TEST_F(SystemSurveyTest, AnyFileMayHaveGone) {
  for (const char* file : {"manufacturer", "product", "serial"}) fs::remove(root / kUsb / file);
  fs::remove(root / kUsb / "1-2:1.0/0003:04D8:FA37.0002/report_descriptor");
  fs::remove(Node());
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.bus, SizeIs(1));
  EXPECT_EQ(facts.bus[0].manufacturer, "");
  ASSERT_THAT(facts.nodes, SizeIs(1));
  EXPECT_THAT(facts.nodes[0].descriptor, IsEmpty());
  EXPECT_FALSE(facts.nodes[0].hasVariables);
  EXPECT_EQ(facts.nodes[0].permissions, "");
}

// --- Interfaces ---

TEST_F(SystemSurveyTest, NamesInterfacesInTheOrderInWhichASessionOpensThem) {
  AddBoard("1-5", 10);
  AddBoard("1-4", 9);
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.nodes, SizeIs(3));
  EXPECT_EQ(facts.nodes[0].path, "/dev/hidraw3");
  EXPECT_EQ(facts.nodes[1].path, "/dev/hidraw9");
  EXPECT_EQ(facts.nodes[2].path, "/dev/hidraw10");
}

TEST_F(SystemSurveyTest, TellsOtherReportsFromABoards) {
  const fs::path descriptor = fs::path(kUsb) / "1-2:1.0/0003:04D8:FA37.0002/report_descriptor";
  const std::vector<std::uint8_t> whole = support::NumberedBoardDescriptor();
  Write(descriptor, std::string(whole.begin(), whole.end()));
  EXPECT_TRUE(Look().nodes[0].hasVariables);
  // The response has usage 3; there is no response; it is cut.
  std::vector<std::uint8_t> bytes = support::BoardDescriptor();
  bytes[22] = 3;
  Write(descriptor, std::string(bytes.begin(), bytes.end()));
  EXPECT_FALSE(Look().nodes[0].hasVariables);
  bytes = support::BoardDescriptor();
  bytes.erase(bytes.begin() + 21, bytes.end() - 1);
  Write(descriptor, std::string(bytes.begin(), bytes.end()));
  EXPECT_FALSE(Look().nodes[0].hasVariables);
  Write(descriptor, std::string(bytes.begin(), bytes.begin() + 2));
  EXPECT_FALSE(Look().nodes[0].hasVariables);
  EXPECT_THAT(Look().nodes[0].descriptor, SizeIs(2));
}

TEST_F(SystemSurveyTest, SaysWhyAnInterfaceCannotBeOpened) {
  struct {
    FailureKind kind;
    Access access;
  } const rows[] = {{FailureKind::NotPermitted, Access::NotPermitted},
                    {FailureKind::InUse, Access::InUse},
                    {FailureKind::Failed, Access::Failed}};
  for (const auto& row : rows) {
    failures["/dev/hidraw3"] = {row.kind, "the system's words"};
    const LinkFacts facts = Look();
    EXPECT_EQ(facts.nodes[0].access, row.access);
    EXPECT_EQ(facts.nodes[0].why, "the system's words");
  }
}

TEST_F(SystemSurveyTest, LeavesOutAnInterfaceThatIsGoneWhenItIsOpened) {
  AddBoard("1-4", 9);
  failures["/dev/hidraw3"] = {FailureKind::NotFound, ""};
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.nodes, SizeIs(1));
  EXPECT_EQ(facts.nodes[0].path, "/dev/hidraw9");
}

TEST_F(SystemSurveyTest, OutlivesAComputerThatVanishesWhileItLooks) {
  whileOpening = [this] {
    fs::remove_all(root / "sys");
    fs::remove_all(root / "proc");
    fs::remove_all(root / "dev");
  };
  const LinkFacts facts = Look();
  ASSERT_THAT(facts.nodes, SizeIs(1));
  EXPECT_THAT(facts.nodes[0].descriptor, IsEmpty());
}

TEST_F(SystemSurveyTest, NamesPermissionsAsListsOfFilesDo) {
  ASSERT_EQ(::chmod(Node().c_str(), 0640), 0);
  EXPECT_THAT(Look().nodes[0].permissions, testing::StartsWith("-rw-r----- "));
  ASSERT_EQ(::chmod(Node().c_str(), 0007), 0);
  EXPECT_THAT(Look().nodes[0].permissions, testing::StartsWith("-------rwx "));
  if (::geteuid() == 0) {
    ASSERT_EQ(::chown(Node().c_str(), 0, 54321), 0);
    EXPECT_THAT(Look().nodes[0].permissions, testing::EndsWith(" root 54321"));
  }
}

// --- Who uses it ---

TEST_F(SystemSurveyTest, NamesTheProgramsThatHaveIt) {
  AddUser("4711", "kestrin", Node());
  AddUser("815", "spy", Node());
  AddUser("900", "editor", root / "elsewhere");
  failures["/dev/hidraw3"] = {FailureKind::InUse, ""};
  EXPECT_EQ(Look().nodes[0].user, "spy (815), kestrin (4711)");
}

TEST_F(SystemSurveyTest, NamesNoWriterWhichEndsWithItsProgram) {
  AddUser("4711", "kestrin", Node());
  AddUser("4713", "kestrin-writer", Node());
  EXPECT_EQ(Look().nodes[0].user, "kestrin (4711)");
}

TEST_F(SystemSurveyTest, KnowsThisProgramAndDoesNotOpenWhatItHas) {
  AddUser("100", "", Node());
  failures["/dev/hidraw3"] = {FailureKind::InUse, ""};
  const LinkFacts facts = Look();
  EXPECT_TRUE(facts.nodes[0].isOurs);
  EXPECT_EQ(facts.nodes[0].user, "") << "never the program itself";
  EXPECT_EQ(facts.nodes[0].access, Access::Open);
  EXPECT_THAT(opened, IsEmpty());
}

TEST_F(SystemSurveyTest, LooksAtWhatIsOpenAndNotAtItsName) {
  fs::create_hard_link(Node(), root / "dev/another-name");
  AddUser("815", "spy", root / "dev/another-name");
  EXPECT_EQ(Look().nodes[0].user, "spy (815)");
  fs::create_directories(root / "other/dev");
  support::WriteBytes(root / "other/dev/hidraw3", "");
  fs::remove(root / "proc/815/fd/7");
  fs::create_symlink(root / "other/dev/hidraw3", root / "proc/815/fd/7");
  EXPECT_EQ(Look().nodes[0].user, "");
}

TEST_F(SystemSurveyTest, BelievesNoLiesOfProcesses) {
  AddUser("1", std::string("\x1B[31m a\nkestrin (1"), Node());
  AddUser("2", std::string(60, 'x'), Node());
  AddUser("3", "", Node());
  AddUser("4x", "no process", Node());
  AddUser("99999999999999999999", "no process", Node());
  Write("proc/5", "a file");
  Write("proc/6/fd", "a file");
  fs::create_directories(root / "proc/7/fd");
  fs::create_symlink("/nowhere", root / "proc/7/fd/1");
  fs::create_symlink(root / "proc/8", root / "proc/8");
  const std::string users = Look().nodes[0].user;
  EXPECT_EQ(users, "?[31m a?kestrin (1 (1), " + std::string(40, 'x') + " (2), a program (3)");
}

TEST_F(SystemSurveyTest, WithoutSelfNobodyIsThisProgram) {
  fs::remove(root / "proc/self");
  AddUser("100", "", Node());
  const LinkFacts facts = Look();
  EXPECT_FALSE(facts.nodes[0].isOurs);
  EXPECT_EQ(facts.nodes[0].user, "kestrinctl (100)");
}

// --- The system ---

TEST_F(SystemSurveyTest, NamesSystemAndLibraryButNotTheComputer) {
  Write("etc/os-release", "NAME=x\nPRETTY_NAME=\"Some Linux 7\"\n");
  std::vector<std::string> lines = Look().system;
  EXPECT_THAT(lines, Contains("Some Linux 7"));
  EXPECT_THAT(lines, Contains(HasSubstr("hidapi ")));
  EXPECT_THAT(lines, Contains("udev is not running"));
  utsname names{};
  ASSERT_EQ(::uname(&names), 0);
  EXPECT_THAT(lines, Contains("Linux " + std::string(names.release) + " " + names.version + " " + names.machine));
  fs::remove_all(root / "etc");
  Write("usr/lib/os-release", "PRETTY_NAME=Other\x1B\n");
  Write("run/udev/control", "");
  lines = Look().system;
  EXPECT_THAT(lines, Contains("Other?"));
  EXPECT_THAT(lines, Contains("udev is running"));
}

TEST_F(SystemSurveyTest, TellsHowItStandsWithTheRule) {
  EXPECT_EQ(Look().rule, RuleState::NotNeeded);
  fs::create_directories(root / "etc/udev/rules.d");
  EXPECT_EQ(Look().rule, RuleState::Missing);
  fs::copy_file(KESTRIN_RULE_FILE, root / "etc/udev/rules.d/70-kestrin.rules");
  EXPECT_EQ(Look().rule, RuleState::Installed);
  EXPECT_EQ(Look().rulePath, "/etc/udev/rules.d/70-kestrin.rules");
}

}  // namespace
}  // namespace kestrin::platform::doctor
