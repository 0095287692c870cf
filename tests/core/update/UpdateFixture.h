// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/update/UpdateManager.h"
#include "support/RecordingDisk.h"
#include "support/RecordingUpdateView.h"
#include "support/ScriptedTransfer.h"
#include "support/TestFiles.h"

namespace kestrin::support {

/// An update of the board 4B535401 over a scripted transfer, in a fonts folder of its own.
class UpdateFixture : public testing::Test {
 protected:
  UpdateFixture() {
    manager.Initialize(view, transfer);
    manager.deviceSerial("4B535401");
  }

  static ScriptedTransfer::Answer Text(const std::string& payload) {
    return ScriptedTransfer::Whole("status:OK\r\nclientv:1" + payload);
  }
  static ScriptedTransfer::Answer File(const std::string& bytes) { return ScriptedTransfer::Whole(bytes); }

  /// Runs an update with these answers.
  void Update(const std::vector<ScriptedTransfer::Answer>& answers) {
    transfer.answers.assign(answers.begin(), answers.end());
    transfer.requests.clear();
    view.log.clear();
    view.warning.clear();
    view.message.clear();
    manager.startUpdate();
  }
  /// The same, of which not all answers need be asked for.
  void UpdateInPart(const std::vector<ScriptedTransfer::Answer>& answers) {
    Update(answers);
    transfer.answers.clear();
  }

  /// Every file below the fonts folder with its bytes; folders end in "/".
  [[nodiscard]] std::map<std::string, std::string> Store() const {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(fonts)) {
      const std::u8string path = entry.path().lexically_relative(fonts).generic_u8string();
      const std::string name(path.begin(), path.end());
      if (entry.is_directory())
        files[name + "/"] = "";
      else
        files[name] = ReadBytes(entry.path());
    }
    return files;
  }

  /// Marks a font as complete, as an earlier update did.
  void HaveFont(const std::string& item) const {
    std::filesystem::create_directories(fonts / item);
    WriteBytes(fonts / item / "fnt", "");
  }

  TemporaryFolder folder;
  std::filesystem::path fonts = folder / "fonts";
  ScriptedTransfer transfer;
  RecordingUpdateView view;
  std::function<void()> atTurn;
  RecordingDisk disk;
  core::update::UpdateManager manager{"fonts.example", fonts, disk, [this] {
                                        if (atTurn) atTurn();
                                      }};
};

}  // namespace kestrin::support
