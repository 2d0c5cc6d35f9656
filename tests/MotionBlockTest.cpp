// The motion blocks: dumps (plane texts of the arc block included), archive bytes,
// version errors, round trips, and the comparison chains with the move point's C-only
// equality and the multi-axis block's skipped end point.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFDrillMotionBlock.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFMultiAxMotionBlock.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <utility>

using namespace IOF;
using namespace TestSupport;

namespace {

// A move point with the given axes (index, value) set.
UtIofMovePoint Pt(std::initializer_list<std::pair<int, double>> axes) {
  UtIofMovePoint p;
  for (const auto& [i, v] : axes) p.SetValByIndex(i, v);
  return p;
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

TEST(MotionBlocks, ArchivesVersionsAndRoundTrips) {
  auto arc = DbIOFArcMotionBlock::Create();
  arc->SetEndPt(Pt({{2, -3}}));
  arc->SetStartPt(Pt({{0, 1}}));
  arc->SetCenterPt(Pt({{5, 0.5}}));
  arc->SetReverseForPost(true);
  arc->SetNCPlane(IofArcPlaneType::XZ);
  // A move point is its version, 6 values and 6 flags.
  const std::string flags = " 06 00 00 00 ";
  ExpectArchive(*arc, "00 00" + kRecordBase +  // arc block and motion block versions
                          "00 06 00 00 00" + kZero + kZero + "00 00 00 00 00 00 08 C0" + kZero + kZero + kZero + flags +
                          "00 00 01 00 00 00" +  // m_EndPt (Z -3)
                          "00 06 00 00 00" + kOne + kZero + kZero + kZero + kZero + kZero + flags +
                          "01 00 00 00 00 00" +  // m_StartPt (X 1), stored before the centre
                          "00 06 00 00 00" + kZero + kZero + kZero + kZero + kZero + "00 00 00 00 00 00 E0 3F" + flags +
                          "00 00 00 00 00 01" +  // m_CenterPt (C 0.5)
                          "01"                   // m_ReverseForPost
                          "01 00 00 00");        // m_NCPlane
  ExpectFields(*arc, {kRecordBaseFields,
                      {"m_EndPt=( Z-3.00000000000000,)", "m_StartPt=( X1.00000000000000,)",
                       "m_CenterPt=( C0.50000000000000,)", "m_ReverseForPost=true", "m_NCPlane=1"}});

  auto plain = DbIOFMotionBlock::Create();
  plain->SetEndPt(Pt({{0, 1}, {3, 90}}));
  plain->SetIOFName(L"block");
  auto drill = DbIOFDrillMotionBlock::Create();
  drill->SetEndPoint2(Pt({{2, -10}}));
  auto multi = DbIOFMultiAxMotionBlock::Create();
  multi->SetEndPt(Pt({{5, 45}}));
  multi->SetG43EndPt(GmPoint3D(1, 1, 1));
  multi->SetToolOrientVec(GmVector3D(0, 0.6, 0.8));
  ExpectRoundTrips(*plain);
  ExpectRoundTrips(*drill);
  ExpectRoundTrips(*multi);

  // Each level stops the load before its own fields; a move point is 63 bytes here.
  const std::size_t point = 63;
  ExpectNewerVersionRefused(*plain, 0, 1 + kRecordBaseSize + 10);  // its name, "block", adds 10 bytes
  ExpectNewerVersionRefused(*arc, 0, 2 + kRecordBaseSize + point);
  ExpectNewerVersionRefused(*arc, 1, 2 + kRecordBaseSize);
  ExpectNewerVersionRefused(*drill, 0, 2 + kRecordBaseSize + point);
  ExpectNewerVersionRefused(*multi, 0, 2 + kRecordBaseSize + point);
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

}  // namespace
