// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <filesystem>

namespace kestrin::ui::sound {

/// `SetLabel`: the name of the set that the slots show, with a mark while it is not saved. Where there is too little
/// room the middle of the name gives way to an ellipsis; the tool tip has the whole path.
class SetLabel : public QLabel {
  Q_OBJECT

 public:
  explicit SetLabel(QWidget* parent = nullptr);

  /// `path` is empty while the set has no file.
  void Show(const QString& name, bool isModified, const std::filesystem::path& path);

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Fit();

  QString m_name;
  bool m_isModified = false;
};

}  // namespace kestrin::ui::sound
