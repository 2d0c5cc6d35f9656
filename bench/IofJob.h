// The IOF job of the benchmarks, built from the toolpath of Toolpath.h the way a
// toolpath producer writes it: a document with stream 1 whose operations each hold a
// sub-operation (its approach, then a motion list with the moves) and a retract.
#pragma once

#include "Toolpath.h"

#include <quarp/DbId.h>
#include <quarp/DbMgr.h>

#include <cstddef>

namespace IofBench {

struct IofJob {
  Quarp::DbId lastMoveId;  // the last linear move, for checks of a loaded job
  MoveSpec lastMove;
  std::size_t records = 0;  // records in the manager afterwards
};

// Builds a job of `moves` linear moves into `mgr` (which should be empty).
IofJob BuildIofJob(Quarp::DbMgr& mgr, std::size_t moves);

}  // namespace IofBench
