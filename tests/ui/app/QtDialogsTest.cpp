#include "platform/desktop/QtDialogs.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QTimer>

namespace kestrin::support {
namespace {

using Harmless = app::Dialogs::Harmless;

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
  desktop::QtDialogs dialogs;
  QTimer press;
  QObject::connect(&press, &QTimer::timeout, [key] {
    auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    QWidget* const focused = box->focusWidget();
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(focused != nullptr ? focused : box, &down);
  });
  press.start(0);
  return dialogs.AskOkCancel("Shall it?", "", harmless, app::HelpContext::Messages);
}

TEST(QtDialogs, EnterAndEscapeNeverGiveTheHarmfulAnswer) {
  for (const KeyAnswers& row : kKeyAnswers) {
    EXPECT_EQ(AnswerByKey(row.harmless, Qt::Key_Return), row.enter) << row.what;
    EXPECT_EQ(AnswerByKey(row.harmless, Qt::Key_Escape), row.escape) << row.what;
  }
}

}  // namespace
}  // namespace kestrin::support
