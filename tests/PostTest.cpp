// iof post through the built binary: the exact programs of small jobs, and a replay of
// each program by a small G-code reader that must reach every move's end point.
#include "ToolSupport.h"

#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciManualEntry.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using IOF::IofArcPlaneType;
using ToolSupport::Job;
using ToolSupport::Tool;

template <class E>
void Event(Job& job, int value) {
  auto event = E::Create();
  if constexpr (std::is_same_v<E, IOF::DbIOFEvComp>) event->SetCompensationType(value);
  if constexpr (std::is_same_v<E, IOF::DbIOFEvChangeFeedUnitType>) event->SetUnitType(value);
  job.Add(event);
}

void Square(Job& job) {
  job.Mill(L"Square (pocket)", 1, L"Flat end mill 6", 5000, 54).SetDiameterOffsetNum(11);
  job.Line(0, 0, 5);
  job.Line(0, 0, -1, 100);
  Event<IOF::DbIOFEvComp>(job, 2);
  job.Line(5, 0, -1, 500);
  job.Line(10, 0, -1, 500);
  job.Line(10, 10, -1, 500);
  job.Line(0, 10, -1, 500).SetNcIncremental(true);
  job.Line(0, 0, -1, 500);
  Event<IOF::DbIOFEvComp>(job, 1);
  auto dwell = IOF::DbIOFEvDwell::Create();
  dwell->SetDwellTime(0.5);
  job.Add(dwell);
  auto note = IOF::DbIOFNciManualEntry::Create();
  note->SetComment(CString(L"M8"));
  note->SetOutputCommentAsCode(true);
  note->SetIncludeWithMove(true);
  job.Add(note);
  job.Line(0, 0, 5);
}

void Arcs(Job& job) {
  job.Mill(L"Arcs", 2, L"Ball mill 4", 8000);
  job.Line(10, 0, 0);
  job.Arc(IofArcPlaneType::XY, {10, 0, 0}, {0, 10, 0}, {0, 0, 0}, false, 200);
  job.Arc(IofArcPlaneType::XZ, {0, 10, 0}, {-10, 10, 0}, {-5, 10, 0}, true, 200);
  job.Arc(IofArcPlaneType::YZ, {-10, 10, 0}, {-10, 0, 0}, {-10, 5, 0}, false, 200);
  job.Arc(IofArcPlaneType::XY, {-10, 0, 0}, {-10, 0, -2}, {-5, 0, 0}, false, 150);  // a full-turn helix
  auto arc = IOF::DbIOFNciArc3D::Create();
  arc->SetCenterPoint({-5, 0, -2});
  arc->SetRadius(5);
  arc->SetStartAngle(std::numbers::pi);
  arc->SetSweepAngle(-std::numbers::pi / 2);
  arc->SetFeedRate(150);
  job.ends.push_back(arc->GetEndPoint());
  job.Add(arc);
}

void Drill(Job& job) {
  job.Mill(L"Drill", 3, L"Drill 5", 1500, 55);
  job.Line(0, 0, 50);
  job.Drill(2, 1.5, {{10, 10, -12}, {20, 10, -12}, {20, 20, -14}}, 2, 10);
  job.Line(0, 0, 50);
}

void Lathe(Job& job) {
  job.Stream(1);
  job.Op(L"Turn OD").SetMaxSpindleSpeed(3000);
  job.Tool(1, L"OD rough", 1, 2);
  job.Plane(54, IOF::GmXformMat3D::RotY(std::numbers::pi / 2));
  job.Sub(200, IofArcPlaneType::XZ).SetCSSEnabled(true);
  Event<IOF::DbIOFEvChangeFeedUnitType>(job, 1);
  job.Line(25, 0, 2);
  job.Line(20, 0, 2, 0.25);
  job.Line(20, 0, -30, 0.2);
  job.Arc(IofArcPlaneType::XZ, {20, 0, -30}, {24, 0, -34}, {24, 0, -30}, true, 0.2);
  job.Line(30, 0, -34, 0.2);
  job.Line(30, 0, 2);
  job.Op(L"Groove");
  job.Tool(3, L"Groove 3", 1, 2);
  job.Sub(150, IofArcPlaneType::XZ).SetCSSEnabled(true);
  job.Line(32, 0, -20);
  job.Line(26, 0, -20, 0.05);
  job.Line(32, 0, -20);
}

struct Case {
  const char* name;
  void (*build)(Job&);
  const char* options;
  const char* program;
};

const Case kCases[] = {
    {"square", Square, "--line-numbers", R"(%
O0001 (stream 1 Stream Object)
(T1 Flat end mill 6)
N10 G21 G90 G17 G40 G80
(Square [pocket])
N20 T1 M6 (Flat end mill 6)
N30 S5000 M3
N40 G54 G0 X0. Y0. Z5. G43 H1
N50 G1 Z-1. F100.
N60 G41 X5. D11 F500.
N70 X10.
N80 Y10.
N90 G91 X-10.
N100 G90 Y0.
N110 G4 P0.5
N120 G40 G0 Z5. M8
N130 M5
N140 M30
%
)"},
    {"arcs", Arcs, "--tolerance 0.2", R"(%
O0001 (stream 1 Stream Object)
(T2 Ball mill 4)
G21 G90 G17 G40 G80
(Arcs)
T2 M6 (Ball mill 4)
S8000 M3
G0 X10. Y0. Z0. G43 H2
G3 X0. Y10. I-10. J0. F200.
G18 G2 X-10. I-5. K0.
G19 G3 Y0. J-5. K0.
G17 Z-2. I5. J0. F150.
G1 X-9.33 Y2.5
X-7.5 Y4.33
X-5. Y5.
M5
M30
%
)"},
    {"drill", Drill, "", R"(%
O0001 (stream 1 Stream Object)
(T3 Drill 5)
G21 G90 G17 G40 G80
(Drill)
T3 M6 (Drill 5)
S1500 M3
G55 G0 X0. Y0. Z50. G43 H3
X10. Y10. Z10.
G98 G83 X10. Y10. Z-12. R2. Q1.5 F120.
X20. Y10.
X20. Y20. Z-14.
G80
G0 X0. Y0. Z50.
M5
M30
%
)"},
    {"lathe", Lathe, "", R"(%
O0001 (stream 1 Stream Object)
(T1 OD rough)
(T3 Groove 3)
G21 G90 G17 G40 G80
(Turn OD)
T0101 (OD rough)
G50 S3000
G96 S200 M3
G95
G54 G18 G0 X25. Z2.
G1 X20. F0.25
Z-30. F0.2
G2 X24. Z-34. I4. K0.
G1 X30.
G0 Z2.
(Groove)
M5
T0303 (Groove 3)
S150 M3
G0 X32. Z-20.
G1 X26. F0.05
G0 X32.
M5
M30
%
)"},
};

// Replays a program as a control would: the position after each block that moves (a
// drill cycle's block gives the bottom of its hole).
std::vector<IOF::GmPoint3D> Replay(const std::string& program) {
  std::vector<IOF::GmPoint3D> reached;
  double p[3] = {0, 0, 0}, r = 0, initial = 0, bottom = 0;
  bool incremental = false, cycle = false, toInitial = true;
  std::istringstream in(program);
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line.substr(0, line.find('(')));
    double q[3] = {p[0], p[1], p[2]};
    bool moved = false, depth = false;
    char letter = 0;
    for (double v = 0; words >> letter >> v;) {
      if (letter == 'G' && (v == 90 || v == 91)) incremental = v == 91;
      if (letter == 'G' && (v == 98 || v == 99)) toInitial = v == 98;
      if (letter == 'G' && v == 80) cycle = false;
      if (letter == 'G' && !cycle && (v == 73 || (v >= 81 && v <= 85))) cycle = true, initial = p[2];
      if (letter == 'R') r = v;
      if (letter >= 'X' && letter <= 'Z') {
        q[letter - 'X'] = incremental && !cycle ? q[letter - 'X'] + v : v;
        moved = true;
        depth = depth || letter == 'Z';
      }
    }
    if (!moved) continue;
    if (cycle) q[2] = depth ? q[2] : bottom, bottom = q[2];
    reached.push_back({q[0], q[1], q[2]});
    std::copy(q, q + 3, p);
    if (cycle) p[2] = toInitial ? initial : r;
  }
  return reached;
}

// Each small job gives its exact program, and the replay of the program reaches every
// move's end point.
TEST(Post, SmallJobsGiveExactProgramsThatReachEveryEndPoint) {
  for (const Case& c : kCases) {
    Job job;
    c.build(job);
    const ToolSupport::ToolRun r = Tool("post '" + job.Write(std::string(c.name) + ".iof") + "' " + c.options);
    EXPECT_EQ(r.code, 0) << c.name << ": " << r.err;
    EXPECT_EQ(r.out, c.program) << c.name;
    const std::vector<IOF::GmPoint3D> reached = Replay(r.out);
    auto at = reached.begin();
    for (const IOF::GmPoint3D& end : job.ends) {
      at = std::find_if(at, reached.end(), [&](const IOF::GmPoint3D& p) { return p.Distance(end) < 0.0015; });
      ASSERT_NE(at, reached.end()) << c.name << ": (" << end.x << ", " << end.y << ", " << end.z << ") not reached";
    }
  }
}

TEST(Post, DemoProgramsAndWhatTheyCannotSay) {
  const std::string file = ToolSupport::Demo();
  const ToolSupport::ToolRun all = Tool("post '" + file + "'");
  EXPECT_EQ(all.code, 0) << all.err;
  for (const char* text : {"O0001 (flange.mcam, stream 1 Main spindle)", "O0002 (flange.mcam, stream 2 Sub spindle)",
                           "M101 (Hand over to the sub spindle)", "(generic code G1016 [5 bytes]: not output)"}) {
    EXPECT_NE(all.out.find(text), std::string::npos) << text;
  }
  EXPECT_NE(all.err.find("warning: stream 1: 1 generic codes cannot be expressed"), std::string::npos) << all.err;
}

}  // namespace
