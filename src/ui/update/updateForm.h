// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <cstdint>
#include <functional>
#include <string>

#include "core/update/UpdateView.h"

class QLabel;
class QPushButton;

namespace kestrin::core::update {
class TransferControl;
}

namespace kestrin::ui::kit {
class WrapLabel;
}

namespace kestrin::ui::update {

class ProgressShape;

/// The modal dialog in which an update runs and reports. Closing it at any time, by its button, by Escape or by the
/// window's own means, emits finished(): whoever runs the update cancels it then.
class updateForm : public QDialog, public core::update::UpdateView {
  Q_OBJECT

 public:
  /// The dialog carries the transfer control, which must outlive it. It is loaded when the program starts, but not
  /// shown; its sizes are measured when a bar is moved or the dialog is shown for the first time, so that the program's
  /// window is not kept waiting.
  explicit updateForm(core::update::TransferControl& inetConnector, QWidget* parent = nullptr);

  [[nodiscard]] core::update::TransferControl& Inet() const { return m_inetConnector; }

  void hideButtons();
  /// "YES" ends the whole program, "NO" closes the dialog.
  void showYesNoButtons();
  void resetForm() override;
  void progressA(std::int32_t percentage) override;
  void progressB(std::int32_t percentage) override;
  void showStep(const std::string& text) override;
  void showElement(const std::string& text) override;
  void showWarning(const std::string& text) override;
  void showMessage(const std::string& text) override;
  void showModal(const std::function<void()>& activated) override;
  void setVisible(bool visible) override;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  /// One of the two bars: the shape that is filled, over its background.
  struct Bar {
    QWidget* background = nullptr;
    ProgressShape* shape = nullptr;

    void SetVisible(bool visible) const;
  };
  /// One of the two buttons: a caption over a shape, of which the shape takes keyboard and pointer.
  struct Button {
    QPushButton* background = nullptr;
    QLabel* caption = nullptr;

    void Show(const QString& text) const;
    void Hide() const;
  };

  void MakeControls();
  void MakeLayout();
  /// Gives the dialog its size, and its bars the full widths that go with it; once.
  void Fit();
  [[nodiscard]] Bar MakeBar(int number, const QString& accessibleName);
  [[nodiscard]] Button MakeButton(int number);
  void ShowColors();
  void Finish(const QString& title, const std::string& text);

  core::update::TransferControl& m_inetConnector;
  QWidget* m_border = nullptr;
  QLabel* m_title = nullptr;
  kit::WrapLabel* m_step = nullptr;
  kit::WrapLabel* m_element = nullptr;
  QLabel* m_okIcon = nullptr;
  QLabel* m_warningIcon = nullptr;
  kit::WrapLabel* m_hint = nullptr;
  Bar m_bar1;
  Bar m_bar2;
  Button m_button1;
  Button m_button2;
  bool m_fitted = false;
};

}  // namespace kestrin::ui::update
