// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace kestrin::core::sound {
class SoundSet;
}
namespace kestrin::ui::sound {
class SoundPage;
}
namespace kestrin::ui::stage {
class TryControl;
}

namespace kestrin::ui::window {

class LedPage;
class Pages;
class Preview;
class SensorSetup;
struct Surroundings;
class ToolRow;

/// The page "Try the saber" among the pages of the window, over the window's set.
class TryPage : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object.
  TryPage(core::sound::SoundSet& set, const Surroundings& around, const SensorSetup& sensor, QObject* parent = nullptr);

  /// Puts the page among the others and lets it work together with them. All must outlive the object.
  void Attach(Pages& pages, ToolRow& tools, sound::SoundPage& page, Preview& preview, LedPage& led);
  /// Shows the page, or the one that was there before it.
  void Toggle();
  /// While something goes on that needs the set as it is, no volume can be changed.
  void SetBusy(bool isBusy);

 signals:
  /// Short news for the help line.
  void news(const QString& text);

 private:
  const LedPage* m_led = nullptr;
  Pages* m_pages = nullptr;
  stage::TryControl* m_control;
};

}  // namespace kestrin::ui::window
