// Damaged, hostile and pathological files: whatever a file holds, loading it ends in an
// error with a message or in a database that a reader can use (load, dump, walk, store)
// without a crash, a hang or a sanitizer report.
#include "Commands.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"
#include "ToolSupport.h"
#include "Walk.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFStream.h>
#include <iof/StreamIteratorBase.h>
#include <quarp/DbMgr.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define IOF_TEST_UNDER_ASAN 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__)
#define IOF_TEST_UNDER_ASAN 1
#endif

using TestSupport::Bytes;

namespace {

// Takes what the tool writes to stderr while in scope.
struct CapturedStderr {
  std::ostringstream text;
  std::streambuf* old = std::cerr.rdbuf(text.rdbuf());
  ~CapturedStderr() {
    std::cerr.rdbuf(old);
    std::cerr.clear();
  }
};

// The demonstration job's file, as `iof demo` writes it.
const Bytes& DemoFile() {
  static const Bytes file = TestSupport::ReadFile(ToolSupport::Demo());
  return file;
}

// Loads `bytes`; true when they loaded. A failure must come with a message; the only
// exception a load may throw is the archive's version error.
bool Loads(Quarp::DbMgr& mgr, const Bytes& bytes) {
  try {
    if (mgr.ReadFromMemory(bytes) == Quarp::DbErr::Ok) return true;
  } catch (const Quarp::UtArchiveException& e) {
    EXPECT_EQ(e.m_cause, Quarp::UtArchiveException::badSchema) << e.what();
    EXPECT_STRNE(e.what(), "");
    return false;
  }
  EXPECT_FALSE(mgr.GetLastErrorText().empty());
  return false;
}

// What readers do with a database that loaded: every record's text, fields and
// comparison with itself; the tool's program-order walk with the library's iterator;
// a store and a load of the result. Returns the number of records the walk visited.
std::size_t UseLikeAReader(Quarp::DbMgr& mgr) {
  Quarp::DbBaseCPtr any(nullptr);
  Quarp::DbId id;
  while (mgr.GetNext(any, id, 0)) {
    const auto* record = dynamic_cast<const IOF::DbIOFBase*>(any.Get());
    if (!record) continue;
    EXPECT_FALSE(record->ToIOFString().IsEmpty() && record->GetType() == 0);
    TestSupport::RecordingVisitor fields;
    record->VisitFields(fields);
    Quarp::DbCPtr<IOF::DbIOFBase> self(nullptr);
    CString report;  // a changed double may be a NaN, which differs from itself
    if (mgr.Get(self, id, 0)) record->Compare(self, report);
  }
  std::size_t visited = 0;
  IofTool::Walker walker(mgr);
  walker.Walk(std::nullopt, [&](const IofTool::Visit& v) {
    ++visited;
    if (v.record) (void)v.record->GetClass();
  });
  Bytes again;
  EXPECT_EQ(mgr.WriteToMemory(again), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  Quarp::DbMgr back;
  EXPECT_EQ(back.ReadFromMemory(again), Quarp::DbErr::Ok) << back.GetLastErrorText();
  EXPECT_EQ(back.GetCount(), mgr.GetCount());
  return visited;
}

// The tool's commands over a file.
void RunTheTool(const std::string& path) {
  std::ostream nowhere(nullptr);
  CapturedStderr quiet;
  IofTool::RunDump({path, std::nullopt, false}, nowhere);
  IofTool::RunDump({path, std::nullopt, true}, nowhere);
  IofTool::RunStats(path, nowhere);
  IofTool::RunPost({path, "", std::nullopt, 0.01, true}, nowhere);
  IofTool::RunValidate(path, nowhere);
  IofTool::RunDiff({path, path, false, false}, nowhere);
}

// Where the records start: after the header and the class table.
std::size_t RecordsStart(const Bytes& file) {
  std::size_t at = 36;
  const std::uint32_t classes = file[32] | file[33] << 8 | file[34] << 16 | static_cast<std::uint32_t>(file[35]) << 24;
  for (std::uint32_t i = 0; i < classes; ++i) at += 1 + file.at(at);
  return at;
}

}  // namespace

// Without a valid checksum nothing loads: every truncation of the demo's file, and at
// every offset a change of each single bit and of the whole byte, end in an error that
// says what is wrong. In the header and the class table every other value of every byte.
// A file at hand whole is hashed before it is decoded, so this is quick in every build.
TEST(CorruptFile, EveryTruncationAndEveryChangedByteIsRefused) {
  Bytes file = DemoFile();
  ASSERT_GT(file.size(), 1000u);
  {
    Quarp::DbMgr mgr;
    ASSERT_EQ(mgr.ReadFromMemory(file), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  }
  for (std::size_t n = 0; n < file.size(); ++n) {
    Quarp::DbMgr mgr;
    ASSERT_FALSE(Loads(mgr, Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(n)))) << n << " bytes";
  }
  const std::size_t records = RecordsStart(file);
  for (std::size_t at = 0; at < file.size(); ++at) {
    const std::uint8_t original = file[at];
    const auto refused = [&](int value) {
      file[at] = static_cast<std::uint8_t>(value);
      Quarp::DbMgr mgr;
      return !Loads(mgr, file);
    };
    if (at < records) {
      for (int value = 0; value < 256; ++value) {
        if (value == original) continue;
        ASSERT_TRUE(refused(value)) << "byte " << at << " set to " << value;
      }
    } else {
      for (int bit = 0; bit < 8; ++bit) ASSERT_TRUE(refused(original ^ 1 << bit)) << "byte " << at << " bit " << bit;
      ASSERT_TRUE(refused(original ^ 0xFF)) << "byte " << at << " complemented";
    }
    file[at] = original;
  }
}

// Behind a valid checksum the structural checks are reached: each change ends in an
// error with a message, or in a database a reader can use and the tool can dump. Four
// values at every offset of the header and the class table and at a fixed sample of
// the records' offsets (every 61st); then random damage of up to four bytes.
// A count or a length made huge anywhere is refused before anything large is allocated:
// at every offset of the header and the class table and at every 11th offset of the
// records, a four-byte 0x7FFFFFFF and a five-byte compact 2^32 - 1. Proven under a limit
// of the address space (RLIMIT_AS) of 256 MB above what the test uses: an allocation the
// file's size does not justify fails, and the load would say "out of memory". The
// sanitizer build reserves terabytes of address space, so there the same loads run
// without the limit (and the sanitizer checks every access).
TEST(CorruptFile, ChangesBehindAValidChecksumEndInAnErrorOrAUsableDatabase) {
  const Bytes good = DemoFile();
#ifndef IOF_TEST_UNDER_ASAN
  rlimit old{};
  ASSERT_EQ(::getrlimit(RLIMIT_AS, &old), 0);
  long pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  ASSERT_GT(pages, 0);
  const rlimit limit{static_cast<rlim_t>(pages) * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + (256u << 20),
                     old.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
#endif
  const std::string path = TestSupport::TempPath("changed.iof");
  std::size_t loaded = 0, refused = 0, toolRuns = 0;
  const auto tryOne = [&](Bytes bad) {
    TestSupport::Reseal(bad);
    Quarp::DbMgr mgr;
    if (!Loads(mgr, bad)) {
      ++refused;
      EXPECT_EQ(mgr.GetLastErrorText().find("out of memory"), std::string::npos) << mgr.GetLastErrorText();
      return 1;
    }
    ++loaded;
    UseLikeAReader(mgr);
    if (loaded % 32 == 1) {  // the tool reads a share of them from a file
      TestSupport::WriteFile(path, bad);
      RunTheTool(path);
      ++toolRuns;
    }
    return 0;
  };
  const std::size_t records = RecordsStart(good);
  for (std::size_t at = 8; at + 8 < good.size(); at += at < records ? 1 : 61) {
    const std::uint8_t original = good[at];
    for (const int value : {0x00, 0xFF, original ^ 0x80, original + 1}) {
      Bytes bad = good;
      bad[at] = static_cast<std::uint8_t>(value == original ? value ^ 0x01 : value);
      tryOne(std::move(bad));
    }
  }
  std::size_t hugeRefused = 0;
  for (std::size_t at = 12; at + 8 + 5 <= good.size(); at += at < records ? 1 : 11) {
    for (const Bytes& huge : {TestSupport::Hex("FF FF FF 7F"), TestSupport::Hex("FF FF FF FF 0F")}) {
      Bytes bad = good;
      std::copy(huge.begin(), huge.end(), bad.begin() + static_cast<std::ptrdiff_t>(at));
      hugeRefused += tryOne(std::move(bad));
    }
  }
  std::mt19937 rng(20240917);
  for (int iteration = 0; iteration < 300; ++iteration) {
    Bytes bad = good;
    const int edits = 1 + static_cast<int>(rng() % 4);
    for (int e = 0; e < edits; ++e) bad[8 + rng() % (bad.size() - 16)] = static_cast<std::uint8_t>(rng());
    tryOne(std::move(bad));
  }
#ifndef IOF_TEST_UNDER_ASAN
  ::setrlimit(RLIMIT_AS, &old);
#endif
  // Both outcomes occur, so both paths were exercised.
  EXPECT_GT(loaded, 100u);
  EXPECT_GT(refused, 100u);
  EXPECT_GT(toolRuns, 10u);
  EXPECT_GT(hugeRefused, 1000u);
}

// A chain of operation lists, each the only item of the one before, 100,000 deep under a
// stream: the file loads, the library's iterator reaches the bottom, the tool's walks stop
// at their nesting limit, and dumping, posting, comparing and storing it neither overflow
// the stack nor take time that grows with the square of the depth.
TEST(CorruptFile, AChainOfListsNestedDeeplyIsWalkedToTheBottom) {
  constexpr int kDepth = 100000;
  Quarp::DbMgr source;
  auto doc = IOF::DbIOFDocument::Create();
  source.Add(doc);
  Quarp::DbPtr<IOF::DbIOFList> list(nullptr);
  ASSERT_TRUE(source.Get(list, doc->AddStreamToList(1), 0));
  for (int i = 0; i < kDepth; ++i) {
    auto inner = IOF::DbIOFList::Create(IOF::DbIOFList::kOperation);
    list->PushBack(source.Add(inner));
    list = inner;
  }
  auto bottom = IOF::DbIOFNciLinear::Create();
  const Quarp::DbId bottomId = source.Add(bottom);
  list->PushBack(bottomId);
  const std::string path = TestSupport::TempPath("deep.iof");
  ASSERT_EQ(source.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok);

  Quarp::DbMgr mgr;
  ASSERT_EQ(mgr.Read(Quarp::UtString(path.c_str()), true), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  Quarp::DbCPtr<IOF::DbIOFList> stream(nullptr);
  ASSERT_TRUE(mgr.Get(stream, Quarp::DbId(2), 0));
  IOF::StreamIteratorBase it(stream);
  int steps = 0;
  Quarp::DbId last;
  for (Quarp::DbId id = it.GetFirst(); !id.IsNull(); id = ++it) last = id, ++steps;
  EXPECT_EQ(steps, kDepth + 1);
  EXPECT_EQ(last, bottomId);
  // The tool's walk shows the document, the stream and the outer lists, and says why
  // it stops there.
  EXPECT_EQ(UseLikeAReader(mgr), IofTool::kMaxNesting + 2);
  RunTheTool(path);
  // validate finds no defect, and the file does not differ from itself.
  std::ostringstream out;
  CapturedStderr err;
  EXPECT_EQ(IofTool::RunValidate(path, out), IofTool::kOk);
  EXPECT_EQ(IofTool::RunDiff({path, path, true, false}, out), IofTool::kOk);
  EXPECT_EQ(out.str() + err.text.str(), "");
}
