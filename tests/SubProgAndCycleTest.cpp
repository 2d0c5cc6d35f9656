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
       {Int("m_SubProgNum", 7, -1),
        Bool("m_NcIncremental", true, 1),
        {Le(0x100000005ull), Le(0ull), L"m_matchedSubRefId - 0 vs 5", 0, ~0u, "m_matchedSubRefId=#4294967301"}}});
  ExpectLayout<DbIOFNciCFSubProgRef>({"00 01 00" + kSubProgRef,
                                      L"SubProgNum = -1, MatchSubRefId = 0, CannedRoughOpIdn = 3, INC = 0",
                                      {Int("m_CannedRoughOpIdn", 3)}});
  // Intended: "StockY" carries the Z stock.
  ExpectLayout<DbIOFNciCPSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1, MatchSubRefId = 0, nCuts:4, StepX:0.25, OffsetAngle:30, StockX:0.5, StockY:0.75, INC = 0",
       {Int("m_nCuts", 4, 2), Real("m_StepX", 0.25, 0.1), Real("m_OffsetAngle", 30, 45), Real("m_StockX", 0.5, 0.01),
        Real("m_StockZ", 0.75, 0.01)}});
  ExpectLayout<DbIOFNciCRSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1, MatchSubRefId = 0, Direction:-2, Overlap:0.5, RoughStep:0.25, StockX:0.5, StockY:0.75, INC = "
       L"0",
       {Short("m_Direction", -2), Real("m_Overlap", 0.5), Real("m_RoughStep", 0.25, 0.1), Real("m_StockX", 0.5, 0.01),
        Real("m_StockZ", 0.75, 0.01)}});
  ExpectLayout<DbIOFNciNonTransSubProgRef>(
      {"00 01 00" + kSubProgRef,
       L"SubProgNum = -1 MatchSubRefId = 0 SectionNum = 2 SectionTotal = 5 INC = 0",  // no commas: intended
       {Int("m_SectionNum", 2), Int("m_SectionTotal", 5)}});
}

TEST(CannedCycles, Layouts) {
  // The drill's parameters come first in the archive and last in the comparison; the
  // array is its version, count and growth step (8 bytes each), then the values.
  std::string tenZeros = "00 " + Le(10ll) + Le(10ll);
  for (int i = 0; i < 10; ++i) tenZeros += D0;
  ExpectLayout<DbIOFDrill>({"00 00" + kRecordBase + "00 10 00 00  00 00 00 00",
                            L"IOF Drill Object",
                            {{"00 " + Le(2ll) + Le(10ll) + Le(1.5) + Le(-2.0), tenZeros, L"TotalCustomParams - 10 vs 2",
                              0, ~0u, "m_CustomParams=[{value=1.5},{value=-2}]"},
                             Int("m_CycleType", 81),
                             Real("m_Peck1", 1),
                             Real("m_Peck2", 2),
                             Real("m_ChipClear", 3),
                             Real("m_ChipRetract", 4),
                             Real("m_BoreShift", 5),
                             Real("m_ThreadPitch", 6)},
                            {1, 2, 3, 4, 5, 6, 7, 0}});
  ExpectLayout<DbIOFDrillPoint>({"00 01 00" + kRecordBase + kFreshNciBase + kFreshBaseMove,
                                 L"IOF Cycle Repeat Object, INC = 0",
                                 {Point("m_EndPoint1", 1, 2, 3), Point("m_EndPoint2", 1, 2, -3), Real("m_Dwell", 0.5),
                                  Real("m_InitHeight", 10), Real("m_RefHeight", 2), Real("m_TopOfStock", 1),
                                  Real("m_SelGeoHeight", -1), Real("m_Bottom", -3), Int("m_ReverseFlag", 1)}});
  // The last cut is archived, not compared.
  ExpectLayout<DbIOFThread>(
      {"00" + kRecordBase, L"IOF Thread Object",
       Join({{Int("m_NumSpringCuts", 2), Real("m_FinishAllowance", 0.1), Real("m_ThreadPullOff", 0.2),
              Int("m_NumStarts", 3), Bool("m_StartClosest", false), Real("m_ClearanceX", 0.3),
              Real("m_LeadInAngle", 29.5), Int("m_EqualDepthMethod", 1), Int("m_NumCuts", 8),
              Real("m_ThreadStartX", 20), Real("m_ThreadEndX", 18.5)},
             {Real("m_ThreadStartZ", -1), Real("m_ThreadEndZ", -30), Real("m_Lead", 1.5), Real("m_FirstCut", 0.25),
              Real("m_LastCut", 0.05, 0, 0, kNotCompared), Real("m_AccellClearance", 2.5), Real("m_LeadAngle", 30),
              Real("m_IncludedAngle", 60), Int("m_ThreadType", 2), Int("m_ThreadOrientation", 1),
              Real("m_TaperEndX", 19)}})});
  ExpectLayout<DbIOFCannedGroove>({"00" + kRecordBase,
                                   L"IOF Canned Groove Object",
                                   {Int("m_ShapeDirection", 1),
                                    Real("m_RoughStep", 0.5),
                                    Real("m_RoughStockX", 0.1),
                                    Real("m_RoughStockZ", 0.2),
                                    Real("m_RoughDwell", 1.5),
                                    Real("m_DepthInc", 0.3),
                                    Real("m_PeckInc", 0.4),
                                    Bool("m_PeckDo"),
                                    Real("m_PeckLast", 0.6),
                                    Real("m_PeckRetractInc", 0.7),
                                    Int("m_FinishBackOffsetNum", 2),
                                    Real("m_FinishStep", 0.8),
                                    Real("m_FinishStockX", 0.9),
                                    Real("m_FinishStockZ", 1.1),
                                    {"", "", L"", 0, ~0u, "m_StartPt=()\nm_EndPt=()"}}});  // visited, never archived
  ExpectLayout<DbIOFRotary>({"01" + kRecordBase,
                             L"IOF Rotary Object",
                             {Int("m_RotaryType", 1), Int("m_RotaryAxis", 2), Real("m_SubDia", 50), Int("m_SubDir", -1),
                              Int("m_SubAxis", 3), Real("m_SubZero", 90), Bool("m_UnrollOn"), Real("m_UnrollTol", 0.01),
                              Bool("m_AxisSubInterior"), Point("m_RotaryVector", 0, 0, 1, 1)}});
}

TEST(SubProgAndCycles, KindsAndSetters) {
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
