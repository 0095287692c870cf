// SPDX-License-Identifier: MIT
#include "sound/pack/SetUnpacker.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/PathText.h"
#include "sound/ConfigurationFile.h"
#include "support/FakeArchives.h"
#include "support/RecordingConfigurationView.h"
#include "support/RecordingDisk.h"

namespace kestrin::core::sound {
namespace {

namespace fs = std::filesystem;

using base::FailureKind;
using base::Result;
using support::FakeArchives;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// What a set file says whose boot sound and motion sounds are these.
std::string SetOf(const std::string& boot, const std::vector<std::string>& motion = {}) {
  std::string text = "BOOT\r\n" + boot + "\r\n 60\r\nPWRON\r\n\r\n 100\r\nPWROFF\r\n\r\n 100\r\nIDLE\r\n\r\n 100\r\n";
  text += "MOTION-" + std::to_string(motion.size()) + "\r\n";
  for (const std::string& sound : motion) text += sound + "\r\n 80\r\n";
  return text + "IMPACT-0\r\nLOCKUP-0\r\n";
}

std::string Sound(unsigned seed) { return support::SoundFileBytes(support::SomeSamples(100, 20000, seed)); }

class SetUnpackerTest : public testing::Test {
 protected:
  void Put(std::vector<FakeArchives::Entry> entries) { (void)m_archives.Put(m_zip, std::move(entries)); }
  Result<fs::path> Unpack() { return SetUnpacker(m_archives, m_disk).Unpack(m_zip, m_out); }
  /// The failure's text, when nothing was left behind.
  std::string Refused() {
    const Result<fs::path> unpacked = Unpack();
    EXPECT_FALSE(unpacked);
    EXPECT_FALSE(fs::exists(m_out));
    EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("Ember.zip"));
    return unpacked.Text();
  }
  static std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(base::TextOf(entry.path().filename()));
    std::sort(names.begin(), names.end());
    return names;
  }

  support::TemporaryFolder m_folder;
  fs::path m_zip = m_folder / "Ember.zip";
  fs::path m_out = m_folder / "out";
  FakeArchives m_archives;
  support::RecordingDisk m_disk;
};

TEST_F(SetUnpackerTest, UnpacksASetThatOpens) {
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu", {"swing.lsu", "boot.lsu"})),
       FakeArchives::File("boot.lsu", Sound(1)), FakeArchives::File("swing.lsu", Sound(2))});
  const Result<fs::path> unpacked = Unpack();
  ASSERT_EQ(unpacked.Text(), "");
  EXPECT_EQ(*unpacked, m_out / "Ember.lscfg");
  EXPECT_THAT(NamesIn(m_out), ElementsAre("Ember.lscfg", "boot.lsu", "swing.lsu"));
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("Ember.zip", "out"));
  EXPECT_EQ(support::ReadBytes(m_out / "swing.lsu"), Sound(2));

  LSU_Configuration configuration;
  support::RecordingConfigurationView view;
  const LoadResult loaded = ConfigurationFile::Load(*unpacked, configuration, view);
  ASSERT_TRUE(loaded.valid);
  EXPECT_THAT(loaded.failed, IsEmpty());
  EXPECT_EQ(loaded.foundBeside, 0) << "a set that was unpacked has not moved";
  EXPECT_EQ(configuration.FileAt(SlotKind::Boot).FileNameAndPath(), m_out / "boot.lsu");
  EXPECT_EQ(configuration.GetVolume(SlotKind::Boot, 1), 60);
  EXPECT_EQ(configuration.FileAt(SlotKind::Motion, 1).FileNameAndPath(), m_out / "swing.lsu");
  EXPECT_EQ(configuration.FileAt(SlotKind::Motion, 2).FileNameAndPath(), m_out / "boot.lsu");
}

TEST_F(SetUnpackerTest, TakesWhatPeopleAndTheirSystemsMakeOfIt) {
  Put({FakeArchives::Folder("My set/"),
       FakeArchives::File("My set/x.LSCFG", SetOf("C:\\old\\BOOT.LSU", {"/home/me/s:1.lsu"})),
       FakeArchives::File("My set/boot.lsu", Sound(1)), FakeArchives::File("My set/s:1.lsu", Sound(2)),
       FakeArchives::File("My set/read me.txt", "hello"), FakeArchives::File("other.lsu", "no sound"),
       FakeArchives::File("__MACOSX/My set/._x.lscfg", "?"), FakeArchives::File("My set/.DS_Store", "?")});
  ASSERT_EQ(Unpack().Text(), "");
  EXPECT_THAT(NamesIn(m_out), ElementsAre("BOOT.lsu", "s_1.lsu", "x.lscfg")) << "nothing that the set does not name";
  EXPECT_EQ(support::ReadBytes(m_out / "x.lscfg"), SetOf("BOOT.lsu", {"s_1.lsu"}));
}

TEST_F(SetUnpackerTest, NothingIsWrittenAnywhereElse) {
  Put({FakeArchives::File("../../Ember.lscfg", SetOf("../../boot.lsu", {"/abs.lsu", "..\\..\\x.lsu"})),
       FakeArchives::File("../../boot.lsu", Sound(1)), FakeArchives::File("/abs.lsu", Sound(2)),
       FakeArchives::File("..\\..\\x.lsu", Sound(3))});
  ASSERT_EQ(Unpack().Text(), "");
  EXPECT_THAT(NamesIn(m_out), ElementsAre("Ember.lscfg", "abs.lsu", "boot.lsu", "x.lsu"));
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("Ember.zip", "out"));
  EXPECT_EQ(support::ReadBytes(m_out / "Ember.lscfg"), SetOf("boot.lsu", {"abs.lsu", "x.lsu"}));
}

TEST_F(SetUnpackerTest, RefusesWhatIsNoPackedSet) {
  Put({FakeArchives::File("boot.lsu", Sound(1))});
  EXPECT_THAT(Refused(), HasSubstr("no sound set"));
  Put({FakeArchives::File("a.lscfg", SetOf("")), FakeArchives::File("b.lscfg", SetOf(""))});
  EXPECT_THAT(Refused(), HasSubstr("several sound sets"));
  Put({FakeArchives::File("a.lscfg", "hello")});
  EXPECT_THAT(Refused(), HasSubstr("not valid"));
  Put({FakeArchives::File("a.lscfg", std::string("BOOT\0", 5))});
  EXPECT_THAT(Refused(), HasSubstr("not a text file"));
  Put({FakeArchives::Refused("a.lscfg", "It is locked with a password.")});
  EXPECT_THAT(Refused(), HasSubstr("locked"));
  Put({FakeArchives::File("a.lscfg", std::string((1U << 20) + 1, 'x'))});
  EXPECT_THAT(Refused(), HasSubstr("too large"));
  support::WriteBytes(m_zip, "no archive of this one");
  EXPECT_FALSE(SetUnpacker(m_archives, m_disk).Unpack(m_folder / "other.zip", m_out));
}

TEST_F(SetUnpackerTest, RefusesASetWhoseSoundsAreNotAllThereAndValid) {
  Put({FakeArchives::File("a.lscfg", SetOf("boot.lsu", {"swing.lsu"})), FakeArchives::File("boot.lsu", Sound(1))});
  EXPECT_THAT(Refused(), HasSubstr("not in it:\nswing.lsu"));
  Put({FakeArchives::File("a.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", "short")});
  EXPECT_THAT(Refused(), HasSubstr("none that a board can play:\nboot.lsu"));
  Put({FakeArchives::File("a.lscfg", SetOf("boot.lsu")), FakeArchives::Refused("boot.lsu", "It is a link.")});
  EXPECT_THAT(Refused(), HasSubstr("It is a link."));
  FakeArchives::Entry damaged = FakeArchives::File("boot.lsu", Sound(1));
  damaged.flaw = "It is damaged.";
  Put({FakeArchives::File("a.lscfg", SetOf("boot.lsu")), damaged});
  EXPECT_THAT(Refused(), HasSubstr("\"boot.lsu\": It is damaged."));
  Put({FakeArchives::File("a.lscfg", SetOf("boot.lsu")),
       FakeArchives::File("boot.lsu", std::string((64U << 20) + 1, 'x'))});
  EXPECT_THAT(Refused(), HasSubstr("too large"));
  const auto outside = support::WriteSoundFile(m_folder / "outside.wav", support::SomeSamples(100));
  Put({FakeArchives::File("a.lscfg", SetOf(base::TextOf(outside)))});
  const Result<fs::path> unpacked = Unpack();
  EXPECT_THAT(unpacked.Text(), HasSubstr("outside.wav")) << "a set says nothing about files of this computer";
}

TEST_F(SetUnpackerTest, ASetNamesNoMoreSoundsThanFit) {
  std::vector<FakeArchives::Entry> entries;
  std::string set;
  for (int i = 0; i < 41; ++i) {
    entries.push_back(FakeArchives::File(std::to_string(i) + ".lsu", Sound(1)));
    set += std::to_string(i) + ".lsu\n";
  }
  entries.push_back(FakeArchives::File("a.lscfg", set));
  Put(entries);
  EXPECT_THAT(Refused(), HasSubstr("more sounds than a set can hold"));
}

TEST_F(SetUnpackerTest, IntoAFolderThatIsThereOnlyUnderFreeNames) {
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", Sound(1))});
  fs::create_directory(m_out);
  support::WriteBytes(m_out / "mine.txt", "mine");
  ASSERT_EQ(Unpack().Text(), "");
  EXPECT_THAT(NamesIn(m_out), ElementsAre("Ember.lscfg", "boot.lsu", "mine.txt"));

  support::WriteBytes(m_out / "boot.lsu", "mine");
  fs::remove(m_out / "Ember.lscfg");
  m_disk.flushed.clear();
  const Result<fs::path> again = Unpack();
  ASSERT_FALSE(again);
  EXPECT_EQ(again.Why().kind, FailureKind::InTheWay);
  EXPECT_THAT(again.Text(), HasSubstr("boot.lsu\" is there already"));
  EXPECT_THAT(NamesIn(m_out), ElementsAre("boot.lsu", "mine.txt"));
  EXPECT_EQ(support::ReadBytes(m_out / "boot.lsu"), "mine");
  EXPECT_THAT(m_disk.flushed, IsEmpty()) << "nothing was written";
}

TEST_F(SetUnpackerTest, ANameThatIsTakenMeanwhileTakesBackTheOthers) {
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", Sound(1))});
  fs::create_directory(m_out);
  m_disk.onTakeFreeName = [&](const fs::path& name) {
    if (name.filename() == "Ember.lscfg") support::WriteBytes(name, "mine");
    return std::error_code();
  };
  EXPECT_EQ(Unpack().Why().kind, FailureKind::InTheWay);
  EXPECT_THAT(NamesIn(m_out), ElementsAre("Ember.lscfg"));
  EXPECT_EQ(support::ReadBytes(m_out / "Ember.lscfg"), "mine");
}

TEST_F(SetUnpackerTest, TheSetComesLast) {
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu", {"x.lsu"})), FakeArchives::File("boot.lsu", Sound(1)),
       FakeArchives::File("x.lsu", Sound(2))});
  fs::create_directory(m_out);
  std::vector<std::string> order;
  m_disk.onTakeFreeName = [&](const fs::path& name) {
    order.push_back(base::TextOf(name.filename()));
    return std::error_code();
  };
  ASSERT_EQ(Unpack().Text(), "");
  EXPECT_THAT(order, ElementsAre("boot.lsu", "x.lsu", "Ember.lscfg"));
}

TEST_F(SetUnpackerTest, ADiskThatRefusesLeavesNothing) {
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", Sound(1))});
  int steps = 0;
  m_disk.onFlush = [&](const fs::path&) {
    return ++steps == 2 ? std::make_error_code(std::errc::io_error) : std::error_code();
  };
  (void)Refused();
  m_disk.onFlush = {};
  m_disk.onTakeFreeName = [](const fs::path&) { return std::make_error_code(std::errc::permission_denied); };
  (void)Refused();
}

TEST_F(SetUnpackerTest, WhoHasItsTurnMayStopIt) {
  struct Stop {};
  Put({FakeArchives::File("Ember.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", Sound(1))});
  int turns = 0;
  const auto pump = [&] {
    if (++turns == 2) throw Stop();
  };
  EXPECT_THROW((void)SetUnpacker(m_archives, m_disk).Unpack(m_zip, m_out, pump), Stop);
  EXPECT_THAT(NamesIn(m_folder.Path()), ElementsAre("Ember.zip"));
}

TEST_F(SetUnpackerTest, BelowAPlaceEachGetsAFolderOfItsOwn) {
  Put({FakeArchives::File("x.lscfg", SetOf("boot.lsu")), FakeArchives::File("boot.lsu", Sound(1))});
  SetUnpacker unpacker(m_archives, m_disk);
  const fs::path place = m_folder / "Kestrin sounds";
  EXPECT_EQ(*unpacker.UnpackBelow(m_zip, place), place / "Ember" / "x.lscfg");
  EXPECT_EQ(*unpacker.UnpackBelow(m_zip, place), place / "Ember 2" / "x.lscfg");
  // The third name is taken while this one is unpacked.
  bool isFirst = true;
  m_disk.onTakeFreeName = [&](const fs::path& name) {
    if (std::exchange(isFirst, false)) fs::create_directory(name);
    return std::error_code();
  };
  EXPECT_EQ(*unpacker.UnpackBelow(m_zip, place), place / "Ember 4" / "x.lscfg");
  EXPECT_THAT(NamesIn(place), ElementsAre("Ember", "Ember 2", "Ember 3", "Ember 4"));
  EXPECT_THAT(NamesIn(place / "Ember 3"), IsEmpty());
}

TEST_F(SetUnpackerTest, KnowsAPackedSetByItsNames) {
  SetUnpacker unpacker(m_archives, m_disk);
  Put({FakeArchives::File("a/Ember.LSCFG", "?")});
  EXPECT_EQ(unpacker.KindOf(m_zip), SetUnpacker::Kind::Set);
  Put({FakeArchives::File("a.wav", "?"), FakeArchives::File("__MACOSX/._x.lscfg", "?"),
       FakeArchives::Folder("a.lscfg/")});
  EXPECT_EQ(unpacker.KindOf(m_zip), SetUnpacker::Kind::NoSet);
  EXPECT_EQ(unpacker.KindOf(m_folder / "none.zip"), SetUnpacker::Kind::Unreadable);
}

}  // namespace
}  // namespace kestrin::core::sound
