// SPDX-License-Identifier: MIT
#include "ui/help/HelpKey.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>
#include <vector>

#include "ui/kit/TopicOf.h"

namespace kestrin::ui::help {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

void Press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QKeyEvent press(QEvent::KeyPress, key, modifiers);
  QApplication::sendEvent(&widget, &press);
}

TEST(TopicOf, NearestWidgetWithATopicCounts) {
  QWidget window;
  QWidget panel(&window);
  QLineEdit inner(&panel);
  EXPECT_EQ(kit::TopicOf(&inner), kit::HelpContext::Overview);
  kit::SetHelpContext(window, kit::HelpContext::Main);
  EXPECT_EQ(kit::TopicOf(&inner), kit::HelpContext::Main);
  kit::SetHelpContext(panel, kit::HelpContext::Explorer);
  EXPECT_EQ(kit::TopicOf(&inner), kit::HelpContext::Explorer);
  kit::SetHelpContext(inner, kit::HelpContext::FileList);
  EXPECT_EQ(kit::TopicOf(&inner), kit::HelpContext::FileList);
  EXPECT_EQ(kit::TopicOf(&window), kit::HelpContext::Main);
}

TEST(TopicOf, NoWidgetHasTheOverview) { EXPECT_EQ(kit::TopicOf(nullptr), kit::HelpContext::Overview); }

TEST(TopicOf, TopicIsThePropertyThatFormsCanSet) {
  QWidget widget;
  widget.setProperty("helpContext", 1050);
  EXPECT_EQ(kit::TopicOf(&widget), kit::HelpContext::Memory);
}

class HelpKeyTest : public ::testing::Test {
 protected:
  HelpKeyTest() {
    kit::SetHelpContext(m_window, kit::HelpContext::Slots);
    QObject::connect(&m_key, &HelpKey::topicRequested,
                     [this](kit::HelpContext context) { m_asked.push_back(context); });
  }

  HelpKey m_key;
  QWidget m_window;
  QLineEdit m_inner{&m_window};
  std::vector<kit::HelpContext> m_asked;
};

TEST_F(HelpKeyTest, F1AsksForTheTopicOfTheControlOnce) {
  Press(m_inner, Qt::Key_F1);
  EXPECT_THAT(m_asked, ElementsAre(kit::HelpContext::Slots));
}

TEST_F(HelpKeyTest, OtherKeysAskForNothing) {
  Press(m_inner, Qt::Key_F2);
  Press(m_inner, Qt::Key_F1, Qt::ShiftModifier);
  Press(m_inner, Qt::Key_F1, Qt::ControlModifier);
  EXPECT_THAT(m_asked, IsEmpty());
}

TEST_F(HelpKeyTest, OtherKeysReachTheirControl) {
  QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
  QApplication::sendEvent(&m_inner, &press);
  EXPECT_EQ(m_inner.text(), "a");
}

TEST_F(HelpKeyTest, KeyHeldDownAsksOnce) {
  Press(m_inner, Qt::Key_F1);
  QKeyEvent repeated(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, QString(), true);
  QApplication::sendEvent(&m_inner, &repeated);
  EXPECT_THAT(m_asked, ElementsAre(kit::HelpContext::Slots));
}

}  // namespace
}  // namespace kestrin::ui::help
