// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace kestrin::simulator::store {

/// Name and version of the reader and writer of JSON that is built in: "nlohmann-json 3.11.2".
[[nodiscard]] std::string JsonLibrary();

}  // namespace kestrin::simulator::store
