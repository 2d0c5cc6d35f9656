// Sub-program references and canned cycles: one layout table per class pins its archive
// bytes, every old layout, the version error, the round trips, the dump and the
// comparison order with its lines; then each class's own rules.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

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

#include <algorithm>
#include <cstring>
#include <functional>

using namespace IOF;
using namespace TestSupport;

namespace {

// The little-endian bytes of a value, written independently of the library's archive.
template <class T>
std::string Le(T v) {
  Bytes b(sizeof v);
  std::memcpy(b.data(), &v, sizeof v);
  return ToHex(b) + " ";
}
const std::string I0 = Le(0), D0 = Le(0.0), kFalse = "00 ", kTrue = "01 ", kP0 = "00" + D0 + D0 + D0;
std::string Pt(double x, double y, double z) { return "00 " + Le(x) + Le(y) + Le(z); }

// One own field in archive order: a stored value, its default, the difference line a
// fresh record reports against that value (null: never compared), the version that
// added it.
struct Row {
  std::string set, unset;
  const wchar_t* line;
  unsigned since = 0;
};
Row R(const std::string& set, const std::string& unset, const wchar_t* line, unsigned since = 0) {
  return {set, unset, line, since};
}
Row D(double set, const wchar_t* line) { return R(Le(set), D0, line); }  // a double, default 0
Row I(int set, const wchar_t* line) { return R(Le(set), I0, line); }     // an int, default 0

// `head`: the record's bytes up to its own fields, its own version first (one byte).
// `dump`: the text of the record whose rows all hold their stored values.
// `order`: the comparison order as row indices, when it is not the archive order.
struct Layout {
  std::string head;
  const wchar_t* dump;
  std::vector<Row> rows;
  std::vector<std::size_t> order = {};
};

// The archive of layout `version` whose rows `isSet` says hold their stored value.
Bytes Image(const Layout& l, unsigned version, const std::function<bool(std::size_t)>& isSet) {
  std::string hex = Le(static_cast<std::uint8_t>(version)) + l.head.substr(2);
  for (std::size_t i = 0; i < l.rows.size(); ++i) {
    if (l.rows[i].since <= version) hex += isSet(i) ? l.rows[i].set : l.rows[i].unset;
  }
  return Hex(hex);
}

template <class R>
Quarp::DbPtr<R> Loaded(const Bytes& bytes) {
  auto r = R::Create();
  EXPECT_TRUE(LoadAll(*r, bytes));
  return r;
}

template <class R>
void ExpectLayout(const Layout& l) {
  SCOPED_TRACE(R::kClassName);
  const auto all = [](std::size_t) { return true; };
  auto fresh = R::Create();
  EXPECT_EQ(ToHex(Store(*fresh)), ToHex(Image(l, R::kVersion, [](std::size_t) { return false; })));
  ExpectNewerVersionRefused(*fresh, 0, Hex(l.head).size());  // the base part read, no own field
  // Each layout loads its fields; the later ones keep their defaults.
  for (unsigned v = 0; v <= R::kVersion; ++v) {
    auto r = Loaded<R>(Image(l, v, all));
    EXPECT_EQ(ToHex(Store(*r)), ToHex(Image(l, R::kVersion, [&](std::size_t i) { return l.rows[i].since <= v; })));
  }
  auto full = Loaded<R>(Image(l, R::kVersion, all));
  ExpectRoundTrips(*full);
  EXPECT_EQ(full->ToIOFString(), l.dump);
  // The fields from position k of the comparison order on differ: the first of them that
  // is compared is the one reported.
  std::vector<std::size_t> order = l.order;
  for (std::size_t i = order.size(); i < l.rows.size(); ++i) order.push_back(i);
  for (std::size_t k = 0; k <= order.size(); ++k) {
    auto other = Loaded<R>(Image(
        l, R::kVersion, [&](std::size_t i) { return std::find(order.begin() + k, order.end(), i) != order.end(); }));
    const wchar_t* line = nullptr;
    for (std::size_t j = k; j < order.size() && !line; ++j) line = l.rows[order[j]].line;
    CString report;
    EXPECT_EQ(fresh->Compare(other, report), line == nullptr) << k;
    EXPECT_EQ(report, line ? CString(L"Difference Detected: ") + CString(line) + CString(L"\n") : CString()) << k;
  }
}

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
