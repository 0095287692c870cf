// SPDX-License-Identifier: MIT
// Installing and removing the permission rule from the sheet.

#include <QPlainTextEdit>
#include <QTest>

#include "ui/window/MainFixture.h"

namespace kestrin::support {
namespace {

using core::base::Failure;
using core::base::FailureKind;

class Rule : public MainFixture {
 protected:
  /// No thread waits when the test is over.
  ~Rule() override {
    doctor.rule->barrier.Release();
    EXPECT_TRUE(Until([this] { return doctor.rule->barrier.Come() == doctor.rule->barrier.Passed(); }));
  }

  void OpenWith(const core::doctor::Diagnosis& found) {
    doctor.diagnosis = found;
    StartOffline();
    window->activateWindow();
    ASSERT_TRUE(Until([this] { return window->isActiveWindow(); }));
    Find<QAction>("ConnectionAction").trigger();
    ASSERT_TRUE(Until([this] { return LabelText("DoctorSummary") != "Looking ..."; }));
  }
  void Press(const char* button) { Find<QPushButton>(button).click(); }
  /// The file that was written is there.
  void OpenInstalled() {
    doctor.survey.rulePath = FakeRule::kPath;
    OpenWith(Healthy());
  }
  [[nodiscard]] int Calls() const { return doctor.rule->barrier.Come(); }
  [[nodiscard]] QString Title() const { return LabelText("NextTitle"); }
};

TEST_F(Rule, IsInstalledOnlyAfterConsentToWhatIsWrittenWhere) {
  OpenWith(NotPermitted());
  Press("NextBtn");
  EXPECT_EQ(Title(), "Install the permission rule?");
  EXPECT_TRUE(LabelText("NextText").contains(FakeRule::kPath));
  EXPECT_TRUE(LabelText("NextText").contains("asks for the administrator's password"));
  EXPECT_EQ(Find<QPlainTextEdit>("NextMore").toPlainText(), QString(FakeRule::kContent).trimmed());
  EXPECT_TRUE(Shown("NextMore"));
  EXPECT_EQ(Calls(), 0);
  EXPECT_EQ(QApplication::focusWidget(), &Find<QPushButton>("NextOtherBtn")) << "the harmless answer";

  Press("NextOtherBtn");
  EXPECT_EQ(Title(), "Do this next");
  Press("NextBtn");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_EQ(Title(), "Do this next");
  EXPECT_TRUE(Shown("DoctorFrame")) << "Escape has answered the question";
  EXPECT_EQ(Calls(), 0);

  Press("NextBtn");
  Press("NextBtn");
  EXPECT_TRUE(Until([this] { return doctor.rule->barrier.Passed() == 1; }));
  EXPECT_EQ(doctor.rule->calls, std::vector<std::string>{"install"});
}

TEST_F(Rule, IsNotInstalledByADoubleClick) {
  OpenWith(NotPermitted());
  QTest::mouseClick(&Find<QPushButton>("NextBtn"), Qt::LeftButton);
  QTest::mouseDClick(&Find<QPushButton>("NextBtn"), Qt::LeftButton);
  QTest::mouseRelease(&Find<QPushButton>("NextBtn"), Qt::LeftButton);
  EXPECT_EQ(Title(), "Install the permission rule?")
      << "its second press is not the answer to what the first has asked";
  EXPECT_EQ(Calls(), 0);
  QTest::mouseClick(&Find<QPushButton>("NextBtn"), Qt::LeftButton);
  EXPECT_TRUE(Until([this] { return Calls() == 1; }));
}

TEST_F(Rule, IsInstalledWhileTheWindowStaysAlive) {
  OpenWith(NotPermitted());
  doctor.rule->barrier.Hold();
  Press("NextBtn");
  Press("NextBtn");
  EXPECT_EQ(Title(), "The system asks you");
  EXPECT_FALSE(Shown("NextBtn"));
  EXPECT_FALSE(Shown("NextOtherBtn"));
  ASSERT_TRUE(Until([this] { return Calls() == 1; }));
  const std::size_t judged = doctor.judged.size();
  Tick("DoctorTimer");
  EXPECT_TRUE(Until([&] { return doctor.judged.size() > judged; })) << "it goes on looking";
  EXPECT_EQ(Title(), "The system asks you");

  Press("CloseDoctorBtn");
  Find<QAction>("ConnectionAction").trigger();
  EXPECT_EQ(Title(), "The system asks you") << "it still does";
  doctor.diagnosis = Healthy();
  doctor.rule->barrier.Release();
  EXPECT_TRUE(Until([this] { return LabelText("DoctorSummary") == "All is well. It looks again every second."; }));
  EXPECT_TRUE(Until([this] { return !Shown("NextBox"); }));
  EXPECT_EQ(Calls(), 1);
}

TEST_F(Rule, LooksAgainAtOnceWhenItWasInstalled) {
  OpenWith(NotPermitted());
  Find<QTimer>("DoctorTimer").stop();
  const int looks = doctor.survey.barrier.Passed();
  Press("NextBtn");
  Press("NextBtn");
  EXPECT_TRUE(Until([&] { return doctor.survey.barrier.Passed() > looks; }));
}

TEST_F(Rule, SaysInTheSheetWhyItCouldNotBeInstalled) {
  OpenWith(NotPermitted());
  doctor.rule->result = Failure{FailureKind::DiskFull, "The rule could not be written: no space left."};
  Press("NextBtn");
  Press("NextBtn");
  ASSERT_TRUE(Until([this] { return Shown("NextFailure"); }));
  EXPECT_EQ(LabelText("NextFailure"), "The rule could not be written: no space left.");
  EXPECT_EQ(Title(), "Do this next");
  EXPECT_EQ(Find<QPushButton>("NextBtn").text(), "Install permission rule ...") << "it can be tried again";
  EXPECT_TRUE(dialogs.errors.empty());
  Press("NextBtn");
  EXPECT_FALSE(Shown("NextFailure")) << "another try begins";
}

TEST_F(Rule, CanBeRemovedAgainAfterConsent) {
  OpenInstalled();
  ASSERT_TRUE(Shown("RemoveRuleLink"));
  ASSERT_FALSE(Shown("NextBox"));
  Press("RemoveRuleLink");
  EXPECT_EQ(Title(), "Remove the permission rule?");
  EXPECT_TRUE(LabelText("NextText").contains(FakeRule::kPath));
  EXPECT_TRUE(LabelText("NextText").contains("asks for the administrator's password"));
  EXPECT_EQ(Calls(), 0);
  Press("NextOtherBtn");
  EXPECT_FALSE(Shown("NextBox"));
  Press("RemoveRuleLink");
  Press("NextBtn");
  EXPECT_TRUE(Until([this] { return doctor.rule->barrier.Passed() == 1; }));
  EXPECT_EQ(doctor.rule->calls, std::vector<std::string>{"remove"});
}

TEST_F(Rule, IsNotRemovedWhereItIsNotThisPrograms) {
  doctor.survey.rulePath = "/usr/lib/udev/rules.d/70-kestrin.rules";
  OpenWith(Healthy());
  EXPECT_FALSE(Shown("RemoveRuleLink"));
}

TEST_F(Rule, IsOfferedNowhereWhereItCannotBeChanged) {
  doctor.rule->canChange = false;
  doctor.survey.rulePath = FakeRule::kPath;
  OpenWith(NotPermitted());
  EXPECT_FALSE(Shown("RemoveRuleLink"));
  EXPECT_FALSE(Shown("NextBtn"));
}

TEST_F(Rule, IsNotAskedAboutAnyMoreWhenItHasComeAboutByItself) {
  OpenWith(NotPermitted());
  Press("NextBtn");
  ASSERT_EQ(Title(), "Install the permission rule?");
  doctor.diagnosis = Healthy();
  Tick("DoctorTimer");
  EXPECT_TRUE(Until([this] { return !Shown("NextBox"); }));
}

TEST_F(Rule, DoesNotKeepTheProgramFromEnding) {
  OpenWith(NotPermitted());
  doctor.rule->barrier.Hold();
  Press("NextBtn");
  Press("NextBtn");
  ASSERT_TRUE(Until([this] { return Calls() == 1; }));
  window->close();
  EXPECT_TRUE(Until([this] { return window->IsOver(); }));
  window.reset();
  EXPECT_EQ(doctor.rule->barrier.Passed(), 0) << "the system's question still stands";
}

}  // namespace
}  // namespace kestrin::support
