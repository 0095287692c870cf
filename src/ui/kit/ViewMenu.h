// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include "ui/kit/Theme.h"

class QSettings;

namespace kestrin::ui::kit {

/// The person's choice of colours: System, Light or Dark. What is chosen holds at once, and is remembered.
class ViewMenu : public QMenu {
  Q_OBJECT

 public:
  /// The settings must outlive the menu.
  explicit ViewMenu(QSettings& settings, QWidget* parent = nullptr);

  /// What was chosen last; System at first, and where the settings say something unknown.
  [[nodiscard]] static ColorScheme Chosen(const QSettings& settings);

 private:
  void Choose(QSettings& settings, ColorScheme scheme) const;
};

}  // namespace kestrin::ui::kit
