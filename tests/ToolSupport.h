// Running the built iof tool, and small jobs for its plot and post tests.
#pragma once

#include "TestSupport.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFDrill.h>
#include <iof/DbIOFDrillPoint.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <sys/wait.h>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace ToolSupport {

struct ToolRun {
  int code;
  std::string out;
  std::string err;
};

// Runs the tool with `args` (already quoted as needed) and collects its output.
inline ToolRun Tool(const std::string& args) {
  const std::string out = TestSupport::TempPath("stdout.txt");
  const std::string err = TestSupport::TempPath("stderr.txt");
  // At most 1 GB of output: a tool that loops (a fault under test) must not fill the disk.
  const std::string cmd =
      std::string("ulimit -f 2000000; '") + IOF_TOOL_PATH + "' " + args + " >'" + out + "' 2>'" + err + "'";
  const int status = std::system(cmd.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, TestSupport::ReadFile<std::string>(out),
          TestSupport::ReadFile<std::string>(err)};
}

// A run of the tool and what it must give: the exit code, the whole of standard output,
// and on standard error nothing when `err` is empty. An `err` that starts with "iof: " is
// the start of the one line of a message of the tool's own; any other is part of the
// text (the command line's errors, worded by the parser, with a hint to --help).
struct Expect {
  std::string args;
  int code;
  std::string out = "";
  std::string err = "";
};

inline void Check(const Expect& e) {
  const ToolRun r = Tool(e.args);
  EXPECT_EQ(r.code, e.code) << e.args << "\n" << r.err;
  EXPECT_EQ(r.out, e.out) << e.args;
  if (e.err.rfind("iof: ", 0) == 0) {
    EXPECT_EQ(r.err.rfind(e.err, 0), 0u) << e.args << ": " << r.err;
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1) << e.args << ": " << r.err;
  } else if (e.err.empty()) {
    EXPECT_EQ(r.err, "") << e.args;
  } else {
    EXPECT_NE(r.err.find(e.err), std::string::npos) << e.args << ": " << r.err;
  }
}

// Runs `demo -o` into a fresh file and returns its path.
inline std::string Demo(const std::string& name = "demo.iof") {
  const std::string file = TestSupport::TempPath(name);
  const ToolRun r = Tool("demo -o '" + file + "'");
  EXPECT_EQ(r.code, 0) << r.err;
  return file;
}

// A job built the way a producer writes one: streams of operations, each with its tool
// change, plane, sub-operation and a motion list that takes the moves. Every move's end
// point is kept, in program order, in `ends`.
class Job {
 public:
  Quarp::DbMgr mgr;
  std::vector<IOF::GmPoint3D> ends;

  explicit Job(bool metric = true) {
    m_Doc = IOF::DbIOFDocument::Create();
    m_Doc->SetIsMetric(metric);
    mgr.Add(m_Doc);
  }

  void Stream(int number) { mgr.Get(m_Stream, m_Doc->AddStreamToList(number), 0); }

  IOF::DbIOFNciOperation& Op(const wchar_t* comment) {
    auto op = IOF::DbIOFNciOperation::Create();
    op->SetMcComment(CString(comment));
    op->SetSpindleCCW(false);
    m_Stream->PushBack(mgr.Add(op));
    m_Op = op.Get();
    m_Into = m_Op;
    return *m_Op;
  }

  // A tool change: generation type 1 lathe, 2 mill; holder type 1 ATC, 2 turret.
  void Tool(int number, const wchar_t* name, int gen, int holder) {
    auto tool = IOF::DbIOFNciToolChange::Create();
    tool->SetToolNum(number);
    tool->SetLengthOffsetNum(number);
    tool->SetDiaOffsetNum(number);
    tool->SetToolName(CString(name));
    tool->SetToolGenType(gen);
    tool->SetToolHolderType(holder);
    bool added = false;
    m_Op->PushBack(m_Stream->AddToolChange(tool, added, true, true));
  }

  void Plane(int workOffset, const IOF::GmXformMat3D& m = IOF::GmXformMat3D()) {
    auto change = IOF::DbIOFNciToolPlaneChange::Create();
    change->SetPlaneDbId(m_Stream->AddPlane(m, workOffset, false, 1e-6));
    m_Op->PushBack(mgr.Add(change));
  }

  // In the stream opened last (stream 1 when none is), an operation with a mill tool
  // change (ATC), the plane of `workOffset` unless it is 0, and a sub-operation in X-Y.
  IOF::DbIOFNciSubOp& Mill(const wchar_t* comment, int tool, const wchar_t* toolName, double rpm, int workOffset = 0) {
    if (!m_Stream) Stream(1);
    Op(comment);
    Tool(tool, toolName, 2, 1);
    if (workOffset) Plane(workOffset);
    return Sub(rpm, IOF::IofArcPlaneType::XY);
  }

  // A sub-operation with its motion list, which takes the moves that follow.
  IOF::DbIOFNciSubOp& Sub(double rpm, IOF::IofArcPlaneType plane) {
    auto sub = IOF::DbIOFNciSubOp::Create();
    sub->SetSpindleSpeed(rpm);
    sub->SetNCPlane(plane);
    m_Op->PushBack(mgr.Add(sub));
    auto motion = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionBlock);
    sub->PushBack(mgr.Add(motion));
    m_Into = motion.Get();
    return *sub;
  }

  // Adds a record to the manager and to the list that takes moves.
  template <class R>
  R& Add(Quarp::DbPtr<R> record) {
    m_Into->PushBack(mgr.Add(record));
    return *record;
  }

  // A linear move; a feed of 0 is a rapid.
  IOF::DbIOFNciLinear& Line(double x, double y, double z, double feed = 0) {
    auto line = IOF::DbIOFNciLinear::Create();
    line->SetEndPoint({x, y, z});
    line->SetIsFeedMove(feed > 0);
    line->SetFeedRate(feed);
    ends.push_back({x, y, z});
    return Add(line);
  }

  IOF::DbIOFNciArc& Arc(IOF::IofArcPlaneType plane, IOF::GmPoint3D from, IOF::GmPoint3D to, IOF::GmPoint3D centre,
                        bool cw, double feed) {
    auto arc = IOF::DbIOFNciArc::Create();
    arc->SetArcPlane(plane);
    arc->SetStartPoint(from);
    arc->SetEndPoint(to);
    arc->SetCenterPoint(centre);
    arc->SetClockwise(cw);
    arc->SetFeedRate(feed);
    ends.push_back(to);
    return Add(arc);
  }

  // A drill cycle of `type` whose points follow as its items.
  void Drill(int type, double peck, const std::vector<IOF::GmPoint3D>& bottoms, double r, double init) {
    auto drill = IOF::DbIOFDrill::Create();
    drill->SetCycleType(type);
    drill->SetPeck1(peck);
    for (const IOF::GmPoint3D& b : bottoms) {
      auto point = IOF::DbIOFDrillPoint::Create();
      point->SetEndPoint1({b.x, b.y, r});
      point->SetBottom(b.z);
      point->SetRefHeight(r);
      point->SetInitHeight(init);
      point->SetFeedRate(120);
      drill->PushBack(mgr.Add(point));
      ends.push_back(b);
    }
    Add(drill);
  }

  std::string Write(const std::string& name) {
    const std::string path = TestSupport::TempPath(name);
    EXPECT_EQ(mgr.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok);
    return path;
  }

 private:
  Quarp::DbPtr<IOF::DbIOFDocument> m_Doc;
  Quarp::DbPtr<IOF::DbIOFStream> m_Stream;
  IOF::DbIOFNciOperation* m_Op = nullptr;
  IOF::DbIOFList* m_Into = nullptr;
};

}  // namespace ToolSupport
