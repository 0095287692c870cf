// SPDX-License-Identifier: MIT
#include <QAccessible>
#include <QClipboard>
#include <QScrollBar>
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

class About : public MainFixture {
 protected:
  void Open() { Find<QAction>("AboutAction").trigger(); }
  /// What stands beside the names, in order.
  [[nodiscard]] QStringList Rows() const {
    QStringList rows;
    for (const QLabel* const label : window->findChildren<QLabel*>("AboutText")) rows.append(label->accessibleName());
    return rows;
  }
};

TEST_F(About, TellsVersionLicencePlacesAndLibraries) {
  Start();
  EXPECT_FALSE(Shown("AboutFrame"));
  EXPECT_EQ(Find<QAction>("AboutAction").text().remove('&'), "About Kestrin Launcher ...");
  EXPECT_TRUE(Find<QAction>("AboutAction").isVisible());
  Open();
  EXPECT_TRUE(Shown("AboutFrame"));
  EXPECT_EQ(Find<QWidget>("AboutFrame").accessibleName(), "About Kestrin Launcher");
  EXPECT_EQ(LabelText("AboutVersion"), "Version 9.8.7");
  EXPECT_EQ(LabelText("AboutLicence"), "A licence");
  EXPECT_EQ(Rows(), (QStringList{"Program: /opt/kestrin", "Your data: nowhere", "libone: 1.2 with libtwo/3",
                                 "libthree: tells no version"}));
}

TEST_F(About, CanBeCopiedAsOneText) {
  Start();
  Open();
  const QString before = LabelText("CopyAboutHint");
  QGuiApplication::clipboard()->clear();
  Find<QPushButton>("CopyAboutBtn").click();
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            "Kestrin Launcher 9.8.7\nA licence\n\nSystem\n  An ?odd system\n\nLibraries\n  libone 1.2 with libtwo/3\n"
            "  libthree\n\nWhere things lie\n  Program: /opt/kestrin\n  Your data: -\n");
  EXPECT_NE(LabelText("CopyAboutHint"), before);
}

TEST_F(About, ClosesByEscapeAndByItsButtonAndGivesTheKeyboardBack) {
  Start();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  QWidget& list = Find<QWidget>("MtFileList");
  list.setFocus();
  for (const bool byKey : {true, false}) {
    Open();
    EXPECT_EQ(QApplication::focusWidget(), &Find<QWidget>("CloseAboutBtn"));
    EXPECT_FALSE(Find<QWidget>("ToolRow").isEnabled());
    // Tab stays on the sheet.
    for (const char* const next : {"CopyAboutBtn", "CloseAboutBtn"}) {
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
      EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
    }
    if (byKey)
      QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    else
      Find<QPushButton>("CloseAboutBtn").click();
    EXPECT_FALSE(Shown("AboutFrame"));
    EXPECT_TRUE(Find<QWidget>("ToolRow").isEnabled());
    EXPECT_EQ(QApplication::focusWidget(), &list);
  }
}

TEST_F(About, IsAsLongAsItIsHoweverOftenItIsOpened) {
  Start();
  Open();
  QApplication::processEvents();
  const int height = Find<QWidget>("AboutFrame").height();
  const QStringList rows = Rows();
  for (int i = 0; i < 3; ++i) {
    Find<QPushButton>("CloseAboutBtn").click();
    Open();
    QApplication::processEvents();
  }
  EXPECT_EQ(Find<QWidget>("AboutFrame").height(), height);
  EXPECT_EQ(Rows(), rows);
}

TEST_F(About, ScrollsByKeyInALowWindow) {
  for (int i = 0; i < 40; ++i) about.libraries.push_back("lib" + std::to_string(i) + " 1");
  Start();
  window->resize(960, 640);
  Open();
  QApplication::processEvents();
  for (const char* const name : {"AboutFrame", "CloseAboutBtn", "CopyAboutBtn", "AboutCaption"}) {
    const auto& widget = Find<QWidget>(name);
    EXPECT_TRUE(window->rect().contains(QRect(widget.mapTo(window.get(), QPoint(0, 0)), widget.size()))) << name;
  }
  const QScrollBar& bar = *Find<QAbstractScrollArea>("AboutShelf").verticalScrollBar();
  ASSERT_GT(bar.maximum(), 0);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
  EXPECT_GT(bar.value(), 0);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(About, IsNotOfferedWhereNobodyKnows) {
  hasAbout = false;
  Start();
  EXPECT_FALSE(Find<QAction>("AboutAction").isVisible());
}

}  // namespace
}  // namespace kestrin::support
