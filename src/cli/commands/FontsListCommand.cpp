#include "cli/Commands.h"
#include "cli/FontsFolder.h"
#include "cli/TextTable.h"
#include "update/UpdateUtils.h"

namespace kestrin::cli {

namespace {

class FontsListCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "fonts list"; }
  [[nodiscard]] std::string Description() const override { return "List the sound fonts on disk"; }

  [[nodiscard]] Report Run(Context& context) override {
    Document fonts = Document::array();
    TextTable table({{"font"}, {"complete"}, {"sounds", TextTable::Align::Right}});
    const update::UpdateUtils utils(FontsFolder(context.options));
    for (const update::UpdateUtils::Font& font : utils.Fonts()) {
      fonts.push_back({{"name", font.name}, {"complete", font.complete}, {"files", font.files}});
      table.Add({font.name, font.complete ? "yes" : "no", std::to_string(font.files.size())});
    }
    Report report;
    report.text = fonts.empty() ? "No sound fonts yet. \"kestrinctl fonts update\" fetches them.\n" : table.Text();
    report.document = {{"fonts", std::move(fonts)}};
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeFontsListCommand() { return std::make_unique<FontsListCommand>(); }

}  // namespace kestrin::cli
