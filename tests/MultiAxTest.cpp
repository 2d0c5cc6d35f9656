// The multi-axis move: its dump (without cutter compensation and time, "T"/"F" for the
// post-logic flag: "T" in the layout table) and its layout table.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFNciMultiAx.h>

#include <gtest/gtest.h>

using namespace IOF;
using namespace TestSupport;

namespace {

TEST(DbIOFNciMultiAx, DumpTexts) {
  auto move = DbIOFNciMultiAx::Create();
  EXPECT_EQ(move->ToIOFString(),
            L"G0 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 0.000000 0 ContourPosition.Before "
            L"0.000000 0.000000 0.000000 F INC = 0");
  EXPECT_EQ(move->GetCompOffsetValue(), 0.0);
  EXPECT_FALSE(move->GetAddedByPostLogic());
  move->SetGCode(1);
  move->SetToolTipPt(GmPoint3D(1.5, -2, 3));
  move->SetToolOrientVect(GmVector3D(0, 0.6, 0.8));
  move->SetFeedRate(250);
  move->SetPositionCode(4);
  move->SetContourPosition(ContourPositionState::LeadIn);
  move->SetCompVector(GmVector3D(1, 0, 0));
  move->SetNcIncremental(true);
  // Neither of these three shows in the text.
  move->SetCutterComp(41);
  move->SetTime(2.5);
  move->SetCompOffsetValue(0.75);
  EXPECT_EQ(move->ToIOFString(),
            L"G1 1.500000 -2.000000 3.000000 0.000000 0.600000 0.800000 250.000000 4 ContourPosition.LeadIn "
            L"1.000000 0.000000 0.000000 F INC = 1");
}

// The orientation is stored as given, not normalised. Of the base move, the cutter
// compensation is compared before anything of this class and the time never; what is
// left in a vector (5e-7) is within the tolerance.
TEST(DbIOFNciMultiAx, Layout) {
  ExpectLayout<DbIOFNciMultiAx>(
      {"00 01 00" + kRecordBase + kFreshNciBase + kFreshBaseMove,
       L"G0 1.000000 0.000000 2.000000 0.000000 0.000000 2.000000 0.000000 0 ContourPosition.Before "
       L"0.000000 -1.000000 0.000000 T INC = 0",
       {R(Pt(1, 0, 2), kP0, L"m_ToolTipPt - (0, 0, 0) vs (1, 0, 2)"),
        R(Pt(0, 0, 2), kP0, L"m_ToolOrientVect - (0, 0, 0) vs (0, 0, 2)"),
        R(Pt(0, -1, 0), kP0, L"m_CompVector - (0, 0, 0) vs (0, -1, 0)"), D(0.5, L"m_CompOffsetValue - 0 vs 0.5"),
        Flag(L"m_AddedByPostLogic - false vs true")},
       {},
       "m_ToolTipPt=(1,0,2) m_ToolOrientVect=<0,0,2> m_CompVector=<0,-1,0> m_CompOffsetValue=0.5 "
       "m_AddedByPostLogic=true"});
  using M = DbIOFNciMultiAx;
  ExpectReportOrder<M>({
      {[](M& r, bool) { r.SetTime(9); }, nullptr},
      {[](M& r, bool) { r.SetCompVector(GmVector3D(0, 0, 5e-7)); }, nullptr},
      {[](M& r, bool on) { r.SetCutterComp(on ? 42 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 42\n"},
  });
}

}  // namespace
