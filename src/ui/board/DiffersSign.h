// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <optional>

#include "core/sound/board/SetComparison.h"

namespace kestrin::ui::board {

/// The words for how a place differs: "Same", "Other volume" ...; `there` is where the other side is: "on the board".
[[nodiscard]] QString DiffersText(std::optional<core::sound::Differs> differs, const QString& there);

/// The small sign in front of those words.
class DiffersSign : public QWidget {
  Q_OBJECT

 public:
  DiffersSign(std::optional<core::sound::Differs> differs, QWidget* parent);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::optional<core::sound::Differs> m_differs;
};

}  // namespace kestrin::ui::board
