// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "HelpFiles.h"
#include "ui/help/HelpContents.h"
#include "ui/help/HelpTopics.h"

namespace kestrin::ui::help {
namespace {

using testing::BytesOf;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::SourcePage;
using testing::SourcePages;

/// What the first group of the pattern matches, one after another.
std::vector<std::string> All(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), expression); match != std::sregex_iterator(); ++match)
    found.push_back((*match)[1]);
  return found;
}

/// Whether a place is on a page that is there, and its anchor on that page.
bool Exists(const std::string& place, const std::string& here) {
  const std::size_t hash = place.find('#');
  const std::string page = hash == 0 ? here : place.substr(0, hash);
  if (SourcePages().count(page) == 0) return false;
  return hash == place.npos ||
         SourcePage(page).find("<a name=\"" + place.substr(hash + 1) + "\">") != std::string::npos;
}

/// A page as a person reads it: no tags, runs of blanks and line ends as one blank.
std::string TextOf(const std::string& page) {
  const std::string text = std::regex_replace(SourcePage(page), std::regex("<[^>]*>"), "");
  return std::regex_replace(text, std::regex("\\s+"), " ");
}

TEST(HelpPages, EveryLinkLeadsToAPlaceOfTheHelp) {
  int links = 0;
  for (const std::string& page : SourcePages()) {
    for (const std::string& place : All(SourcePage(page), "<a href=\"([^\"]*)\"")) {
      EXPECT_TRUE(Exists(place, page)) << page << " leads to " << place;
      ++links;
    }
  }
  EXPECT_GT(links, 50);
}

TEST(HelpPages, EveryPageStandsInTheContentsOnce) {
  std::map<std::string, int> pages;
  for (const HelpEntry& entry : ReadHelpContents(SourcePage("contents.hhc"))) {
    if (entry.place.empty()) continue;
    EXPECT_TRUE(Exists(entry.place, "")) << entry.place;
    ++pages[entry.place];
  }
  for (const std::string& page : SourcePages()) EXPECT_EQ(pages[page], 1) << page;
}

TEST(HelpPages, EveryTopicIsAPlaceOfTheHelp) {
  for (const HelpTopic& topic : HelpTopics()) EXPECT_TRUE(Exists(topic.place, "")) << topic.place;
}

TEST(HelpPages, EveryContextNumberHasItsTopic) {
  std::set<int> numbers;
  for (const std::string& number : All(BytesOf(KESTRIN_HELP_CONTEXTS), "\n  [A-Z]\\w* = (\\d+),"))
    EXPECT_TRUE(numbers.insert(std::stoi(number)).second) << number << " is given twice";
  std::set<int> topics;
  for (const HelpTopic& topic : HelpTopics()) topics.insert(static_cast<int>(topic.context));
  EXPECT_EQ(topics, numbers);
  EXPECT_EQ(HelpTopics().size(), numbers.size());
}

TEST(HelpPages, EverySlotHasItsTopic) {
  // Kinds: 1 boot, 2 power on, 3 power off, 4 motion, 5 impact, 6 lock-up, 7 idle.
  constexpr kit::HelpContext kSlots[] = {kit::HelpContext::Boot,   kit::HelpContext::PwrOn,  kit::HelpContext::PwrOff,
                                         kit::HelpContext::Motion, kit::HelpContext::Impact, kit::HelpContext::Lockup,
                                         kit::HelpContext::Idle};
  for (int kind = 1; kind <= 7; ++kind) EXPECT_EQ(kit::HelpContextOfSlot(kind), kSlots[kind - 1]) << kind;
  EXPECT_EQ(kit::HelpContextOfSlot(0), kit::HelpContext::Slots);
  EXPECT_EQ(kit::HelpContextOfSlot(8), kit::HelpContext::Slots);
}

TEST(HelpPages, NameNoColourAndRunNothing) {
  for (const std::string& page : SourcePages()) {
    for (const char* unwanted : {"<script", "style=", "bgcolor", "<font", "http:", "https:", "<img"})
      EXPECT_THAT(SourcePage(page), Not(HasSubstr(unwanted))) << page;
  }
  EXPECT_TRUE(All(SourcePage("help.css"), "(color\\s*:|background|#[0-9a-fA-F]{3,6}\\b)").empty());
}

TEST(HelpPages, TitleAndHeadingAreTheSame) {
  std::set<std::string> titles;
  for (const std::string& page : SourcePages()) {
    const auto title = All(SourcePage(page), "<title>([^<]*)</title>");
    ASSERT_EQ(title.size(), 1U) << page;
    EXPECT_EQ(All(SourcePage(page), "<h1>([^<]*)</h1>"), title) << page;
    EXPECT_TRUE(titles.insert(title.front()).second) << page;
  }
}

/// The messages of the program, word for word.
constexpr const char* kMessages[] = {
    "A connection with Kuskekpize could not be established. Press OK to work offline or Cancel to exit the application",
    "A board is connected at",
    "but you are not permitted to open it.",
    "Invalid LED configuration file. Check KestrinLEDS.ldcfg in the installation path !",
    "Not a valid file",
    "Maximum number of Motion files reached",
    "Maximum number of Impact files reached",
    "Maximum number of Lock-up files reached",
    "Boot file is missing",
    "Power On file is missing",
    "Power Off file is missing",
    "Idle file is missing",
    "At least one motion file is required",
    "At least one impact file is required",
    "At least one locku-up file is required",
    "The sounds do not fit into the board's memory. Remove some or choose shorter ones.",
    "Not a valid configuration file",
    "The following files could not be found or are not valid:",
    "Erasing flash memory ...",
    "Coding data...",
    "Downloading...",
    "SUCCESS !",
    "Memory check error",
    "Connection lost",
    "Canceled",
    "Are you sure you want to cancel downloading ? This might result in unsable behaviour ! Press OK to resume "
    "downloading "
    "or Cancel to abort",
    "CRC not received",
    "WARNING: Setting a different LED than actually installed may damage the LED and driver. Are you sure you want to "
    "continue ?",
    "File is corrupted, could not read !",
    "Update finished. New fonts installed successfully.",
    "Update process finished. No updates available or required.",
    "Failed! Connection error 0002. Please try again later.",
    "Failed! Connection error 0003. Please try again later.",
    "Failed! Connection error 0004. Please try again later.",
    "Update failed! Connection error. Please try again later.",
    "Update failed! The server refused the request. Please try again later.",
    "Update failed! The server sent a font name that cannot be used: ",
    "a sound file name that cannot be used: ",
    "Make room on the disk or permit writing there and update again.",
    "Error : 0001 Update failed! Please try again later.",
    "Error : 0002 Update failed! Please try again later.",
    "Update stopped. Please install a new version of this app.",
};

TEST(HelpPages, EveryMessageIsExplained) {
  const std::string text = TextOf("messages.html");
  for (const char* message : kMessages) EXPECT_THAT(text, HasSubstr(message));
}

TEST(HelpPages, EveryEndOfADownloadIsExplained) {
  const std::string text = TextOf("download.html");
  for (const char* end : {"\"SUCCESS !\"", "\"Memory check error\"", "\"Connection lost\"", "\"Canceled\"",
                          "\"Erasing flash memory ...\"", "\"Coding data...\"", "\"Downloading...\"",
                          "Are you sure you want to cancel downloading ?", "This might result in unsable behaviour !",
                          "Press OK to resume downloading or Cancel to abort"})
    EXPECT_THAT(text, HasSubstr(end));
}

TEST(HelpPages, EveryFileIsExplained) {
  const std::string text = TextOf("files.html");
  for (const char* file : {".lsu", ".lscfg", ".ldset", "KestrinLEDS.ldcfg", "temp.wav", "fonts", "kestrinusb.chm"})
    EXPECT_THAT(text, HasSubstr(file));
}

TEST(HelpPages, FactoryValuesAndRangesAreThoseOfTheBoard) {
  const std::string table = std::regex_replace(SourcePage("motion.html"), std::regex("\\s+"), " ");
  for (const char* row :
       {"Motion: Threshold</td><td>1 to 255</td><td>180<", "Integration Time</td><td>2 to 25</td><td>2<",
        "Impact: Threshold</td><td>0 to 31</td><td>10<", "Debouncing Time</td><td>1 to 255</td><td>50<",
        "Minimum time between repetitions</td><td>1 to 255</td><td>125<",
        "Flash period [ms]</td><td>20 to 1000, in steps of 4</td><td>52<"})
    EXPECT_THAT(table, HasSubstr(row));
}

}  // namespace
}  // namespace kestrin::ui::help
