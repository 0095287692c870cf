// SPDX-License-Identifier: MIT
#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>
#include <vector>

#include "cli/CommandFailure.h"
#include "cli/Commands.h"
#include "cli/OnlineBoard.h"
#include "cli/Terminal.h"
#include "core/base/Clock.h"
#include "core/base/Text.h"
#include "core/motion/SensorRest.h"
#include "core/motion/SensorWatch.h"
#include "platform/process/StandardStreams.h"

namespace kestrin::cli {

namespace {

using core::motion::SensorReading;
using core::motion::SensorWatch;

constexpr std::int32_t kDay = 24 * 60 * 60;

/// Shows readings to people as they come: on a terminal the last one, in a line that is drawn anew, elsewhere each in a
/// row of its own.
class ReadingLines {
 public:
  explicit ReadingLines(bool quiet) : m_isLive(!quiet && TerminalWidth(Stream::Output) > 0) {
    if (!m_isLive) std::cout << "      ms    x    y    z  tilt" << std::endl;
  }
  ~ReadingLines() {
    if (m_isLive && m_drawn > 0) std::cout << std::endl;
  }
  ReadingLines(const ReadingLines&) = delete;
  ReadingLines& operator=(const ReadingLines&) = delete;

  void Show(const SensorReading& reading) {
    std::ostringstream line;
    if (!m_isLive) {
      line << std::setw(8) << reading.at.count() << std::setw(5) << reading.x << std::setw(5) << reading.y
           << std::setw(5) << reading.z << std::setw(6) << reading.tilt;
      std::cout << line.str() << std::endl;
      return;
    }
    const core::motion::SensorChange change = m_rest.Follow(reading);
    if (m_rest.IsKnown()) m_hardest = std::max(m_hardest, change.Force());
    line << "x" << std::setw(4) << reading.x << "   y" << std::setw(4) << reading.y << "   z" << std::setw(4)
         << reading.z << "   tilt" << std::setw(4) << reading.tilt << "   hardest from rest" << std::setw(3)
         << m_hardest;
    // Asked every time: the person may give the terminal another width.
    const std::size_t room = std::max<std::size_t>(TerminalWidth(Stream::Output), 2) - 1;
    const std::string text(core::base::FirstCharacters(line.str(), room));
    const std::string rest(std::min(m_drawn, room) - std::min({m_drawn, room, text.size()}), ' ');
    std::cout << '\r' << text << rest << std::flush;
    m_drawn = text.size();
  }

 private:
  bool m_isLive;
  core::motion::SensorRest m_rest;
  std::int32_t m_hardest = 0;
  std::size_t m_drawn = 0;
};

class AccelWatchCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "accel watch"; }
  [[nodiscard]] std::string Description() const override { return "Show what the board's sensor feels"; }

  void Declare(Syntax& syntax) override {
    syntax.Number("--seconds N", m_seconds, 1, kDay, "End after so many seconds; without it, by Ctrl-C");
  }

  [[nodiscard]] Report Run(Context& context) override {
    OnlineBoard online(context);
    online.RequireSoundBoard();
    Report report;
    std::vector<SensorReading> readings;
    {
      std::optional<ReadingLines> lines;
      try {
        report.message = Watch(context, online.Board(), [&](const SensorReading& reading) {
          if (context.options.json) return readings.push_back(reading);
          if (!lines) lines.emplace(context.options.quiet);
          lines->Show(reading);
        });
        if (!report.message.empty()) report.code = ExitCode::Failed;
      } catch (const CommandFailure& stopped) {
        // What was read until then was read all the same.
        if (stopped.Code() != ExitCode::Interrupted) throw;
        report.code = ExitCode::Interrupted;
        report.message = stopped.what();
      }
    }
    report.document = {{"readings", DocumentOf(readings)}};
    return report;
  }

 private:
  /// Gives every reading to `take`. Why there are no more of them, "" when the time is over or nobody reads them.
  template <class Take>
  [[nodiscard]] std::string Watch(Context& context, core::device::TLS& board, const Take& take) const {
    // A signal is looked for at least this often.
    constexpr SensorWatch::Duration kSlice = std::chrono::milliseconds(10);
    core::base::SystemClock clock;
    SensorWatch watch(board, clock);
    const SensorWatch::Duration begin = clock.Now();
    const auto isOver = [&] { return m_seconds && clock.Now() - begin >= std::chrono::seconds(*m_seconds); };
    for (bool isFirst = true; !isOver(); isFirst = false) {
      const core::base::Result<SensorReading> reading = watch.Read();
      context.interrupt.Look();
      if (!reading && isFirst) throw CommandFailure(ExitCode::Failed, reading.Text());
      if (!reading) return reading.Text();
      take(*reading);
      if (!std::cout.good()) {
        if (!platform::process::OutputHasReader()) return "";
        throw CommandFailure(ExitCode::Failed, "the readings could not be written");
      }
      for (auto left = watch.UntilNext(); left > left.zero() && !isOver(); left = watch.UntilNext()) {
        clock.Wait(std::min(left, kSlice));
        context.interrupt.Look();
      }
    }
    return "";
  }

  [[nodiscard]] static Document DocumentOf(const std::vector<SensorReading>& readings) {
    Document document = Document::array();
    for (const SensorReading& reading : readings)
      document.push_back(
          {{"ms", reading.at.count()}, {"x", reading.x}, {"y", reading.y}, {"z", reading.z}, {"tilt", reading.tilt}});
    return document;
  }

  std::optional<std::int32_t> m_seconds;
};

}  // namespace

std::unique_ptr<Command> MakeAccelWatchCommand() { return std::make_unique<AccelWatchCommand>(); }

}  // namespace kestrin::cli
