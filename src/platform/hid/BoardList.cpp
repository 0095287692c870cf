#include "platform/hid/BoardList.h"

#include <algorithm>

#include "platform/hid/AccessAdvice.h"

namespace kestrin::hid {

bool ComesBefore(const HidNode& a, const HidNode& b) {
  return a.path.size() != b.path.size() ? a.path.size() < b.path.size() : a.path < b.path;
}

std::vector<BoardListing> ListBoards(HidStack& stack) {
  std::vector<HidNode> nodes = stack.Enumerate(device::kBoardVendorId, device::kBoardProductId);
  std::sort(nodes.begin(), nodes.end(), ComesBefore);
  std::vector<BoardListing> boards;
  for (const HidNode& node : nodes) {
    const OpenOutcome outcome = stack.Open(node);
    BoardListing board{node.path, node.manufacturer, node.product, node.serialNumber, outcome.connection != nullptr,
                       ""};
    if (!board.accessible) {
      board.advice = outcome.notPermitted ? AccessAdvice(node.path) : OpenAdvice(node.path, outcome.reason);
    }
    boards.push_back(board);
  }
  return boards;
}

}  // namespace kestrin::hid
