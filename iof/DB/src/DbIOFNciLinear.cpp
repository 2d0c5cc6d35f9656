#include <iof/DbIOFNciLinear.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciLinear)

template <class F, class... R>
void DbIOFNciLinear::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_EndPoint", r.m_EndPoint...);
}

CString DbIOFNciLinear::ToIOFString() const {
  return CString::Formatted(L"G%d %d %lf %lf %lf %lf %d %s t=%gs INC = %d", GetGCode(), GetCutterComp(), m_EndPoint.x,
                            m_EndPoint.y, m_EndPoint.z, GetFeedRate(), GetPositionCode(), GetContourPositionString(),
                            GetTime(), GetNcIncremental() ? 1 : 0);
}

bool DbIOFNciLinear::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciLinear>(other, report);
  return o && DbIOFNciBaseMove::Compare(other, report) &&
         CompareProperty(m_EndPoint, o->m_EndPoint, L"m_EndPoint", report, 1e-6);
}

}  // namespace IOF
