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
  // An item finds its list's pointer through the list's manager.
  Quarp::DbPtr<DbIOFList> out;
  EXPECT_EQ(two->GetList(out), Quarp::DbErr::NoManager);
  EXPECT_EQ(static_cast<int>(two->GetList(out)), 3);
  Quarp::DbMgr mgr;
  mgr.Add(list);
  EXPECT_EQ(two->GetList(out), Quarp::DbErr::Ok);
  EXPECT_EQ(out.Get(), list.Get());
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

// The record base of a named record: its version, the name, an empty attribute map
// (version, count 0) and no sub-lists; then the list's kind and items.
TEST(DbIOFList, ArchiveDropsNullIdsAndAppends) {
  auto list = DbIOFList::Create(DbIOFList::kOperation);
  list->SetIOFName(CString(L"AB"));
  list->PushBack(DbId(5));
  list->InsertAfter(list->GetHead(), DbId());
  list->PushBack(DbId(7));
  ASSERT_EQ(list->Size(), 3);
  const auto bytes = TestSupport::Store(*list);
  EXPECT_EQ(ToHex(bytes), ToHex(Hex("00  00  02 00 00 00 41 00 42 00  00 00 00 00 00  00"  // list version, record base
                                    "02 00 00 00"                                          // kind
                                    "03 00 00 00"                                          // count
                                    "05 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 07 00 00 00 00 00 00 00")));
  auto back = DbIOFList::Create(0);
  back->SetIOFName(CString(L"old"));
  back->PushBack(DbId(1));
  ASSERT_TRUE(TestSupport::LoadAll(*back, bytes));
  // Base fields first; the items appended, the null id dropped.
  TestSupport::ExpectFields(
      *back, {{"m_Name=\"AB\"", "m_Attributes=0 attributes", "m_SubLists=[]", "m_ListType=2", "m_Items=[1,5,7]"}});

  // A newer version: the base part was read, none of the list's own fields.
  TestSupport::ExpectNewerVersionRefused(*back, 0, 1 + TestSupport::kRecordBaseSize + 4);
  EXPECT_EQ(back->Size(), 3);
  TestSupport::ExpectRoundTrips(*back);
}

// The copy constructor and assignment share the items (intended) and copy the name, the
// kind and the attributes; Copy builds items of its own and leaves the attributes alone.
TEST(DbIOFList, CopiesShareTheItemsButCopyBuildsItsOwn) {
  auto source = DbIOFList::Create(DbIOFList::kOperation);
  source->SetIOFName(CString(L"Op"));
  source->GetAttributes().AddAttribute(CString(L"Tag"), 5);
  source->PushBack(DbId(1));
  source->PushBack(DbId(2));
  {
    DbIOFList copy(*source);
    EXPECT_EQ(copy.GetHead(), source->GetHead());
    EXPECT_EQ(copy.GetHead()->GetList(), source.Get());
    EXPECT_EQ(copy.GetListType(), DbIOFList::kOperation);
    EXPECT_EQ(copy.GetIOFName(), L"Op");
    EXPECT_EQ(copy.GetAttributes().GetCount(), 1u);
    DbIOFList assigned = *DbIOFList::Create(0);
    assigned.PushBack(DbId(9));
    assigned.GetAttributes().AddAttribute(CString(L"Own"), true);
    assigned = copy;
    EXPECT_EQ(assigned.GetTail(), source->GetTail());
    EXPECT_NE(assigned.GetAttributes().FindAttrib(CString(L"Tag")), nullptr);
    EXPECT_EQ(assigned.GetAttributes().FindAttrib(CString(L"Own")), nullptr);
  }  // the copies go; the items stay with the source
  EXPECT_EQ(Ids(*source), (std::vector<std::uint64_t>{1, 2}));

  auto target = DbIOFList::Create(0);
  target->PushBack(DbId(99));
  target->GetAttributes().AddAttribute(CString(L"Own"), true);
  target->Copy(*source, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(Ids(*target), (std::vector<std::uint64_t>{1, 2}));
  EXPECT_EQ(target->GetListType(), DbIOFList::kOperation);
  EXPECT_EQ(target->GetIOFName(), L"Op");
  EXPECT_EQ(target->GetAttributes().GetCount(), 1u);
  EXPECT_NE(target->GetAttributes().FindAttrib(CString(L"Own")), nullptr);
  EXPECT_EQ(target->GetHead()->GetList(), target.Get());
  {
    auto copy = std::make_unique<DbIOFList>(*source);
    source->DeleteAll();  // frees the shared items once
    copy.reset();         // and the copy does not free them again
  }
  EXPECT_EQ(Ids(*target), (std::vector<std::uint64_t>{1, 2}));
  source->PushBack(DbId(3));
  EXPECT_EQ(Ids(*source), (std::vector<std::uint64_t>{3}));
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
