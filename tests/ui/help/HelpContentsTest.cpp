// SPDX-License-Identifier: MIT
#include "ui/help/HelpContents.h"

#include <gmock/gmock.h>

namespace kestrin::ui::help {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string Object(const std::string& title, const std::string& place) {
  return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + title +
         "\"><param name=\"Local\" value=\"" + place + "\"></OBJECT>";
}

TEST(HelpContents, ReadsTitlesPlacesAndDepths) {
  const std::string text = "<html><body><UL>" + Object("One", "one.html") + "<UL>" + Object("Inner", "two.html#there") +
                           "</UL>" + Object("Last", "three.html") + "</UL></body></html>";
  EXPECT_THAT(ReadHelpContents(text),
              ElementsAre(HelpEntry{"One", "one.html", 0}, HelpEntry{"Inner", "two.html#there", 1},
                          HelpEntry{"Last", "three.html", 0}));
}

TEST(HelpContents, HeadingNeedsNoPlace) {
  const std::string text = "<ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"Part\"></object></ul>";
  EXPECT_THAT(ReadHelpContents(text), ElementsAre(HelpEntry{"Part", "", 0}));
}

TEST(HelpContents, TitlesMayHoldEscapedCharacters) {
  EXPECT_THAT(ReadHelpContents("<ul>" + Object("a &lt;b&gt; &quot;c&quot; &amp;lt;", "x.html") + "</ul>"),
              ElementsAre(HelpEntry{"a <b> \"c\" &lt;", "x.html", 0}));
}

TEST(HelpContents, ObjectsWithoutNameAreSkipped) {
  const std::string properties =
      "<OBJECT type=\"text/site properties\"><param name=\"Window\" value=\"main\"></OBJECT>";
  EXPECT_THAT(ReadHelpContents(properties + "<UL>" + Object("A", "a.html") + "</UL>"),
              ElementsAre(HelpEntry{"A", "a.html", 0}));
}

TEST(HelpContents, NothingOfOneObjectIsLeftForTheNext) {
  const std::string nameless = "<object><param name=\"Local\" value=\"lost.html\"></object>";
  const std::string placeless = "<object><param name=\"Name\" value=\"B\"></object>";
  EXPECT_THAT(ReadHelpContents("<ul>" + nameless + placeless + "</ul>"), ElementsAre(HelpEntry{"B", "", 0}));
}

TEST(HelpContents, BrokenTextGivesNoEntriesAndNoCrash) {
  for (const char* text : {"", "<", "<ul", "no tags at all", "</ul></ul></ul>", "<param name=\"Name\" value=\"x",
                           "<object><param name=\"Name\" value=></object>", "<><><>", "<object></object>"})
    EXPECT_THAT(ReadHelpContents(text), IsEmpty()) << text;
}

TEST(HelpContents, MoreEndsThanBeginningsStayOutermost) {
  EXPECT_THAT(ReadHelpContents("</ul></ul>" + Object("A", "a.html")), ElementsAre(HelpEntry{"A", "a.html", 0}));
}

}  // namespace
}  // namespace kestrin::ui::help
