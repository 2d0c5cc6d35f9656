#include <iof/DbIOFNciCFSubProgRef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciCFSubProgRef)

template <class F, class... R>
void DbIOFNciCFSubProgRef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_CannedRoughOpIdn", r.m_CannedRoughOpIdn...);
}

CString DbIOFNciCFSubProgRef::ToIOFString() const {
  return RefText(CString::Formatted(L"CannedRoughOpIdn = %d, ", m_CannedRoughOpIdn));
}

bool DbIOFNciCFSubProgRef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciCFSubProgRef>(other, report);
  return o && DbIOFNciSubProgRef::Compare(other, report) &&
         CompareProperty(m_CannedRoughOpIdn, o->m_CannedRoughOpIdn, L"m_CannedRoughOpIdn", report);
}

}  // namespace IOF
