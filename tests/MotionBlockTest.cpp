// The motion blocks: dumps (plane texts of the arc block included), one layout table per
// class, and the comparison chains with the move point's C-only equality and the
// multi-axis block's skipped end point.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

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
UtIofMovePoint Axes(std::initializer_list<std::pair<int, double>> axes) {
  UtIofMovePoint p;
  for (const auto& [i, v] : axes) p.SetValByIndex(i, v);
  return p;
}

// The dumps of the plain and the multi-axis block are pinned by their layout tables.
TEST(MotionBlocks, DumpTexts) {
  auto arc = DbIOFArcMotionBlock::Create();
  arc->SetNCPlane(IofArcPlaneType::XZ);
  arc->SetStartPt(Axes({{0, 1}, {1, 2}}));
  arc->SetCenterPt(Axes({{5, 0.5}}));
  arc->SetEndPt(Axes({{2, -3}}));
  arc->SetReverseForPost(true);
  EXPECT_EQ(arc->ToIOFString(),
            L"DbIOFArcMotionBlock Pl:G18; St:( X1.00000000000000, Y2.00000000000000,); Ctr:( C0.50000000000000,); "
            L"End: ( Z-3.00000000000000,), reverse=1");

  auto drill = DbIOFDrillMotionBlock::Create();
  drill->SetEndPoint1(Axes({{2, 1}}));
  drill->SetEndPoint2(Axes({{2, -2}}));
  EXPECT_EQ(drill->ToIOFString(), L"DbIOFDrillMotionBlock End1:( Z1.00000000000000,); End2:( Z-2.00000000000000,)");
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

// A move point is its version, 6 values and 6 flags; here with at most C set. The arc
// block stores its start before its centre and compares them the other way round.
std::string MoveHex(double c, bool set = true) {
  return "00 06 00 00 00" + D0 + D0 + D0 + D0 + D0 + Le(c) + "06 00 00 00  00 00 00 00 00 " + (set ? "01 " : "00 ");
}

TEST(MotionBlocks, Layouts) {
  const std::string none = MoveHex(0, false), head = "00 00" + kRecordBase + none;
  ExpectLayout<DbIOFMotionBlock>({"00" + kRecordBase,
                                  L"DbIOFMotionBlock End: ( C1.00000000000000,)",
                                  {R(MoveHex(1), none, L"m_EndPt - () vs ( C1.00000000000000,)")}});
  ExpectLayout<DbIOFArcMotionBlock>(
      {head,
       L"DbIOFArcMotionBlock Pl:G19; St:( C3.00000000000000,); Ctr:( C2.00000000000000,); End: (), reverse=1",
       {R(MoveHex(3), none, L"m_StartPt - () vs ( C3.00000000000000,)"),
        R(MoveHex(2), none, L"m_CenterPt - () vs ( C2.00000000000000,)"), Flag(L"m_ReverseForPost - false vs true"),
        I(2, L"m_NCPlane - 0 vs 2")},
       {1, 0, 2, 3}});
  ExpectLayout<DbIOFDrillMotionBlock>({head,
                                       L"DbIOFDrillMotionBlock End1:(); End2:( C0.25000000000000,)",
                                       {R(MoveHex(0.25), none, L"m_EndPt2 - () vs ( C0.25000000000000,)")}});
  ExpectLayout<DbIOFMultiAxMotionBlock>(
      {head,
       L"DbIOFMultiAxMotionBlock End: (), No Comp End: (1.000000,0.000000,0.000000), G43.4 End: "
       L"(0.000000,2.000000,0.000000), G43 End: (0.000000,0.000000,3.000000), Input XYZ IJK: "
       L"(-4.000000,0.000000,0.000000 0.000000,0.000000,1.000000)",
       {R(Pt(1, 0, 0), kP0, L"m_NoCompEndPt - (0, 0, 0) vs (1, 0, 0)"),
        R(Pt(0, 2, 0), kP0, L"m_G434EndPt - (0, 0, 0) vs (0, 2, 0)"),
        R(Pt(0, 0, 3), kP0, L"m_G43EndPt - (0, 0, 0) vs (0, 0, 3)"),
        R(Pt(-4, 0, 0), kP0, L"m_InputPt - (0, 0, 0) vs (-4, 0, 0)"),
        R(Pt(0, 0, 1), kP0, L"m_ToolOrientVec - (0, 0, 0) vs (0, 0, 1)")},
       {},
       "m_NoCompEndPt=(1,0,0) m_G434EndPt=(0,2,0) m_G43EndPt=(0,0,3) m_InputPt=(-4,0,0) m_ToolOrientVec=<0,0,1>"});
  // The block levels check their version after the record base.
  ExpectNewerVersionRefused(*DbIOFArcMotionBlock::Create(), 1, 2 + kRecordBaseSize);
}

TEST(MotionBlocks, EndPointsCompareByTheirCAxisOnly) {
  auto a = DbIOFMotionBlock::Create();
  auto b = DbIOFMotionBlock::Create();
  a->SetEndPt(Axes({{0, 1}, {1, 2}, {2, 3}}));
  b->SetEndPt(Axes({{0, -7}, {1, 2}, {2, 3}}));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // X differs: not seen
  EXPECT_TRUE(report.IsEmpty());
  b->SetEndPt(Axes({{0, 1}, {1, 2}, {2, 3}, {5, 0.0}}));
  EXPECT_FALSE(a->Compare(b, report));  // C present on one side only
  EXPECT_EQ(report,
            L"Difference Detected: m_EndPt - ( X1.00000000000000, Y2.00000000000000, Z3.00000000000000,) vs "
            L"( X1.00000000000000, Y2.00000000000000, Z3.00000000000000, C0.00000000000000,)\n");
  b->SetIOFName(L"other");
  report.Empty();
  EXPECT_FALSE(a->Compare(b, report));  // the record base comes first
  EXPECT_EQ(report, L"Difference Detected: m_Name -  vs other\n");
}

// What the layout tables cannot show: the end point of the motion-block level comes first
// for the arc and drill blocks; the multi-axis block skips that level (its end point is
// never compared) but compares the name.
TEST(MotionBlocks, ComparisonAroundTheTables) {
  using A = DbIOFArcMotionBlock;
  ExpectReportOrder<A>({
      {[](A& r, bool on) {
         r.SetEndPt(on ? Axes({{5, 1}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt - () vs ( C1.00000000000000,)\n"},
      {[](A& r, bool on) {
         r.SetCenterPt(on ? Axes({{1, 9}, {5, 2}}) : Axes({{1, 9}}));
       },
       L"Difference Detected: m_CenterPt - () vs ( Y9.00000000000000, C2.00000000000000,)\n"},
  });
  using D = DbIOFDrillMotionBlock;
  ExpectReportOrder<D>({
      {[](D& r, bool on) {
         r.SetEndPoint1(on ? Axes({{5, -1}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt - () vs ( C-1.00000000000000,)\n"},
      {[](D& r, bool on) {
         r.SetEndPoint2(on ? Axes({{5, 0.25}}) : UtIofMovePoint());
       },
       L"Difference Detected: m_EndPt2 - () vs ( C0.25000000000000,)\n"},
  });
  using M = DbIOFMultiAxMotionBlock;
  ExpectReportOrder<M>({
      {[](M& r, bool) {
         r.SetEndPt(Axes({{5, 30}}));
       },
       nullptr},
      {[](M& r, bool on) { r.SetIOFName(on ? L"n" : L""); }, L"Difference Detected: m_Name -  vs n\n"},
      {[](M& r, bool on) { r.GetNoCompEndPt().x = on ? 1 : 0; },
       L"Difference Detected: m_NoCompEndPt - (0, 0, 0) vs (1, 0, 0)\n"},
  });
}

}  // namespace
