// SPDX-License-Identifier: MIT
#include "ui/window/FontUpdate.h"

#include <QObject>

#include "ui/kit/CommandGate.h"
#include "ui/update/updateForm.h"

namespace kestrin::ui::window {

FontUpdate::FontUpdate(core::update::TransferControl& inetConnector, const std::string& server,
                       const std::filesystem::path& fontsFolder, core::base::Disk& disk, kit::CommandGate& gate)
    : m_inetConnector(inetConnector), m_gate(gate), m_manager(server, fontsFolder, disk, gate.Pump()) {}

FontUpdate::~FontUpdate() { Unload(); }

void FontUpdate::Initialise() {
  if (m_form != nullptr) return;
  m_form = new update::updateForm(m_inetConnector);
  m_manager.Initialize(*m_form, m_form->Inet());
  QObject::connect(m_form, &QDialog::finished, m_form, [this] { m_manager.cancel(); });
}

std::vector<std::filesystem::path> FontUpdate::Open(QWidget& window, const std::string& serialNumber) {
  Initialise();
  m_form->setParent(&window, m_form->windowFlags());
  {
    const kit::CommandGate::Passage passage(m_gate);
    m_manager.deviceSerial(serialNumber);
    m_manager.startUpdate();
  }
  std::vector<std::filesystem::path> sets;
  if (m_manager.outcome() != core::update::UpdateManager::Outcome::Updated) return sets;
  for (const std::string& item : m_manager.installed()) sets.push_back(m_manager.utils().ConfigurationOf(item));
  return sets;
}

void FontUpdate::Cancel() {
  if (m_form != nullptr) m_form->reject();
}

void FontUpdate::Unload() {
  Cancel();
  delete m_form;
}

}  // namespace kestrin::ui::window
