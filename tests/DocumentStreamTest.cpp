// The document and its streams: stream lookup rules, the de-duplicating adders, old
// layouts, comparison and texts.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace IOF;
using Quarp::DbId;
using namespace TestSupport;

namespace {

TEST(DbIOFDocument, ANewDocument) {
  auto doc = DbIOFDocument::Create();
  EXPECT_TRUE(doc->GetIsMetric());
  EXPECT_EQ(doc->GetNumberStreams(), 0);
  EXPECT_FALSE(doc->GetUseTCPForSimulationByDefault());
  EXPECT_EQ(doc->ToIOFString(), L"IOF Document Object fname: , ncName , isMetric 1");
  // In no manager, no stream can be made.
  EXPECT_TRUE(doc->AddStreamToList(1).IsNull());
  EXPECT_EQ(doc->GetNumberStreams(), 0);
  EXPECT_TRUE(doc->GetStreamById(1).IsNull());
}

TEST(DbIOFDocument, AddStreamToListMakesOneStreamPerNumber) {
  Quarp::DbMgr mgr;
  auto doc = DbIOFDocument::Create(&mgr);
  mgr.Add(doc);
  const DbId first = doc->AddStreamToList(1);
  ASSERT_FALSE(first.IsNull());
  EXPECT_EQ(doc->AddStreamToList(1), first);
  EXPECT_EQ(doc->GetNumberStreams(), 1);
  Quarp::DbCPtr<DbIOFStream> stream;
  ASSERT_TRUE(mgr.Get(stream, first, 0));
  EXPECT_EQ(stream->GetStreamId(), 1);
  EXPECT_EQ(stream->GetIOFName(), L"Stream Object");
  EXPECT_EQ(stream->GetListType(), DbIOFList::kStream);
  const DbId second = doc->AddStreamToList(2);
  EXPECT_NE(second, first);
  EXPECT_EQ(doc->GetStreamByIndex(0), first);
  EXPECT_EQ(doc->GetStreamByIndex(1), second);
  EXPECT_TRUE(doc->GetStreamByIndex(-1).IsNull());
  EXPECT_TRUE(doc->GetStreamByIndex(doc->GetNumberStreams()).IsNull());
}

TEST(DbIOFDocument, StreamLookupRules) {
  Quarp::DbMgr mgr;
  auto doc = DbIOFDocument::Create();
  mgr.Add(doc);
  auto add = [&](int number) {
    auto s = DbIOFStream::Create(number);
    const DbId id = mgr.Add(s);
    doc->GetStreams().Add(id);
    return id;
  };
  const DbId twoA = add(2);
  const DbId twoB = add(2);
  EXPECT_NE(twoA, twoB);
  EXPECT_EQ(doc->GetStreamById(2), twoA);  // the earliest stream with the number wins
  const DbId gone = add(7);
  const DbId three = add(3);
  mgr.Remove(gone);
  // The walk runs from the last id backwards and ends at an id that does not resolve.
  EXPECT_EQ(doc->GetStreamById(3), three);
  EXPECT_TRUE(doc->GetStreamById(2).IsNull());
  // A record of another class also ends it.
  auto list = DbIOFList::Create(DbIOFList::kStream);
  doc->GetStreams().Add(mgr.Add(list));
  EXPECT_TRUE(doc->GetStreamById(3).IsNull());
}

// The stream ids are a compact id array; the job setup and machine information ids are
// archived but not compared; the streams are compared last, by their count.
TEST(DbIOFDocument, LayoutAndCopy) {
  ExpectLayout<DbIOFDocument>(
      {"01" + kRecordBase,
       L"IOF Document Object fname: A, ncName n, isMetric 0",
       {R("01 02 ", "00 ", L"TotalStreams - 0 vs 1"), R(kFalse, kTrue, L"m_IsMetric - true vs false"),
        R(Str(u"A"), I0, L"m_FileName -  vs A"), R(Str(u"n"), I0, L"m_NcFilename -  vs n"),
        R(Le(0ull), Le(0ull), nullptr), R(Le(6ull), Le(0ull), nullptr),
        R(kTrue, kFalse, L"m_UseTCPForSimulationByDefault - false vs true", 1)},
       {1, 2, 3, 6, 0, 4, 5},
       "m_Streams=[2] m_IsMetric=false m_FileName=\"A\" m_NcFilename=\"n\" m_JobSetupId=#0 m_MachineInfoId=#6 "
       "m_UseTCPForSimulationByDefault=true"});
  using D = DbIOFDocument;
  ExpectReportOrder<D>(
      {{[](D& d, bool on) { d.SetIOFName(on ? L"D" : L""); }, L"Difference Detected: m_Name -  vs D\n"}});

  // The job setup id loads (a clone does not carry it, so the table holds 0 for it); Copy
  // leaves it: intended.
  const std::string setup = "01" + kRecordBase + "00 01 00 00 00 00 00 00 00 00" + Le(5ull) + Le(0ull) + "00";
  EXPECT_EQ(Loaded<DbIOFDocument>(Hex(setup))->GetJobSetupID(), DbId(5));
  auto a = DbIOFDocument::Create();
  auto b = DbIOFDocument::Create();
  b->SetMachineInfoID(DbId(8));
  b->GetStreams().Add(DbId(4));
  b->SetIsMetric(false);
  a->SetJobSetupID(DbId(1));
  a->GetStreams().Add(DbId(77));
  a->Copy(*b, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(a->GetJobSetupID(), DbId(1));  // not copied: intended
  EXPECT_EQ(a->GetMachineInfoID(), DbId(8));
  EXPECT_EQ(a->GetStreams(), b->GetStreams());
  EXPECT_FALSE(a->GetIsMetric());
}

Quarp::DbPtr<DbIOFNciToolChange> Tool(int slot, int type, int num, int station, int lengthOffset, int diaOffset) {
  auto tc = DbIOFNciToolChange::Create();
  tc->SetToolSlotId(slot);
  tc->SetToolType(static_cast<std::int16_t>(type));
  tc->SetToolNum(num);
  tc->SetToolStation(station);
  tc->SetLengthOffsetNum(lengthOffset);
  tc->SetDiaOffsetNum(diaOffset);
  return tc;
}

TEST(DbIOFStream, AddToolChangeReusesEqualToolSetUps) {
  Quarp::DbMgr mgr;
  auto stream = DbIOFStream::Create(1);
  mgr.Add(stream);
  bool added = false;
  auto t1 = Tool(1, 2, 3, 4, 10, 20);
  const DbId first = stream->AddToolChange(t1, added, true, true);
  EXPECT_TRUE(added);
  EXPECT_EQ(stream->GetFirstToolChgId(), first);
  EXPECT_EQ(stream->GetLastToolChgId(), first);

  auto t2 = Tool(5, 2, 3, 4, 10, 20);  // another slot
  const DbId second = stream->AddToolChange(t2, added, true, true);
  EXPECT_TRUE(added);
  EXPECT_EQ(stream->GetLastToolChgId(), second);

  auto again = Tool(1, 2, 3, 4, 10, 20);
  added = true;
  EXPECT_EQ(stream->AddToolChange(again, added, true, true), first);
  EXPECT_FALSE(added);
  EXPECT_TRUE(again->GetDbMgr() == nullptr);  // the given record is not added
  EXPECT_EQ(stream->GetFirstToolChgId(), first);
  EXPECT_EQ(stream->GetLastToolChgId(), first);  // the matched id becomes the last

  // Offsets take part only when asked.
  auto otherLength = Tool(1, 2, 3, 4, 11, 20);
  EXPECT_EQ(stream->AddToolChange(otherLength, added, true, false), first);
  EXPECT_FALSE(added);
  EXPECT_NE(stream->AddToolChange(otherLength, added, true, true), first);
  EXPECT_TRUE(added);
  auto otherDia = Tool(1, 2, 3, 4, 10, 21);
  EXPECT_EQ(stream->AddToolChange(otherDia, added, false, true), first);
  EXPECT_EQ(stream->GetToolChangeList().GetSize(), 3);

  // Registered ids that no longer resolve are skipped.
  mgr.Remove(first);
  auto replacement = Tool(1, 2, 3, 4, 10, 20);
  const DbId fresh = stream->AddToolChange(replacement, added, true, true);
  EXPECT_TRUE(added);
  EXPECT_NE(fresh, first);
  EXPECT_EQ(stream->GetFirstToolChgId(), first);  // the first stays as it was

  auto outside = DbIOFStream::Create(2);
  auto t3 = Tool(1, 1, 1, 1, 1, 1);
  EXPECT_TRUE(outside->AddToolChange(t3, added, true, true).IsNull());
  EXPECT_FALSE(added);
}

TEST(DbIOFStream, AddPlaneReusesEqualPlanes) {
  Quarp::DbMgr mgr;
  auto stream = DbIOFStream::Create(1);
  mgr.Add(stream);
  const GmXformMat3D top = GmXformMat3D::Translate(0, 0, 5);
  const DbId p1 = stream->AddPlane(top, 54, false, 1e-6);  // an empty register: created
  ASSERT_FALSE(p1.IsNull());
  Quarp::DbCPtr<DbIOFNciPlane> plane;
  ASSERT_TRUE(mgr.Get(plane, p1, 0));
  EXPECT_EQ(plane->GetWorkOffsetNum(), 54);
  GmXformMat3D stored;
  plane->GetMatrix(stored);
  EXPECT_TRUE(stored.IsSame(top, 0, 0));

  EXPECT_EQ(stream->AddPlane(top, 54, false, 1e-6), p1);
  EXPECT_NE(stream->AddPlane(top, 55, false, 1e-6), p1);  // another work offset: distinct
  EXPECT_NE(stream->AddPlane(top, 54, true, 1e-6), p1);   // forceNew always creates
  EXPECT_EQ(stream->GetToolPlaneList().GetSize(), 3);

  // Within the angle tolerance the first plane is reused; beyond it a new one is made.
  GmXformMat3D tilted = top;
  tilted.RotYThis(0.001);
  EXPECT_EQ(stream->AddPlane(tilted, 54, false, 0.002), p1);
  EXPECT_NE(stream->AddPlane(tilted, 54, false, 0.0005), p1);
  EXPECT_TRUE(stream->GetFirstToolChgId().IsNull());
  EXPECT_TRUE(stream->GetLastToolChgId().IsNull());
  EXPECT_TRUE(DbIOFStream::Create(3)->AddPlane(top, 1, false, 0).IsNull());
}

// The id registers are compact id arrays; version 0 held one more before the lathe canned
// turns, read and dropped. The comparison takes the output file before the tool-change
// ids and compares the registers' sizes, not their contents.
TEST(DbIOFStream, Layout) {
  ExpectLayout<DbIOFStream>(
      {"01 00" + kRecordBase + "01 00 00 00 00 00 00 00",  // the list part: kind 1, no items
       L"IOF Stream Object: id=3, Name = , 1stToolChg=7, lastToolChg=8\n",
       {R(Le(3), I0, L"m_StreamId - 0 vs 3"), Flag(L"m_AxisCombinationDefined - false vs true"),
        R("01 07 ", "00 ", L"NumToolChanges - 0 vs 1"), R(Le(7ull), Le(0ull), L"m_FirstToolChgId - 0 vs 7"),
        R(Le(8ull), Le(0ull), L"m_LastToolChgId - 0 vs 8"), R("01 05 ", "00 ", L"NumToolPlanes - 0 vs 1"),
        Gone("02 0B 0C ", 1), R("01 09 ", "00 ", L"NumSubPrograms - 0 vs 1"),
        R(Str(u"N"), I0, L"m_NCOutputFile -  vs N"),
        R(Le(6ull), Le(0ull), L"m_DefaultReferenceReturnPositionId - 0 vs 6")},
       {0, 1, 8, 3, 4, 2, 5, 7, 9, 6},
       "m_StreamId=3 m_AxisCombinationDefined=true m_ToolChangeList=[7] m_FirstToolChgId=#7 m_LastToolChgId=#8 "
       "m_ToolPlaneList=[5] m_LatheCannedTurnIdList=[9] m_NCOutputFile=\"N\" m_DefaultReferenceReturnPositionId=#6"});
  // Registers of the same length compare equal whatever ids they hold; the list part
  // comes first.
  using S = DbIOFStream;
  ExpectReportOrder<S>(
      {
          {[](S& s, bool) { s.GetToolChangeList()[0] = DbId(2); }, nullptr},
          {[](S& s, bool on) { s.SetIOFName(on ? L"S" : L""); }, L"Difference Detected: m_Name -  vs S\n"},
          {[](S& s, bool on) { s.SetListType(on ? DbIOFList::kOperation : DbIOFList::kStream); },
           L"Difference Detected: m_ListType - 1 vs 2\n"},
      },
      [] {
        auto s = DbIOFStream::Create(1);
        s->GetToolChangeList().Add(DbId(1));
        return s;
      });
  auto stream = DbIOFStream::Create(5);
  stream->SetIOFName(CString(L"Main"));
  stream->SetFirstToolChgId(DbId(0x100000003ull));
  EXPECT_EQ(stream->ToIOFString(), L"IOF Stream Object: id=5, Name = Main, 1stToolChg=3, lastToolChg=0\n");
}

}  // namespace
