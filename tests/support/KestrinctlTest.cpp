// SPDX-License-Identifier: MIT
#include "support/KestrinctlTest.h"

namespace kestrin::support {

std::vector<std::string> Keys(const Json& object) {
  std::vector<std::string> keys;
  for (const auto& [key, value] : object.items()) keys.push_back(key);
  return keys;
}

std::unique_ptr<ChildProcess> KestrinctlTest::Start(const Arguments& arguments,
                                                    const Surroundings& surroundings) const {
  Arguments command{KESTRINCTL};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return std::make_unique<ChildProcess>(command, m_environment, surroundings);
}

Json KestrinctlTest::RunJson(int expectedCode, Arguments arguments) const {
  arguments.insert(arguments.begin(), "--json");
  const Finished finished = Run(arguments);
  EXPECT_EQ(finished.code, expectedCode) << finished.errors;
  if (expectedCode != 0) {
    EXPECT_NE(finished.errors.find("kestrinctl: "), std::string::npos) << finished.errors;
  }
  Json document = Json::parse(finished.out, nullptr, false);
  EXPECT_FALSE(document.is_discarded()) << finished.out;
  return document;
}

Json KestrinctlTest::RunOnBoard(int expectedCode, const Arguments& arguments, const std::string& options) const {
  Arguments all{"--board", Board(options)};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return RunJson(expectedCode, all);
}

std::string KestrinctlTest::Board(const std::string& options) const {
  return "sim:dir=" + m_board.string() + (options.empty() ? "" : "," + options);
}

std::string KestrinctlTest::FailingReads(int first, int last) {
  std::string options;
  for (int number = first; number <= last; ++number)
    options += (options.empty() ? "fault=read:" : ",fault=read:") + std::to_string(number);
  return options;
}

std::size_t KestrinctlTest::KeptFiles() const {
  const std::filesystem::path folder = m_data / "kestrin" / "detection-parameters";
  if (!std::filesystem::exists(folder)) return 0;
  const std::filesystem::directory_iterator files(folder);
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

}  // namespace kestrin::support
