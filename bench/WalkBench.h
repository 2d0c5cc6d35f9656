// The walk benchmarks: a stream of linear moves walked with the stream iterator.
#pragma once

#include <cstddef>

namespace IofBench {

// Registers the walks of a job of `moves` linear moves; the job is built (and saved and
// loaded, as a post-processor gets it) when the first walk runs.
void RegisterWalkBenchmarks(std::size_t moves);

// The calling thread's CPU time in seconds: a walk neither waits nor sleeps, and on a
// shared machine this leaves out the time other processes hold the core.
double CpuSeconds();

}  // namespace IofBench
