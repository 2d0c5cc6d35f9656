// Events: text dumps with every table text, archive bytes, the layout shared by the
// compensation and feed-unit events, version errors, comparison chains (including the
// ones that deliberately compare the name only) and round trips.
#include "CompareOrderSupport.h"
#include "RecordingVisitor.h"
#include "TestSupport.h"

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

TEST(Events, ArchiveAndVersions) {
  auto sync = DbIOFEvSync::Create();
  sync->SetSyncId(5);
  sync->SetComment(L"AB");
  sync->SetIsAlternateType(true);
  auto dwell = DbIOFEvDwell::Create();
  dwell->SetDwellTime(1.0);
  dwell->SetSpindleSpeed(2.0);
  dwell->SetSpindleDir(3);
  dwell->SetIsSpeedUnitCSS(true);
  auto comp = DbIOFEvComp::Create();
  comp->SetCompensationType(2);
  comp->SetIOFName(L"left");
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  feed->SetUnitType(2);
  auto clamp = DbIOFEvClamp::Create();
  clamp->SetIsClamping(true);
  clamp->SetTime(0.5);
  ExpectArchive(*sync, kHead + "05 00 00 00  02 00 00 00 41 00 42 00  01");
  ExpectArchive(*dwell, kHead + "00 00 00 00 00 00 F0 3F  00 00 00 00 00 00 00 40  03 00 00 00  01");
  ExpectArchive(*comp, "00 00  00 04 00 00 00 6C 00 65 00 66 00 74 00  00 00 00 00 00  00  02 00 00 00");
  ExpectArchive(*feed, kHead + "02 00 00 00");
  ExpectArchive(*clamp, kHead + "01  00 00 00 00 00 00 E0 3F");
  // The event version is checked after the record base was read, and so is the event
  // base's own version; no own field is read.
  const auto refused = [](auto& event, std::size_t baseSize = 2 + kRecordBaseSize) {
    ExpectNewerVersionRefused(event, 0, baseSize);
    ExpectNewerVersionRefused(event, 1, baseSize);
  };
  refused(*sync);
  refused(*dwell);
  refused(*comp, 2 + kRecordBaseSize + 8);  // its name, "left", is part of the record base
  refused(*feed);
  refused(*clamp);
  ExpectFields(*dwell, {kRecordBaseFields,
                        {"m_DwellTime=1", "m_SpindleSpeed=2", "m_SpindleDirection=3", "m_IsSpindleSpeedUnitCSS=true"}});
}

TEST(Events, CompensationAndFeedUnitsShareOneLayout) {
  // The same bytes load into either class: version 0 and one 4-byte integer after the
  // event base.
  auto comp = DbIOFEvComp::Create();
  comp->SetCompensationType(1);
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*feed, TestSupport::Store(*comp)));
  EXPECT_EQ(feed->ToIOFString(), L"FeedUnits = //rev");
  feed->SetUnitType(3);
  ASSERT_TRUE(TestSupport::LoadAll(*comp, TestSupport::Store(*feed)));
  EXPECT_EQ(comp->ToIOFString(), L"CComp Change Event: State = G42 ");
}

TEST(Events, ComparisonOrders) {
  using S = DbIOFEvSync;
  ExpectReportOrder<S>({
      {[](S& e, bool on) { e.SetIOFName(on ? L"S" : L""); }, L"Difference Detected: m_Name -  vs S\n"},
      {[](S& e, bool on) { e.SetSyncId(on ? 4 : -1); }, L"Difference Detected: m_SyncId - -1 vs 4\n"},
      {[](S& e, bool on) { e.SetComment(on ? L"wait" : L""); }, L"Difference Detected: m_Comment -  vs wait\n"},
      {[](S& e, bool on) { e.SetIsAlternateType(on); }, L"Difference Detected: m_IsAltType - false vs true\n"},
  });
  using D = DbIOFEvDwell;
  ExpectReportOrder<D>({
      {[](D& e, bool on) { e.SetDwellTime(on ? 1.25 : 5e-7); }, L"Difference Detected: m_DwellTime - 0 vs 1.25\n"},
      {[](D& e, bool on) { e.SetSpindleSpeed(on ? 1000 : 0); }, L"Difference Detected: m_SpindleSpeed - 0 vs 1000\n"},
      {[](D& e, bool on) { e.SetSpindleDir(on ? 3 : 0); }, L"Difference Detected: m_SpindleDirection - 0 vs 3\n"},
      // Intended: the CSS flag is compared as an int and prints 0 and 1.
      {[](D& e, bool on) { e.SetIsSpeedUnitCSS(on); }, L"Difference Detected: m_IsSpindleSpeedUnitCSS - 0 vs 1\n"},
  });
  using F = DbIOFEvChangeFeedUnitType;
  ExpectReportOrder<F>({
      {[](F& e, bool on) { e.SetUnitType(on ? 2 : 0); }, L"Difference Detected: m_FeedUnits - 0 vs 2\n"},
  });
  using C = DbIOFEvClamp;
  ExpectReportOrder<C>({
      {[](C& e, bool on) { e.SetIsClamping(on); }, L"Difference Detected: m_IsClamping - false vs true\n"},
      {[](C& e, bool on) { e.SetTime(on ? 0.5 : 5e-7); }, L"Difference Detected: m_Time - 0 vs 0.5\n"},
  });
  // Intended: compensation events compare their names only, with no type check, so any
  // record with the same name compares equal to one.
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
