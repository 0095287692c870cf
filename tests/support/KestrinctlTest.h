// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TestFiles.h"

namespace kestrin::support {

using Json = nlohmann::ordered_json;
using Arguments = std::vector<std::string>;

/// The keys of an object in the order in which they were printed.
[[nodiscard]] std::vector<std::string> Keys(const Json& object);

/// Runs the built kestrinctl with a home folder of its own, so that no test sees what another has left.
class KestrinctlTest : public ::testing::Test {
 protected:
  using Surroundings = ChildProcess::Surroundings;
  static constexpr ChildProcess::Output kTerminal = ChildProcess::Output::Terminal;

  [[nodiscard]] std::unique_ptr<ChildProcess> Start(const Arguments& arguments,
                                                    const Surroundings& surroundings = {}) const;
  [[nodiscard]] Finished Run(const Arguments& arguments, const Surroundings& surroundings = {}) const {
    return Start(arguments, surroundings)->Wait();
  }
  /// Runs with `--json` and reads the one document that standard output must be. Expects that exit code.
  [[nodiscard]] Json RunJson(int expectedCode, Arguments arguments) const;
  /// Runs with `--json --board sim:dir=..., OPTIONS`, a board that keeps its state from run to run.
  [[nodiscard]] Json RunOnBoard(int expectedCode, const Arguments& arguments, const std::string& options = "") const;
  [[nodiscard]] std::string Board(const std::string& options = "") const;

  /// The options of a simulated board whose reads from the first to the last of these numbers fail.
  [[nodiscard]] static std::string FailingReads(int first, int last);

  /// What the simulated board keeps.
  [[nodiscard]] std::string Flash() const { return ReadBytes(m_board / "flash.bin"); }
  [[nodiscard]] Json BoardState() const { return Json::parse(ReadBytes(m_board / "board.json")); }
  /// The files in the folder of kept detection parameters.
  [[nodiscard]] std::size_t KeptFiles() const;

  TemporaryFolder m_folder;
  std::filesystem::path m_data = m_folder / "data";
  std::filesystem::path m_board = m_folder / "board";
  std::vector<std::string> m_environment{"HOME=" + m_folder.Path().string(), "XDG_DATA_HOME=" + m_data.string(),
                                         "APPDATA=" + m_data.string()};
};

}  // namespace kestrin::support
