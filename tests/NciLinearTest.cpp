// The NCI base levels and the linear move: texts, the time rule, archive bytes, the old
// base-move layout, and the comparison chain that skips the NCI base.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFList.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFTypeMgr.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

// Linear, base-move, NCI-base and record-base versions; empty name, attributes, sub-lists.
const std::string kHead = "00 01 00 00  00 00 00 00  00 00 00 00 00  00";

TEST(DbIOFNciLinear, AFreshMovePrintsItsDefaults) {
  auto line = DbIOFNciLinear::Create();
  EXPECT_EQ(line->ToIOFString(), L"G0 0 0.000000 0.000000 0.000000 0.000000 0 ContourPosition.Before t=0s INC = 0");
  EXPECT_EQ(line->GetOperationId(), -1);
  EXPECT_TRUE(line->GetIsFeedMove());
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
}

TEST(DbIOFNciLinear, ContourPositionTexts) {
  const wchar_t* texts[] = {L"ContourPosition.Unresolved", L"ContourPosition.Before",  L"ContourPosition.LeadIn",
                            L"ContourPosition.Contour",    L"ContourPosition.LeadOut", L"ContourPosition.After",
                            L"ContourPosition.Transition", L"",                        L""};
  auto line = DbIOFNciLinear::Create();
  for (int v = 0; v < 9; ++v) {
    line->SetContourPosition(static_cast<ContourPositionState>(v == 8 ? -1 : v));
    EXPECT_EQ(line->GetContourPositionString(), texts[v]) << v;
  }
}

TEST(DbIOFNciBase, TimeRule) {
  struct Case {
    double in;
    double stored;
  };
  const Case cases[] = {{0.0009, 0.0},
                        {-5, 0.0},
                        {0.001, 0.001},
                        {12.5, 12.5},
                        {std::numeric_limits<double>::quiet_NaN(), 0.0},
                        {std::numeric_limits<double>::infinity(), 0.0},
                        {-std::numeric_limits<double>::infinity(), 0.0}};
  auto line = DbIOFNciLinear::Create();
  for (const Case& c : cases) {
    line->SetTime(c.in);
    EXPECT_EQ(line->GetTime(), c.stored) << c.in;
  }
}

TEST(DbIOFNciLinear, ArchiveBytes) {
  auto line = DbIOFNciLinear::Create();
  line->SetGCode(1);
  line->SetTime(0.5);
  line->SetFeedRate(1.0);
  line->SetEndPoint(GmPoint3D(0, 0, 1.0));
  line->SetNcIncremental(true);
  const Bytes bytes = TestSupport::Store(*line);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex(kHead +
                                    "01 00 00 00"                       // m_GCode
                                    "FF FF FF FF"                       // m_OwnerOpId
                                    "00 00 00 00 00 00 E0 3F"           // m_Time
                                    "00 00 00 00 00 00 F0 3F"           // m_FeedRate
                                    "01"                                // m_bIsFeedMove
                                    "00 00 00 00  00 00 00 00"          // m_CutterComp, m_PositionCode
                                    "01 00 00 00"                       // m_ContourPosition
                                    "01"                                // m_NcIncremental
                                    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 F0 3F")));
  auto back = DbIOFNciLinear::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  CString report;
  EXPECT_TRUE(back->Compare(line, report)) << report;
  EXPECT_EQ(back->ToIOFString(), line->ToIOFString());
}

TEST(DbIOFNciLinear, AVersion0BaseMoveHasNoIncrementalFlag) {
  // The base-move version is 0 and the flag's byte is absent; the end point follows.
  const Bytes v0 = Hex("00 00 00 00  00 00 00 00  00 00 00 00 00  00"
                       "01 00 00 00 FF FF FF FF 00 00 00 00 00 00 00 00"
                       "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 02 00 00 00"
                       "00 00 00 00 00 00 00 00 40 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
  auto line = DbIOFNciLinear::Create();
  line->SetNcIncremental(true);
  ASSERT_TRUE(TestSupport::LoadAll(*line, v0));
  EXPECT_TRUE(line->GetNcIncremental());  // not in the layout: left as it was before the load
  auto fresh = DbIOFNciLinear::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*fresh, v0));
  EXPECT_FALSE(fresh->GetNcIncremental());  // the construction default
  EXPECT_EQ(fresh->GetContourPosition(), ContourPositionState::LeadIn);
  EXPECT_FALSE(fresh->GetIsFeedMove());
  EXPECT_EQ(fresh->GetEndPoint(), GmPoint3D(2.0, 0, 0));
}

TEST(DbIOFNciLinear, NewerVersionsAndLoadedTimesAreChecked) {
  auto line = DbIOFNciLinear::Create();
  Bytes bytes = TestSupport::Store(*line);
  Bytes newerLinear = bytes;
  newerLinear[0] = 1;
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(*line, newerLinear, &stopped), 2);
  EXPECT_EQ(stopped, bytes.size() - 25);  // everything but the end point was read
  Bytes newerMove = bytes;
  newerMove[1] = 2;
  EXPECT_EQ(TestSupport::LoadCause(*line, newerMove), 2);

  // A stored time below the rule's threshold loads as 0.
  line->SetTime(1.0);
  Bytes small = TestSupport::Store(*line);
  const double tiny = 0.0004;
  std::memcpy(small.data() + 22, &tiny, 8);
  auto back = DbIOFNciLinear::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, small));
  EXPECT_EQ(back->GetTime(), 0.0);
}

TEST(DbIOFNciLinear, ComparisonSkipsTheNciBase) {
  auto a = DbIOFNciLinear::Create();
  auto b = DbIOFNciLinear::Create();
  b->SetGCode(1);
  b->SetTime(30);
  b->SetOperationId(4);
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // G-code, owner and time are never compared for moves
  EXPECT_TRUE(report.IsEmpty());
  b->SetEndPoint(GmPoint3D(5e-7, 0, 0));
  EXPECT_TRUE(a->Compare(b, report));
  b->SetCutterComp(1);
  b->SetEndPoint(GmPoint3D(1, 0, 0));
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_CutterComp - 0 vs 1\n");  // the base move comes first
  b->SetCutterComp(0);
  report.Empty();
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_EndPoint - (0, 0, 0) vs (1, 0, 0)\n");
  b->SetEndPoint(GmPoint3D());
  b->SetContourPosition(ContourPositionState::After);
  report.Empty();
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_ContourPosition - 1 vs 5\n");

  auto list = DbIOFList::Create(0);
  report.Empty();
  EXPECT_FALSE(a->Compare(list, report));
  EXPECT_EQ(report, L"Incompatible types.\n");
}

TEST(DbIOFNciLinear, TypeAnswers) {
  auto line = DbIOFNciLinear::Create();
  EXPECT_TRUE(line->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMask(), true));
  EXPECT_FALSE(line->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMask(), false));
  EXPECT_TRUE(line->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMOVEMask(), true));
  EXPECT_TRUE(line->ContainsType(DbIOFTypeMgr::GetIOFNCILINEARMask(), false));
  EXPECT_TRUE(line->ContainsType(0x5100));
  EXPECT_TRUE(line->ContainsType(0x5103));
  EXPECT_FALSE(line->ContainsType(0x5105));
  EXPECT_EQ(line->GetClass(), L"DbIOFNciLinear");
  EXPECT_EQ(line->DbIOFNciBaseMove::GetClass(), L"DbIOFNciBaseMove");
  EXPECT_EQ(line->GetSubclassLevel(0), 5);
  EXPECT_STREQ(line->GetObjectClassName(), "DbIOFNciLinear");
  // Files hold millions of moves: a linear move must stay this small.
  EXPECT_LE(sizeof(DbIOFNciLinear), 120u);
}

TEST(DbIOFNciLinear, VisitsEveryField) {
  auto line = DbIOFNciLinear::Create();
  line->SetEndPoint(GmPoint3D(1, 2, 3));
  TestSupport::RecordingVisitor v;
  line->VisitFields(v);
  EXPECT_EQ(v.fields, (std::vector<std::string>{"m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]",
                                                "m_GCode=0", "m_OwnerOpId=-1", "m_Time=0", "m_FeedRate=0",
                                                "m_bIsFeedMove=true", "m_CutterComp=0", "m_PositionCode=0",
                                                "m_ContourPosition=1", "m_NcIncremental=false",
                                                "m_EndPoint=(1,2,3)"}));
}

TEST(DbIOFNciLinear, CloneAndFileRoundTrip) {
  Quarp::DbMgr mgr;
  auto line = DbIOFNciLinear::Create();
  line->SetEndPoint(GmPoint3D(4, 5, 6));
  line->SetTime(2);
  mgr.Add(line);
  Quarp::DbMgr other;
  Quarp::DbErr err{};
  auto* clone = dynamic_cast<DbIOFNciLinear*>(line->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err));
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetEndPoint(), GmPoint3D(4, 5, 6));
  EXPECT_EQ(clone->GetTime(), 2);
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  Quarp::DbCPtr<DbIOFNciLinear> p;
  ASSERT_TRUE(back.Get(p, Quarp::DbId(1), 0));
  EXPECT_EQ(p->GetEndPoint(), GmPoint3D(4, 5, 6));
}

}  // namespace
