#include <iof/DbIOFList.h>

#include "RecordImpl.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <vector>

namespace IOF {

IOF_IMPLEMENT_RECORD_TYPE(DbIOFList)
IOF_IMPLEMENT_RECORD_CREATION(DbIOFList)

// Items are carved from blocks of up to 64 that the pool chains together, so a list of
// a million items costs 24 bytes an item and one allocation per 64 items, not a million.
// A block starts with a header that names the list that made its items (an item finds
// it from its slot, so it needs no pointer of its own) and marks the freed ones; freed
// items go on a free list. While DbMgr::Read builds records, blocks come from the load's
// arena beside the records, and a list being loaded sizes its blocks to the items it
// reads. The pool is shared by the shallow copies of a list and released with the last
// of them, all blocks at once.
class DbIOFList::ItemPool {
 public:
  static constexpr unsigned kMaxBlock = 64;  // the slot takes six bits

  ItemPool() = default;
  ItemPool(const ItemPool&) = delete;
  ItemPool& operator=(const ItemPool&) = delete;
  ~ItemPool() {
    for (Block* block = m_Blocks; block;) {
      Block* next = block->next;
      if (block->fromLoad) {
        Quarp::DbBase::ReleaseLoadBlock(block);
      } else {
        ::operator delete(block);
      }
      block = next;
    }
  }

  void AddRef() noexcept { ++m_Refs; }
  // Returns true when this was the last reference.
  bool Release() noexcept { return --m_Refs == 0; }
  bool IsShared() const noexcept { return m_Refs > 1; }
  // The next `n` items come in a row (a list being loaded): blocks are sized to them.
  void Expect(std::size_t n) noexcept { m_Expected = n; }

  Item* Allocate(DbIOFList* list, Quarp::DbId id) {
    if (m_Free && BlockOf(m_Free)->list == list) {
      Item* item = m_Free;
      m_Free = item->GetNext();
      const unsigned slot = item->Slot();
      BlockOf(item)->freed &= ~(std::uint64_t{1} << slot);
      return new (item) Item(id, slot);
    }
    if (!m_Blocks || m_Blocks->list != list || m_Used == m_Blocks->capacity) NewBlock(list);
    if (m_Expected > 0) --m_Expected;
    const unsigned slot = m_Used++;
    return new (m_Blocks->Items() + slot) Item(id, slot);
  }
  void Free(Item* item) noexcept {
    BlockOf(item)->freed |= std::uint64_t{1} << item->Slot();
    item->SetPrev(nullptr);
    item->SetNext(m_Free);
    m_Free = item;
  }
  static bool IsFreed(const Item* item) noexcept { return (BlockOf(item)->freed >> item->Slot() & 1) != 0; }
  static DbIOFList* ListOf(const Item* item) noexcept { return IsFreed(item) ? nullptr : BlockOf(item)->list; }

 private:
  struct Block {
    DbIOFList* list;  // the list that made the items
    Block* next;      // the pool's blocks, newest first
    std::uint64_t freed;
    std::uint32_t capacity;
    std::uint32_t fromLoad;  // carved from a load's arena
    Item* Items() noexcept { return reinterpret_cast<Item*>(this + 1); }
  };
  static_assert(sizeof(Block) % alignof(Item) == 0);

  static Block* BlockOf(const Item* item) noexcept {
    return reinterpret_cast<Block*>(const_cast<Item*>(item) - item->Slot()) - 1;
  }
  void NewBlock(DbIOFList* list) {
    unsigned capacity = m_NextCapacity;
    if (m_Expected > 0) {
      capacity = static_cast<unsigned>(std::min<std::size_t>(m_Expected, kMaxBlock));
    } else {
      m_NextCapacity = std::min(m_NextCapacity * 2, kMaxBlock);
    }
    const std::size_t bytes = sizeof(Block) + capacity * sizeof(Item);
    void* memory = Quarp::DbBase::AllocateLoadBlock(bytes);
    const bool fromLoad = memory != nullptr;
    if (!fromLoad) memory = ::operator new(bytes);
    m_Blocks = new (memory) Block{list, m_Blocks, 0, capacity, fromLoad};
    m_Used = 0;
  }

  Block* m_Blocks = nullptr;
  unsigned m_Used = 0;  // items carved from the newest block
  unsigned m_NextCapacity = 4;
  std::size_t m_Expected = 0;
  Item* m_Free = nullptr;
  unsigned m_Refs = 1;
};

DbIOFList* DbIOFList::Item::GetList() const noexcept { return ItemPool::ListOf(this); }

const wchar_t* DbIOFList::ListTypeText(int kind) noexcept {
  switch (kind) {
    case kStream:
      return L"Stream IofList";
    case kOperation:
      return L"Operation IofList";
    case kMotionBlock:
      return L"Motion Block";
    case kRetractBlock:
      return L"Retract Block";
    case kMotionSubList:
      return L"MotionSubList";
    case kBasicApproachBlock:
      return L"Basic Approach Block";
    case kThreadLonghandBlock:
      return L"Thread Longhand Block";
    case kThreadBoxBlock:
      return L"Thread Box Block";
    case kThreadCannedBlock:
      return L"Thread Canned Block";
    case kDrillLonghandBlock:
      return L"Drill Longhand Block";
    case kPolarLonghandBlock:
      return L"Polar Longhand Block";
    case kG68MotionSubList:
      return L"G68_MotionSubList";
    case kG12MotionSubList:
      return L"G12_MotionSubList";
    case kG7MotionSubList:
      return L"G7_MotionSubList";
    case kBreakArcBlock:
      return L"Break Arc Block";
    case kLinearizationBlock:
      return L"Linearization Block";
    case kCutterCompMotionSubList:
      return L"Cutter Comp MotionSubList";
    case kMachineBasedMotionSubList:
      return L"Machine Based MotionSubList";
    case kSpindleBasedMotionSubList:
      return L"Spindle Based MotionSubList";
    case kG28BasedMotionSubList:
      return L"G28 Based MotionSubList";
    default:
      return L"IOF List Object";
  }
}

Quarp::DbPtr<DbIOFList> DbIOFList::Create(int kind) {
  Quarp::DbPtr<DbIOFList> ptr = MakeNew(nullptr);
  if (ptr) ptr->m_ListType = kind;
  return ptr;
}

DbIOFList::DbIOFList(const DbIOFList& other)
    : DbIOFBase(other), m_Pool(other.m_Pool), m_Head(other.m_Head), m_Tail(other.m_Tail), m_ListType(other.m_ListType) {
  if (m_Pool) m_Pool->AddRef();  // the items are shared, intended
}

DbIOFList& DbIOFList::operator=(const DbIOFList& other) {
  if (this == &other) return *this;
  DbIOFBase::operator=(other);
  if (other.m_Pool) other.m_Pool->AddRef();
  ReleasePool();
  m_Pool = other.m_Pool;
  m_Head = other.m_Head;
  m_Tail = other.m_Tail;
  m_ListType = other.m_ListType;
  return *this;
}

DbIOFList::~DbIOFList() { ReleasePool(); }

void DbIOFList::ReleasePool() noexcept {
  if (m_Pool && m_Pool->Release()) delete m_Pool;
  m_Pool = nullptr;
  m_Head = m_Tail = nullptr;
}

DbIOFList::Item* DbIOFList::NewItem(const Quarp::DbId& id) {
  if (!m_Pool) m_Pool = new ItemPool();
  return m_Pool->Allocate(this, id);
}

DbIOFList::Item* DbIOFList::PushBack(const Quarp::DbId& id) {
  if (id.IsNull()) return nullptr;
  Item* item = NewItem(id);
  if (!m_Tail) {
    m_Head = m_Tail = item;
  } else {
    m_Tail->SetNext(item);
    item->SetPrev(m_Tail);
    m_Tail = item;
  }
  return item;
}

DbIOFList::Item* DbIOFList::PushFront(const Quarp::DbId& id) {
  Item* item = NewItem(id);  // the null id is accepted here: intended
  if (!m_Head) {
    m_Head = m_Tail = item;
  } else {
    m_Head->SetPrev(item);
    item->SetNext(m_Head);
    m_Head = item;
  }
  return m_Tail;  // the tail, not the new item: intended
}

DbIOFList::Item* DbIOFList::InsertAfter(Item* where, const Quarp::DbId& id) {
  if (!where) return nullptr;
  Item* item = NewItem(id);
  item->SetPrev(where);
  item->SetNext(where->GetNext());
  if (where->GetNext()) {
    where->GetNext()->SetPrev(item);
  } else {
    m_Tail = item;
  }
  where->SetNext(item);
  return item;
}

DbIOFList::Item* DbIOFList::InsertBefore(Item* where, const Quarp::DbId& id) {
  if (!where) return nullptr;
  Item* item = NewItem(id);
  item->SetNext(where);
  item->SetPrev(where->GetPrev());
  if (where->GetPrev()) {
    where->GetPrev()->SetNext(item);
  } else {
    m_Head = item;
  }
  where->SetPrev(item);
  return item;
}

void DbIOFList::Delete(Item* item) {
  if (!item || !m_Pool || ItemPool::IsFreed(item)) return;  // null, or already freed
  if (item->GetPrev()) {
    item->GetPrev()->SetNext(item->GetNext());
  } else if (m_Head == item) {
    m_Head = item->GetNext();
  }
  if (item->GetNext()) {
    item->GetNext()->SetPrev(item->GetPrev());
  } else if (m_Tail == item) {
    m_Tail = item->GetPrev();
  }
  m_Pool->Free(item);
}

void DbIOFList::DeleteAll() {
  if (m_Pool && !m_Pool->IsShared()) {
    ReleasePool();  // every item at once
    return;
  }
  for (Item* item = m_Head; item;) {
    Item* next = item->GetNext();
    if (!ItemPool::IsFreed(item)) m_Pool->Free(item);
    item = next;
  }
  m_Head = m_Tail = nullptr;
}

int DbIOFList::Size() const noexcept {
  int n = 0;
  for (const Item* item = m_Head; item; item = item->GetNext()) ++n;
  return n;
}

Quarp::DbErr DbIOFList::Item::GetList(Quarp::DbPtr<DbIOFList>& out) const {
  const DbIOFList* list = GetList();
  Quarp::DbMgr* mgr = list ? list->GetDbMgr() : nullptr;
  if (!mgr) return Quarp::DbErr::NoManager;
  mgr->Get(out, list->GetId(), 0);
  return out.GetErr();
}

void DbIOFList::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, kVersion);
  DbIOFBase::Serialize(ar);
  if (ar.IsStoring()) {
    ar << static_cast<std::int32_t>(m_ListType) << static_cast<std::int32_t>(Size());
    for (const Item* item = m_Head; item; item = item->GetNext()) ar << item->GetId();
    return;
  }
  Quarp::UtCheckVersion(version, kVersion, kClassName);
  std::int32_t kind = 0;
  std::int32_t count = 0;
  ar >> kind >> count;
  m_ListType = kind;
  if (count <= 0) return;
  ar.CheckCount(static_cast<std::uint64_t>(count), 8);
  if (!m_Pool) m_Pool = new ItemPool();
  m_Pool->Expect(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) {
    Quarp::DbId id;
    ar >> id;
    PushBack(id);  // null ids are dropped
  }
  m_Pool->Expect(0);
}

void DbIOFList::Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {
  DbIOFBase::Copy(source, mode, xref);
  const auto* src = dynamic_cast<const DbIOFList*>(&source);
  if (!src || src == this) return;
  DeleteAll();
  for (const Item* item = src->m_Head; item; item = item->GetNext()) PushBack(item->GetId());
  m_ListType = src->m_ListType;
}

void DbIOFList::VisitFields(FieldVisitor& visitor) const {
  DbIOFBase::VisitFields(visitor);
  visitor.OnInt("m_ListType", m_ListType);
  std::vector<Quarp::DbId> ids;
  for (const Item* item = m_Head; item; item = item->GetNext()) ids.push_back(item->GetId());
  visitor.OnIds("m_Items", ids);
}

CString DbIOFList::ToIOFString() const {
  CString text(ListTypeText(m_ListType));
  text.AppendFormat(L" - %s", GetIOFName());
  return text;
}

bool DbIOFList::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFList>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareProperty(m_ListType, o->m_ListType, L"m_ListType", report);
}

Quarp::UtArchive& operator>>(Quarp::UtArchive& ar, DbIOFList*& list) {
  Quarp::UtObject* object = nullptr;
  ar.ReadObject(object);
  list = dynamic_cast<DbIOFList*>(object);
  if (!list) delete object;
  return ar;
}

}  // namespace IOF
