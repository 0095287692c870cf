// SPDX-License-Identifier: MIT
#include "ui/help/HelpSearch.h"

#include <gmock/gmock.h>

#include "FakeHelp.h"

namespace kestrin::ui::help {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

QStringList Paths(const std::vector<HelpSearch::Hit>& hits) {
  QStringList paths;
  for (const HelpSearch::Hit& hit : hits) paths.append(hit.path);
  return paths;
}

class HelpSearchTest : public ::testing::Test {
 protected:
  HelpSearchTest() {
    m_help.Add("a.html", "Boot", "<p>The <b>saber</b> hums. A saber is no toy.</p>");
    m_help.Add("b.html", "Saber", "<p>Nothing about anything.</p>");
    m_help.Add("c.html", "Volume", "<p>One Saber, &lt;loud&gt;.</p><p class=\"hidden\">hum</p>");
  }

  QStringList Find(const char* text) { return Paths(m_search.Find(HelpSearch::WordsOf(text))); }

  testing::FakeHelp m_help;
  HelpSearch m_search{m_help};
};

TEST_F(HelpSearchTest, WordsAreLettersAndDigitsWithoutRepetition) {
  EXPECT_EQ(HelpSearch::WordsOf("  Not a (valid) file, FILE 12! "), QStringList({"not", "a", "valid", "file", "12"}));
  EXPECT_EQ(HelpSearch::WordsOf(" .,! "), QStringList());
}

TEST_F(HelpSearchTest, TitlesComeFirstThenPagesThatSayItMoreOften) {
  EXPECT_EQ(Find("saber"), QStringList({"b.html", "a.html", "c.html"}));
}

TEST_F(HelpSearchTest, WordsSideBySideCountMoreThanManyApart) {
  m_help.Add("d.html", "Much", "<p>red red red blade blade blade</p>");
  m_help.Add("e.html", "Little", "<p>Here is filler. A Red\nBlade once.</p>");
  EXPECT_EQ(Find("blade red"), QStringList({"d.html", "e.html"}));
  EXPECT_EQ(Find("a red blade"), QStringList({"e.html", "d.html"}));
}

TEST_F(HelpSearchTest, EveryWordMustBeOnThePage) {
  EXPECT_EQ(Find("saber hum loud"), QStringList({"c.html"}));
  EXPECT_EQ(Find("saber nowhere"), QStringList());
}

TEST_F(HelpSearchTest, LetterCaseDoesNotCountAndPartsOfWordsDo) {
  EXPECT_EQ(Find("TOY"), QStringList({"a.html"}));
  EXPECT_EQ(Find("volu"), QStringList({"c.html"}));
}

TEST_F(HelpSearchTest, TagsAreNotText) {
  EXPECT_EQ(Find("hidden"), QStringList());
  EXPECT_EQ(Find("class"), QStringList());
}

TEST_F(HelpSearchTest, NoWordsFindNothing) { EXPECT_THAT(m_search.Find({}), IsEmpty()); }

TEST_F(HelpSearchTest, HitTellsTitleAndTextAround) {
  const auto hits = m_search.Find({"toy"});
  ASSERT_EQ(hits.size(), 1U);
  EXPECT_EQ(hits.front().title, "Boot");
  EXPECT_EQ(hits.front().extract, "Boot The saber hums. A saber is no toy.");
}

TEST_F(HelpSearchTest, LongTextIsCutAtBlanksAroundTheWord) {
  QString body;
  for (int i = 0; i < 100; ++i) body += QStringLiteral("filler ");
  m_help.Add("d.html", "Long", "<p>" + (body + "needle " + body).toStdString() + "</p>");
  const auto hits = m_search.Find({"needle"});
  ASSERT_EQ(hits.size(), 1U);
  const QString extract = hits.front().extract;
  EXPECT_TRUE(extract.startsWith("... filler ")) << extract.toStdString();
  EXPECT_TRUE(extract.contains(" needle ")) << extract.toStdString();
  EXPECT_TRUE(extract.endsWith(" filler ...")) << extract.toStdString();
  EXPECT_LE(extract.size(), 120 + 8);
}

TEST_F(HelpSearchTest, HelpThatCannotBeReadHasNoHits) {
  testing::FakeHelp empty;
  empty.problem = "gone";
  EXPECT_THAT(HelpSearch(empty).Find({"saber"}), IsEmpty());
}

}  // namespace
}  // namespace kestrin::ui::help
