// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "ui/kit/HelpContext.h"

namespace kestrin::ui::help {

/// Where a help context number leads: a page of the help, with "#anchor" for a place on it.
struct HelpTopic {
  kit::HelpContext context;
  const char* place;
};

/// Every help context number with its place, ascending. The help file is compiled from this table.
[[nodiscard]] std::span<const HelpTopic> HelpTopics();

}  // namespace kestrin::ui::help
