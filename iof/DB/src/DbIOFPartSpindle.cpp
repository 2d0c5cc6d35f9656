#include <iof/DbIOFPartSpindle.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFPartSpindle)

template <class F, class... R>
void DbIOFPartSpindle::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_StockDefId", r.m_StockDefId...);
  f(Field::V(0), "m_ChuckDefId", r.m_ChuckDefId...);
  // Copied, neither archived nor listed: a state of the spindle, not data of the job.
  f(Field::Info{0, Field::kLatest, Field::kCopied}, "m_Initialized", r.m_Initialized...);
}

namespace {
// The record `id` of class C in `mgr`, or an empty pointer.
template <class C>
Quarp::DbPtr<C> Resolve(Quarp::DbMgr* mgr, Quarp::DbId id) {
  Quarp::DbPtr<C> ptr;
  if (mgr && !id.IsNull()) mgr->Get(ptr, id, 0);
  return ptr;
}

// `id` when it names a C in `mgr`; otherwise the id of a new C added there (null when
// that fails).
template <class C>
Quarp::DbId Linked(Quarp::DbMgr& mgr, Quarp::DbId id) {
  if (Resolve<C>(&mgr, id)) return id;
  auto made = C::Create();
  return made ? mgr.Add(made) : Quarp::DbId();
}
}  // namespace

Quarp::DbPtr<DbIOFStockDef> DbIOFPartSpindle::GetStockDefPtr() const {
  return Resolve<DbIOFStockDef>(GetDbMgr(), m_StockDefId);
}

Quarp::DbPtr<DbIOFChuckDef> DbIOFPartSpindle::GetChuckDefPtr() const {
  return Resolve<DbIOFChuckDef>(GetDbMgr(), m_ChuckDefId);
}

bool DbIOFPartSpindle::Initialize() {
  if (m_Initialized) return true;
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return false;
  m_StockDefId = Linked<DbIOFStockDef>(*mgr, m_StockDefId);
  m_ChuckDefId = Linked<DbIOFChuckDef>(*mgr, m_ChuckDefId);
  m_Initialized = !m_StockDefId.IsNull() && !m_ChuckDefId.IsNull();
  return m_Initialized;
}

CString DbIOFPartSpindle::ToIOFString() const { return CString::Formatted(L"DbIOFPartSpindle Name: %s", GetIOFName()); }

}  // namespace IOF
