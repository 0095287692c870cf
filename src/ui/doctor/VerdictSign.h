// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "core/doctor/Diagnosis.h"

namespace kestrin::ui::doctor {

/// How a question is answered, as a sign: a tick, a cross, or the question's number in a dashed ring while it waits.
/// The shapes differ, not the colours alone. It is drawn when it is shown, so that it is sharp on every screen.
class VerdictSign : public QWidget {
  Q_OBJECT

 public:
  /// The side of the sign in device-independent pixels.
  static constexpr int kSide = 24;

  /// `number` is the question's, from 1.
  explicit VerdictSign(int number, QWidget* parent = nullptr);

  void Show(core::doctor::Verdict verdict);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int m_number;
  core::doctor::Verdict m_verdict = core::doctor::Verdict::Unknown;
};

}  // namespace kestrin::ui::doctor
