// The multi-axis move: its dump (without cutter compensation and time, "T"/"F" for the
// post-logic flag), archive bytes, version error, round trips and comparison chain.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFTypeMgr.h>

#include <gtest/gtest.h>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::ExpectReportOrder;
using TestSupport::Hex;
using TestSupport::ToHex;

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

TEST(DbIOFNciMultiAx, ArchiveBytesAndVersionError) {
  auto move = DbIOFNciMultiAx::Create();
  move->SetToolTipPt(GmPoint3D(1, 0, 2));
  move->SetToolOrientVect(GmVector3D(0, 0, 2));  // stored as given, not normalised
  move->SetCompVector(GmVector3D(0, -1, 0));
  move->SetCompOffsetValue(0.5);
  move->SetAddedByPostLogic(true);
  const Bytes bytes = TestSupport::Store(*move);
  EXPECT_EQ(ToHex(bytes),
            ToHex(Hex("00 01 00 00  00 00 00 00  00 00 00 00 00  00"  // versions, empty record base
                      "00 00 00 00 FF FF FF FF 00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00 01"
                      "00 00 00 00 00 00 00 00 01 00 00 00 00"  // the NCI base and base move of a fresh move
                      // m_ToolTipPt (1, 0, 2), m_ToolOrientVect (0, 0, 2), m_CompVector (0, -1, 0)
                      "00 00 00 00 00 00 00 F0 3F 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 40"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 40"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 F0 BF 00 00 00 00 00 00 00 00"
                      "00 00 00 00 00 00 E0 3F"  // m_CompOffsetValue
                      "01")));                   // m_AddedByPostLogic
  auto back = DbIOFNciMultiAx::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  EXPECT_EQ(back->GetToolTipPt(), GmPoint3D(1, 0, 2));
  EXPECT_EQ(back->GetToolOrientVect()[2], 2.0);
  EXPECT_EQ(back->GetCompVector()[1], -1.0);
  EXPECT_EQ(back->GetCompOffsetValue(), 0.5);
  EXPECT_TRUE(back->GetAddedByPostLogic());
  CString report;
  EXPECT_TRUE(back->Compare(move, report)) << report.ToUtf8();

  Bytes newer = bytes;
  newer[0] = 1;
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(*back, newer, &stopped), 2);
  EXPECT_EQ(stopped, bytes.size() - 84);  // none of the own fields was read
}

TEST(DbIOFNciMultiAx, ComparisonOrder) {
  using M = DbIOFNciMultiAx;
  // A difference in the cutter compensation is the base move's: reported as m_CutterComp
  // before anything of this class.
  ExpectReportOrder<M>({
      {[](M& r, bool on) { r.SetCutterComp(on ? 42 : 0); }, L"Difference Detected: m_CutterComp - 0 vs 42\n"},
      {[](M& r, bool on) { r.SetToolTipPt(GmPoint3D(0, on ? 1 : 0, 0)); },
       L"Difference Detected: m_ToolTipPt - (0, 0, 0) vs (0, 1, 0)\n"},
      {[](M& r, bool on) { r.SetToolOrientVect(GmVector3D(0, 0, on ? 1 : 0)); },
       L"Difference Detected: m_ToolOrientVect - (0, 0, 0) vs (0, 0, 1)\n"},
      {[](M& r, bool on) { r.SetCompVector(GmVector3D(on ? -0.5 : 0, 0, 0)); },
       L"Difference Detected: m_CompVector - (0, 0, 0) vs (-0.5, 0, 0)\n"},
      {[](M& r, bool on) { r.SetCompOffsetValue(on ? 0.25 : 0); },
       L"Difference Detected: m_CompOffsetValue - 0 vs 0.25\n"},
      {[](M& r, bool on) { r.SetAddedByPostLogic(on); }, L"Difference Detected: m_AddedByPostLogic - false vs true\n"},
  });

  auto a = M::Create();
  auto b = M::Create();
  b->SetCutterComp(40);
  CString report;
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_CutterComp - 0 vs 40\n");
  b->SetCutterComp(0);
  b->SetTime(9);                             // never compared for moves
  b->SetCompVector(GmVector3D(0, 0, 5e-7));  // within the tolerance
  report.Empty();
  EXPECT_TRUE(a->Compare(b, report));
  EXPECT_FALSE(a->Compare(DbIOFNciLinear::Create(), report));
  EXPECT_EQ(report, L"Incompatible types.\n");
}

TEST(DbIOFNciMultiAx, CloneFileRoundTripAndTypes) {
  Quarp::DbMgr mgr;
  auto move = DbIOFNciMultiAx::Create();
  move->SetToolTipPt(GmPoint3D(7, 8, 9));
  move->SetToolOrientVect(GmVector3D(0, 1, 0));
  move->SetCompVector(GmVector3D(0.5, 0, 0));
  move->SetCompOffsetValue(1.5);
  move->SetAddedByPostLogic(true);
  move->SetTime(4);
  const Quarp::DbId id = mgr.Add(move);

  Quarp::DbMgr other;
  Quarp::DbErr err{};
  auto* clone = dynamic_cast<DbIOFNciMultiAx*>(move->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err));
  ASSERT_NE(clone, nullptr);
  TestSupport::RecordingVisitor original, copied;
  move->VisitFields(original);
  clone->VisitFields(copied);
  EXPECT_EQ(copied.fields, original.fields);
  EXPECT_EQ(copied.fields.back(), "m_AddedByPostLogic=true");

  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  Quarp::DbCPtr<DbIOFNciMultiAx> p;
  ASSERT_TRUE(back.Get(p, id, 0));
  EXPECT_EQ(p->ToIOFString(), move->ToIOFString());
  EXPECT_EQ(p->GetCompOffsetValue(), 1.5);
  EXPECT_EQ(p->GetTime(), 4.0);

  EXPECT_TRUE(p->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMOVEMask(), true));
  EXPECT_FALSE(p->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMOVEMask(), false));
  EXPECT_TRUE(p->ContainsType(DbIOFTypeMgr::GetIOFNCIMULTIAXMask(), false));
  EXPECT_FALSE(p->ContainsType(DbIOFTypeMgr::GetIOFMOTIONBLOCKMask(), true));
  EXPECT_TRUE(p->ContainsType(0x5107));
  EXPECT_EQ(p->GetClass(), L"DbIOFNciMultiAx");
}

}  // namespace
