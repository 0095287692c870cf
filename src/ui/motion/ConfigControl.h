// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "core/motion/AccelerometerSetup.h"
#include "core/motion/KnownValues.h"

namespace kestrin::ui::kit {
class Dialogs;
}

namespace kestrin::ui::motion {

class ConfigFrame;

/// Does what the buttons of a ConfigFrame say, with the board that is online: reads, asks, sends, and shows what is
/// known of the board.
class ConfigControl : public QObject {
  Q_OBJECT

 public:
  /// A sound board that is online.
  struct Board {
    core::device::TLS& tls;
    std::string serialNumber;
    /// `DeviceRevision`.
    std::uint16_t revision = 0;
    /// Whether it has told all of what it is.
    bool identified = false;
  };
  /// Empty when no sound board is online.
  using BoardLookup = std::function<std::optional<Board>()>;
  /// Runs an action as soon as nothing else talks to the board, and keeps others away until it is done.
  using Runner = std::function<void(std::function<void()>)>;

  /// What it reaches the rest of the program through. Everything must outlive the control.
  struct Surroundings {
    kit::Dialogs& dialogs;
    core::device::KeptParameters& kept;
    BoardLookup board;
    Runner run;
  };

  ConfigControl(ConfigFrame& frame, Surroundings surroundings);

  /// A sound board has come online: the sliders show what it holds.
  void ReadAccData();
  /// What the board that is online holds, as its sliders show it, as far as that is known.
  [[nodiscard]] std::optional<core::device::AccParam> Held() const;
  /// Shows the panel as it was left. The board is not read again.
  void Open();
  /// Whether the window may be closed: asks when values would be lost that the person has set and that neither the
  /// board nor this computer has.
  [[nodiscard]] bool MayClose();

 signals:
  /// Short news for the help line.
  void news(const QString& text);

 private:
  void Send();
  void ReadAgain();
  void PutBack();
  /// Whether the person has agreed to what sending these values loses; true when it loses nothing.
  [[nodiscard]] bool MaySend(const Board& board, const core::device::AccParam& wanted);
  /// Reads the board, which may have something to tell about values that it has accepted.
  [[nodiscard]] std::optional<core::device::AccParam> Read(const Board& board);
  /// A download may have changed what the board holds.
  void FollowKept(const Board& board);
  [[nodiscard]] std::optional<core::device::AccParam> KeptFor(const Board& board) const;

  ConfigFrame& m_frame;
  Surroundings m_around;
  core::motion::KnownValues m_known;
  /// The board that m_known is about.
  std::string m_serialNumber;
};

}  // namespace kestrin::ui::motion
