// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "core/base/PathText.h"
#include "support/KestrinctlTest.h"
#include "support/RawZip.h"
#include "support/SoundSet.h"

#ifndef _WIN32
#include <sys/stat.h>

#include <csignal>
#include <thread>
#endif

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;

class PackTest : public KestrinctlTest {
 protected:
  PackTest() {
    fs::create_directory(m_folder / "a");
    fs::create_directory(m_folder / "b");
    WriteSoundFile(m_folder / "a" / "boot.lsu", SomeSamples(1000, 20000, 1));
    WriteSoundFile(m_folder / "b" / "boot.lsu", SomeSamples(2000, 20000, 2));
  }
  void MakeSet() {
    const std::string a = (m_folder / "a" / "boot.lsu").string();
    const std::string b = (m_folder / "b" / "boot.lsu").string();
    (void)RunJson(0, {"config", "make", m_set, "--boot", a + ":60", "--motion", b + ":80", "--motion", a});
  }
  static std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
      names.push_back(core::base::TextOf(entry.path().filename()));
    std::sort(names.begin(), names.end());
    return names;
  }
  /// An archive that has to be refused, with nothing left of it. Returns what is said.
  std::string Refused(const std::string& bytes) {
    WriteBytes(m_zip, bytes);
    const auto before = NamesIn(m_folder.Path());
    const Finished unpacked = Run({"config", "unpack", m_zip, "--output", m_out});
    EXPECT_EQ(unpacked.code, 1) << unpacked.out;
    EXPECT_EQ(NamesIn(m_folder.Path()), before);
    return unpacked.errors;
  }

  std::string m_set = (m_folder / "Ember.lscfg").string();
  std::string m_zip = (m_folder / "Ember.zip").string();
  std::string m_out = (m_folder / "out").string();
};

TEST_F(PackTest, APackedSetComesOutAsItWas) {
  MakeSet();
  const Json packed = RunJson(0, {"config", "pack", m_set, "--output", m_zip});
  EXPECT_EQ(packed, (Json{{"files", 3}, {"bytes", fs::file_size(m_zip)}}));

  const Json unpacked = RunJson(0, {"config", "unpack", m_zip, "--output", m_out});
  EXPECT_THAT(NamesIn(m_out), ElementsAre("Ember.lscfg", "boot 2.lsu", "boot.lsu"));
  EXPECT_EQ(unpacked, RunJson(0, {"config", "show", (m_folder / "out" / "Ember.lscfg").string()}));
  Json expected = RunJson(0, {"config", "show", m_set});
  expected["slots"]["boot"]["path"] = (m_folder / "out" / "boot.lsu").string();
  expected["slots"]["motion"][0]["path"] = (m_folder / "out" / "boot 2.lsu").string();
  expected["slots"]["motion"][1]["path"] = (m_folder / "out" / "boot.lsu").string();
  EXPECT_EQ(unpacked, expected);
  EXPECT_EQ(ReadBytes(m_folder / "out" / "boot 2.lsu"), ReadBytes(m_folder / "b" / "boot.lsu"));
}

TEST_F(PackTest, TheUnpackedSetIsWholeWhereverItGoes) {
  MakeSet();
  ASSERT_EQ(Run({"config", "pack", m_set, "--output", m_zip}).code, 0);
  ASSERT_EQ(Run({"config", "unpack", m_zip, "--output", m_out}).code, 0);
  fs::remove_all(m_folder / "a");
  fs::remove_all(m_folder / "b");
  fs::rename(m_out, m_folder / "elsewhere");
  const Json shown = RunJson(0, {"config", "show", (m_folder / "elsewhere" / "Ember.lscfg").string()});
  EXPECT_EQ(shown["failed"], Json::array());
  EXPECT_EQ(shown["slots"]["boot"]["path"], (m_folder / "elsewhere" / "boot.lsu").string());
}

TEST_F(PackTest, NothingIsOverwritten) {
  MakeSet();
  WriteBytes(m_zip, "mine");
  const Finished packed = Run({"config", "pack", m_set, "--output", m_zip});
  EXPECT_EQ(packed.code, 1);
  EXPECT_THAT(packed.errors, HasSubstr("of that name already. Choose another name."));
  EXPECT_EQ(ReadBytes(m_zip), "mine");

  fs::remove(m_zip);
  ASSERT_EQ(Run({"config", "pack", m_set, "--output", m_zip}).code, 0);
  fs::create_directory(m_out);
  WriteBytes(fs::path(m_out) / "boot.lsu", "mine");
  const Finished unpacked = Run({"config", "unpack", m_zip, "--output", m_out});
  EXPECT_EQ(unpacked.code, 1);
  EXPECT_THAT(unpacked.errors, HasSubstr("is there already. Choose another folder."));
  EXPECT_EQ(ReadBytes(fs::path(m_out) / "boot.lsu"), "mine");
  EXPECT_THAT(NamesIn(m_out), ElementsAre("boot.lsu"));
}

TEST_F(PackTest, MissingSoundsAreNamedAndNothingIsPacked) {
  MakeSet();
  fs::remove(m_folder / "b" / "boot.lsu");
  const Json refused = RunJson(1, {"config", "pack", m_set, "--output", m_zip});
  EXPECT_THAT(refused["error"].get<std::string>(), HasSubstr((m_folder / "b" / "boot.lsu").string()));
  EXPECT_FALSE(fs::exists(m_zip));
}

TEST_F(PackTest, UsageIsAskedFor) {
  EXPECT_EQ(Run({"config", "pack", m_set}).code, 2);
  EXPECT_EQ(Run({"config", "unpack", m_zip}).code, 2);
  EXPECT_EQ(Run({"config", "pack", "--output", m_zip}).code, 2);
  EXPECT_EQ(Run({"config", "unpack", m_zip, "--output", m_out}).code, 1) << "there is no such file";
}

TEST_F(PackTest, HostileArchivesAreRefusedOrHarmless) {
  const std::string set =
      "BOOT\r\n../../boot.lsu\r\n 100\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\n"
      "MOTION-0\r\nIMPACT-0\r\nLOCKUP-0\r\n";
  const std::string sound = SoundFileBytes(SomeSamples(100));
  const auto zip = [&](RawZipEntry boot) {
    return RawZip(std::vector<RawZipEntry>{{"x.lscfg", set}, std::move(boot)}).Bytes();
  };
  EXPECT_THAT(Refused(zip({"boot.lsu", "/etc/passwd", 0, 0, 0120777})), HasSubstr("It is a link"));
  // In front of what is encrypted stand twelve bytes.
  EXPECT_THAT(
      Refused(zip({"boot.lsu", std::string(12, 'x') + sound, 0, 1, 0100644, static_cast<std::uint32_t>(sound.size())})),
      HasSubstr("password"));
  EXPECT_THAT(Refused(zip({"boot.lsu", DeflatedZeros(4'161'791), 8, 0, 0100644, 4'000'000'000U})),
              HasSubstr("larger than can be taken"));
  EXPECT_THAT(Refused(zip({"boot.lsu", DeflatedZeros(300'000), 8, 0, 0100644, 10})), HasSubstr("damaged"));
  EXPECT_THAT(Refused(zip({"boot.lsu", sound, 0, 0, 0100644, {}, 1})), HasSubstr("damaged"));
  EXPECT_THAT(Refused(zip({"other.lsu", sound})), HasSubstr("not in it:\nboot.lsu"));
  EXPECT_THAT(Refused(zip({"boot.lsu", sound}).substr(0, 300)), HasSubstr("no ZIP file"));
  EXPECT_THAT(Refused(""), HasSubstr("no ZIP file"));

  WriteBytes(m_zip, zip({"..\\boot.lsu", sound}));
  ASSERT_EQ(Run({"config", "unpack", m_zip, "--output", m_out}).code, 0);
  EXPECT_THAT(NamesIn(m_out), ElementsAre("boot.lsu", "x.lscfg"));
}

#ifndef _WIN32
TEST_F(PackTest, APipeIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo(m_zip.c_str(), 0600), 0);
  const Finished unpacked = Run({"config", "unpack", m_zip, "--output", m_out});
  EXPECT_EQ(unpacked.code, 1);
  EXPECT_THAT(unpacked.errors, HasSubstr("no file"));
}

TEST_F(PackTest, AFullDiskLeavesNothing) {
  MakeSet();
  const Surroundings small{.largestFile = 1000};
  const Finished packed = Run({"config", "pack", m_set, "--output", m_zip}, small);
  EXPECT_NE(packed.code, 0);
  EXPECT_FALSE(fs::exists(m_zip));
  ASSERT_EQ(Run({"config", "pack", m_set, "--output", m_zip}).code, 0);
  const auto before = NamesIn(m_folder.Path());
  EXPECT_NE(Run({"config", "unpack", m_zip, "--output", m_out}, small).code, 0);
  EXPECT_EQ(NamesIn(m_folder.Path()), before);
}

/// Many large sounds, so that there is time to be killed in.
class PackKilledTest : public PackTest {
 protected:
  PackKilledTest() {
    Arguments make{"config", "make", m_set};
    for (unsigned i = 0; i < 8; ++i) {
      const fs::path sound =
          WriteSoundFile(m_folder / "a" / (std::to_string(i) + ".lsu"), SomeSamples(1'000'000, 20000, i));
      make.insert(make.end(), {"--motion", sound.string()});
    }
    (void)RunJson(0, make);
  }
  /// Kills the command as soon as it has begun to write into that folder.
  void KillWhileWriting(const Arguments& arguments, const fs::path& folder) {
    const auto process = Start(arguments);
    const auto hasBegun = [&] {
      const auto names = NamesIn(folder);
      return std::any_of(names.begin(), names.end(),
                         [](const std::string& name) { return name.starts_with(".kestrin-"); });
    };
    while (!hasBegun()) std::this_thread::yield();
    process->Signal(SIGKILL);
    EXPECT_EQ(process->Wait().code, -SIGKILL);
  }
};

TEST_F(PackKilledTest, LeavesNothingThatLooksComplete) {
  KillWhileWriting({"config", "pack", m_set, "--output", m_zip}, m_folder.Path());
  EXPECT_FALSE(fs::exists(m_zip));
  for (const auto& entry : fs::directory_iterator(m_folder.Path()))
    EXPECT_NE(entry.path().extension(), ".zip") << entry.path();
  ASSERT_EQ(Run({"config", "pack", m_set, "--output", m_zip}).code, 0) << "what was left is in nobody's way";

  fs::create_directory(m_folder / "place");
  const fs::path out = m_folder / "place" / "out";
  KillWhileWriting({"config", "unpack", m_zip, "--output", out.string()}, m_folder / "place");
  EXPECT_FALSE(fs::exists(out));
  fs::create_directory(out);
  KillWhileWriting({"config", "unpack", m_zip, "--output", out.string()}, out);
  EXPECT_FALSE(fs::exists(out / "Ember.lscfg"));
  ASSERT_EQ(Run({"config", "unpack", m_zip, "--output", out.string()}).code, 0);
  EXPECT_TRUE(fs::exists(out / "Ember.lscfg"));
}

TEST_F(PackKilledTest, CtrlCLeavesNothingAtAll) {
  const auto before = NamesIn(m_folder.Path());
  const auto process = Start({"config", "pack", m_set, "--output", m_zip});
  while (NamesIn(m_folder.Path()) == before) std::this_thread::yield();
  process->Signal(SIGINT);
  EXPECT_EQ(process->Wait().code, 130);
  EXPECT_EQ(NamesIn(m_folder.Path()), before);
}
#endif

}  // namespace
}  // namespace kestrin::support
