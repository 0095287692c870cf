#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include "app/Dialogs.h"

namespace kestrin::support {

/// Answers from queues and remembers what was shown. A question that no test has answered is a failure.
class FakeDialogs final : public app::Dialogs {
 public:
  struct Asked {
    QString question;
    QString advice;
    Harmless harmless;
  };

  std::deque<QString> filesToOpen;
  std::deque<QString> filesToSave;
  std::deque<bool> okAnswers;
  std::deque<Unsaved> unsavedAnswers;
  /// Called while a question stands.
  std::function<void()> whileAsking;

  std::vector<QString> messages;
  std::vector<QString> errors;
  std::vector<Asked> asked;
  std::vector<QString> unsavedAsked;
  QString lastFilter;
  QString lastStart;
  QString lastSuffix;
  app::HelpContext lastTopic{};

  [[nodiscard]] QString OpenFile(const QString&, const QString& start, const QString& filter,
                                 app::HelpContext topic) override {
    lastStart = start;
    lastFilter = filter;
    lastTopic = topic;
    return Next(filesToOpen, QString());
  }
  [[nodiscard]] QString SaveFile(const QString&, const QString& start, const QString& filter, const QString& suffix,
                                 app::HelpContext topic) override {
    lastStart = start;
    lastFilter = filter;
    lastSuffix = suffix;
    lastTopic = topic;
    return Next(filesToSave, QString());
  }
  void ShowMessage(const QString& text) override { messages.push_back(text); }
  void ShowError(const QString& text) override { errors.push_back(text); }
  [[nodiscard]] bool AskOkCancel(const QString& question, const QString& advice, Harmless harmless,
                                 app::HelpContext topic) override {
    asked.push_back({question, advice, harmless});
    lastTopic = topic;
    if (whileAsking) whileAsking();
    return Next(okAnswers, harmless == Harmless::Ok);
  }
  [[nodiscard]] Unsaved AskUnsaved(const QString& question) override {
    unsavedAsked.push_back(question);
    return Next(unsavedAnswers, Unsaved::GoBack);
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
