#include <iof/DbIOFEvClamp.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFEvClamp)

template <class F, class... R>
void DbIOFEvClamp::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_IsClamping", r.m_IsClamping...);
  f(Field::V(0), "m_Time", r.m_Time...);
}

CString DbIOFEvClamp::ToIOFString() const {
  return CString::Formatted(L"Steady Rest Event %s Time:  %lf(sec)", m_IsClamping ? L"Clamp" : L"UnClamp", m_Time);
}

bool DbIOFEvClamp::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFEvClamp>(other, report);
  return o && DbIOFEventBase::Compare(other, report) &&
         CompareProperty(m_IsClamping, o->m_IsClamping, L"m_IsClamping", report) &&
         CompareProperty(m_Time, o->m_Time, L"m_Time", report, 1e-6);
}

}  // namespace IOF
