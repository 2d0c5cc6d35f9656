// Looking up a list's items by their stored type, for the lists whose items play
// particular roles (operations, sub-operations). Included by record sources only.
#pragma once

#include <iof/DbIOFList.h>
#include <quarp/DbMgr.h>

#include <cstdint>

namespace IOF::Detail {

// The ids of `list`'s items whose stored type is exactly `code` (records of derived
// classes do not count), head to tail; `visit(id)` returns true to stop. Nothing for a
// list in no manager.
template <class Visit>
void ForEachItemOfType(const DbIOFList& list, std::uint64_t code, Visit&& visit) {
  const Quarp::DbMgr* mgr = list.GetDbMgr();
  if (!mgr) return;
  for (const auto* item = list.GetHead(); item; item = item->GetNext()) {
    if (mgr->GetType(item->GetId()) == code && visit(item->GetId())) return;
  }
}

// The first item of `list` of exactly class T that `accept`s; a null pointer when there
// is none or the list is in no manager.
template <class T, class Accept>
Quarp::DbPtr<T> FirstItemOfType(const DbIOFList& list, Accept&& accept) {
  Quarp::DbMgr* mgr = list.GetDbMgr();
  Quarp::DbPtr<T> candidate(mgr);
  Quarp::DbPtr<T> found(mgr);
  ForEachItemOfType(list, Quarp::DbTypeCode<T>::value, [&](Quarp::DbId id) {
    if (!mgr->Get(candidate, id, 0) || !accept(*candidate)) return false;
    found = candidate;
    return true;
  });
  return found;
}

}  // namespace IOF::Detail
