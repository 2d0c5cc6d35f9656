// StreamIteratorBase: walks a record list (normally a DbIOFStream) in program order and
// yields record ids.
//
//   Quarp::DbCPtr<IOF::DbIOFList> stream;
//   mgr.Get(stream, doc->GetStreamById(1), 0);
//   IOF::StreamIteratorBase it(stream);                 // every IOF type, sub-list kinds 1|2|4|8
//   for (Quarp::DbId id = it.GetFirst(); !id.IsNull(); id = ++it) use(id, it.GetSubListStackDepth());
//
// What is yielded. A record is valid when its id resolves in the list's manager and
// ContainsType(typeMask, true) is true; only valid records are yielded. The walk
// descends in two ways:
//   - into an item that is itself a list record (an operation): the list is yielded
//     when the walk arrives at it, and the next move descends into its items
//     (pre-order). It is entered when it passes the type mask, its m_ListType is
//     non-zero and the sub-list mask is non-zero: both merely non-zero, there is no
//     bitwise test between them (intended);
//   - into one sub-list of a valid record that is not a list: the record is not yielded
//     when the chosen sub-list has a valid item; the walk goes straight to its items, so
//     the caller sees the leaves of the program. A record whose chosen sub-list is empty,
//     or that has no eligible sub-list, is yielded itself.
// Choosing a sub-list: of the record's sub-lists whose m_ListType shares a bit with the
// sub-list mask, one with a priority (AddToPriorities, SetPriorities) beats one without;
// among those with priorities the highest priority wins; without any priority the
// highest list-type number wins; ties keep the earlier sub-list. Two eligible sub-lists
// of the same list type are an error (ErrorMultiSubListSpecified).
//
// Cycles. A hostile or broken file can make a list contain itself, directly or through
// items and sub-lists. The iterator never enters a list that already stands on its
// stack (the owning list of one of its entries): an item that is such a list is yielded
// and the walk moves past it without entering it; a sub-list that is such a list is not
// a candidate. So every walk ends, and the stack is never deeper than the number of
// lists in the manager.
//
// Errors. An item whose id does not resolve when the walk must step from it, and two
// eligible sub-lists of one type, end the current GetFirst/GetNext/... call: the error
// operation shows its text through the platform's message box with the error icon and
// throws the user exception (CUserException). An override must not return normally:
// the walk retries the same item after calling it. Bookmark misuse goes to the host's
// assertion handler (source "StreamIteratorBase") and the call returns false.
//
// Validity of the iterator. The stack holds pointers to the items of the lists walked;
// an iterator (and its bookmarks) stays valid only while those lists are not changed
// where it stands.
//
// Speed. Each step looks a record up without a pointer (DbMgr::Lookup), answers the
// type tests once per record class and iterator (ContainsType is a function of the
// class for every IOF record class) and asks for a record a few items ahead to be
// brought into the cache, so a walk costs about two table lookups and two cache probes
// per record (bench/WalkBench.cpp measures it).
#pragma once

#include <afx/CString.h>
#include <iof/DbIOFList.h>
#include <quarp/DbId.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtMask.h>

#include <array>
#include <cstdint>
#include <map>
#include <typeinfo>
#include <unordered_map>
#include <vector>

namespace IOF {

class DbIOFBase;

namespace Detail {

// What ContainsType(mask, true) and ContainsType(IOFLIST) answer for each record class,
// remembered per iterator so that a walk asks each class once.
class ClassAnswers {
 public:
  struct Answer {
    const std::type_info* type = nullptr;
    bool inMask = false;  // ContainsType(mask, true)
    bool isList = false;  // a DbIOFList (ContainsType(0x5110))
    bool isIof = false;   // a DbIOFBase
  };

  const Answer& Get(const Quarp::DbBase& record, const Quarp::UtMask& mask) const {
    const std::type_info* type = &typeid(record);
    const auto bits = reinterpret_cast<std::uintptr_t>(type);
    Answer& slot = m_Slots[((bits >> 4) ^ (bits >> 9)) % m_Slots.size()];
    if (slot.type != type) Fill(slot, record, mask);
    return slot;
  }
  // Forgets every answer (the mask changed).
  void Clear() noexcept { m_Slots = {}; }

 private:
  static void Fill(Answer& slot, const Quarp::DbBase& record, const Quarp::UtMask& mask);
  mutable std::array<Answer, 16> m_Slots{};
};

}  // namespace Detail

class StreamIteratorBase {
 public:
  using Item = DbIOFList::Item;

  // Every IOF type (DbIOFTypeMgr::GetIOFBASEMask) and sub-list mask 15 (stream,
  // operation, motion block and retract block lists). The list is attached only when
  // the given record is a list; otherwise the iterator holds no list, its list pointer
  // carrying the host error 16. The iterator is not positioned: call GetFirst or GetLast.
  explicit StreamIteratorBase(Quarp::DbCPtr<DbIOFList> list);
  StreamIteratorBase(Quarp::DbCPtr<DbIOFList> list, Quarp::UtMask typeMask, int subListMask);
  StreamIteratorBase(const StreamIteratorBase&) = default;
  StreamIteratorBase(StreamIteratorBase&&) = default;
  StreamIteratorBase& operator=(const StreamIteratorBase&) = default;
  StreamIteratorBase& operator=(StreamIteratorBase&&) = default;
  // Not virtual, as the iterator has always been: iterators are values, never deleted
  // through a pointer to this class.
  ~StreamIteratorBase() = default;

  // Position on the first (last) valid record, or the next (previous) one; the id of
  // the record reached, or the null id when there is none. Without a list, or at the
  // end, the null id; after the end the stack is empty and GetNext/GetPrev return the
  // null id until GetFirst/GetLast.
  virtual Quarp::DbId GetFirst();
  virtual Quarp::DbId GetLast();
  virtual Quarp::DbId GetNext();
  virtual Quarp::DbId GetPrev();

  // "Stream Iterator unable to access entity!" through AfxMessageBox(text,
  // MB_ICONERROR, 0), then AfxThrowUserException(). Overrides must not return normally.
  virtual void ErrorDatabaseEntityNotFoundByIterator();
  // "The sublist mask cannot allow more than one sublist to be iterated!!!", the same
  // way.
  virtual void ErrorMultiSubListSpecified();

  // GetNext / GetPrev through the virtual table, so that a derived iterator's filter
  // applies.
  Quarp::DbId operator++() { return GetNext(); }
  Quarp::DbId operator--() { return GetPrev(); }
  // The current record's id without moving; null when there is none.
  operator Quarp::DbId() const noexcept;  // NOLINT(google-explicit-constructor)

  // The id of the item one level up (the record whose list or sub-list is being
  // walked); null at the top level.
  Quarp::DbId GetParentId() const noexcept;
  // The number of stack entries: 1 in the top list.
  int GetSubListStackDepth() const noexcept { return static_cast<int>(m_Stack.size()); }
  // True when a list is attached.
  bool IsValid() const noexcept { return !m_List.IsNull(); }

  Quarp::UtMask GetIOFTypeMask() const { return m_TypeMask; }
  // Takes effect at the next move.
  void SetIOFTypeMask(Quarp::UtMask mask);

  // Priorities of list types for the choice of a sub-list. AddToPriorities gives the
  // first type 1000, the next 999, and so on (types added earlier win); a type that
  // already has one keeps it and 0 is returned. SetPriorities empties the table and adds
  // the types in array order by the same rule (a repeated type uses up no number).
  // ResetPriorities empties it, after which the list-type number decides.
  unsigned long long AddToPriorities(unsigned int listType);
  void SetPriorities(unsigned int* listTypes, unsigned int count);
  void ResetPriorities();
  // True when `listType` has a priority; `value` is deliberately not consulted.
  bool FindInPriorities(unsigned int listType, unsigned long long value) const;

  // Bookmarks: CreateBookmark saves the whole position under `name` (false, and an
  // assertion at line 382, when the name is taken); RestoreBookmark returns to it and
  // forgets it, so a bookmark is restored once (false, and an assertion at line 408,
  // for an unknown name). Names compare exactly (case-sensitive).
  bool CreateBookmark(const CString& name);
  bool RestoreBookmark(const CString& name);

 protected:
  std::map<unsigned int, unsigned long long>& GetPriorityMap() noexcept { return m_Priorities; }
  // The last stack entry, or null.
  Item* GetCurrentItem() const noexcept { return m_Stack.empty() ? nullptr : m_Stack.back(); }
  // Replaces the last stack entry; nothing when the stack is empty or no list is
  // attached.
  void SetCurrentItem(Item* item) noexcept;
  // The manager of the attached list (null without one).
  Quarp::DbMgr* GetDbMgr() const noexcept { return m_List.IsNull() ? nullptr : m_List.Get()->GetDbMgr(); }
  bool IsCurrentIOFObjectValid() const;
  // True for a record that passes the type mask.
  bool IsIOFObjectValid(Quarp::DbPtr<DbIOFBase> object) const;
  // One move: descend into the current list item or advance past the current item
  // (climbing out of lists that end), until a valid record stands, or the walk ends.
  void Iterate(bool backward);
  // From the current record, enter its chosen sub-list (and the chosen sub-lists of what
  // is found there) while the item reached is valid.
  void StepIntoAnyValidSublist(bool backward);

  // Not part of the classic interface; for derived iterators (and tools built on them).
  // The whole stack, first entry the position in the top list.
  const std::vector<Item*>& GetSubListStack() const noexcept { return m_Stack; }
  const Quarp::DbCPtr<DbIOFList>& GetList() const noexcept { return m_List; }
  void SetSubListMask(int subListMask) noexcept { m_SubListMask = subListMask; }
  // Moves past the current item without looking its record up or entering it, then on
  // as Iterate does: how a caller goes on after the error operation reported an id that
  // does not resolve.
  void SkipCurrentItem(bool backward);
  // The filtered iterators' GetFirst and GetLast: this class's GetFirst (GetLast), then
  // from the item reached on, the first for which `passes()` is true, moving with GetNext
  // (GetPrev) through the virtual table while it is not; the null id when the walk ends.
  template <class Filter>
  Quarp::DbId StartFiltered(bool backward, Filter passes) {
    if (backward) {
      StreamIteratorBase::GetLast();
    } else {
      StreamIteratorBase::GetFirst();
    }
    while (GetCurrentItem()) {
      if (passes()) return CurrentId();
      if (backward) {
        GetPrev();
      } else {
        GetNext();
      }
    }
    return Quarp::DbId();
  }

 private:
  using Answer = Detail::ClassAnswers::Answer;

  // The steps of a walk are hidden inside the library, so that they call each other
  // directly and inline (an exported function would be called through the PLT).
  [[gnu::visibility("hidden")]] Quarp::DbId Start(bool backward);
  Quarp::DbId CurrentId() const noexcept {
    const Item* item = GetCurrentItem();
    return item ? item->GetId() : Quarp::DbId();
  }
  const Quarp::DbBase* Lookup(const Quarp::DbMgr* mgr, const Item* item) const noexcept {
    return mgr ? mgr->Lookup(item->GetId()) : nullptr;
  }
  bool Passes(const Quarp::DbBase* record) const { return record && m_Answers.Get(*record, m_TypeMask).inMask; }
  // Steps 4 and 5 of a move: the next (previous) item, climbing while a list ends.
  [[gnu::visibility("hidden")]] void Advance(bool backward) noexcept;
  // Step 6 of a move from the item just reached: true when a valid record now stands.
  [[gnu::visibility("hidden")]] bool Settle(const Quarp::DbMgr* mgr, bool backward);
  [[gnu::visibility("hidden")]] void IterateFrom(const Quarp::DbMgr* mgr, bool backward);
  // StepIntoAnyValidSublist from `record` (the current item's); true when the current
  // item is valid at the end.
  [[gnu::visibility("hidden")]] bool StepInto(const Quarp::DbMgr* mgr, const Quarp::DbBase* record, Answer answer,
                                              bool backward);
  [[gnu::visibility("hidden")]] const DbIOFList* ChooseSubList(const Quarp::DbMgr* mgr, const DbIOFBase& record);
  [[gnu::visibility("hidden")]] bool OnStack(const DbIOFList* list) const noexcept;
  [[gnu::visibility("hidden")]] void Push(Item* item);
  [[gnu::visibility("hidden")]] void Pop() noexcept;
  [[gnu::visibility("hidden")]] void RebuildOwners();

  Quarp::UtMask m_TypeMask;
  int m_SubListMask = 15;
  Quarp::DbCPtr<DbIOFList> m_List;
  std::vector<Item*> m_Stack;
  std::vector<const DbIOFList*> m_Owners;                        // the list of each stack entry
  std::unordered_map<const DbIOFList*, unsigned> m_OwnerCounts;  // entries per list on the stack
  std::map<unsigned int, unsigned long long> m_Priorities;       // list type -> priority
  std::map<CString, std::vector<Item*>> m_Bookmarks;             // saved stacks by name
  Detail::ClassAnswers m_Answers;                                // for m_TypeMask
};

}  // namespace IOF
