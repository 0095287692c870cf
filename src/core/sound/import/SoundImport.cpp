// SPDX-License-Identifier: MIT
#include "sound/import/SoundImport.h"

#include <array>
#include <fstream>
#include <utility>

#include "base/PathText.h"
#include "sound/LSU_SoundFile.h"
#include "sound/SampleReader.h"
#include "sound/import/ChangeTexts.h"
#include "sound/import/ConvertedSound.h"
#include "sound/import/Dither.h"
#include "sound/import/FreeName.h"
#include "sound/import/LoopJoin.h"
#include "sound/import/SoundEdit.h"
#include "sound/import/SoundWriter.h"

namespace kestrin::core::sound {

namespace fs = std::filesystem;

using base::Failure;
using base::FailureKind;

namespace {

constexpr double kRate = LSU_SoundFile::kSamplesPerSecond;
constexpr std::uint64_t kFewestSamples = 49;
/// In dB. What rounding to 16 bits does to the loudness and the peak of a louder sound is less than a hundredth of a
/// dB, so it need not be measured again.
constexpr double kLoudEnough = -30;

/// Why the board could not use a sound.
base::Result<> CheckUsable(std::uint64_t samples, bool isSilent) {
  if (samples < kFewestSamples)
    return Failure{FailureKind::NotValid, "The sound is too short: a sound has at least " +
                                              std::to_string(kFewestSamples) +
                                              " samples, a thousandth of a second. Choose a longer one."};
  if (isSilent)
    return Failure{FailureKind::NotValid,
                   "The sound is silent from its beginning to its end. Choose a sound that can be heard."};
  return {};
}

/// Adds finished samples to what is measured.
void Measure(LoudnessMeter& meter, std::span<const std::int16_t> samples) {
  std::vector<double> values;
  values.reserve(samples.size());
  for (const std::int16_t sample : samples) values.push_back(sample / 32768.0);
  meter.Add(values);
}

/// A sound's loudness, louder by that much.
Loudness Moved(Loudness loudness, double decibels) {
  if (loudness.lufs) *loudness.lufs += decibels;
  if (loudness.truePeak) *loudness.truePeak += decibels;
  return loudness;
}

void TellResult(std::uint64_t samples, const Loudness& loudness, ImportedSound& result) {
  result.samples = static_cast<std::int64_t>(samples);
  result.seconds = static_cast<double>(samples) / kRate;
  result.truePeak = loudness.truePeak;
  result.loudness = loudness.lufs;
}

/// A sound on its way: what is to be done to it and what was.
class Workshop {
 public:
  Workshop(AudioTools& tools, const ImportSource& source, const ImportOptions& options, const SoundImport::GoOn& goOn)
      : m_tools(tools), m_options(options), m_sound(tools, source.file, goOn) {}

  /// Decides everything. Fails when nothing can be made of the sound.
  base::Result<> Plan() {
    if (base::Result<> decoded = m_sound.Decode(); !decoded) return decoded;
    const SoundBounds& bounds = m_sound.Bounds();
    m_edit.kept = m_options.trim ? bounds.WithoutSilence() : Stretch{0, bounds.Count()};
    m_trimmed = bounds.Count() - m_edit.kept.Length();
    if (base::Result<> usable = CheckUsable(m_edit.kept.Length(), bounds.Peak() == 0); !usable) return usable;
    if (base::Result<> joined = PlanEnds(); !joined) return joined;
    return PlanGain();
  }

  /// Gives the bytes of the ".lsu" file.
  base::Result<> Write(const base::AppendBytes& append, ImportedSound& result) {
    SoundWriter writer(append);
    const bool isMeasured = m_planned.truePeak.value_or(0) + m_gain.decibels < kLoudEnough;
    const std::unique_ptr<LoudnessMeter> meter = isMeasured ? m_tools.MakeMeter() : nullptr;
    Dither dither(m_gain.Factor(), IsExact());
    std::vector<std::int16_t> samples;
    base::Result<> played = PlayEdited([&](std::span<double> block) {
      samples.clear();
      dither.Add(block, samples);
      if (meter) Measure(*meter, samples);
      return writer.Add(samples);
    });
    samples.clear();
    dither.Finish(samples);
    if (meter) Measure(*meter, samples);
    static_cast<void>(writer.Add(samples));
    if (!played) return played;
    TellResult(writer.Count(), meter ? meter->Finish() : Moved(m_planned, m_gain.decibels), result);
    return CheckUsable(writer.Count(), writer.IsSilent());
  }

  void Tell(ImportedSound& result) const {
    const SoundShape& shape = m_sound.Shape();
    result.rate = shape.rate;
    result.channels = shape.channels;
    if (shape.rate > 0) result.sourceSeconds = static_cast<double>(m_sound.Frames()) / shape.rate;
    for (const std::string& text : {UnpackedText(shape), m_sound.MixdownText(), RateText(shape.rate), DepthText(shape),
                                    m_loopText, GainText(m_gain), TrimText(m_trimmed), MendedText(m_sound.Mended())})
      if (!text.empty()) result.changes.push_back(text);
  }

 private:
  /// Whether its samples are 16 bits as they are.
  [[nodiscard]] bool IsExact() const {
    const SoundShape& shape = m_sound.Shape();
    return shape.bits > 0 && shape.bits <= 16 && !shape.isLossy && shape.channels == 1 && shape.rate == kRate &&
           m_gain.decibels == 0;
  }

  base::Result<> PlanEnds() {
    const Stretch whole{0, m_sound.Bounds().Count()};
    if (!m_options.loop) {
      m_edit.fadesIn = m_edit.kept.begin > whole.begin;
      m_edit.fadesOut = m_edit.kept.end < whole.end;
      return {};
    }
    const std::optional<LoopNeed> need = NeedOfLoop(m_edit.kept.Length());
    if (!need) {
      m_loopText = "too short to join its ends";
      return {};
    }
    std::vector<double> head;
    std::vector<double> tail;
    const auto into = [](std::vector<double>& samples) {
      return [&samples](std::span<double> block) {
        samples.insert(samples.end(), block.begin(), block.end());
        return true;
      };
    };
    const Stretch& kept = m_edit.kept;
    base::Result<> played = m_sound.Play({kept.begin, kept.begin + need->fade}, into(head));
    if (played) played = m_sound.Play({kept.end - need->fade - need->search, kept.end}, into(tail));
    if (!played) return played;
    LoopJoin join = JoinLoop(head, tail);
    m_edit.beginning = std::move(join.beginning);
    m_edit.kept.end -= join.off;
    m_loopText = "ends joined to a loop";
    return {};
  }

  base::Result<> PlanGain() {
    const std::unique_ptr<LoudnessMeter> meter = m_tools.MakeMeter();
    base::Result<> played = PlayEdited([&](std::span<double> block) {
      meter->Add(block);
      return true;
    });
    if (!played) return played;
    m_planned = meter->Finish();
    m_gain = ChooseGain(m_planned, m_options.level, IsExact());
    return {};
  }

  base::Result<> PlayEdited(const ConvertedSound::Take& take) {
    std::uint64_t place = 0;
    return m_sound.Play(m_edit.kept, [&](std::span<double> block) {
      m_edit.Apply(place, block);
      place += block.size();
      return take(block);
    });
  }

  AudioTools& m_tools;
  const ImportOptions& m_options;
  ConvertedSound m_sound;
  SoundEdit m_edit;
  /// Before the gain.
  Loudness m_planned;
  Gain m_gain;
  std::uint64_t m_trimmed = 0;
  std::string m_loopText;
};

/// Gives the bytes of a ".lsu" file that is there already.
base::Result<> CopySound(AudioTools& tools, const fs::path& path, const SoundImport::GoOn& goOn,
                         const base::AppendBytes& append, ImportedSound& result) {
  const auto look = [&goOn] {
    if (goOn && !goOn()) throw Failure{FailureKind::Cancelled, "Stopped."};
  };
  try {
    LSU_SoundFile file;
    if (!file.ReadFile(path, look)) {
      // The person may know the file by another name.
      const std::string why = file.WhyNotValid();
      return Failure{FailureKind::NotValid, "The file" + why.substr(base::Quoted(path).size())};
    }
    std::array<unsigned char, LSU_SoundFile::kHeaderBytes> header{};
    std::ifstream stream(path, std::ios::binary);
    stream.read(reinterpret_cast<char*>(header.data()), header.size());
    std::uint32_t word = 0;
    for (std::size_t byte = header.size(); byte > 0; --byte) word = word << 8 | header[byte - 1];
    SoundWriter writer(append, word);
    const std::unique_ptr<LoudnessMeter> meter = tools.MakeMeter();
    SampleReader reader(path);
    for (auto block = reader.Next(); !block.empty() && writer.Add(block); block = reader.Next()) {
      Measure(*meter, block);
      look();
    }
    if (writer.Count() != static_cast<std::uint64_t>(file.NrOfSamples()) ||
        reader.GetState() != SampleReader::State::Good)
      return Failure{FailureKind::Changed, "The file changed while it was read. Import it again."};
    TellResult(writer.Count(), meter->Finish(), result);
    result.rate = LSU_SoundFile::kSamplesPerSecond;
    result.channels = 1;
    result.sourceSeconds = result.seconds;
    return {};
  } catch (const Failure& stopped) {
    return stopped;
  }
}

}  // namespace

PreparedSound SoundImport::Prepare(const ImportSource& source, const ImportOptions& options, const fs::path& folder,
                                   const GoOn& goOn) {
  PreparedSound prepared;
  ImportedSound& result = prepared.result;
  result.source = source.shownAs;
  result.reason = source.reason;
  if (!result.reason.empty()) return prepared;
  prepared.name = NameForSound(source.name);

  const bool isSound = LSU_SoundFile::HasSoundName(source.file);
  Workshop workshop(m_tools, source, options, goOn);
  base::Result<> planned = isSound ? base::Result<>() : workshop.Plan();
  if (!isSound) workshop.Tell(result);
  if (!planned) {
    result.changes.clear();
    result.reason = planned.Text();
    return prepared;
  }
  base::Result<> given;
  base::Result<base::FileBeside> written = base::FileBeside::Write(
      folder,
      [&](const base::AppendBytes& append) {
        given = isSound ? CopySound(m_tools, source.file, goOn, append, result) : workshop.Write(append, result);
        return given;
      },
      m_disk);
  if (written)
    prepared.file.emplace(*std::move(written));
  else
    result.reason = given ? "It could not be written into " + base::Quoted(folder) + ": " + written.Text() +
                                ". Make room on the disk or choose another folder, and import it again."
                          : given.Text();
  return prepared;
}

ImportedSound SoundImport::Finish(PreparedSound prepared, const fs::path& folder) {
  ImportedSound& result = prepared.result;
  if (!prepared.file) return std::move(result);
  FreeName names(folder, prepared.name.name);
  base::Result<> named;
  do {
    result.path = names.Next();
    named = prepared.file->TakeNewName(result.path, m_disk);
  } while (!named && named.Why().kind == FailureKind::InTheWay && names.MayGoOn());
  if (!named) {
    result.reason = base::Quoted(result.path) + " could not be written: " + named.Text() +
                    ". Make room on the disk or choose another folder, and import it again.";
    result.path.clear();
    return std::move(result);
  }
  const std::string called = "called " + base::Quoted(base::TextOf(result.path.stem())) + " because ";
  std::string why = prepared.name.why;
  if (names.HasNumber())
    why += (why.empty() ? "" : ", and ") + std::string("there is a ") + base::Quoted(prepared.name.name);
  if (!why.empty()) result.changes.push_back(called + why);
  return std::move(result);
}

ImportedSound SoundImport::Import(const ImportSource& source, const ImportOptions& options, const fs::path& folder,
                                  const GoOn& goOn) {
  ImportedSound result = Finish(Prepare(source, options, folder, goOn), folder);
  // Without that a power cut might take the whole file, but never a part of it.
  if (!result.path.empty()) static_cast<void>(m_disk.Flush(folder));
  return result;
}

}  // namespace kestrin::core::sound
