// iof_bench: how fast the IOF file saves and loads a large job, measured in one run
// against the physical limit for the same bytes and against a Boost.Serialization peer
// holding the same records, and how much memory a loaded move takes.
//
//   iof_bench [--moves=N] [Google Benchmark flags]     (or IOF_BENCH_MOVES=N)
//
// The job: N linear moves (1,000,000 by default) in operations of 1000 moves (each
// operation holds a sub-operation with its approach and a motion list of the moves, and
// a retract), in one stream of one document. Scratch files go to a fresh directory under $TMPDIR (default
// /tmp), removed at the end. After the benchmarks a table gives the ratios; see
// bench/README.md.
#include "CompareBench.h"
#include "IofJob.h"
#include "PeerRecords.h"
#include "SystemIo.h"
#include "Toolpath.h"
#include "WalkBench.h"

#include <benchmark/benchmark.h>
#include <iof/DbIOFApproach.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace IofBench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kDefaultMoves = 1000000;
// Fixed iteration counts keep the whole run (build of the job included) well under two
// minutes on two cores at the default size; each iteration handles the whole job.
constexpr int kIterations = 5;
constexpr int kPeerIterations = 3;

// Everything the benchmarks share: the source job on both sides and the files.
struct Context {
  std::size_t moves = 0;
  std::size_t operations = 0;
  std::size_t records = 0;  // document, stream, operations with their parts, moves
  ScratchDir dir;
  std::string oursPath = dir.File("job.iof");
  std::string limitPath = dir.File("limit.bin");
  std::string peerPath = dir.File("peer.bin");
  std::unique_ptr<Quarp::DbMgr> ours;
  Peer::Job peer;
  Quarp::DbId lastMoveId;  // for the check of every loaded job
  MoveSpec lastMove;
  std::size_t oursBytes = 0;
  std::size_t peerBytes = 0;
  std::unique_ptr<std::uint8_t[]> limitData;  // the bytes the limit writes: a copy of the IOF file
};
Context* g_ctx = nullptr;

// Mean seconds per iteration of each benchmark, recorded by the benchmark bodies.
struct Timing {
  double seconds = 0.0;
  long iterations = 0;
  double Mean() const { return iterations > 0 ? seconds / static_cast<double>(iterations) : 0.0; }
};
std::map<std::string, Timing> g_times;

// Memory figures of one load, per linear move.
struct MemoryFigures {
  bool measured = false;
  double resident = 0.0;  // RSS growth across the load
  double heap = 0.0;      // allocator bytes in use afterwards
  double peak = -1.0;     // RSS peak during the load (the file buffer included); < 0 unknown
};
std::map<std::string, MemoryFigures> g_memory;

double Seconds(Clock::time_point from, Clock::time_point to) {
  return std::chrono::duration<double>(to - from).count();
}

// ---------------------------------------------------------------------------------------
// The job

// The IOF job, the way a toolpath producer writes it (IofJob.cpp).
void BuildOurs(Context& ctx) {
  ctx.ours = std::make_unique<Quarp::DbMgr>();
  const IofJob job = BuildIofJob(*ctx.ours, ctx.moves);
  ctx.lastMoveId = job.lastMoveId;
  ctx.lastMove = job.lastMove;
  ctx.records = job.records;
}

// The same records for the peer, with the same ids (record i + 1 at index i).
void BuildPeer(Context& ctx) {
  Peer::Job& job = ctx.peer;
  job.reserve(ctx.records);
  // Appends `record` and returns its id.
  const auto add = [&job](auto record) {
    job.push_back(std::move(record));
    return static_cast<std::uint64_t>(job.size());
  };
  auto doc = std::make_unique<Peer::List>();
  doc->m_Items.push_back(2);
  add(std::move(doc));
  auto stream = std::make_unique<Peer::List>();
  stream->m_Name = "Stream Object";
  stream->m_ListType = IOF::DbIOFList::kStream;
  Peer::List* streamList = stream.get();
  add(std::move(stream));
  for (std::size_t op = 0; op < ctx.operations; ++op) {
    const std::size_t n = MovesInOperation(ctx.moves, op);
    OperationPath path(op, n);
    const OperationHeader header = path.Header(op + 1 == ctx.operations);
    auto operation = std::make_unique<Peer::Operation>();
    operation->m_Name = "Operation " + std::to_string(header.number);
    operation->m_ListType = IOF::DbIOFList::kOperation;
    operation->m_MCOpNumber = operation->m_MCOpId = header.number;
    operation->m_ToolPathType = header.toolPathType;
    operation->m_ToolpathTypeTitle = "Pocket";
    operation->m_StreamId = 1;
    operation->m_MaxSpindleSpeed = header.spindleSpeed;
    operation->m_ToolChangeTime = header.toolChangeTime;
    Peer::Operation* opList = operation.get();
    const std::uint64_t opId = add(std::move(operation));
    streamList->m_Items.push_back(opId);
    auto sub = std::make_unique<Peer::SubOp>();
    sub->m_ListType = IOF::DbIOFNciSubOp::kListType;
    sub->m_OpId = opId;
    sub->m_FeedRate = header.feed;
    sub->m_SpindleSpeed = header.spindleSpeed;
    sub->m_DiameterOffsetNum = sub->m_LengthOffsetNum = header.toolNumber;
    Peer::SubOp* subList = sub.get();
    opList->m_Items.push_back(add(std::move(sub)));
    auto approach = std::make_unique<Peer::Approach>();
    approach->m_Type = header.approachType;
    approach->m_EndPoint = {header.approachX, header.approachY, header.approachZ};
    subList->m_Items.push_back(add(std::move(approach)));
    auto motion = std::make_unique<Peer::List>();
    motion->m_ListType = IOF::DbIOFList::kMotionBlock;
    Peer::List* motionList = motion.get();
    subList->m_Items.push_back(add(std::move(motion)));
    MoveSpec m;
    for (std::size_t i = 0; i < n; ++i) {
      m = path.Next();
      auto line = std::make_unique<Peer::Linear>();
      line->m_GCode = m.gCode;
      line->m_OwnerOpId = static_cast<int>(opId);
      line->m_Time = IOF::DbIOFNciBase::FilterTime(m.time);  // the value the IOF record keeps
      line->m_FeedRate = m.feedRate;
      line->m_bIsFeedMove = m.feedMove;
      line->m_CutterComp = m.cutterComp;
      line->m_PositionCode = m.positionCode;
      line->m_ContourPosition = m.contourPosition;
      line->m_EndPoint = {m.x, m.y, m.z};
      motionList->m_Items.push_back(add(std::move(line)));
    }
    auto retract = std::make_unique<Peer::Retract>();
    retract->m_Type = header.retractType;
    retract->m_EndPoint = {m.x, m.y, m.z};
    opList->m_Items.push_back(add(std::move(retract)));
  }
  if (job.size() != ctx.records) throw std::logic_error("the peer job does not hold the same records");
}

// Checks a loaded IOF job: the record count and the last move's values.
std::string CheckOurs(const Quarp::DbMgr& mgr) {
  const Context& ctx = *g_ctx;
  if (mgr.GetCount() != ctx.records) {
    return "loaded " + std::to_string(mgr.GetCount()) + " records, expected " + std::to_string(ctx.records);
  }
  Quarp::DbCPtr<IOF::DbIOFNciLinear> last;
  if (!mgr.Get(last, ctx.lastMoveId, 0)) return "the last move is missing";
  const MoveSpec& m = ctx.lastMove;
  if (!(last->GetEndPoint() == IOF::GmPoint3D(m.x, m.y, m.z)) || last->GetFeedRate() != m.feedRate ||
      last->GetGCode() != m.gCode) {
    return "the last move does not read back as written";
  }
  return {};
}

std::string CheckPeer(const Peer::Job& job) {
  const Context& ctx = *g_ctx;
  if (job.size() != ctx.records) {
    return "loaded " + std::to_string(job.size()) + " records, expected " + std::to_string(ctx.records);
  }
  const auto* last = dynamic_cast<const Peer::Linear*>(job[ctx.lastMoveId.Value() - 1].get());
  const MoveSpec& m = ctx.lastMove;
  if (!last || last->m_EndPoint.x != m.x || last->m_EndPoint.y != m.y || last->m_EndPoint.z != m.z ||
      last->m_FeedRate != m.feedRate || last->m_GCode != m.gCode) {
    return "the last move does not read back as written";
  }
  return {};
}

// ---------------------------------------------------------------------------------------
// Benchmarks. Each iteration handles the whole job; only the operation itself is timed
// (manual time), not the release of what it loaded.

// Runs `op` once per iteration. `op` returns what it produced (kept alive until the
// time is taken) and may throw; `check` returns an error text for a wrong result.
//
// Between iterations, untimed, what the iteration made is released and the free heap
// memory is given back to the system: otherwise a load would reuse the pages the
// previous iteration freed, which no load in a fresh process can, and would look faster
// than it is.
template <class Op, class Check>
void Measure(benchmark::State& state, const std::string& key, Op op, Check check) {
  for (auto _ : state) {
    try {
      std::string error;
      {
        const auto t0 = Clock::now();
        auto result = op();
        const double s = Seconds(t0, Clock::now());
        state.SetIterationTime(s);
        Timing& t = g_times[key];
        t.seconds += s;
        ++t.iterations;
        error = check(result);
      }
      ReleaseFreeMemory();
      if (!error.empty()) {
        state.SkipWithError(error.c_str());
        break;
      }
    } catch (const std::exception& e) {
      state.SkipWithError(e.what());
      break;
    }
  }
}

// Throughput counters from this run's mean time; `records` 0 for the raw limits.
void SetRates(benchmark::State& state, const std::string& key, std::size_t records, std::size_t bytes) {
  const double mean = g_times[key].Mean();
  if (mean <= 0.0) return;
  if (records > 0) state.counters["records/s"] = static_cast<double>(records) / mean;
  state.counters["MB/s"] = static_cast<double>(bytes) / 1e6 / mean;
}

int Ok() { return 0; }
std::string NoCheck(int) { return {}; }

void SaveOurs(benchmark::State& state) {
  Context& ctx = *g_ctx;
  Measure(
      state, "save/IOF",
      [&] {
        const Quarp::DbErr err = ctx.ours->Write(Quarp::UtString(ctx.oursPath.c_str()));
        if (err != Quarp::DbErr::Ok) throw std::runtime_error(ctx.ours->GetLastErrorText());
        return Ok();
      },
      NoCheck);
  SetRates(state, "save/IOF", ctx.records, ctx.oursBytes);
}

void SaveLimit(benchmark::State& state) {
  Context& ctx = *g_ctx;
  Measure(
      state, "save/limit",
      [&] {
        WriteDurably(ctx.limitPath, ctx.limitData.get(), ctx.oursBytes);
        return Ok();
      },
      NoCheck);
  SetRates(state, "save/limit", 0, ctx.oursBytes);
}

void SavePeer(benchmark::State& state) {
  Context& ctx = *g_ctx;
  Measure(
      state, "save/peer",
      [&] {
        const std::string temp = ctx.peerPath + ".tmp";
        Peer::Save(ctx.peer, temp);
        DurableReplace(temp, ctx.peerPath);
        return Ok();
      },
      NoCheck);
  SetRates(state, "save/peer", ctx.records, ctx.peerBytes);
}

void LoadOurs(benchmark::State& state) {
  Context& ctx = *g_ctx;
  Measure(
      state, "load/IOF",
      [&] {
        auto mgr = std::make_unique<Quarp::DbMgr>();
        if (mgr->Read(Quarp::UtString(ctx.oursPath.c_str())) != Quarp::DbErr::Ok) {
          throw std::runtime_error(mgr->GetLastErrorText());
        }
        return mgr;
      },
      [](const std::unique_ptr<Quarp::DbMgr>& mgr) { return CheckOurs(*mgr); });
  SetRates(state, "load/IOF", ctx.records, ctx.oursBytes);
}

void LoadLimit(benchmark::State& state) {
  Context& ctx = *g_ctx;
  std::size_t size = 0;
  Measure(
      state, "load/limit", [&] { return ReadWholeFile(ctx.oursPath, size); },
      [&](const std::unique_ptr<std::uint8_t[]>&) {
        return size == ctx.oursBytes ? std::string() : "read " + std::to_string(size) + " bytes";
      });
  SetRates(state, "load/limit", 0, ctx.oursBytes);
}

void LoadPeer(benchmark::State& state) {
  Context& ctx = *g_ctx;
  Measure(
      state, "load/peer", [&] { return Peer::Load(ctx.peerPath); }, CheckPeer);
  SetRates(state, "load/peer", ctx.records, ctx.peerBytes);
}

// One load of the whole job with the process's memory read before and after. Free heap
// memory is given back to the system before and after the load, so that the growth
// counts the pages the loaded job keeps (not pages freed earlier and reused, nor the
// load's transient buffers, which the peak shows).
template <class Load>
void MeasureMemory(benchmark::State& state, const std::string& key, Load load) {
  const double moves = static_cast<double>(g_ctx->moves);
  for (auto _ : state) {
    try {
      ReleaseFreeMemory();
      const bool peakKnown = ResetPeakResident();
      const std::size_t rss0 = ResidentBytes();
      const std::size_t heap0 = HeapBytesInUse();
      const auto t0 = Clock::now();
      auto loaded = load();
      state.SetIterationTime(Seconds(t0, Clock::now()));
      const std::size_t peak = PeakResidentBytes();
      ReleaseFreeMemory();
      const std::size_t rss1 = ResidentBytes();
      const std::size_t heap1 = HeapBytesInUse();
      MemoryFigures& f = g_memory[key];
      f.measured = true;
      f.resident = (static_cast<double>(rss1) - static_cast<double>(rss0)) / moves;
      f.heap = (static_cast<double>(heap1) - static_cast<double>(heap0)) / moves;
      f.peak = peakKnown && peak >= rss0 ? static_cast<double>(peak - rss0) / moves : -1.0;
      state.counters["resident B/move"] = f.resident;
      state.counters["heap B/move"] = f.heap;
      if (f.peak >= 0.0) state.counters["peak B/move"] = f.peak;
    } catch (const std::exception& e) {
      state.SkipWithError(e.what());
      break;
    }
  }
}

void MemoryOurs(benchmark::State& state) {
  MeasureMemory(state, "IOF", [] {
    auto mgr = std::make_unique<Quarp::DbMgr>();
    if (mgr->Read(Quarp::UtString(g_ctx->oursPath.c_str())) != Quarp::DbErr::Ok) {
      throw std::runtime_error(mgr->GetLastErrorText());
    }
    return mgr;
  });
  state.counters["file B/record"] = static_cast<double>(g_ctx->oursBytes) / static_cast<double>(g_ctx->records);
}

void MemoryPeer(benchmark::State& state) {
  MeasureMemory(state, "peer", [] { return Peer::Load(g_ctx->peerPath); });
  state.counters["file B/record"] = static_cast<double>(g_ctx->peerBytes) / static_cast<double>(g_ctx->records);
}

void Register() {
  struct Entry {
    const char* name;
    void (*fn)(benchmark::State&);
    int iterations;
  };
  const Entry entries[] = {
      {"save/IOF (DbMgr::Write)", SaveOurs, kIterations},
      {"save/limit (write+fsync)", SaveLimit, kIterations},
      {"save/peer (Boost binary_oarchive)", SavePeer, kPeerIterations},
      {"load/IOF (DbMgr::Read)", LoadOurs, kIterations},
      {"load/limit (read into new memory)", LoadLimit, kIterations},
      {"load/peer (Boost binary_iarchive)", LoadPeer, kPeerIterations},
      {"memory/IOF load", MemoryOurs, 1},
      {"memory/peer load", MemoryPeer, 1},
  };
  for (const Entry& e : entries) {
    benchmark::RegisterBenchmark(e.name, e.fn)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(e.iterations)
        ->UseManualTime();
  }
  RegisterWalkBenchmarks(g_ctx->moves);
  RegisterCompareBenchmarks(g_ctx->moves);
}

// ---------------------------------------------------------------------------------------
// The summary

std::string Ms(const std::string& key) {
  const auto it = g_times.find(key);
  if (it == g_times.end() || it->second.iterations == 0) return "n/a";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1f", it->second.Mean() * 1e3);
  return buf;
}

// a / b of two measured means; negative when either is missing.
double Ratio(const std::string& a, const std::string& b) {
  const auto ia = g_times.find(a), ib = g_times.find(b);
  if (ia == g_times.end() || ib == g_times.end() || ia->second.Mean() <= 0.0 || ib->second.Mean() <= 0.0) {
    return -1.0;
  }
  return ia->second.Mean() / ib->second.Mean();
}

std::string RatioText(double r) {
  if (r < 0.0) return "n/a";
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.2fx", r);
  return buf;
}

std::string Verdict(double value, double limit, bool atLeast) {
  if (value < 0.0) return "not measured";
  return (atLeast ? value >= limit : value <= limit) ? "met" : "MISSED";
}

void PrintSummary(const Context& ctx, std::FILE* out) {
  std::fprintf(out, "\nIOF benchmark summary: %zu linear moves in %zu operations, %zu records\n", ctx.moves,
               ctx.operations, ctx.records);
  std::fprintf(out, "  files: IOF %.1f MB, peer %.1f MB (MB = 10^6 bytes); mean time per whole-job iteration\n\n",
               static_cast<double>(ctx.oursBytes) / 1e6, static_cast<double>(ctx.peerBytes) / 1e6);
  std::fprintf(out, "  %-6s %12s %12s %12s %12s %12s\n", "", "IOF ms", "limit ms", "IOF/limit", "peer ms", "peer/IOF");
  for (const char* what : {"save", "load"}) {
    const std::string w = what;
    std::fprintf(out, "  %-6s %12s %12s %12s %12s %12s\n", what, Ms(w + "/IOF").c_str(), Ms(w + "/limit").c_str(),
                 RatioText(Ratio(w + "/IOF", w + "/limit")).c_str(), Ms(w + "/peer").c_str(),
                 RatioText(Ratio(w + "/peer", w + "/IOF")).c_str());
  }

  auto memory = [](const char* side, double MemoryFigures::*field) -> std::string {
    const auto it = g_memory.find(side);
    if (it == g_memory.end() || !it->second.measured || it->second.*field < 0.0) return "n/a";
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.1f", it->second.*field);
    return buf;
  };
  std::fprintf(out, "\n  memory, one load of the whole job into a fresh manager (bytes per linear move):\n");
  std::fprintf(out, "  %-44s %10s %10s\n", "", "IOF", "peer");
  std::fprintf(out, "  %-44s %10s %10s\n", "resident (RSS growth / moves)",
               memory("IOF", &MemoryFigures::resident).c_str(), memory("peer", &MemoryFigures::resident).c_str());
  std::fprintf(out, "  %-44s %10s %10s\n", "heap in use (allocator growth / moves)",
               memory("IOF", &MemoryFigures::heap).c_str(), memory("peer", &MemoryFigures::heap).c_str());
  std::fprintf(out, "  %-44s %10s %10s\n", "peak resident during the load / moves",
               memory("IOF", &MemoryFigures::peak).c_str(), memory("peer", &MemoryFigures::peak).c_str());
  std::fprintf(out, "  %-44s %10.1f %10.1f\n", "archived bytes per record (file / records)",
               static_cast<double>(ctx.oursBytes) / static_cast<double>(ctx.records),
               static_cast<double>(ctx.peerBytes) / static_cast<double>(ctx.records));

  const double residentPerMove =
      g_memory.count("IOF") && g_memory.at("IOF").measured ? g_memory.at("IOF").resident : -1.0;
  std::fprintf(out, "\n  targets:\n");
  std::fprintf(out, "    load: peer/IOF >= 5      %-8s %s\n", RatioText(Ratio("load/peer", "load/IOF")).c_str(),
               Verdict(Ratio("load/peer", "load/IOF"), 5.0, true).c_str());
  std::fprintf(out, "    load: IOF/limit <= 4     %-8s %s\n", RatioText(Ratio("load/IOF", "load/limit")).c_str(),
               Verdict(Ratio("load/IOF", "load/limit"), 4.0, false).c_str());
  std::fprintf(out, "    save: peer/IOF >= 5      %-8s %s\n", RatioText(Ratio("save/peer", "save/IOF")).c_str(),
               Verdict(Ratio("save/peer", "save/IOF"), 5.0, true).c_str());
  std::fprintf(out, "    save: IOF/limit <= 4     %-8s %s\n", RatioText(Ratio("save/IOF", "save/limit")).c_str(),
               Verdict(Ratio("save/IOF", "save/limit"), 4.0, false).c_str());
  std::fprintf(out, "    resident B/move <= 200   %-8s %s\n", memory("IOF", &MemoryFigures::resident).c_str(),
               Verdict(residentPerMove, 200.0, false).c_str());
}

// --moves=N (consumed here) or IOF_BENCH_MOVES=N; 0 when the text is not a positive count.
std::size_t ParseMoves(const char* text) {
  char* end = nullptr;
  errno = 0;
  const unsigned long long n = std::strtoull(text, &end, 10);
  if (errno != 0 || end == text || *end != '\0' || n == 0 || n > 100000000ull || text[0] == '-') return 0;
  return static_cast<std::size_t>(n);
}

}  // namespace
}  // namespace IofBench

int main(int argc, char** argv) {
  using namespace IofBench;
  std::size_t moves = kDefaultMoves;
  if (const char* env = std::getenv("IOF_BENCH_MOVES"); env && *env) {
    moves = ParseMoves(env);
    if (moves == 0) {
      std::fprintf(stderr, "iof_bench: IOF_BENCH_MOVES must be a count from 1 to 100000000, not '%s'\n", env);
      return 2;
    }
  }
  // Take --moves=N out of the arguments before Google Benchmark sees them.
  int kept = 1;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--moves=", 8) == 0) {
      moves = ParseMoves(argv[i] + 8);
      if (moves == 0) {
        std::fprintf(stderr, "iof_bench: --moves must be a count from 1 to 100000000, not '%s'\n", argv[i] + 8);
        return 2;
      }
    } else {
      argv[kept++] = argv[i];
    }
  }
  argc = kept;
  argv[argc] = nullptr;
  // The summary goes to stdout after the console report, to stderr when stdout carries
  // JSON or CSV.
  std::FILE* summaryOut = stdout;
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], "--benchmark_format=", 19) == 0 && std::strcmp(argv[i] + 19, "console") != 0) {
      summaryOut = stderr;
    }
  }

  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;

  try {
    Context ctx;
    g_ctx = &ctx;
    ctx.moves = moves;
    ctx.operations = OperationCount(moves);
    const auto t0 = Clock::now();
    BuildOurs(ctx);
    BuildPeer(ctx);
    // The files the loads read, written once here so that any subset of the benchmarks runs.
    if (ctx.ours->Write(Quarp::UtString(ctx.oursPath.c_str())) != Quarp::DbErr::Ok) {
      throw std::runtime_error(ctx.ours->GetLastErrorText());
    }
    ctx.oursBytes = FileSize(ctx.oursPath);
    std::size_t size = 0;
    ctx.limitData = ReadWholeFile(ctx.oursPath, size);
    Peer::Save(ctx.peer, ctx.peerPath + ".tmp");
    DurableReplace(ctx.peerPath + ".tmp", ctx.peerPath);
    ctx.peerBytes = FileSize(ctx.peerPath);
    std::fprintf(stderr, "iof_bench: built a job of %zu linear moves (%zu records) in %.1f s; files in %s\n", ctx.moves,
                 ctx.records, Seconds(t0, Clock::now()), ctx.dir.Path().c_str());

    Register();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    PrintSummary(ctx, summaryOut);
    g_ctx = nullptr;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "iof_bench: %s\n", e.what());
    return 1;
  }
  return 0;
}
