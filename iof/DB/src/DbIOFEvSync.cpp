#include <iof/DbIOFEvSync.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFEvSync)

template <class F, class... R>
void DbIOFEvSync::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SyncId", r.m_SyncId...);
  f(Field::V(0), "m_Comment", r.m_Comment...);
  f(Field::V(0), "m_IsAltType", r.m_IsAltType...);
}

CString DbIOFEvSync::ToIOFString() const { return CString::Formatted(L"Sync Event %d", m_SyncId); }

bool DbIOFEvSync::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFEvSync>(other, report);
  return o && DbIOFEventBase::Compare(other, report) && CompareProperty(m_SyncId, o->m_SyncId, L"m_SyncId", report) &&
         CompareProperty(m_Comment, o->m_Comment, L"m_Comment", report) &&
         CompareProperty(m_IsAltType, o->m_IsAltType, L"m_IsAltType", report);
}

}  // namespace IOF
