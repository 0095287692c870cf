// SPDX-License-Identifier: MIT
#include <algorithm>

#include "cli/Commands.h"
#include "cli/ConfigurationLoader.h"
#include "cli/FontsFolder.h"
#include "cli/OnlineBoard.h"
#include "cli/SetDifferences.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"
#include "core/sound/board/HoldingText.h"
#include "core/update/FontFiles.h"
#include "core/update/StoredFonts.h"

namespace kestrin::cli {

namespace {

using core::sound::BoardInquiry;
using core::sound::FlashSound;
using core::sound::HoldingText;
using core::sound::LSU_Configuration;
using core::sound::SetComparison;
using core::sound::SetDifference;
using core::sound::SetImage;

/// What was found out about a board.
struct Holding {
  /// The set that it holds, as far as one of those that are known is it.
  std::filesystem::path set;
  std::vector<FlashSound> sounds;
  /// Where a set of the person's that comes close differs.
  std::vector<SetDifference> differences;
  /// All of it in one line.
  std::string text;
};

class BoardCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "board"; }
  [[nodiscard]] std::string Description() const override { return "Tell which set the board holds"; }

  void Declare(Syntax& syntax) override {
    syntax.Paths("FILE", m_files, "Sets (.lscfg) that it may be, beside the fonts of this computer",
                 Syntax::Need::Optional);
  }

  [[nodiscard]] Report Run(Context& context) override {
    // Whatever is wrong with the sets that were named shows before a board is bothered.
    std::vector<LSU_Configuration> named(m_files.size());
    for (std::size_t i = 0; i < named.size(); ++i) LoadMemoryMap(m_files[i], named[i], context.interrupt.Pump());
    OnlineBoard online(context);
    online.RequireSoundBoard();
    BoardInquiry inquiry(online.Board(), [&context] {
      context.interrupt.Look();
      return true;
    });
    return ReportOf(Find(context, named, inquiry, online.State().MostFlash()));
  }

 private:
  [[nodiscard]] Holding Find(Context& context, std::vector<LSU_Configuration>& named, BoardInquiry& inquiry,
                             std::int32_t flash) const {
    for (std::size_t i = 0; i < named.size(); ++i) {
      const SetImage image = SetImage::Of(named[i], m_files[i]);
      if (RequireTold(inquiry.Holds(image))) return Known(image);
    }
    Holding holding{{}, RequireTold(inquiry.Read(flash)), {}, {}};
    if (const std::optional<SetImage> font = FontOnBoard(context, holding.sounds, inquiry)) return Known(*font);
    holding.text = HoldingText::Of(holding.sounds);
    if (!named.empty() && !holding.sounds.empty()) {
      holding.differences = RequireTold(SetComparison::WithBoard(named.front(), holding.sounds, inquiry));
      // Of a set in which more differs than not, nobody would say that it is that set.
      if (holding.differences.size() * 2 <= holding.sounds.size())
        holding.text = HoldingText::Of(core::base::Quoted(m_files.front().stem()), holding.differences, kNamedPlaces);
    }
    return holding;
  }

  [[nodiscard]] static Holding Known(const SetImage& image) {
    return {image.path, image.sounds, {}, core::base::Quoted(image.path.stem())};
  }

  /// The font among those of this computer that the board holds.
  [[nodiscard]] static std::optional<SetImage> FontOnBoard(Context& context, const std::vector<FlashSound>& sounds,
                                                           BoardInquiry& inquiry) {
    using core::update::FontFiles;
    for (const std::filesystem::path& folder : FontsFolders(context.options)) {
      for (const core::update::StoredFont& font : core::update::StoredFonts(folder)) {
        if (!font.complete) continue;
        const std::filesystem::path name = core::base::PathOf(font.name);
        std::filesystem::path file = folder / name / name;
        file += FontFiles::kConfigurationEnding;
        LSU_Configuration configuration;
        try {
          static_cast<void>(LoadConfiguration(file, configuration, context.interrupt.Pump()));
        } catch (const CommandFailure& failure) {
          if (failure.Code() == ExitCode::Interrupted) throw;
          continue;
        }
        // Coding takes time: only what has the same lengths is worth it.
        if (!HasLengths(configuration, sounds)) continue;
        if (!configuration.MakeMemoryMap([](int) { return true; }, context.interrupt.Pump())) continue;
        SetImage image = SetImage::Of(configuration, file);
        if (RequireTold(inquiry.Holds(image))) return image;
      }
    }
    return std::nullopt;
  }

  [[nodiscard]] static bool HasLengths(LSU_Configuration& configuration, const std::vector<FlashSound>& sounds) {
    return std::ranges::equal(
        configuration.FilesInFlashOrder(), sounds, [](const core::sound::SlotFile& entry, const FlashSound& sound) {
          return core::sound::LSU_SoundFile::CodedBytes(entry.file->NrOfSamples()) == sound.length;
        });
  }

  [[nodiscard]] static Report ReportOf(const Holding& holding) {
    using Align = TextTable::Align;
    Document files = Document::array();
    TextTable table({{"slot"}, {"address", Align::Right}, {"length", Align::Right}, {"checksum", Align::Right}});
    for (const FlashSound& sound : holding.sounds) {
      files.push_back({{"slot", core::sound::SlotOf(sound.place.kind).name},
                       {"position", sound.place.position},
                       {"address", sound.address},
                       {"length", sound.length},
                       {"checksum", sound.checksum}});
      table.Add({HoldingText::NameOf(sound.place), std::to_string(sound.address), std::to_string(sound.length),
                 std::to_string(sound.checksum)});
    }
    Report report;
    report.document = {{"known", !holding.set.empty()},
                       {"set", core::base::TextOf(holding.set)},
                       {"files", std::move(files)},
                       {"differences", DocumentOf(holding.differences)}};
    report.text = "On the board: " + holding.text + "\n";
    if (!holding.sounds.empty()) report.text += "\n" + table.Text();
    return report;
  }

  /// Places that differ, before the others are only counted.
  static constexpr std::size_t kNamedPlaces = 5;

  std::vector<std::filesystem::path> m_files;
};

}  // namespace

std::unique_ptr<Command> MakeBoardCommand() { return std::make_unique<BoardCommand>(); }

}  // namespace kestrin::cli
