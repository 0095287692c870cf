// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>
#include <cstdint>
#include <optional>

#include "core/motion/SensorRecord.h"

class QLabel;

namespace kestrin::ui::kit {
class LinkButton;
}

namespace kestrin::ui::motion {

class SensorChart;
class TrialCard;

/// What the board feels: the picture, what is to be said of it, and the trial of five swings and five taps below it.
class SensorColumn : public QWidget {
  Q_OBJECT

 public:
  explicit SensorColumn(QWidget* parent = nullptr);

  void Show(const core::motion::SensorRecord& record);
  /// Says why there is no picture, or what it waits for; "" when there is nothing to say. With `canAskAgain` there is a
  /// link that asks the board once more.
  void Say(const QString& text, bool canAskAgain = false);
  void SetThreshold(std::int32_t threshold);
  void SetSuggestion(std::optional<std::int32_t> threshold);

  /// Low windows make the picture lower before anything is scrolled.
  [[nodiscard]] int heightForWidth(int width) const override;

 signals:
  void thresholdDragged(int threshold);
  void startAgainRequested();
  void askAgainRequested();

 private:
  [[nodiscard]] static QString TextOf(const core::motion::SensorReading& reading);

  SensorChart* m_chart;
  TrialCard* m_trial;
  QWidget* m_notice;
  QLabel* m_noticeText;
  kit::LinkButton* m_askAgain;
  QLabel* m_values;
  QLabel* m_hint;
};

}  // namespace kestrin::ui::motion
