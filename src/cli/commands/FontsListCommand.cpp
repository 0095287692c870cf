// SPDX-License-Identifier: MIT
#include <map>

#include "cli/Commands.h"
#include "cli/FontsFolder.h"
#include "cli/TextTable.h"
#include "core/update/StoredFonts.h"

namespace kestrin::cli {

namespace {

class FontsListCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "fonts list"; }
  [[nodiscard]] std::string Description() const override { return "List the sound fonts on disk"; }

  [[nodiscard]] Report Run(Context& context) override {
    Document fonts = Document::array();
    TextTable table({{"font"}, {"complete"}, {"sounds", TextTable::Align::Right}});
    for (const Font& font : Fonts(FontsFolders(context.options))) {
      fonts.push_back({{"name", font.name}, {"complete", font.complete}, {"files", font.files}});
      table.Add({font.name, font.complete ? "yes" : "no", std::to_string(font.files.size())});
    }
    Report report;
    report.text = fonts.empty() ? "No sound fonts yet. \"kestrinctl fonts update\" fetches them.\n" : table.Text();
    report.document = {{"fonts", std::move(fonts)}};
    return report;
  }

 private:
  using Font = core::update::StoredFont;

  /// The fonts of all these folders by name; of two of a name, the one that lies in the first folder.
  static std::vector<Font> Fonts(const std::vector<std::filesystem::path>& folders) {
    std::map<std::string, Font> fonts;
    for (const std::filesystem::path& folder : folders)
      for (Font& font : core::update::StoredFonts(folder)) fonts.try_emplace(font.name, std::move(font));
    std::vector<Font> all;
    all.reserve(fonts.size());
    for (auto& [name, font] : fonts) all.push_back(std::move(font));
    return all;
  }
};

}  // namespace

std::unique_ptr<Command> MakeFontsListCommand() { return std::make_unique<FontsListCommand>(); }

}  // namespace kestrin::cli
