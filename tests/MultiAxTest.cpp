// The multi-axis move: its dump (without cutter compensation and time, "T"/"F" for the
// post-logic flag), archive bytes, version error, round trips and comparison chain.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

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
  struct Case {
    bool added;
    const wchar_t* text;
  };
  const Case cases[] = {
      {true,
       L"G1 1.500000 -2.000000 3.000000 0.000000 0.600000 0.800000 250.000000 4 ContourPosition.LeadIn "
       L"1.000000 0.000000 0.000000 T INC = 1"},
      {false,
       L"G1 1.500000 -2.000000 3.000000 0.000000 0.600000 0.800000 250.000000 4 ContourPosition.LeadIn "
       L"1.000000 0.000000 0.000000 F INC = 1"},
  };
  for (const Case& c : cases) {
    move->SetAddedByPostLogic(c.added);
    EXPECT_EQ(move->ToIOFString(), c.text);
  }
}

TEST(DbIOFNciMultiAx, ArchiveAndVersion) {
  auto move = DbIOFNciMultiAx::Create();
  move->SetToolTipPt(GmPoint3D(1, 0, 2));
  move->SetToolOrientVect(GmVector3D(0, 0, 2));  // stored as given, not normalised
  move->SetCompVector(GmVector3D(0, -1, 0));
  move->SetCompOffsetValue(0.5);
  move->SetAddedByPostLogic(true);
  move->SetTime(4);
  const std::string head =
      "00 01 00" + kRecordBase + "00 00 00 00 FF FF FF FF 00 00 00 00 00 00 10 40" + kFreshBaseMove;
  ExpectArchive(*move, head +
                           // m_ToolTipPt (1, 0, 2), m_ToolOrientVect (0, 0, 2), m_CompVector (0, -1, 0)
                           "00" + kOne + kZero + "00 00 00 00 00 00 00 40" + "00" + kZero + kZero +
                           "00 00 00 00 00 00 00 40" + "00" + kZero + "00 00 00 00 00 00 F0 BF" + kZero +
                           "00 00 00 00 00 00 E0 3F"                                        // m_CompOffsetValue
                           "01");                                                           // m_AddedByPostLogic
  ExpectNewerVersionRefused(*move, 0, 3 + kRecordBaseSize + kNciBaseSize + kBaseMoveSize);  // no own field read
  ExpectFields(*move, {kRecordBaseFields,
                       {"m_GCode=0", "m_OwnerOpId=-1", "m_Time=4"},
                       kBaseMoveFields,
                       {"m_ToolTipPt=(1,0,2)", "m_ToolOrientVect=<0,0,2>", "m_CompVector=<0,-1,0>",
                        "m_CompOffsetValue=0.5", "m_AddedByPostLogic=true"}});
}

TEST(DbIOFNciMultiAx, ComparisonOrder) {
  using M = DbIOFNciMultiAx;
  // A difference in the cutter compensation is the base move's: reported as m_CutterComp
  // before anything of this class. Time and the 5e-7 left in the vector are never reported.
  ExpectReportOrder<M>({
      {[](M& r, bool) { r.SetTime(9); }, nullptr},
      {[](M& r, bool on) { r.SetCutterComp(on ? 42 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 42\n"},
      {[](M& r, bool on) { r.SetToolTipPt(GmPoint3D(0, on ? 1 : 0, 0)); },
       L"Difference Detected: m_ToolTipPt - (0, 0, 0) vs (0, 1, 0)\n"},
      {[](M& r, bool on) { r.SetToolOrientVect(GmVector3D(0, 0, on ? 1 : 0)); },
       L"Difference Detected: m_ToolOrientVect - (0, 0, 0) vs (0, 0, 1)\n"},
      {[](M& r, bool on) { r.SetCompVector(GmVector3D(on ? -0.5 : 0, 0, on ? 0 : 5e-7)); },
       L"Difference Detected: m_CompVector - (0, 0, 0) vs (-0.5, 0, 0)\n"},
      {[](M& r, bool on) { r.SetCompOffsetValue(on ? 0.25 : 0); },
       L"Difference Detected: m_CompOffsetValue - 0 vs 0.25\n"},
      {[](M& r, bool on) { r.SetAddedByPostLogic(on); }, L"Difference Detected: m_AddedByPostLogic - false vs true\n"},
  });
}

}  // namespace
