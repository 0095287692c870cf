// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>

#include "ui/stage/PlayedPieces.h"

namespace kestrin::ui::stage {

/// The last 12 seconds by slot. A piece that is clicked, or chosen by the arrow keys and Enter, can be heard again.
class Timeline : public QWidget {
  Q_OBJECT

 public:
  /// The pieces must outlive the widget.
  explicit Timeline(const PlayedPieces& pieces, QWidget* parent = nullptr);

  /// Shows how the pieces are now, if that can be seen.
  void Refresh();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  /// The person wants to hear it again.
  void chosen(const core::sound::SoundPlace& place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  using Piece = PlayedPieces::Piece;
  /// A piece by where it stands and when it began: its number changes whenever an older one is forgotten.
  struct Mark {
    core::sound::SoundPlace place;
    std::int64_t from = 0;

    friend bool operator==(const Mark&, const Mark&) = default;
  };

  [[nodiscard]] QRectF Room() const;
  [[nodiscard]] double RowHeight() const;
  [[nodiscard]] double XOf(std::int64_t sample) const;
  [[nodiscard]] QRectF BoxOf(const Piece& piece) const;
  [[nodiscard]] std::optional<std::size_t> PieceAt(const QPointF& where) const;
  /// The number of the piece; nothing when it is forgotten, or there is none.
  [[nodiscard]] std::optional<std::size_t> NumberOf(const std::optional<Mark>& mark) const;
  void Choose(std::size_t piece);
  void PaintGrid(QPainter& painter) const;
  void PaintPiece(QPainter& painter, const Piece& piece, bool isChosen) const;

  const PlayedPieces& m_pieces;
  /// What is painted.
  std::int64_t m_now = -1;
  std::size_t m_count = 0;
  std::optional<Mark> m_under;
  std::optional<Mark> m_chosen;
};

}  // namespace kestrin::ui::stage
