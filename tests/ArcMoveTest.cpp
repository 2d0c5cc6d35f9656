// The arc moves: the planar arc's dump and plane texts, the 3-D arc's computed points
// and flags, archive bytes, version errors, round trips and the comparison chains.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFTypeMgr.h>

#include <gtest/gtest.h>

#include <numbers>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::ExpectReportOrder;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

constexpr double kPi = std::numbers::pi;

// Record, base-move, NCI-base and record-base versions; empty name, attributes, sub-lists.
const std::string kHead = "00 01 00 00  00 00 00 00  00 00 00 00 00  00";
// The NCI base and base-move part of a fresh move: G-code 0, no owner, no time, no feed,
// feed move, no compensation, position code 0, Before, not incremental.
const std::string kFreshMove =
    "00 00 00 00 FF FF FF FF 00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00 01"
    "00 00 00 00 00 00 00 00 01 00 00 00 00";
// Points follow as their version byte and x, y, z.

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

TEST(DbIOFNciArc, ArchiveBytes) {
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
  const Bytes bytes = TestSupport::Store(*arc);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex(kHead + kFreshMove +
                                    "01 00 00 00"  // m_ArcPlane
                                    // m_StartPoint (1, 0, 0), m_EndPoint (0, 1, 0), m_CenterPoint (0, 0, 0.5)
                                    "00 00 00 00 00 00 00 F0 3F 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                                    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 F0 3F 00 00 00 00 00 00 00 00"
                                    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 E0 3F"
                                    "01 01"                        // m_FullCircle, m_Clockwise
                                    "00 00 00 00 00 80 56 40"      // m_SweepAngle
                                    "00"                           // m_IsHelix
                                    "00 00 00 00 00 00 F0 3F"      // m_Radius
                                    "00 00 00 00 00 00 00 00"      // m_StartAngle
                                    "00 00 00 00 00 80 56 40")));  // m_EndAngle
  auto back = DbIOFNciArc::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  EXPECT_EQ(back->ToIOFString(), arc->ToIOFString());
  EXPECT_EQ(back->GetArcPlane(), IofArcPlaneType::XZ);
  EXPECT_EQ(back->GetCenterPoint(), GmPoint3D(0, 0, 0.5));
  EXPECT_TRUE(back->IsFullCircle());
  EXPECT_TRUE(back->IsClockwise());
  EXPECT_FALSE(back->IsHelical());
  EXPECT_EQ(back->GetRadius(), 1.0);
  EXPECT_EQ(back->GetEndAngle(), 90.0);
}

TEST(DbIOFNciArc, ComparisonOrder) {
  using A = DbIOFNciArc;
  // The sweep is reported before the direction flag although the archive holds it after.
  ExpectReportOrder<A>({
      {[](A& r, bool on) { r.SetCutterComp(on ? 41 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 41\n"},
      {[](A& r, bool on) { r.SetArcPlane(static_cast<IofArcPlaneType>(on ? 7 : 0)); },
       L"Difference Detected: m_ArcPlane - 0 vs 7\n"},
      {[](A& r, bool on) { r.SetStartPoint(GmPoint3D(on ? 1 : 0, 0, 0)); },
       L"Difference Detected: m_StartPoint - (0, 0, 0) vs (1, 0, 0)\n"},
      {[](A& r, bool on) { r.SetEndPoint(GmPoint3D(0, on ? 2 : 0, 0)); },
       L"Difference Detected: m_EndPoint - (0, 0, 0) vs (0, 2, 0)\n"},
      {[](A& r, bool on) { r.SetCenterPoint(GmPoint3D(0, 0, on ? -3 : 0)); },
       L"Difference Detected: m_CenterPoint - (0, 0, 0) vs (0, 0, -3)\n"},
      {[](A& r, bool on) { r.SetFullCircle(on); }, L"Difference Detected: m_FullCircle - false vs true\n"},
      {[](A& r, bool on) { r.SetSweepAngle(on ? 90 : 0); }, L"Difference Detected: m_SweepAngle - 0 vs 90\n"},
      {[](A& r, bool on) { r.SetClockwise(on); }, L"Difference Detected: m_Clockwise - false vs true\n"},
      {[](A& r, bool on) { r.SetHelical(on); }, L"Difference Detected: m_IsHelix - false vs true\n"},
      {[](A& r, bool on) { r.SetRadius(on ? 2.5 : 0); }, L"Difference Detected: m_Radius - 0 vs 2.5\n"},
      {[](A& r, bool on) { r.SetStartAngle(on ? 0.125 : 0); }, L"Difference Detected: m_StartAngle - 0 vs 0.125\n"},
      {[](A& r, bool on) { r.SetEndAngle(on ? 1e-5 : 0); }, L"Difference Detected: m_EndAngle - 0 vs 1e-05\n"},
  });
}

TEST(DbIOFNciArc, ToleranceAndTypes) {
  auto a = DbIOFNciArc::Create();
  auto b = DbIOFNciArc::Create();
  b->SetSweepAngle(5e-7);
  b->SetCenterPoint(GmPoint3D(0, 5e-7, 0));
  b->SetGCode(2);  // never compared for moves
  CString report;
  EXPECT_TRUE(a->Compare(b, report));
  auto line = DbIOFNciLinear::Create();
  EXPECT_FALSE(a->Compare(line, report));
  EXPECT_EQ(report, L"Incompatible types.\n");
  auto arc3d = DbIOFNciArc3D::Create();
  EXPECT_FALSE(a->Compare(arc3d, report));
  EXPECT_EQ(report, L"Incompatible types.\nIncompatible types.\n");
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

TEST(DbIOFNciArc3D, ArchiveBytesAndVersionErrors) {
  auto arc = DbIOFNciArc3D::Create();
  arc->SetArcCSDbId(Quarp::DbId(0x0102030405060708ull));
  arc->SetCenterPoint(GmPoint3D(0, 0, 1));
  arc->SetRadius(2);
  arc->SetSweepAngle(-1);
  arc->SetHelicalPitch(0.5);
  const Bytes bytes = TestSupport::Store(*arc);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex(kHead + kFreshMove +
                                    "08 07 06 05 04 03 02 01"  // m_ArcCSDbId, raw
                                    // m_CenterPoint (0, 0, 1)
                                    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 F0 3F"
                                    "00 00 00 00 00 00 00 40"      // m_Radius
                                    "00 00 00 00 00 00 00 00"      // m_StartAngle
                                    "00 00 00 00 00 00 F0 BF"      // m_SweepAngle
                                    "00 00 00 00 00 00 E0 3F"      // m_HelicalPitch
                                    "00 00 00 00 00 00 00 00")));  // m_SpiralPitch
  auto back = DbIOFNciArc3D::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  EXPECT_EQ(back->GetArcCSDbId(), Quarp::DbId(0x0102030405060708ull));
  EXPECT_EQ(back->GetCenterPoint(), GmPoint3D(0, 0, 1));
  EXPECT_EQ(back->GetRadius(), 2.0);
  EXPECT_EQ(back->GetSweepAngle(), -1.0);
  EXPECT_EQ(back->GetHelicalPitch(), 0.5);
  EXPECT_EQ(back->GetSpiralPitch(), 0.0);

  // A newer arc version stops the load after the base part, before any own field.
  Bytes newer = bytes;
  newer[0] = 1;
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(*back, newer, &stopped), 2);
  EXPECT_EQ(stopped, bytes.size() - 73);
}

TEST(DbIOFNciArc, NewerVersionStopsBeforeTheOwnFields) {
  auto arc = DbIOFNciArc::Create();
  Bytes bytes = TestSupport::Store(*arc);
  bytes[0] = 1;
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(*arc, bytes, &stopped), 2);
  EXPECT_EQ(stopped, bytes.size() - 114);  // plane, three points, flags, sweep, radius, angles unread
}

TEST(DbIOFNciArc3D, ComparisonOrderLeavesTheCoordinateSystemOut) {
  using A = DbIOFNciArc3D;
  ExpectReportOrder<A>({
      {[](A& r, bool on) { r.SetFeedRate(on ? 10 : 0); }, L"Difference Detected: m_FeedRate - 0 vs 10\n"},
      {[](A& r, bool on) { r.SetSpiralPitch(on ? 1 : 0); }, L"Difference Detected: m_SpiralPitch - 0 vs 1\n"},
      {[](A& r, bool on) { r.SetHelicalPitch(on ? 2 : 0); }, L"Difference Detected: m_HelicalPitch - 0 vs 2\n"},
      {[](A& r, bool on) { r.SetRadius(on ? 3 : 0); }, L"Difference Detected: m_Radius - 0 vs 3\n"},
      {[](A& r, bool on) { r.SetStartAngle(on ? 0.5 : 0); }, L"Difference Detected: m_StartAngle - 0 vs 0.5\n"},
      {[](A& r, bool on) { r.SetSweepAngle(on ? -1.5 : 0); }, L"Difference Detected: m_SweepAngle - 0 vs -1.5\n"},
      {[](A& r, bool on) { r.SetCenterPoint(GmPoint3D(on ? 4 : 0, 0, 0)); },
       L"Difference Detected: m_CenterPoint - (0, 0, 0) vs (4, 0, 0)\n"},
  });
  // The coordinate-system id is never compared.
  auto a = A::Create();
  auto b = A::Create();
  b->SetArcCSDbId(Quarp::DbId(99));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));
  EXPECT_TRUE(report.IsEmpty());
}

TEST(DbIOFNciArc3D, VisitsEveryField) {
  auto arc = DbIOFNciArc3D::Create();
  arc->SetArcCSDbId(Quarp::DbId(7));
  arc->SetCenterPoint(GmPoint3D(1, 2, 3));
  arc->SetRadius(4);
  arc->SetSweepAngle(-0.5);
  TestSupport::RecordingVisitor v;
  arc->VisitFields(v);
  EXPECT_EQ(v.fields, (std::vector<std::string>{
                          "m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]", "m_GCode=0", "m_OwnerOpId=-1",
                          "m_Time=0", "m_FeedRate=0", "m_bIsFeedMove=true", "m_CutterComp=0", "m_PositionCode=0",
                          "m_ContourPosition=1", "m_NcIncremental=false", "m_ArcCSDbId=#7", "m_CenterPoint=(1,2,3)",
                          "m_Radius=4", "m_StartAngle=0", "m_SweepAngle=-0.5", "m_HelicalPitch=0", "m_SpiralPitch=0"}));
}

// --- both -------------------------------------------------------------------------------

TEST(ArcMoves, CloneAndFileRoundTrip) {
  Quarp::DbMgr mgr;
  auto arc = DbIOFNciArc::Create();
  arc->SetStartPoint(GmPoint3D(1, 2, 3));
  arc->SetArcPlane(IofArcPlaneType::NoPlane);
  arc->SetHelical(true);
  arc->SetStartAngle(45);
  arc->SetTime(3);
  const Quarp::DbId arcId = mgr.Add(arc);
  auto arc3d = DbIOFNciArc3D::Create();
  arc3d->SetArcCSDbId(arcId);
  arc3d->SetRadius(6);
  arc3d->SetSpiralPitch(0.25);
  const Quarp::DbId arc3dId = mgr.Add(arc3d);

  // A clone copies every field, the coordinate-system id as a plain value.
  Quarp::DbMgr other;
  Quarp::DbErr err{};
  auto* clone = dynamic_cast<DbIOFNciArc3D*>(arc3d->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err));
  ASSERT_NE(clone, nullptr);
  TestSupport::RecordingVisitor original, copied;
  arc3d->VisitFields(original);
  clone->VisitFields(copied);
  EXPECT_EQ(copied.fields, original.fields);

  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  Quarp::DbCPtr<DbIOFNciArc> a;
  ASSERT_TRUE(back.Get(a, arcId, 0));
  EXPECT_EQ(a->ToIOFString(), arc->ToIOFString());
  EXPECT_TRUE(a->IsHelical());
  EXPECT_EQ(a->GetStartAngle(), 45.0);
  Quarp::DbCPtr<DbIOFNciArc3D> a3;
  ASSERT_TRUE(back.Get(a3, arc3dId, 0));
  EXPECT_EQ(a3->GetArcCSDbId(), arcId);
  EXPECT_EQ(a3->GetRadius(), 6.0);
  EXPECT_EQ(a3->GetSpiralPitch(), 0.25);
  CString report;
  EXPECT_TRUE(a3->Compare(arc3d, report)) << report.ToUtf8();
}

TEST(ArcMoves, TypeAnswers) {
  auto arc = DbIOFNciArc::Create();
  auto arc3d = DbIOFNciArc3D::Create();
  const Quarp::UtMask& moves = DbIOFTypeMgr::GetIOFNCIBASEMOVEMask();
  EXPECT_TRUE(arc->ContainsType(moves, true));
  EXPECT_TRUE(arc3d->ContainsType(moves, true));
  EXPECT_FALSE(arc->ContainsType(moves, false));
  EXPECT_FALSE(arc->ContainsType(DbIOFTypeMgr::GetIOFMOTIONBLOCKMask(), true));
  EXPECT_TRUE(arc->ContainsType(DbIOFTypeMgr::GetIOFNCIARCMask(), false));
  EXPECT_FALSE(arc3d->ContainsType(DbIOFTypeMgr::GetIOFNCIARCMask(), true));
  EXPECT_TRUE(arc3d->ContainsType(0x5106));
  EXPECT_TRUE(arc3d->ContainsType(0x5103));
  EXPECT_FALSE(arc3d->ContainsType(0x5105));
  EXPECT_EQ(arc->GetClass(), L"DbIOFNciArc");
  EXPECT_EQ(arc3d->GetClass(), L"DbIOFNciArc3D");
  EXPECT_STREQ(arc3d->GetObjectClassName(), "DbIOFNciArc3D");
  EXPECT_EQ(arc->GetType(), 0x5105u);
}

}  // namespace
