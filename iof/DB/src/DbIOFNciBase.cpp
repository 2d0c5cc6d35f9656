#include <iof/DbIOFNciBase.h>

#include "RecordImpl.h"

#include <cmath>

namespace IOF {

IOF_IMPLEMENT_ABSTRACT_RECORD(DbIOFNciBase)

template <class F, class... R>
void DbIOFNciBase::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_GCode", r.m_GCode...);
  f(Field::V(0), "m_OwnerOpId", r.m_OwnerOpId...);
  f(Field::V(0), "m_Time", r.m_Time...);
}

double DbIOFNciBase::FilterTime(double t) noexcept {
  // NaN fails the first test; +infinity the second.
  return t >= 0.001 && t != INFINITY ? t : 0.0;
}

void DbIOFNciBase::OnLoaded(unsigned /*version*/) { m_Time = FilterTime(m_Time); }

CString DbIOFNciBase::ToIOFString() const { return CString(L"IOF NCI Base Object"); }

bool DbIOFNciBase::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciBase>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareProperty(m_GCode, o->m_GCode, L"m_GCode", report) &&
         CompareProperty(m_OwnerOpId, o->m_OwnerOpId, L"m_OwnerOpId", report) &&
         CompareProperty(m_Time, o->m_Time, L"m_Time", report, 1e-6);
}

}  // namespace IOF
