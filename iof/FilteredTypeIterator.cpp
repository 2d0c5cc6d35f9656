#include <iof/DbIOFTypeMgr.h>
#include <iof/FilteredTypeIterator.h>
#include <iof/MotionBlockIterator.h>

#include <utility>

namespace IOF {

FilteredTypeIterator::FilteredTypeIterator(Quarp::DbCPtr<DbIOFList> list, Quarp::UtMask filterMask)
    : StreamIteratorBase(std::move(list)), m_FilterMask(std::move(filterMask)) {}

bool FilteredTypeIterator::CurrentItemPassesFilter() const {
  const Item* current = GetCurrentItem();
  const Quarp::DbMgr* mgr = GetDbMgr();
  const Quarp::DbBase* record = current && mgr ? mgr->Lookup(current->GetId()) : nullptr;
  return record && m_FilterAnswers.Get(*record, m_FilterMask).inMask;
}

Quarp::DbId FilteredTypeIterator::GetFirst() {
  return StartFiltered(false, [this] { return CurrentItemPassesFilter(); });
}
Quarp::DbId FilteredTypeIterator::GetLast() {
  return StartFiltered(true, [this] { return CurrentItemPassesFilter(); });
}

Quarp::DbId FilteredTypeIterator::Step(bool backward) {
  for (;;) {
    if (!GetCurrentItem()) return Quarp::DbId();
    const Quarp::DbId id = backward ? StreamIteratorBase::GetPrev() : StreamIteratorBase::GetNext();
    if (id.IsNull() || CurrentItemPassesFilter()) return id;
  }
}

Quarp::DbId FilteredTypeIterator::GetNext() { return Step(false); }
Quarp::DbId FilteredTypeIterator::GetPrev() { return Step(true); }

// --- MotionBlockIterator ------------------------------------------------------------------

MotionBlockIterator::MotionBlockIterator(Quarp::DbCPtr<DbIOFList> list)
    : FilteredTypeIterator(std::move(list), DbIOFTypeMgr::GetIOFMOTIONBLOCKMask()) {
  SetSubListMask(48);  // list kinds 0x10 (motion sub-lists) and 0x20 (basic approach blocks)
  GetFirst();
}

}  // namespace IOF
