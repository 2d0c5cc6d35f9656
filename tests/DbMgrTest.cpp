// The record manager and record pointers: ids, lookups, typed fetches, removal and
// ownership (the sanitizer build checks that nothing leaks or is freed twice).
#include "TestSupport.h"

#include <gtest/gtest.h>

#include <vector>

using TestSupport::TestRecord;
using TestSupport::TestRecordChild;

namespace {

TEST(DbMgr, AddGivesDenseIdsFromOne) {
  Quarp::DbMgr mgr;
  std::vector<Quarp::DbId> ids;
  for (int i = 0; i < 3; ++i) {
    auto rec = TestRecord::Create(i);
    ids.push_back(mgr.Add(rec));
    EXPECT_EQ(rec->GetDbMgr(), &mgr);
    EXPECT_EQ(rec.GetId(), ids.back());
  }
  EXPECT_EQ(ids, (std::vector<Quarp::DbId>{Quarp::DbId(1), Quarp::DbId(2), Quarp::DbId(3)}));
  EXPECT_EQ(mgr.GetCount(), 3u);
  EXPECT_EQ(mgr.GetNextId(), Quarp::DbId(4));
  EXPECT_EQ(mgr.GetType(Quarp::DbId(2)), TestRecord::kTypeCode);
  EXPECT_EQ(mgr.GetType(Quarp::DbId(9)), 0u);
}

TEST(DbMgr, GetAttachesOrFails) {
  Quarp::DbMgr mgr;
  auto rec = TestRecord::Create(5, L"five");
  const Quarp::DbId id = mgr.Add(rec);

  Quarp::DbBaseCPtr any(nullptr);
  ASSERT_TRUE(mgr.Get(any, id, 0));
  EXPECT_EQ(any.Get(), rec.Get());
  EXPECT_EQ(any.GetErr(), Quarp::DbErr::Ok);
  EXPECT_TRUE(any.IsConst());

  EXPECT_FALSE(mgr.Get(any, Quarp::DbId(99), 0));
  EXPECT_TRUE(any.IsNull());
  EXPECT_FALSE(any);
  EXPECT_EQ(any.GetErr(), Quarp::DbErr::NotFound);
  EXPECT_FALSE(mgr.Get(any, Quarp::DbId(), 0));
}

TEST(DbMgr, TypedFetchAcceptsTheClassAndItsDerivedClassesOnly) {
  Quarp::DbMgr mgr;
  auto base = TestRecord::Create(1);
  auto child = TestRecordChild::Create();
  const Quarp::DbId baseId = mgr.Add(base);
  const Quarp::DbId childId = mgr.Add(child);

  Quarp::DbPtr<TestRecordChild> typedChild(&mgr);
  EXPECT_FALSE(mgr.Get(typedChild, baseId, 0));
  EXPECT_TRUE(mgr.Get(typedChild, childId, 0));

  Quarp::DbCPtr<TestRecord> typedBase(&mgr);
  EXPECT_TRUE(mgr.Get(typedBase, childId, 0));
  EXPECT_EQ(typedBase->m_Value, 0);
  EXPECT_TRUE(mgr.Get(typedBase, baseId, 0));
  EXPECT_EQ(typedBase->m_Value, 1);

  // A read-only pointer to a base class is made from any typed pointer of a derived class.
  const Quarp::DbCPtr<TestRecord> view = typedChild;
  EXPECT_EQ(view.GetId(), childId);
  const Quarp::DbPtr<TestRecord> writable = typedChild;
  EXPECT_EQ(writable.GetId(), childId);
  // Not the other way round.
  Quarp::DbPtr<TestRecordChild> notChild;
  EXPECT_FALSE(notChild.AttachSp(base));
  EXPECT_TRUE(notChild.IsNull());
  EXPECT_EQ(notChild.GetErr(), Quarp::DbErr::NotFound);

  // The typed walk skips records of other classes.
  Quarp::DbId at;
  Quarp::DbPtr<TestRecordChild> walker;
  ASSERT_TRUE(mgr.GetNext(walker, at, 0));
  EXPECT_EQ(at, childId);
  EXPECT_FALSE(mgr.GetNext(walker, at, 0));
}

TEST(DbMgr, RemovalLeavesDanglingIdsAndLiveRecords) {
  Quarp::DbMgr mgr;
  std::vector<Quarp::DbPtr<TestRecord>> records;
  for (int i = 0; i < 5; ++i) {
    records.push_back(TestRecord::Create(i, L"kept"));
    mgr.Add(records.back());
  }
  Quarp::DbCPtr<TestRecord> other;
  ASSERT_TRUE(mgr.Get(other, Quarp::DbId(2), 0));
  EXPECT_TRUE(mgr.Remove(Quarp::DbId(2)));
  EXPECT_TRUE(mgr.Remove(Quarp::DbId(4)));
  EXPECT_FALSE(mgr.Remove(Quarp::DbId(4)));
  // The walk runs in id order and skips removed records; removed ids dangle.
  std::vector<int> values;
  Quarp::DbId at;
  Quarp::DbBasePtr p;
  while (mgr.GetNext(p, at, 0)) values.push_back(static_cast<TestRecord*>(p.Get())->m_Value);
  EXPECT_EQ(values, (std::vector<int>{0, 2, 4}));
  EXPECT_FALSE(mgr.Get(other, Quarp::DbId(2), 0));
  // Pointers keep a removed record alive, in no manager; it can join another one.
  records[3].Detach();
  EXPECT_EQ(records[1]->m_Name, L"kept");
  EXPECT_EQ(records[1]->GetDbMgr(), nullptr);
  EXPECT_TRUE(records[1]->GetId().IsNull());
  Quarp::DbMgr second;
  EXPECT_EQ(second.Add(records[1]), Quarp::DbId(1));
  // Ids are never given out again; Destroy removes the record from its manager.
  auto more = TestRecord::Create();
  EXPECT_EQ(mgr.Add(more), Quarp::DbId(6));
  more.Destroy();
  EXPECT_TRUE(more.IsNull());
  EXPECT_FALSE(mgr.Get(p, Quarp::DbId(6), 0));
  EXPECT_EQ(mgr.GetCount(), 3u);
}

TEST(DbMgr, AddRefusesNullRecordsAndRecordsInAManager) {
  Quarp::DbMgr mgr, other;
  Quarp::DbPtr<TestRecord> null;
  EXPECT_TRUE(mgr.Add(null).IsNull());
  EXPECT_EQ(null.GetErr(), Quarp::DbErr::InvalidArgument);
  EXPECT_FALSE(mgr.GetLastErrorText().empty());

  auto rec = TestRecord::Create();
  EXPECT_EQ(mgr.Add(rec), Quarp::DbId(1));
  EXPECT_TRUE(other.Add(rec).IsNull());
  EXPECT_TRUE(mgr.Add(rec).IsNull());
  EXPECT_EQ(other.GetCount(), 0u);
}

TEST(DbMgr, PointerCopiesShareOneRecord) {
  auto a = TestRecord::Create(1);
  Quarp::DbPtr<TestRecord> b = a;
  Quarp::DbPtr<TestRecord> c;
  c = b;
  const Quarp::DbPtr<TestRecord>& self = c;
  c = self;  // self-assignment keeps the record
  b->m_Value = 9;
  EXPECT_EQ(a->m_Value, 9);
  a.Detach();
  b.Detach();
  EXPECT_EQ(c->m_Value, 9);  // the last pointer still owns it
  Quarp::DbPtr<TestRecord> moved = std::move(c);
  EXPECT_TRUE(c.IsNull());
  EXPECT_EQ(moved->m_Value, 9);
}

TEST(DbMgr, NullDereferenceIsReportedAndThrows) {
  TestSupport::AssertRecorder recorder;
  Quarp::DbCPtr<TestRecord> p;
  EXPECT_THROW((void)p->m_Value, Quarp::DbNullAccess);
  ASSERT_EQ(recorder.Calls().size(), 1u);
  EXPECT_EQ(recorder.Calls()[0].function, "Quarp::DbRootPtr::NullAccess");
}

TEST(DbMgr, FrameworkRecordsCannotBeCloned) {
  Quarp::DbMgr mgr, target;
  auto rec = TestRecord::Create();
  const Quarp::DbId id = mgr.Add(rec);
  Quarp::DbErr err = Quarp::DbErr::Ok;
  EXPECT_EQ(rec->Clone(Quarp::DbCloneMode::Normal, &target, nullptr, err), nullptr);
  EXPECT_EQ(err, Quarp::DbErr::AttachFailed);
  EXPECT_TRUE(mgr.CopyEntity(id, target).IsNull());
}

}  // namespace
