// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <cstdint>
#include <optional>

#include "core/motion/ThresholdAdvice.h"

class QLabel;
class QPushButton;

namespace kestrin::ui::motion {

/// Which impact threshold is suggested, with a button that takes it, or why none is. It is hidden as long as there is
/// nothing to say.
class SuggestionBox : public QFrame {
  Q_OBJECT

 public:
  explicit SuggestionBox(QWidget* parent = nullptr);

  void Show(const core::motion::ThresholdAdvice& advice);

 signals:
  /// The suggested threshold is wanted.
  void useRequested(int threshold);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* m_headline;
  QLabel* m_text;
  QPushButton* m_use;
  std::optional<std::int32_t> m_threshold;
};

}  // namespace kestrin::ui::motion
