// Record lists: editing, the deliberate oddities, shallow copies, archive and texts.
#include "RecordingVisitor.h"

#include <iof/DbIOFList.h>

#include <gtest/gtest.h>

#include <vector>

using namespace IOF;
using Quarp::DbId;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

std::vector<std::uint64_t> Ids(const DbIOFList& list) {
  std::vector<std::uint64_t> ids;
  for (auto* item = list.GetHead(); item; item = item->GetNext()) ids.push_back(item->GetId().Value());
  return ids;
}

std::vector<std::uint64_t> IdsBackwards(const DbIOFList& list) {
  std::vector<std::uint64_t> ids;
  for (auto* item = list.GetTail(); item; item = item->GetPrev()) ids.push_back(item->GetId().Value());
  return ids;
}

TEST(DbIOFList, PushAndInsert) {
  auto list = DbIOFList::Create(DbIOFList::kOperation);
  EXPECT_EQ(list->GetListType(), DbIOFList::kOperation);
  EXPECT_EQ(list.GetErr(), Quarp::DbErr::Ok);
  EXPECT_EQ(list->PushBack(DbId()), nullptr);  // the null id is refused
  EXPECT_EQ(list->Size(), 0);
  auto* two = list->PushBack(DbId(2));
  ASSERT_NE(two, nullptr);
  EXPECT_EQ(two->GetList(), list.Get());
  list->PushBack(DbId(4));
  list->InsertAfter(two, DbId(3));
  list->InsertBefore(two, DbId(1));
  list->InsertAfter(list->GetTail(), DbId(5));
  list->InsertBefore(list->GetHead(), DbId(0));  // accepted by InsertBefore
  EXPECT_EQ(Ids(*list), (std::vector<std::uint64_t>{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(IdsBackwards(*list), (std::vector<std::uint64_t>{5, 4, 3, 2, 1, 0}));
  EXPECT_EQ(list->InsertAfter(nullptr, DbId(7)), nullptr);
  EXPECT_EQ(list->InsertBefore(nullptr, DbId(7)), nullptr);
  EXPECT_EQ(list->Size(), 6);
}

TEST(DbIOFList, PushFrontAcceptsNullAndReturnsTheTail) {
  auto list = DbIOFList::Create(0);
  auto* first = list->PushFront(DbId(1));
  EXPECT_EQ(first, list->GetHead());  // an empty list: the new item is also the tail
  auto* returned = list->PushFront(DbId(2));
  EXPECT_EQ(returned, first);  // the tail, not the new item: intended
  EXPECT_EQ(list->GetHead()->GetId(), DbId(2));
  list->PushFront(DbId());
  EXPECT_EQ(list->Size(), 3);
  EXPECT_TRUE(list->GetHead()->GetId().IsNull());
}

TEST(DbIOFList, Delete) {
  auto list = DbIOFList::Create(0);
  auto* only = list->PushBack(DbId(1));
  list->Delete(only);
  EXPECT_EQ(list->GetHead(), nullptr);
  EXPECT_EQ(list->GetTail(), nullptr);
  list->Delete(nullptr);
  for (std::uint64_t i = 1; i <= 5; ++i) list->PushBack(DbId(i));
  list->Delete(list->GetHead());
  list->Delete(list->GetTail());
  list->Delete(list->GetHead()->GetNext());
  EXPECT_EQ(Ids(*list), (std::vector<std::uint64_t>{2, 4}));
  EXPECT_EQ(IdsBackwards(*list), (std::vector<std::uint64_t>{4, 2}));
  // Freed items are reused.
  for (std::uint64_t i = 10; i < 20; ++i) list->PushBack(DbId(i));
  EXPECT_EQ(list->Size(), 12);
  list->DeleteAll();
  EXPECT_EQ(list->Size(), 0);
  EXPECT_EQ(list->GetTail(), nullptr);
  list->PushBack(DbId(3));
  EXPECT_EQ(Ids(*list), (std::vector<std::uint64_t>{3}));
}

TEST(DbIOFList, ItemGetList) {
  auto list = DbIOFList::Create(DbIOFList::kStream);
  auto* item = list->PushBack(DbId(8));
  Quarp::DbPtr<DbIOFList> out;
  EXPECT_EQ(item->GetList(out), Quarp::DbErr::NoManager);
  EXPECT_EQ(static_cast<int>(item->GetList(out)), 3);
  Quarp::DbMgr mgr;
  mgr.Add(list);
  EXPECT_EQ(item->GetList(out), Quarp::DbErr::Ok);
  EXPECT_EQ(out.Get(), list.Get());
}

TEST(DbIOFList, KindTexts) {
  struct Case {
    int kind;
    const wchar_t* text;
  };
  const Case cases[] = {
      {0x1, L"Stream IofList - Main"},
      {0x2, L"Operation IofList - Main"},
      {0x4, L"Motion Block - Main"},
      {0x10, L"MotionSubList - Main"},
      {0x100, L"Thread Longhand Block - Main"},
      {0x10000, L"G68_MotionSubList - Main"},
      {0x400000, L"Cutter Comp MotionSubList - Main"},
      {0x10000000, L"G28 Based MotionSubList - Main"},
      {0x3, L"IOF List Object - Main"},
      {0, L"IOF List Object - Main"},
      {0x800, L"IOF List Object - Main"},
  };
  for (const Case& c : cases) {
    auto list = DbIOFList::Create(c.kind);
    list->SetIOFName(CString(L"Main"));
    EXPECT_EQ(list->ToIOFString(), c.text) << c.kind;
  }
}

TEST(DbIOFList, ArchiveDropsNullIdsAndAppends) {
  auto list = DbIOFList::Create(DbIOFList::kOperation);
  list->PushBack(DbId(5));
  list->InsertAfter(list->GetHead(), DbId());
  list->PushBack(DbId(7));
  ASSERT_EQ(list->Size(), 3);
  const auto bytes = TestSupport::Store(*list);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex("00 00 00 00 00 00 00 00 00 00 00 00"  // versions, name, attributes, sub-lists
                                    "02 00 00 00"                          // kind
                                    "03 00 00 00"                          // count
                                    "05 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 07 00 00 00 00 00 00 00")));
  auto back = DbIOFList::Create(0);
  back->PushBack(DbId(1));
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  EXPECT_EQ(Ids(*back), (std::vector<std::uint64_t>{1, 5, 7}));  // appended, null dropped
  EXPECT_EQ(back->GetListType(), DbIOFList::kOperation);

  // A newer version: the base part was read, none of the list's own fields.
  TestSupport::ExpectNewerVersionRefused(*back, 0, 1 + TestSupport::kRecordBaseSize);
  EXPECT_EQ(back->Size(), 3);

  // Through a file and a clone: the name, the kind and the items.
  back->SetIOFName(CString(L"AB"));
  TestSupport::ExpectRoundTrips(*back);
}

TEST(DbIOFList, ShallowCopiesShareTheItems) {
  auto source = DbIOFList::Create(DbIOFList::kOperation);
  source->PushBack(DbId(1));
  source->PushBack(DbId(2));
  {
    DbIOFList copy(*source);
    EXPECT_EQ(copy.GetHead(), source->GetHead());  // shared: intended
    EXPECT_EQ(copy.GetHead()->GetList(), source.Get());
    EXPECT_EQ(copy.GetListType(), DbIOFList::kOperation);
    DbIOFList assigned = *DbIOFList::Create(0);
    assigned.PushBack(DbId(9));
    assigned = copy;
    EXPECT_EQ(assigned.GetTail(), source->GetTail());
  }  // the copies go; the items stay with the source
  EXPECT_EQ(Ids(*source), (std::vector<std::uint64_t>{1, 2}));
  {
    auto copy = std::make_unique<DbIOFList>(*source);
    source->DeleteAll();  // frees the shared items once
    copy.reset();         // and the copy does not free them again
  }
  source->PushBack(DbId(3));
  EXPECT_EQ(Ids(*source), (std::vector<std::uint64_t>{3}));
}

TEST(DbIOFList, CopyBuildsIndependentItems) {
  auto source = DbIOFList::Create(DbIOFList::kMotionSubList);
  source->PushBack(DbId(1));
  source->PushBack(DbId(2));
  auto target = DbIOFList::Create(0);
  target->PushBack(DbId(99));
  target->Copy(*source, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(Ids(*target), (std::vector<std::uint64_t>{1, 2}));
  EXPECT_EQ(target->GetListType(), DbIOFList::kMotionSubList);
  EXPECT_NE(target->GetHead(), source->GetHead());
  EXPECT_EQ(target->GetHead()->GetList(), target.Get());
  source->DeleteAll();
  EXPECT_EQ(target->Size(), 2);
}

TEST(DbIOFList, ReadsAListObject) {
  auto list = DbIOFList::Create(DbIOFList::kRetractBlock);
  list->PushBack(DbId(6));
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  out.WriteObject(list.Get());
  out.WriteObject(nullptr);
  Quarp::UtArchive in(Quarp::UtArchive::Load, out.GetBytes());
  DbIOFList* read = nullptr;
  in >> read;
  ASSERT_NE(read, nullptr);
  std::unique_ptr<DbIOFList> owned(read);
  EXPECT_EQ(read->GetListType(), DbIOFList::kRetractBlock);
  EXPECT_EQ(Ids(*read), (std::vector<std::uint64_t>{6}));
  DbIOFList* none = read;
  in >> none;
  EXPECT_EQ(none, nullptr);
}

TEST(DbIOFList, ALongListCostsLittle) {
  auto list = DbIOFList::Create(DbIOFList::kStream);
  for (std::uint64_t i = 1; i <= 100000; ++i) list->PushBack(DbId(i));
  EXPECT_EQ(list->Size(), 100000);
  EXPECT_EQ(sizeof(DbIOFList::Item), 24u);
  auto back = DbIOFList::Create(0);
  ASSERT_TRUE(TestSupport::LoadAll(*back, TestSupport::Store(*list)));
  EXPECT_EQ(back->GetTail()->GetId(), DbId(100000));
}

}  // namespace

namespace {

// A loaded list's items come from the load's arena, in blocks sized to the list: a
// shallow copy still walks them after the manager and every loaded record are gone, and
// the list grows past its loaded blocks (the sanitizer build checks every access).
TEST(DbIOFList, LoadedItemsOutliveTheirManagerInACopy) {
  Quarp::DbMgr source;
  auto list = DbIOFList::Create(DbIOFList::kMotionBlock);
  for (std::uint64_t i = 1; i <= 150; ++i) list->PushBack(DbId(i));
  source.Add(list);
  std::vector<std::uint8_t> file;
  ASSERT_EQ(source.WriteToMemory(file), Quarp::DbErr::Ok);

  std::unique_ptr<DbIOFList> copy;
  {
    Quarp::DbMgr mgr;
    ASSERT_EQ(mgr.ReadFromMemory(file), Quarp::DbErr::Ok);
    Quarp::DbPtr<DbIOFList> loaded;
    ASSERT_TRUE(mgr.Get(loaded, DbId(1), 0));
    loaded->PushBack(DbId(151));
    loaded->Delete(loaded->GetHead());
    EXPECT_EQ(loaded->GetTail()->GetList(), loaded.Get());
    copy = std::make_unique<DbIOFList>(*loaded);
  }
  std::vector<std::uint64_t> expected;
  for (std::uint64_t i = 2; i <= 151; ++i) expected.push_back(i);
  EXPECT_EQ(Ids(*copy), expected);
  EXPECT_EQ(IdsBackwards(*copy).size(), 150u);
}

}  // namespace
