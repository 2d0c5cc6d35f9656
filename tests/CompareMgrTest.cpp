// The document comparison: the difference items for each kind of difference, the walk
// order, the limit, cycles, shared and deeply nested lists, set-up failures, the texts
// of ToString and DumpDiffInfo.
#include "CompareJob.h"
#include "TestSupport.h"

#include <iof/DbIOFNciLinear.h>
#include <iof/UtIofCompareMgr.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace IOF;
using Quarp::DbId;
using Strings = std::vector<std::string>;
using TestSupport::Base;
using TestSupport::Job;

class Observed : public UtIofCompareMgr {
 public:
  Strings pairs;          // "id1 id2 report" of each compared pair
  mutable Strings texts;  // what DumpDiffInfo built
  Observed() {
    SetPairObserver([this](const DbIOFBase& a, const DbIOFBase& b, bool equal, const CString& report) {
      EXPECT_EQ(equal, report.IsEmpty());
      pairs.push_back(std::to_string(a.GetId().Value()) + " " + std::to_string(b.GetId().Value()) + " " +
                      report.ToUtf8());
    });
  }
  using UtIofCompareMgr::LogDifference;
  using UtIofCompareMgr::PurgeDbMgrPtrs;
  void SetLimit(int limit) { m_DiffLimit = limit; }
  void OnDiffInfoText(const CString& text) const override { texts.push_back(text.ToUtf8()); }
};

Strings Items(const UtIofCompareMgr& cmp) {
  Strings items;
  for (const UtIofDiffItem& d : cmp.GetDifferences()) items.push_back(d.ToString(CString()).ToUtf8());
  return items;
}

Strings Diff(Job& left, Job& right, Observed& cmp) {
  EXPECT_EQ(cmp.Compare(left.doc, right.doc), 0);
  EXPECT_EQ(cmp.DifferencesFound(), static_cast<int>(cmp.GetDifferences().size()));
  return Items(cmp);
}

TEST(CompareMgr, ItemsForEachKindOfDifference) {
  const std::string sizes = " Id1:8, Id2:8, \"IOFLists not same size.\".\n";
  const std::string types = " Id1:12, Id2:12, \"Objects are of different types.\".\n";
  const std::string missing = " Id1:11, Id2:11, \"Failed to get object from IOFList.\".\n";
  struct Case {
    const char* name;
    std::function<void(Job&, Job&)> change;
    Strings items;
  };
  const Case cases[] = {
      {"equal", [](Job&, Job&) {}, {}},
      {"a field value only", [](Job&, Job& r) { r.Get<DbIOFNciLinear>(DbId(5))->SetFeedRate(120); }, {}},
      {"a document field only", [](Job&, Job& r) { r.doc->SetFileName(L"b.nc"); }, {}},
      {"one more move in a motion list", [](Job&, Job& r) { r.Push(DbId(8), {r.Move()}); }, {sizes, sizes}},
      {"records of different types",
       [](Job& l, Job& r) {
         l.Push(DbId(11), {l.Move()});
         r.Push(DbId(11), {r.Add(DbIOFMotionBlock::Create())});
       },
       {types, types}},
      {"a sub-list on one side",
       [](Job&, Job& r) { r.Sub(DbId(5), r.List(DbIOFList::kMotionSubList, {})); },
       {" Id1:5, Id2:5, \"Objects have different subList status.\".\n",
        " Id1:5, Id2:5, \"Stream lists not same size.\".\n"}},
      {"an item that does not resolve",
       [](Job& l, Job& r) {
         l.Push(DbId(11), {l.Move()});
         r.Push(DbId(11), {DbId(999)});
       },
       {missing, missing}},
      {"no streams on one side",
       [](Job&, Job& r) { r.doc->GetStreams().RemoveAll(); },
       {" Id1:1, Id2:1, \"Stream lists not same size.\".\n"}},
      {"no job setup on one side",
       [](Job&, Job& r) { r.doc->SetJobSetupID(DbId()); },
       {" Id1:2, Id2:0, \"Failed to get job setup object from DbIOFDocument.\n\".\n"}},
      {"no machine information on one side",
       [](Job&, Job& r) { r.doc->SetMachineInfoID(DbId(2)); },  // a job setup, not a machine information
       {" Id1:1, Id2:1, \"Failed to get machine information object from DbIOFDocument.\n\".\n"}},
  };
  for (const Case& c : cases) {
    Job left, right;
    Base(left);
    Base(right);
    c.change(left, right);
    Observed cmp;
    EXPECT_EQ(Diff(left, right, cmp), c.items) << c.name;
  }
}

TEST(CompareMgr, WalksDepthFirstAndShowsEachPairsReport) {
  Job left, right;
  Base(left);
  Base(right);
  right.Get<DbIOFNciLinear>(DbId(9))->SetFeedRate(120);
  Observed cmp;
  EXPECT_EQ(Diff(left, right, cmp), Strings{});
  // The documents, job setups, machine information, the stream; then each record, its
  // sub-lists (each fully), then its items.
  EXPECT_EQ(cmp.pairs, (Strings{"1 1 ", "2 2 ", "3 3 ", "4 4 ", "11 11 ", "10 10 ",
                                "9 9 Difference Detected: m_FeedRate - 100 vs 120\n", "5 5 ", "6 6 ", "8 8 ", "7 7 "}));
}

TEST(CompareMgr, TheLimitStopsTheWalk) {
  const std::pair<int, int> limits[] = {{-1, 4}, {0, 2}, {1, 2}, {2, 4}};
  for (const auto& [limit, count] : limits) {
    Job left, right;
    Base(left);
    Base(right);
    right.Push(DbId(10), {right.Move()});
    right.Push(DbId(8), {right.Move()});
    Observed cmp;
    cmp.SetLimit(limit);
    EXPECT_EQ(Diff(left, right, cmp).size(), static_cast<std::size_t>(count)) << limit;
  }
}

// A list that contains itself (directly, and through a move's sub-list), lists shared
// 2^40 times, and lists nested 100000 deep: each pair is compared, and walked once.
TEST(CompareMgr, CyclesSharedAndDeepListsEnd) {
  Observed cyclic;
  Job l1, r1;
  for (Job* j : {&l1, &r1}) {
    const DbId move = j->Move();  // 5, in list 6 and in its own sub-list 7
    j->Push(j->stream, {j->List(DbIOFList::kOperation, {move, DbId(6)})});
    j->Sub(move, j->List(DbIOFList::kMotionSubList, {move}));
  }
  EXPECT_EQ(Diff(l1, r1, cyclic), Strings{});
  EXPECT_EQ(cyclic.pairs, (Strings{"1 1 ", "2 2 ", "3 3 ", "4 4 ", "6 6 ", "5 5 ", "7 7 ", "5 5 ", "6 6 "}));

  Observed shared;
  Job l2, r2;
  for (Job* j : {&l2, &r2}) {
    DbId list = j->List(DbIOFList::kOperation, {});
    for (int level = 0; level < 40; ++level) list = j->List(DbIOFList::kOperation, {list, list});
    j->Push(j->stream, {list});
  }
  EXPECT_EQ(Diff(l2, r2, shared), Strings{});
  EXPECT_EQ(shared.pairs.size(), 4u + 1 + 2 * 40);

  Observed deep;
  Job l3, r3;
  for (Job* j : {&l3, &r3}) {
    DbId list = j->List(DbIOFList::kOperation, {j->Move()});
    for (int level = 0; level < 100000; ++level) list = j->List(DbIOFList::kOperation, {list});
    j->Push(j->stream, {list});
  }
  r3.Push(DbId(6), {r3.Move()});
  EXPECT_EQ(Diff(l3, r3, deep), Strings(2, " Id1:6, Id2:6, \"IOFLists not same size.\".\n"));
}

TEST(CompareMgr, SetUpFailuresAndOwnedManagers) {
  Job left, right;
  Base(left);
  Base(right);
  right.Push(DbId(8), {right.Move()});
  const std::string a = TestSupport::TempPath("a.iof"), b = TestSupport::TempPath("b.iof");
  const std::string empty = TestSupport::TempPath("empty.iof"), none = TestSupport::TempPath("none.iof");
  Quarp::DbMgr nothing;
  ASSERT_EQ(left.mgr->Write(Quarp::UtString(a.c_str())), Quarp::DbErr::Ok);
  ASSERT_EQ(right.mgr->Write(Quarp::UtString(b.c_str())), Quarp::DbErr::Ok);
  ASSERT_EQ(nothing.Write(Quarp::UtString(empty.c_str())), Quarp::DbErr::Ok);
  const auto path = [](const std::string& p) { return CString::FromUtf8(p); };

  TestSupport::AssertRecorder asserts;
  Observed cmp;
  EXPECT_FALSE(cmp.SetDocs(path(none), path(b)));
  EXPECT_FALSE(cmp.SetDocs(path(a), path(none)));
  EXPECT_FALSE(cmp.SetDocs(path(a), path(empty)));
  EXPECT_EQ(cmp.Compare(left.doc, Quarp::DbPtr<DbIOFDocument>()), 0);
  EXPECT_EQ(Items(cmp), Strings{" Id1:0, Id2:0, \"Failed to set documents up.\".\n"});
  EXPECT_FALSE(cmp.SetDocs(Quarp::DbPtr<DbIOFDocument>(), right.doc));
  const std::string at = "UtIofCompareMgr:";
  EXPECT_EQ(asserts.Places(),
            (Strings{at + "73 IOF::UtIofCompareMgr::SetDocs", at + "82 IOF::UtIofCompareMgr::SetDocs",
                     at + "93 IOF::UtIofCompareMgr::SetDocs", at + "113 IOF::UtIofCompareMgr::SetDocs",
                     at + "109 IOF::UtIofCompareMgr::SetDocs"}));

  // A copy shares the managers the original opened; purging releases the original's.
  auto opened = std::make_unique<Observed>();
  ASSERT_TRUE(opened->SetDocs(path(a), path(b)));
  UtIofCompareMgr copy(*opened);
  copy.SetPairObserver(nullptr);  // the original's observer goes with it
  opened->PurgeDbMgrPtrs();
  EXPECT_TRUE(opened->GetDoc1().IsNull() && opened->GetDoc2().IsNull());
  opened.reset();
  EXPECT_EQ(copy.Compare(), 0);
  EXPECT_EQ(Items(copy), Strings(2, " Id1:8, Id2:8, \"IOFLists not same size.\".\n"));
}

TEST(CompareMgr, Texts) {
  Observed cmp;
  cmp.LogDifference(DbId(5), DbId(0x100000007), CString(L"t"));
  cmp.LogDifference(DbId(0x1FFFFFFFF), DbId(), CString(L"u"));
  EXPECT_EQ(cmp.GetDifferences()[1].ToString(CString(L"Stream 1")).ToUtf8(), "Stream 1:  Id1:-1, Id2:0, \"u\".\n");
  cmp.DumpDiffInfo();
  // The labels and the "\nn" are the classic ones.
  EXPECT_EQ(cmp.texts, (Strings{"0.\tLeftId(5)), IRightId(7)), t\nn", "0.\tID1(5)), ID1(7)), t",
                                "1.\tLeftId(-1)), IRightId(0)), u\nn", "1.\tID1(-1)), ID1(0)), u"}));
}

}  // namespace
