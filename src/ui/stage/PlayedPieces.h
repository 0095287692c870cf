// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

#include "core/saber/LiveSaber.h"
#include "core/sound/SoundPlace.h"

namespace kestrin::ui::stage {

/// What has sounded during the last 12 seconds, piece by piece.
class PlayedPieces {
 public:
  /// A sound from its beginning to its end, with all its turns when it was repeated. Moments are samples.
  struct Piece {
    core::sound::SoundPlace place;
    QString name;
    std::int64_t from = 0;
    /// Nothing while it sounds.
    std::optional<std::int64_t> to;
    /// How long one turn of it is.
    std::int64_t turn = 0;

    friend bool operator==(const Piece&, const Piece&) = default;
  };
  static constexpr std::int64_t kSpan = std::int64_t{12} * 48000;

  void Begin(const core::sound::SoundPlace& place, const QString& name, std::int64_t sample, std::int64_t turn);
  /// The piece of that place that sounds has ended; nothing happens when none does.
  void End(const core::sound::SoundPlace& place, std::int64_t sample);
  /// It is that moment: what ended more than 12 seconds before is forgotten.
  void Advance(std::int64_t now);
  /// Everything is forgotten.
  void Clear();

  [[nodiscard]] const std::vector<Piece>& All() const { return m_pieces; }
  [[nodiscard]] std::int64_t Now() const { return m_now; }

 private:
  std::vector<Piece> m_pieces;
  std::int64_t m_now = 0;
};

}  // namespace kestrin::ui::stage
