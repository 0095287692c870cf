// SPDX-License-Identifier: MIT
#include "simulator/store/StoredBoard.h"

#include <utility>

#include "simulator/MotionScript.h"
#include "simulator/SensorSource.h"
#include "simulator/store/BoardStore.h"

namespace kestrin::simulator::store {

namespace {

using BoardResult = core::base::Result<std::unique_ptr<VirtualBoard>>;

/// What moves the board; empty when nothing does.
core::base::Result<SensorSource> SensorOf(const BoardOptions& options) {
  if (options.motion.empty()) return options.sensor;
  core::base::Result<MotionScript> script = MotionScript::Read(options.motion);
  if (!script) return script.Why();
  return SensorSource([moved = *std::move(script)]() mutable { return moved.Next(); });
}

BoardResult BoardOf(const BoardOptions& options, core::base::Disk* disk) {
  if (options.dir.empty()) return std::make_unique<VirtualBoard>(options.Applied({}), options.erase);
  core::base::Result<BoardStore::Opened> opened = BoardStore::Open(options, disk);
  if (!opened) return opened.Why();
  return std::make_unique<VirtualBoard>(opened->state, options.erase, std::move(opened->flash),
                                        std::move(opened->store));
}

}  // namespace

BoardResult OpenBoard(const BoardOptions& options, core::base::Disk* disk) {
  core::base::Result<SensorSource> sensor = SensorOf(options);
  if (!sensor) return sensor.Why();
  BoardResult board = BoardOf(options, disk);
  if (board) (*board)->MoveBy(*std::move(sensor));
  return board;
}

core::base::Result<std::unique_ptr<SimulatedAgent>> CreateAgent(const BoardOptions& options, core::base::Clock& clock,
                                                                core::base::EventPump pump, core::base::Disk* disk) {
  return SimulatedAgent::Create(options, clock, std::move(pump), [options, disk] { return OpenBoard(options, disk); });
}

}  // namespace kestrin::simulator::store
