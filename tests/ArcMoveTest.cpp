// The arc moves: the planar arc's dump and plane texts, the 3-D arc's computed points
// and flags, and one layout table per class (archive, versions, round trips, fields,
// comparison order).
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>

#include <gtest/gtest.h>

#include <numbers>

using namespace IOF;
using namespace TestSupport;

namespace {

constexpr double kPi = std::numbers::pi;

// Record, base-move and NCI-base versions, the record base, and the NCI base and base
// move of a fresh move; the own fields follow. Points are their version byte and x, y, z.
const std::string kHead = "00 01 00" + kRecordBase + kFreshNciBase + kFreshBaseMove;

// --- planar arc -------------------------------------------------------------------------

TEST(DbIOFNciArc, DumpTexts) {
  auto arc = DbIOFNciArc::Create();
  EXPECT_EQ(arc->ToIOFString(),
            L"G0 0 0 S(0.000000 0.000000 0.000000) E(0.000000 0.000000 0.000000) C(0.000000 0.000000 0.000000) "
            L"F0.000000 0 0 plane=G17 sweep =0 deg Dir:CCLW ContourPosition.Before t=0s INC = 0");
  arc->SetGCode(3);
  arc->SetArcPlane(IofArcPlaneType::YZ);
  arc->SetCutterComp(42);
  arc->SetStartPoint(GmPoint3D(1, 2, 3));
  arc->SetEndPoint(GmPoint3D(-1, 0.5, 0));
  arc->SetCenterPoint(GmPoint3D(0, 0, 0.25));
  arc->SetFeedRate(120);
  arc->SetPositionCode(7);
  arc->SetFullCircle(true);
  arc->SetSweepAngle(-92.5);
  arc->SetClockwise(true);
  arc->SetContourPosition(ContourPositionState::Contour);
  arc->SetTime(1.25);
  arc->SetNcIncremental(true);
  EXPECT_EQ(arc->ToIOFString(),
            L"G3 2 42 S(1.000000 2.000000 3.000000) E(-1.000000 0.500000 0.000000) C(0.000000 0.000000 0.250000) "
            L"F120.000000 7 1 plane=G19 sweep =-92.5 deg Dir:CLW ContourPosition.Contour t=1.25s INC = 1");
}

TEST(DbIOFNciArc, PlaneTexts) {
  struct Case {
    int plane;
    const char* text;
  };
  // Only G17, G18 and G19 are named; every other value, 3 included, prints "NoPlane".
  const Case cases[] = {{0, "G17"},     {1, "G18"},      {2, "G19"},    {3, "NoPlane"},
                        {7, "NoPlane"}, {-1, "NoPlane"}, {4, "NoPlane"}};
  auto arc = DbIOFNciArc::Create();
  for (const Case& c : cases) {
    arc->SetArcPlane(static_cast<IofArcPlaneType>(c.plane));
    const std::string text = arc->ToIOFString().ToUtf8();
    EXPECT_NE(text.find(std::string(" plane=") + c.text + " sweep"), std::string::npos) << text;
    EXPECT_TRUE(text.starts_with("G0 " + std::to_string(c.plane) + " 0 S(")) << text;  // the plane as a number
  }
}

// The sweep is reported before the direction flag although the archive holds it after.
// Of the base move, the G-code is never compared and the cutter compensation is; what
// the points and sweep leave behind (5e-7) is within the tolerance.
TEST(DbIOFNciArc, Layout) {
  ExpectLayout<DbIOFNciArc>(
      {kHead,
       L"G0 1 0 S(1.000000 0.000000 0.000000) E(0.000000 1.000000 0.000000) C(0.000000 0.000000 0.500000) F0.000000 "
       L"0 1 plane=G18 sweep =90 deg Dir:CLW ContourPosition.Before t=0s INC = 0",
       {I(1, L"m_ArcPlane - 0 vs 1"), R(Pt(1, 0, 0), kP0, L"m_StartPoint - (0, 0, 0) vs (1, 0, 0)"),
        R(Pt(0, 1, 0), kP0, L"m_EndPoint - (0, 0, 0) vs (0, 1, 0)"),
        R(Pt(0, 0, 0.5), kP0, L"m_CenterPoint - (0, 0, 0) vs (0, 0, 0.5)"), Flag(L"m_FullCircle - false vs true"),
        Flag(L"m_Clockwise - false vs true"), D(90, L"m_SweepAngle - 0 vs 90"), Flag(L"m_IsHelix - false vs true"),
        D(2.5, L"m_Radius - 0 vs 2.5"), D(0.125, L"m_StartAngle - 0 vs 0.125"), D(1e-5, L"m_EndAngle - 0 vs 1e-05")},
       {0, 1, 2, 3, 4, 6, 5, 7, 8, 9, 10},
       "m_ArcPlane=1 m_StartPoint=(1,0,0) m_EndPoint=(0,1,0) m_CenterPoint=(0,0,0.5) m_FullCircle=true "
       "m_Clockwise=true m_SweepAngle=90 m_IsHelix=true m_Radius=2.5 m_StartAngle=0.125 m_EndAngle=1e-05"});
  using A = DbIOFNciArc;
  ExpectReportOrder<A>({
      {[](A& r, bool) { r.SetGCode(2); }, nullptr},
      {[](A& r, bool) { r.SetCenterPoint(GmPoint3D(0, 5e-7, 0)); }, nullptr},
      {[](A& r, bool) { r.SetSweepAngle(5e-7); }, nullptr},
      {[](A& r, bool on) { r.SetCutterComp(on ? 41 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 41\n"},
  });
}

// --- 3-D arc ----------------------------------------------------------------------------

TEST(DbIOFNciArc3D, ComputedPoints) {
  struct Case {
    const char* what;
    GmPoint3D centre;
    double radius, start, sweep, helical, spiral;
    GmPoint3D startPt, endPt;
    double endAngle;
    bool clockwise, helix, spiralFlag;
  };
  const Case cases[] = {
      {"quarter turn about an offset centre", GmPoint3D(1, 2, 3), 10, 0, kPi / 2, 0, 0, GmPoint3D(11, 2, 3),
       GmPoint3D(1, 12, 3), kPi / 2, false, false, false},
      {"clockwise helical full turn", GmPoint3D(0, 0, 0), 10, 0, -2 * kPi, 5, 0, GmPoint3D(10, 0, 0),
       GmPoint3D(10, 0, 5), -2 * kPi, true, true, false},
      {"half turn growing by a spiral", GmPoint3D(0, 0, 0), 10, 0, kPi, 0, 4, GmPoint3D(10, 0, 0), GmPoint3D(-12, 0, 0),
       kPi, false, false, true},
      {"start angle on the Y axis", GmPoint3D(0, 0, -1), 2, kPi / 2, kPi / 2, 0, 0, GmPoint3D(0, 2, -1),
       GmPoint3D(-2, 0, -1), kPi, false, false, false},
      {"two turns, helical and spiral", GmPoint3D(0, 0, 0), 1, 0, 4 * kPi, 1, 1, GmPoint3D(1, 0, 0), GmPoint3D(3, 0, 2),
       4 * kPi, false, true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    auto arc = DbIOFNciArc3D::Create();
    arc->SetCenterPoint(c.centre);
    arc->SetRadius(c.radius);
    arc->SetStartAngle(c.start);
    arc->SetSweepAngle(c.sweep);
    arc->SetHelicalPitch(c.helical);
    arc->SetSpiralPitch(c.spiral);
    const GmPoint3D s = arc->GetStartPoint();
    const GmPoint3D e = arc->GetEndPoint();
    EXPECT_LT(s.Distance(c.startPt), 1e-12) << s.x << " " << s.y << " " << s.z;
    EXPECT_LT(e.Distance(c.endPt), 1e-12) << e.x << " " << e.y << " " << e.z;
    EXPECT_DOUBLE_EQ(arc->GetEndAngle(), c.endAngle);
    EXPECT_EQ(arc->IsClockwise(), c.clockwise);
    EXPECT_EQ(arc->IsHelical(), c.helix);
    EXPECT_EQ(arc->IsSpiral(), c.spiralFlag);
    EXPECT_TRUE(arc->ToIOFString().IsEmpty());  // 3-D arcs show nothing in dumps
  }
}

TEST(DbIOFNciArc3D, FullCircleComparesTheSweepWith360) {
  struct Case {
    double sweep, helical, spiral;
    bool full;
  };
  const Case cases[] = {{2 * kPi, 0, 0, false},    {-2 * kPi, 0, 0, false}, {360.0, 0, 0, true},
                        {-360.0, 0, 0, true},      {360.0, 1, 0, false},    {360.0, 0, 0.5, false},
                        {359.9999999, 0, 0, false}};
  auto arc = DbIOFNciArc3D::Create();
  for (const Case& c : cases) {
    arc->SetSweepAngle(c.sweep);
    arc->SetHelicalPitch(c.helical);
    arc->SetSpiralPitch(c.spiral);
    EXPECT_EQ(arc->IsFullCircle(), c.full) << c.sweep << " " << c.helical << " " << c.spiral;
  }
}

// The coordinate system id is archived raw and never compared; of the base move the
// feed rate is compared first.
TEST(DbIOFNciArc3D, Layout) {
  ExpectLayout<DbIOFNciArc3D>(
      {kHead,
       L"",  // 3-D arcs show nothing in dumps
       {R("08 07 06 05 04 03 02 01 ", Le(0ull), nullptr),
        R(Pt(0, 0, 1), kP0, L"m_CenterPoint - (0, 0, 0) vs (0, 0, 1)"), D(2, L"m_Radius - 0 vs 2"),
        D(0.5, L"m_StartAngle - 0 vs 0.5"), D(-1.5, L"m_SweepAngle - 0 vs -1.5"),
        D(0.25, L"m_HelicalPitch - 0 vs 0.25"), D(1, L"m_SpiralPitch - 0 vs 1")},
       {6, 5, 2, 3, 4, 1, 0},
       "m_ArcCSDbId=#72623859790382856 m_CenterPoint=(0,0,1) m_Radius=2 m_StartAngle=0.5 "
       "m_SweepAngle=-1.5 m_HelicalPitch=0.25 m_SpiralPitch=1"});
  using A = DbIOFNciArc3D;
  ExpectReportOrder<A>(
      {{[](A& r, bool on) { r.SetFeedRate(on ? 10 : 0); }, L"Difference Detected: m_FeedRate - 0 vs 10\n"}});
}

}  // namespace
