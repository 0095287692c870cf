// SPDX-License-Identifier: MIT
#include <utility>

#include "platform/doctor/UdevRule.h"

namespace kestrin::platform::doctor {

using core::base::Failure;
using core::base::FailureKind;
using core::base::Result;

namespace {

Failure NotNeeded() { return {FailureKind::Failed, "This system needs no rule to let you open a board."}; }

}  // namespace

UdevRule::UdevRule(Asks asks, Surroundings surroundings) : m_asks(asks), m_surroundings(std::move(surroundings)) {}

bool UdevRule::CanChange() const { return false; }

std::string UdevRule::Path() const { return ""; }

std::string UdevRule::Content() const { return ""; }

Result<> UdevRule::Install() { return NotNeeded(); }

Result<> UdevRule::Remove() { return NotNeeded(); }

}  // namespace kestrin::platform::doctor
