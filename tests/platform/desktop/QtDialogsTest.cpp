// SPDX-License-Identifier: MIT
#include "platform/desktop/QtDialogs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "support/TestFiles.h"
#include "ui/kit/FileFilter.h"
#include "ui/kit/Theme.h"

namespace kestrin::support {
namespace {

using Harmless = ui::kit::Dialogs::Harmless;

/// Lets the person do this with every dialog that comes up, until it goes.
class Meanwhile {
 public:
  explicit Meanwhile(std::function<void(QDialog&)> action) {
    QObject::connect(&m_timer, &QTimer::timeout, [action = std::move(action)] {
      auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog != nullptr) action(*dialog);
    });
    m_timer.start(0);
  }

 private:
  QTimer m_timer;
};

void PressKey(QDialog& dialog, Qt::Key key) {
  QWidget* const focused = dialog.focusWidget();
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
  QApplication::sendEvent(focused != nullptr ? focused : &dialog, &down);
}

QPushButton* ButtonOf(const QDialog& dialog, const QString& caption) {
  for (QPushButton* const button : dialog.findChildren<QPushButton*>())
    if (button->text().remove('&') == caption) return button;
  return nullptr;
}

struct KeyAnswers {
  const char* what;
  Harmless harmless;
  /// Whether the key stands for OK.
  bool enter;
  bool escape;
};

constexpr KeyAnswers kKeyAnswers[] = {{"resume a download", Harmless::Ok, true, true},
                                      {"lose something", Harmless::Cancel, false, false},
                                      {"go on in one way or the other", Harmless::Both, true, false}};

/// The answer to a question that the person leaves by this key.
bool AnswerByKey(Harmless harmless, Qt::Key key) {
  platform::desktop::QtDialogs dialogs;
  const Meanwhile press([key](QDialog& dialog) { PressKey(dialog, key); });
  return dialogs.AskOkCancel("Shall it?", "", harmless, ui::kit::HelpContext::Messages);
}

TEST(QtDialogs, EnterAndEscapeNeverGiveTheHarmfulAnswer) {
  for (const KeyAnswers& row : kKeyAnswers) {
    EXPECT_EQ(AnswerByKey(row.harmless, Qt::Key_Return), row.enter) << row.what;
    EXPECT_EQ(AnswerByKey(row.harmless, Qt::Key_Escape), row.escape) << row.what;
  }
}

struct UnsavedAnswer {
  const char* button;
  ui::kit::Dialogs::Unsaved answer;
};

TEST(QtDialogs, EveryButtonOfTheQuestionAboutAnUnsavedSetIsItsAnswer) {
  platform::desktop::QtDialogs dialogs;
  for (const UnsavedAnswer& row : {UnsavedAnswer{"Save", ui::kit::Dialogs::Unsaved::Save},
                                   UnsavedAnswer{"Discard", ui::kit::Dialogs::Unsaved::Discard},
                                   UnsavedAnswer{"Cancel", ui::kit::Dialogs::Unsaved::GoBack}}) {
    const Meanwhile press([&row](QDialog& dialog) {
      QPushButton* const button = ButtonOf(dialog, row.button);
      ASSERT_NE(button, nullptr) << row.button;
      button->click();
    });
    EXPECT_EQ(dialogs.AskUnsaved("Save it?"), row.answer) << row.button;
  }
  const Meanwhile escape([](QDialog& dialog) { PressKey(dialog, Qt::Key_Escape); });
  EXPECT_EQ(dialogs.AskUnsaved("Save it?"), ui::kit::Dialogs::Unsaved::GoBack);
}

QStringList ManyLines(int count) {
  QStringList lines;
  for (int i = 0; i < count; ++i) lines.append(QString("/home/someone/sounds/a folder/sound number %1.lsu").arg(i));
  return lines;
}

using Show = std::function<void(ui::kit::Dialogs&, int lines)>;

/// Every way to say something long.
const std::pair<const char*, Show> kLongOnes[] = {
    {"message", [](ui::kit::Dialogs& dialogs, int lines) { dialogs.ShowMessage(ManyLines(lines).join('\n')); }},
    {"error",
     [](ui::kit::Dialogs& dialogs, int lines) { dialogs.ShowError("It went wrong.", ManyLines(lines).join('\n')); }},
    {"question",
     [](ui::kit::Dialogs& dialogs, int lines) {
       (void)dialogs.AskOkCancel(ManyLines(lines).join(' '), "", Harmless::Cancel, ui::kit::HelpContext::Messages);
     }},
    {"unsaved set",
     [](ui::kit::Dialogs& dialogs, int lines) { (void)dialogs.AskUnsaved(ManyLines(lines).join('\n')); }},
    {"list",
     [](ui::kit::Dialogs& dialogs, int lines) {
       (void)dialogs.ShowList("These are missing:", ManyLines(lines), "Locate them ...",
                              ui::kit::HelpContext::Messages);
     }},
    {"list with a long headline",
     [](ui::kit::Dialogs& dialogs, int lines) {
       (void)dialogs.ShowList(ManyLines(lines).join('\n'), ManyLines(lines), "", ui::kit::HelpContext::Messages);
     }},
};

class MessageOf : public testing::TestWithParam<ui::kit::ColorScheme> {
 protected:
  void SetUp() override {
    ui::kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(BothSchemes, MessageOf,
                         testing::Values(ui::kit::ColorScheme::Light, ui::kit::ColorScheme::Dark),
                         [](const auto& row) { return row.param == ui::kit::ColorScheme::Dark ? "Dark" : "Light"; });

TEST_P(MessageOf, AnyLengthIsNeverTallerThanTwoThirdsOfTheScreen) {
  platform::desktop::QtDialogs dialogs;
  for (const auto& [what, show] : kLongOnes) {
    for (const int lines : {1, 12, 40, 400}) {
      bool seen = false;
      const Meanwhile look([&seen, what = what, lines](QDialog& dialog) {
        QApplication::processEvents();
        const std::string name = std::string(what) + " of " + std::to_string(lines);
        seen = true;
        EXPECT_LE(dialog.frameGeometry().height() * 3, dialog.screen()->size().height() * 2) << name;
        EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width()) << name;
        // All of the text can be reached, and the buttons stay in sight.
        const auto& texts = *dialog.findChild<QScrollArea*>();
        EXPECT_EQ(texts.verticalScrollBar()->maximum(),
                  std::max(0, texts.widget()->height() - texts.viewport()->height()))
            << name;
        EXPECT_EQ(texts.horizontalScrollBar()->maximum(), 0) << name;
        EXPECT_GE(texts.widget()->height(), texts.widget()->layout()->heightForWidth(texts.widget()->width())) << name;
        EXPECT_GE(texts.viewport()->height(), dialog.fontMetrics().height()) << name;
        for (const QPushButton* const button : dialog.findChildren<QPushButton*>()) {
          const QRect place(button->mapTo(&dialog, QPoint(0, 0)), button->size());
          EXPECT_TRUE(dialog.rect().contains(place)) << name << ", " << button->text().toStdString();
          EXPECT_GE(button->height(), button->sizeHint().height()) << name;
        }
        dialog.reject();
      });
      show(dialogs, lines);
      EXPECT_TRUE(seen) << what;
    }
  }
}

TEST_P(MessageOf, AShortTextIsShownWhole) {
  platform::desktop::QtDialogs dialogs;
  const Meanwhile look([](QDialog& dialog) {
    QApplication::processEvents();
    const auto& texts = *dialog.findChild<QScrollArea*>();
    EXPECT_EQ(texts.verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(texts.focusPolicy(), Qt::NoFocus);
    dialog.reject();
  });
  dialogs.ShowError(
      "The sounds do not fit into the board's memory. Remove some or choose shorter ones, whichever you "
      "like best, and then send them again.",
      "Two lines\nmore.");
}

TEST(MessageList, ShowsEveryLineAndCopiesThem) {
  platform::desktop::QtDialogs dialogs;
  const QStringList lines = ManyLines(40);
  QStringList shown;
  const Meanwhile look([&shown](QDialog& dialog) {
    const auto& list = *dialog.findChild<QListWidget*>("MessageList");
    for (int row = 0; row < list.count(); ++row) shown.append(list.item(row)->text());
    EXPECT_GT(list.verticalScrollBar()->maximum(), 0);
    QGuiApplication::clipboard()->clear();
    dialog.findChild<QPushButton*>("MessageCopyBtn")->click();
    EXPECT_TRUE(dialog.isVisible()) << "copying is no answer";
    dialog.reject();
  });
  EXPECT_FALSE(dialogs.ShowList("These are missing:", lines, "", ui::kit::HelpContext::Messages));
  EXPECT_EQ(shown, lines);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), lines.join('\n'));
}

TEST(MessageList, CtrlCCopiesWhatAMessageSays) {
  platform::desktop::QtDialogs dialogs;
  QGuiApplication::clipboard()->clear();
  const Meanwhile look([](QDialog& dialog) {
    if (!dialog.isActiveWindow()) return dialog.activateWindow();
    QTest::keyClick(&dialog, Qt::Key_C, Qt::ControlModifier);
    dialog.reject();
  });
  dialogs.ShowError("It went wrong.\r\nBadly.", "Line 7.");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "It went wrong.\nBadly.\nLine 7.");
}

TEST(MessageList, TellsWhetherThePersonChoseTheAction) {
  platform::desktop::QtDialogs dialogs;
  const auto answer = [&dialogs](const std::function<void(QDialog&)>& action) {
    const Meanwhile act(action);
    return dialogs.ShowList("These are missing:", {"a", "b"}, "Locate them ...", ui::kit::HelpContext::Open);
  };
  EXPECT_TRUE(answer([](QDialog& dialog) { ButtonOf(dialog, "Locate them ...")->click(); }));
  EXPECT_TRUE(answer([](QDialog& dialog) { PressKey(dialog, Qt::Key_Return); }));
  EXPECT_FALSE(answer([](QDialog& dialog) { ButtonOf(dialog, "Close")->click(); }));
  EXPECT_FALSE(answer([](QDialog& dialog) { PressKey(dialog, Qt::Key_Escape); }));
  EXPECT_FALSE(answer([](QDialog& dialog) { dialog.close(); }));
}

TEST(DismissedDialogs, CloseUnansweredAndNoneIsShownAnyMore) {
  platform::desktop::QtDialogs dialogs;
  bool answered = true;
  bool inner = true;
  {
    // One stands over the other.
    bool first = true;
    const Meanwhile act([&](QDialog&) {
      if (!std::exchange(first, false)) return;
      const Meanwhile dismiss([&dialogs](QDialog&) { dialogs.Dismiss(); });
      inner = dialogs.AskOkCancel("Really?", "", Harmless::Cancel, ui::kit::HelpContext::Messages);
    });
    answered = dialogs.AskOkCancel("Shall it?", "", Harmless::Both, ui::kit::HelpContext::Messages);
  }
  EXPECT_FALSE(inner);
  EXPECT_FALSE(answered);
  const Meanwhile never([](QDialog& dialog) {
    ADD_FAILURE() << "a dialog was shown";
    dialog.reject();
  });
  dialogs.ShowError("It went wrong.", "");
  EXPECT_EQ(dialogs.OpenFile("Open", "", "", ui::kit::HelpContext::Open), "");
  EXPECT_EQ(dialogs.AskUnsaved("Save it?"), ui::kit::Dialogs::Unsaved::GoBack);
  EXPECT_TRUE(dialogs.AskOkCancel("Resume?", "", Harmless::Ok, ui::kit::HelpContext::Messages));
}

TEST(FileDialog, IsWideEnoughForWhatItsColumnsHold) {
  ui::kit::Theme::Apply(*static_cast<QApplication*>(QCoreApplication::instance()), ui::kit::ColorScheme::Light);
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "a folder");
  WriteBytes(folder / "a set of mine.lscfg", std::string(1234567, 'x'));
  platform::desktop::QtDialogs dialogs;
  const Meanwhile look([](QDialog& dialog) {
    auto& files = *dialog.findChild<QTreeView*>("treeView");
    // The contents come from a thread of Qt's own.
    if (files.model()->rowCount(files.rootIndex()) < 2) return;
    QApplication::processEvents();
    for (int column = 0; column < files.header()->count(); ++column) {
      const auto needed = static_cast<QAbstractItemView&>(files).sizeHintForColumn(column);
      EXPECT_GE(files.columnWidth(column), needed) << column;
    }
    EXPECT_LE(files.header()->length(), files.viewport()->width());
    dialog.reject();
  });
  EXPECT_EQ(dialogs.OpenFile("Open", QString::fromStdString(folder.Path().string()), "All files (*)",
                             ui::kit::HelpContext::Open),
            "");
}

TEST(FileDialog, AllFilesAreAllFiles) {
  const TemporaryFolder folder;
  WriteBytes(folder / "README", "x");
  WriteBytes(folder / "set.lscfg", "x");
  platform::desktop::QtDialogs dialogs;
  int shown = 0;
  const Meanwhile look([&shown](QDialog& dialog) {
    const auto& files = *dialog.findChild<QTreeView*>("treeView");
    shown = files.model()->rowCount(files.rootIndex());
    if (shown == 0) return;
    QApplication::processEvents();
    shown = files.model()->rowCount(files.rootIndex());
    dialog.reject();
  });
  (void)dialogs.OpenFile("Open", QString::fromStdString(folder.Path().string()),
                         ui::kit::QtFileFilter("All files (*.*)|*.*"), ui::kit::HelpContext::Open);
  EXPECT_EQ(shown, 2);
}

}  // namespace
}  // namespace kestrin::support
