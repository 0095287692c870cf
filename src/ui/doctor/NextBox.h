// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <optional>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace kestrin::ui::kit {
class LinkButton;
class Pictures;
class WrapLabel;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::doctor {

/// A box that says what comes next: a headline, a text, at most one main button, one beside it, and a link that shows
/// more.
class NextBox : public QFrame {
  Q_OBJECT

 public:
  /// What the box says; what is "" is not there.
  struct Step {
    QString title;
    QString text;
    /// What has gone wrong with it.
    QString failure;
    /// Captions of the buttons.
    QString primary;
    QString secondary;
    /// What the link shows, and hides again.
    QString more;
    /// Whether it is shown from the start, without the link.
    bool isMoreShown = false;

    friend bool operator==(const Step&, const Step&) = default;
  };

  /// The pictures must outlive the box, which says nothing at first.
  explicit NextBox(const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Says something else. What was shown by the link stays open where it is the same.
  void Show(const Step& step);
  /// Gives the keyboard to the button that is not the main one, else to the main one. False when there is neither.
  bool TakeFocus();

 signals:
  void primaryPressed();
  void secondaryPressed();

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeLayout();
  [[nodiscard]] QPlainTextEdit* MakeMore();
  void ShowMore(bool isShown);
  void ShowPicture();

  const kit::Pictures& m_pictures;
  /// What is shown; none at first.
  std::optional<Step> m_step;
  bool m_isMoreShown = false;
  QLabel* m_title = nullptr;
  kit::WrapLabel* m_text = nullptr;
  kit::WrapLabel* m_failure = nullptr;
  QPlainTextEdit* m_more = nullptr;
  QWidget* m_buttons = nullptr;
  QPushButton* m_primary = nullptr;
  QPushButton* m_secondary = nullptr;
  kit::LinkButton* m_link = nullptr;
};

}  // namespace kestrin::ui::doctor
