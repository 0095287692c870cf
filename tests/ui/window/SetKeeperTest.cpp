// SPDX-License-Identifier: MIT
// A set that is not saved outlives the program, whatever ends it.

#include "ui/window/SetKeeper.h"

#include <QSlider>
#include <QTest>
#include <algorithm>
#include <future>

#include "core/sound/unsaved/UnsavedFolder.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using core::sound::UnsavedFolder;
using LeftSet = ui::kit::Dialogs::LeftSet;
using Unsaved = ui::kit::Dialogs::Unsaved;

class SetKeeper : public MainFixture {
 protected:
  [[nodiscard]] fs::path Place() const { return data / UnsavedFolder::kFolderName; }
  /// What the file says that is kept; "" when there is none. Files that are being written do not count.
  [[nodiscard]] std::string Kept() const {
    std::string content;
    std::error_code gone;
    // It is written on another thread, which may take it away at any moment.
    for (fs::directory_iterator entry(Place(), gone), end; !gone && entry != end; entry.increment(gone)) {
      if (entry->path().extension() != ".lscfg") continue;
      std::ifstream file(entry->path(), std::ios::binary);
      content.append(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    return content;
  }
  [[nodiscard]] bool KeepsSoon(const std::string& text) {
    return Until([&] { return Kept().find(text) != std::string::npos; });
  }
  [[nodiscard]] bool ForgetsSoon() {
    return Until([this] { return Kept().empty(); });
  }
  /// Opens the complete set and moves the volume of its first swing.
  void OpenAndChange(int volume = 40) {
    mine = CompleteSet();
    saved = ReadBytes(mine);
    window->OpenSet(mine);
    SetVolume(volume);
  }
  void SetVolume(int volume) {
    auto& list = Find<QListView>("MtFileList");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.visualRect(list.model()->index(0, 0)).center());
    Find<QSlider>("VolSlider").setValue(volume);
    ASSERT_TRUE(LabelText("SetLabel").endsWith(QString::fromUtf8("\u2022")));
  }
  [[nodiscard]] int Volume() {
    auto& list = Find<QListView>("MtFileList");
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                      list.visualRect(list.model()->index(0, 0)).center());
    return Find<QSlider>("VolSlider").value();
  }
  /// What a program leaves that is killed: its files as they are, its locks gone.
  void Kill() {
    std::map<fs::path, std::string> files;
    for (const auto& entry : fs::directory_iterator(Place())) files[entry.path()] = ReadBytes(entry.path());
    window.reset();
    for (const auto& [path, content] : files) WriteBytes(path, content);
  }
  /// As at a new start of the program: nothing of the last run is there.
  void Forget() {
    window.reset();
    agent.reset();
    std::destroy_at(&gate);
    std::construct_at(&gate, std::chrono::milliseconds(0));
  }
  /// Starts again; the person gives these answers.
  void StartAgain(std::deque<LeftSet> answers) {
    Forget();
    dialogs.leftSetAnswers = std::move(answers);
    Start();
    ASSERT_TRUE(Until([this] { return dialogs.leftSetAnswers.empty(); }));
  }
  /// The window is closed, and asks about the set.
  void Close(Unsaved answer) {
    dialogs.unsavedAnswers = {answer};
    window->close();
    ASSERT_TRUE(dialogs.unsavedAnswers.empty());
  }

  fs::path mine;
  std::string saved;
};

TEST_F(SetKeeper, KeepsNothingAsLongAsNothingIsUnsaved) {
  Start();
  window->OpenSet(CompleteSet());
  Tick("KeepTimer");
  window.reset();
  EXPECT_FALSE(fs::exists(Place()));
}

TEST_F(SetKeeper, KeepsAChangeApartFromTheSetsFile) {
  Start();
  OpenAndChange(40);
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  EXPECT_NE(Kept().find("UNSAVED CHANGES OF " + mine.string()), std::string::npos);
  EXPECT_EQ(ReadBytes(mine), saved);
}

TEST_F(SetKeeper, SteadyChangingDoesNotPutItOff) {
  Start();
  OpenAndChange();
  const auto& timer = Find<QTimer>("KeepTimer");
  EXPECT_TRUE(timer.isSingleShot());
  EXPECT_LT(timer.interval(), 2000);
  // Somebody pulls at the slider all the time.
  int volume = 40;
  EXPECT_TRUE(Until([&] {
    volume = volume == 99 ? 41 : volume + 1;
    Find<QSlider>("VolSlider").setValue(volume);
    return !Kept().empty();
  }));
}

TEST_F(SetKeeper, ForgetsWhatWasSaved) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Find<QAction>("SaveAction").trigger();
  EXPECT_TRUE(ForgetsSoon());
}

TEST_F(SetKeeper, ForgetsWhatWasTakenBack) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Find<QAction>("UndoAction").trigger();
  EXPECT_TRUE(ForgetsSoon());
  Find<QAction>("RedoAction").trigger();
  EXPECT_TRUE(KeepsSoon(" 40\r\n"));
}

TEST_F(SetKeeper, ForgetsWhatThePersonDoesNotWant) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Close(Unsaved::Discard);
  EXPECT_EQ(Kept(), "");
  StartAgain({});
  EXPECT_TRUE(dialogs.leftSetsAsked.empty());
}

TEST_F(SetKeeper, StaysWithASetThatThePersonGoesBackTo) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Close(Unsaved::GoBack);
  SetVolume(41);
  EXPECT_TRUE(KeepsSoon(" 41\r\n"));
  Close(Unsaved::Discard);
}

TEST_F(SetKeeper, BringsTheSetBackAsUnsavedChangesOfItsFile) {
  Start();
  OpenAndChange(40);
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  StartAgain({LeftSet::Open});
  ASSERT_EQ(dialogs.leftSetsAsked.size(), 1U);
  EXPECT_TRUE(
      dialogs.leftSetsAsked[0].question.startsWith("The set \"complete\" has changes that were not saved, from "));
  EXPECT_TRUE(dialogs.leftSetsAsked[0].advice.contains("offered again at the next start"));
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == QString::fromUtf8("complete \u2022"); }));
  EXPECT_EQ(Volume(), 40);
  EXPECT_EQ(ReadBytes(mine), saved);
  // It is saved to its own file, and then nothing is kept of it.
  Find<QAction>("SaveAction").trigger();
  EXPECT_NE(ReadBytes(mine), saved);
  EXPECT_TRUE(ForgetsSoon());
}

TEST_F(SetKeeper, BringsASetBackOfWhichSoundsAreGoneWithoutForgettingThem) {
  Start();
  OpenAndChange(40);
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  const fs::path impact = folder / "s6.lsu";
  fs::remove(impact);
  dialogs.listAnswers = {false};
  StartAgain({LeftSet::Open});
  ASSERT_TRUE(Until([this] { return dialogs.lists.size() == 1; }));
  EXPECT_EQ(dialogs.lists[0].lines, QStringList{Text(impact)});
  EXPECT_EQ(LabelText("SetLabel"), QString::fromUtf8("complete \u2022"));
  EXPECT_EQ(ReadBytes(mine), saved);
  SetVolume(41);
  ASSERT_TRUE(KeepsSoon(" 41\r\n"));
  EXPECT_NE(Kept().find(impact.string()), std::string::npos);
}

TEST_F(SetKeeper, KeepsWhatIsBroughtBackThroughTheNextCrashToo) {
  Start();
  OpenAndChange(40);
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  StartAgain({LeftSet::Open});
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == QString::fromUtf8("complete \u2022"); }));
  EXPECT_NE(Kept().find(" 40\r\n"), std::string::npos);
  Kill();
  StartAgain({LeftSet::Open});
  EXPECT_EQ(Volume(), 40);
  SetVolume(41);
  ASSERT_TRUE(KeepsSoon(" 41\r\n"));
  EXPECT_EQ(Kept().find(" 40\r\n"), std::string::npos) << "it has one file";
}

TEST_F(SetKeeper, OffersASetThatWasLeftAgainAtTheNextStart) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  StartAgain({LeftSet::Leave});
  EXPECT_EQ(LabelText("SetLabel"), "New set");
  window->close();
  EXPECT_NE(Kept(), "");
  StartAgain({LeftSet::Open});
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == QString::fromUtf8("complete \u2022"); }));
}

TEST_F(SetKeeper, ThrowsASetAwayThatNobodyWants) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  StartAgain({LeftSet::ThrowAway});
  EXPECT_EQ(Kept(), "");
  EXPECT_EQ(LabelText("SetLabel"), "New set");
  EXPECT_EQ(ReadBytes(mine), saved);
}

TEST_F(SetKeeper, OffersTheNextOneWhenTheFirstIsLeftAndTheOthersLaterWhenOneIsOpened) {
  const auto leave = [this](const std::string& origin, int hours) {
    fs::create_directories(Place());
    const fs::path file = Place() / ("unsaved-" + origin + ".lscfg");
    const std::string content = ReadBytes(CompleteSet());
    WriteBytes(file, content + "UNSAVED CHANGES OF " + (folder / (origin + ".lscfg")).string() +
                         "\r\nEND OF THE UNSAVED SET\r\n");
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(hours));
  };
  leave("third", 3);
  leave("first", 1);
  leave("second", 2);
  StartAgain({LeftSet::Leave, LeftSet::Open});
  ASSERT_EQ(dialogs.leftSetsAsked.size(), 2U);
  EXPECT_TRUE(dialogs.leftSetsAsked[0].question.contains("\"first\""));
  EXPECT_TRUE(dialogs.leftSetsAsked[1].question.contains("\"second\""));
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == QString::fromUtf8("second \u2022"); }));
  EXPECT_TRUE(fs::exists(Place() / "unsaved-first.lscfg"));
  EXPECT_TRUE(fs::exists(Place() / "unsaved-third.lscfg"));
}

TEST_F(SetKeeper, AsksBehindTheQuestionOfTheStartAndBeforeWhatIsToBeOpened) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  std::vector<std::string> order;
  dialogs.whileAsking = [&] {
    order.push_back(dialogs.leftSetsAsked.empty() ? "start" : "left");
    EXPECT_EQ(window->isVisible(), !dialogs.leftSetsAsked.empty());
    EXPECT_EQ(LabelText("SetLabel"), "New set") << "what is to be opened waits";
  };
  dialogs.leftSetAnswers = {LeftSet::Leave};
  Forget();
  Make("", false);
  dialogs.okAnswers = {true};
  window->OpenPath(mine);
  ASSERT_TRUE(window->StartUp());
  Show();
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == "complete"; }));
  EXPECT_EQ(order, (std::vector<std::string>{"start", "left"}));
  EXPECT_EQ(dialogs.asked.size(), 1U) << "whether to work offline is asked once";
  // Neither comes again by itself.
  window->hide();
  window->show();
  agent->Plug();
  Tick("NoticeTimer");
  Tick("GoOnlineTimer");
  agent->Unplug();
  Tick("NoticeTimer");
  QApplication::processEvents();
  EXPECT_EQ(order.size(), 2U);
}

TEST_F(SetKeeper, AsksBeforeWhatIsToBeOpenedAlsoWhenSomethingGoesOnMeanwhile) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  Kill();
  Forget();
  dialogs.whileAsking = [this] { EXPECT_EQ(LabelText("SetLabel"), "New set") << "what is to be opened waits"; };
  dialogs.leftSetAnswers = {LeftSet::Leave};
  Make();
  window->OpenPath(mine);
  ASSERT_TRUE(window->StartUp());
  {
    const ui::kit::CommandGate::Passage work(gate);
    Show();
    EXPECT_EQ(dialogs.leftSetAnswers.size(), 1U);
  }
  ASSERT_TRUE(Until([this] { return LabelText("SetLabel") == "complete"; }));
  EXPECT_TRUE(dialogs.leftSetAnswers.empty());
}

TEST_F(SetKeeper, DoesNotTakeWhatAnotherRunningWindowKeeps) {
  Start();
  OpenAndChange();
  ASSERT_TRUE(KeepsSoon(" 40\r\n"));
  EXPECT_TRUE(UnsavedFolder(Place(), disk).Find().empty());
}

TEST_F(SetKeeper, KeepsTheLatestWhenTheProgramIsToldToEnd) {
  Start();
  OpenAndChange(40);
  // Before the timer could.
  window->EndNow();
  ASSERT_TRUE(Until([this] { return window->IsOver(); }));
  window.reset();
  EXPECT_NE(Kept().find(" 40\r\n"), std::string::npos);
  StartAgain({LeftSet::Open});
  EXPECT_EQ(Volume(), 40);
}

TEST_F(SetKeeper, TellsOnceThatASetCannotBeKept) {
  WriteBytes(data / UnsavedFolder::kFolderName, "in the way");
  Start();
  OpenAndChange();
  ASSERT_TRUE(Until([this] { return LabelText("HelpLabel").startsWith("Unsaved changes would not survive a crash"); }));
  Find<QWidget>("HelpLabel").setProperty("text", "");
  SetVolume(41);
  Tick("KeepTimer");
  // It has tried again, and what came of it has arrived.
  const auto& fetching = *window->findChild<ui::window::SetKeeper*>()->findChild<QTimer*>("FetchTimer");
  ASSERT_TRUE(fetching.isActive());
  ASSERT_TRUE(Until([&fetching] { return !fetching.isActive(); }));
  EXPECT_FALSE(LabelText("HelpLabel").startsWith("Unsaved changes"));
  EXPECT_TRUE(dialogs.errors.empty());
  // It is there again as soon as there is room.
  fs::remove(data / UnsavedFolder::kFolderName);
  SetVolume(42);
  EXPECT_TRUE(KeepsSoon(" 42\r\n"));
}

TEST_F(SetKeeper, DoesNotFreezeTheWindowOnASlowDisk) {
  Start();
  OpenAndChange();
  std::promise<void> ready;
  std::shared_future<void> goOn = ready.get_future().share();
  // What is kept may be flushed once more when the test has seen it.
  const auto waits = std::make_shared<std::atomic<bool>>(false);
  disk.onFlush = [waits, goOn](const fs::path&) {
    *waits = true;
    goOn.wait();
    return std::error_code();
  };
  ASSERT_TRUE(Until([&waits] { return waits->load(); }));
  // The disk is still at it, and the window takes what the person does.
  SetVolume(55);
  EXPECT_EQ(Kept(), "");
  ready.set_value();
  EXPECT_TRUE(KeepsSoon(" 55\r\n"));
}

}  // namespace
}  // namespace kestrin::support
