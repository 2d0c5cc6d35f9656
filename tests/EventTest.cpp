// Events: text dumps with every table text, archive bytes, the layout shared by the
// compensation and feed-unit events, version errors, comparison chains (including the
// ones that deliberately compare the name only) and round trips.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvClamp.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFTypeMgr.h>
#include <quarp/UtTypeMgr.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

// Event class, event base and record-base versions (each 0); empty name, attributes,
// sub-lists.
const std::string kHead = "00 00 00  00 00 00 00  00 00 00 00 00  00";
const std::size_t kHeadSize = 13;

// A new default record of the same class, made by its registered factory.
DbIOFBase* MakeFresh(const DbIOFBase& record) {
  const auto* registered = Quarp::UtSerializeFind(record.GetObjectClassName());
  return registered ? dynamic_cast<DbIOFBase*>(registered->factory()) : nullptr;
}

TEST(Events, Texts) {
  const auto sync = [](int id) {
    auto e = DbIOFEvSync::Create();
    e->SetSyncId(id);
    return e->ToIOFString();
  };
  const auto dwell = [](double time, double speed, int direction, bool css) {
    auto e = DbIOFEvDwell::Create();
    e->SetDwellTime(time);
    e->SetSpindleSpeed(speed);
    e->SetSpindleDir(direction);
    e->SetIsSpeedUnitCSS(css);
    return e->ToIOFString();
  };
  const auto comp = [](int type) {
    auto e = DbIOFEvComp::Create();
    e->SetCompensationType(type);
    return e->ToIOFString();
  };
  const auto feed = [](int units) {
    auto e = DbIOFEvChangeFeedUnitType::Create();
    e->SetUnitType(units);
    return e->ToIOFString();
  };
  const auto clamp = [](bool clamping, double time) {
    auto e = DbIOFEvClamp::Create();
    e->SetIsClamping(clamping);
    e->SetTime(time);
    return e->ToIOFString();
  };
  const std::pair<CString, const wchar_t*> cases[] = {
      // New records.
      {DbIOFEvSync::Create()->ToIOFString(), L"Sync Event -1"},
      {DbIOFEvDwell::Create()->ToIOFString(), L"G4 0.000000(sec), 0.000000(rpm), SpindleDir: Not Applicable"},
      {DbIOFEvComp::Create()->ToIOFString(), L"CComp Change Event: State = G40 "},
      {DbIOFEvChangeFeedUnitType::Create()->ToIOFString(), L"FeedUnits = //min"},
      {DbIOFEvClamp::Create()->ToIOFString(), L"Steady Rest Event UnClamp Time:  0.000000(sec)"},
      // Every table text.
      {sync(12), L"Sync Event 12"},
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
      {clamp(true, 3.5), L"Steady Rest Event Clamp Time:  3.500000(sec)"},
  };
  for (const auto& [dump, text] : cases) EXPECT_EQ(dump, text);
}

TEST(Events, ArchiveBytes) {
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
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  feed->SetUnitType(2);
  auto clamp = DbIOFEvClamp::Create();
  clamp->SetIsClamping(true);
  clamp->SetTime(0.5);

  struct Case {
    const char* what;
    DbIOFBase* record;
    std::string own;  // the bytes after the common head
  };
  const Case cases[] = {
      {"sync", sync.operator->(), "05 00 00 00  02 00 00 00 41 00 42 00  01"},
      {"dwell", dwell.operator->(), "00 00 00 00 00 00 F0 3F  00 00 00 00 00 00 00 40  03 00 00 00  01"},
      {"comp", comp.operator->(), "02 00 00 00"},
      {"feed units", feed.operator->(), "02 00 00 00"},
      {"clamp", clamp.operator->(), "01  00 00 00 00 00 00 E0 3F"},
  };
  for (const Case& c : cases) {
    const Bytes bytes = TestSupport::Store(*c.record);
    EXPECT_EQ(ToHex(bytes), ToHex(Hex(kHead + c.own))) << c.what;
    std::unique_ptr<DbIOFBase> back(MakeFresh(*c.record));
    ASSERT_TRUE(TestSupport::LoadAll(*back, bytes)) << c.what;
    EXPECT_EQ(back->ToIOFString(), c.record->ToIOFString()) << c.what;
  }
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

TEST(Events, NewerVersionsAreRefused) {
  // The event version is checked after the record base (13 bytes) was read, and so is
  // the event base's own version; no own field is read.
  std::vector<std::pair<const char*, std::function<int(std::size_t, std::size_t*)>>> loaders;
  const auto add = [&loaders](const char* what, auto ptr) {
    auto shared = std::make_shared<decltype(ptr)>(std::move(ptr));
    loaders.emplace_back(what, [shared](std::size_t versionAt, std::size_t* stopped) {
      Bytes bytes = TestSupport::Store(**shared);
      bytes[versionAt] = 1;
      return TestSupport::LoadCause(**shared, bytes, stopped);
    });
  };
  add("sync", DbIOFEvSync::Create());
  add("dwell", DbIOFEvDwell::Create());
  add("comp", DbIOFEvComp::Create());
  add("feed units", DbIOFEvChangeFeedUnitType::Create());
  add("clamp", DbIOFEvClamp::Create());
  for (const auto& [what, load] : loaders) {
    for (const std::size_t versionAt : {0u, 1u}) {
      std::size_t stopped = 0;
      EXPECT_EQ(load(versionAt, &stopped), 2) << what << " at " << versionAt;
      EXPECT_EQ(stopped, kHeadSize) << what << " at " << versionAt;
    }
  }
}

TEST(Events, ComparisonChains) {
  struct Case {
    const char* what;
    std::function<bool(CString&)> compare;  // compares a default record with a changed one
    const wchar_t* line;                    // empty: the two compare equal
  };
  const auto changed = [](auto ptr, auto change) {
    auto base = std::remove_reference_t<decltype(*ptr)>::Create();
    change(*ptr);
    return [base, ptr](CString& report) { return base->Compare(ptr, report); };
  };
  using Sync = DbIOFEvSync;
  using Dwell = DbIOFEvDwell;
  using Feed = DbIOFEvChangeFeedUnitType;
  using Clamp = DbIOFEvClamp;
  using Comp = DbIOFEvComp;
  const Case cases[] = {
      {"sync name", changed(Sync::Create(), [](Sync& e) { e.SetIOFName(L"S"); }),
       L"Difference Detected: m_Name -  vs S\n"},
      {"sync id", changed(Sync::Create(), [](Sync& e) { e.SetSyncId(4); }),
       L"Difference Detected: m_SyncId - -1 vs 4\n"},
      {"sync comment", changed(Sync::Create(), [](Sync& e) { e.SetComment(L"wait"); }),
       L"Difference Detected: m_Comment -  vs wait\n"},
      {"sync alternate", changed(Sync::Create(), [](Sync& e) { e.SetIsAlternateType(true); }),
       L"Difference Detected: m_IsAltType - false vs true\n"},
      {"sync id before comment",
       changed(Sync::Create(),
               [](Sync& e) {
                 e.SetComment(L"wait");
                 e.SetSyncId(2);
               }),
       L"Difference Detected: m_SyncId - -1 vs 2\n"},
      {"dwell time", changed(Dwell::Create(), [](Dwell& e) { e.SetDwellTime(1.25); }),
       L"Difference Detected: m_DwellTime - 0 vs 1.25\n"},
      {"dwell time within tolerance", changed(Dwell::Create(), [](Dwell& e) { e.SetDwellTime(5e-7); }), L""},
      {"dwell speed", changed(Dwell::Create(), [](Dwell& e) { e.SetSpindleSpeed(1000); }),
       L"Difference Detected: m_SpindleSpeed - 0 vs 1000\n"},
      {"dwell direction", changed(Dwell::Create(), [](Dwell& e) { e.SetSpindleDir(3); }),
       L"Difference Detected: m_SpindleDirection - 0 vs 3\n"},
      // Intended: the CSS flag is compared as an int and prints 0 and 1.
      {"dwell css", changed(Dwell::Create(), [](Dwell& e) { e.SetIsSpeedUnitCSS(true); }),
       L"Difference Detected: m_IsSpindleSpeedUnitCSS - 0 vs 1\n"},
      {"feed units", changed(Feed::Create(), [](Feed& e) { e.SetUnitType(2); }),
       L"Difference Detected: m_FeedUnits - 0 vs 2\n"},
      {"clamp flag", changed(Clamp::Create(), [](Clamp& e) { e.SetIsClamping(true); }),
       L"Difference Detected: m_IsClamping - false vs true\n"},
      {"clamp time", changed(Clamp::Create(), [](Clamp& e) { e.SetTime(0.5); }),
       L"Difference Detected: m_Time - 0 vs 0.5\n"},
      // Intended: compensation events compare their names only.
      {"comp state", changed(Comp::Create(), [](Comp& e) { e.SetCompensationType(3); }), L""},
      {"comp name", changed(Comp::Create(), [](Comp& e) { e.SetIOFName(L"C"); }),
       L"Difference Detected: m_Name -  vs C\n"},
  };
  for (const Case& c : cases) {
    CString report = L"earlier\n";  // appending never clears the report
    EXPECT_EQ(c.compare(report), *c.line == 0) << c.what;
    EXPECT_EQ(report, CString(L"earlier\n") + c.line) << c.what;
  }
}

TEST(Events, TypeChecksInComparisons) {
  auto sync = DbIOFEvSync::Create();
  auto dwell = DbIOFEvDwell::Create();
  auto comp = DbIOFEvComp::Create();
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  auto clamp = DbIOFEvClamp::Create();
  const std::pair<std::function<bool(CString&)>, const char*> incompatible[] = {
      {[&](CString& r) { return sync->Compare(dwell, r); }, "sync with dwell"},
      {[&](CString& r) { return dwell->Compare(clamp, r); }, "dwell with clamp"},
      {[&](CString& r) { return feed->Compare(comp, r); }, "feed units with comp"},
      {[&](CString& r) { return clamp->Compare(DbIOFList::Create(0), r); }, "clamp with list"},
  };
  for (const auto& [compare, what] : incompatible) {
    CString report;
    EXPECT_FALSE(compare(report)) << what;
    EXPECT_EQ(report, L"Incompatible types.\n") << what;
  }
  // Intended: the compensation event has no type check, so any record with the same
  // name compares equal to it.
  CString report;
  EXPECT_TRUE(comp->Compare(sync, report));
  EXPECT_TRUE(comp->Compare(DbIOFList::Create(0), report));
  EXPECT_TRUE(report.IsEmpty());
}

TEST(Events, MemoryFileAndCloneRoundTrips) {
  Quarp::DbMgr mgr;
  auto sync = DbIOFEvSync::Create();
  sync->SetSyncId(9);
  sync->SetComment(L"Kanal 1 ↔ 2");
  sync->SetIsAlternateType(true);
  auto dwell = DbIOFEvDwell::Create();
  dwell->SetDwellTime(0.75);
  dwell->SetSpindleSpeed(-120.5);
  dwell->SetSpindleDir(1);
  dwell->SetIsSpeedUnitCSS(true);
  auto comp = DbIOFEvComp::Create();
  comp->SetCompensationType(3);
  comp->SetIOFName(L"left");
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  feed->SetUnitType(1);
  auto clamp = DbIOFEvClamp::Create();
  clamp->SetIsClamping(true);
  clamp->SetTime(4.25);
  const DbIOFBase* originals[] = {sync.operator->(), dwell.operator->(), comp.operator->(), feed.operator->(),
                                  clamp.operator->()};
  std::vector<Quarp::DbId> ids = {mgr.Add(sync), mgr.Add(dwell), mgr.Add(comp), mgr.Add(feed), mgr.Add(clamp)};

  // Every field shows in the visitor list, so equal lists mean equal records.
  const auto fields = [](const DbIOFBase& record) {
    TestSupport::RecordingVisitor v;
    record.VisitFields(v);
    return v.fields;
  };
  const auto check = [&](const DbIOFBase& copy, const DbIOFBase& original, const char* where) {
    EXPECT_EQ(copy.GetType(), original.GetType()) << where;
    EXPECT_EQ(fields(copy), fields(original)) << where << " " << original.GetObjectClassName();
    EXPECT_EQ(copy.ToIOFString(), original.ToIOFString()) << where;
  };

  // Memory archive, each record into a fresh one made by its registered factory.
  for (const DbIOFBase* original : originals) {
    std::unique_ptr<DbIOFBase> fresh(MakeFresh(*original));
    ASSERT_NE(fresh, nullptr) << original->GetObjectClassName();
    ASSERT_TRUE(TestSupport::LoadAll(*fresh, TestSupport::Store(const_cast<DbIOFBase&>(*original))));
    check(*fresh, *original, "memory");
  }

  // Whole file.
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok);
  for (std::size_t i = 0; i < ids.size(); ++i) {
    Quarp::DbCPtr<DbIOFBase> loaded;
    ASSERT_TRUE(back.Get(loaded, ids[i], 0));
    check(*loaded, *originals[i], "file");
    CString report;
    EXPECT_TRUE(originals[i]->Compare(loaded, report)) << report.ToUtf8();
  }

  // Clone into another manager (Copy of every field).
  Quarp::DbMgr other;
  for (const DbIOFBase* original : originals) {
    Quarp::DbErr err{};
    const Quarp::DbBase* clone = original->Clone(Quarp::DbCloneMode::Normal, &other, nullptr, err);
    ASSERT_NE(clone, nullptr);
    check(dynamic_cast<const DbIOFBase&>(*clone), *original, "clone");
  }
}

TEST(Events, TypeAnswers) {
  auto feed = DbIOFEvChangeFeedUnitType::Create();
  auto sync = DbIOFEvSync::Create();
  // The feed-unit event's code is not registered by name: its index is the host's
  // answer for an unregistered code; its class name is registered for archiving.
  EXPECT_EQ(feed->GetTypeIdx(), Quarp::GetDbTypeMgr().GetIndex(0x5137));
  EXPECT_EQ(feed->GetType(), 0x5137u);
  ASSERT_NE(Quarp::UtSerializeFind("DbIOFEvChangeFeedUnitType"), nullptr);
  EXPECT_EQ(feed->GetObjectClassId(), Quarp::UtSerializeFind("DbIOFEvChangeFeedUnitType")->id);
  EXPECT_STREQ(feed->GetObjectClassName(), "DbIOFEvChangeFeedUnitType");
  EXPECT_EQ(feed->GetClass(), L"DbIOFEvChangeFeedUnitType");
  EXPECT_TRUE(feed->ContainsType(DbIOFTypeMgr::GetIOFEVENTBASEMask(), true));
  EXPECT_TRUE(feed->ContainsType(0x5130));

  EXPECT_TRUE(sync->ContainsType(DbIOFTypeMgr::GetIOFEVSYNCMask(), false));
  EXPECT_FALSE(sync->ContainsType(DbIOFTypeMgr::GetIOFEVENTBASEMask(), false));
  EXPECT_TRUE(sync->ContainsType(DbIOFTypeMgr::GetIOFEVENTBASEMask(), true));
  EXPECT_FALSE(sync->ContainsType(DbIOFTypeMgr::GetIOFNCIBASEMask(), true));
  EXPECT_FALSE(sync->ContainsType(0x5136));
  EXPECT_EQ(sync->DbIOFEventBase::GetClass(), L"DbIOFEventBase");
  EXPECT_EQ(sync->GetSubclassLevel(0), 4);
  for (const char* name : {"DbIOFEvSync", "DbIOFEvDwell", "DbIOFEvComp", "DbIOFEvClamp"}) {
    EXPECT_NE(Quarp::UtSerializeFind(name), nullptr) << name;
  }
  EXPECT_EQ(Quarp::UtSerializeFind("DbIOFEventBase"), nullptr);  // an abstract level
}

TEST(DbIOFEvDwell, VisitsEveryField) {
  auto dwell = DbIOFEvDwell::Create();
  dwell->SetDwellTime(1.5);
  dwell->SetSpindleSpeed(300);
  dwell->SetSpindleDir(2);
  dwell->SetIsSpeedUnitCSS(true);
  TestSupport::RecordingVisitor v;
  dwell->VisitFields(v);
  EXPECT_EQ(v.fields,
            (std::vector<std::string>{"m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]", "m_DwellTime=1.5",
                                      "m_SpindleSpeed=300", "m_SpindleDirection=2", "m_IsSpindleSpeedUnitCSS=true"}));
}

}  // namespace
