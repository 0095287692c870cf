// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "core/doctor/Diagnosis.h"
#include "ui/doctor/NextBox.h"
#include "ui/kit/Card.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QPushButton;
class QVBoxLayout;

namespace kestrin::ui::doctor {

class QuestionRow;
class Shelf;

/// The sheet "Connection doctor": the questions about the way to a board with their answers, and the one thing to do
/// next. It looks at nothing and changes nothing; DoctorControl does what its buttons say.
class DoctorFrame : public kit::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = QT_TR_NOOP("Connection doctor");

  /// What goes on with the board while its answers are not known.
  enum class Talk {
    None,
    Asking,   ///< it is being asked
    Erasing,  ///< it is left alone until it has erased its memory
  };

  /// The rule that lets people open boards, as far as this program can change it.
  struct Rule {
    /// What would be written where; "" when it cannot be changed.
    QString path;
    QString content;
    /// Whether it is there and can be removed.
    bool isRemovable = false;

    friend bool operator==(const Rule&, const Rule&) = default;
  };

  /// Starts hidden. The pictures must outlive the sheet.
  explicit DoctorFrame(const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Shows the sheet as if nothing had been looked at yet.
  void Open();
  /// Shows what was found.
  void Show(const core::doctor::Diagnosis& diagnosis, const Rule& rule);
  void ShowTalk(Talk talk);
  /// The rule is being installed or removed: the system waits for the person.
  void ShowRuleWork(bool isRunning);
  /// What has gone wrong, for the person; it stays until something else is tried. "" takes it away.
  void ShowFailure(const QString& text);
  /// The report is on the clipboard.
  void ShowCopied();

 signals:
  void lookAgainRequested();
  /// The person has agreed that the rule is written.
  void installRequested();
  /// The person has agreed that the rule is taken away.
  void removeRequested();
  void copyRequested(bool withSerialNumber);
  /// The sheet is gone.
  void closed();

 protected:
  void hideEvent(QHideEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// What the box below the questions is about.
  enum class Matter { Advice, Install, Remove };

  void MakeLayout();
  [[nodiscard]] QWidget* MakeFindings();
  void AddRows(QVBoxLayout& column);
  [[nodiscard]] QBoxLayout* MakeFooter();
  void ShowRemarks();
  /// Shows everything anew that has changed; the keyboard stays where it is as long as that can be used.
  void Refresh();
  void Turn(Matter matter);
  void PressPrimary();
  void PressSecondary();

  [[nodiscard]] QString Summary() const;
  [[nodiscard]] QString TextOf(std::size_t question) const;
  [[nodiscard]] NextBox::Step Step() const;
  [[nodiscard]] NextBox::Step Advice() const;
  [[nodiscard]] bool CanInstall() const;

  const kit::Pictures& m_pictures;
  /// What is shown; nothing found at first.
  core::doctor::Diagnosis m_diagnosis;
  bool m_hasLooked = false;
  Rule m_rule;
  Talk m_talk = Talk::None;
  Matter m_matter = Matter::Advice;
  bool m_isRuleWorking = false;
  QString m_failure;

  QLabel* m_summary = nullptr;
  Shelf* m_shelf = nullptr;
  std::array<QuestionRow*, 5> m_rows{};
  QWidget* m_remarks = nullptr;
  QPushButton* m_remove = nullptr;
  NextBox* m_next = nullptr;
  QPushButton* m_copy = nullptr;
  QLabel* m_copyHint = nullptr;
  QCheckBox* m_withSerial = nullptr;
  QPushButton* m_close = nullptr;
};

}  // namespace kestrin::ui::doctor
