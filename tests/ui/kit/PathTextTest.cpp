// SPDX-License-Identifier: MIT
// A path stays a path: names that are no UTF-8 come through addresses and settings whole.

#include <gtest/gtest.h>

#include <QSettings>
#include <QUrl>
#include <QVariant>

#include "support/TestFiles.h"
#include "ui/kit/PathText.h"

namespace kestrin::ui::kit {
namespace {

namespace fs = std::filesystem;

/// A name in the letters of older volumes, one byte each: no UTF-8. Elsewhere paths are characters.
#ifdef _WIN32
const fs::path kOdd = L"C:/tmp/Gr\u00fc\u00dfe 100% #1.lsu";
#else
const fs::path kOdd =
    "/tmp/Gr\xFC\xDF"
    "e 100% #1.lsu";
#endif
const fs::path kPlain = fs::path(u8"/tmp/Gr\u00fc\u00dfe \u2728 & more.lsu");

TEST(PathText, AddressTellsEveryNameWhole) {
  for (const fs::path& path : {kOdd, kPlain}) {
    EXPECT_EQ(PathOf(UrlOf(path)), path);
    // As another program gets it.
    EXPECT_EQ(PathOf(QUrl::fromEncoded(UrlOf(path).toEncoded())), path);
  }
}

#ifndef _WIN32
TEST(PathText, AddressHasABytePercentEncodedEach) {
  EXPECT_EQ(UrlOf(kOdd).toEncoded(), "file:///tmp/Gr%FC%DFe%20100%25%20%231.lsu");
}
#endif

TEST(PathText, AddressOfAnOrdinaryNameIsQtsOwn) {
  EXPECT_EQ(UrlOf(kPlain), QUrl::fromLocalFile(TextOf(kPlain)));
  EXPECT_EQ(PathOf(QUrl::fromLocalFile(TextOf(kPlain))), kPlain);
}

TEST(PathText, AddressOfNoFileIsNoPath) { EXPECT_EQ(PathOf(QUrl("https://example.org/a.lsu")), fs::path()); }

TEST(PathText, SettingsKeepEveryNameWhole) {
  const support::TemporaryFolder folder;
  const QString file = TextOf(folder / "settings.ini");
  const std::vector<fs::path> both{kOdd, kPlain};
  {
    QSettings settings(file, QSettings::IniFormat);
    settings.setValue("one", SettingOf(kOdd));
    settings.setValue("other", SettingOf(kPlain));
    settings.setValue("both", SettingOf(both));
    settings.setValue("single", SettingOf(std::vector{kOdd}));
    settings.setValue("empty", SettingOf(std::vector<fs::path>()));
  }
  const QSettings settings(file, QSettings::IniFormat);
  EXPECT_EQ(PathOfSetting(settings.value("one")), kOdd);
  EXPECT_EQ(PathOfSetting(settings.value("other")), kPlain);
  EXPECT_EQ(PathsOfSetting(settings.value("both")), both);
  EXPECT_EQ(PathsOfSetting(settings.value("single")), std::vector{kOdd});
  EXPECT_EQ(PathsOfSetting(settings.value("empty")), std::vector<fs::path>());
  EXPECT_EQ(PathsOfSetting(settings.value("never")), std::vector<fs::path>());
}

TEST(PathText, SettingsOfEarlierVersionsAreRead) {
  EXPECT_EQ(PathOfSetting(TextOf(kPlain)), kPlain);
  EXPECT_EQ(PathsOfSetting(QStringList{TextOf(kPlain), "/b.lscfg"}), (std::vector<fs::path>{kPlain, "/b.lscfg"}));
  EXPECT_EQ(PathsOfSetting(TextOf(kPlain)), std::vector{kPlain});
}

}  // namespace
}  // namespace kestrin::ui::kit
