// SPDX-License-Identifier: MIT
#include "cli/SetDifferences.h"

#include "cli/TextTable.h"
#include "core/sound/board/HoldingText.h"

namespace kestrin::cli {

using core::sound::Differs;
using core::sound::SetDifference;

Document DocumentOf(const std::vector<SetDifference>& differences) {
  Document document = Document::array();
  for (const SetDifference& difference : differences)
    document.push_back({{"slot", core::sound::SlotOf(difference.place.kind).name},
                        {"position", difference.place.position},
                        {"kind", core::sound::SetComparison::NameOf(difference.kind)}});
  return document;
}

std::string TableOf(const std::vector<SetDifference>& differences, const std::string& first,
                    const std::string& second) {
  const auto words = [&](Differs kind) -> std::string {
    switch (kind) {
      case Differs::Volume:
        return "other volume";
      case Differs::Sound:
        break;
      case Differs::OnlyInFirst:
        return "only in " + first;
      case Differs::OnlyInSecond:
        return "only in " + second;
    }
    return "other sound";
  };
  TextTable table({{"slot"}, {"difference"}});
  for (const SetDifference& difference : differences)
    table.Add({core::sound::HoldingText::NameOf(difference.place), words(difference.kind)});
  return table.Text();
}

}  // namespace kestrin::cli
