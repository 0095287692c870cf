// SPDX-License-Identifier: MIT
// What the sheet says of prepared findings, and how it is used.

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QTest>

#include "support/Contrast.h"
#include "ui/doctor/DoctorFrame.h"
#include "ui/doctor/VerdictSign.h"
#include "ui/kit/Theme.h"
#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using core::doctor::Diagnosis;
using core::doctor::Question;
using core::doctor::Remedy;
using core::doctor::Verdict;
using ui::doctor::DoctorFrame;

/// The sheet by itself.
class Sheet : public testing::Test {
 protected:
  Sheet() {
    frame.Open();
    frame.activateWindow();
    EXPECT_TRUE(Until([this] { return frame.isActiveWindow(); }));
  }

  template <typename T = QWidget>
  T& Find(const char* name) const {
    T* const found = frame.findChild<T*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("the sheet has no ") + name);
    return *found;
  }
  [[nodiscard]] QString Summary() const { return Find<QLabel>("DoctorSummary").text(); }
  [[nodiscard]] QWidget& Row(int number) const {
    return Find(QString("QuestionRow%1").arg(number).toLatin1().constData());
  }
  [[nodiscard]] QString InRow(int number, const char* label) const {
    return Row(number).findChild<QLabel*>(label)->text();
  }
  [[nodiscard]] QStringList Answers() const {
    QStringList answers;
    for (int row = 1; row <= 5; ++row) answers.append(InRow(row, "AnswerLabel"));
    return answers;
  }
  [[nodiscard]] bool Seen(const char* name) const { return Find(name).isVisible(); }
  [[nodiscard]] QPushButton& Primary() const { return Find<QPushButton>("NextBtn"); }
  [[nodiscard]] QPushButton& Secondary() const { return Find<QPushButton>("NextOtherBtn"); }
  /// The object names of what takes the keyboard, in the order of the Tab key.
  [[nodiscard]] QStringList TabOrder() const {
    QStringList names;
    const QWidget* each = &frame;
    while ((each = each->nextInFocusChain()) != &frame)
      if (each->isVisible() && each->isEnabled() && (each->focusPolicy() & Qt::TabFocus) != 0)
        names.append(each->objectName());
    return names;
  }
  [[nodiscard]] static QString Focused() {
    return QApplication::focusWidget() == nullptr ? QString() : QApplication::focusWidget()->objectName();
  }
  [[nodiscard]] QImage Sign(int row) const { return Row(row).findChild<ui::doctor::VerdictSign*>()->grab().toImage(); }

  DoctorFrame::Rule rule{FakeRule::kPath, FakeRule::kContent, false};
  ui::kit::Pictures pictures{KESTRIN_PICTURES};
  DoctorFrame frame{pictures};
};

TEST_F(Sheet, KnowsNothingBeforeItHasLooked) {
  EXPECT_EQ(Summary(), "Looking ...");
  EXPECT_EQ(Answers(), QStringList(5, "Not known yet"));
  EXPECT_FALSE(Seen("NextBox"));
  EXPECT_FALSE(Find("CopyReportBtn").isEnabled());
  EXPECT_EQ(Focused(), "CloseDoctorBtn");
}

TEST_F(Sheet, AsksTheQuestionsInTheirOrder) {
  const QStringList questions{"Is a board plugged in?", "May this person open it?", "Is another program using it?",
                              "Does it answer?", "Is it known which board it is?"};
  for (int row = 1; row <= 5; ++row) EXPECT_EQ(InRow(row, "QuestionLabel"), questions[row - 1]);
  for (int row = 2; row <= 5; ++row) EXPECT_GT(Row(row).y(), Row(row - 1).y());
}

TEST_F(Sheet, SaysWhatIsMissingAndWaitsWithTheRest) {
  frame.Show(NotPermitted(), rule);
  EXPECT_EQ(Summary(), "One thing keeps this program from your board. It looks again every second.");
  EXPECT_EQ(Answers(), (QStringList{"Yes", "No", "Not known yet", "Not known yet", "Not known yet"}));
  EXPECT_EQ(InRow(1, "FoundLabel"), "It is well.");
  EXPECT_EQ(InRow(2, "FoundLabel"), "The rule is not there yet.");
  EXPECT_EQ(InRow(3, "FoundLabel"), "It waits.");
  EXPECT_EQ(Find<QLabel>("NextTitle").text(), "Do this next");
  EXPECT_EQ(Find<QLabel>("NextText").text(), "Install the rule that comes with the program.");
}

TEST_F(Sheet, SaysYesToAnotherProgramThatIsInTheWay) {
  frame.Show(Problem(Question::Free, Remedy::CloseProgram, "kestrinctl (4711) is using it.", "Close kestrinctl."),
             rule);
  EXPECT_EQ(Answers(), (QStringList{"Yes", "Yes", "Yes", "Not known yet", "Not known yet"}));
  frame.Show(Hung(), rule);
  EXPECT_EQ(Answers(), (QStringList{"Yes", "Yes", "No", "No", "Not known yet"}));
}

TEST_F(Sheet, SaysThatAllIsWell) {
  frame.Show(NotPermitted(), rule);
  frame.Show(Healthy(), rule);
  EXPECT_EQ(Summary(), "All is well. It looks again every second.");
  EXPECT_EQ(Answers(), (QStringList{"Yes", "Yes", "No", "Yes", "Yes"}));
  EXPECT_FALSE(Seen("NextBox"));
}

TEST_F(Sheet, SaysThatAllIsWellSoFarWhileTheBoardIsAsked) {
  Diagnosis waiting = Healthy();
  waiting.findings[3].verdict = Verdict::Unknown;
  waiting.findings[4].verdict = Verdict::Unknown;
  frame.Show(waiting, rule);
  EXPECT_EQ(Summary(), "So far all is well. It looks again every second.");
  frame.ShowTalk(DoctorFrame::Talk::Asking);
  EXPECT_EQ(InRow(4, "FoundLabel"), "The board is being asked ...");
  frame.ShowTalk(DoctorFrame::Talk::Erasing);
  EXPECT_EQ(InRow(4, "FoundLabel"), "The board is still erasing its memory. It comes back by itself, please wait.");
  frame.Show(Healthy(), rule);
  EXPECT_EQ(InRow(4, "FoundLabel"), "It is well.");
}

TEST_F(Sheet, CountsWhatIsInTheWay) {
  Diagnosis two = NotPermitted();
  two.findings[3].verdict = Verdict::Problem;
  frame.Show(two, rule);
  EXPECT_EQ(Summary(), "2 things keep this program from your board. It looks again every second.");
}

/// What each remedy offers beside its text.
struct RemedyRow {
  Question question;
  Remedy remedy;
  const char* primary;
  const char* secondary;
};

TEST_F(Sheet, OffersTheOneActionThatFits) {
  constexpr RemedyRow kRows[] = {
      {Question::Present, Remedy::PlugIn, "", ""},
      {Question::Present, Remedy::PlugInAgain, "", ""},
      {Question::Permitted, Remedy::InstallRule, "Install permission rule ...", ""},
      {Question::Permitted, Remedy::PlugInAgain, "", ""},
      {Question::Permitted, Remedy::None, "", ""},
      {Question::Free, Remedy::CloseProgram, "", ""},
      {Question::Answers, Remedy::PlugInAgain, "", "Look again"},
      {Question::Answers, Remedy::Wait, "", "Look again"},
      {Question::Identified, Remedy::PlugInAgain, "", "Look again"},
  };
  for (const RemedyRow& row : kRows) {
    frame.Show(Problem(row.question, row.remedy, "It is so.", "Do that."), rule);
    const auto shown = [](const QPushButton& button) { return button.isVisible() ? button.text() : QString(); };
    EXPECT_EQ(Find<QLabel>("NextText").text(), "Do that.");
    EXPECT_EQ(shown(Primary()), row.primary) << static_cast<int>(row.remedy);
    EXPECT_EQ(shown(Secondary()), row.secondary) << static_cast<int>(row.remedy);
    EXPECT_EQ(Seen("NextMoreLink"), row.remedy == Remedy::InstallRule);
  }
}

TEST_F(Sheet, OffersNoRuleThatThisProgramCannotWrite) {
  frame.Show(NotPermitted(), {});
  EXPECT_TRUE(Seen("NextText"));
  EXPECT_FALSE(Seen("NextBtn"));
  EXPECT_FALSE(Seen("NextMoreLink"));
}

TEST_F(Sheet, ShowsWhatTheRuleDoesWhenAsked) {
  frame.Show(NotPermitted(), rule);
  EXPECT_FALSE(Seen("NextMore"));
  QTest::mouseClick(&Find("NextMoreLink"), Qt::LeftButton);
  EXPECT_EQ(Find<QPlainTextEdit>("NextMore").toPlainText(),
            QString(FakeRule::kPath) + "\n\n" + QString(FakeRule::kContent).trimmed());
  EXPECT_TRUE(Seen("NextMore"));
  frame.Show(NotPermitted(), rule);
  EXPECT_TRUE(Seen("NextMore")) << "a look in between does not close it";
  QTest::mouseClick(&Find("NextMoreLink"), Qt::LeftButton);
  EXPECT_FALSE(Seen("NextMore"));
}

TEST_F(Sheet, ScrollsALongRuleInsteadOfTheWholeSheet) {
  frame.Show(NotPermitted(), rule);
  Find<QPushButton>("NextMoreLink").click();
  const int low = Find("NextMore").height();
  EXPECT_GE(low, 3 * Find("NextMore").fontMetrics().lineSpacing()) << "the path, a blank line, the rule";
  rule.content = QString("# A line.\n").repeated(100);
  frame.Show(NotPermitted(), rule);
  Find<QPushButton>("NextMoreLink").click();
  EXPECT_LT(Find("NextMore").height(), 9 * Find("NextMore").fontMetrics().lineSpacing());
  EXPECT_GT(Find("NextMore").height(), low);
}

TEST_F(Sheet, ListsWhatWasNoticedAsWell) {
  EXPECT_FALSE(Seen("DoctorRemarks"));
  Diagnosis found = Healthy();
  found.remarks = {"The device at /dev/hidraw3 is passed over.", "2 boards are there."};
  frame.Show(found, rule);
  QStringList remarks;
  for (const QLabel* const label : frame.findChildren<QLabel*>("RemarkLabel")) remarks.append(label->text());
  EXPECT_EQ(remarks, (QStringList{"The device at /dev/hidraw3 is passed over.", "2 boards are there."}));
  EXPECT_TRUE(Seen("DoctorRemarks"));
  frame.Show(Healthy(), rule);
  EXPECT_FALSE(Seen("DoctorRemarks"));
}

TEST_F(Sheet, TellsTheVerdictsApartByShapeToo) {
  frame.Show(Problem(Question::Permitted, Remedy::None, "", ""), rule);
  // As somebody sees them who sees no colours: what is light and what is dark.
  const auto shape = [this](int row) {
    constexpr int kLight = 200;
    QImage sign = Sign(row).convertToFormat(QImage::Format_Grayscale8);
    for (int y = 0; y < sign.height(); ++y)
      for (uchar* pixel = sign.scanLine(y); pixel < sign.scanLine(y) + sign.width(); ++pixel)
        *pixel = *pixel > kLight ? 255 : 0;
    return sign;
  };
  EXPECT_NE(shape(1), shape(2));
  EXPECT_NE(shape(1), shape(3));
  EXPECT_NE(shape(2), shape(3));
  EXPECT_NE(shape(3), shape(4)) << "they are numbered";
}

TEST_F(Sheet, SaysEachRowToAScreenReader) {
  frame.Show(NotPermitted(), rule);
  EXPECT_EQ(frame.accessibleName(), "Connection doctor");
  EXPECT_EQ(Row(2).accessibleName(), "May this person open it? No");
  EXPECT_EQ(Row(2).accessibleDescription(), "The rule is not there yet.");
  EXPECT_EQ(Row(3).accessibleName(), "Is another program using it? Not known yet");
  EXPECT_EQ(Find("NextBox").accessibleName(), "Do this next");
  EXPECT_EQ(Find("NextBox").accessibleDescription(), "Install the rule that comes with the program.");
}

TEST_F(Sheet, LeadsTheTabKeyFromTheAdviceToTheEnd) {
  frame.Show(NotPermitted(), rule);
  EXPECT_EQ(TabOrder(), (QStringList{"NextBtn", "NextMoreLink", "CopyReportBtn", "WithSerialCheck", "CloseDoctorBtn"}));
  rule.isRemovable = true;
  frame.Show(Healthy(), rule);
  EXPECT_EQ(TabOrder(), (QStringList{"RemoveRuleLink", "CopyReportBtn", "WithSerialCheck", "CloseDoctorBtn"}));
}

TEST_F(Sheet, KeepsTheKeyboardWhenWhatHadItIsGone) {
  frame.Show(NotPermitted(), rule);
  Primary().setFocus();
  ASSERT_EQ(Focused(), "NextBtn");
  frame.Show(NotPermitted(), rule);
  EXPECT_EQ(Focused(), "NextBtn");
  frame.Show(Hung(), rule);
  EXPECT_EQ(Focused(), "NextOtherBtn");
  frame.Show(Healthy(), rule);
  EXPECT_EQ(Focused(), "CloseDoctorBtn");
}

TEST_F(Sheet, EscapeClosesIt) {
  int closed = 0;
  QObject::connect(&frame, &DoctorFrame::closed, &frame, [&] { ++closed; });
  QTest::keyClick(&Find("CloseDoctorBtn"), Qt::Key_Escape);
  EXPECT_FALSE(frame.isVisible());
  EXPECT_EQ(closed, 1);
  frame.Open();
  Find<QPushButton>("CloseDoctorBtn").click();
  EXPECT_EQ(closed, 2);
}

TEST_F(Sheet, LeavesTheSerialNumberOutUntilItIsWanted) {
  frame.Show(Healthy(), rule);
  EXPECT_EQ(Find<QLabel>("CopyReportHint").text(), "for a question to somebody else; nothing is sent");
  std::vector<bool> copied;
  QObject::connect(&frame, &DoctorFrame::copyRequested, &frame, [&](bool with) { copied.push_back(with); });
  Find<QPushButton>("CopyReportBtn").click();
  Find<QCheckBox>("WithSerialCheck").click();
  Find<QPushButton>("CopyReportBtn").click();
  frame.ShowCopied();
  EXPECT_EQ(Find<QLabel>("CopyReportHint").text(), "Copied. Paste it where you ask; nothing is sent.");
  EXPECT_EQ(copied, (std::vector<bool>{false, true}));
  frame.hide();
  frame.Open();
  EXPECT_FALSE(Find<QCheckBox>("WithSerialCheck").isChecked());
  EXPECT_EQ(Find<QLabel>("CopyReportHint").text(), "for a question to somebody else; nothing is sent");
}

TEST_F(Sheet, CanBeReadInEveryScheme) {
  for (const auto scheme : {ui::kit::ColorScheme::Light, ui::kit::ColorScheme::Dark}) {
    ui::kit::Theme::Apply(*qApp, scheme);
    frame.Show(NotPermitted(), rule);
    frame.ShowFailure("It went wrong.");
    QApplication::processEvents();
    const QColor card = frame.palette().color(QPalette::Base);
    for (int row = 1; row <= 3; ++row) {
      const QLabel& answer = *Row(row).findChild<QLabel*>("AnswerLabel");
      EXPECT_GE(ui::kit::Contrast(answer.palette().color(QPalette::WindowText), card), 4.5) << row;
    }
    // The middle of its left edge is the box's own ground beside the stripe.
    QWidget& box = Find("NextBox");
    const QColor ground = box.grab().toImage().pixelColor(8, box.height() / 2);
    for (const char* const name : {"NextText", "NextFailure"}) {
      const QLabel& label = Find<QLabel>(name);
      EXPECT_GE(ui::kit::Contrast(label.palette().color(label.foregroundRole()), ground), 4.5) << name;
    }
    const QPushButton& link = Find<QPushButton>("NextMoreLink");
    EXPECT_GE(ui::kit::Contrast(link.palette().color(QPalette::Link), ground), 4.5);
  }
  ui::kit::Theme::Apply(*qApp, ui::kit::ColorScheme::Light);
}

}  // namespace
}  // namespace kestrin::support
