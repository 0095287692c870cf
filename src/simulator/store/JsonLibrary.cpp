// SPDX-License-Identifier: MIT
#include "simulator/store/JsonLibrary.h"

#include <nlohmann/json.hpp>

namespace kestrin::simulator::store {

std::string JsonLibrary() {
  return "nlohmann-json " + std::to_string(NLOHMANN_JSON_VERSION_MAJOR) + '.' +
         std::to_string(NLOHMANN_JSON_VERSION_MINOR) + '.' + std::to_string(NLOHMANN_JSON_VERSION_PATCH);
}

}  // namespace kestrin::simulator::store
