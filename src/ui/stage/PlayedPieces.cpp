// SPDX-License-Identifier: MIT
#include "ui/stage/PlayedPieces.h"

#include <algorithm>

namespace kestrin::ui::stage {

void PlayedPieces::Begin(const core::sound::SoundPlace& place, const QString& name, std::int64_t sample,
                         std::int64_t turn) {
  m_pieces.push_back({place, name, sample, std::nullopt, turn});
}

void PlayedPieces::End(const core::sound::SoundPlace& place, std::int64_t sample) {
  // A sound that follows itself begins before its predecessor is over: the older one ends.
  const auto piece =
      std::find_if(m_pieces.begin(), m_pieces.end(), [&](const Piece& one) { return one.place == place && !one.to; });
  if (piece != m_pieces.end()) piece->to = sample;
}

void PlayedPieces::Advance(std::int64_t now) {
  m_now = now;
  std::erase_if(m_pieces, [now](const Piece& piece) { return piece.to && *piece.to < now - kSpan; });
}

void PlayedPieces::Clear() {
  m_pieces.clear();
  m_now = 0;
}

}  // namespace kestrin::ui::stage
