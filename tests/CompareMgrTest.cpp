// The document comparison: the difference items for each kind of difference, the walk
// order, the limit, cycles and shared lists, set-up failures, the texts of ToString and
// DumpDiffInfo. (Lists nested 100000 deep: CorruptFileTest.)
#include "CompareJob.h"

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
using TestSupport::Job;
using Change = std::function<void(Job& left, Job& right)>;

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

// The items of comparing two base jobs after `change`.
Strings Diff(const Change& change, Observed& cmp) {
  Job left(true), right(true);
  change(left, right);
  EXPECT_EQ(cmp.Compare(left.doc, right.doc), 0);
  return Items(cmp);
}

TEST(CompareMgr, ItemsForEachKindOfDifference) {
  const std::string sizes = " Id1:8, Id2:8, \"IOFLists not same size.\".\n";
  const std::string types = " Id1:12, Id2:12, \"Objects are of different types.\".\n";
  const std::string missing = " Id1:11, Id2:11, \"Failed to get object from IOFList.\".\n";
  const std::pair<Change, Strings> cases[] = {
      {[](Job&, Job&) {}, {}},
      {[](Job&, Job& r) { r.Get<DbIOFNciLinear>(DbId(5))->SetFeedRate(120); }, {}},  // a field value only
      {[](Job&, Job& r) { r.doc->SetFileName(L"b.nc"); }, {}},
      {[](Job&, Job& r) { r.Push(DbId(8), {r.Move()}); }, {sizes, sizes}},
      {[](Job& l, Job& r) { l.Push(DbId(11), {l.Move()}), r.Push(DbId(11), {r.Add(DbIOFMotionBlock::Create())}); },
       {types, types}},
      {[](Job&, Job& r) { r.Sub(DbId(5), r.List(DbIOFList::kMotionSubList, {})); },
       {" Id1:5, Id2:5, \"Objects have different subList status.\".\n",
        " Id1:5, Id2:5, \"Stream lists not same size.\".\n"}},
      {[](Job& l, Job& r) { l.Push(DbId(11), {l.Move()}), r.Push(DbId(11), {DbId(999)}); }, {missing, missing}},
      {[](Job&, Job& r) { r.doc->GetStreams().RemoveAll(); }, {" Id1:1, Id2:1, \"Stream lists not same size.\".\n"}},
      {[](Job&, Job& r) { r.doc->SetJobSetupID(DbId()); },
       {" Id1:2, Id2:0, \"Failed to get job setup object from DbIOFDocument.\n\".\n"}},
      {[](Job&, Job& r) { r.doc->SetMachineInfoID(DbId(2)); },  // a job setup, not a machine information
       {" Id1:1, Id2:1, \"Failed to get machine information object from DbIOFDocument.\n\".\n"}},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    Observed cmp;
    EXPECT_EQ(Diff(cases[i].first, cmp), cases[i].second) << "case " << i;
  }
}

TEST(CompareMgr, WalksDepthFirstComparingRecordsInListsThatContainThemselves) {
  const Change cycles = [](Job& l, Job& r) {
    r.Get<DbIOFNciLinear>(DbId(9))->SetFeedRate(120);
    for (Job* j : {&l, &r})
      j->Push(DbId(11), {DbId(11)}), j->Push(DbId(8), {DbId(6)});  // directly, and through 6's sub-list
  };
  Observed cmp;
  EXPECT_EQ(Diff(cycles, cmp), Strings{});
  // The documents, job setups, machine information, the stream; then each record, its
  // sub-lists (each fully), then its items; a record already walked on the path is
  // compared again and not walked.
  EXPECT_EQ(cmp.pairs, (Strings{"1 1 ", "2 2 ", "3 3 ", "4 4 ", "11 11 ", "10 10 ",
                                "9 9 Difference Detected: m_FeedRate - 100 vs 120\n", "5 5 ", "6 6 ", "8 8 ", "7 7 ",
                                "6 6 ", "11 11 "}));
  // Lists shared 2^40 times: each pair is compared, and walked once.
  const Change shared = [](Job& l, Job& r) {
    for (Job* j : {&l, &r}) {
      DbId list = j->List(DbIOFList::kOperation, {});
      for (int level = 0; level < 40; ++level) list = j->List(DbIOFList::kOperation, {list, list});
      j->Push(DbId(11), {list});
    }
  };
  Observed once;
  EXPECT_EQ(Diff(shared, once), Strings{});
  EXPECT_EQ(once.pairs.size(), 11u + 1 + 2 * 40);
}

TEST(CompareMgr, TheLimitStopsTheWalk) {
  const std::pair<int, std::size_t> limits[] = {{-1, 4}, {0, 2}, {1, 2}, {2, 4}};
  for (const auto& [limit, count] : limits) {
    Observed cmp;
    cmp.SetLimit(limit);
    EXPECT_EQ(Diff([](Job&, Job& r) { r.Push(DbId(10), {r.Move()}), r.Push(DbId(8), {r.Move()}); }, cmp).size(), count)
        << limit;
  }
}

TEST(CompareMgr, SetUpFailuresAndOwnedManagers) {
  Job left(true), right(true), nothing;
  right.Push(DbId(8), {right.Move()});
  nothing.mgr->Clear();
  const CString a = CString::FromUtf8(left.Write("a.iof")), b = CString::FromUtf8(right.Write("b.iof"));
  const CString empty = CString::FromUtf8(nothing.Write("empty.iof")), none(L"/nonexistent/none.iof");

  TestSupport::AssertRecorder asserts;
  Observed cmp;
  EXPECT_FALSE(cmp.SetDocs(none, b) || cmp.SetDocs(a, none) || cmp.SetDocs(a, empty));
  EXPECT_EQ(cmp.Compare(left.doc, Quarp::DbPtr<DbIOFDocument>()), 0);
  EXPECT_EQ(Items(cmp), Strings{" Id1:0, Id2:0, \"Failed to set documents up.\".\n"});
  EXPECT_FALSE(cmp.SetDocs(Quarp::DbPtr<DbIOFDocument>(), right.doc));
  Strings places;
  for (const int line : {73, 82, 93, 113, 109})
    places.push_back("UtIofCompareMgr:" + std::to_string(line) + " IOF::UtIofCompareMgr::SetDocs");
  EXPECT_EQ(asserts.Places(), places);

  // A copy shares the managers the original opened; purging releases the original's.
  auto opened = std::make_unique<Observed>();
  ASSERT_TRUE(opened->SetDocs(a, b));
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
