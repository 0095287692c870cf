// SPDX-License-Identifier: MIT
#include <windows.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "core/device/Protocol.h"
#include "platform/doctor/AccessOf.h"
#include "platform/doctor/SystemSurvey.h"
#include "platform/hid/BoardList.h"
#include "platform/hid/BoardLock.h"
#include "platform/hid/HidLibrary.h"
#include "platform/hid/WindowsListing.h"

namespace kestrin::platform::doctor {

namespace {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;
using core::doctor::LinkFacts;
using core::doctor::LinkNode;

Result<> TryToOpen(const std::string& path) {
  if (hid::IsBoardLocked(path)) return Failure{FailureKind::InUse, ""};
  return hid::TryInterface(path);
}

/// "Windows 10.0.19045": programs are told the truth by the lowest layer alone.
std::string NameOfSystem() {
  using Ask = LONG(WINAPI*)(OSVERSIONINFOW*);
  const HMODULE library = GetModuleHandleW(L"ntdll.dll");
  const auto ask = library == nullptr ? nullptr
                                      : reinterpret_cast<Ask>(reinterpret_cast<void*>(  // meant to differ
                                            GetProcAddress(library, "RtlGetVersion")));
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof(version);
  if (ask == nullptr || ask(&version) != 0) return "Windows";
  return "Windows " + std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
         std::to_string(version.dwBuildNumber);
}

}  // namespace

SystemSurvey::SystemSurvey(Surroundings surroundings) : m_surroundings(std::move(surroundings)) {
  if (!m_surroundings.open) m_surroundings.open = TryToOpen;
}

LinkFacts SystemSurvey::Look() {
  LinkFacts facts;
  try {
    facts.system = {NameOfSystem(), hid::HidLibrary()};
    std::vector<hid::HidNode> nodes = hid::ListInterfaces(core::device::kBoardVendorId, core::device::kBoardProductId);
    std::sort(nodes.begin(), nodes.end(), hid::ComesBefore);
    for (const hid::HidNode& found : nodes) {
      LinkNode node;
      node.path = found.path;
      node.product = found.product;
      node.isOurs = hid::IsBoardOurs(found.path);
      const Result<> opened = node.isOurs ? Result<>() : m_surroundings.open(found.path);
      // Unplugged since it was listed.
      if (!opened && opened.Why().kind == FailureKind::NotFound) continue;
      node.access = AccessOf(opened);
      node.why = opened.Text();
      node.descriptor = hid::InterfaceDescriptor(found.path);
      node.hasVariables = hid::HasBoardVariables(node.descriptor);
      facts.nodes.push_back(std::move(node));
      // The system shows a device of this kind as its interface alone.
      facts.bus.push_back({found.path, found.manufacturer, found.product, found.serialNumber, true, std::nullopt});
    }
  } catch (const std::exception&) {
    // What has been seen until then is what there is to tell.
  }
  return facts;
}

}  // namespace kestrin::platform::doctor
