// The NCI base levels and the linear move: texts, the time rule, archive bytes, the old
// base-move layout, the version checks, and the comparison chain that skips the NCI base.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFNciLinear.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>

using namespace IOF;
using namespace TestSupport;

namespace {

// Linear, base-move and NCI-base versions, then the record base.
const std::string kHead = "00 01 00" + kRecordBase;

TEST(DbIOFNciLinear, Texts) {
  auto line = DbIOFNciLinear::Create();
  EXPECT_EQ(line->ToIOFString(), L"G0 0 0.000000 0.000000 0.000000 0.000000 0 ContourPosition.Before t=0s INC = 0");
  line->SetGCode(1);
  line->SetCutterComp(41);
  line->SetEndPoint(GmPoint3D(1.5, -2, 0.25));
  line->SetFeedRate(250);
  line->SetPositionCode(3);
  line->SetContourPosition(ContourPositionState::LeadOut);
  line->SetTime(0.75);
  line->SetNcIncremental(true);
  EXPECT_EQ(line->ToIOFString(),
            L"G1 41 1.500000 -2.000000 0.250000 250.000000 3 ContourPosition.LeadOut t=0.75s INC = 1");
  EXPECT_EQ(line->DbIOFNciBaseMove::ToIOFString(), L"IOF NCI Base Motion Object");
  EXPECT_EQ(line->DbIOFNciBase::ToIOFString(), L"IOF NCI Base Object");

  const wchar_t* texts[] = {L"ContourPosition.Unresolved",
                            L"ContourPosition.Before",
                            L"ContourPosition.LeadIn",
                            L"ContourPosition.Contour",
                            L"ContourPosition.LeadOut",
                            L"ContourPosition.After",
                            L"ContourPosition.Transition",
                            L"",
                            L""};
  for (int v = 0; v < 9; ++v) {
    line->SetContourPosition(static_cast<ContourPositionState>(v == 8 ? -1 : v));
    EXPECT_EQ(line->GetContourPositionString(), texts[v]) << v;
  }
}

TEST(DbIOFNciBase, TimeRule) {
  const double inf = std::numeric_limits<double>::infinity();
  const std::pair<double, double> cases[] = {
      {0.0009, 0.0}, {-5, 0.0},  {0.001, 0.001}, {12.5, 12.5}, {std::numeric_limits<double>::quiet_NaN(), 0.0},
      {inf, 0.0},    {-inf, 0.0}};
  auto line = DbIOFNciLinear::Create();
  for (const auto& [in, stored] : cases) {
    line->SetTime(in);
    EXPECT_EQ(line->GetTime(), stored) << in;
  }
  // The rule applies to a loaded time as well.
  line->SetTime(1.0);
  Bytes small = Store(*line);
  const double tiny = 0.0004;
  std::memcpy(small.data() + 3 + kRecordBaseSize + 8, &tiny, 8);
  ASSERT_TRUE(LoadAll(*line, small));
  EXPECT_EQ(line->GetTime(), 0.0);
}

TEST(DbIOFNciLinear, ArchiveAndVersions) {
  auto line = DbIOFNciLinear::Create();
  line->SetGCode(1);
  line->SetTime(0.5);
  line->SetFeedRate(1.0);
  line->SetEndPoint(GmPoint3D(0, 0, 1.0));
  line->SetNcIncremental(true);
  ExpectArchive(*line, kHead +
                           "01 00 00 00"               // m_GCode
                           "FF FF FF FF"               // m_OwnerOpId
                           "00 00 00 00 00 00 E0 3F"   // m_Time
                           "00 00 00 00 00 00 F0 3F"   // m_FeedRate
                           "01"                        // m_bIsFeedMove
                           "00 00 00 00  00 00 00 00"  // m_CutterComp, m_PositionCode
                           "01 00 00 00"               // m_ContourPosition
                           "01"                        // m_NcIncremental
                           "00" +
                           kZero + kZero + kOne);  // m_EndPoint: version, x, y, z
  const std::size_t own = 3 + kRecordBaseSize + kNciBaseSize + kBaseMoveSize;
  ExpectNewerVersionRefused(*line, 0, own);  // everything but the end point was read
  ExpectNewerVersionRefused(*line, 1, 3 + kRecordBaseSize + kNciBaseSize);
  ExpectNewerVersionRefused(*line, 2, 3 + kRecordBaseSize);
  ExpectNewerVersionRefused(*line, 3, 4);
}

TEST(DbIOFNciLinear, AVersion0BaseMoveHasNoIncrementalFlag) {
  // The base-move version is 0 and the flag's byte is absent; the end point follows.
  const Bytes v0 = Hex("00 00 00" + kRecordBase + kFreshNciBase +
                       "00 00 00 00 00 00 00 00  00  00 00 00 00  00 00 00 00  02 00 00 00"
                       "00 00 00 00 00 00 00 00 40" +
                       kZero + kZero);
  auto line = DbIOFNciLinear::Create();
  line->SetNcIncremental(true);
  ASSERT_TRUE(LoadAll(*line, v0));
  EXPECT_TRUE(line->GetNcIncremental());  // not in the layout: left as it was before the load
  auto fresh = DbIOFNciLinear::Create();
  ASSERT_TRUE(LoadAll(*fresh, v0));
  ExpectFields(*fresh, {kRecordBaseFields,
                        kNciBaseFields,
                        {"m_FeedRate=0", "m_bIsFeedMove=false", "m_CutterComp=0", "m_PositionCode=0",
                         "m_ContourPosition=2", "m_NcIncremental=false", "m_EndPoint=(2,0,0)"}});
}

TEST(DbIOFNciLinear, ComparisonSkipsTheNciBase) {
  using L = DbIOFNciLinear;
  ExpectReportOrder<L>({
      // G-code, owner and time are never compared for moves.
      {[](L& r, bool) { r.SetGCode(1); }, nullptr},
      {[](L& r, bool) { r.SetOperationId(4); }, nullptr},
      {[](L& r, bool) { r.SetTime(30); }, nullptr},
      {[](L& r, bool on) { r.SetIOFName(on ? L"n" : L""); }, L"Difference Detected: m_Name -  vs n\n"},
      {[](L& r, bool on) { r.SetFeedRate(on ? 5 : 0); }, L"Difference Detected: m_FeedRate - 0 vs 5\n"},
      {[](L& r, bool on) { r.SetIsFeedMove(!on); }, L"Difference Detected: m_bIsFeedMove - true vs false\n"},
      {[](L& r, bool on) { r.SetCutterComp(on ? 1 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 1\n"},
      {[](L& r, bool on) { r.SetPositionCode(on ? 2 : 0); }, L"Difference Detected: m_PositionCode - 0 vs 2\n"},
      {[](L& r, bool on) { r.SetContourPosition(on ? ContourPositionState::After : ContourPositionState::Before); },
       L"Difference Detected: m_ContourPosition - 1 vs 5\n"},
      {[](L& r, bool on) { r.SetNcIncremental(on); }, L"Difference Detected: m_NcIncremental - false vs true\n"},
      // What is left, 5e-7 in x, is within the tolerance.
      {[](L& r, bool on) { r.SetEndPoint(GmPoint3D(on ? 1 : 5e-7, 0, 0)); },
       L"Difference Detected: m_EndPoint - (0, 0, 0) vs (1, 0, 0)\n"},
  });
}

}  // namespace
