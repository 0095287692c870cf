#include "ui/app/MainFixture.h"

namespace kestrin::support {
namespace {

class HelpLabel : public MainFixture {
 protected:
  void Enter(QWidget& control) {
    QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
    QApplication::sendEvent(&control, &enter);
  }
  void Leave(QWidget& control) {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&control, &leave);
  }
  [[nodiscard]] QString Help() const { return LabelText("HelpLabel"); }
};

struct HintRow {
  const char* control;
  const char* text;
};

constexpr const char* kPressF1 = "Press F1 for help";

constexpr HintRow kHintRows[] = {{"LoadBtn", "LOAD Configuration File"},
                                 {"SaveBtn", "SAVE Configuration File"},
                                 {"ConfigBtn", "CONFIGURE Hardware"},
                                 {"SendBtn", "DOWNLOAD Sound Files to Kestrin"},
                                 {"UpdateBtn", "UPDATE Sound Files (Requires Internet)"},
                                 {"btnUpdateLED", "Update LED Configuration"},
                                 {"btnSendFoc", "Apply and Test"},
                                 {"btnSendPulse", "Apply and Test"},
                                 {"Main", kPressF1},
                                 {"Frame1", kPressF1},
                                 {"FrameFoc", kPressF1},
                                 {"frmLED", kPressF1},
                                 {"HelpLabel", kPressF1},
                                 {"labelLED1", kPressF1},
                                 {"OnlinePicture", kPressF1},
                                 {"PickColor_frame", kPressF1}};

TEST_F(HelpLabel, SaysWhatTheControlUnderThePointerIsFor) {
  Start();
  for (const HintRow& row : kHintRows) {
    Enter(Find<QWidget>("SaveBtn"));
    QWidget& control = window->objectName() == row.control ? *window : Find<QWidget>(row.control);
    Enter(control);
    EXPECT_EQ(Help(), row.text) << row.control;
    Leave(control);
    EXPECT_EQ(Help(), kPressF1) << row.control;
  }
}

TEST_F(HelpLabel, SaysItAlsoOfButtonsThatCannotBeUsed) {
  StartOffline();
  Enter(Find<QWidget>("SendBtn"));
  EXPECT_EQ(Help(), "DOWNLOAD Sound Files to Kestrin");
}

TEST_F(HelpLabel, SaysItOfTheControlWithTheFocus) {
  Start();
  window->activateWindow();
  ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
  Button("SaveBtn").setFocus();
  EXPECT_EQ(Help(), "SAVE Configuration File");
  Button("SendBtn").setFocus();
  EXPECT_EQ(Help(), "DOWNLOAD Sound Files to Kestrin");
}

TEST_F(HelpLabel, KeepsNewsUntilAnotherControlHasSomethingToSay) {
  Start();
  auto& line = Find<app::HelpLine>("HelpLabel");
  line.ShowNews("It rains.");
  EXPECT_EQ(Help(), "It rains.");
  Enter(Find<QWidget>("OnlinePicture"));
  EXPECT_EQ(Help(), "It rains.");
  Enter(Find<QWidget>("LoadBtn"));
  EXPECT_EQ(Help(), "LOAD Configuration File");
  Leave(Find<QWidget>("LoadBtn"));
  EXPECT_EQ(Help(), kPressF1);
}

}  // namespace
}  // namespace kestrin::support
