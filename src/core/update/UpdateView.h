// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kestrin::core::update {

/// What an update shows: the dialog in which it runs.
class UpdateView {
 public:
  virtual ~UpdateView() = default;

  /// As before an update: title "Updating items ...", both bars empty, no lines, icons or buttons.
  virtual void resetForm() = 0;
  /// The step line, such as "(1/3) Checking for updates".
  virtual void showStep(const std::string& text) = 0;
  /// The element line, such as "Checking item: " and the item.
  virtual void showElement(const std::string& text) = 0;
  /// The bar of the whole update, 0 to 100.
  virtual void progressA(std::int32_t percentage) = 0;
  /// The bar of the current item or file, 0 to 100.
  virtual void progressB(std::int32_t percentage) = 0;
  /// The update ended with this warning.
  virtual void showWarning(const std::string& text) = 0;
  /// The update ended well.
  virtual void showMessage(const std::string& text) = 0;
  /// Shows the dialog over everything else, calls `activated` once when it has become active, and returns when
  /// `activated` has returned and the person has closed the dialog. Who closes it earlier wants to cancel: the view's
  /// owner then calls UpdateManager::cancel().
  virtual void showModal(const std::function<void()>& activated) = 0;
};

}  // namespace kestrin::core::update
