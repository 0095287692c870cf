// SPDX-License-Identifier: MIT
#include <tuple>

#include "support/KestrinctlTest.h"

namespace kestrin::support {
namespace {

using UsageTest = KestrinctlTest;

TEST_F(UsageTest, TheVersionNamesTheProgram) {
  const Finished finished = Run({"--version"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.out, "kestrinctl 2.2.2\n");
  EXPECT_EQ(finished.errors, "");
}

TEST_F(UsageTest, TheHelpListsEveryCommand) {
  const Finished finished = Run({"--help"});
  EXPECT_EQ(finished.code, 0);
  EXPECT_EQ(finished.errors, "");
  for (const char* command :
       {"devices", "info", "doctor", "sound", "config", "download", "verify", "accel", "led", "saber", "fonts"})
    EXPECT_NE(finished.out.find(std::string("\n  ") + command + " "), std::string::npos) << command;
}

TEST_F(UsageTest, EveryCommandHasItsOwnHelp) {
  const std::vector<Arguments> commands{
      {"devices"},        {"info"},           {"sound", "info"},     {"sound", "code"},    {"sound", "wav"},
      {"config", "make"}, {"config", "show"}, {"config", "map"},     {"download"},         {"verify"},
      {"accel", "get"},   {"accel", "set"},   {"accel", "defaults"}, {"accel", "restore"}, {"led", "types"},
      {"led", "status"},  {"led", "counts"},  {"led", "config"},     {"led", "preview"},   {"led", "settings"},
      {"led", "send"},    {"saber", "play"},  {"saber", "render"},   {"fonts", "update"},  {"fonts", "list"},
      {"fonts", "serve"}, {"doctor"}};
  for (Arguments command : commands) {
    std::string name = "kestrinctl";
    for (const std::string& word : command) name += " " + word;
    command.push_back("--help");
    const Finished finished = Run(command);
    EXPECT_EQ(finished.code, 0) << name;
    EXPECT_NE(finished.out.find("Usage: " + name), std::string::npos) << name;
  }
}

TEST_F(UsageTest, WrongUsageEndsWithTwo) {
  const std::vector<Arguments> wrong{
      {},
      {"nonsense"},
      {"doctor", "--yes"},
      {"doctor", "--with-serial"},
      {"doctor", "--install-rule", "--remove-rule"},
      {"doctor", "--install-rule", "--report", "report.txt"},
      {"doctor", "--report"},
      {"sound"},
      {"sound", "info"},
      {"sound", "code", "a.lsu"},
      {"sound", "code", "--output", "a.bin"},
      {"sound", "wav", "a.lsu"},
      {"sound", "info", "a.lsu", "--volume", "-1"},
      {"sound", "info", "a.lsu", "--volume", "32768"},
      {"sound", "info", "a.lsu", "--volume", "loud"},
      {"config"},
      {"config", "make"},
      {"config", "show"},
      {"config", "show", "a", "b"},
      {"download"},
      {"verify"},
      {"accel"},
      {"--board", "sim", "accel", "set"},
      {"--board", "sim", "accel", "set", "--MotionTh"},
      {"info", "--unknown"},
      {"--board", "usb", "info"},
      {"--board", "", "info"},
      {"--board", "hid:", "info"},
      {"--board", "sim:speed=3", "info"},
      {"--board", "sim:id=x", "info"},
      {"--board", "sim:fault=write:0", "info"},
      {"--board", "usb", "devices"},
  };
  for (const Arguments& arguments : wrong) {
    std::string line;
    for (const std::string& argument : arguments) line += " \"" + argument + "\"";
    const Finished finished = Run(arguments);
    EXPECT_EQ(finished.code, 2) << line;
    EXPECT_EQ(finished.out, "") << line;
    EXPECT_EQ(finished.errors.rfind("kestrinctl: ", 0), 0U) << line << ": " << finished.errors;
  }
}

TEST_F(UsageTest, WithJsonWrongUsageIsADocumentToo) {
  const Json document = RunJson(2, {"sound"});
  EXPECT_EQ(Keys(document), std::vector<std::string>{"error"});
  EXPECT_NE(document["error"], "");
}

TEST_F(UsageTest, GlobalOptionsStandBeforeTheCommandOrBehindIt) {
  const std::string folder = m_folder.Path().string();
  for (const Arguments& arguments :
       {Arguments{"--json", "--quiet", "--board", "sim:id=64", "--program-folder", folder, "info"},
        Arguments{"info", "--json", "--quiet", "--board", "sim:id=64", "--program-folder", folder}}) {
    const Finished finished = Run(arguments);
    EXPECT_EQ(finished.code, 0) << finished.errors;
    EXPECT_EQ(Json::parse(finished.out)["id"], 64);
  }
  const Finished inGroup = Run({"accel", "get", "--board", "sim", "--json"});
  EXPECT_EQ(inGroup.code, 0) << inGroup.errors;
  EXPECT_EQ(Json::parse(inGroup.out)["MotionTh"], 180);
}

TEST_F(UsageTest, AFileMayBeCalledLikeACommand) {
  WriteBytes(m_folder / "info", "nothing");
  const Finished finished = Start({"config", "show", "info", "--json"})->Wait();
  EXPECT_EQ(finished.code, 1);
  EXPECT_NE(finished.errors.find("Not a valid configuration file"), std::string::npos) << finished.errors;
}

TEST_F(UsageTest, PathsThatAreNoUtf8StillGiveADocument) {
  const Json document = RunJson(1, {"sound", "info", "no\xFFsuch.lsu"});
  EXPECT_EQ(document["files"][0]["path"], "no\xEF\xBF\xBDsuch.lsu");
}

}  // namespace
}  // namespace kestrin::support
