// SPDX-License-Identifier: MIT
// What the desktop asks the open window to open.

#include <QMenu>
#include <QMessageBox>
#include <QTabBar>
#include <fstream>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using ui::kit::CommandGate;

class OpenPath : public MainFixture {
 protected:
  /// A set of that name.
  std::filesystem::path Set(const std::string& name) {
    SoundSet set(folder.Path());
    set.AddOneEach(100);
    return set.WriteConfiguration(name + ".lscfg");
  }
  [[nodiscard]] QString News() const { return LabelText("HelpLabel"); }
  static void Settle() {
    for (int round = 0; round < 3; ++round) QApplication::processEvents();
  }
};

TEST_F(OpenPath, OpensASetAtOnce) {
  Start();
  window->OpenPath(Set("one"));
  EXPECT_EQ(LabelText("SetLabel"), "one");
  window->OpenPath(Set("two"));
  Settle();
  EXPECT_EQ(LabelText("SetLabel"), "two");
  EXPECT_EQ(News(), "Press F1 for help");
}

TEST_F(OpenPath, ShowsAFolderInTheExplorerAndLeavesTheSet) {
  Start();
  const std::filesystem::path sounds = folder / "my sounds.lscfg";
  std::filesystem::create_directories(sounds);
  window->OpenPath(Set("one"));
  Settle();
  window->OpenPath(sounds);
  EXPECT_EQ(LabelText("FolderLabel"), Text(sounds));
  EXPECT_EQ(LabelText("SetLabel"), "one");
}

TEST_F(OpenPath, WaitsForTheWindowToBeThere) {
  Make();
  window->OpenPath(Set("one"));
  Settle();
  EXPECT_NE(LabelText("SetLabel"), "one");
  ASSERT_TRUE(window->StartUp());
  Show();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "one"; }));
}

TEST_F(OpenPath, AsksBeforeAnUnsavedSetIsLostAndOneAfterTheOther) {
  Start();
  window->OpenPath(CompleteSet());
  Settle();
  Find<QListView>("MtFileList").setFocus();
  Find<QListView>("MtFileList").setCurrentIndex(Find<QListView>("MtFileList").model()->index(0, 0));
  QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(&Find<QListView>("MtFileList"), &remove);
  ASSERT_TRUE(LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")));
  dialogs.unsavedAnswers = {ui::kit::Dialogs::Unsaved::GoBack, ui::kit::Dialogs::Unsaved::Discard};
  const std::filesystem::path second = Set("two");
  int asked = 0;
  dialogs.whileAsking = [&] {
    // Another one comes while the question about the first stands.
    if (++asked == 1) {
      window->OpenPath(second);
      Settle();
      EXPECT_EQ(dialogs.unsavedAsked.size(), 1U) << "one question at a time";
    }
  };
  window->OpenPath(Set("one"));
  EXPECT_TRUE(LabelText("SetLabel").startsWith("complete")) << "the first was declined";
  EXPECT_EQ(News(), "\"two.lscfg\" opens as soon as what goes on here has ended.");
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "two"; }));
  EXPECT_EQ(asked, 2);
}

TEST_F(OpenPath, WaitsWhileTheBoardIsTalkedToAndSaysSo) {
  Start();
  const std::filesystem::path one = Set("one");
  {
    const CommandGate::Passage passage(gate);
    window->OpenPath(one);
    Settle();
    EXPECT_NE(LabelText("SetLabel"), "one");
    EXPECT_EQ(News(), "\"one.lscfg\" opens as soon as what goes on here has ended.");
  }
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "one"; }));
}

TEST_F(OpenPath, WaitsForTheEndOfADownloadAndItsSheet) {
  Start();
  window->OpenPath(CompleteSet());
  Settle();
  const std::filesystem::path one = Set("one");
  When([this] { return Shown("DownloadFrame"); }, [&] { window->OpenPath(one); });
  Button("SendBtn").click();
  Settle();
  ASSERT_TRUE(Shown("DownloadFrame")) << "it says how the download has ended";
  EXPECT_EQ(LabelText("SetLabel"), "complete");
  Find<QPushButton>("CancelBtn").click();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "one"; }));
}

TEST_F(OpenPath, WaitsUntilAQuestionOfTheDesktopIsAnswered) {
  Start();
  QMessageBox question(window.get());
  question.setText("Really?");
  question.open();
  Settle();
  window->OpenPath(Set("one"));
  Settle();
  EXPECT_NE(LabelText("SetLabel"), "one");
  EXPECT_EQ(News(), "\"one.lscfg\" opens as soon as what goes on here has ended.");
  question.close();
  EXPECT_TRUE(Until([this] { return LabelText("SetLabel") == "one"; }));
}

TEST_F(OpenPath, ClosesAMenuThatMayBeAboutWhatGoes) {
  Start();
  QMenu menu(window.get());
  menu.addAction("Remove");
  menu.popup(QPoint(10, 10));
  ASSERT_EQ(QApplication::activePopupWidget(), &menu);
  window->OpenPath(Set("one"));
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(LabelText("SetLabel"), "one");
}

TEST_F(OpenPath, ClosesAMenuTogetherWithTheOneItCameFrom) {
  Start();
  QMenu menu(window.get());
  QMenu* const places = menu.addMenu("Move to");
  places->addAction("1");
  menu.popup(QPoint(10, 10));
  places->popup(QPoint(60, 10));
  ASSERT_EQ(QApplication::activePopupWidget(), places);
  window->OpenPath(Set("one"));
  EXPECT_FALSE(places->isVisible());
  EXPECT_FALSE(menu.isVisible());
}

TEST_F(OpenPath, GivesBackWhatTheWindowDidNotComeTo) {
  Start();
  QMessageBox question(window.get());
  question.open();
  Settle();
  window->OpenPath(Set("one"));
  window->OpenPath(Set("two"));
  window->EndNow();
  EXPECT_EQ(window->TakeUnopened(), (std::vector<std::filesystem::path>{folder / "one.lscfg", folder / "two.lscfg"}));
  EXPECT_TRUE(window->TakeUnopened().empty());
  EXPECT_NE(LabelText("SetLabel"), "one");
}

TEST_F(OpenPath, GivesBackNothingThatIsOpen) {
  Start();
  window->OpenPath(Set("one"));
  Settle();
  ASSERT_EQ(LabelText("SetLabel"), "one");
  EXPECT_TRUE(window->TakeUnopened().empty());
}

TEST_F(OpenPath, OpensNothingOnceTheEndIsCertain) {
  Start();
  bool ends = false;
  QObject::connect(window.get(), &ui::window::Main::ending, [&ends] { ends = true; });
  window->EndNow();
  EXPECT_TRUE(ends);
  window->OpenPath(Set("one"));
  Settle();
  EXPECT_NE(LabelText("SetLabel"), "one");
}

TEST_F(OpenPath, OpensLedSettingsOnTheirPage) {
  Start("id=512");
  Find<QTabBar>("PageTabs").setCurrentIndex(0);
  std::ofstream(folder / "blue.LDSET") << "nothing of the kind";
  window->OpenPath(folder / "blue.LDSET");
  Settle();
  EXPECT_EQ(Find<QTabBar>("PageTabs").currentIndex(), 1);
  // As by hand.
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"File is corrupted, could not read !"});
}

TEST_F(OpenPath, SaysWhatLedSettingsNeed) {
  Start();
  std::ofstream(folder / "blue.ldset") << "";
  window->OpenPath(folder / "blue.ldset");
  EXPECT_EQ(dialogs.errors,
            std::vector<QString>{"\"blue.ldset\" holds the settings of an LED driver, and no LED driver is "
                                 "connected.\nConnect it, then open the file again."});
  EXPECT_EQ(LabelText("SetLabel"), "New set");
}

TEST_F(OpenPath, ComesToTheFrontAlsoWhenMinimised) {
  Start();
  window->showMinimized();
  ASSERT_TRUE(window->isMinimized());
  window->ComeToFront("token 7");
  EXPECT_FALSE(window->isMinimized());
  EXPECT_TRUE(Until([this] { return window->isActiveWindow(); }));
  EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token 7");
  qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST_F(OpenPath, TheCaptionStaysAndTheSetsNameStandsAboveTheSlots) {
  Start();
  const std::filesystem::path longName = Set(std::string(180, 'n'));
  window->OpenPath(longName);
  Settle();
  const auto& label = Find<QLabel>("SetLabel");
  EXPECT_EQ(window->windowTitle(), "Corvent Kestrin Launcher v2.2.2");
  EXPECT_EQ(window->windowFilePath(), "");
  EXPECT_TRUE(label.text().contains(QChar(0x2026))) << "it is cut in the middle";
  EXPECT_TRUE(label.text().startsWith('n') && label.text().endsWith('n'));
  EXPECT_LE(label.fontMetrics().horizontalAdvance(label.text()), label.width());
  EXPECT_EQ(label.toolTip(), Text(longName));
  EXPECT_EQ(label.accessibleName(), QString(180, 'n'));
  const auto& slot = Find<QWidget>("BootFileList");
  EXPECT_LT(label.mapTo(window.get(), QPoint(0, label.height())).y(), slot.mapTo(window.get(), QPoint(0, 0)).y());
  window->resize(window->width() + 300, window->height());
  Settle();
  const auto longer = label.text().size();
  window->resize(window->width() - 300, window->height());
  Settle();
  EXPECT_LT(label.text().size(), longer) << "as much of it as there is room for";
}

}  // namespace
}  // namespace kestrin::support
