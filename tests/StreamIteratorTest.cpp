// The stream iterator and the filtered iterators, on jobs built in a manager: the walk
// order both ways with depths and parents, the type mask, the choice of a sub-list,
// priorities, bookmarks, copies, cycles, the two error operations, and each filtered
// iterator.
#include "RecordImpl.h"
#include "TestSupport.h"

#include <afx/Afx.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFStream.h>
#include <iof/DbIOFTypeMgr.h>
#include <iof/FilteredTypeIterator.h>
#include <iof/MotionBlockIterator.h>
#include <iof/OperationIterator.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace IOF {
class StandInOperation;
}
template <>
struct Quarp::DbTypeCode<IOF::StandInOperation> {
  static constexpr std::uint64_t value = 0x5121;
};

namespace IOF {
// Stands in for DbIOFNciOperation (type code 0x5121, a list of kind 2) until the tests
// can use the real class.
class StandInOperation : public DbIOFList {
  IOF_RECORD(StandInOperation, DbIOFList)

 public:
  static constexpr unsigned kVersion = 0;

 protected:
  StandInOperation() : DbIOFList(kOperation) {}
};
IOF_IMPLEMENT_RECORD(StandInOperation)
template <class F, class... R>
void StandInOperation::Fields(F&&, R&...) {}
}  // namespace IOF

namespace {

using namespace IOF;
using Quarp::DbId;

// Reads the protected state the tests pin.
struct Probe : StreamIteratorBase {
  using StreamIteratorBase::GetList;
  using StreamIteratorBase::StreamIteratorBase;
};

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
    auto list = DbIOFList::Create(kind);
    for (const DbId id : items) list->PushBack(id);
    return Add(list, name);
  }
  void Sub(DbId owner, DbId list) {
    Quarp::DbPtr<DbIOFBase> p;
    ASSERT_TRUE(mgr.Get(p, owner, 0) && p->AddSubList(list));
  }
  Quarp::DbCPtr<DbIOFList> Get(DbId id) {
    Quarp::DbCPtr<DbIOFList> p;
    mgr.Get(p, id, 0);
    return p;
  }
  std::string Name(DbId id) { return id.IsNull() ? "-" : names[id.Value()]; }
  // "name/depth" of every record the iterator yields.
  std::string Walk(StreamIteratorBase& it, bool backward = false) {
    std::string text;
    for (DbId id = backward ? it.GetLast() : it.GetFirst(); !id.IsNull(); id = backward ? --it : ++it) {
      text += (text.empty() ? "" : " ") + Name(id) + "/" + std::to_string(it.GetSubListStackDepth());
    }
    return text;
  }
};

// A stream: A; operation op1 (carrying sub-list {X}) holding B (an empty sub-list), C
// (sub-list {D, E}) and F (motion sub-list {M1, M2}); an empty operation list op2; G
// (sub-list {W}); H.
struct StreamJob : Job {
  DbId stream;
  StreamJob() {
    const DbId a = Move("A"), b = Move("B"), c = Move("C"), f = Move("F"), g = Move("G");
    Sub(b, List("sb", DbIOFList::kMotionBlock, {}));
    Sub(c, List("sc", DbIOFList::kMotionBlock, {Move("D"), Move("E")}));
    Sub(f, List("sf", DbIOFList::kMotionSubList,
                {Add(DbIOFMotionBlock::Create(), "M1"), Add(DbIOFArcMotionBlock::Create(), "M2")}));
    Sub(g, List("sg", DbIOFList::kRetractBlock, {Add(DbIOFEvDwell::Create(), "W")}));
    auto op1 = StandInOperation::Create();
    for (const DbId id : {b, c, f}) op1->PushBack(id);
    const DbId op = Add(op1, "op1");
    Sub(op, List("sx", DbIOFList::kMotionBlock, {Move("X")}));
    stream = List("S", DbIOFList::kStream,
                  {a, op, List("op2", DbIOFList::kOperation, {}), g, Add(DbIOFEvDwell::Create(), "H")});
  }
};

Quarp::UtMask Mask(std::initializer_list<const Quarp::UtMask*> masks) {
  Quarp::UtMask all;
  for (const Quarp::UtMask* m : masks) all |= *m;
  return all;
}

TEST(StreamIterator, WalksInProgramOrderBothWays) {
  StreamJob job;
  StreamIteratorBase it(job.Get(job.stream));
  // An operation is a list record: yielded on arrival, then its items (its own sub-list
  // {X} is never entered). C gives way to its sub-list; B (empty sub-list) and F (kind
  // 0x10 outside the mask 15) are yielded themselves.
  EXPECT_EQ(job.Walk(it), "A/1 op1/1 B/2 D/3 E/3 F/2 op2/1 W/2 H/1");
  EXPECT_EQ(job.Walk(it, true), "H/1 W/2 op2/1 op1/1 F/2 E/3 D/3 B/2 A/1");
  StreamIteratorBase all(job.Get(job.stream), DbIOFTypeMgr::GetIOFBASEMask(), -1);
  EXPECT_EQ(job.Walk(all), "A/1 op1/1 B/2 D/3 E/3 M1/3 M2/3 op2/1 W/2 H/1");
  // A mask without dwells: G's sub-list holds only a dwell, so the walk enters it, finds
  // nothing valid and climbs out past G, which is not yielded either.
  it.SetIOFTypeMask(Mask({&DbIOFTypeMgr::GetIOFNCILINEARMask(), &DbIOFTypeMgr::GetIOFLISTMask()}));
  EXPECT_EQ(job.Walk(it), "A/1 op1/1 B/2 D/3 E/3 F/2 op2/1");
  EXPECT_EQ(it.GetIOFTypeMask(), Mask({&DbIOFTypeMgr::GetIOFNCILINEARMask(), &DbIOFTypeMgr::GetIOFLISTMask()}));
}

TEST(StreamIterator, DepthsParentsAndTheEnds) {
  StreamJob job;
  StreamIteratorBase it(job.Get(job.stream));
  EXPECT_TRUE(it.IsValid());
  EXPECT_EQ(job.Name(it.GetFirst()), "A");
  EXPECT_EQ(job.Name(it.GetParentId()), "-");
  EXPECT_EQ(job.Name(++it), "op1");
  EXPECT_EQ(job.Name(++it), "B");
  EXPECT_EQ(job.Name(it.GetParentId()), "op1");
  EXPECT_EQ(job.Name(++it), "D");
  EXPECT_EQ(job.Name(it.GetParentId()), "C");
  EXPECT_EQ(job.Name(it), "D");  // operator DbId does not move
  EXPECT_EQ(job.Name(it.GetLast()), "H");
  EXPECT_TRUE((++it).IsNull());
  EXPECT_EQ(it.GetSubListStackDepth(), 0);  // past the end: empty until GetFirst/GetLast
  EXPECT_TRUE((++it).IsNull());
  EXPECT_TRUE((--it).IsNull());

  StreamIteratorBase empty(job.Get(job.List("e", DbIOFList::kStream, {})));
  EXPECT_TRUE(empty.GetFirst().IsNull());
  EXPECT_EQ(empty.GetSubListStackDepth(), 1);  // one null entry
  EXPECT_TRUE(empty.GetNext().IsNull());

  Probe none{Quarp::DbCPtr<DbIOFList>()};
  EXPECT_FALSE(none.IsValid());
  EXPECT_EQ(none.GetList().GetErr(), Quarp::DbErr::AttachFailed);
  EXPECT_TRUE(none.GetFirst().IsNull());
  EXPECT_TRUE(none.GetLast().IsNull());
}

TEST(StreamIterator, ChoosesOneSubListByPriorityThenListType) {
  struct Row {
    std::vector<int> kinds;  // 0: an id that does not resolve; negative: an empty list
    std::vector<unsigned> priorities;
    int subListMask;
    std::string first;  // the first record yielded
  };
  const std::vector<Row> rows = {
      {{4, 8}, {}, 15, "s1"},         // the larger list type
      {{8, 4}, {}, 15, "s0"},         // whatever the order
      {{4, 8}, {4}, 15, "s0"},        // a priority beats none
      {{8, 4}, {8, 4}, 15, "s0"},     // earlier added, higher priority
      {{4, 8}, {8, 4}, 15, "s1"},     //
      {{4, 0x10}, {}, 15, "s0"},      // 0x10 is outside the mask
      {{0x10, 4}, {0x10}, 15, "s1"},  // a priority does not make a list eligible
      {{0, 4}, {}, 15, "s1"},         // an id that does not resolve is no candidate
      {{-8, 4}, {}, 15, "R"},         // the chosen list is empty: the record itself
      {{0x10}, {}, 15, "R"},          // no eligible sub-list
      {{0x10, 0x20}, {}, 48, "s1"},   //
      {{8, 4}, {}, 2, "R"},           // no common bit
  };
  for (std::size_t n = 0; n < rows.size(); ++n) {
    const Row& row = rows[n];
    Job job;
    const DbId r = job.Move("R");
    for (std::size_t i = 0; i < row.kinds.size(); ++i) {
      const int kind = row.kinds[i];
      const std::string name = "s" + std::to_string(i);
      if (kind == 0) {
        const DbId gone = job.List(name, 4, {});
        job.Sub(r, gone);
        job.mgr.Remove(gone);
      } else {
        job.Sub(r,
                job.List(name, kind < 0 ? -kind : kind, kind < 0 ? std::vector<DbId>{} : std::vector{job.Move(name)}));
      }
    }
    StreamIteratorBase it(job.Get(job.List("S", 1, {r})), DbIOFTypeMgr::GetIOFBASEMask(), row.subListMask);
    for (const unsigned type : row.priorities) it.AddToPriorities(type);
    EXPECT_EQ(job.Name(it.GetFirst()), row.first) << "row " << n;
    it.ResetPriorities();  // then the list type decides again
    if (row.priorities.size() == 2) {
      EXPECT_EQ(job.Name(it.GetFirst()), row.kinds[0] == 8 ? "s0" : "s1") << "row " << n;
    }
  }
}

TEST(StreamIterator, PriorityNumbers) {
  StreamIteratorBase it{Quarp::DbCPtr<DbIOFList>()};
  EXPECT_EQ(it.AddToPriorities(0x10), 1000u);
  EXPECT_EQ(it.AddToPriorities(4), 999u);
  EXPECT_EQ(it.AddToPriorities(0x10), 0u);  // a repeat changes nothing
  EXPECT_EQ(it.AddToPriorities(8), 998u);
  EXPECT_TRUE(it.FindInPriorities(4, 12345));  // the value is not consulted
  EXPECT_FALSE(it.FindInPriorities(2, 1000));
  unsigned types[] = {2, 2, 4};
  it.SetPriorities(types, 3);
  EXPECT_EQ(it.AddToPriorities(1), 998u);  // 2 -> 1000, 4 -> 999: the repeat used no number
  EXPECT_FALSE(it.FindInPriorities(0x10, 0));
  it.ResetPriorities();
  EXPECT_EQ(it.AddToPriorities(4), 1000u);
}

TEST(StreamIterator, BookmarksRestoreOnce) {
  StreamJob job;
  TestSupport::AssertRecorder asserts;
  StreamIteratorBase it(job.Get(job.stream));
  it.GetFirst();
  ++it;
  ++it;  // B
  EXPECT_TRUE(it.CreateBookmark(CString(L"here")));
  ++it;
  EXPECT_FALSE(it.CreateBookmark(CString(L"here")));  // the old bookmark stays
  EXPECT_TRUE(it.CreateBookmark(CString(L"Here")));   // names are case-sensitive
  it.GetLast();
  EXPECT_TRUE(it.RestoreBookmark(CString(L"here")));
  EXPECT_EQ(job.Name(it), "B");
  EXPECT_EQ(it.GetSubListStackDepth(), 2);
  EXPECT_EQ(job.Name(++it), "D");
  EXPECT_FALSE(it.RestoreBookmark(CString(L"here")));
  EXPECT_EQ(job.Name(it), "D");
  EXPECT_TRUE(it.RestoreBookmark(CString(L"Here")));
  EXPECT_EQ(job.Name(it), "D");
  EXPECT_EQ(asserts.Places(),
            (std::vector<std::string>{"StreamIteratorBase:382 IOF::StreamIteratorBase::CreateBookmark",
                                      "StreamIteratorBase:408 IOF::StreamIteratorBase::RestoreBookmark"}));
  for (const auto& call : asserts.Calls()) EXPECT_EQ(call.message, call.function);
}

TEST(StreamIterator, CopiesAndMovesCarryTheWholeState) {
  StreamJob job;
  StreamIteratorBase it(job.Get(job.stream), DbIOFTypeMgr::GetIOFBASEMask(), -1);
  it.AddToPriorities(4);
  it.GetFirst();
  ++it;
  ++it;  // B
  it.CreateBookmark(CString(L"b"));
  StreamIteratorBase copy(it);
  EXPECT_EQ(job.Name(++it), "D");
  EXPECT_EQ(job.Name(++copy), "D");
  StreamIteratorBase moved(std::move(copy));
  EXPECT_TRUE(moved.RestoreBookmark(CString(L"b")));
  EXPECT_EQ(job.Name(moved), "B");
  EXPECT_EQ(moved.AddToPriorities(4), 0u);  // the priorities came along
  copy = moved;
  EXPECT_EQ(job.Name(++copy), "D");
}

TEST(StreamIterator, NeverEntersAListThatStandsOnItsStack) {
  Job job;
  // A stream that holds itself.
  const DbId self = job.List("S", DbIOFList::kStream, {job.Move("A")});
  Quarp::DbPtr<DbIOFList> s;
  job.mgr.Get(s, self, 0);
  s->PushBack(self);
  s->PushBack(job.Move("B"));
  StreamIteratorBase it(job.Get(self));
  EXPECT_EQ(job.Walk(it), "A/1 S/1 B/1");
  EXPECT_EQ(job.Walk(it, true), "B/1 S/1 A/1");
  // Two lists that hold each other, and a record whose sub-list holds the record.
  const DbId r = job.Move("R");
  const DbId l2 = job.List("L2", DbIOFList::kOperation, {});
  const DbId l1 = job.List("L1", DbIOFList::kOperation, {l2});
  Quarp::DbPtr<DbIOFList> two;
  job.mgr.Get(two, l2, 0);
  two->PushBack(l1);
  two->PushBack(r);
  job.Sub(r, job.List("sr", DbIOFList::kMotionBlock, {r}));
  StreamIteratorBase cycle(job.Get(job.List("T", DbIOFList::kStream, {l1, r})));
  EXPECT_EQ(job.Walk(cycle), "L1/1 L2/2 L1/3 R/4 R/2");
}

TEST(StreamIterator, ErrorsShowTheTextThenThrowTheUserException) {
  struct Shown {
    CString text;
    unsigned type;
  };
  std::vector<Shown> shown;
  const auto previous = AfxSetMessageBoxHandler([&](const CString& t, unsigned type) { shown.push_back({t, type}); });
  Job job;
  const DbId gone = job.Move("gone");
  const DbId r = job.Move("R");
  job.Sub(r, job.List("s0", DbIOFList::kMotionBlock, {job.Move("s0")}));
  job.Sub(r, job.List("s1", DbIOFList::kMotionBlock, {job.Move("s1")}));
  StreamIteratorBase missing(job.Get(job.List("S", 1, {job.Move("A"), gone})));
  job.mgr.Remove(gone);
  EXPECT_EQ(job.Name(missing.GetFirst()), "A");
  EXPECT_THROW(missing.GetNext(), CUserException);
  EXPECT_EQ(job.Name(missing), "gone");  // the walk stands on the item it cannot resolve
  StreamIteratorBase twice(job.Get(job.List("T", 1, {r})));
  EXPECT_THROW(twice.GetFirst(), CUserException);
  AfxSetMessageBoxHandler(previous);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0].text, L"Stream Iterator unable to access entity!");
  EXPECT_EQ(shown[1].text, L"The sublist mask cannot allow more than one sublist to be iterated!!!");
  EXPECT_EQ(shown[0].type, MB_ICONERROR);
  EXPECT_EQ(shown[1].type, MB_ICONERROR);
}

TEST(FilteredIterators, YieldOnlyWhatTheirFilterPasses) {
  StreamJob job;
  FilteredTypeIterator moves(job.Get(job.stream), DbIOFTypeMgr::GetIOFNCIBASEMOVEMask());
  EXPECT_EQ(job.Walk(moves), "A/1 B/2 D/3 E/3 F/2");
  EXPECT_EQ(job.Walk(moves, true), "F/2 E/3 D/3 B/2 A/1");
  FilteredTypeIterator nothing(job.Get(job.stream), DbIOFTypeMgr::GetIOFCOOLANTMask());
  EXPECT_TRUE(nothing.GetFirst().IsNull());
  EXPECT_EQ(nothing.GetSubListStackDepth(), 0);

  MotionBlockIterator blocks(job.Get(job.stream));  // positioned by its constructor
  EXPECT_EQ(job.Name(blocks), "M1");
  EXPECT_EQ(job.Name(++blocks), "M2");
  EXPECT_TRUE((++blocks).IsNull());
  EXPECT_EQ(job.Walk(blocks, true), "M2/3 M1/3");
  Job plain;
  MotionBlockIterator none(plain.Get(plain.List("S", 1, {plain.Move("A")})));
  EXPECT_TRUE(DbId(none).IsNull());
  EXPECT_TRUE(none.GetFirst().IsNull());

  // Operations: op1 (the operation class) and not op2 (a plain list of kind 2), also
  // when the base walk admits every type.
  OperationIterator ops(job.Get(job.stream));
  EXPECT_EQ(job.Walk(ops), "op1/1");
  EXPECT_EQ(job.Walk(ops, true), "op1/1");
  ops.SetIOFTypeMask(DbIOFTypeMgr::GetIOFBASEMask());
  EXPECT_EQ(job.Walk(ops), "op1/1");
  // Operations inside operations, found in pre-order.
  auto op3 = StandInOperation::Create();
  op3->PushBack(job.Move("Y"));
  op3->PushBack(job.Add(StandInOperation::Create(), "op4"));
  const DbId three = job.Add(op3, "op3");
  OperationIterator nested(
      job.Get(job.List("T", 1, {job.Move("A"), three, job.Add(StandInOperation::Create(), "op5")})));
  EXPECT_EQ(job.Walk(nested), "op3/1 op4/2 op5/1");
  EXPECT_EQ(job.Walk(nested, true), "op5/1 op3/1 op4/2");
}

}  // namespace
