// SPDX-License-Identifier: MIT
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <algorithm>
#include <map>
#include <optional>

#include "support/EventLoopTurns.h"
#include "support/ScriptedTransfer.h"
#include "ui/window/FoldersWithFonts.h"
#include "ui/window/FontUpdate.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

namespace fs = std::filesystem;
using Unsaved = ui::kit::Dialogs::Unsaved;

constexpr const char* kFinished = "Update finished. New fonts installed successfully.";

/// The real window with the real dialog, over a server that answers at once.
class UpdateWindow : public MainFixture {
 protected:
  UpdateWindow() {
    updateDialog = &fontUpdate;
    transfer.respond = [this](const ScriptedTransfer::Request& request) { return Respond(request.body); };
  }
  ~UpdateWindow() override {
    // Before what it shows its dialog with.
    window.reset();
  }

  ScriptedTransfer::Answer Respond(const std::string& body) {
    const auto text = [](const std::string& payload) {
      return ScriptedTransfer::Whole("status:OK\r\nclientv:1" + payload);
    };
    if (body == "svc=gct&did=4B535401") {
      std::string payload;
      for (const std::string& item : catalogue) payload += "\r\n" + item;
      return text(payload + "\r\n");
    }
    if (body.starts_with("svc=fqr&did=4B535401&fid=") && !body.ends_with("="))
      return text(
          "\r\nBOOT\r\nboot.lsu\r\n 100\r\nPWRON\r\n\r\n 0\r\nPWROFF\r\n\r\n 0\r\nIDLE\r\n\r\n 0\r\nMOTION-0\r\n"
          "IMPACT-0\r\nLOCKUP-0");
    if (body.starts_with("svc=fqr")) return text("");
    return ScriptedTransfer::Whole(sound);
  }

  [[nodiscard]] bool IsOpen() const {
    const auto* const form = window->findChild<QDialog*>("updateForm");
    return form != nullptr && form->isVisible();
  }
  [[nodiscard]] bool HasEnded() const { return IsOpen() && Find<QWidget>("formButtonBackground2").isVisible(); }
  /// Presses the button; once the update has ended, OK.
  void UpdateAndConfirm() {
    When([this] { return HasEnded(); },
         [this] {
           title = LabelText("formTitle");
           element = LabelText("updateElement");
           Find<QPushButton>("formButtonBackground2").click();
         });
    Button("UpdateBtn").click();
  }

  ScriptedTransfer transfer;
  fs::path fonts = folder / "fonts";
  ui::window::FontUpdate fontUpdate{transfer, "fonts.example", fonts, disk, gate};
  std::vector<std::string> catalogue = {"Night"};
  std::string sound = SoundFileBytes(SomeSamples(100));
  QString title;
  QString element;
};

TEST_F(UpdateWindow, FetchesANewFontAndOpensItAtOnce) {
  Start("serial=4B535401");
  EXPECT_FALSE(IsOpen());
  dialogs.okAnswers = {true};
  UpdateAndConfirm();
  EXPECT_EQ(title, "Success");
  EXPECT_EQ(element, kFinished);
  EXPECT_FALSE(IsOpen());
  EXPECT_FALSE(gate.IsBusy());
  ASSERT_EQ(dialogs.asked.size(), 1U);
  EXPECT_EQ(dialogs.asked[0].question, "The new font \"Night\" is on this computer. Open it now?");
  EXPECT_EQ(ReadBytes(fonts / "Night" / "boot.lsu"), sound);
  EXPECT_EQ(LabelText("SetLabel"), "Night");
  EXPECT_EQ(Find<QListView>("BootFileList").model()->index(0, 0).data().toString(), "boot.lsu");
}

TEST_F(UpdateWindow, SaysThatAnotherUpdateIsAtWorkInTheFolder) {
  Start("serial=4B535401");
  const core::base::Disk::LockResult other = disk.TryLock(fonts / ".lock");
  UpdateAndConfirm();
  EXPECT_EQ(title, "Warning!");
  EXPECT_EQ(element, "Another update is putting fonts into this folder. Wait until it is done and try again.");
  EXPECT_TRUE(transfer.requests.empty());
  EXPECT_TRUE(dialogs.asked.empty());
}

TEST_F(UpdateWindow, AsksBeforeANewFontReplacesAnUnsavedSet) {
  Start("serial=4B535401");
  window->OpenSet(CompleteSet());
  auto& list = Find<QListView>("MtFileList");
  list.setCurrentIndex(list.model()->index(0, 0));
  QKeyEvent remove(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(&list, &remove);
  dialogs.okAnswers = {true};
  dialogs.unsavedAnswers = {Unsaved::GoBack};
  UpdateAndConfirm();
  EXPECT_EQ(dialogs.unsavedAsked.size(), 1U);
  EXPECT_TRUE(LabelText("SetLabel").startsWith("complete"));
}

TEST_F(UpdateWindow, OffersTheChoiceAmongSeveralNewFonts) {
  Start("serial=4B535401");
  catalogue = {"Night", "Day and Dawn"};
  dialogs.okAnswers = {true};
  dialogs.filesToOpen = {Text(fonts / "Day and Dawn" / "Day and Dawn.lscfg")};
  UpdateAndConfirm();
  EXPECT_EQ(dialogs.asked[0].question, "New fonts are on this computer: Night, Day and Dawn.\nOpen one of them now?");
  EXPECT_EQ(dialogs.lastStart, Text(fonts));
  EXPECT_EQ(LabelText("SetLabel"), "Day and Dawn");
}

TEST_F(UpdateWindow, OffersNothingWhenNothingIsNewOrThePersonSaysNo) {
  Start("serial=4B535401");
  dialogs.okAnswers = {false};
  UpdateAndConfirm();
  EXPECT_TRUE(LabelText("SetLabel").isEmpty() || LabelText("SetLabel") != "Night");
  UpdateAndConfirm();
  EXPECT_EQ(element, "Update process finished. No updates available or required.");
  EXPECT_EQ(dialogs.asked.size(), 1U) << "no question after it";
}

TEST_F(UpdateWindow, AFailureIsAWarningWithoutAnOffer) {
  Start("serial=4B535401");
  transfer.failFromRequest = 3;
  UpdateAndConfirm();
  EXPECT_EQ(title, "Warning!");
  EXPECT_EQ(element, "Failed! Connection error 0004.  Please try again later.");
  EXPECT_TRUE(dialogs.asked.empty());
  // The next one goes on where this one stopped.
  transfer.failFromRequest.reset();
  dialogs.okAnswers = {false};
  UpdateAndConfirm();
  EXPECT_EQ(element, kFinished);
}

TEST_F(UpdateWindow, ClosingTheDialogCancelsAtOnceWithNoMessage) {
  Start("serial=4B535401");
  sound.assign(60U << 20U, 's');
  std::optional<std::size_t> givenAtEscape;
  When([this] { return IsOpen() && LabelText("updateElement") == "Downloading: boot.lsu"; },
       [&] {
         givenAtEscape = transfer.bytesGiven;
         QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
         QApplication::sendEvent(window->findChild<QDialog*>("updateForm"), &escape);
       });
  Button("UpdateBtn").click();
  ASSERT_TRUE(givenAtEscape) << "it came to its end";
  EXPECT_EQ(transfer.bytesGiven, *givenAtEscape) << "not another chunk was taken";
  EXPECT_FALSE(IsOpen());
  EXPECT_FALSE(gate.IsBusy());
  EXPECT_TRUE(dialogs.asked.empty());
  EXPECT_TRUE(dialogs.errors.empty());
  EXPECT_FALSE(fs::exists(fonts / "Night" / "boot.lsu"));
  EXPECT_FALSE(fs::exists(fonts / "Night" / "tmp"));
  EXPECT_FALSE(fs::exists(fonts / "Night" / "fnt"));
  EXPECT_TRUE(Button("UpdateBtn").isEnabled());
}

TEST_F(UpdateWindow, StaysAliveAndLetsNothingElseStartMeanwhile) {
  Start("serial=4B535401");
  sound.assign(4U << 20U, 's');
  bool wasBusy = false;
  bool ranInside = false;
  bool ran = false;
  When([this] { return IsOpen() && LabelText("updateElement") == "Downloading: boot.lsu"; },
       [&] {
         wasBusy = gate.IsBusy();
         gate.WhenFree([&] {
           ran = true;
           ranInside = IsOpen();
         });
       });
  dialogs.okAnswers = {false};
  std::size_t given = 0;
  std::size_t mostInOneStep = 0;
  {
    const EventLoopTurns turns([&] {
      mostInOneStep = std::max(mostInOneStep, transfer.bytesGiven - given);
      given = transfer.bytesGiven;
    });
    UpdateAndConfirm();
  }
  EXPECT_GE(transfer.bytesGiven, sound.size());
  // The window has its turn with every chunk.
  EXPECT_LE(mostInOneStep, 8192U);
  EXPECT_TRUE(wasBusy);
  EXPECT_TRUE(Until([&] { return ran; }));
  EXPECT_FALSE(ranInside);
}

TEST_F(UpdateWindow, ClosingTheProgramEndsAnUpdateFirst) {
  Start("serial=4B535401");
  sound.assign(60U << 20U, 's');
  bool closed = false;
  QObject::connect(window.get(), &ui::window::Main::closed, window.get(), [&] { closed = true; });
  When([this] { return IsOpen() && LabelText("updateElement") == "Downloading: boot.lsu"; },
       [this] { window->close(); });
  Button("UpdateBtn").click();
  EXPECT_FALSE(IsOpen());
  EXPECT_LT(transfer.bytesGiven, sound.size() / 2);
  EXPECT_TRUE(Until([&] { return closed; }));
  EXPECT_TRUE(dialogs.asked.empty());
}

/// A moment of an update: so many requests have gone out, and the dialog shows this.
struct Moment {
  const char* name;
  std::size_t requests;
  const char* element;
};
void PrintTo(const Moment& moment, std::ostream* out) { *out << moment.name; }

constexpr Moment kMoments[]{{"BeforeTheCatalogue", 0, "Retrieving item catalogue"},
                            {"AtTheCatalogue", 1, "Retrieving item catalogue"},
                            {"AtTheItems", 1, "Checking item: Night"},
                            {"BeforeTheFont", 1, "Downloading: "},
                            {"AtTheFont", 2, "Downloading: "},
                            {"BeforeTheSound", 2, "Downloading: boot.lsu"},
                            {"AtTheSound", 3, "Downloading: boot.lsu"}};

class UpdateWindowAtAMoment : public UpdateWindow, public testing::WithParamInterface<Moment> {
 protected:
  /// Starts an update in which `action` happens at that moment.
  void UpdateAnd(std::function<void()> action) {
    When(
        [this] {
          return IsOpen() && transfer.requests.size() == GetParam().requests &&
                 LabelText("updateElement") == GetParam().element;
        },
        [this, action = std::move(action)] {
          happened = true;
          action();
        });
    Button("UpdateBtn").click();
    ASSERT_TRUE(happened);
  }
  void ExpectTheEnd() {
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(gate.IsBusy());
    EXPECT_EQ(transfer.requests.size(), GetParam().requests) << "it went on";
    EXPECT_TRUE(dialogs.asked.empty());
    EXPECT_TRUE(dialogs.errors.empty());
    EXPECT_FALSE(fs::exists(fonts / "Night" / "fnt"));
    EXPECT_FALSE(fs::exists(fonts / "Night" / "tmp"));
    EXPECT_FALSE(fs::exists(fonts / "Night" / "boot.lsu"));
  }

  bool happened = false;
};

TEST_P(UpdateWindowAtAMoment, ClosingTheDialogEndsItAndTheNextUpdateSucceeds) {
  Start("serial=4B535401");
  UpdateAnd([this] {
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(window->findChild<QDialog*>("updateForm"), &escape);
  });
  ExpectTheEnd();
  dialogs.okAnswers = {false};
  UpdateAndConfirm();
  EXPECT_EQ(element, kFinished);
  EXPECT_EQ(ReadBytes(fonts / "Night" / "boot.lsu"), sound);
}

TEST_P(UpdateWindowAtAMoment, ClosingTheProgramEndsItFirst) {
  Start("serial=4B535401");
  bool closed = false;
  QObject::connect(window.get(), &ui::window::Main::closed, window.get(), [&] { closed = true; });
  UpdateAnd([this] { window->close(); });
  ExpectTheEnd();
  EXPECT_TRUE(Until([&] { return closed; }));
}

INSTANTIATE_TEST_SUITE_P(All, UpdateWindowAtAMoment, testing::ValuesIn(kMoments),
                         [](const auto& moment) { return std::string(moment.param.name); });

TEST_F(UpdateWindow, ABoardWithoutSerialNumberStartsNothing) {
  Start("serial=4B535401");
  // Gone, but nobody has noticed yet: it does not answer.
  agent->Unplug();
  Button("UpdateBtn").click();
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(transfer.requests.empty());
  EXPECT_TRUE(dialogs.errors.empty());
}

TEST_F(UpdateWindow, FontsAreAPlaceOfTheirOwnInTheDriveList) {
  ui::window::FoldersWithFonts all(folders, fonts);
  ASSERT_EQ(all.Drives().size(), folders.drives.size() + 1);
  EXPECT_EQ(all.Drives().back().label, "Sound fonts");
  EXPECT_EQ(all.Drives().back().path, fonts);
  EXPECT_EQ(all.Desktop(), folders.desktop);
  EXPECT_EQ(all.Documents(), folders.documents);
  surroundingFolders = &all;
  Start("serial=4B535401");
  auto& drives = Find<QComboBox>("DriveList");
  EXPECT_EQ(drives.itemText(0), "Desktop");
  EXPECT_EQ(drives.itemText(1), "My Documents");
  EXPECT_EQ(drives.itemText(drives.count() - 1), "Sound fonts");
  dialogs.okAnswers = {false};
  UpdateAndConfirm();
  emit drives.activated(drives.count() - 1);
  EXPECT_TRUE(Until([this] {
    const auto* const model = Find<QListView>("DirList").model();
    return model->rowCount() == 1 && model->index(0, 0).data().toString() == "Night";
  }));
  window.reset();
}

}  // namespace
}  // namespace kestrin::support
