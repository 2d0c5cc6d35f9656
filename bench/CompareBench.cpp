// How fast the document comparison (UtIofCompareMgr) compares two large jobs.
//
// The jobs: the benchmark's job (IofJob.h) with a job setup and a machine information,
// built three times: the left job, a right job equal to it, and a right job with
// differences spread through it: every 997th move has another feed (a field difference,
// which the manager compares and does not record) and every 50th operation's motion list
// one more move (a structural difference: two "IOFLists not same size." items). Each is
// saved to memory and loaded again, as the comparison finds them in files; the loads are
// not timed. Each iteration compares the whole documents; `Time` is the comparing
// thread's CPU time, and `records/s` counts the pairs of records compared (every record
// of the left job).
#include "CompareBench.h"

#include "IofJob.h"
#include "WalkBench.h"

#include <benchmark/benchmark.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFMachineInfo.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFStream.h>
#include <iof/UtIofCompareMgr.h>
#include <quarp/DbMgr.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace IofBench {
namespace {

constexpr std::size_t kFeedChangeEvery = 997;
constexpr std::size_t kExtraMoveEvery = 50;  // operations

struct CompareJobs {
  std::unique_ptr<Quarp::DbMgr> left, equal, different;
  std::size_t records = 0;           // pairs a comparison walks: the left job's records
  std::size_t structural = 0;        // items expected against the different job
  std::size_t fieldDifferences = 0;  // pairs whose Compare reports a difference
};

Quarp::DbPtr<IOF::DbIOFDocument> Document(Quarp::DbMgr& mgr) {
  Quarp::DbPtr<IOF::DbIOFDocument> doc;
  Quarp::DbId at;
  if (!mgr.GetNext(doc, at, 0)) throw std::runtime_error("the compare job has no document");
  return doc;
}

// Spreads the differences through a job: feeds of the moves and one more move in some
// motion lists, found through the operations' sub-operations.
void Spread(Quarp::DbMgr& mgr, CompareJobs& jobs) {
  Quarp::DbPtr<IOF::DbIOFStream> stream;
  mgr.Get(stream, Document(mgr)->GetStreamByIndex(0), 0);
  std::size_t op = 0, move = 0;
  for (const auto* item = stream->GetHead(); item; item = item->GetNext(), ++op) {
    Quarp::DbPtr<IOF::DbIOFList> operation, sub, motion;
    if (!mgr.Get(operation, item->GetId(), 0) || !mgr.Get(sub, operation->GetHead()->GetId(), 0) ||
        !mgr.Get(motion, sub->GetTail()->GetId(), 0)) {
      throw std::runtime_error("the compare job is not laid out as expected");
    }
    for (const auto* m = motion->GetHead(); m; m = m->GetNext(), ++move) {
      Quarp::DbPtr<IOF::DbIOFNciLinear> line;
      if (move % kFeedChangeEvery == 0 && mgr.Get(line, m->GetId(), 0)) {
        line->SetFeedRate(line->GetFeedRate() + 1.0);
        ++jobs.fieldDifferences;
      }
    }
    if (op % kExtraMoveEvery == 0) {
      auto extra = IOF::DbIOFNciLinear::Create();
      motion->PushBack(mgr.Add(extra));
      jobs.structural += 2;
    }
  }
}

std::unique_ptr<Quarp::DbMgr> Job(std::size_t moves, CompareJobs* spread) {
  Quarp::DbMgr built;
  BuildIofJob(built, moves);
  auto doc = Document(built);
  auto setup = IOF::DbIOFJobSetup::Create();
  auto machine = IOF::DbIOFMachineInfo::Create();
  doc->SetJobSetupID(built.Add(setup));
  doc->SetMachineInfoID(built.Add(machine));
  if (spread) Spread(built, *spread);
  std::vector<std::uint8_t> bytes;
  auto loaded = std::make_unique<Quarp::DbMgr>();
  if (built.WriteToMemory(bytes) != Quarp::DbErr::Ok || loaded->ReadFromMemory(bytes, true) != Quarp::DbErr::Ok) {
    throw std::runtime_error("the compare job does not save and load: " + loaded->GetLastErrorText());
  }
  return loaded;
}

CompareJobs& Jobs(std::size_t moves) {
  static CompareJobs jobs;
  if (jobs.left) return jobs;
  jobs.left = Job(moves, nullptr);
  jobs.equal = Job(moves, nullptr);
  jobs.different = Job(moves, &jobs);
  jobs.records = jobs.left->GetCount();
  return jobs;
}

enum class Run { Equal, Different, DifferentWithReports };

void Measure(benchmark::State& state, std::size_t moves, Run run) {
  CompareJobs& jobs = Jobs(moves);
  Quarp::DbMgr& right = run == Run::Equal ? *jobs.equal : *jobs.different;
  const std::size_t expectItems = run == Run::Equal ? 0 : jobs.structural;
  double seconds = 0.0;
  for (auto _ : state) {
    IOF::UtIofCompareMgr cmp;
    std::size_t pairs = 0, reports = 0;
    if (run == Run::DifferentWithReports) {
      // What iof diff does with each pair: keep the reports of those that differ.
      cmp.SetPairObserver([&](const IOF::DbIOFBase&, const IOF::DbIOFBase&, bool equal, const CString&) {
        ++pairs;
        reports += equal ? 0 : 1;
      });
    }
    const double t0 = CpuSeconds();
    cmp.Compare(Document(*jobs.left), Document(right));
    const double s = CpuSeconds() - t0;
    state.SetIterationTime(s);
    seconds += s;
    const auto items = static_cast<std::size_t>(cmp.DifferencesFound());
    if (items != expectItems ||
        (run == Run::DifferentWithReports && (pairs != jobs.records || reports != jobs.fieldDifferences))) {
      state.SkipWithError(("found " + std::to_string(items) + " items and " + std::to_string(reports) + " reports in " +
                           std::to_string(pairs) + " pairs")
                              .c_str());
      return;
    }
  }
  state.counters["records/s"] = static_cast<double>(jobs.records) * static_cast<double>(state.iterations()) / seconds;
}

}  // namespace

void RegisterCompareBenchmarks(std::size_t moves) {
  const std::pair<const char*, Run> entries[] = {
      {"compare/equal jobs (UtIofCompareMgr)", Run::Equal},
      {"compare/jobs with spread differences", Run::Different},
      {"compare/jobs with spread differences, each pair's report observed", Run::DifferentWithReports},
  };
  for (const auto& [name, run] : entries) {
    benchmark::RegisterBenchmark(name, [moves, run = run](benchmark::State& state) { Measure(state, moves, run); })
        ->Unit(benchmark::kMillisecond)
        ->Iterations(5)
        ->UseManualTime();
  }
}

}  // namespace IofBench
