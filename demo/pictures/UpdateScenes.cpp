// SPDX-License-Identifier: MIT
#include "demo/pictures/UpdateScenes.h"

#include <QApplication>
#include <cstdint>
#include <functional>
#include <string>

#include "core/update/TransferControl.h"
#include "ui/update/updateForm.h"

namespace kestrin::demo {

namespace {

/// Nothing is transferred in pictures.
class NoTransfer final : public core::update::TransferControl {
 public:
  void OnStateChanged(StateChanged) override {}
  void Demand(std::int64_t) override {}
  bool Execute(const std::string&, const std::string&, const std::string&, const std::string&) override {
    return false;
  }
  bool StillExecuting() override { return false; }
  void Cancel() override {}
  [[nodiscard]] std::string Trouble() const override { return ""; }
  [[nodiscard]] int HttpStatus() const override { return 0; }
  [[nodiscard]] std::string GetHeader(const std::string&) const override { return ""; }
  std::string NextChunk(std::size_t) override { return ""; }
};

QPixmap TakeForm(const std::function<void(ui::update::updateForm&)>& prepare) {
  NoTransfer transfer;
  ui::update::updateForm form(transfer);
  form.resetForm();
  form.show();
  prepare(form);
  QApplication::processEvents();
  return form.grab();
}

}  // namespace

QPixmap TakeUpdating() {
  return TakeForm([](ui::update::updateForm& form) {
    constexpr int kWhole = 65;
    constexpr int kFile = 41;
    form.showStep("(3/3) Updating item: Night Watch");
    form.showElement("Downloading: powerup.lsu");
    form.progressA(kWhole);
    form.progressB(kFile);
  });
}

QPixmap TakeUpdated() {
  return TakeForm([](ui::update::updateForm& form) {
    form.showStep("(3/3) Updating item: Night Watch");
    form.showMessage("Update finished. New fonts installed successfully.");
  });
}

QPixmap TakeUpdateFailed() {
  return TakeForm([](ui::update::updateForm& form) {
    form.showWarning(
        "Update failed! \"/home/somebody-with-a-long-name/.local/share/Kestrin Launcher/fonts/Night Watch/tmp\" could "
        "not be written: No space left on device. Make room on the disk or permit writing there and update again.");
  });
}

QPixmap TakeUpdateQuestion() {
  return TakeForm([](ui::update::updateForm& form) { form.showYesNoButtons(); });
}

}  // namespace kestrin::demo
