#include <iof/StreamIteratorBase.h>

#include <afx/Afx.h>
#include <iof/DbIOFBase.h>
#include <iof/DbIOFTypeMgr.h>
#include <zolt/Diagnostics.h>

#include <algorithm>
#include <utility>

namespace IOF {

namespace Detail {

void ClassAnswers::Fill(Answer& slot, const Quarp::DbBase& record, const Quarp::UtMask& mask) {
  slot.type = &typeid(record);
  slot.inMask = record.ContainsType(mask, true);
  slot.isList = record.ContainsType(DbIOFList::kTypeCode);
  slot.isIof = dynamic_cast<const DbIOFBase*>(&record) != nullptr;
}

}  // namespace Detail

namespace {
constexpr const char* kAssertSource = "StreamIteratorBase";
}

StreamIteratorBase::StreamIteratorBase(Quarp::DbCPtr<DbIOFList> list)
    : StreamIteratorBase(std::move(list), DbIOFTypeMgr::GetIOFBASEMask(), 15) {}

StreamIteratorBase::StreamIteratorBase(Quarp::DbCPtr<DbIOFList> list, Quarp::UtMask typeMask, int subListMask)
    : m_TypeMask(std::move(typeMask)), m_SubListMask(subListMask) {
  if (!list.IsNull() && list.Get()->ContainsType(DbIOFList::kTypeCode)) {
    m_List = std::move(list);
  } else {
    m_List.SetErr(Quarp::DbErr::AttachFailed);
  }
}

// --- moves ----------------------------------------------------------------------------

// Inlined into the moves: it runs once per record.
[[gnu::always_inline]] inline bool StreamIteratorBase::Settle(const Quarp::DbMgr* mgr, bool backward) {
  Item* current = GetCurrentItem();
  if (!current) return false;
  const Quarp::DbBase* record = Lookup(mgr, current);
  if (!record) return false;
  // A record a few moves ahead, on its way into the cache while this one is used: its
  // first two lines, which hold the class and the sub-list ids.
  const Item* ahead = current;
  for (int i = 0; i < 4 && ahead; ++i) ahead = backward ? ahead->GetPrev() : ahead->GetNext();
  // An id ahead that does not resolve (a damaged file) is simply not prefetched.
  if (const auto* next = ahead ? reinterpret_cast<const char*>(Lookup(mgr, ahead)) : nullptr) {
    __builtin_prefetch(next);
    __builtin_prefetch(next + 64);
  }
  const Answer answer = m_Answers.Get(*record, m_TypeMask);
  if (!answer.inMask) return false;
  // Most records are lists or carry no sub-lists: no call for them.
  if (answer.isList || !answer.isIof || !static_cast<const DbIOFBase*>(record)->HasSubLists()) return true;
  return StepInto(mgr, record, answer, backward);
}

Quarp::DbId StreamIteratorBase::GetFirst() { return Start(false); }
Quarp::DbId StreamIteratorBase::GetLast() { return Start(true); }

Quarp::DbId StreamIteratorBase::GetNext() {
  if (!GetCurrentItem() || m_List.IsNull()) return Quarp::DbId();
  IterateFrom(GetDbMgr(), false);
  return CurrentId();
}

Quarp::DbId StreamIteratorBase::GetPrev() {
  if (!GetCurrentItem() || m_List.IsNull()) return Quarp::DbId();
  IterateFrom(GetDbMgr(), true);
  return CurrentId();
}

Quarp::DbId StreamIteratorBase::Start(bool backward) {
  if (m_List.IsNull()) return Quarp::DbId();
  const DbIOFList* list = m_List.Get();
  m_Stack.clear();
  m_Owners.clear();
  m_OwnerCounts.clear();
  Push(backward ? list->GetTail() : list->GetHead());
  const Quarp::DbMgr* mgr = GetDbMgr();
  if (!Settle(mgr, backward)) IterateFrom(mgr, backward);
  return CurrentId();
}

StreamIteratorBase::operator Quarp::DbId() const noexcept { return CurrentId(); }

Quarp::DbId StreamIteratorBase::GetParentId() const noexcept {
  if (m_Stack.size() < 2) return Quarp::DbId();
  const Item* parent = m_Stack[m_Stack.size() - 2];
  return parent ? parent->GetId() : Quarp::DbId();
}

void StreamIteratorBase::Iterate(bool backward) { IterateFrom(GetDbMgr(), backward); }

void StreamIteratorBase::IterateFrom(const Quarp::DbMgr* mgr, bool backward) {
  for (;;) {
    Item* current = GetCurrentItem();
    if (m_List.IsNull() || !current) return;
    const Quarp::DbBase* record = Lookup(mgr, current);
    if (!record) {
      ErrorDatabaseEntityNotFoundByIterator();
      continue;  // an override that returns retries the same item
    }
    // A list item is entered when it passes the type mask, is a list of a non-zero kind
    // and the sub-list mask is non-zero: no bitwise test between the two (intended).
    // A list that already stands on the stack is never entered again.
    Item* first = nullptr;
    const Answer answer = m_Answers.Get(*record, m_TypeMask);
    if (answer.inMask && answer.isList && m_SubListMask != 0) {
      const auto* list = static_cast<const DbIOFList*>(record);
      if (list->GetListType() != 0 && !OnStack(list)) first = backward ? list->GetTail() : list->GetHead();
    }
    if (first) {
      Push(first);
    } else {
      Advance(backward);
    }
    if (Settle(mgr, backward)) return;
  }
}

void StreamIteratorBase::Advance(bool backward) noexcept {
  Item*& current = m_Stack.back();
  current = backward ? current->GetPrev() : current->GetNext();
  while (!m_Stack.back()) {
    Pop();
    if (m_Stack.empty()) return;  // the walk has ended
    Item*& parent = m_Stack.back();
    parent = backward ? parent->GetPrev() : parent->GetNext();
  }
}

void StreamIteratorBase::SkipCurrentItem(bool backward) {
  if (m_List.IsNull() || !GetCurrentItem()) return;
  Advance(backward);
  const Quarp::DbMgr* mgr = GetDbMgr();
  if (!Settle(mgr, backward)) IterateFrom(mgr, backward);
}

void StreamIteratorBase::StepIntoAnyValidSublist(bool backward) {
  Item* current = GetCurrentItem();
  if (!current) return;
  const Quarp::DbMgr* mgr = GetDbMgr();
  const Quarp::DbBase* record = Lookup(mgr, current);
  if (!record) {
    ErrorDatabaseEntityNotFoundByIterator();
    return;
  }
  StepInto(mgr, record, m_Answers.Get(*record, m_TypeMask), backward);
}

bool StreamIteratorBase::StepInto(const Quarp::DbMgr* mgr, const Quarp::DbBase* record, Answer answer, bool backward) {
  for (;;) {
    if (answer.isList || !answer.isIof) return answer.inMask;
    const auto& iof = static_cast<const DbIOFBase&>(*record);
    if (!iof.HasSubLists()) return answer.inMask;
    const DbIOFList* chosen = ChooseSubList(mgr, iof);
    Item* first = chosen ? (backward ? chosen->GetTail() : chosen->GetHead()) : nullptr;
    if (!first) return answer.inMask;  // no eligible sub-list, or an empty one: the record stays current
    Push(first);
    record = Lookup(mgr, first);
    if (!record) return false;
    answer = m_Answers.Get(*record, m_TypeMask);
    if (!answer.inMask) return false;  // the caller advances from it
  }
}

const DbIOFList* StreamIteratorBase::ChooseSubList(const Quarp::DbMgr* mgr, const DbIOFBase& record) {
  const DbIOFList* best = nullptr;
  unsigned long long bestValue = 0;
  bool bestHasPriority = false;
  // The list types of the eligible sub-lists seen so far: on the stack for the handful
  // a record carries, on the heap beyond.
  std::array<unsigned int, 8> seenHere{};
  std::vector<unsigned int> seenMore;
  std::size_t seenCount = 0;
  const auto seen = [&](unsigned int type) {
    const auto here = seenHere.begin() + static_cast<std::ptrdiff_t>(std::min(seenCount, seenHere.size()));
    return std::find(seenHere.begin(), here, type) != here ||
           std::find(seenMore.begin(), seenMore.end(), type) != seenMore.end();
  };
  for (const Quarp::DbId id : record.GetSubLists()) {
    const Quarp::DbBase* found = mgr ? mgr->Lookup(id) : nullptr;
    if (!found || !m_Answers.Get(*found, m_TypeMask).isList) continue;
    const auto* list = static_cast<const DbIOFList*>(found);
    if ((list->GetListType() & m_SubListMask) == 0 || OnStack(list)) continue;
    const auto type = static_cast<unsigned int>(list->GetListType());
    if (seen(type)) ErrorMultiSubListSpecified();
    const auto priority = m_Priorities.find(type);
    if (!best) {
      best = list;
      bestHasPriority = priority != m_Priorities.end();
      bestValue = bestHasPriority ? priority->second : type;
    } else if (priority != m_Priorities.end()) {
      if (!bestHasPriority || priority->second > bestValue) {
        best = list;
        bestValue = priority->second;
        bestHasPriority = true;
      }
    } else if (!bestHasPriority && type > bestValue) {
      best = list;
      bestValue = type;
    }
    if (seenCount < seenHere.size()) {
      seenHere[seenCount] = type;
    } else {
      seenMore.push_back(type);
    }
    ++seenCount;
  }
  return best;
}

bool StreamIteratorBase::OnStack(const DbIOFList* list) const noexcept { return m_OwnerCounts.count(list) != 0; }

// The stack and the lists its entries belong to change together, so that asking whether
// a list stands on the stack does not cost a look at every level: a chain of lists
// nested a hundred thousand deep is walked in linear time. An entry keeps the list it was
// pushed with while the walk steps along that list, and after it runs off the list's end.
void StreamIteratorBase::Push(Item* item) {
  m_Stack.push_back(item);
  const DbIOFList* owner = item ? item->GetList() : nullptr;
  m_Owners.push_back(owner);
  if (owner) ++m_OwnerCounts[owner];
}

void StreamIteratorBase::Pop() noexcept {
  m_Stack.pop_back();
  const DbIOFList* owner = m_Owners.back();
  m_Owners.pop_back();
  if (!owner) return;
  const auto at = m_OwnerCounts.find(owner);
  if (--at->second == 0) m_OwnerCounts.erase(at);
}

void StreamIteratorBase::RebuildOwners() {
  m_Owners.clear();
  m_OwnerCounts.clear();
  for (const Item* e : m_Stack) {
    m_Owners.push_back(e ? e->GetList() : nullptr);
    if (e) ++m_OwnerCounts[e->GetList()];
  }
}

// --- state ------------------------------------------------------------------------------

void StreamIteratorBase::SetCurrentItem(Item* item) noexcept {
  if (m_Stack.empty() || m_List.IsNull()) return;
  Pop();
  Push(item);
}

bool StreamIteratorBase::IsCurrentIOFObjectValid() const {
  const Item* current = GetCurrentItem();
  return current && Passes(Lookup(GetDbMgr(), current));
}

bool StreamIteratorBase::IsIOFObjectValid(Quarp::DbPtr<DbIOFBase> object) const { return Passes(object.Get()); }

void StreamIteratorBase::SetIOFTypeMask(Quarp::UtMask mask) {
  m_TypeMask = std::move(mask);
  m_Answers.Clear();
}

// --- errors ---------------------------------------------------------------------------

void StreamIteratorBase::ErrorDatabaseEntityNotFoundByIterator() {
  AfxMessageBox(CString(L"Stream Iterator unable to access entity!"), MB_ICONERROR, 0);
  AfxThrowUserException();
}

void StreamIteratorBase::ErrorMultiSubListSpecified() {
  AfxMessageBox(CString(L"The sublist mask cannot allow more than one sublist to be iterated!!!"), MB_ICONERROR, 0);
  AfxThrowUserException();
}

// --- priorities -----------------------------------------------------------------------

unsigned long long StreamIteratorBase::AddToPriorities(unsigned int listType) {
  if (m_Priorities.count(listType) != 0) return 0;
  const unsigned long long priority = 1000 - static_cast<unsigned long long>(m_Priorities.size());
  m_Priorities.emplace(listType, priority);
  return priority;
}

void StreamIteratorBase::SetPriorities(unsigned int* listTypes, unsigned int count) {
  m_Priorities.clear();
  for (unsigned int i = 0; i < count; ++i) AddToPriorities(listTypes[i]);
}

void StreamIteratorBase::ResetPriorities() { m_Priorities.clear(); }

bool StreamIteratorBase::FindInPriorities(unsigned int listType, unsigned long long /*value*/) const {
  return m_Priorities.count(listType) != 0;  // the value is deliberately not consulted
}

// --- bookmarks --------------------------------------------------------------------------

bool StreamIteratorBase::CreateBookmark(const CString& name) {
  if (m_Bookmarks.count(name) != 0) {
    Zolt::Diagnostics::Details::InvokeCurrentAssertHandler(
        kAssertSource, 382, "IOF::StreamIteratorBase::CreateBookmark", "IOF::StreamIteratorBase::CreateBookmark");
    return false;
  }
  m_Bookmarks.emplace(name, m_Stack);
  return true;
}

bool StreamIteratorBase::RestoreBookmark(const CString& name) {
  const auto it = m_Bookmarks.find(name);
  if (it == m_Bookmarks.end()) {
    Zolt::Diagnostics::Details::InvokeCurrentAssertHandler(
        kAssertSource, 408, "IOF::StreamIteratorBase::RestoreBookmark", "IOF::StreamIteratorBase::RestoreBookmark");
    return false;
  }
  m_Stack = std::move(it->second);
  m_Bookmarks.erase(it);  // a bookmark is restored once
  RebuildOwners();
  return true;
}

}  // namespace IOF
