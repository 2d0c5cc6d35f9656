// The arc moves: the planar arc's dump and plane texts, the 3-D arc's computed points
// and flags, archive bytes, version errors, round trips and the comparison chains.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

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
const std::size_t kHeadSize = 3 + kRecordBaseSize + kNciBaseSize + kBaseMoveSize;

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

TEST(DbIOFNciArc, ArchiveAndVersion) {
  auto arc = DbIOFNciArc::Create();
  arc->SetArcPlane(IofArcPlaneType::XZ);
  arc->SetStartPoint(GmPoint3D(1, 0, 0));
  arc->SetEndPoint(GmPoint3D(0, 1, 0));
  arc->SetCenterPoint(GmPoint3D(0, 0, 0.5));
  arc->SetFullCircle(true);
  arc->SetClockwise(true);
  arc->SetSweepAngle(90);
  arc->SetRadius(1);
  arc->SetEndAngle(90);
  ExpectArchive(*arc, kHead +
                          "01 00 00 00"  // m_ArcPlane
                          // m_StartPoint (1, 0, 0), m_EndPoint (0, 1, 0), m_CenterPoint (0, 0, 0.5)
                          "00" +
                          kOne + kZero + kZero + "00" + kZero + kOne + kZero + "00" + kZero + kZero +
                          "00 00 00 00 00 00 E0 3F"
                          "01 01"                      // m_FullCircle, m_Clockwise
                          "00 00 00 00 00 80 56 40"    // m_SweepAngle
                          "00"                         // m_IsHelix
                          "00 00 00 00 00 00 F0 3F"    // m_Radius
                          "00 00 00 00 00 00 00 00"    // m_StartAngle
                          "00 00 00 00 00 80 56 40");  // m_EndAngle
  // A newer arc version stops the load after the base part, before any own field.
  ExpectNewerVersionRefused(*arc, 0, kHeadSize);
}

TEST(DbIOFNciArc, ComparisonOrder) {
  using A = DbIOFNciArc;
  // The sweep is reported before the direction flag although the archive holds it after.
  // G-code, and what the points and sweep leave behind (5e-7), are never reported.
  ExpectReportOrder<A>({
      {[](A& r, bool) { r.SetGCode(2); }, nullptr},
      {[](A& r, bool on) { r.SetCutterComp(on ? 41 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 41\n"},
      {[](A& r, bool on) { r.SetArcPlane(static_cast<IofArcPlaneType>(on ? 7 : 0)); },
       L"Difference Detected: m_ArcPlane - 0 vs 7\n"},
      {[](A& r, bool on) { r.SetStartPoint(GmPoint3D(on ? 1 : 0, 0, 0)); },
       L"Difference Detected: m_StartPoint - (0, 0, 0) vs (1, 0, 0)\n"},
      {[](A& r, bool on) { r.SetEndPoint(GmPoint3D(0, on ? 2 : 0, 0)); },
       L"Difference Detected: m_EndPoint - (0, 0, 0) vs (0, 2, 0)\n"},
      {[](A& r, bool on) { r.SetCenterPoint(GmPoint3D(0, on ? 0 : 5e-7, on ? -3 : 0)); },
       L"Difference Detected: m_CenterPoint - (0, 0, 0) vs (0, 0, -3)\n"},
      {[](A& r, bool on) { r.SetFullCircle(on); }, L"Difference Detected: m_FullCircle - false vs true\n"},
      {[](A& r, bool on) { r.SetSweepAngle(on ? 90 : 5e-7); }, L"Difference Detected: m_SweepAngle - 0 vs 90\n"},
      {[](A& r, bool on) { r.SetClockwise(on); }, L"Difference Detected: m_Clockwise - false vs true\n"},
      {[](A& r, bool on) { r.SetHelical(on); }, L"Difference Detected: m_IsHelix - false vs true\n"},
      {[](A& r, bool on) { r.SetRadius(on ? 2.5 : 0); }, L"Difference Detected: m_Radius - 0 vs 2.5\n"},
      {[](A& r, bool on) { r.SetStartAngle(on ? 0.125 : 0); }, L"Difference Detected: m_StartAngle - 0 vs 0.125\n"},
      {[](A& r, bool on) { r.SetEndAngle(on ? 1e-5 : 0); }, L"Difference Detected: m_EndAngle - 0 vs 1e-05\n"},
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

TEST(DbIOFNciArc3D, ArchiveAndVersion) {
  auto arc = DbIOFNciArc3D::Create();
  arc->SetArcCSDbId(Quarp::DbId(0x0102030405060708ull));
  arc->SetCenterPoint(GmPoint3D(0, 0, 1));
  arc->SetRadius(2);
  arc->SetSweepAngle(-1);
  arc->SetHelicalPitch(0.5);
  ExpectArchive(*arc, kHead +
                          "08 07 06 05 04 03 02 01"  // m_ArcCSDbId, raw
                          "00" +
                          kZero + kZero + kOne +       // m_CenterPoint (0, 0, 1)
                          "00 00 00 00 00 00 00 40"    // m_Radius
                          "00 00 00 00 00 00 00 00"    // m_StartAngle
                          "00 00 00 00 00 00 F0 BF"    // m_SweepAngle
                          "00 00 00 00 00 00 E0 3F"    // m_HelicalPitch
                          "00 00 00 00 00 00 00 00");  // m_SpiralPitch
  ExpectNewerVersionRefused(*arc, 0, kHeadSize);
}

TEST(DbIOFNciArc3D, ComparisonOrderLeavesTheCoordinateSystemOut) {
  using A = DbIOFNciArc3D;
  ExpectReportOrder<A>({
      {[](A& r, bool) { r.SetArcCSDbId(Quarp::DbId(99)); }, nullptr},  // never compared
      {[](A& r, bool on) { r.SetFeedRate(on ? 10 : 0); }, L"Difference Detected: m_FeedRate - 0 vs 10\n"},
      {[](A& r, bool on) { r.SetSpiralPitch(on ? 1 : 0); }, L"Difference Detected: m_SpiralPitch - 0 vs 1\n"},
      {[](A& r, bool on) { r.SetHelicalPitch(on ? 2 : 0); }, L"Difference Detected: m_HelicalPitch - 0 vs 2\n"},
      {[](A& r, bool on) { r.SetRadius(on ? 3 : 0); }, L"Difference Detected: m_Radius - 0 vs 3\n"},
      {[](A& r, bool on) { r.SetStartAngle(on ? 0.5 : 0); }, L"Difference Detected: m_StartAngle - 0 vs 0.5\n"},
      {[](A& r, bool on) { r.SetSweepAngle(on ? -1.5 : 0); }, L"Difference Detected: m_SweepAngle - 0 vs -1.5\n"},
      {[](A& r, bool on) { r.SetCenterPoint(GmPoint3D(on ? 4 : 0, 0, 0)); },
       L"Difference Detected: m_CenterPoint - (0, 0, 0) vs (4, 0, 0)\n"},
  });
}

TEST(ArcMoves, VisitEveryField) {
  auto arc = DbIOFNciArc::Create();
  arc->SetStartPoint(GmPoint3D(1, 2, 3));
  arc->SetArcPlane(IofArcPlaneType::NoPlane);
  arc->SetHelical(true);
  arc->SetStartAngle(45);
  ExpectFields(*arc, {kRecordBaseFields,
                      kNciBaseFields,
                      kBaseMoveFields,
                      {"m_ArcPlane=3", "m_StartPoint=(1,2,3)", "m_EndPoint=(0,0,0)", "m_CenterPoint=(0,0,0)",
                       "m_FullCircle=false", "m_Clockwise=false", "m_SweepAngle=0", "m_IsHelix=true", "m_Radius=0",
                       "m_StartAngle=45", "m_EndAngle=0"}});
  auto arc3d = DbIOFNciArc3D::Create();
  arc3d->SetArcCSDbId(Quarp::DbId(7));
  arc3d->SetCenterPoint(GmPoint3D(1, 2, 3));
  arc3d->SetRadius(4);
  arc3d->SetSweepAngle(-0.5);
  ExpectFields(*arc3d, {kRecordBaseFields,
                        kNciBaseFields,
                        kBaseMoveFields,
                        {"m_ArcCSDbId=#7", "m_CenterPoint=(1,2,3)", "m_Radius=4", "m_StartAngle=0", "m_SweepAngle=-0.5",
                         "m_HelicalPitch=0", "m_SpiralPitch=0"}});
}

}  // namespace
