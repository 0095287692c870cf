// SPDX-License-Identifier: MIT
#include <iostream>
#include <memory>
#include <system_error>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "core/base/Clock.h"
#include "core/base/PathText.h"
#include "core/base/PrivateFolder.h"
#include "core/sound/pack/SetUnpacker.h"
#include "core/update/PlainName.h"
#include "platform/archive/ZipArchives.h"
#include "platform/net/FontServer.h"

namespace kestrin::cli {

namespace {

constexpr std::int32_t kHighestPort = 65535;

class FontsServeCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "fonts serve"; }
  [[nodiscard]] std::string Description() const override { return "Offer a folder of sound fonts to other computers"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("DIR", m_folder, "The folder, with one folder or packed set (.zip) for each font",
                Syntax::Need::Required);
    syntax.Number("--port N", m_port, 0, kHighestPort, "The port, 0 for a free one");
    syntax.Text("--address A", m_address,
                "The address of this computer, 0.0.0.0 for all (127.0.0.1: this computer only)",
                Syntax::Need::Optional);
    syntax.Flag("--behind-proxy", m_behindProxy,
                "All clients come through one computer that limits them: no limit for one address");
  }

  [[nodiscard]] Report Run(Context& context) override {
    if (std::error_code ignored; !std::filesystem::is_directory(m_folder, ignored))
      throw CommandFailure(ExitCode::Failed,
                           core::base::TextOf(m_folder) + " is no folder. Name one that holds a folder for each font.");
    const bool quiet = context.options.quiet || context.options.json;
    const core::update::FontCollection fonts(m_folder, MakePacked(context.disk));
    const core::base::SystemClock clock;
    const auto note = [quiet](const std::string& text) {
      if (!quiet) std::cout << text << std::endl;
    };
    platform::net::ConnectionTable::Limits limits;
    if (m_behindProxy) limits.ofOneAddress = limits.inAll;
    platform::net::FontServer server(core::update::FontAnswers(fonts), note, clock, limits);
    Require(server.Open(m_address, static_cast<std::uint16_t>(m_port.value_or(0))));
    // Whoever started it waits for this line.
    std::cout << server.Address() << std::endl;
    Introduce(fonts, quiet);
    Require(server.Run([] { return !Interrupt::Requested(); }));
    // Its address was all that it had to say.
    return {ExitCode::Interrupted, nullptr, "", ""};
  }

 private:
  static void Require(const core::base::Result<>& step) {
    if (!step) throw CommandFailure(ExitCode::Failed, step.Text());
  }

  /// What unpacks packed sets, for as long as the server runs.
  static std::shared_ptr<core::update::PackedFonts> MakePacked(core::base::Disk& disk) {
    core::base::Result<core::base::PrivateFolder> folder = core::base::PrivateFolder::Make();
    if (!folder) throw CommandFailure(ExitCode::Failed, folder.Text());
    return std::make_shared<core::update::PackedFonts>(
        std::move(*folder), [&disk](const std::filesystem::path& file, const std::filesystem::path& place) {
          platform::archive::ZipArchives archives(disk);
          return core::sound::SetUnpacker(archives, disk).Unpack(file, place);
        });
  }

  static void Introduce(const core::update::FontCollection& fonts, bool quiet) {
    for (const core::update::FontCollection::Font& font : fonts.Fonts())
      if (!font.lines)
        std::cerr << "kestrinctl: left out: " << core::update::ShownName(font.name) << ": " << font.lines.Text()
                  << std::endl;
      else if (!quiet)
        std::cout << "On offer: " << font.name << std::endl;
  }

  std::filesystem::path m_folder;
  std::optional<std::int32_t> m_port;
  std::string m_address = "127.0.0.1";
  bool m_behindProxy = false;
};

}  // namespace

std::unique_ptr<Command> MakeFontsServeCommand() { return std::make_unique<FontsServeCommand>(); }

}  // namespace kestrin::cli
