// SPDX-License-Identifier: MIT
// How long the window takes to tell what a board holds, over a simulated board at the pace of full-speed USB. No test:
// figures belong to a computer and to what else it does.

#include <QStandardPaths>
#include <cstdio>
#include <memory>
#include <stdexcept>

#include "ui/board/BoardFixture.h"

namespace {

using namespace kestrin;
using support::Until;

constexpr int kPatience = 60000;
constexpr int kRuns = 3;
/// What the smaller board holds.
constexpr int kSamples = core::device::kDefaultMemoryCapacity;

/// The window over a board, in the computer's own time.
class Window final : public support::BoardFixture {
 public:
  Window() {
    realTime = true;
    // What the program itself has.
    std::destroy_at(&gate);
    std::construct_at(&gate);
  }

  void TestBody() override {}

  /// Writes a set of so many sounds in each list, which together have that many samples.
  std::filesystem::path Write(const std::string& name, int inList, int samples) {
    const auto place = folder / name;
    std::filesystem::create_directories(place);
    support::SoundSet files(place);
    int left = 4 + 3 * inList;
    for (const core::sound::Slot& slot : core::sound::kSlots) {
      for (int number = 1; number <= (slot.isList ? inList : 1); ++number) {
        files.Add(slot.kind, static_cast<std::size_t>(samples / left));
        samples -= samples / left--;
      }
    }
    return files.WriteConfiguration(name + ".lscfg");
  }
  void PutOnBoard(const std::filesystem::path& path) {
    core::sound::LSU_Configuration set;
    core::sound::SoundSet loaded(set);
    Require(static_cast<bool>(loaded.Load(path).valid), "the set cannot be loaded");
    BoardFixture::PutOnBoard(set);
  }
  void Remember(const std::vector<std::filesystem::path>& sets) {
    QStringList paths;
    for (const std::filesystem::path& path : sets) paths.append(support::Text(path));
    settings.setValue("recentSets", paths);
  }

  void Close() { window.reset(); }
  /// The window without a board, with that set open.
  void StartWith(const std::filesystem::path& path) {
    dialogs.okAnswers = {true};
    Make(Board("wire=usb"), false);
    Require(window->StartUp(), "the window has not started");
    Show();
    if (!path.empty()) window->OpenSet(path);
  }
  /// Seconds from the board's name until the chip tells what it holds.
  double SecondsToTell() {
    agent->Plug();
    Await([this] { return !LabelText("SerialLabel").isEmpty(); }, "the board does not come");
    const double told = Seconds([this] {
      Await([this] { return Chip().isVisible() && Chip().Words() != "Board: being asked ..."; },
            "the board is not told");
    });
    m_words = Chip().Words();
    return told;
  }
  /// Seconds from "Send" until it says that the board holds the set already.
  double SecondsToHold() {
    return Seconds([this] {
      Button("SendBtn").click();
      Await([this] { return Shown("SendAgainBtn"); }, "the set is not held");
    });
  }
  [[nodiscard]] std::string Words() const { return m_words.toStdString(); }

 private:
  static void Require(bool holds, const char* otherwise) {
    if (!holds) throw std::runtime_error(otherwise);
  }
  static void Await(const std::function<bool()>& condition, const char* otherwise) {
    Require(Until(condition, kPatience), otherwise);
  }
  template <class Work>
  static double Seconds(const Work& work) {
    QElapsedTimer time;
    time.start();
    work();
    return static_cast<double>(time.nsecsElapsed()) / 1e9;
  }

  QString m_words;
};

void Tell(const char* name, const std::vector<double>& seconds, const std::string& words) {
  const auto [least, most] = std::ranges::minmax(seconds);
  std::printf("%-52s %5.2f .. %5.2f s   %s\n", name, least, most, words.c_str());
  std::fflush(stdout);
}

/// What an open set takes that the board holds: while its sounds are read for the first time, then when they are known,
/// and the word in place of a download.
void MeasureOpen(const char* name, int inList, int samples) {
  std::vector<double> first;
  std::vector<double> known;
  std::vector<double> held;
  std::string words;
  for (int run = 0; run < kRuns; ++run) {
    Window window;
    const auto set = window.Write("Deep Forge", inList, samples);
    window.PutOnBoard(set);
    window.StartWith(set);
    first.push_back(window.SecondsToTell());
    window.Close();
    window.StartWith(set);
    known.push_back(window.SecondsToTell());
    held.push_back(window.SecondsToHold());
    words = window.Words();
  }
  std::printf("%s\n", name);
  Tell("  open, its sounds not read before", first, words);
  Tell("  open", known, words);
  Tell("  \"The board holds just this set.\" after \"Send\"", held, "");
}

/// What a set takes that is known beside seven others and not open, and one that nobody knows.
void MeasureOthers(const char* name, int inList, int samples) {
  std::vector<double> first;
  std::vector<double> known;
  std::vector<double> unknown;
  std::string knownWords;
  std::string unknownWords;
  for (int run = 0; run < kRuns; ++run) {
    Window window;
    std::vector<std::filesystem::path> sets;
    for (int other = 1; other <= 7; ++other)
      sets.push_back(window.Write("Other " + std::to_string(other), other, kSamples / 8));
    const auto set = window.Write("Deep Forge", inList, samples);
    window.PutOnBoard(set);
    sets.push_back(set);
    window.Remember(sets);
    window.StartWith({});
    first.push_back(window.SecondsToTell());
    window.Close();
    window.StartWith({});
    known.push_back(window.SecondsToTell());
    knownWords = window.Words();
    window.Close();
    sets.pop_back();
    window.Remember(sets);
    window.StartWith({});
    unknown.push_back(window.SecondsToTell());
    unknownWords = window.Words();
  }
  std::printf("%s\n", name);
  Tell("  known, no sound of eight sets read before", first, knownWords);
  Tell("  known, one of eight", known, knownWords);
  Tell("  unknown", unknown, unknownWords);
}

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QStandardPaths::setTestModeEnabled(true);
  testing::InitGoogleMock(&argc, argv);
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  MeasureOpen("19 sounds that fill the board", 5, kSamples);
  MeasureOpen("40 sounds that fill the board", core::sound::kListCapacity, kSamples);
  MeasureOthers("19 sounds that fill the board", 5, kSamples);
  MeasureOthers("40 sounds that fill the board", core::sound::kListCapacity, kSamples);
  return 0;
}
