#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace kestrin::ui::window {

/// What reading LED drivers fails at. A board that keeps failing is asked again every second, but the person hears of
/// each failure once.
class LedFailures {
 public:
  struct Failure {
    /// The board's number.
    std::int32_t board = 0;
    /// The catalogue's fault, not the board's.
    bool ofCatalogue = false;
    /// The catalogue's.
    std::string stamp;

    friend bool operator==(const Failure&, const Failure&) = default;
  };

  /// How reading a board has just ended; nothing for well.
  void Take(std::optional<Failure> failure) {
    m_isNew = failure != m_last;
    m_last = std::move(failure);
  }
  /// Whether the last failure is another one than the one before.
  [[nodiscard]] bool IsNew() const { return m_isNew; }
  /// A board with a catalogue that is not good for it would only fail again; one that did not answer may do so now.
  [[nodiscard]] bool WouldFailAgain(std::int32_t board, const std::string& stamp) const {
    return m_last == Failure{board, true, stamp};
  }

 private:
  std::optional<Failure> m_last;
  bool m_isNew = false;
};

}  // namespace kestrin::ui::window
