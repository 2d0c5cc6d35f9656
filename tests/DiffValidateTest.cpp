// iof diff and iof validate through the built binary: their outputs and exit codes on
// small files with known differences and known defects, and on cyclic and deeply nested
// files.
#include "CompareJob.h"
#include "TestSupport.h"
#include "ToolRun.h"

#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace {

using Quarp::DbId;
using TestSupport::Base;
using TestSupport::Job;
using TestSupport::Tool;
using TestSupport::ToolRun;

std::string Quoted(const std::string& path) { return " '" + path + "'"; }

TEST(Diff, ShowsStructuralAndFieldDifferences) {
  Job left, right;
  Base(left);
  Base(right);
  const std::string a = left.Write("a.iof");
  right.Get<IOF::DbIOFNciLinear>(DbId(5))->SetFeedRate(120);
  const std::string feed = right.Write("feed.iof");
  right.Push(DbId(8), {right.Move()});
  const std::string b = right.Write("b.iof");

  const std::string sizes = "#8 DbIOFList vs #8 DbIOFList: IOFLists not same size.\n";
  const std::string field = "#5 DbIOFNciLinear vs #5 DbIOFNciLinear: Difference Detected: m_FeedRate - 100 vs 120\n";
  struct Case {
    std::string args;
    int code;
    std::string out;
  };
  const Case cases[] = {
      {Quoted(a) + Quoted(a), 0, ""},
      {Quoted(a) + Quoted(feed), 1, field},
      {Quoted(a) + Quoted(feed) + " --structural", 0, ""},
      {Quoted(a) + Quoted(b), 1, field + sizes + sizes},  // the manager records a size difference twice
      {Quoted(a) + Quoted(b) + " --structural", 1, sizes + sizes},
  };
  for (const Case& c : cases) {
    const ToolRun r = Tool("diff" + c.args);
    EXPECT_EQ(r.code, c.code) << c.args << r.err;
    EXPECT_EQ(r.out, c.out) << c.args;
    EXPECT_EQ(r.err, "") << c.args;
  }
  const ToolRun json = Tool("diff --json" + Quoted(a) + Quoted(b));
  const auto first = nlohmann::json::parse(json.out.substr(0, json.out.find('\n')));
  EXPECT_EQ(first, nlohmann::json::parse(R"({"kind": "field", "id1": 5, "class1": "DbIOFNciLinear", "id2": 5,
      "class2": "DbIOFNciLinear", "text": "Difference Detected: m_FeedRate - 100 vs 120"})"));

  right.doc->SetJobSetupID(DbId());
  const ToolRun setup = Tool("diff" + Quoted(a) + Quoted(right.Write("nosetup.iof")));
  EXPECT_EQ(setup.code, 1);
  EXPECT_EQ(setup.out, "#2 DbIOFJobSetup vs -: Failed to get job setup object from DbIOFDocument.\n");
}

TEST(Diff, TroubleIsExitTwoWithOneLine) {
  Job left, right;
  left.doc->AddStreamToList(2);
  right.doc->GetStreams().Add(DbId(999));
  Quarp::DbMgr empty;
  const std::string none = TestSupport::TempPath("none.iof");
  ASSERT_EQ(empty.Write(Quarp::UtString(none.c_str())), Quarp::DbErr::Ok);
  const std::string a = left.Write("a.iof");
  for (const std::string& args : {Quoted(a) + Quoted(right.Write("b.iof")), Quoted(a) + Quoted(none),
                                  Quoted(a) + Quoted(TestSupport::TempPath("absent.iof"))}) {
    const ToolRun r = Tool("diff" + args);
    EXPECT_EQ(r.code, 2) << args;
    EXPECT_EQ(r.out, "") << args;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << args << r.err;
  }
}

TEST(Validate, ReportsEachDefectOfAFile) {
  Job job;
  Base(job);
  EXPECT_EQ(Tool("validate" + Quoted(job.Write("clean.iof"))).code, 0);
  job.Push(DbId(11), {DbId(999), DbId(5), DbId(5)});
  job.Push(DbId(8), {DbId(6)});  // move 6 contains itself through its sub-list
  job.Sub(DbId(9), DbId(6));
  // Dump and diff end on it: the list that contains itself is shown and compared, not
  // entered again.
  const std::string cyclic = job.Write("cyclic.iof");
  EXPECT_EQ(Tool("dump" + Quoted(cyclic)).code, 0);
  const ToolRun diff = Tool("diff" + Quoted(cyclic) + Quoted(cyclic));
  EXPECT_EQ(diff.code, 1);
  EXPECT_EQ(diff.out,
            "#11 DbIOFList vs #11 DbIOFList: Failed to get object from IOFList.\n"
            "#11 DbIOFList vs #11 DbIOFList: Failed to get object from IOFList.\n");
  job.doc->SetJobSetupID(DbId(3));
  job.Add(IOF::DbIOFStream::Create(2));
  auto stream = job.Get<IOF::DbIOFStream>(job.stream);
  stream->SetFirstToolChgId(job.Add(IOF::DbIOFNciToolChange::Create()));
  stream->SetLastToolChgId(DbId(5));
  auto sub = IOF::DbIOFNciSubOp::Create();
  sub->SetToolChangeId(DbId(5));
  job.Add(sub);
  const std::string file = job.Write("defects.iof");
  const ToolRun r = Tool("validate" + Quoted(file));
  EXPECT_EQ(r.code, 1) << r.err;
  EXPECT_EQ(r.out,
            "#1 DbIOFDocument: m_JobSetupId names #3, a DbIOFMachineInfo, not a job setup\n"
            "#4 DbIOFStream: m_LastToolChgId names #5, a DbIOFNciLinear, not a tool change\n"
            "#4 DbIOFStream: m_FirstToolChgId names #13, which is not in its tool-change list\n"
            "#4 DbIOFStream: m_LastToolChgId names #5, which is not in its tool-change list\n"
            "#6 DbIOFNciLinear: contains itself through its items and sub-lists\n"
            "#8 DbIOFList: contains itself through its items and sub-lists\n"
            "#9 DbIOFNciLinear: m_SubLists names #6, a DbIOFNciLinear, not a list\n"
            "#11 DbIOFList: m_Items names #999, which does not exist\n"
            "#11 DbIOFList: holds #5 twice\n"
            "#12 DbIOFStream: is a stream the document does not name\n"
            "#14 DbIOFNciSubOp: m_ToolChangeId names #5, a DbIOFNciLinear, not a tool change\n");
}

TEST(Validate, DemoNoDocumentDeepNestingAndTrouble) {
  const std::string demo = TestSupport::TempPath("demo.iof");
  ASSERT_EQ(Tool("demo -o" + Quoted(demo)).code, 0);
  const ToolRun clean = Tool("validate" + Quoted(demo));
  EXPECT_EQ(clean.code, 0) << clean.out;
  EXPECT_EQ(Tool("diff" + Quoted(demo) + Quoted(demo)).code, 0);

  Quarp::DbMgr empty;
  const std::string none = TestSupport::TempPath("none.iof");
  ASSERT_EQ(empty.Write(Quarp::UtString(none.c_str())), Quarp::DbErr::Ok);
  const ToolRun noDoc = Tool("validate" + Quoted(none));
  EXPECT_EQ(noDoc.code, 1);
  EXPECT_EQ(noDoc.out, "#0 -: the file holds no document\n");

  Job deep;  // lists nested 100000 deep: no walk may recurse
  DbId list = deep.List(IOF::DbIOFList::kOperation, {deep.Move()});
  for (int level = 0; level < 100000; ++level) list = deep.List(IOF::DbIOFList::kOperation, {list});
  deep.Push(deep.stream, {list});
  const std::string file = deep.Write("deep.iof");
  EXPECT_EQ(Tool("validate" + Quoted(file)).code, 0);
  EXPECT_EQ(Tool("diff --structural" + Quoted(file) + Quoted(file)).code, 0);

  const ToolRun absent = Tool("validate" + Quoted(TestSupport::TempPath("absent.iof")));
  EXPECT_EQ(absent.code, 2);
  EXPECT_EQ(std::count(absent.err.begin(), absent.err.end(), '\n'), 1) << absent.err;
}

}  // namespace
