// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>

#include "ui/kit/HelpContext.h"

namespace kestrin::ui::kit {

/// The port to file dialogs, message boxes and questions. Every call waits for the person. `topic` is what F1 opens
/// meanwhile; messages lead to the page that explains every message.
class Dialogs {
 public:
  /// What becomes of a set that is not saved yet.
  enum class Unsaved { Save, Discard, GoBack };
  /// What becomes of a set that was not saved when the program ended.
  enum class LeftSet { Open, Leave, ThrowAway };
  /// What becomes of the sounds that could not be found when their set is saved.
  enum class MissingSounds { LeaveOut, Keep, GoBack };
  /// The answer that leaves things as they are: the one that Enter, Escape and closing the question stand for. Where
  /// both do, Enter is OK and Escape is Cancel.
  enum class Harmless { Ok, Cancel, Both };

  virtual ~Dialogs() = default;

  /// The file to open, "" when the person thought better of it. `start` is a folder or a file, `filter` as Qt has it.
  [[nodiscard]] virtual QString OpenFile(const QString& title, const QString& start, const QString& filter,
                                         HelpContext topic = HelpContext::Files) = 0;
  /// The same for several files; none when the person thought better of it.
  [[nodiscard]] virtual QStringList OpenFiles(const QString& title, const QString& start, const QString& filter,
                                              HelpContext topic = HelpContext::Files) = 0;
  /// The file to save as, with `suffix` when the person gave none; they were asked before one that exists is replaced.
  [[nodiscard]] virtual QString SaveFile(const QString& title, const QString& start, const QString& filter,
                                         const QString& suffix, HelpContext topic = HelpContext::Files) = 0;
  /// A folder, "" when the person thought better of it. `start` is the one that is shown first.
  [[nodiscard]] virtual QString ChooseFolder(const QString& title, const QString& start,
                                             HelpContext topic = HelpContext::Files) = 0;
  /// The color that the person picks, empty when they thought better of it; `preset` is the chosen one at first.
  [[nodiscard]] virtual std::optional<QColor> AskColor(const QColor& preset,
                                                       HelpContext topic = HelpContext::ColorPicker) = 0;
  /// `detail` is "" or says what exactly is meant.
  virtual void ShowMessage(const QString& text, const QString& detail = {}) = 0;
  /// A message about something that is wrong.
  virtual void ShowError(const QString& text, const QString& detail = {}) = 0;
  /// A message about many things: a headline and one line for each, which can be copied. `action` is the caption of a
  /// button that puts it right, "" for none. True when the person chose that button.
  [[nodiscard]] virtual bool ShowList(const QString& headline, const QStringList& lines, const QString& action,
                                      HelpContext topic) = 0;
  /// A question with OK and Cancel; true for OK. `advice` is "" or says what may help.
  [[nodiscard]] virtual bool AskOkCancel(const QString& question, const QString& advice, Harmless harmless,
                                         HelpContext topic = HelpContext::Messages) = 0;
  [[nodiscard]] virtual Unsaved AskUnsaved(const QString& question) = 0;
  /// Enter opens it; Escape and closing the question leave it.
  [[nodiscard]] virtual LeftSet AskLeftSet(const QString& question, const QString& advice) = 0;
  /// Enter, Escape and closing the question go back.
  [[nodiscard]] virtual MissingSounds AskMissing(const QString& question, const QString& advice) = 0;
};

}  // namespace kestrin::ui::kit
