// iof stats: record counts per class and per stream, machining time per stream, file
// size and load time.
#include "Commands.h"
#include "Walk.h"

#include <iof/DbIOFNciBase.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <map>
#include <string>

namespace IofTool {

namespace {

struct StreamStats {
  std::string name;
  std::size_t records = 0;
  double time = 0.0;
  std::map<std::string, std::size_t> byClass;
};

void PrintCounts(std::ostream& out, const std::map<std::string, std::size_t>& counts, const char* indent) {
  for (const auto& [cls, n] : counts) {
    char line[160];
    std::snprintf(line, sizeof line, "%s%-28s %10zu\n", indent, cls.c_str(), n);
    out << line;
  }
}

}  // namespace

int RunStats(const std::string& file, std::ostream& out) {
  Quarp::DbMgr mgr;
  const auto start = std::chrono::steady_clock::now();
  if (!LoadFile(file, mgr)) return kDataError;
  const double loadMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
  std::error_code ec;
  const auto size = std::filesystem::file_size(file, ec);

  std::map<std::string, std::size_t> total;
  Quarp::DbBaseCPtr any(nullptr);
  Quarp::DbId id;
  while (mgr.GetNext(any, id, 0)) ++total[any->GetClass().ToUtf8()];

  std::map<int, StreamStats> streams;
  Walker walker(mgr);
  walker.Walk(std::nullopt, [&](const Visit& v) {
    if (v.stream < 0 || !v.record) return;
    StreamStats& s = streams[v.stream];
    if (v.depth == 1) {  // the stream itself
      s.name = v.record->GetIOFName().ToUtf8();
      return;
    }
    ++s.records;
    ++s.byClass[v.record->GetClass().ToUtf8()];
    if (const auto* nci = dynamic_cast<const IOF::DbIOFNciBase*>(v.record)) s.time += nci->GetTime();
  });

  char line[256];
  std::snprintf(line, sizeof line, "file: %s, %llu bytes, loaded in %.3f ms\n", file.c_str(),
                static_cast<unsigned long long>(ec ? 0 : size), loadMs);
  out << line;
  std::snprintf(line, sizeof line, "records: %zu\n", mgr.GetCount());
  out << line;
  PrintCounts(out, total, "  ");
  for (const auto& [number, s] : streams) {
    std::snprintf(line, sizeof line, "stream %d \"%s\": %zu records, machining time %.3f s\n", number, s.name.c_str(),
                  s.records, s.time);
    out << line;
    PrintCounts(out, s.byClass, "  ");
  }
  walker.ReportProblems();
  return kOk;
}

}  // namespace IofTool
