// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "core/device/TLS.h"
#include "core/sound/LSU_Configuration.h"
#include "support/ScriptedAgent.h"

namespace kestrin::support {

/// A board that answers nothing but questions for sums, from a flash that the test fills.
class FlashBoard {
 public:
  FlashBoard() {
    agent.Open(ScriptedAgent::BoardInterface(1));
    EXPECT_EQ(tls.BindVars(agent), 0);
    agent.onWrite = [this](const std::vector<std::uint8_t>& report) {
      EXPECT_EQ(report[0], 30) << "nothing but sums may be asked for";
      const auto number = [&](std::size_t at) {
        return static_cast<std::size_t>(report[at] << 16 | report[at + 1] << 8 | report[at + 2]);
      };
      asked.emplace_back(number(1), number(4));
      if (silentFrom != 0 && asked.size() >= silentFrom) return;
      unsigned sum = 0;
      for (std::size_t i = 0; i < number(4); ++i) sum += At(number(1) + i);
      if (bend) sum = bend(number(1), number(4), sum);
      agent.Answers({{static_cast<std::uint8_t>(sum >> 8 & 0xFF), static_cast<std::uint8_t>(sum & 0xFF)}});
    };
  }

  /// Writes a set that is laid out, as a download does.
  void Hold(core::sound::LSU_Configuration& set) {
    Write(12, set.GetFileTable());
    for (const core::sound::SlotFile& entry : set.FilesInFlashOrder()) {
      std::vector<std::uint8_t> bytes;
      ASSERT_TRUE(entry.file->GetBytes(bytes, 0, static_cast<std::size_t>(entry.file->NrOfBytes())));
      Write(static_cast<std::size_t>(entry.file->StartAddress()), bytes);
    }
  }
  void Write(std::size_t address, const std::vector<std::uint8_t>& bytes) {
    if (flash.size() < address + bytes.size()) flash.resize(address + bytes.size(), 0xFF);
    std::copy(bytes.begin(), bytes.end(), flash.begin() + static_cast<std::ptrdiff_t>(address));
  }

  ScriptedAgent agent;
  core::device::TLS tls;
  /// From address 0 on; what lies behind is erased.
  std::vector<std::uint8_t> flash;
  /// Address and count of every question.
  std::vector<std::pair<std::size_t, std::size_t>> asked;
  /// The question from which on nothing is answered, from 1; 0: everything is.
  std::size_t silentFrom = 0;
  /// What is answered in place of the sum.
  std::function<unsigned(std::size_t address, std::size_t count, unsigned sum)> bend;

 private:
  [[nodiscard]] unsigned At(std::size_t address) const { return address < flash.size() ? flash[address] : 0xFFU; }
};

}  // namespace kestrin::support
