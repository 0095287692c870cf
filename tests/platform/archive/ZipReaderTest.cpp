// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/archive/ZipArchives.h"
#include "support/RawZip.h"
#include "support/RecordingDisk.h"
#include "support/TestFiles.h"

namespace kestrin::platform::archive {
namespace {

using core::base::Archive;
using core::base::ArchiveEntry;
using core::base::FailureKind;
using core::base::Result;
using support::RawZip;
using support::RawZipEntry;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;

using Entries = std::vector<RawZipEntry>;

constexpr std::uint64_t kMiB = 1024 * 1024;
constexpr std::uint16_t kDeflate = 8;

class ZipReaderTest : public testing::Test {
 protected:
  Result<std::unique_ptr<Archive>> Open(const std::string& bytes) {
    return ZipArchives(support::AnyDisk()).Open(support::WriteBytes(m_folder / "sounds.zip", bytes));
  }
  /// An archive that has to open.
  std::unique_ptr<Archive> Opened(const std::vector<RawZipEntry>& entries) {
    Result<std::unique_ptr<Archive>> opened = Open(RawZip(entries).Bytes());
    EXPECT_EQ(opened.Text(), "");
    return opened ? std::move(*opened) : nullptr;
  }
  /// Why an archive does not open.
  core::base::Failure WhyNot(const std::string& bytes) {
    const Result<std::unique_ptr<Archive>> opened = Open(bytes);
    EXPECT_FALSE(opened);
    return opened ? core::base::Failure() : opened.Why();
  }

  static Result<> Unpack(Archive& archive, std::size_t entry, std::string& content, std::uint64_t most = 100 * kMiB) {
    content.clear();
    return archive.Unpack(
        entry,
        [&](std::string_view piece) {
          content += piece;
          return true;
        },
        most);
  }

  support::TemporaryFolder m_folder;
};

TEST_F(ZipReaderTest, GivesWhatIsStoredAndWhatIsDeflated) {
  const std::string zeros(1 + 258 * 3, '\0');
  const auto archive = Opened({{"a.wav", "abc"},
                               {"below/", "", 0, 0, 040755},
                               {"below/b.wav", support::DeflatedZeros(3), kDeflate, 0, 0100644,
                                static_cast<std::uint32_t>(zeros.size()), support::Crc32(zeros)}});
  const auto is = [](const char* name, std::uint64_t size, bool readable) {
    return AllOf(Field(&ArchiveEntry::name, name), Field(&ArchiveEntry::size, size),
                 Field(&ArchiveEntry::isReadable, readable), Field(&ArchiveEntry::reason, ""));
  };
  EXPECT_THAT(archive->Entries(),
              ElementsAre(is("a.wav", 3, true), is("below/", 0, false), is("below/b.wav", 775, true)));
  std::string content;
  EXPECT_EQ(Unpack(*archive, 0, content).Text(), "");
  EXPECT_EQ(content, "abc");
  EXPECT_EQ(Unpack(*archive, 2, content).Text(), "");
  EXPECT_EQ(content, zeros);
  EXPECT_FALSE(Unpack(*archive, 1, content)) << "a folder has no content";
}

TEST_F(ZipReaderTest, ShowsNamesAsTheyStandAndMakesNothingOfThem) {
  const std::vector<std::string> names{"../../x.wav",
                                       "/abs.wav",
                                       "C:\\x.wav",
                                       "..\\..\\y.wav",
                                       "CON",
                                       "nul.wav",
                                       "twin.wav",
                                       "TWIN.wav",
                                       "a\nb.wav",
                                       " ",
                                       std::string(300, 'x') + ".wav",
                                       "\xC3\xBC.wav"};
  std::vector<RawZipEntry> entries;
  for (const std::string& name : names) entries.push_back({name, name});
  const auto archive = Opened(entries);
  ASSERT_EQ(archive->Entries().size(), names.size());
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(archive->Entries()[i].name, names[i]);
    std::string content;
    EXPECT_EQ(Unpack(*archive, i, content).Text(), "");
    EXPECT_EQ(content, names[i]) << "by its place, not by its name";
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_folder.Path()), {}), 1) << "only the archive";
}

TEST_F(ZipReaderTest, TakesOrdinaryFilesOnly) {
  const auto archive = Opened({{"link.wav", "/etc/passwd", 0, 0, 0120777},
                               {"pipe.wav", "", 0, 0, 0010644},
                               {"device.wav", "", 0, 0, 0020644},
                               {"folder", "", 0, 0, 0040755},
                               {"nothing said.wav", "x", 0, 0, 0}});
  for (const std::size_t odd : {0, 1, 2}) {
    EXPECT_FALSE(archive->Entries()[odd].isReadable);
    EXPECT_THAT(archive->Entries()[odd].reason, HasSubstr("no file"));
    std::string content;
    EXPECT_FALSE(Unpack(*archive, odd, content));
    EXPECT_EQ(content, "");
  }
  EXPECT_FALSE(archive->Entries()[3].isReadable);
  EXPECT_EQ(archive->Entries()[3].reason, "");
  EXPECT_TRUE(archive->Entries()[4].isReadable);
}

TEST_F(ZipReaderTest, SaysThatAFileIsLockedOrPackedInAnUnusualWay) {
  const auto archive = Opened({{"locked.wav", std::string(20, 'x'), 0, 1, 0100644, 8},
                               {"bzip2.wav", "x", 12},
                               {"lzma.wav", "x", 14},
                               {"free.wav", "x"}});
  EXPECT_THAT(archive->Entries()[0].reason, HasSubstr("password"));
  EXPECT_THAT(archive->Entries()[1].reason, HasSubstr("unusual"));
  EXPECT_THAT(archive->Entries()[2].reason, HasSubstr("unusual"));
  for (const std::size_t odd : {0, 1, 2}) {
    EXPECT_FALSE(archive->Entries()[odd].isReadable);
    std::string content;
    EXPECT_FALSE(Unpack(*archive, odd, content));
  }
  EXPECT_TRUE(archive->Entries()[3].isReadable);
}

TEST_F(ZipReaderTest, ABombDoesNotGoOff) {
  // A little more than a GiB in 6.5 MiB.
  constexpr std::uint64_t kRepetitions = 4'161'791;
  constexpr std::uint32_t kSize = 1 + 258 * kRepetitions;
  ASSERT_GT(kSize, 1024 * kMiB);
  const std::string bomb = support::DeflatedZeros(kRepetitions);
  const auto archive = Opened({{"says so.wav", bomb, kDeflate, 0, 0100644, kSize, 0},
                               {"says less.wav", bomb, kDeflate, 0, 0100644, 1'000'000, 0}});
  std::uint64_t given = 0;
  const auto count = [&](std::string_view piece) {
    given += piece.size();
    return true;
  };
  const Result<> tooLarge = archive->Unpack(0, count, 16 * kMiB);
  ASSERT_FALSE(tooLarge);
  EXPECT_EQ(tooLarge.Why().kind, FailureKind::Full);
  EXPECT_EQ(given, 0U);

  EXPECT_FALSE(archive->Unpack(1, count, 16 * kMiB));
  EXPECT_LE(given, 1'000'000U) << "no more than it says";
}

TEST_F(ZipReaderTest, ClaimsOf100GiBAreOnlyClaims) {
  std::string longSizes("\1\0\20\0", 4);
  RawZip::Number(longSizes, 100 * 1024 * kMiB, 8);
  RawZip::Number(longSizes, 3, 8);
  Result<std::unique_ptr<Archive>> opened =
      Open(RawZip(Entries{{"a.wav", "abc", 0, 0, 0100644, 0xFFFFFFFF, {}, {}, 0xFFFFFFFF, longSizes}}).Bytes());
  // Later versions of the library see at once that it cannot be.
  if (!opened) {
    EXPECT_THAT(opened.Text(), HasSubstr("contradicts itself"));
    return;
  }
  const std::unique_ptr<Archive>& archive = *opened;
  ASSERT_EQ(archive->Entries()[0].size, 100 * 1024 * kMiB);
  std::string content;
  const Result<> refused = Unpack(*archive, 0, content);
  ASSERT_FALSE(refused);
  EXPECT_EQ(refused.Why().kind, FailureKind::Full);
  EXPECT_FALSE(Unpack(*archive, 0, content, 200 * 1024 * kMiB)) << "it holds 3 bytes";
}

TEST_F(ZipReaderTest, ALengthOtherThanSaidIsDamage) {
  const std::string zeros(1 + 258, '\0');
  for (const std::uint32_t said : {0U, 10U, 258U, 260U, 1'000'000U}) {
    const auto archive =
        Opened({{"a.wav", support::DeflatedZeros(1), kDeflate, 0, 0100644, said, support::Crc32(zeros)}});
    std::string content;
    const Result<> unpacked = Unpack(*archive, 0, content);
    ASSERT_FALSE(unpacked) << said;
    EXPECT_THAT(unpacked.Text(), HasSubstr("damaged"));
    EXPECT_LE(content.size(), zeros.size());
  }
}

TEST_F(ZipReaderTest, AWrongChecksumIsDamage) {
  const auto archive = Opened({{"a.wav", "abc", 0, 0, 0100644, std::nullopt, 0x12345678}});
  std::string content;
  EXPECT_THAT(Unpack(*archive, 0, content).Text(), HasSubstr("damaged"));
}

TEST_F(ZipReaderTest, StopsWhenNobodyTakesTheContent) {
  const auto archive = Opened({{"a.wav", std::string(300'000, 'x')}});
  int pieces = 0;
  const Result<> unpacked = archive->Unpack(
      0, [&](std::string_view) { return ++pieces < 2; }, kMiB);
  ASSERT_FALSE(unpacked);
  EXPECT_EQ(unpacked.Why().kind, FailureKind::Cancelled);
  EXPECT_EQ(pieces, 2);
}

TEST_F(ZipReaderTest, RefusesWhatContradictsItself) {
  const auto text = [&](const std::vector<RawZipEntry>& entries) { return WhyNot(RawZip(entries).Bytes()).text; };
  EXPECT_THAT(text({{"a.wav", "abc"}, {"b.wav", "abc", 0, 0, 0100644, {}, {}, {}, {}, {}, 0}}),
              HasSubstr("contradicts"))
      << "two entries in one place";
  EXPECT_THAT(text({{"a.wav", "abc"}, {"a.wav", "def"}}), HasSubstr("same name"));
  EXPECT_THAT(text({{"a.wav", "abc", 0, 0, 0100644, {}, {}, 7}}), HasSubstr("contradicts"));
}

TEST_F(ZipReaderTest, RefusesWhatIsNoZipFile) {
  for (const std::string& bytes :
       {std::string(), std::string("PK"), std::string(5000, 'x'), std::string("RIFF....WAVE")})
    EXPECT_THAT(WhyNot(bytes).text, HasSubstr("no ZIP file"));
}

TEST_F(ZipReaderTest, RefusesEveryBeginningOfAZipFile) {
  const std::string whole = RawZip(Entries{{"a.wav", "abc"}, {"b.wav", "defg"}}).Bytes();
  ASSERT_TRUE(Open(whole));
  for (std::size_t length = 0; length < whole.size(); ++length) EXPECT_FALSE(Open(whole.substr(0, length))) << length;
}

TEST_F(ZipReaderTest, NoDamagedByteGivesAnotherContent) {
  const std::string whole = RawZip(Entries{{"a.wav", "abcdefgh"}, {"b.wav", "ijklmnop"}}).Bytes();
  int refused = 0;
  for (std::size_t at = 0; at < whole.size(); ++at) {
    std::string damaged = whole;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x5A);
    Result<std::unique_ptr<Archive>> opened = Open(damaged);
    refused += static_cast<int>(!opened);
    if (!opened) continue;
    for (std::size_t i = 0; i < (*opened)->Entries().size(); ++i) {
      std::string content;
      if (!Unpack(**opened, i, content)) continue;
      EXPECT_EQ(content, i == 0 ? "abcdefgh" : "ijklmnop") << at;
    }
  }
  EXPECT_GT(refused, 20);
}

TEST_F(ZipReaderTest, OpensNoFolderAndNothingThatIsNotThere) {
  ZipArchives archives(support::AnyDisk());
  EXPECT_EQ(archives.Open(m_folder / "none.zip").Why().kind, FailureKind::NotFound);
  EXPECT_THAT(archives.Open(m_folder.Path()).Text(), HasSubstr("it is a folder"));
}

TEST_F(ZipReaderTest, TenThousandEntriesAreTheMost) {
  std::vector<RawZipEntry> entries;
  for (int i = 0; i < 10'000; ++i) entries.push_back({std::to_string(i), "x"});
  EXPECT_EQ(Opened(entries)->Entries().size(), 10'000U);
  entries.push_back({"one more", "x"});
  EXPECT_EQ(WhyNot(RawZip(entries).Bytes()).kind, FailureKind::Full);
}

TEST_F(ZipReaderTest, AMillionEntriesAreRefusedByTheEndRecordAlone) {
  // The short end says that the long one counts, or hides it.
  for (const std::uint64_t said : {std::uint64_t{0xFFFF}, std::uint64_t{1}}) {
    std::string bytes = "PK\6\6";
    RawZip::Number(bytes, 44, 8);
    RawZip::Number(bytes, 45 << 16 | 45, 4);
    RawZip::Number(bytes, 0, 8);
    RawZip::Number(bytes, 1'000'000, 8);
    RawZip::Number(bytes, 1'000'000, 8);
    RawZip::Number(bytes, 53'000'000, 8);
    RawZip::Number(bytes, 0, 8);
    bytes += "PK\6\7";
    RawZip::Number(bytes, 0, 4);
    RawZip::Number(bytes, 0, 8);
    RawZip::Number(bytes, 1, 4);
    bytes += "PK\5\6";
    RawZip::Number(bytes, 0, 4);
    RawZip::Number(bytes, said, 2);
    RawZip::Number(bytes, said, 2);
    RawZip::Number(bytes, said == 1 ? 50 : 0xFFFFFFFF, 4);
    RawZip::Number(bytes, said == 1 ? 0 : 0xFFFFFFFF, 4);
    RawZip::Number(bytes, 0, 2);
    EXPECT_EQ(WhyNot(bytes).kind, FailureKind::Full) << said;
  }
}

TEST_F(ZipReaderTest, ADirectoryTooLongIsRefusedHoweverFewEntriesItClaims) {
  // 5 MiB of comments, of one entry each.
  const RawZip zip(Entries{{"a.wav", "abc"}});
  std::string bytes = zip.Bytes();
  bytes.replace(zip.End() + 12, 4, std::string("\0\0\x50\0", 4));
  EXPECT_EQ(WhyNot(bytes).kind, FailureKind::Full);
}

TEST_F(ZipReaderTest, AnEndBehindAnotherHidesNothing) {
  // The last end is that of an empty archive and stands in the comment of one with too many entries.
  const RawZip large(Entries{{"a.wav", "abc"}});
  std::string bytes = large.Bytes();
  bytes.replace(large.End() + 8, 4, std::string("\x11\x27\x11\x27", 4));
  bytes.replace(large.End() + 20, 2, std::string("\x16\0", 2));
  bytes += std::string("PK\5\6", 4) + std::string(18, '\0');
  EXPECT_EQ(WhyNot(bytes).kind, FailureKind::Full);
}

TEST_F(ZipReaderTest, SeveralEndsTogetherMayNotHoldMoreEither) {
  const auto end = [](std::uint64_t entries, std::uint64_t comment) {
    std::string bytes = "PK\5\6";
    RawZip::Number(bytes, 0, 4);
    RawZip::Number(bytes, entries, 2);
    RawZip::Number(bytes, entries, 2);
    RawZip::Number(bytes, 1000, 4);
    RawZip::Number(bytes, 0, 4);
    RawZip::Number(bytes, comment, 2);
    return bytes;
  };
  EXPECT_EQ(WhyNot(end(6000, 22) + end(6000, 0)).kind, FailureKind::Full);
  EXPECT_EQ(WhyNot(end(4000, 22) + end(6000, 0)).kind, FailureKind::NotValid) << "for another reason";
}

}  // namespace
}  // namespace kestrin::platform::archive
