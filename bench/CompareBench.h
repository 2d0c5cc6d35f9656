// The comparison benchmarks: two large jobs compared with UtIofCompareMgr.
#pragma once

#include <cstddef>

namespace IofBench {

// Registers the comparisons of jobs of `moves` linear moves; the jobs are built (and
// saved and loaded) when the first comparison runs.
void RegisterCompareBenchmarks(std::size_t moves);

}  // namespace IofBench
