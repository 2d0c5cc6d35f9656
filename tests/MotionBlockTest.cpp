// The motion blocks: dumps (plane texts of the arc block included), archive bytes,
// version errors, round trips, the comparison chains with the move point's C-only
// equality, the multi-axis block's skipped end point, getters and type answers.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFDrillMotionBlock.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFMultiAxMotionBlock.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFTypeMgr.h>

#include <quarp/UtSerialize.h>

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::ExpectReportOrder;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

// A move point with the given axes (index, value) set.
UtIofMovePoint Pt(std::initializer_list<std::pair<int, double>> axes) {
  UtIofMovePoint p;
  for (const auto& [i, v] : axes) p.SetValByIndex(i, v);
  return p;
}

// Every field, base class first, as the visitor lists them.
std::vector<std::string> FieldsOf(const DbIOFBase& r) {
  TestSupport::RecordingVisitor v;
  r.VisitFields(v);
  return v.fields;
}

TEST(MotionBlocks, DumpTexts) {
  auto block = DbIOFMotionBlock::Create();
  EXPECT_EQ(block->ToIOFString(), L"DbIOFMotionBlock End: ()");
  block->SetEndPt(Pt({{0, 1.5}}));
  EXPECT_EQ(block->ToIOFString(), L"DbIOFMotionBlock End: ( X1.50000000000000,)");

  auto arc = DbIOFArcMotionBlock::Create();
  arc->SetNCPlane(IofArcPlaneType::XZ);
  arc->SetStartPt(Pt({{0, 1}, {1, 2}}));
  arc->SetCenterPt(Pt({{5, 0.5}}));
  arc->SetEndPt(Pt({{2, -3}}));
  arc->SetReverseForPost(true);
  EXPECT_EQ(arc->ToIOFString(),
            L"DbIOFArcMotionBlock Pl:G18; St:( X1.00000000000000, Y2.00000000000000,); Ctr:( C0.50000000000000,); "
            L"End: ( Z-3.00000000000000,), reverse=1");

  auto drill = DbIOFDrillMotionBlock::Create();
  drill->SetEndPoint1(Pt({{2, 1}}));
  drill->SetEndPoint2(Pt({{2, -2}}));
  EXPECT_EQ(drill->ToIOFString(), L"DbIOFDrillMotionBlock End1:( Z1.00000000000000,); End2:( Z-2.00000000000000,)");

  auto multi = DbIOFMultiAxMotionBlock::Create();
  EXPECT_EQ(multi->ToIOFString(),
            L"DbIOFMultiAxMotionBlock End: (), No Comp End: (0.000000,0.000000,0.000000), G43.4 End: "
            L"(0.000000,0.000000,0.000000), G43 End: (0.000000,0.000000,0.000000), Input XYZ IJK: "
            L"(0.000000,0.000000,0.000000 0.000000,0.000000,0.000000)");
  multi->SetEndPt(Pt({{0, 1}, {1, 2}}));
  multi->SetNoCompEndPt(GmPoint3D(1, 2, 3));
  multi->SetG434EndPt(GmPoint3D(4, 5, 6));
  multi->SetG43EndPt(GmPoint3D(7, 8, 9));
  multi->SetInputPt(GmPoint3D(0.5, -0.5, 0));
  multi->SetToolOrientVec(GmVector3D(0, 0, 1));
  EXPECT_EQ(multi->ToIOFString(),
            L"DbIOFMultiAxMotionBlock End: ( X1.00000000000000, Y2.00000000000000,), No Comp End: "
            L"(1.000000,2.000000,3.000000), G43.4 End: (4.000000,5.000000,6.000000), G43 End: "
            L"(7.000000,8.000000,9.000000), Input XYZ IJK: (0.500000,-0.500000,0.000000 0.000000,0.000000,1.000000)");
}

TEST(DbIOFArcMotionBlock, PlaneTexts) {
  struct Case {
    int plane;
    const wchar_t* text;
  };
  // Unlike the planar arc move, values outside 0..3 print an empty text.
  const Case cases[] = {{0, L"DbIOFArcMotionBlock Pl:G17; St:(); Ctr:(); End: (), reverse=0"},
                        {1, L"DbIOFArcMotionBlock Pl:G18; St:(); Ctr:(); End: (), reverse=0"},
                        {2, L"DbIOFArcMotionBlock Pl:G19; St:(); Ctr:(); End: (), reverse=0"},
                        {3, L"DbIOFArcMotionBlock Pl:NoPlane; St:(); Ctr:(); End: (), reverse=0"},
                        {5, L"DbIOFArcMotionBlock Pl:; St:(); Ctr:(); End: (), reverse=0"},
                        {-1, L"DbIOFArcMotionBlock Pl:; St:(); Ctr:(); End: (), reverse=0"}};
  auto arc = DbIOFArcMotionBlock::Create();
  for (const Case& c : cases) {
    arc->SetNCPlane(static_cast<IofArcPlaneType>(c.plane));
    EXPECT_EQ(arc->ToIOFString(), c.text) << c.plane;
  }
}

TEST(DbIOFArcMotionBlock, ArchiveBytes) {
  auto arc = DbIOFArcMotionBlock::Create();
  arc->SetEndPt(Pt({{2, -3}}));
  arc->SetStartPt(Pt({{0, 1}}));
  arc->SetCenterPt(Pt({{5, 0.5}}));
  arc->SetReverseForPost(true);
  arc->SetNCPlane(IofArcPlaneType::XZ);
  const Bytes bytes = TestSupport::Store(*arc);
  EXPECT_EQ(ToHex(bytes),
            ToHex(Hex("00 00 00"                         // arc block, motion block and record base versions
                      "00 00 00 00  00 00 00 00 00  00"  // empty name, attributes, sub-lists
                      // m_EndPt: version, 6 values (Z -3), 6 flags (Z)
                      "00 06 00 00 00"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 08 C0"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                      "06 00 00 00 00 00 01 00 00 00"
                      // m_StartPt (X 1), stored before the centre
                      "00 06 00 00 00"
                      "00 00 00 00 00 00 F0 3F 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                      "06 00 00 00 01 00 00 00 00 00"
                      // m_CenterPt (C 0.5)
                      "00 06 00 00 00"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
                      "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 E0 3F"
                      "06 00 00 00 00 00 00 00 00 01"
                      "01"               // m_ReverseForPost
                      "01 00 00 00")));  // m_NCPlane
  auto back = DbIOFArcMotionBlock::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  EXPECT_EQ(FieldsOf(*back), FieldsOf(*arc));
  EXPECT_EQ(back->ToIOFString(), arc->ToIOFString());
}

TEST(MotionBlocks, NewerVersionsStopBeforeTheOwnFields) {
  struct Case {
    const char* what;
    Bytes bytes;
    std::size_t versionAt;  // the byte of the version made newer
    std::size_t unread;     // bytes left unread when the load stops
    std::function<int(const Bytes&, std::size_t*)> load;
  };
  auto plain = DbIOFMotionBlock::Create();
  auto arc = DbIOFArcMotionBlock::Create();
  auto drill = DbIOFDrillMotionBlock::Create();
  auto multi = DbIOFMultiAxMotionBlock::Create();
  const Case cases[] = {
      {"motion block", TestSupport::Store(*plain), 0, 63,
       [&](const Bytes& b, std::size_t* at) { return TestSupport::LoadCause(*plain, b, at); }},
      {"arc block", TestSupport::Store(*arc), 0, 63 + 63 + 1 + 4,
       [&](const Bytes& b, std::size_t* at) { return TestSupport::LoadCause(*arc, b, at); }},
      {"arc block, its motion block level", TestSupport::Store(*arc), 1, 63 + 63 + 63 + 1 + 4,
       [&](const Bytes& b, std::size_t* at) { return TestSupport::LoadCause(*arc, b, at); }},
      {"drill block", TestSupport::Store(*drill), 0, 63,
       [&](const Bytes& b, std::size_t* at) { return TestSupport::LoadCause(*drill, b, at); }},
      {"multi-axis block", TestSupport::Store(*multi), 0, 5 * 25,
       [&](const Bytes& b, std::size_t* at) { return TestSupport::LoadCause(*multi, b, at); }},
  };
  for (const Case& c : cases) {
    Bytes newer = c.bytes;
    newer[c.versionAt] = 1;
    std::size_t stopped = 0;
    EXPECT_EQ(c.load(newer, &stopped), 2) << c.what;
    EXPECT_EQ(stopped, c.bytes.size() - c.unread) << c.what;
  }
}

TEST(MotionBlocks, MemoryAndFileRoundTrips) {
  Quarp::DbMgr mgr;
  auto plain = DbIOFMotionBlock::Create();
  plain->SetEndPt(Pt({{0, 1}, {3, 90}}));
  plain->SetIOFName(L"block");
  auto arc = DbIOFArcMotionBlock::Create();
  arc->SetStartPt(Pt({{1, -4}}));
  arc->SetCenterPt(Pt({{0, 2}, {1, 2}}));
  arc->SetNCPlane(IofArcPlaneType::NoPlane);
  auto drill = DbIOFDrillMotionBlock::Create();
  drill->SetEndPoint2(Pt({{2, -10}}));
  auto multi = DbIOFMultiAxMotionBlock::Create();
  multi->SetEndPt(Pt({{5, 45}}));
  multi->SetG43EndPt(GmPoint3D(1, 1, 1));
  multi->SetToolOrientVec(GmVector3D(0, 0.6, 0.8));
  const std::vector<DbIOFBase*> records = {plain.Get(), arc.Get(), drill.Get(), multi.Get()};

  // Through a memory archive, each into a fresh record of its class.
  for (DbIOFBase* r : records) {
    const Bytes bytes = TestSupport::Store(*r);
    Quarp::DbErr err{};
    Quarp::DbMgr scratch;
    auto* fresh = static_cast<DbIOFBase*>(r->Clone(Quarp::DbCloneMode::Normal, &scratch, nullptr, err));
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(FieldsOf(*fresh), FieldsOf(*r));  // a clone copies every field
    // A default record from the class's registered factory, loaded from the bytes.
    const Quarp::UtSerializeClass* registered = Quarp::UtSerializeFind(r->GetObjectClassName());
    ASSERT_NE(registered, nullptr);
    std::unique_ptr<Quarp::UtObject> made(registered->factory());
    auto* empty = dynamic_cast<DbIOFBase*>(made.get());
    ASSERT_NE(empty, nullptr);
    ASSERT_TRUE(TestSupport::LoadAll(*empty, bytes)) << r->GetObjectClassName();
    EXPECT_EQ(FieldsOf(*empty), FieldsOf(*r));
  }

  // Through a whole file.
  std::vector<Quarp::DbId> ids;
  ids.push_back(mgr.Add(plain));
  ids.push_back(mgr.Add(arc));
  ids.push_back(mgr.Add(drill));
  ids.push_back(mgr.Add(multi));
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    Quarp::DbCPtr<DbIOFBase> p;
    ASSERT_TRUE(back.Get(p, ids[i], 0));
    EXPECT_EQ(p->GetType(), records[i]->GetType());
    EXPECT_EQ(FieldsOf(*p), FieldsOf(*records[i]));
    EXPECT_EQ(p->ToIOFString(), records[i]->ToIOFString());
  }
}

TEST(MotionBlocks, EndPointsCompareByTheirCAxisOnly) {
  auto a = DbIOFMotionBlock::Create();
  auto b = DbIOFMotionBlock::Create();
  a->SetEndPt(Pt({{0, 1}, {1, 2}, {2, 3}}));
  b->SetEndPt(Pt({{0, -7}, {1, 2}, {2, 3}}));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // X differs: not seen
  EXPECT_TRUE(report.IsEmpty());
  b->SetEndPt(Pt({{0, 1}, {1, 2}, {2, 3}, {5, 0.0}}));
  EXPECT_FALSE(a->Compare(b, report));  // C present on one side only
  EXPECT_EQ(report,
            L"Difference Detected: m_EndPt - ( X1.00000000000000, Y2.00000000000000, Z3.00000000000000,) vs "
            L"( X1.00000000000000, Y2.00000000000000, Z3.00000000000000, C0.00000000000000,)\n");
  b->SetIOFName(L"other");
  report.Empty();
  EXPECT_FALSE(a->Compare(b, report));  // the record base comes first
  EXPECT_EQ(report, L"Difference Detected: m_Name -  vs other\n");
}

TEST(MotionBlocks, ComparisonOrders) {
  using A = DbIOFArcMotionBlock;
  // Start and centre differ in X and Y throughout, which is never reported: only C counts.
  ExpectReportOrder<A>({
      {[](A& r, bool on) {
         r.SetEndPt(on ? Pt({{5, 1}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt - () vs ( C1.00000000000000,)\n"},
      {[](A& r, bool on) {
         r.SetCenterPt(on ? Pt({{1, 9}, {5, 2}}) : Pt({{1, 9}}));
       },
       L"Difference Detected: m_CenterPt - () vs ( Y9.00000000000000, C2.00000000000000,)\n"},
      {[](A& r, bool on) {
         r.SetStartPt(on ? Pt({{0, 9}, {5, 3}}) : Pt({{0, 9}}));
       },
       L"Difference Detected: m_StartPt - () vs ( X9.00000000000000, C3.00000000000000,)\n"},
      {[](A& r, bool on) { r.SetReverseForPost(on); }, L"Difference Detected: m_ReverseForPost - false vs true\n"},
      {[](A& r, bool on) { r.SetNCPlane(on ? IofArcPlaneType::YZ : IofArcPlaneType::XY); },
       L"Difference Detected: m_NCPlane - 0 vs 2\n"},
  });

  using D = DbIOFDrillMotionBlock;
  ExpectReportOrder<D>({
      {[](D& r, bool on) {
         r.SetEndPoint1(on ? Pt({{5, -1}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt - () vs ( C-1.00000000000000,)\n"},
      {[](D& r, bool on) {
         r.SetEndPoint2(on ? Pt({{5, 0.25}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt2 - () vs ( C0.25000000000000,)\n"},
  });

  // The multi-axis block skips the motion block level: its end point is never compared.
  using M = DbIOFMultiAxMotionBlock;
  ExpectReportOrder<M>({
      {[](M& r, bool on) { r.SetIOFName(on ? L"n" : L""); }, L"Difference Detected: m_Name -  vs n\n"},
      {[](M& r, bool on) { r.GetNoCompEndPt().x = on ? 1 : 0; },
       L"Difference Detected: m_NoCompEndPt - (0, 0, 0) vs (1, 0, 0)\n"},
      {[](M& r, bool on) { r.GetG434EndPt().y = on ? 2 : 0; },
       L"Difference Detected: m_G434EndPt - (0, 0, 0) vs (0, 2, 0)\n"},
      {[](M& r, bool on) { r.GetG43EndPt().z = on ? 3 : 0; },
       L"Difference Detected: m_G43EndPt - (0, 0, 0) vs (0, 0, 3)\n"},
      {[](M& r, bool on) { r.SetInputPt(GmPoint3D(on ? -4 : 0, 0, 0)); },
       L"Difference Detected: m_InputPt - (0, 0, 0) vs (-4, 0, 0)\n"},
      {[](M& r, bool on) { r.GetToolOrientVec()[2] = on ? 1 : 0; },
       L"Difference Detected: m_ToolOrientVec - (0, 0, 0) vs (0, 0, 1)\n"},
      {[](M& r, bool) {
         r.SetEndPt(Pt({{5, 30}}));
       },
       nullptr},
  });
}

TEST(MotionBlocks, IncompatibleTypes) {
  auto plain = DbIOFMotionBlock::Create();
  auto arc = DbIOFArcMotionBlock::Create();
  auto drill = DbIOFDrillMotionBlock::Create();
  auto multi = DbIOFMultiAxMotionBlock::Create();
  CString report;
  EXPECT_TRUE(plain->Compare(arc, report));  // an arc block is a motion block
  EXPECT_TRUE(report.IsEmpty());
  EXPECT_FALSE(arc->Compare(plain, report));
  EXPECT_FALSE(drill->Compare(arc, report));
  EXPECT_FALSE(multi->Compare(plain, report));
  EXPECT_FALSE(plain->Compare(DbIOFNciLinear::Create(), report));
  EXPECT_EQ(report, L"Incompatible types.\nIncompatible types.\nIncompatible types.\nIncompatible types.\n");
}

TEST(MotionBlocks, GettersOfPoints) {
  // The arc block hands out copies.
  auto arc = DbIOFArcMotionBlock::Create();
  UtIofMovePoint start = arc->GetStartPt();
  start.SetValByIndex(0, 5);
  UtIofMovePoint centre = arc->GetCenterPt();
  centre.SetValByIndex(5, 5);
  EXPECT_EQ(arc->GetStartPt().ToString(), L"()");
  EXPECT_EQ(arc->GetCenterPt().ToString(), L"()");
  arc->SetStartPt(start);
  EXPECT_EQ(arc->GetStartPt().ToString(), L"( X5.00000000000000,)");

  // The drill block's first end point is the inherited one.
  auto drill = DbIOFDrillMotionBlock::Create();
  drill->SetEndPt(Pt({{1, 6}}));
  EXPECT_EQ(drill->GetEndPoint1().ToString(), L"( Y6.00000000000000,)");
  EXPECT_EQ(drill->GetEndPoint2().ToString(), L"()");

  // The multi-axis block's getters reach into the record.
  auto multi = DbIOFMultiAxMotionBlock::Create();
  multi->GetInputPt() = GmPoint3D(1, 2, 3);
  multi->GetToolOrientVec()[0] = 1;
  const DbIOFMultiAxMotionBlock& view = *multi;
  EXPECT_EQ(view.GetInputPt(), GmPoint3D(1, 2, 3));
  EXPECT_EQ(view.GetToolOrientVec()[0], 1.0);
}

TEST(MotionBlocks, TypeAnswers) {
  auto plain = DbIOFMotionBlock::Create();
  auto arc = DbIOFArcMotionBlock::Create();
  auto drill = DbIOFDrillMotionBlock::Create();
  auto multi = DbIOFMultiAxMotionBlock::Create();
  const Quarp::UtMask& blocks = DbIOFTypeMgr::GetIOFMOTIONBLOCKMask();
  const std::vector<const DbIOFBase*> all = {plain.Get(), arc.Get(), drill.Get(), multi.Get()};
  for (const DbIOFBase* r : all) {
    SCOPED_TRACE(r->GetObjectClassName());
    EXPECT_TRUE(r->ContainsType(blocks, true));
    EXPECT_EQ(r->ContainsType(blocks, false), r == plain.Get());
    EXPECT_FALSE(r->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMOVEMask(), true));
    EXPECT_FALSE(r->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMask(), true));
    EXPECT_TRUE(r->ContainsType(0x5140));
    EXPECT_EQ(r->GetSubclassLevel(0), r == plain.Get() ? 3 : 4);
    EXPECT_EQ(r->GetClass(), CString::FromUtf8(r->GetObjectClassName()));
  }
  EXPECT_TRUE(arc->ContainsType(DbIOFTypeMgr::GetIOFARCMOTIONBLOCKMask(), false));
  EXPECT_TRUE(drill->ContainsType(DbIOFTypeMgr::GetIOFDRILLMOTIONBLOCKMask(), false));
  EXPECT_TRUE(multi->ContainsType(DbIOFTypeMgr::GetIOFMULTIAXMOTIONBLOCKMask(), false));
  EXPECT_FALSE(multi->ContainsType(DbIOFTypeMgr::GetIOFARCMOTIONBLOCKMask(), true));
  EXPECT_EQ(arc->GetType(), 0x5141u);
  EXPECT_EQ(drill->GetType(), 0x5142u);
  EXPECT_EQ(multi->GetType(), 0x5143u);
}

}  // namespace
