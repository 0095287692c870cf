// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <array>
#include <utility>
#include <vector>

class QAction;
class QHBoxLayout;
class QIcon;
class QLabel;
class QMenu;
class QToolButton;
class QVBoxLayout;

namespace kestrin::core::device {
struct SessionState;
}
namespace kestrin::ui::kit {
class LinkButton;
class Pictures;
}  // namespace kestrin::ui::kit

namespace kestrin::ui::window {

/// The row of picture buttons along the top of the window, with the board that is online.
class ToolRow : public QWidget {
  Q_OBJECT

 public:
  enum class Tool { Load, Save, Import, Try, Config, Update, Send };
  static constexpr std::array<Tool, 7> kTools{Tool::Load,   Tool::Save,   Tool::Import, Tool::Try,
                                              Tool::Config, Tool::Update, Tool::Send};

  /// The pictures must outlive the row.
  explicit ToolRow(const kit::Pictures& pictures, QWidget* parent = nullptr);

  [[nodiscard]] QToolButton& Button(Tool tool) const { return *m_buttons[static_cast<std::size_t>(tool)]; }
  /// The button cannot be used for this reason, which its tool tip then gives; "" for one that can.
  void ShowWhyNot(Tool tool, const QString& reason) const;
  /// Buttons for the two actions stand beside those for the set's file.
  void AddUndoAndRedo(QAction& undo, QAction& redo);
  /// Whether the buttons for the two actions, and the keys of these, can be used at all.
  void EnableUndoAndRedo(bool enabled) const;
  /// What opens beside `LoadBtn`: by a click on its arrow, or by the arrow key down while the button has the keyboard.
  void SetLoadMenu(QMenu& menu) { SetArrowMenu(Tool::Load, menu); }
  /// The same beside `ImportBtn`, which is there only with a menu.
  void SetImportMenu(QMenu& menu);

  /// The same beside `SaveBtn`.
  void SetSaveMenu(QMenu& menu) { SetArrowMenu(Tool::Save, menu); }

  /// The chip that says what the board holds stands below the board's name.
  void AddBoardChip(QWidget& chip);

  /// What opens below `ViewBtn`.
  void SetViewMenu(QMenu& menu);
  /// What opens below `HelpBtn`.
  void SetHelpMenu(QMenu& menu);
  /// Offers `WhyLink` beside "No board connected", as long as that stands there. It cannot be used for this reason; ""
  /// when it can.
  void OfferWhy(const QString& whyNot);

  /// Without the captions of the tools, which stand there only where there is room for all of them.
  [[nodiscard]] QSize minimumSizeHint() const override;

  void ShowLogo();
  /// The board that is online, or that there is none and why.
  void ShowSession(const core::device::SessionState& session);

 signals:
  void pressed(window::ToolRow::Tool tool);
  /// `WhyLink`: the person wants to know why there is no board.
  void whyPressed();

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MakeButtons(QHBoxLayout& layout);
  /// A button that a menu opens below.
  [[nodiscard]] QToolButton* MakeMenuButton(const char* name, const QString& caption, const QString& purpose);
  [[nodiscard]] QVBoxLayout* MakeLabels();
  void ShowPictures();
  /// The width that the row needs, with the captions of the tools or without.
  [[nodiscard]] int WidthFor(bool hasCaptions) const;
  void FitCaptions();
  void SetMenu(QToolButton& button, QMenu& menu);
  void SetArrowMenu(Tool tool, QMenu& menu);
  /// Puts out the light of the button when its menu closes, unless the pointer is on it.
  void ForgetPointerAfter(QMenu& menu, QToolButton& button);
  /// The picture in grey, for the disabled state.
  void AddDisabledPicture(QIcon& icon, const QString& picture) const;
  [[nodiscard]] QToolButton* MakeActionButton(const char* name, QAction& action);

  const kit::Pictures& m_pictures;
  std::array<QToolButton*, kTools.size()> m_buttons{};
  /// Undo and redo with their pictures.
  std::vector<std::pair<QAction*, QString>> m_edits;
  QWidget* m_edit = nullptr;
  QToolButton* m_view = nullptr;
  QToolButton* m_help = nullptr;
  QLabel* m_logo = nullptr;
  QLabel* m_online = nullptr;
  /// In place of the serial number while there is no board.
  QLabel* m_noBoard = nullptr;
  /// Beside that one.
  kit::LinkButton* m_why = nullptr;
  bool m_isOnline = false;
  QLabel* m_serial = nullptr;
  /// The board's name, and what is below it.
  QVBoxLayout* m_board = nullptr;
};

}  // namespace kestrin::ui::window
