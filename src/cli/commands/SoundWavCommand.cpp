// SPDX-License-Identifier: MIT
#include "cli/CodedSound.h"
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "core/base/PathText.h"

namespace kestrin::cli {

namespace {

class SoundWavCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "sound wav"; }
  [[nodiscard]] std::string Description() const override { return "Write a sound as a WAV file"; }

  void Declare(Syntax& syntax) override {
    syntax.Path("FILE", m_file, "Sound file (.lsu)", Syntax::Need::Required);
    syntax.Path("--output OUT", m_output, "The WAV file", Syntax::Need::Required);
  }

  [[nodiscard]] Report Run(Context& context) override {
    RequireOtherFile(m_file, m_output);
    const core::sound::LSU_SoundFile file = ReadSound(m_file, context.interrupt.Pump());
    RequireWritten(file.SaveWav(m_output, context.disk, context.interrupt.Pump()));
    Report report;
    report.document = {{"samples", file.NrOfSamples()}};
    report.text =
        AlignedPairs({{"Samples", std::to_string(file.NrOfSamples())}, {"Written to", core::base::TextOf(m_output)}});
    return report;
  }

 private:
  std::filesystem::path m_file;
  std::filesystem::path m_output;
};

}  // namespace

std::unique_ptr<Command> MakeSoundWavCommand() { return std::make_unique<SoundWavCommand>(); }

}  // namespace kestrin::cli
