// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/Contrast.h"
#include "support/ScriptedTransfer.h"
#include "ui/kit/Theme.h"
#include "ui/kit/ThemeColors.h"
#include "ui/kit/TopicOf.h"
#include "ui/update/ProgressShape.h"
#include "ui/update/updateForm.h"

namespace kestrin::support {
namespace {

using ui::update::ProgressShape;

const std::vector<const char*> kControls = {"formTitle",
                                            "updateStep",
                                            "updateElement",
                                            "progressBar1",
                                            "progressBackground1",
                                            "progressBar2",
                                            "progressBackground2",
                                            "formButtonCaption1",
                                            "formButtonBackground1",
                                            "formButtonCaption2",
                                            "formButtonBackground2",
                                            "okIcon",
                                            "warningIcon",
                                            "formBorder"};

class UpdateForm : public testing::Test {
 protected:
  template <typename T = QWidget>
  T& Find(const char* name) const {
    T* const found = form.findChild<T*>(name);
    if (found == nullptr) throw std::runtime_error(std::string("the dialog has no ") + name);
    return *found;
  }
  [[nodiscard]] std::string TextOf(const char* name) const { return Find<QLabel>(name).text().toStdString(); }
  /// The controls that can be seen when the dialog can.
  [[nodiscard]] std::vector<std::string> Shown() const {
    std::vector<std::string> shown;
    for (const char* const name : kControls)
      if (Find<>(name).isVisibleTo(&form)) shown.emplace_back(name);
    return shown;
  }
  [[nodiscard]] double Width(const char* bar) const { return Find<ProgressShape>(bar).ShapeWidth(); }
  static void Press(QWidget& control, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&control, &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier);
    QApplication::sendEvent(&control, &release);
  }

  ScriptedTransfer transfer;
  ui::update::updateForm form{transfer};
};

TEST_F(UpdateForm, IsLoadedWithoutBeingShownAndMeasuresItsBars) {
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(form.isModal());
  EXPECT_EQ(&form.Inet(), &transfer);
  EXPECT_EQ(TextOf("formTitle"), "Updating items...");
  // Whoever moves a bar before the dialog is shown moves it by its share of the same width.
  form.progressA(50);
  const double half = Width("progressBar1");
  form.show();
  for (const int number : {1, 2}) {
    const auto name = [number](const char* what) { return std::string(what) + std::to_string(number); };
    const int width = Find<>(name("progressBackground").c_str()).width();
    EXPECT_GT(width, 300);
    EXPECT_EQ(Find<>(name("progressBar").c_str()).width(), width);
    EXPECT_EQ(half, width / 2.0);
  }
}

TEST_F(UpdateForm, TellsScreenReadersThatItsBarsAreBarsAndHowFarTheyAre) {
  form.show();
  form.progressA(50);
  form.progressB(7);
  const std::vector<std::pair<const char*, int>> bars{{"progressBar1", 50}, {"progressBar2", 7}};
  for (const auto& [bar, value] : bars) {
    QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(&Find<>(bar));
    ASSERT_NE(told, nullptr) << bar;
    EXPECT_EQ(told->role(), QAccessible::ProgressBar) << bar;
    EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << bar;
    ASSERT_NE(told->valueInterface(), nullptr) << bar;
    EXPECT_EQ(told->valueInterface()->currentValue().toInt(), value) << bar;
    EXPECT_EQ(told->valueInterface()->minimumValue().toInt(), 0) << bar;
    EXPECT_EQ(told->valueInterface()->maximumValue().toInt(), 100) << bar;
  }
}

TEST_F(UpdateForm, ABarIsItsShareOfTheFullWidthWithItsFraction) {
  form.show();
  for (const char* const bar : {"progressBar1", "progressBar2"}) Find<ProgressShape>(bar).SetFullWidth(3001);
  form.progressA(50);
  EXPECT_EQ(Width("progressBar1"), 1500.5);
  EXPECT_EQ(Width("progressBar2"), 0);
  form.progressB(1);
  EXPECT_EQ(Width("progressBar2"), 30.01);
  form.progressB(100);
  EXPECT_EQ(Width("progressBar2"), 3001);
}

TEST_F(UpdateForm, AWarningHidesBarsAndStep) {
  form.resetForm();
  form.showStep("(1/3) Checking for updates");
  form.progressA(30);
  form.showWarning("Error : 0001 Update failed! Please try again later.");
  EXPECT_THAT(Shown(), testing::ElementsAre("formTitle", "updateElement", "formButtonCaption2", "formButtonBackground2",
                                            "warningIcon", "formBorder"));
  EXPECT_EQ(TextOf("formTitle"), "Warning!");
  EXPECT_EQ(TextOf("updateElement"), "Error : 0001 Update failed! Please try again later.");
  EXPECT_EQ(TextOf("formButtonCaption2"), "OK");
}

TEST_F(UpdateForm, AMessageLeavesTheOverallBarFull) {
  form.resetForm();
  form.progressA(65);
  form.showMessage("Update finished. New fonts installed successfully.");
  EXPECT_THAT(Shown(),
              testing::ElementsAre("formTitle", "updateStep", "updateElement", "progressBar1", "progressBackground1",
                                   "formButtonCaption2", "formButtonBackground2", "okIcon", "formBorder"));
  EXPECT_GT(Width("progressBar1"), 300);
  EXPECT_EQ(Width("progressBar1"), Find<>("progressBackground1").width());
  EXPECT_EQ(TextOf("formTitle"), "Success");
  EXPECT_EQ(TextOf("updateStep"), "(3/3) Completed");
  EXPECT_EQ(TextOf("updateElement"), "Update finished. New fonts installed successfully.");
  EXPECT_EQ(TextOf("formButtonCaption2"), "OK");
}

TEST_F(UpdateForm, AResetRestoresEverythingAfterEitherEnd) {
  for (const bool well : {true, false}) {
    form.progressA(65);
    form.progressB(40);
    EXPECT_GT(Width("progressBar1"), 0);
    EXPECT_GT(Width("progressBar2"), 0);
    form.showStep("step");
    if (well)
      form.showMessage("done");
    else
      form.showWarning("failed");
    form.resetForm();
    EXPECT_THAT(Shown(),
                testing::ElementsAre("formTitle", "updateStep", "updateElement", "progressBar1", "progressBackground1",
                                     "progressBar2", "progressBackground2", "formBorder"));
    EXPECT_EQ(Width("progressBar1"), 0);
    EXPECT_EQ(Width("progressBar2"), 0);
    EXPECT_EQ(TextOf("formTitle"), "Updating items ...");
    EXPECT_EQ(TextOf("updateStep") + TextOf("updateElement"), "");
  }
}

/// A window that does not close.
class StubbornWindow : public QWidget {
 protected:
  void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

TEST_F(UpdateForm, YesEndsTheProgramWithoutAskingAWindowAndNoClosesTheDialog) {
  StubbornWindow window;
  window.show();
  form.resetForm();
  form.showYesNoButtons();
  EXPECT_EQ(TextOf("formButtonCaption1"), "YES");
  EXPECT_EQ(TextOf("formButtonCaption2"), "NO");
  form.show();
  Find<QPushButton>("formButtonBackground2").click();
  EXPECT_FALSE(form.isVisible());
  QTimer::singleShot(0, &form, [this] { Find<QPushButton>("formButtonBackground1").click(); });
  QTimer::singleShot(10000, &form, [] { QCoreApplication::exit(1); });
  EXPECT_EQ(QApplication::exec(), 0) << "it did not end";
  form.hideButtons();
  EXPECT_FALSE(Find<>("formButtonBackground1").isVisibleTo(&form));
  EXPECT_FALSE(Find<>("formButtonCaption2").isVisibleTo(&form));
}

TEST_F(UpdateForm, RunsWhatIsGivenOnceItIsOpenAndComesBackWhenItIsClosed) {
  int runs = 0;
  for (const int key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_Space}) {
    form.showModal([&] {
      ++runs;
      EXPECT_TRUE(form.isVisible());
      form.showMessage("done");
      EXPECT_EQ(form.focusWidget(), &Find<>("formButtonBackground2"));
      QTimer::singleShot(0, &form, [this, key] {
        if (key == Qt::Key_Space)
          Press(Find<>("formButtonBackground2"), key);
        else
          Press(form, key);
      });
    });
    EXPECT_FALSE(form.isVisible());
  }
  EXPECT_EQ(runs, 3);
}

TEST_F(UpdateForm, CanBeOperatedAndReadWithoutAPointer) {
  for (const char* const bar : {"progressBar1", "progressBar2"}) EXPECT_FALSE(Find<>(bar).accessibleName().isEmpty());
  for (const char* const icon : {"okIcon", "warningIcon"}) EXPECT_FALSE(Find<>(icon).accessibleName().isEmpty());
  form.showWarning("Something <b>happened</b>");
  auto& button = Find<QPushButton>("formButtonBackground2");
  EXPECT_EQ(button.accessibleName(), "OK");
  EXPECT_EQ(button.accessibleDescription(), "Something <b>happened</b>");
  EXPECT_TRUE(button.focusPolicy() & Qt::TabFocus);
  EXPECT_EQ(ui::kit::TopicOf(&button), ui::kit::HelpContext::UpdateForm);
  for (const char* const label : {"formTitle", "updateStep", "updateElement", "formButtonCaption2"})
    EXPECT_EQ(Find<QLabel>(label).textFormat(), Qt::PlainText) << label << ": servers send some of these texts";
}

TEST_F(UpdateForm, NothingIsCutOffHoweverLongTheTextIs) {
  form.show();
  for (const QString& text : {QString("short"), QString("word ").repeated(120), QString(600, 'x'),
                              "\"/" + QString("a folder/").repeated(40) + "tmp\" could not be written"}) {
    form.resetForm();
    form.showWarning(text.toStdString());
    QApplication::processEvents();
    auto& element = Find<QLabel>("updateElement");
    EXPECT_GE(element.height(), element.heightForWidth(element.width())) << text.toStdString();
    EXPECT_TRUE(form.rect().contains(Find<>("formButtonBackground2").mapTo(&form, QPoint(90, 30))))
        << text.toStdString();
    // Painted up to its last line: somewhere in it there is ink.
    const QImage picture = element.grab().toImage();
    const QRgb ground = picture.pixel(picture.width() - 1, picture.height() - 1);
    int lastInk = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x)
        if (picture.pixel(x, y) != ground) lastInk = y;
    EXPECT_GT(lastInk, element.heightForWidth(element.width()) - 2 * element.fontMetrics().lineSpacing());
  }
}

TEST_F(UpdateForm, CaptionsCanBeReadInBothSchemes) {
  for (const auto scheme : {ui::kit::ColorScheme::Light, ui::kit::ColorScheme::Dark}) {
    ui::kit::Theme::Apply(*qApp, scheme);
    form.showYesNoButtons();
    form.show();
    QApplication::processEvents();
    const auto& no = Find<QLabel>("formButtonCaption2");
    const QColor ground = ui::kit::ColorOf(ui::kit::ColorRole::Accent, form.palette());
    EXPECT_GE(ui::kit::Contrast(no.palette().color(no.foregroundRole()), ground), 4.5);
    const QImage picture = Find<>("formButtonBackground2").grab().toImage();
    bool hasCaptionColor = false;
    const QRgb wanted = no.palette().color(no.foregroundRole()).rgb();
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) hasCaptionColor |= picture.pixel(x, y) == wanted;
    EXPECT_TRUE(hasCaptionColor);
    form.hide();
  }
  ui::kit::Theme::Apply(*qApp, ui::kit::ColorScheme::System);
}

}  // namespace
}  // namespace kestrin::support
