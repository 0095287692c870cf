// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "core/doctor/Diagnosis.h"

class QLabel;

namespace kestrin::ui::kit {
class LinkButton;
class WrapLabel;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::doctor {

class VerdictSign;

/// One question about the way to a board: its sign, the question, the answer in a word, and what was found.
class QuestionRow : public QWidget {
  Q_OBJECT

 public:
  /// A row for that question, which waits for its answer.
  explicit QuestionRow(core::doctor::Question question, QWidget* parent = nullptr);

  /// `text` is what was found, or what the question waits for; "" for nothing to say.
  void Show(core::doctor::Verdict verdict, const QString& text);
  /// Puts the link beside what was found.
  void AddLink(kit::LinkButton& link);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ColorAnswer();
  [[nodiscard]] QString AnswerWord() const;

  core::doctor::Question m_question;
  core::doctor::Verdict m_verdict = core::doctor::Verdict::Unknown;
  VerdictSign* m_sign;
  QLabel* m_ask;
  QLabel* m_answer;
  kit::WrapLabel* m_text;
};

}  // namespace kestrin::ui::doctor
