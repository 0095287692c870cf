// SPDX-License-Identifier: MIT
#include "cli/Commands.h"
#include "cli/TextTable.h"
#include "platform/hid/HidAgent.h"

namespace kestrin::cli {

namespace {

const char* AccessOf(const platform::hid::BoardListing& board) {
  if (board.inUse) return "in use";
  return board.accessible ? "yes" : "no";
}

class DevicesCommand final : public Command {
 public:
  [[nodiscard]] std::string Name() const override { return "devices"; }
  [[nodiscard]] std::string Description() const override { return "List the boards found over USB"; }

  [[nodiscard]] Report Run(Context&) override {
    Document devices = Document::array();
    TextTable table({{"path"}, {"manufacturer"}, {"product"}, {"USB serial"}, {"access"}});
    std::string advice;
    const auto boards = platform::hid::ListBoards();
    for (const platform::hid::BoardListing& board : boards) {
      devices.push_back({{"path", board.path},
                         {"manufacturer", board.manufacturer},
                         {"product", board.product},
                         {"accessible", board.accessible}});
      table.Add({board.path, board.manufacturer, board.product, board.serialNumber, AccessOf(board)});
      if (!board.advice.empty()) advice += "\n" + board.advice + "\n";
    }
    Report report;
    report.document = {{"devices", devices}};
    report.text = boards.empty() ? "No board was found. Plug one in and try again.\n" : table.Text() + advice;
    return report;
  }
};

}  // namespace

std::unique_ptr<Command> MakeDevicesCommand() { return std::make_unique<DevicesCommand>(); }

}  // namespace kestrin::cli
