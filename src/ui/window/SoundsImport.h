// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QObject>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "core/sound/SlotKind.h"

class QSettings;

namespace kestrin::core::sound {
class SoundSet;
}
namespace kestrin::ui::imports {
class ImportControl;
class ImportFrame;
class ImportModel;
}  // namespace kestrin::ui::imports
namespace kestrin::ui::kit {
class Pictures;
}

namespace kestrin::ui::sound {
class SoundPage;
}

namespace kestrin::ui::window {

class Preview;
class SetLevelling;
struct Surroundings;
class ToolRow;

/// The sheet "Import sounds" over the window's set, and the menu that leads to it.
class SoundsImport : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the object.
  SoundsImport(core::sound::SoundSet& set, Preview& preview, const SetLevelling& levelling, const Surroundings& around,
               const kit::Pictures& pictures, QObject* parent = nullptr);
  ~SoundsImport() override;

  /// Whether the surroundings have what it takes to read sounds; if not, nothing below does anything.
  [[nodiscard]] bool IsThere() const { return m_control != nullptr; }
  /// For whoever lays it over the window, which owns it then.
  [[nodiscard]] imports::ImportFrame& Frame() const { return *m_frame; }
  /// Offers what leads to the sheet on the tool row and the page, which must outlive the object. `mayOpen` says whether
  /// the sheet may open now.
  void Attach(ToolRow& tools, sound::SoundPage& page, std::function<bool()> mayOpen);
  void AskForFiles();
  /// Opens the sheet with the sounds in these files, folders and archives, all for one slot when that is given, unless
  /// it may not.
  void Open(const std::vector<std::filesystem::path>& named, std::optional<core::sound::SlotKind> slot = {});
  /// The program ends.
  void Stop();

  /// Whether all that is named can be imported, by its name, and the sheet may open now.
  [[nodiscard]] bool Takes(const std::vector<std::filesystem::path>& named) const;

 signals:
  void news(const QString& text);

 private:
  QMenu m_menu;
  imports::ImportModel* m_rows;
  imports::ImportFrame* m_frame;
  /// nullptr without what it takes.
  imports::ImportControl* m_control = nullptr;
  QSettings& m_settings;
  std::function<bool()> m_mayOpen = [] { return false; };
};

}  // namespace kestrin::ui::window
