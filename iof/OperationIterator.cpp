#include <iof/DbIOFTypeMgr.h>
#include <iof/OperationIterator.h>

#include <utility>

namespace IOF {

OperationIterator::OperationIterator(Quarp::DbCPtr<DbIOFList> list)
    : StreamIteratorBase(std::move(list), DbIOFTypeMgr::GetIOFNCIOPERATIONMask(), 2) {}

bool OperationIterator::CurrentItemPassesFilter() const {
  const Item* current = GetCurrentItem();
  const Quarp::DbMgr* mgr = GetDbMgr();
  if (!current || !mgr) return false;
  // The host's typed fetch: it fails for a record of any class but an operation's.
  Quarp::DbCPtr<DbIOFNciOperation> operation(nullptr);
  return mgr->Get(operation, current->GetId(), 0);
}

Quarp::DbId OperationIterator::GetFirst() {
  return StartFiltered(false, [this] { return CurrentItemPassesFilter(); });
}
Quarp::DbId OperationIterator::GetLast() {
  return StartFiltered(true, [this] { return CurrentItemPassesFilter(); });
}

Quarp::DbId OperationIterator::Step(bool backward) {
  for (;;) {
    if (!IsValid() || !GetCurrentItem()) return Quarp::DbId();
    Iterate(backward);
    const Quarp::DbId id = *this;
    if (id.IsNull() || CurrentItemPassesFilter()) return id;
  }
}

Quarp::DbId OperationIterator::GetNext() { return Step(false); }
Quarp::DbId OperationIterator::GetPrev() { return Step(true); }

}  // namespace IOF
