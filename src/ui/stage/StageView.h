// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>
#include <vector>

#include "core/sound/SlotKind.h"
#include "ui/stage/BladePainter.h"

namespace kestrin::ui::stage {

/// What is seen on the stage at one moment.
struct StagePicture {
  /// What sounds, by name.
  struct Chip {
    core::sound::SlotKind slot = core::sound::SlotKind::Boot;
    QString text;

    friend bool operator==(const Chip&, const Chip&) = default;
  };

  /// Where the blade points, and where the light that it draws behind itself begins.
  double degrees = 0;
  double trail = 0;
  Shine shine;
  /// Seconds since the sparks began to fly; below 0: there are none.
  double sparkAge = -1;
  unsigned sparkSeed = 0;
  QString name;
  QString line;
  QString warning;
  QString hint;
  std::vector<Chip> chips;
};

/// The stage: a saber in the dark, which the pointer leads. The ground is dark in every scheme, as light shows its
/// colour in the dark only. What was not changed by a picture is not painted again.
class StageView : public QWidget {
  Q_OBJECT

 public:
  explicit StageView(QWidget* parent = nullptr);

  void Show(const StagePicture& picture);
  /// How long the last picture took to paint.
  [[nodiscard]] double PaintMilliseconds() const { return m_paintMilliseconds; }

  [[nodiscard]] QSize sizeHint() const override { return {920, 378}; }
  [[nodiscard]] QSize minimumSizeHint() const override { return {320, 120}; }

 signals:
  /// The pointer leads the blade there.
  void led(double degrees);
  /// The pointer has come onto the stage.
  void entered();
  /// The button was pressed on the stage, and let go.
  void pressed();
  void released();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] QPixmap MakeGround() const;
  void PaintTexts(QPainter& painter) const;
  void PaintChips(QPainter& painter) const;
  [[nodiscard]] QRect TextRoom() const;
  [[nodiscard]] QRect FloorRoom() const;

  StagePicture m_picture;
  /// The stage without anything on it, in the size and for the screen that it is for.
  QPixmap m_ground;
  /// The keyboard has come by the Tab key: who uses the pointer needs no ring.
  bool m_hasRing = false;
  double m_paintMilliseconds = 0;
};

}  // namespace kestrin::ui::stage
