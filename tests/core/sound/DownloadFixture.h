// SPDX-License-Identifier: MIT
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/sound/Download.h"
#include "support/AnsweringBoard.h"
#include "support/FakeClock.h"
#include "support/MemoryKeptParameters.h"
#include "support/RecordingDownloadView.h"
#include "support/SoundSet.h"

namespace kestrin::core::sound {

/// The serial number of the board of these tests, and the detection parameters that it holds before a download.
inline constexpr const char* kSerial = "4B535401";
inline constexpr device::AccParam kBefore{1, 2, 3, 4, 5, 6};

/// A download of the smallest complete set into a board that answers.
class DownloadTest : public ::testing::Test {
 protected:
  DownloadOutcome Send(std::int32_t flashSize = 4 << 20, bool identified = true) {
    return m_download.Send({m_board.tls, kSerial, flashSize, identified});
  }
  /// Cancels as soon as the information shows `text`.
  void CancelAt(const std::string& text) {
    m_view.onInformation = [this, text](const std::string& information) {
      if (information == text) m_download.Cancel();
    };
  }
  /// Cancels when report number `number` (from 1) of that code was written.
  void CancelAtReport(int code, int number) {
    m_board.bend = [this, code, number, seen = 0](const support::AnsweringBoard::Report& report) mutable {
      if (report[0] == code && ++seen == number) m_download.Cancel();
    };
  }
  void ExpectCancelled() {
    EXPECT_EQ(m_view.information, "Canceled");
    EXPECT_EQ(m_view.button, "Close");
    EXPECT_EQ(m_view.percents.back(), std::nullopt);
    EXPECT_FALSE(m_view.hideTimerStarted);
    EXPECT_THAT(m_view.log, ::testing::Not(::testing::Contains("info:SUCCESS !")));
    EXPECT_THAT(m_board.ReportsOf(0), ::testing::IsEmpty()) << "no restart";
  }

  support::CompleteSet m_set;
  support::AnsweringBoard m_board;
  support::RecordingDownloadView m_view;
  support::MemoryKeptParameters m_kept;
  support::FakeClock m_clock;
  std::function<void()> m_pump;
  Download m_download{m_set.configuration, m_view, m_kept, m_clock, [this] {
                        if (m_pump) m_pump();
                      }};
};

}  // namespace kestrin::core::sound
