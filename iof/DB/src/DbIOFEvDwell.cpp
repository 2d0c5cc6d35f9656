#include <iof/DbIOFEvDwell.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFEvDwell)

template <class F, class... R>
void DbIOFEvDwell::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_DwellTime", r.m_DwellTime...);
  f(Field::V(0), "m_SpindleSpeed", r.m_SpindleSpeed...);
  f(Field::V(0), "m_SpindleDirection", r.m_SpindleDirection...);
  f(Field::V(0), "m_IsSpindleSpeedUnitCSS", r.m_IsSpindleSpeedUnitCSS...);
}

namespace {
const wchar_t* SpindleDirectionText(int direction) {
  switch (direction) {
    case 0:
      return L"Not Applicable";
    case 1:
      return L"Reverse";
    case 2:
      return L"Stopped";
    case 3:
      return L"Forward";
    default:
      return L"Unrecognized";
  }
}
}  // namespace

CString DbIOFEvDwell::ToIOFString() const {
  return CString::Formatted(L"G4 %lf(sec), %lf(%s), SpindleDir: %s", m_DwellTime, m_SpindleSpeed,
                            m_IsSpindleSpeedUnitCSS ? L"css" : L"rpm", SpindleDirectionText(m_SpindleDirection));
}

bool DbIOFEvDwell::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFEvDwell>(other, report);
  return o && DbIOFEventBase::Compare(other, report) &&
         CompareProperty(m_DwellTime, o->m_DwellTime, L"m_DwellTime", report, 1e-6) &&
         CompareProperty(m_SpindleSpeed, o->m_SpindleSpeed, L"m_SpindleSpeed", report, 1e-6) &&
         CompareProperty(m_SpindleDirection, o->m_SpindleDirection, L"m_SpindleDirection", report) &&
         // Intended: the flag goes through the int comparison, so a difference prints 1 and 0.
         CompareProperty(static_cast<int>(m_IsSpindleSpeedUnitCSS), static_cast<int>(o->m_IsSpindleSpeedUnitCSS),
                         L"m_IsSpindleSpeedUnitCSS", report);
}

}  // namespace IOF
