// SPDX-License-Identifier: MIT
#include "cli/CodedSound.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"
#include "core/base/WholeFile.h"

namespace kestrin::cli {

namespace {

class SoundCodeCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "sound code"; }
  [[nodiscard]] std::string Description() const override {
    return "Write a sound's coded stream as the board holds it";
  }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Sound file (.lsu)", Syntax::Need::Required);
    DeclareVolume(syntax, m_volume);
    syntax.Path("--output OUT", m_output, "File for the coded stream", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    RequireOtherFile(m_file, m_output);
    core::sound::LSU_SoundFile file = ReadSound(m_file, context.interrupt.Pump());
    CodeSound(file, m_volume, context.interrupt.Pump());
    std::vector<std::uint8_t> bytes;
    static_cast<void>(file.GetBytes(bytes, 0, static_cast<std::size_t>(file.NrOfBytes())));
    RequireWritten(core::base::WriteWholeFile(m_output, std::string(bytes.begin(), bytes.end()), context.disk));

    Report report;
    report.document = {{"codedBytes", file.NrOfBytes()}, {"checksum", file.GetFileCRC()}};
    report.text = AlignedPairs({{"Coded bytes", std::to_string(file.NrOfBytes())},
                                {"Checksum", std::to_string(file.GetFileCRC())},
                                {"Written to", core::base::TextOf(m_output)}});
    return report;
  }

 private:
  std::filesystem::path m_file;
  std::optional<std::int32_t> m_volume;
  std::filesystem::path m_output;
};

}  // namespace

std::unique_ptr<Command> MakeSoundCodeCommand() { return std::make_unique<SoundCodeCommand>(); }

}  // namespace kestrin::cli
