// The stream iterator and the filtered iterators, on jobs built in a manager: the walk
// order both ways with depths and parents, the type mask, the choice of a sub-list,
// priorities, bookmarks, copies, cycles, the two error operations, and each filtered
// iterator (the operation iterator yields operations of every operation class and no
// other list).
#include "TestSupport.h"

#include <afx/Afx.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciTransSubProgOp.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/FilteredTypeIterator.h>
#include <iof/MotionBlockIterator.h>
#include <iof/OperationIterator.h>

#include <gtest/gtest.h>

#include <map>
#include <tuple>

namespace {

using namespace IOF;
using Quarp::DbId;
using Mgr = DbIOFTypeMgr;

// A job in a manager whose records carry names, so that walks read as text.
struct Job {
  Quarp::DbMgr mgr;
  std::map<std::uint64_t, std::string> names;

  template <class P>
  DbId Add(P ptr, const std::string& name) {
    const DbId id = mgr.Add(ptr);
    names[id.Value()] = name;
    return id;
  }
  DbId Move(const std::string& name) { return Add(DbIOFNciLinear::Create(), name); }
  DbId List(const std::string& name, int kind, const std::vector<DbId>& items) {
    return Push(Add(DbIOFList::Create(kind), name), items);
  }
  DbId Push(DbId list, const std::vector<DbId>& items) {
    Quarp::DbPtr<DbIOFList> p;
    EXPECT_TRUE(mgr.Get(p, list, 0));
    for (const DbId id : items) p->PushBack(id);
    return list;
  }
  void Sub(DbId owner, DbId list) {
    Quarp::DbPtr<DbIOFBase> p;
    EXPECT_TRUE(mgr.Get(p, owner, 0) && p->AddSubList(list));
  }
  Quarp::DbCPtr<DbIOFList> Get(DbId id) {
    Quarp::DbCPtr<DbIOFList> p;
    mgr.Get(p, id, 0);
    return p;
  }
  std::string Name(DbId id) { return id.IsNull() ? "-" : names[id.Value()]; }
  // "name/depth", with "^parent" below the top level, of every record yielded.
  std::string Walk(StreamIteratorBase& it, bool backward = false) {
    std::string text;
    for (DbId id = backward ? it.GetLast() : it.GetFirst(); !id.IsNull(); id = backward ? --it : ++it) {
      text += (text.empty() ? "" : " ") + Name(id) + "/" + std::to_string(it.GetSubListStackDepth());
      if (!it.GetParentId().IsNull()) text += "^" + Name(it.GetParentId());
    }
    return text;
  }
};

// A stream: A; operation op1 (carrying sub-list {X}) holding B (an empty sub-list), C
// (sub-list {D, E}) and F (motion sub-list {M1, M2}); an empty transformed sub-program
// operation op2; G (sub-list {W}); H.
struct StreamJob : Job {
  DbId stream;
  StreamJob() {
    const DbId a = Move("A"), b = Move("B"), c = Move("C"), f = Move("F"), g = Move("G");
    Sub(b, List("sb", DbIOFList::kMotionBlock, {}));
    Sub(c, List("sc", DbIOFList::kMotionBlock, {Move("D"), Move("E")}));
    Sub(f, List("sf", DbIOFList::kMotionSubList,
                {Add(DbIOFMotionBlock::Create(), "M1"), Add(DbIOFArcMotionBlock::Create(), "M2")}));
    Sub(g, List("sg", DbIOFList::kRetractBlock, {Add(DbIOFEvDwell::Create(), "W")}));
    auto op1 = DbIOFNciOperation::Create();
    for (const DbId id : {b, c, f}) op1->PushBack(id);
    const DbId op = Add(op1, "op1");
    Sub(op, List("sx", DbIOFList::kMotionBlock, {Move("X")}));
    const DbId op2 = Add(DbIOFNciTransSubProgOp::Create(), "op2");
    stream = List("S", DbIOFList::kStream, {a, op, op2, g, Add(DbIOFEvDwell::Create(), "H")});
  }
};

TEST(StreamIterator, WalksInProgramOrderBothWaysAndTheFilteredIteratorsPick) {
  StreamJob job;
  const auto s = job.Get(job.stream);
  StreamIteratorBase it(s), all(s, Mgr::GetIOFBASEMask(), -1), noDwells(s);
  Quarp::UtMask mask = Mgr::GetIOFNCILINEARMask();
  mask |= Mgr::GetIOFLISTMask();
  noDwells.SetIOFTypeMask(mask);
  FilteredTypeIterator moves(s, Mgr::GetIOFNCIBASEMOVEMask()), nothing(s, Mgr::GetIOFCOOLANTMask());
  MotionBlockIterator blocks(s);
  OperationIterator ops(s), opsOfAll(s);
  opsOfAll.SetIOFTypeMask(Mgr::GetIOFBASEMask());  // the filter still yields operations only
  const std::vector<std::pair<StreamIteratorBase*, std::string>> walks = {
      // An operation is a list record: yielded on arrival, then its items (its own
      // sub-list {X} is never entered). C gives way to its sub-list; B (empty sub-list)
      // and F (kind 0x10 outside the mask 15) are yielded themselves.
      {&it,
       "A/1 op1/1 B/2^op1 D/3^C E/3^C F/2^op1 op2/1 W/2^G H/1 | H/1 W/2^G op2/1 op1/1 F/2^op1 E/3^C D/3^C B/2^op1 A/1"},
      {&all,
       "A/1 op1/1 B/2^op1 D/3^C E/3^C M1/3^F M2/3^F op2/1 W/2^G H/1 | H/1 W/2^G op2/1 op1/1 M2/3^F M1/3^F E/3^C D/3^C "
       "B/2^op1 A/1"},
      // G's sub-list holds only a dwell: the walk enters it, finds nothing valid and
      // climbs out past G, which is not yielded either.
      {&noDwells, "A/1 op1/1 B/2^op1 D/3^C E/3^C F/2^op1 op2/1 | op2/1 op1/1 F/2^op1 E/3^C D/3^C B/2^op1 A/1"},
      {&moves, "A/1 B/2^op1 D/3^C E/3^C F/2^op1 | F/2^op1 E/3^C D/3^C B/2^op1 A/1"},
      {&nothing, " | "},
      {&blocks, "M1/3^F M2/3^F | M2/3^F M1/3^F"},
      {&ops, "op1/1 op2/1 | op2/1 op1/1"},
      {&opsOfAll, "op1/1 op2/1 | op2/1 op1/1"},
  };
  for (const auto& [walker, expected] : walks) EXPECT_EQ(job.Walk(*walker) + " | " + job.Walk(*walker, true), expected);
  EXPECT_EQ(nothing.GetSubListStackDepth(), 0);  // a filter that passes nothing leaves the stack empty
  EXPECT_EQ(job.Name(it.GetLast()), "H");
  EXPECT_TRUE((++it).IsNull());
  EXPECT_EQ(it.GetSubListStackDepth(), 0);  // past the end: empty until GetFirst/GetLast
  EXPECT_TRUE((--it).IsNull());
  EXPECT_EQ(job.Name(MotionBlockIterator(s)), "M1");  // positioned by its constructor

  StreamIteratorBase empty(job.Get(job.List("e", DbIOFList::kStream, {})));
  EXPECT_TRUE(DbId(MotionBlockIterator(job.Get(job.List("e", 1, {job.Move("Y")})))).IsNull());  // no blocks
  EXPECT_TRUE(empty.GetFirst().IsNull() && empty.GetSubListStackDepth() == 1);                  // one null entry
  struct Probe : StreamIteratorBase {
    using StreamIteratorBase::GetList;
    using StreamIteratorBase::StreamIteratorBase;
  } none{Quarp::DbCPtr<DbIOFList>()};
  EXPECT_TRUE(!none.IsValid() && none.GetList().GetErr() == Quarp::DbErr::AttachFailed);
  EXPECT_TRUE(none.GetFirst().IsNull() && none.GetLast().IsNull());
}

TEST(StreamIterator, PrioritiesThenListTypesChooseOneSubList) {
  StreamIteratorBase numbers{Quarp::DbCPtr<DbIOFList>()};
  unsigned types[] = {2, 2, 4};
  numbers.SetPriorities(types, 3);  // 2 -> 1000, 4 -> 999: the repeat uses no number
  EXPECT_EQ(numbers.AddToPriorities(0x10), 998u);
  EXPECT_EQ(numbers.AddToPriorities(4), 0u);  // a type that has a priority keeps it
  EXPECT_TRUE(numbers.FindInPriorities(4, 12345) && !numbers.FindInPriorities(8, 999));  // the value is not consulted

  // R carries an id that does not resolve (no candidate), then sub-lists of kinds 4, 8,
  // 0x10, 0x20 (empty) and 2, each holding a move of its name.
  Job job;
  const DbId r = job.Move("R"), gone = job.List("gone", 4, {});
  job.Sub(r, gone);
  job.mgr.Remove(gone);
  for (const auto& [kind, name] :
       std::vector<std::pair<int, std::string>>{{4, "s4"}, {8, "s8"}, {0x10, "s10"}, {0x20, ""}, {2, "s2"}}) {
    job.Sub(r, job.List(name, kind, name.empty() ? std::vector<DbId>{} : std::vector{job.Move(name)}));
  }
  // Sub-list mask, priorities, the first record yielded.
  const std::vector<std::tuple<int, std::vector<unsigned>, std::string>> rows = {
      {15, {}, "s8"},      // the largest list type, not the last
      {15, {2}, "s2"},     // a priority beats none
      {15, {0x10}, "s8"},  // a priority does not make a list eligible
      {15, {8, 4}, "s8"},  // earlier added, higher priority
      {15, {4, 8}, "s4"},  //
      {0x14, {}, "s10"},   //
      {0x30, {}, "R"},     // the chosen list is empty: the record itself
      {0x40, {4}, "R"},    // no common bit
  };
  for (auto [mask, priorities, first] : rows) {
    StreamIteratorBase it(job.Get(job.List("S", 1, {r})), Mgr::GetIOFBASEMask(), mask);
    it.SetPriorities(priorities.data(), static_cast<unsigned>(priorities.size()));
    EXPECT_EQ(job.Name(it.GetFirst()), first) << mask << " " << priorities.size();
    it.ResetPriorities();  // then the list type decides again
    EXPECT_EQ(job.Name(it.GetFirst()), mask == 15 ? "s8" : first);
  }
}

TEST(StreamIterator, BookmarksRestoreOnceAndCopiesCarryEverything) {
  StreamJob job;
  TestSupport::AssertRecorder asserts;
  StreamIteratorBase it(job.Get(job.stream));
  for (int i = 0; i < 3; ++i) i == 0 ? it.GetFirst() : ++it;  // B
  EXPECT_TRUE(it.CreateBookmark(CString(L"here")));
  ++it;
  EXPECT_FALSE(it.CreateBookmark(CString(L"here")));  // the old bookmark stays
  EXPECT_TRUE(it.CreateBookmark(CString(L"Here")));   // names are case-sensitive
  StreamIteratorBase copy(it);
  it.GetLast();
  EXPECT_TRUE(it.RestoreBookmark(CString(L"here")));
  EXPECT_EQ(job.Name(it) + std::to_string(it.GetSubListStackDepth()), "B2");
  EXPECT_EQ(job.Name(++it), "D");
  EXPECT_FALSE(it.RestoreBookmark(CString(L"here")));
  StreamIteratorBase moved(std::move(copy));  // the copy has both bookmarks
  EXPECT_EQ(job.Name(++moved), "E");
  EXPECT_TRUE(moved.RestoreBookmark(CString(L"here")) && moved.RestoreBookmark(CString(L"Here")));
  EXPECT_EQ(job.Name(moved), "D");
  EXPECT_EQ(asserts.Places(),
            (std::vector<std::string>{"StreamIteratorBase:382 IOF::StreamIteratorBase::CreateBookmark",
                                      "StreamIteratorBase:408 IOF::StreamIteratorBase::RestoreBookmark"}));
}

TEST(StreamIterator, NeverEntersAListThatStandsOnItsStack) {
  Job job;
  const DbId r = job.Move("R"), l2 = job.List("L2", DbIOFList::kOperation, {});
  const DbId l1 = job.List("L1", DbIOFList::kOperation, {l2}), s = job.List("S", DbIOFList::kStream, {job.Move("A")});
  job.Push(s, {s, job.Move("B")});                           // a stream that holds itself
  job.Push(l2, {l1, r});                                     // two lists that hold each other
  job.Sub(r, job.List("sr", DbIOFList::kMotionBlock, {r}));  // a record whose sub-list holds it
  const DbId t = job.List("T", DbIOFList::kStream, {l1, r});
  StreamIteratorBase self(job.Get(s)), cycle(job.Get(t));
  OperationIterator ops(job.Get(t));  // lists of the operation kind are no operations
  EXPECT_EQ(job.Walk(self) + " | " + job.Walk(self, true), "A/1 S/1 B/1 | B/1 S/1 A/1");
  EXPECT_EQ(job.Walk(cycle), "L1/1 L2/2^L1 L1/3^L2 R/4^R R/2^R");
  EXPECT_EQ(job.Walk(ops), "");
}

TEST(StreamIterator, ErrorsShowTheTextWithTheErrorIconThenThrowTheUserException) {
  std::vector<std::string> shown;
  const auto previous = AfxSetMessageBoxHandler(
      [&](const CString& t, unsigned type) { shown.push_back(t.ToUtf8() + (type == MB_ICONERROR ? " (error)" : "")); });
  Job job;
  const DbId gone = job.Move("gone"), r = job.Move("R");
  for (int i = 0; i < 2; ++i) job.Sub(r, job.List("s", DbIOFList::kMotionBlock, {job.Move("s")}));
  // "gone" stands four items after A, where the walk looks ahead (a fault found by fuzzing).
  const DbId s = job.List("S", 1, {job.Move("A"), job.Move("B"), job.Move("C"), job.Move("D"), gone});
  StreamIteratorBase missing(job.Get(s)), twice(job.Get(job.List("T", 1, {r})));
  job.mgr.Remove(gone);
  EXPECT_EQ(job.Name(missing.GetFirst()), "A");
  for (const char* name : {"B", "C", "D"}) EXPECT_EQ(job.Name(missing.GetNext()), name);
  EXPECT_THROW(missing.GetNext(), CUserException);
  EXPECT_EQ(job.Name(missing), "gone");  // the walk stands on the item it cannot resolve
  EXPECT_THROW(twice.GetFirst(), CUserException);
  AfxSetMessageBoxHandler(previous);
  EXPECT_EQ(shown, (std::vector<std::string>{
                       "Stream Iterator unable to access entity! (error)",
                       "The sublist mask cannot allow more than one sublist to be iterated!!! (error)"}));
}

}  // namespace
