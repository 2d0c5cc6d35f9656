#include <iof/DbIOFRotary.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFRotary)

template <class F, class... R>
void DbIOFRotary::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_RotaryType", r.m_RotaryType...);
  f(Field::V(0), "m_RotaryAxis", r.m_RotaryAxis...);
  f(Field::V(0), "m_SubDia", r.m_SubDia...);
  f(Field::V(0), "m_SubDir", r.m_SubDir...);
  f(Field::V(0), "m_SubAxis", r.m_SubAxis...);
  f(Field::V(0), "m_SubZero", r.m_SubZero...);
  f(Field::V(0), "m_UnrollOn", r.m_UnrollOn...);
  f(Field::V(0), "m_UnrollTol", r.m_UnrollTol...);
  f(Field::V(0), "m_AxisSubInterior", r.m_AxisSubInterior...);
  f(Field::V(1), "m_RotaryVector", r.m_RotaryVector...);
}

CString DbIOFRotary::ToIOFString() const { return CString(L"IOF Rotary Object"); }

bool DbIOFRotary::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFRotary>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_RotaryType, o->m_RotaryType, L"m_RotaryType", report) &&
         CompareProperty(m_RotaryAxis, o->m_RotaryAxis, L"m_RotaryAxis", report) &&
         CompareProperty(m_SubDia, o->m_SubDia, L"m_SubDia", report, tol) &&
         CompareProperty(m_SubDir, o->m_SubDir, L"m_SubDir", report) &&
         CompareProperty(m_SubAxis, o->m_SubAxis, L"m_SubAxis", report) &&
         CompareProperty(m_SubZero, o->m_SubZero, L"m_SubZero", report, tol) &&
         CompareProperty(m_UnrollOn, o->m_UnrollOn, L"m_UnrollOn", report) &&
         CompareProperty(m_UnrollTol, o->m_UnrollTol, L"m_UnrollTol", report, tol) &&
         CompareProperty(m_AxisSubInterior, o->m_AxisSubInterior, L"m_AxisSubInterior", report) &&
         CompareProperty(m_RotaryVector, o->m_RotaryVector, L"m_RotaryVector", report, tol);
}

}  // namespace IOF
