// SPDX-License-Identifier: MIT
#include "simulator/store/StoredBoard.h"

#include <utility>

#include "simulator/store/BoardStore.h"

namespace kestrin::simulator::store {

core::base::Result<std::unique_ptr<VirtualBoard>> OpenBoard(const BoardOptions& options, core::base::Disk* disk) {
  if (options.dir.empty()) return std::make_unique<VirtualBoard>(options.Applied({}), options.erase);
  core::base::Result<BoardStore::Opened> opened = BoardStore::Open(options, disk);
  if (!opened) return opened.Why();
  return std::make_unique<VirtualBoard>(opened->state, options.erase, std::move(opened->flash),
                                        std::move(opened->store));
}

core::base::Result<std::unique_ptr<SimulatedAgent>> CreateAgent(const BoardOptions& options, core::base::Clock& clock,
                                                                core::base::EventPump pump, core::base::Disk* disk) {
  return SimulatedAgent::Create(options, clock, std::move(pump), [options, disk] { return OpenBoard(options, disk); });
}

}  // namespace kestrin::simulator::store
