// How fast the stream iterator walks a large job, forwards and backwards, with the
// all-types mask and with a filter, against a plain loop over the same lists.
//
// The job: N linear moves in operation lists of 1000 (DbIOFList, kind kOperation) in
// one stream; every 20th move carries a motion sub-list (kind kMotionSubList) of three
// motion blocks. It is saved to memory and loaded again, so that the walk reads the
// records where a post-processor finds them. The iterators enter the motion sub-lists
// (sub-list mask 15 | kMotionSubList), so a walk yields every operation, every move
// without a sub-list and every motion block: the carriers give way to their blocks.
#include "WalkBench.h"

#include <benchmark/benchmark.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/FilteredTypeIterator.h>
#include <iof/StreamIteratorBase.h>
#include <quarp/DbMgr.h>

#include <cstdint>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace IofBench {
namespace {

constexpr std::size_t kMovesPerList = 1000;
constexpr std::size_t kCarrierEvery = 20;
constexpr int kBlocksPerCarrier = 3;
constexpr int kSubListMask = 15 | IOF::DbIOFList::kMotionSubList;

struct WalkJob {
  std::size_t moves = 0;
  std::unique_ptr<Quarp::DbMgr> mgr;
  Quarp::DbId stream;
  std::size_t yielded = 0;  // records a walk with the all-types mask yields
  std::size_t linears = 0;  // records the linear-move filter passes: every move (its
                            // base walk, sub-list mask 15, leaves motion sub-lists alone)
};

WalkJob& Job(std::size_t moves) {
  static WalkJob job;
  if (job.mgr) return job;
  Quarp::DbMgr built;
  auto stream = IOF::DbIOFList::Create(IOF::DbIOFList::kStream);
  for (std::size_t done = 0; done < moves; done += kMovesPerList) {
    auto op = IOF::DbIOFList::Create(IOF::DbIOFList::kOperation);
    ++job.yielded;
    for (std::size_t i = done; i < moves && i < done + kMovesPerList; ++i) {
      auto line = IOF::DbIOFNciLinear::Create();
      line->SetEndPoint(IOF::GmPoint3D(static_cast<double>(i % 97), static_cast<double>(i % 89), -1.0));
      const Quarp::DbId lineId = built.Add(line);
      op->PushBack(lineId);
      if (i % kCarrierEvery == kCarrierEvery - 1) {
        auto sub = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionSubList);
        for (int b = 0; b < kBlocksPerCarrier; ++b) {
          auto block = IOF::DbIOFMotionBlock::Create();
          sub->PushBack(built.Add(block));
        }
        line->AddSubList(built.Add(sub));
        job.yielded += kBlocksPerCarrier;
      } else {
        ++job.yielded;
      }
      ++job.linears;
    }
    stream->PushBack(built.Add(op));
  }
  job.stream = built.Add(stream);
  std::vector<std::uint8_t> bytes;
  job.mgr = std::make_unique<Quarp::DbMgr>();
  if (built.WriteToMemory(bytes) != Quarp::DbErr::Ok || job.mgr->ReadFromMemory(bytes) != Quarp::DbErr::Ok) {
    throw std::runtime_error("the walk job does not save and load: " + job.mgr->GetLastErrorText());
  }
  job.moves = moves;
  return job;
}

Quarp::DbCPtr<IOF::DbIOFList> Stream(const WalkJob& job) {
  Quarp::DbCPtr<IOF::DbIOFList> stream;
  job.mgr->Get(stream, job.stream, 0);
  return stream;
}

// Times one whole walk per iteration (thread CPU time) and reports the records yielded
// per second; `walk` returns how many it yielded, checked against `expected`.
template <class Walk>
void Measure(benchmark::State& state, std::size_t moves, Walk walk, std::size_t WalkJob::*expected) {
  const WalkJob& job = Job(moves);
  double seconds = 0.0;
  for (auto _ : state) {
    const double t0 = CpuSeconds();
    const std::size_t n = walk(job);
    const double s = CpuSeconds() - t0;
    state.SetIterationTime(s);
    seconds += s;
    if (n != job.*expected) {
      state.SkipWithError(
          ("walked " + std::to_string(n) + " records, expected " + std::to_string(job.*expected)).c_str());
      return;
    }
  }
  state.counters["records/s"] = static_cast<double>(job.*expected) * static_cast<double>(state.iterations()) / seconds;
}

template <class Iterator>
std::size_t Count(Iterator& it, bool backward) {
  std::size_t n = 0;
  for (Quarp::DbId id = backward ? it.GetLast() : it.GetFirst(); !id.IsNull(); id = backward ? --it : ++it) {
    benchmark::DoNotOptimize(id);
    ++n;
  }
  return n;
}

std::size_t AllTypes(const WalkJob& job, bool backward) {
  IOF::StreamIteratorBase it(Stream(job), IOF::DbIOFTypeMgr::GetIOFBASEMask(), kSubListMask);
  return Count(it, backward);
}

std::size_t Linears(const WalkJob& job, bool backward) {
  IOF::FilteredTypeIterator it(Stream(job), IOF::DbIOFTypeMgr::GetIOFNCILINEARMask());
  return Count(it, backward);
}

// The yardstick: the same order with plain loops over the items and DbMgr::Lookup, no
// type test, the sub-list taken as the first one.
std::size_t Plain(const WalkJob& job, bool /*backward*/) {
  const Quarp::DbMgr& mgr = *job.mgr;
  std::size_t n = 0;
  const auto* stream = static_cast<const IOF::DbIOFList*>(mgr.Lookup(job.stream));
  for (const auto* op = stream->GetHead(); op; op = op->GetNext()) {
    ++n;
    const auto* list = static_cast<const IOF::DbIOFList*>(mgr.Lookup(op->GetId()));
    for (const auto* item = list->GetHead(); item; item = item->GetNext()) {
      const auto* record = static_cast<const IOF::DbIOFBase*>(mgr.Lookup(item->GetId()));
      if (!record->HasSubLists()) {
        benchmark::DoNotOptimize(record);
        ++n;
        continue;
      }
      const auto* sub = static_cast<const IOF::DbIOFList*>(mgr.Lookup(record->GetSubLists()[0]));
      for (const auto* block = sub->GetHead(); block; block = block->GetNext()) {
        benchmark::DoNotOptimize(mgr.Lookup(block->GetId()));
        ++n;
      }
    }
  }
  return n;
}

}  // namespace

double CpuSeconds() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

void RegisterWalkBenchmarks(std::size_t moves) {
  struct Entry {
    const char* name;
    std::size_t (*walk)(const WalkJob&, bool);
    bool backward;
    std::size_t WalkJob::*expected;
  };
  const Entry entries[] = {
      {"walk/all types, forwards (StreamIteratorBase)", AllTypes, false, &WalkJob::yielded},
      {"walk/all types, backwards (StreamIteratorBase)", AllTypes, true, &WalkJob::yielded},
      {"walk/linear moves, forwards (FilteredTypeIterator)", Linears, false, &WalkJob::linears},
      {"walk/linear moves, backwards (FilteredTypeIterator)", Linears, true, &WalkJob::linears},
      {"walk/plain loops over the lists", Plain, false, &WalkJob::yielded},
  };
  for (const Entry& e : entries) {
    benchmark::RegisterBenchmark(e.name,
                                 [e, moves](benchmark::State& state) {
                                   Measure(
                                       state, moves, [&](const WalkJob& job) { return e.walk(job, e.backward); },
                                       e.expected);
                                 })
        ->Unit(benchmark::kMillisecond)
        ->Iterations(10)
        ->UseManualTime();
  }
}

}  // namespace IofBench
