// DbIOFList: an ordered list of record ids (type IOFLIST, 0x5110).
//
// It holds the records of a stream or an operation in program order, and the
// sub-lists a record hangs under itself (DbIOFBase::AddSubList). The list owns its items
// but never the records their ids name. Its kind, a single-bit value, says what it
// holds; DbIOFBase::GetSubList selects a sub-list by it.
//
//   auto list = IOF::DbIOFList::Create(IOF::DbIOFList::kOperation);
//   mgr.Add(list);
//   list->PushBack(moveId);
//   for (auto* item = list->GetHead(); item; item = item->GetNext()) use(item->GetId());
//
// Copies: the copy constructor and operator= share the source's items (which still
// name the source as their list); this shallow copy is intended and kept. Only Copy
// builds independent items. The shared items stay allocated until the last list that
// shares them is gone, so no item is ever freed twice; an item deleted through one list
// must not be used through the other.
//
// Archive (version 0): the record base, the kind (4 bytes), the item count (4 bytes),
// then each item's id (8 bytes). Loading drops null ids and appends to what the list
// holds.
#pragma once

#include <iof/DbIOFBase.h>
#include <quarp/UtArchive.h>

#include <cstdint>

namespace IOF {

class DbIOFList : public DbIOFBase {
  IOF_RECORD_CUSTOM_CREATE(DbIOFList, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  // List kinds. Texts in ToIOFString; any other value (0 and combinations included)
  // prints "IOF List Object".
  enum ListType : int {
    kStream = 0x1,                           // "Stream IofList"
    kOperation = 0x2,                        // "Operation IofList"
    kMotionBlock = 0x4,                      // "Motion Block"
    kRetractBlock = 0x8,                     // "Retract Block"
    kMotionSubList = 0x10,                   // "MotionSubList"
    kBasicApproachBlock = 0x20,              // "Basic Approach Block"
    kThreadLonghandBlock = 0x100,            // "Thread Longhand Block"
    kThreadBoxBlock = 0x200,                 // "Thread Box Block"
    kThreadCannedBlock = 0x400,              // "Thread Canned Block"
    kDrillLonghandBlock = 0x4000,            // "Drill Longhand Block"
    kPolarLonghandBlock = 0x8000,            // "Polar Longhand Block"
    kG68MotionSubList = 0x10000,             // "G68_MotionSubList"
    kG12MotionSubList = 0x20000,             // "G12_MotionSubList"
    kG7MotionSubList = 0x40000,              // "G7_MotionSubList"
    kBreakArcBlock = 0x80000,                // "Break Arc Block"
    kLinearizationBlock = 0x100000,          // "Linearization Block"
    kCutterCompMotionSubList = 0x400000,     // "Cutter Comp MotionSubList"
    kMachineBasedMotionSubList = 0x4000000,  // "Machine Based MotionSubList"
    kSpindleBasedMotionSubList = 0x8000000,  // "Spindle Based MotionSubList"
    kG28BasedMotionSubList = 0x10000000,     // "G28 Based MotionSubList"
  };
  // The text of a kind, "IOF List Object" for any value not in the table.
  static const wchar_t* ListTypeText(int kind) noexcept;

  class ItemPool;

  // One entry of the list: a record id, linked to its neighbours. Items live in blocks
  // of up to 64 (see ItemPool); an item finds its block, and through it its list, from
  // its slot in the block, which it keeps in the low bits of its two links. So an item
  // takes 24 bytes, not 32 with a pointer to its list.
  class Item {
   public:
    Quarp::DbId GetId() const noexcept { return m_Id; }
    Item* GetPrev() const noexcept { return reinterpret_cast<Item*>(m_Prev & ~kSlotBits); }
    Item* GetNext() const noexcept { return reinterpret_cast<Item*>(m_Next & ~kSlotBits); }
    // The list that owns the item; null once the item is freed.
    DbIOFList* GetList() const noexcept;
    // Resolves the owning list through its manager: DbErr 3 when the list is in no
    // manager, otherwise the error the lookup leaves in `out`.
    Quarp::DbErr GetList(Quarp::DbPtr<DbIOFList>& out) const;

   private:
    friend class DbIOFList;
    friend class ItemPool;
    static constexpr std::uintptr_t kSlotBits = 7;
    Item(Quarp::DbId id, unsigned slot) noexcept : m_Id(id), m_Prev(slot & kSlotBits), m_Next(slot >> 3) {}
    void SetNext(Item* next) noexcept { m_Next = reinterpret_cast<std::uintptr_t>(next) | (m_Next & kSlotBits); }
    void SetPrev(Item* prev) noexcept { m_Prev = reinterpret_cast<std::uintptr_t>(prev) | (m_Prev & kSlotBits); }
    unsigned Slot() const noexcept { return static_cast<unsigned>((m_Prev & kSlotBits) | (m_Next & kSlotBits) << 3); }

    Quarp::DbId m_Id;
    std::uintptr_t m_Prev;  // the previous item; the low three bits: bits 0-2 of the item's slot
    std::uintptr_t m_Next;  // the next item; the low three bits: bits 3-5 of the item's slot
  };

  // A new list of `kind` in no manager; error 12 when it cannot be made.
  static Quarp::DbPtr<DbIOFList> Create(int kind);

  DbIOFList(const DbIOFList& other);
  DbIOFList& operator=(const DbIOFList& other);
  ~DbIOFList() override;

  int GetListType() const noexcept { return m_ListType; }
  void SetListType(int kind) noexcept { m_ListType = kind; }

  Item* GetHead() const noexcept { return m_Head; }
  Item* GetTail() const noexcept { return m_Tail; }

  // Appends `id` and returns the new item; the null id is refused (null returned).
  Item* PushBack(const Quarp::DbId& id);
  // Puts `id` first. Unlike PushBack it accepts the null id, and it returns the list's
  // tail, not the new item (the same only when the list was empty): both intended.
  Item* PushFront(const Quarp::DbId& id);
  // Link a new item after / before `where` (null for a null `where`); the null id is
  // accepted.
  Item* InsertAfter(Item* where, const Quarp::DbId& id);
  Item* InsertBefore(Item* where, const Quarp::DbId& id);
  // Unlinks and frees one item; the record it names is untouched.
  void Delete(Item* item);
  void DeleteAll();
  // The number of items, counted from the head.
  int Size() const noexcept;

  CString ToIOFString() const override;
  // The record base, then "m_ListType" only; the items are not compared.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFList() = default;
  explicit DbIOFList(int kind) : m_ListType(kind) {}

 private:
  Item* NewItem(const Quarp::DbId& id);
  void ReleasePool() noexcept;

  ItemPool* m_Pool = nullptr;  // where the items live; shared with shallow copies
  Item* m_Head = nullptr;
  Item* m_Tail = nullptr;
  int m_ListType = 0;  // the list kind; 0 for a list made by SerializeCreate
};

// Reads one list object written with UtArchive::WriteObject; null when the archive
// holds a null object or an object of another class.
Quarp::UtArchive& operator>>(Quarp::UtArchive& ar, DbIOFList*& list);

}  // namespace IOF
