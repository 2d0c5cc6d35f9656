// Sub-program references and canned cycles: one layout table per class pins its archive
// bytes, every old layout, the version error, the round trips, the dump and the
// comparison order with its lines; then each class's own rules.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFCannedGroove.h>
#include <iof/DbIOFDrill.h>
#include <iof/DbIOFDrillPoint.h>
#include <iof/DbIOFNciCFSubProgRef.h>
#include <iof/DbIOFNciCPSubProgRef.h>
#include <iof/DbIOFNciCRSubProgRef.h>
#include <iof/DbIOFNciNonTransSubProgRef.h>
#include <iof/DbIOFRotary.h>
#include <iof/DbIOFThread.h>

#include <gtest/gtest.h>

using namespace IOF;
using namespace TestSupport;

namespace {

const std::string kSubProgRef = kRecordBase + kFreshNciBase + "FF FF FF FF 00 " + Le(0ull);  // fresh, version 1

// The id prints its low 32 bits; the flag sits between the two older fields.
TEST(SubProgRefs, Layouts) {
  ExpectLayout<DbIOFNciSubProgRef>(
      {"01 00" + kRecordBase + kFreshNciBase,
       L"SubProgNum = 7, MatchSubRefId = 5, INC = 1",
       {R(Le(7), Le(-1), L"m_SubProgNum - -1 vs 7"), R(kTrue, kFalse, L"m_NcIncremental - false vs true", 1),
        R(Le(0x100000005ull), Le(0ull), L"m_matchedSubRefId - 0 vs 5")}});
  ExpectLayout<DbIOFNciCFSubProgRef>({"00 01 00" + kSubProgRef,
                                      L"SubProgNum = -1, MatchSubRefId = 0, CannedRoughOpIdn = 3, INC = 0",
                                      {I(3, L"m_CannedRoughOpIdn - 0 vs 3")}});
  // Intended: "StockY" carries the Z stock.
  ExpectLayout<DbIOFNciCPSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1, MatchSubRefId = 0, nCuts:4, StepX:0.25, OffsetAngle:30, StockX:0.5, StockY:0.75, INC = 0",
       {R(Le(4), Le(2), L"m_nCuts - 2 vs 4"), R(Le(0.25), Le(0.1), L"m_StepX - 0.1 vs 0.25"),
        R(Le(30.0), Le(45.0), L"m_OffsetAngle - 45 vs 30"), R(Le(0.5), Le(0.01), L"m_StockX - 0.01 vs 0.5"),
        R(Le(0.75), Le(0.01), L"m_StockZ - 0.01 vs 0.75")}});
  ExpectLayout<DbIOFNciCRSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1, MatchSubRefId = 0, Direction:-2, Overlap:0.5, RoughStep:0.25, StockX:0.5, StockY:0.75, INC = "
       L"0",
       {R(Le<std::int16_t>(-2), "00 00", L"m_Direction - 0 vs -2"), D(0.5, L"m_Overlap - 0 vs 0.5"),
        R(Le(0.25), Le(0.1), L"m_RoughStep - 0.1 vs 0.25"), R(Le(0.5), Le(0.01), L"m_StockX - 0.01 vs 0.5"),
        R(Le(0.75), Le(0.01), L"m_StockZ - 0.01 vs 0.75")}});
  ExpectLayout<DbIOFNciNonTransSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1 MatchSubRefId = 0 SectionNum = 2 SectionTotal = 5 INC = 0",  // no commas: intended
       {I(2, L"m_SectionNum - 0 vs 2"), I(5, L"m_SectionTotal - 0 vs 5")}});
}

TEST(CannedCycles, Layouts) {
  // The drill's parameters come first in the archive and last in the comparison; the
  // array is its version, count and growth step (8 bytes each), then the values.
  std::string tenZeros = "00 " + Le(10ll) + Le(10ll);
  for (int i = 0; i < 10; ++i) tenZeros += D0;
  ExpectLayout<DbIOFDrill>(
      {"00 00" + kRecordBase + "00 10 00 00  00 00 00 00",
       L"IOF Drill Object",
       {R("00 " + Le(2ll) + Le(10ll) + Le(1.5) + Le(-2.0), tenZeros, L"TotalCustomParams - 10 vs 2"),
        I(81, L"m_CycleType - 0 vs 81"), D(1, L"m_Peck1 - 0 vs 1"), D(2, L"m_Peck2 - 0 vs 2"),
        D(3, L"m_ChipClear - 0 vs 3"), D(4, L"m_ChipRetract - 0 vs 4"), D(5, L"m_BoreShift - 0 vs 5"),
        D(6, L"m_ThreadPitch - 0 vs 6")},
       {1, 2, 3, 4, 5, 6, 7, 0}});
  ExpectLayout<DbIOFDrillPoint>(
      {"00 01 00" + kRecordBase + kFreshNciBase + kFreshBaseMove,
       L"IOF Cycle Repeat Object, INC = 0",
       {R(Pt(1, 2, 3), kP0, L"m_EndPoint1 - (0, 0, 0) vs (1, 2, 3)"),
        R(Pt(1, 2, -3), kP0, L"m_EndPoint2 - (0, 0, 0) vs (1, 2, -3)"), D(0.5, L"m_Dwell - 0 vs 0.5"),
        D(10, L"m_InitHeight - 0 vs 10"), D(2, L"m_RefHeight - 0 vs 2"), D(1, L"m_TopOfStock - 0 vs 1"),
        D(-1, L"m_SelGeoHeight - 0 vs -1"), D(-3, L"m_Bottom - 0 vs -3"), I(1, L"m_ReverseFlag - 0 vs 1")}});
  ExpectLayout<DbIOFThread>({"00" + kRecordBase,
                             L"IOF Thread Object",
                             {I(2, L"m_NumSpringCuts - 0 vs 2"),
                              D(0.1, L"m_FinishAllowance - 0 vs 0.1"),
                              D(0.2, L"m_ThreadPullOff - 0 vs 0.2"),
                              I(3, L"m_NumStarts - 0 vs 3"),
                              R(kFalse, kTrue, L"m_StartClosest - true vs false"),
                              D(0.3, L"m_ClearanceX - 0 vs 0.3"),
                              D(29.5, L"m_LeadInAngle - 0 vs 29.5"),
                              I(1, L"m_EqualDepthMethod - 0 vs 1"),
                              I(8, L"m_NumCuts - 0 vs 8"),
                              D(20, L"m_ThreadStartX - 0 vs 20"),
                              D(18.5, L"m_ThreadEndX - 0 vs 18.5"),
                              D(-1, L"m_ThreadStartZ - 0 vs -1"),
                              D(-30, L"m_ThreadEndZ - 0 vs -30"),
                              D(1.5, L"m_Lead - 0 vs 1.5"),
                              D(0.25, L"m_FirstCut - 0 vs 0.25"),
                              D(0.05, nullptr),  // the last cut: archived, not compared
                              D(2.5, L"m_AccellClearance - 0 vs 2.5"),
                              D(30, L"m_LeadAngle - 0 vs 30"),
                              D(60, L"m_IncludedAngle - 0 vs 60"),
                              I(2, L"m_ThreadType - 0 vs 2"),
                              I(1, L"m_ThreadOrientation - 0 vs 1"),
                              D(19, L"m_TaperEndX - 0 vs 19")}});
  ExpectLayout<DbIOFCannedGroove>(
      {"00" + kRecordBase,
       L"IOF Canned Groove Object",
       {I(1, L"m_ShapeDirection - 0 vs 1"), D(0.5, L"m_RoughStep - 0 vs 0.5"), D(0.1, L"m_RoughStockX - 0 vs 0.1"),
        D(0.2, L"m_RoughStockZ - 0 vs 0.2"), D(1.5, L"m_RoughDwell - 0 vs 1.5"), D(0.3, L"m_DepthInc - 0 vs 0.3"),
        D(0.4, L"m_PeckInc - 0 vs 0.4"), R(kTrue, kFalse, L"m_PeckDo - false vs true"),
        D(0.6, L"m_PeckLast - 0 vs 0.6"), D(0.7, L"m_PeckRetractInc - 0 vs 0.7"),
        I(2, L"m_FinishBackOffsetNum - 0 vs 2"), D(0.8, L"m_FinishStep - 0 vs 0.8"),
        D(0.9, L"m_FinishStockX - 0 vs 0.9"), D(1.1, L"m_FinishStockZ - 0 vs 1.1")}});
  ExpectLayout<DbIOFRotary>(
      {"01" + kRecordBase,
       L"IOF Rotary Object",
       {I(1, L"m_RotaryType - 0 vs 1"), I(2, L"m_RotaryAxis - 0 vs 2"), D(50, L"m_SubDia - 0 vs 50"),
        I(-1, L"m_SubDir - 0 vs -1"), I(3, L"m_SubAxis - 0 vs 3"), D(90, L"m_SubZero - 0 vs 90"),
        R(kTrue, kFalse, L"m_UnrollOn - false vs true"), D(0.01, L"m_UnrollTol - 0 vs 0.01"),
        R(kTrue, kFalse, L"m_AxisSubInterior - false vs true"),
        R(Pt(0, 0, 1), kP0, L"m_RotaryVector - (0, 0, 0) vs (0, 0, 1)", 1)}});
}

TEST(SubProgAndCycles, KindsAndSetters) {
  EXPECT_EQ(DbIOFDrill::Create()->GetListType(), 0x1000);
  auto point = DbIOFDrillPoint::Create();
  point->SetNcIncremental(true);
  EXPECT_EQ(point->ToIOFString(), L"IOF Cycle Repeat Object, INC = 1");
  auto rotary = DbIOFRotary::Create();
  rotary->SetUnrollOn(true);  // a setter without a getter: intended
  EXPECT_EQ(Fields(*rotary)[9], "m_UnrollOn=true");
  // A CP and a CR reference never compare equal, nor a plain list and a drill.
  for (const auto& [a, b] : {std::pair<Quarp::DbPtr<DbIOFBase>, Quarp::DbPtr<DbIOFBase>>{
                                 DbIOFNciCPSubProgRef::Create(), DbIOFNciCRSubProgRef::Create()},
                             {DbIOFNciCRSubProgRef::Create(), DbIOFNciCPSubProgRef::Create()},
                             {DbIOFDrill::Create(), DbIOFList::Create(0x1000)}}) {
    CString report;
    EXPECT_FALSE(a->Compare(b, report));
    EXPECT_EQ(report, L"Incompatible types.\n");
  }
}

TEST(DbIOFDrill, CustomParameters) {
  auto drill = DbIOFDrill::Create();
  Quarp::UtArrayEx<double> params, nine, eleven;
  drill->GetCustomParams(params);
  ASSERT_EQ(params.GetSize(), 10);
  for (const double v : params) EXPECT_EQ(v, 0.0);
  nine.SetSize(9);
  eleven.SetSize(11);
  nine[2] = eleven[2] = params[2] = 1.0;
  params[5] = 2.0;
  EXPECT_FALSE(drill->SetCustomParams(nine));
  EXPECT_FALSE(drill->SetCustomParams(eleven));
  CString report;
  EXPECT_TRUE(DbIOFDrill::Create()->Compare(drill, report));  // the old values were kept
  EXPECT_TRUE(drill->SetCustomParams(params));

  // Each differing entry adds a line, compared exactly, even after an earlier difference.
  auto other = DbIOFDrill::Create();
  EXPECT_FALSE(other->Compare(drill, report));
  EXPECT_EQ(report, L"Difference Detected: CustomParams\nDifference Detected: CustomParams\n");
  other->SetPeck2(0.5);
  params[2] = 0.0;
  params[5] = 2e-9;
  drill->SetCustomParams(params);
  report.Empty();
  EXPECT_FALSE(other->Compare(drill, report));
  EXPECT_EQ(report, L"Difference Detected: m_Peck2 - 0.5 vs 0\nDifference Detected: CustomParams\n");
}

TEST(DbIOFCannedGroove, MovePointsAreComparedAndCopiedButNeverArchived) {
  UtIofMovePoint c90;
  c90.SetValByIndex(5, 90.0);
  using G = DbIOFCannedGroove;
  ExpectReportOrder<G>({
      {[&](G& g, bool on) { g.SetStartPt(on ? c90 : UtIofMovePoint()); },
       L"Difference Detected: m_StartPt - () vs ( C90.00000000000000,)\n"},
      {[&](G& g, bool on) { g.SetEndPt(on ? c90 : UtIofMovePoint()); },
       L"Difference Detected: m_EndPt - () vs ( C90.00000000000000,)\n"},
  });
  auto groove = G::Create();
  groove->SetStartPt(c90);
  groove->SetEndPt(c90);
  auto copy = G::Create();
  copy->Copy(*groove, Quarp::DbCloneMode::Normal, nullptr);
  CString report;
  EXPECT_TRUE(groove->Compare(copy, report));
  EXPECT_EQ(Store(*groove), Store(*G::Create()));
  EXPECT_TRUE(G::Create()->Compare(Loaded<G>(Store(*groove)), report));
  EXPECT_TRUE(report.IsEmpty());
}

}  // namespace
