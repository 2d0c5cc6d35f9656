// iof diff and iof validate through the built binary: their outputs and exit codes on
// small files with known differences and known defects, on cyclic files, and when a file
// cannot be used. (Lists nested 100000 deep: CorruptFileTest.)
#include "CompareJob.h"
#include "ToolSupport.h"

#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>

namespace {

using Quarp::DbId;
using TestSupport::Job;
using ToolSupport::Tool;

std::string Quoted(const std::string& path) { return " '" + path + "'"; }

TEST(Diff, ShowsStructuralAndFieldDifferences) {
  Job left(true), right(true);
  const std::string a = Quoted(left.Write("a.iof"));
  right.Get<IOF::DbIOFNciLinear>(DbId(5))->SetFeedRate(120);
  const std::string feed = Quoted(right.Write("feed.iof"));
  right.Push(DbId(8), {right.Move()});
  const std::string b = Quoted(right.Write("b.iof"));
  right.doc->SetJobSetupID(DbId());
  const std::string noSetup = Quoted(right.Write("nosetup.iof"));

  const std::string sizes = "#8 DbIOFList vs #8 DbIOFList: IOFLists not same size.\n";
  const std::string field = "#5 DbIOFNciLinear vs #5 DbIOFNciLinear: Difference Detected: m_FeedRate - 100 vs 120\n";
  const ToolSupport::Expect cases[] = {
      {"diff" + a + a, 0, ""},
      {"diff" + a + feed, 1, field},
      {"diff --structural" + a + feed, 0, ""},
      {"diff" + a + b, 1, field + sizes + sizes},  // the manager records a size difference twice
      {"diff --structural" + a + b, 1, sizes + sizes},
      {"diff" + a + noSetup, 1, "#2 DbIOFJobSetup vs -: Failed to get job setup object from DbIOFDocument.\n"},
  };
  for (const ToolSupport::Expect& c : cases) ToolSupport::Check(c);
  const ToolSupport::ToolRun json = Tool("diff --json" + a + b);
  EXPECT_EQ(nlohmann::json::parse(json.out.substr(0, json.out.find('\n'))),
            nlohmann::json::parse(R"({"kind": "field", "id1": 5, "class1": "DbIOFNciLinear", "id2": 5,
                "class2": "DbIOFNciLinear", "text": "Difference Detected: m_FeedRate - 100 vs 120"})"));
}

TEST(Validate, ReportsEachDefectOfAFile) {
  Job job(true);
  const std::string clean = Quoted(job.Write("clean.iof"));
  job.Push(DbId(11), {DbId(999), DbId(5), DbId(5)});
  job.Push(DbId(8), {DbId(6)});  // move 6 contains itself through its sub-list
  job.Sub(DbId(9), DbId(6));
  const std::string cyclic = Quoted(job.Write("cyclic.iof"));
  job.doc->SetJobSetupID(DbId(3));
  job.Add(IOF::DbIOFStream::Create(2));
  auto stream = job.Get<IOF::DbIOFStream>(job.stream);
  stream->SetFirstToolChgId(job.Add(IOF::DbIOFNciToolChange::Create()));
  stream->SetLastToolChgId(DbId(5));
  auto sub = IOF::DbIOFNciSubOp::Create();
  sub->SetToolChangeId(DbId(5));
  job.Add(sub);
  const ToolSupport::Expect cases[] = {
      {"validate" + clean, 0, ""},
      {"validate" + Quoted(job.Write("defects.iof")), 1,
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
       "#14 DbIOFNciSubOp: m_ToolChangeId names #5, a DbIOFNciLinear, not a tool change\n"},
      // The other commands end on the list that contains itself: it is shown and compared,
      // not entered again.
      {"diff" + cyclic + cyclic, 1,
       "#11 DbIOFList vs #11 DbIOFList: Failed to get object from IOFList.\n"
       "#11 DbIOFList vs #11 DbIOFList: Failed to get object from IOFList.\n"},
  };
  for (const ToolSupport::Expect& c : cases) ToolSupport::Check(c);
  EXPECT_EQ(Tool("dump" + cyclic).code, 0);
}

TEST(DiffValidate, DemoAndFilesThatCannotBeUsed) {
  const std::string demo = Quoted(ToolSupport::Demo());
  Job left, right, nothing;
  left.doc->AddStreamToList(2);
  right.doc->GetStreams().Add(DbId(999));  // a stream that does not exist
  nothing.mgr->Clear();
  const std::string a = Quoted(left.Write("a.iof")), nonePath = nothing.Write("none.iof"), none = Quoted(nonePath);
  const std::string absentPath = TestSupport::TempPath("absent.iof"), absent = Quoted(absentPath);
  const ToolSupport::Expect cases[] = {
      {"validate" + demo, 0, ""},
      {"diff" + demo + demo, 0, ""},
      {"validate" + none, 1, "#0 -: the file holds no document\n"},
      {"validate" + absent, 2, "", "iof: cannot open '" + absentPath + "': No such file or directory\n"},
      {"diff" + a + Quoted(right.Write("b.iof")), 2, "",
       "iof: a stream that a document names does not exist; the comparison stopped (see iof validate)\n"},
      {"diff" + a + none, 2, "", "iof: '" + nonePath + "' holds no IOF document\n"},
      {"diff" + a + absent, 2, "", "iof: cannot open '" + absentPath + "': No such file or directory\n"},
  };
  for (const ToolSupport::Expect& c : cases) ToolSupport::Check(c);
}

}  // namespace
