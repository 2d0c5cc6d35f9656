// Events: text dumps with every table text, archive bytes (the compensation and
// feed-unit events share one layout), version errors, comparison chains (including the
// ones that deliberately compare the name only) and round trips.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvClamp.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFList.h>

#include <gtest/gtest.h>

#include <functional>

using namespace IOF;
using namespace TestSupport;

namespace {

// Event class and event base versions (each 0), then the record base.
const std::string kHead = "00 00" + kRecordBase;

// The dump of a new record of class R after `set` changed it.
template <class R>
CString Text(const std::function<void(R&)>& set = {}) {
  auto r = R::Create();
  if (set) set(*r);
  return r->ToIOFString();
}

TEST(Events, Texts) {
  using D = DbIOFEvDwell;
  const auto dwell = [](double time, double speed, int direction, bool css) {
    return Text<D>([=](D& e) {
      e.SetDwellTime(time);
      e.SetSpindleSpeed(speed);
      e.SetSpindleDir(direction);
      e.SetIsSpeedUnitCSS(css);
    });
  };
  const auto comp = [](int type) { return Text<DbIOFEvComp>([=](auto& e) { e.SetCompensationType(type); }); };
  const auto feed = [](int units) { return Text<DbIOFEvChangeFeedUnitType>([=](auto& e) { e.SetUnitType(units); }); };
  const std::pair<CString, const wchar_t*> cases[] = {
      // New records.
      {Text<DbIOFEvSync>(), L"Sync Event -1"},
      {Text<D>(), L"G4 0.000000(sec), 0.000000(rpm), SpindleDir: Not Applicable"},
      {Text<DbIOFEvComp>(), L"CComp Change Event: State = G40 "},
      {Text<DbIOFEvChangeFeedUnitType>(), L"FeedUnits = //min"},
      {Text<DbIOFEvClamp>(), L"Steady Rest Event UnClamp Time:  0.000000(sec)"},
      // Every table text.
      {Text<DbIOFEvSync>([](auto& e) { e.SetSyncId(12); }), L"Sync Event 12"},
      {dwell(1.5, 200, 1, false), L"G4 1.500000(sec), 200.000000(rpm), SpindleDir: Reverse"},
      {dwell(2, 0, 2, false), L"G4 2.000000(sec), 0.000000(rpm), SpindleDir: Stopped"},
      {dwell(0.25, 150, 3, true), L"G4 0.250000(sec), 150.000000(css), SpindleDir: Forward"},
      {dwell(0, 0, 4, false), L"G4 0.000000(sec), 0.000000(rpm), SpindleDir: Unrecognized"},
      {dwell(0, 0, -1, true), L"G4 0.000000(sec), 0.000000(css), SpindleDir: Unrecognized"},
      {comp(0), L"CComp Change Event: State = NULL "},
      {comp(2), L"CComp Change Event: State = G41 "},
      {comp(3), L"CComp Change Event: State = G42 "},
      {comp(7), L"CComp Change Event: State =  "},
      {comp(-1), L"CComp Change Event: State =  "},
      {feed(0), L"FeedUnits = //min"},
      {feed(1), L"FeedUnits = //rev"},
      {feed(2), L"FeedUnits = Invtime"},
      {feed(5), L"FeedUnits = //min"},
      {feed(-3), L"FeedUnits = //min"},
      {Text<DbIOFEvClamp>([](auto& e) {
         e.SetIsClamping(true);
         e.SetTime(3.5);
       }),
       L"Steady Rest Event Clamp Time:  3.500000(sec)"},
  };
  for (const auto& [dump, text] : cases) EXPECT_EQ(dump, text);
}

// Intended: the dwell's CSS flag is compared as an int and prints 0 and 1; the
// compensation event compares its name only, so its type is never reported.
TEST(Events, Layouts) {
  ExpectLayout<DbIOFEvSync>({kHead,
                             L"Sync Event 5",
                             {R(Le(5), Le(-1), L"m_SyncId - -1 vs 5"), R(Str(u"AB"), I0, L"m_Comment -  vs AB"),
                              Flag(L"m_IsAltType - false vs true")}});
  ExpectLayout<DbIOFEvDwell>({kHead,
                              L"G4 1.000000(sec), 2.000000(css), SpindleDir: Forward",
                              {D(1, L"m_DwellTime - 0 vs 1"), D(2, L"m_SpindleSpeed - 0 vs 2"),
                               I(3, L"m_SpindleDirection - 0 vs 3"), Flag(L"m_IsSpindleSpeedUnitCSS - 0 vs 1")},
                              {},
                              "m_DwellTime=1 m_SpindleSpeed=2 m_SpindleDirection=3 m_IsSpindleSpeedUnitCSS=true"});
  ExpectLayout<DbIOFEvComp>({kHead, L"CComp Change Event: State = G41 ", {R(Le(2), Le(1), nullptr)}});
  ExpectLayout<DbIOFEvChangeFeedUnitType>({kHead, L"FeedUnits = Invtime", {I(2, L"m_FeedUnits - 0 vs 2")}});
  ExpectLayout<DbIOFEvClamp>({kHead,
                              L"Steady Rest Event Clamp Time:  0.500000(sec)",
                              {Flag(L"m_IsClamping - false vs true"), D(0.5, L"m_Time - 0 vs 0.5")}});
  // The event base's own version is checked too, before any own field.
  ExpectNewerVersionRefused(*DbIOFEvDwell::Create(), 1, 2 + kRecordBaseSize);
}

// What the layout tables cannot show: the name comes first, the reals are equal within
// the tolerance, and a compensation event compares nothing but its name.
TEST(Events, ComparisonAroundTheTables) {
  using S = DbIOFEvSync;
  ExpectReportOrder<S>({
      {[](S& e, bool on) { e.SetIOFName(on ? L"S" : L""); }, L"Difference Detected: m_Name -  vs S\n"},
      {[](S& e, bool on) { e.SetSyncId(on ? 4 : -1); }, L"Difference Detected: m_SyncId - -1 vs 4\n"},
  });
  using D = DbIOFEvDwell;
  ExpectReportOrder<D>({{[](D& e, bool) { e.SetDwellTime(5e-7); }, nullptr}});
  using C = DbIOFEvClamp;
  ExpectReportOrder<C>({{[](C& e, bool) { e.SetTime(5e-7); }, nullptr}});
  using K = DbIOFEvComp;
  ExpectReportOrder<K>({
      {[](K& e, bool) { e.SetCompensationType(3); }, nullptr},
      {[](K& e, bool on) { e.SetIOFName(on ? L"C" : L""); }, L"Difference Detected: m_Name -  vs C\n"},
  });
  CString report;
  EXPECT_TRUE(DbIOFEvComp::Create()->Compare(DbIOFEvSync::Create(), report));
  EXPECT_TRUE(DbIOFEvComp::Create()->Compare(DbIOFList::Create(0), report));
  EXPECT_TRUE(report.IsEmpty());
}

}  // namespace
