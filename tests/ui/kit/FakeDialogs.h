// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "ui/kit/Dialogs.h"

namespace kestrin::support {

/// Answers from queues and remembers what was shown. A question that no test has answered is a failure.
class FakeDialogs final : public ui::kit::Dialogs {
 public:
  struct Asked {
    QString question;
    QString advice;
    Harmless harmless;
  };

  std::deque<QString> filesToOpen;
  std::deque<QStringList> manyToOpen;
  std::deque<QString> filesToSave;
  std::deque<QString> folders;
  std::deque<MissingSounds> missingAnswers;
  std::deque<bool> okAnswers;
  std::deque<Unsaved> unsavedAnswers;
  std::deque<LeftSet> leftSetAnswers;
  std::deque<bool> listAnswers;
  std::deque<std::optional<QColor>> colors;
  /// Called while a question stands, and while a message about something that is wrong does.
  std::function<void()> whileAsking;
  std::function<void()> whileTelling;

  std::vector<QString> messages;
  std::vector<QString> errors;
  struct Listed {
    QString headline;
    QStringList lines;
    QString action;
  };
  std::vector<Listed> lists;
  std::vector<Asked> asked;
  std::vector<QString> unsavedAsked;
  std::vector<Asked> leftSetsAsked;
  std::vector<Asked> missingAsked;
  QString lastFilter;
  QString lastStart;
  QString lastSuffix;
  QString lastDetail;
  QColor lastColor;
  ui::kit::HelpContext lastTopic{};

  [[nodiscard]] QString OpenFile(const QString&, const QString& start, const QString& filter,
                                 ui::kit::HelpContext topic) override {
    lastStart = start;
    lastFilter = filter;
    lastTopic = topic;
    return Next(filesToOpen, QString());
  }
  [[nodiscard]] QStringList OpenFiles(const QString&, const QString& start, const QString& filter,
                                      ui::kit::HelpContext topic) override {
    lastStart = start;
    lastFilter = filter;
    lastTopic = topic;
    return Next(manyToOpen, QStringList());
  }
  [[nodiscard]] QString SaveFile(const QString&, const QString& start, const QString& filter, const QString& suffix,
                                 ui::kit::HelpContext topic) override {
    lastStart = start;
    lastFilter = filter;
    lastSuffix = suffix;
    lastTopic = topic;
    return Next(filesToSave, QString());
  }
  [[nodiscard]] std::optional<QColor> AskColor(const QColor& preset, ui::kit::HelpContext topic) override {
    lastColor = preset;
    lastTopic = topic;
    return Next(colors, std::optional<QColor>());
  }
  void ShowMessage(const QString& text, const QString& detail) override {
    messages.push_back(text);
    lastDetail = detail;
  }
  void ShowError(const QString& text, const QString& detail) override {
    errors.push_back(text);
    lastDetail = detail;
    if (whileTelling) whileTelling();
  }
  [[nodiscard]] bool ShowList(const QString& headline, const QStringList& lines, const QString& action,
                              ui::kit::HelpContext topic) override {
    lists.push_back({headline, lines, action});
    lastTopic = topic;
    return !action.isEmpty() && Next(listAnswers, false);
  }
  [[nodiscard]] bool AskOkCancel(const QString& question, const QString& advice, Harmless harmless,
                                 ui::kit::HelpContext topic) override {
    asked.push_back({question, advice, harmless});
    lastTopic = topic;
    if (whileAsking) whileAsking();
    return Next(okAnswers, harmless == Harmless::Ok);
  }
  [[nodiscard]] Unsaved AskUnsaved(const QString& question) override {
    unsavedAsked.push_back(question);
    if (whileAsking) whileAsking();
    return Next(unsavedAnswers, Unsaved::GoBack);
  }
  [[nodiscard]] LeftSet AskLeftSet(const QString& question, const QString& advice) override {
    leftSetsAsked.push_back({question, advice, Harmless::Cancel});
    if (whileAsking) whileAsking();
    return Next(leftSetAnswers, LeftSet::Leave);
  }
  [[nodiscard]] QString ChooseFolder(const QString&, const QString& start, ui::kit::HelpContext topic) override {
    lastStart = start;
    lastTopic = topic;
    return Next(folders, QString());
  }
  [[nodiscard]] MissingSounds AskMissing(const QString& question, const QString& advice) override {
    missingAsked.push_back({question, advice, Harmless::Cancel});
    return Next(missingAnswers, MissingSounds::GoBack);
  }

 private:
  template <typename T>
  static T Next(std::deque<T>& answers, T otherwise) {
    if (answers.empty()) {
      ADD_FAILURE() << "a dialog that the test did not expect";
      return otherwise;
    }
    T answer = std::move(answers.front());
    answers.pop_front();
    return answer;
  }
};

}  // namespace kestrin::support
