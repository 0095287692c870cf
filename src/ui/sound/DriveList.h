// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>

namespace kestrin::ui::sound {

/// A drop-down list that says when it is about to open, so that drives can be looked for anew.
class DriveList : public QComboBox {
  Q_OBJECT

 public:
  using QComboBox::QComboBox;

  void showPopup() override;

 signals:
  void opening();
};

}  // namespace kestrin::ui::sound
