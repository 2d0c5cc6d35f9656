// The iof tool, through the built binary: the demo, the dumps, the statistics, and the
// exit codes and messages of every kind of failure.
#include "ToolSupport.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace {

using ToolSupport::Tool;
using ToolSupport::ToolRun;

// The "  DbIOFNciLinear     12" lines that follow the line starting with `after`.
std::map<std::string, int> Counts(const std::string& text, const std::string& after) {
  std::map<std::string, int> counts;
  const auto at = text.find(after);
  if (at == std::string::npos) return counts;
  std::istringstream in(text.substr(at));
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line) && line.rfind("  ", 0) == 0 && line[2] != ' ') {
    std::istringstream row(line);
    std::string cls;
    int n = -1;
    if (!(row >> cls >> n)) break;
    counts[cls] = n;
  }
  return counts;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::size_t Indent(const std::string& line) { return line.find_first_not_of(' '); }

TEST(Tool, DemoAndStatsAgreeWithTheFile) {
  const std::string file = TestSupport::TempPath("demo.iof");
  const ToolRun demo = Tool("demo -o '" + file + "'");
  ASSERT_EQ(demo.code, 0) << demo.err;
  EXPECT_NE(demo.out.find("wrote " + file), std::string::npos) << demo.out;
  const auto written = Counts(demo.out, "records by class:");
  ASSERT_FALSE(written.empty()) << demo.out;

  // What the library finds in the file.
  Quarp::DbMgr mgr;
  ASSERT_EQ(mgr.Read(Quarp::UtString(file.c_str()), true), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  std::map<std::string, int> inFile;
  Quarp::DbBaseCPtr any;
  Quarp::DbId id;
  while (mgr.GetNext(any, id, 0)) ++inFile[any->GetClass().ToUtf8()];
  EXPECT_EQ(written, inFile);

  const ToolRun stats = Tool("stats '" + file + "'");
  ASSERT_EQ(stats.code, 0) << stats.err;
  EXPECT_EQ(Counts(stats.out, "records:"), inFile) << stats.out;
  EXPECT_NE(stats.out.find("records: " + std::to_string(mgr.GetCount())), std::string::npos) << stats.out;
  EXPECT_NE(stats.out.find("stream 1 \"Main spindle\""), std::string::npos) << stats.out;
  EXPECT_NE(stats.out.find("stream 2 \"Sub spindle\""), std::string::npos) << stats.out;
  const auto time = stats.out.find("machining time ");
  ASSERT_NE(time, std::string::npos);
  EXPECT_GT(std::stod(stats.out.substr(time + 15)), 1.0) << stats.out;
  EXPECT_TRUE(stats.err.empty()) << stats.err;
}

TEST(Tool, DumpWalksTheDocumentInProgramOrder) {
  const std::string file = ToolSupport::Demo();
  const ToolRun r = Tool("dump '" + file + "'");
  ASSERT_EQ(r.code, 0) << r.err;
  std::istringstream in(r.out);
  std::string first;
  std::getline(in, first);
  EXPECT_EQ(first.rfind("#1 DbIOFDocument: IOF Document Object fname: flange.mcam", 0), 0u) << first;
  EXPECT_NE(r.out.find("\n  #2 DbIOFStream: IOF Stream Object: id=1, Name = Main spindle"), std::string::npos);
  EXPECT_NE(r.out.find("DbIOFNciManualEntry: G1005 CHECK INSERT WEAR - OutAs: Comment"), std::string::npos);
  // The job setup with what it holds and the machine come before the streams; each
  // operation shows its header, its sub-operation with the approach, and its retract; a
  // machine operation stands in an operation of its own; the drill cycle holds its points.
  for (const char* text :
       {"\n  #4 DbIOFJobSetup: IOF Job Setup Object: Name: Flange job setup",
        "\n    #12 DbIOFReferencePoint: RefPoint: Name: Home, main spindle",
        "\n  #15 DbIOFMachineInfo: IOF Machine Info Object: Name: Twin-spindle mill-turn lathe",
        "\n    #20 DbIOFNciOperation: OpNumber: 1, Type: Lathe Rough;", "\n      #24 DbIOFNciSubOp: IOF",
        "\n        #25 DbIOFApproach: IOF", "\n      #49 DbIOFRetract: IOF Retract Object: Name: Retract",
        "\n      #18 DbIOFNciMOpBarFeed: MiscOp Bar Feed Spindle:LH_HEAD",
        "\n          #131 DbIOFDrill: IOF Drill Object\n            #132 DbIOFDrillPoint: IOF Cycle"}) {
    EXPECT_NE(r.out.find(text), std::string::npos) << text;
  }
  // A motion sub-list is indented under its record, its block under the list.
  const auto lines = Lines(r.out);
  const auto arc = std::find_if(lines.begin(), lines.end(),
                                [](const std::string& l) { return l.find(" DbIOFNciArc: G2") != std::string::npos; });
  ASSERT_TRUE(arc != lines.end() && arc + 2 < lines.end()) << r.out;
  EXPECT_EQ(Indent(arc[1]), Indent(arc[0]) + 2);
  EXPECT_NE(arc[1].find("DbIOFList: MotionSubList - "), std::string::npos) << arc[1];
  EXPECT_EQ(Indent(arc[2]), Indent(arc[0]) + 4);
  EXPECT_NE(arc[2].find("DbIOFArcMotionBlock"), std::string::npos) << arc[2];

  const ToolRun sub = Tool("dump '" + file + "' --stream 2");
  ASSERT_EQ(sub.code, 0) << sub.err;
  EXPECT_EQ(sub.out.find("Main spindle"), std::string::npos);
  EXPECT_NE(sub.out.find("Sub spindle"), std::string::npos);
  EXPECT_NE(sub.out.find("DbIOFDrillMotionBlock"), std::string::npos);

  const ToolRun none = Tool("dump '" + file + "' --stream 9");
  EXPECT_EQ(none.code, 1);
  EXPECT_NE(none.err.find("no stream 9"), std::string::npos) << none.err;
}

// A stream holding a move, an id that does not resolve, a move with two sub-lists of
// one kind, and the stream itself: every line is shown, each problem is one warning.
TEST(Tool, DumpReportsWhatTheIteratorCannotWalkAndGoesOn) {
  Quarp::DbMgr mgr;
  auto doc = IOF::DbIOFDocument::Create();
  mgr.Add(doc);  // ids: document 1, stream 2, moves 3 to 5, move 6 in list 7, move 8 in list 9
  Quarp::DbPtr<IOF::DbIOFStream> stream;
  ASSERT_TRUE(mgr.Get(stream, doc->AddStreamToList(1), 0));
  const auto add = [&](auto ptr) { return mgr.Add(ptr); };
  auto carrier = IOF::DbIOFNciLinear::Create();
  const Quarp::DbId items[] = {add(IOF::DbIOFNciLinear::Create()), add(IOF::DbIOFNciLinear::Create()), add(carrier)};
  for (const Quarp::DbId id : items) stream->PushBack(id);
  stream->PushBack(stream.GetId());
  for (int i = 0; i < 2; ++i) {
    auto sub = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionBlock);
    sub->PushBack(add(IOF::DbIOFNciLinear::Create()));
    carrier->AddSubList(add(sub));
  }
  mgr.Remove(Quarp::DbId(4));
  const std::string file = TestSupport::TempPath("problems.iof");
  ASSERT_EQ(mgr.Write(Quarp::UtString(file.c_str())), Quarp::DbErr::Ok);
  const ToolRun r = Tool("dump '" + file + "'");
  EXPECT_EQ(r.code, 0) << r.err;
  std::vector<std::string> shape;  // indentation, id and class of each line
  for (const std::string& line : Lines(r.out)) shape.push_back(line.substr(0, line.find(':')));
  EXPECT_EQ(shape, (std::vector<std::string>{"#1 DbIOFDocument", "  #2 DbIOFStream", "    #3 DbIOFNciLinear",
                                             "    #4 (missing)", "    #5 DbIOFNciLinear", "      #7 DbIOFList",
                                             "        #6 DbIOFNciLinear", "      #9 DbIOFList",
                                             "        #8 DbIOFNciLinear", "    #2 DbIOFStream"}));
  EXPECT_EQ(r.err,
            "iof: warning: record 4 is referred to but does not exist\n"
            "iof: warning: record 5 has two sub-lists of one kind; each is shown\n"
            "iof: warning: record 2 contains itself; not followed again\n");
}

TEST(Tool, JsonDumpParsesBack) {
  const std::string file = ToolSupport::Demo();
  const ToolRun r = Tool("dump '" + file + "' --json");
  ASSERT_EQ(r.code, 0) << r.err;
  const auto lines = Lines(r.out);
  EXPECT_GT(lines.size(), 50u);
  std::map<std::string, int> classes;
  for (const std::string& line : lines) {
    const auto j = nlohmann::json::parse(line);
    ASSERT_TRUE(j.contains("id") && j.contains("class") && j.contains("depth") && j.contains("fields")) << line;
    const auto& fields = j["fields"];
    EXPECT_TRUE(fields.contains("m_Name")) << line;
    ++classes[j["class"].get<std::string>()];
    if (j["class"] == "DbIOFNciLinear") {
      ASSERT_TRUE(fields["m_EndPoint"].is_array());
      EXPECT_EQ(fields["m_EndPoint"].size(), 3u);
      EXPECT_TRUE(fields["m_FeedRate"].is_number());
      EXPECT_GE(j["depth"].get<int>(), 3);
    }
    if (j["class"] == "DbIOFNciPlane") {
      EXPECT_EQ(fields["m_Matrix"].size(), 4u);
      EXPECT_EQ(fields["m_Matrix"][0].size(), 4u);
    }
  }
  EXPECT_GT(classes["DbIOFNciLinear"], 0);
  EXPECT_GT(classes["DbIOFNciPlane"], 0);
}

// A file that does not load (the messages of each kind of damage: DbFileTest), a stream
// that is not there, and a command line in error.
TEST(Tool, FailuresGiveOneLineAndTheRightExitCode) {
  const std::string good = ToolSupport::Demo();
  const std::string missing = TestSupport::TempPath("missing.iof"), dir = TestSupport::TempPath("");
  const ToolSupport::Expect cases[] = {
      {"dump '" + missing + "'", 1, "", "iof: cannot open '" + missing + "': No such file or directory\n"},
      {"stats '" + missing + "'", 1, "", "iof: cannot open '" + missing + "': No such file or directory\n"},
      {"dump '" + dir + "'", 1, "", "iof: cannot read '" + dir + "': it is a directory, not an IOF file\n"},
      {"post '" + good + "' --stream 9", 1, "", "iof: '" + good + "' has no stream 9\n"},
      {"plot '" + good + "' -o x.svg --stream 9", 1, "", "iof: '" + good + "' has no stream 9\n"},
      {"frobnicate", 2, "", "iof: unknown command 'frobnicate' (see iof --help)\n"},
      {"", 2, "", "A subcommand is required"},
      {"dump", 2, "", "file is required"},
      {"dump '" + good + "' --stream x", 2, "", "Could not convert: --stream = x"},
      {"post '" + good + "' --tolerance 0", 2, "", "--tolerance: Value 0 not in range"},
      {"plot '" + good + "' -o x.svg --view top", 2, "", "--view: top not in {xy,xz,yz,iso}"},
  };
  for (const ToolSupport::Expect& c : cases) ToolSupport::Check(c);
  for (const char* help : {"--help", "demo --help", "dump --help", "stats --help"}) {
    const ToolRun r = Tool(help);
    EXPECT_EQ(r.code, 0) << help;
    EXPECT_NE(r.out.find("Usage"), std::string::npos) << help << ": " << r.out;
  }
}

}  // namespace
