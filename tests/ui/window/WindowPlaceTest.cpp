// SPDX-License-Identifier: MIT
#include "ui/window/WindowPlace.h"

#include <QScreen>

#include "platform/archive/ZipArchives.h"
#include "platform/audio/SystemAudioTools.h"
#include "ui/kit/Theme.h"
#include "ui/window/MainFixture.h"

namespace kestrin::ui::window {
namespace {

struct PlaceRow {
  const char* what;
  QRect wanted;
  QRect room;
  QRect place;
};

TEST(WindowPlace, IsWithinTheRoomThatThereIs) {
  const QRect room(0, 30, 1366, 700);
  const PlaceRow rows[] = {
      {"fits", {10, 40, 900, 600}, room, {10, 40, 900, 600}},
      {"as large as the room", room, room, room},
      {"too wide", {10, 40, 1500, 600}, room, {0, 40, 1366, 600}},
      {"too tall", {10, 40, 900, 760}, room, {10, 30, 900, 700}},
      {"too far right and down", {1000, 500, 900, 600}, room, {466, 130, 900, 600}},
      {"on a screen that is gone", {3000, -800, 900, 600}, room, {466, 30, 900, 600}},
      {"left of the room", {-50, 0, 900, 600}, room, {0, 30, 900, 600}},
  };
  for (const PlaceRow& row : rows) EXPECT_TRUE(WindowPlace::Within(row.wanted, row.room) == row.place) << row.what;
}

class WindowOnTheScreen : public support::MainFixture {
 protected:
  WindowOnTheScreen() {
    audio = &m_tools;
    archives = &m_zips;
  }
  // The style asks for the room that it needs.
  void SetUp() override {
    kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), kit::ColorScheme::Light);
  }
  [[nodiscard]] static QRect Room() { return QGuiApplication::primaryScreen()->availableGeometry(); }

 private:
  platform::audio::SystemAudioTools m_tools;
  platform::archive::ZipArchives m_zips{disk};
};

TEST_F(WindowOnTheScreen, FirstSizeIsNotLargerThanTheScreenLeaves) {
  Start();
  EXPECT_LE(window->frameGeometry().width(), Room().width());
  EXPECT_LE(window->frameGeometry().height(), Room().height());
  // As large as it would like to be where there is room.
  EXPECT_GT(window->width(), std::min(WindowPlace::kFirstSize.width(), Room().width()) - 20);
}

TEST_F(WindowOnTheScreen, ALargerSizeFromAnotherScreenIsMadeToFit) {
  {
    QWidget other;
    other.setGeometry(3000, 2000, 2400, 1300);
    settings.setValue("windowGeometry", other.saveGeometry());
  }
  Start();
  EXPECT_TRUE(Room().contains(window->geometry())) << window->width() << " x " << window->height();
}

TEST_F(WindowOnTheScreen, ASmallerSizeComesBackAsItWas) {
  const QRect place(8, 44, 788, 590);
  Start();
  window->setGeometry(place);
  EXPECT_TRUE(window->close());
  window.reset();
  Make();
  EXPECT_EQ(window->geometry(), place);
}

TEST_F(WindowOnTheScreen, CanBeAsSmallAsAScreenOf800By600Leaves) {
  for (const char* const board : {"id=65535", "id=4095"}) {
    window.reset();
    Start(board);
    window->OpenSet(CompleteSet());
    EXPECT_LE(window->minimumSizeHint().width(), 800) << board;
    EXPECT_LE(window->minimumSizeHint().height(), 600 - 40) << board;
  }
  window.reset();
  StartOffline();
  EXPECT_LE(window->minimumSizeHint().width(), 800);
  EXPECT_LE(window->minimumSizeHint().height(), 600 - 40);
}

TEST_F(WindowOnTheScreen, PanelsFitIntoTheSmallestWindow) {
  Start("id=65535");
  window->OpenSet(CompleteSet());
  window->resize(800, 560);
  Button("ConfigBtn").click();
  QApplication::processEvents();
  ASSERT_EQ(window->size(), QSize(800, 560));
  const auto& panel = Find<QWidget>("ConfigFrame");
  EXPECT_TRUE(window->rect().contains(QRect(panel.mapTo(window.get(), QPoint(0, 0)), panel.size())));
  EXPECT_GE(panel.height(), panel.sizeHint().height());
}

}  // namespace
}  // namespace kestrin::ui::window
