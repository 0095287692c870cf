// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/base/PathText.h"
#include "support/KestrinctlTest.h"

namespace kestrin::support {

/// The names and contents of the files in a folder and below it.
inline std::vector<std::pair<std::string, std::string>> Tree(const std::filesystem::path& folder) {
  std::vector<std::pair<std::string, std::string>> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
    if (entry.is_regular_file())
      files.emplace_back(core::base::TextOf(entry.path().lexically_relative(folder)), ReadBytes(entry.path()));
  std::sort(files.begin(), files.end());
  return files;
}

/// Updates by the built program into a program folder of its own, from a folder of fonts or from a scripted server.
class FontsFixture : public KestrinctlTest {
 protected:
  FontsFixture() {
    std::filesystem::create_directories(m_offered);
    std::filesystem::create_directories(m_program);
  }

  /// `fonts serve`, with its address read.
  struct Server {
    std::unique_ptr<ChildProcess> process;
    std::string address;
  };
  [[nodiscard]] Server Serve(const Arguments& options = {}) const {
    Arguments arguments{"fonts", "serve", core::base::TextOf(m_offered)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    Server server{Start(arguments), ""};
    server.address = server.process->WaitForLine();
    return server;
  }
  /// Ends the server as a person does. What it said.
  static Finished Stop(const Server& server) {
    server.process->Signal(SIGINT);
    return server.process->Wait();
  }

  [[nodiscard]] Arguments Update(const std::string& server) const {
    return {"--board",
            "sim:serial=4B535499",
            "--program-folder",
            core::base::TextOf(m_program),
            "fonts",
            "update",
            "--server",
            server};
  }
  /// A font of two sounds that nobody looks into.
  void OfferFont(const std::string& name) const {
    std::filesystem::create_directories(m_offered / name);
    WriteBytes(m_offered / name / "one.lsu", std::string(20000, '1'));
    WriteBytes(m_offered / name / "two.lsu", std::string(30000, '2'));
    WriteBytes(m_offered / name / (name + ".lscfg"), "BOOT\r\n/x/one.lsu\r\n 70\r\nPWRON\r\n/x/two.lsu\r\n 70\r\n");
  }
  [[nodiscard]] Json Listed() const {
    return RunJson(0, {"--program-folder", core::base::TextOf(m_program), "fonts", "list"})["fonts"];
  }

  std::filesystem::path m_offered = m_folder / "offered fonts";
  std::filesystem::path m_program = m_folder / "program";
  std::filesystem::path m_store = m_program / "fonts";
};

}  // namespace kestrin::support
