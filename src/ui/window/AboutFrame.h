// SPDX-License-Identifier: MIT
#pragma once

#include "ui/kit/Card.h"
#include "ui/window/AboutFacts.h"

class QGridLayout;
class QLabel;
class QPushButton;

namespace kestrin::ui::doctor {
class Shelf;
}
namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::window {

/// The sheet "About Kestrin Launcher": version, licence, where things lie, libraries; all of it can be copied.
class AboutFrame : public kit::Card {
  Q_OBJECT

 public:
  static constexpr const char* kCaption = QT_TR_NOOP("Kestrin Launcher");

  /// Starts hidden. The pictures must outlive the sheet.
  explicit AboutFrame(const kit::Pictures& pictures, QWidget* parent = nullptr);

  /// Shows the sheet with these facts.
  void Open(const AboutFacts& facts);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void MakeLayout();
  [[nodiscard]] QWidget* MakeHead();
  [[nodiscard]] QWidget* MakeFooter();
  /// Puts a title into the grid's next row.
  void AddTitle(const QString& name, const QString& text);
  /// Puts a name and what there is to say of it into the grid's next row.
  void AddRow(const QString& what, const QString& text);
  void Copy();

  const kit::Pictures& m_pictures;
  QString m_report;
  QLabel* m_logo = nullptr;
  QLabel* m_version = nullptr;
  QLabel* m_licence = nullptr;
  doctor::Shelf* m_shelf = nullptr;
  QGridLayout* m_grid = nullptr;
  /// That are filled.
  int m_rows = 0;
  QPushButton* m_copy = nullptr;
  QLabel* m_copyHint = nullptr;
  QPushButton* m_close = nullptr;
};

}  // namespace kestrin::ui::window
