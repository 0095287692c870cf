// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <cstdint>
#include <filesystem>
#include <string>

#include "core/base/Result.h"
#include "ui/led/LedPanel.h"

namespace kestrin::core::device {
struct SessionState;
}

namespace kestrin::ui::window {

class Pages;

/// The LED driver's page among the pages of the window: made with its first use, and shown when an LED driver comes.
class LedPage : public QObject {
  Q_OBJECT

 public:
  /// `around` is what the panel is made with. All must outlive the object.
  LedPage(Pages& pages, led::LedPanel::Surroundings around, QObject* parent = nullptr);

  /// Makes the page, soon, if there is none yet.
  void MakeSoon();
  /// Another board, another page. A board that is asked again and again does not take the person away from the page of
  /// their choice.
  void Follow(const core::device::SessionState& state);
  /// As core::device::BoardReader says.
  core::base::Result<> InitLedDrivers();
  [[nodiscard]] std::string CatalogueStamp() { return Panel().CatalogueStamp(); }
  /// Shows the page and opens a settings file there, as LedPanel::OpenPath() does.
  void OpenPath(const std::filesystem::path& path);
  /// What is set on the page; nullptr as long as it is not made.
  [[nodiscard]] const core::ledsetup::LedSetupState* State() const;
  /// Whether the window may be closed: asks when pulses would be lost.
  [[nodiscard]] bool MayClose() { return m_panel == nullptr || m_panel->MayClose(); }

 signals:
  /// The page is there.
  void made(QWidget& panel);
  /// The page shows other pulses, or another LED type.
  void pulsesShown();
  /// The board failed a command.
  void boardFailed();
  /// Short news for the help line.
  void news(const QString& text);

 private:
  led::LedPanel& Panel();
  void ShowFor(std::int32_t board);

  Pages& m_pages;
  led::LedPanel::Surroundings m_around;
  /// Null until it is needed, see Panel().
  led::LedPanel* m_panel = nullptr;
  bool m_isOnline = false;
  /// The number of the LED driver whose page was shown last; 0 for none.
  std::int32_t m_board = 0;
};

}  // namespace kestrin::ui::window
