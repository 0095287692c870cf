// SPDX-License-Identifier: MIT
#include "ui/help/HelpWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPalette>
#include <QTextBlock>
#include <QToolButton>
#include <QTreeWidget>
#include <QUrl>
#include <QWindow>

#include "FakeHelp.h"
#include "platform/desktop/CompiledHelp.h"
#include "ui/help/HelpBrowser.h"
#include "ui/help/HelpTopics.h"

namespace kestrin::ui::help {
namespace {

using platform::desktop::CompiledHelp;

/// The window over the real help file.
class HelpWindowTest : public ::testing::Test {
 protected:
  template <typename Control>
  Control& Get(const char* name) {
    auto* const control = m_window.findChild<Control*>(name);
    if (control == nullptr) throw std::logic_error(name);
    return *control;
  }

  HelpBrowser& Page() { return Get<HelpBrowser>("helpPage"); }
  QString Place() { return Page().source().toString(); }
  QString Text() { return Page().toPlainText(); }

  /// Presses the keys of a shortcut of the window.
  void Trigger(const QKeySequence& keys) {
    for (QAction* action : m_window.actions()) {
      if (action->shortcut() == keys) return action->trigger();
    }
    FAIL() << keys.toString().toStdString();
  }

  /// Clicks the first link on the page that leads to the place.
  void ClickLink(const QString& place) {
    QTextCursor cursor(Page().document());
    while (cursor.charFormat().anchorHref() != place && !cursor.atEnd())
      cursor.movePosition(QTextCursor::NextCharacter);
    ASSERT_FALSE(cursor.atEnd()) << place.toStdString();
    Page().setTextCursor(cursor);
    Page().ensureCursorVisible();
    const QPointF point = Page().cursorRect(cursor).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent click(type, point, Page().viewport()->mapToGlobal(point), Qt::LeftButton, Qt::LeftButton,
                        Qt::NoModifier);
      QApplication::sendEvent(Page().viewport(), &click);
    }
  }

  CompiledHelp m_help{KESTRIN_HELP_FILE};
  HelpWindow m_window{m_help};
};

TEST_F(HelpWindowTest, OpensAtTheFirstPage) {
  EXPECT_EQ(Place(), "overview.html");
  EXPECT_TRUE(Text().contains("What the program does"));
  EXPECT_FALSE(Get<QToolButton>("helpBack").isEnabled());
  EXPECT_FALSE(Get<QToolButton>("helpForward").isEnabled());
}

TEST_F(HelpWindowTest, ShowsTheTopicOfEveryContextNumber) {
  for (const HelpTopic& topic : HelpTopics()) {
    m_window.ShowTopic(topic.context);
    EXPECT_EQ(Place(), topic.place);
    EXPECT_FALSE(Text().contains("This page is missing")) << topic.place;
  }
  EXPECT_TRUE(m_window.isVisible());
}

TEST_F(HelpWindowTest, ScrollsToThePlaceOnThePage) {
  m_window.resize(960, 400);
  m_window.ShowTopic(kit::HelpContext::Slots);
  EXPECT_EQ(Page().cursorForPosition(QPoint(2, 2)).position(), 0);
  m_window.ShowTopic(kit::HelpContext::Lockup);
  const QString top = Page().cursorForPosition(QPoint(40, 8)).block().text();
  EXPECT_EQ(top, "Lock-up");
}

TEST_F(HelpWindowTest, UnknownNumberShowsTheFirstPage) {
  m_window.ShowTopic(kit::HelpContext::Memory);
  m_window.ShowTopic(static_cast<kit::HelpContext>(77));
  EXPECT_EQ(Place(), "overview.html");
}

TEST_F(HelpWindowTest, BackAndForwardFollowWhatWasRead) {
  m_window.ShowTopic(kit::HelpContext::Memory);
  m_window.ShowTopic(kit::HelpContext::Preview);
  Get<QToolButton>("helpBack").click();
  EXPECT_EQ(Place(), "memory.html");
  Trigger(Qt::ALT | Qt::Key_Left);
  EXPECT_EQ(Place(), "overview.html");
  EXPECT_FALSE(Get<QToolButton>("helpBack").isEnabled());
  Get<QToolButton>("helpForward").click();
  EXPECT_EQ(Place(), "memory.html");
  Trigger(Qt::ALT | Qt::Key_Right);
  EXPECT_EQ(Place(), "preview.html");
  Get<QToolButton>("helpFirst").click();
  EXPECT_EQ(Place(), "overview.html");
}

TEST_F(HelpWindowTest, ContentsLeadToEveryPageAndFollowIt) {
  auto& contents = Get<QTreeWidget>("helpContents");
  QTreeWidgetItem* const group = contents.topLevelItem(3);
  ASSERT_NE(group, nullptr);
  ASSERT_EQ(group->text(0), "Putting a set together");
  ASSERT_EQ(group->childCount(), 8);
  emit contents.itemClicked(group->child(2), 0);
  EXPECT_EQ(Place(), "slots.html");
  EXPECT_EQ(contents.currentItem(), group->child(2));
  m_window.ShowTopic(kit::HelpContext::Lockup);
  EXPECT_EQ(contents.currentItem(), group->child(2)) << "a place on the page belongs to the page's line";
  emit contents.itemClicked(group, 0);
  EXPECT_EQ(Place(), "slots.html#lockup") << "a heading leads nowhere";
}

TEST_F(HelpWindowTest, SearchListsPagesAndMarksTheWords) {
  auto& results = Get<QListWidget>("helpResults");
  Get<QLineEdit>("helpSearch").setText("Memory check error");
  ASSERT_EQ(results.count(), 2) << "the pages about the download and about messages";
  EXPECT_EQ(Get<QLabel>("helpResultCount").text(), "2 pages");
  emit results.itemActivated(results.item(0));
  EXPECT_TRUE(Text().contains("Memory check error"));
  EXPECT_GE(Page().extraSelections().size(), 3);
  for (const auto& mark : Page().extraSelections()) {
    const QString word = mark.cursor.selectedText().toLower();
    EXPECT_TRUE(word == "memory" || word == "check" || word == "error") << word.toStdString();
  }
}

TEST_F(HelpWindowTest, EnterShowsTheFirstResult) {
  auto& search = Get<QLineEdit>("helpSearch");
  search.setText("plugdev");
  QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
  QApplication::sendEvent(&search, &enter);
  EXPECT_EQ(Place(), "permissions.html");
  EXPECT_EQ(Page().extraSelections().size(), 2) << "once in the text and once in the line to type";
}

TEST_F(HelpWindowTest, EnterWithoutResultStaysOnThePage) {
  auto& search = Get<QLineEdit>("helpSearch");
  search.setText("zzzz");
  emit search.returnPressed();
  EXPECT_EQ(Place(), "overview.html");
  EXPECT_TRUE(Get<QLabel>("helpResultCount").text().startsWith("No page"));
}

TEST_F(HelpWindowTest, EmptySearchShowsTheContentsAgainWithoutMarks) {
  m_window.show();
  auto& search = Get<QLineEdit>("helpSearch");
  search.setText("volume");
  emit search.returnPressed();
  EXPECT_TRUE(Get<QListWidget>("helpResults").isVisible());
  EXPECT_GT(Page().extraSelections().size(), 0);
  search.clear();
  EXPECT_TRUE(Get<QTreeWidget>("helpContents").isVisible());
  EXPECT_EQ(Page().extraSelections().size(), 0);
}

TEST_F(HelpWindowTest, ControlFGoesToTheSearch) {
  m_window.ShowTopic(kit::HelpContext::Memory);
  Trigger(Qt::CTRL | Qt::Key_F);
  EXPECT_EQ(m_window.focusWidget(), &Get<QLineEdit>("helpSearch"));
}

TEST_F(HelpWindowTest, EscapeClosesTheWindow) {
  m_window.ShowTopic(kit::HelpContext::Memory);
  ASSERT_TRUE(m_window.isVisible());
  Trigger(Qt::Key_Escape);
  EXPECT_FALSE(m_window.isVisible());
}

TEST_F(HelpWindowTest, EscapeLeavesTheSearchBeforeItClosesTheWindow) {
  m_window.ShowTopic(kit::HelpContext::Memory);
  Get<QLineEdit>("helpSearch").setText("memory");
  ASSERT_TRUE(Get<QListWidget>("helpResults").isVisible());
  Trigger(Qt::Key_Escape);
  EXPECT_TRUE(m_window.isVisible());
  EXPECT_EQ(Get<QLineEdit>("helpSearch").text(), "");
  EXPECT_FALSE(Get<QListWidget>("helpResults").isVisible());
  EXPECT_EQ(Place(), "memory.html") << "the page stays";
  Trigger(Qt::Key_Escape);
  EXPECT_FALSE(m_window.isVisible());
}

TEST_F(HelpWindowTest, LinksStayInsideTheHelp) {
  Page().setSource(QUrl("slots.html"));
  Page().setSource(QUrl("#idle"));
  EXPECT_EQ(Place(), "slots.html#idle");
  for (const char* outside :
       {"https://example.org/x.html", "file:///etc/passwd", "mailto:a@example.org", "//host/x.html"}) {
    Page().setSource(QUrl(outside));
    EXPECT_EQ(Place(), "slots.html#idle") << outside;
  }
}

TEST_F(HelpWindowTest, ClickedLinkLeadsToItsPlace) {
  m_window.ShowTopic(kit::HelpContext::LedFrame);
  ClickLink("#picker");
  EXPECT_EQ(Place(), "led.html#picker");
  m_window.ShowTopic(kit::HelpContext::Main);
  ClickLink("motion.html");
  EXPECT_EQ(Place(), "motion.html");
  Get<QToolButton>("helpBack").click();
  EXPECT_EQ(Place(), "window.html");
}

TEST_F(HelpWindowTest, MissingPageSaysSo) {
  Page().ShowPlace("gone.html");
  EXPECT_TRUE(Text().contains("This page is missing"));
  EXPECT_TRUE(Text().contains("gone.html"));
}

TEST_F(HelpWindowTest, PageFollowsTheColoursOfTheWindow) {
  m_window.ShowTopic(kit::HelpContext::Download);
  m_window.resize(960, 640);
  for (const auto& [base, text] : {std::pair(QColor(Qt::black), QColor(Qt::white)), {Qt::white, Qt::black}}) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    m_window.setPalette(palette);
    EXPECT_EQ(Place(), "download.html");
    // A shade between the two is behind the heads of the tables.
    const QString shade = base == QColor(Qt::black) ? "#141414" : "#ebebeb";
    EXPECT_TRUE(Page().document()->defaultStyleSheet().contains(shade)) << shade.toStdString();
    EXPECT_TRUE(Page().toHtml().contains(shade)) << shade.toStdString();
  }
}

TEST_F(HelpWindowTest, ControlsHaveNamesForPeopleWhoHearThem) {
  for (const char* name :
       {"helpBack", "helpForward", "helpFirst", "helpSearch", "helpContents", "helpResults", "helpPage"})
    EXPECT_FALSE(Get<QWidget>(name).accessibleName().isEmpty()) << name;
}

/// Counts how often a window was locked by a dialog, less how often it was let go.
class LockCounter : public QObject {
 public:
  int locked = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::WindowBlocked) ++locked;
    if (event->type() == QEvent::WindowUnblocked) --locked;
    return false;
  }
};

TEST_F(HelpWindowTest, CanBeUsedWhileADialogWaits) {
  m_window.winId();
  LockCounter lock;
  m_window.windowHandle()->installEventFilter(&lock);
  m_window.ShowTopic(kit::HelpContext::Memory);

  auto dialog = std::make_unique<QDialog>();
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->show();
  ASSERT_EQ(lock.locked, 1) << "the dialog locks a window that has nothing to do with it";
  m_window.ShowTopic(kit::HelpContext::UpdateForm);
  EXPECT_TRUE(m_window.isVisible());
  EXPECT_EQ(lock.locked, 0);

  dialog.reset();
  m_window.ShowTopic(kit::HelpContext::Memory);
  EXPECT_TRUE(m_window.isVisible());
  EXPECT_EQ(lock.locked, 0);
  m_window.windowHandle()->removeEventFilter(&lock);
}

TEST(HelpWindowWithoutHelp, SaysWhichFileIsMissingAndWhereItBelongs) {
  const CompiledHelp help("/nowhere at all/kestrinusb.chm");
  HelpWindow window(help);
  window.ShowTopic(kit::HelpContext::Memory);
  const QString text = window.findChild<HelpBrowser*>("helpPage")->toPlainText();
  EXPECT_TRUE(text.contains("kestrinusb.chm"));
  EXPECT_TRUE(text.contains("/nowhere at all"));
  EXPECT_FALSE(window.findChild<QLineEdit*>("helpSearch")->isEnabled());
  EXPECT_FALSE(window.findChild<QTreeWidget*>("helpContents")->isVisible());
}

TEST(HelpWindowWithoutHelp, NamesWithMarkupAreShownAsTheyAre) {
  testing::FakeHelp help;
  help.problem = "The file <b>x</b> & co is missing.";
  HelpWindow window(help);
  EXPECT_TRUE(window.findChild<HelpBrowser*>("helpPage")->toPlainText().contains("The file <b>x</b> & co is missing."));
}

}  // namespace
}  // namespace kestrin::ui::help
