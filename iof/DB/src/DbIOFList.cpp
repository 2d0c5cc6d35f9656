#include <iof/DbIOFList.h>

#include "RecordImpl.h"

#include <memory>
#include <vector>

namespace IOF {

IOF_IMPLEMENT_RECORD_TYPE(DbIOFList)
IOF_IMPLEMENT_RECORD_CREATION(DbIOFList)

// Items are carved from chunks that grow geometrically, so a list of a million items
// costs 32 bytes per item and a thousand allocations, not a million. Freed items go on
// a free list. The pool is shared by the shallow copies of a list and released with the
// last of them, all chunks at once.
class DbIOFList::ItemPool {
 public:
  ItemPool() = default;
  ItemPool(const ItemPool&) = delete;
  ItemPool& operator=(const ItemPool&) = delete;

  void AddRef() noexcept { ++m_Refs; }
  // Returns true when this was the last reference.
  bool Release() noexcept { return --m_Refs == 0; }
  bool IsShared() const noexcept { return m_Refs > 1; }

  Item* Allocate() {
    if (m_Free) {
      Item* item = m_Free;
      m_Free = item->m_Next;
      return new (item) Item();
    }
    if (m_Used == m_ChunkSize) {
      m_ChunkSize = m_Chunks.empty() ? 4 : std::min<std::size_t>(m_ChunkSize * 2, 4096);
      m_Chunks.push_back(std::make_unique_for_overwrite<Slot[]>(m_ChunkSize));
      m_Used = 0;
    }
    return new (&m_Chunks.back()[m_Used++]) Item();
  }
  void Free(Item* item) noexcept {
    item->m_List = nullptr;  // marks the item as freed
    item->m_Prev = nullptr;
    item->m_Next = m_Free;
    m_Free = item;
  }

 private:
  struct Slot {
    alignas(Item) unsigned char bytes[sizeof(Item)];
  };
  std::vector<std::unique_ptr<Slot[]>> m_Chunks;
  std::size_t m_ChunkSize = 0;
  std::size_t m_Used = 0;
  Item* m_Free = nullptr;
  unsigned m_Refs = 1;
};

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
  Item* item = m_Pool->Allocate();
  item->m_Id = id;
  item->m_List = this;
  return item;
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
  if (!item || !item->m_List || !m_Pool) return;  // null, or already freed
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
    if (item->m_List) m_Pool->Free(item);
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
  Quarp::DbMgr* mgr = m_List ? m_List->GetDbMgr() : nullptr;
  if (!mgr) return Quarp::DbErr::NoManager;
  mgr->Get(out, m_List->GetId(), 0);
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
  if (count > 0) ar.CheckCount(static_cast<std::uint64_t>(count), 8);
  for (std::int32_t i = 0; i < count; ++i) {
    Quarp::DbId id;
    ar >> id;
    PushBack(id);  // null ids are dropped
  }
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
