// SPDX-License-Identifier: MIT
#pragma once

#include <QListView>
#include <QPersistentModelIndex>

#include "core/sound/SoundPlace.h"

namespace kestrin::ui::stage {

class TryRowDelegate;
class TryRows;

/// The list of TryRows. A click on a sound plays it and leads to it; its volume is set by the pointer on its bar, or by
/// the arrow keys left and right.
class TryList : public QListView {
  Q_OBJECT

 public:
  /// What an arrow key changes of a volume, in percent.
  static constexpr int kStep = 5;

  /// The rows must outlive the list.
  explicit TryList(TryRows& rows, QWidget* parent = nullptr);

  /// Lets what is lit move on.
  void Move();
  /// Brings the sound into sight, unless somebody is at work in the list.
  void Reveal(const core::sound::SoundPlace& place);

 signals:
  /// The person wants to hear it and to find it among the slots.
  void chosen(const core::sound::SoundPlace& place);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void SetVolumeAt(int x);

  TryRows& m_rows;
  TryRowDelegate* m_delegate;
  /// The row whose volume the pointer holds.
  QPersistentModelIndex m_held;
  int m_step = 0;
};

}  // namespace kestrin::ui::stage
