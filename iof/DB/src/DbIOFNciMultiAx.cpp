#include <iof/DbIOFNciMultiAx.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMultiAx)

template <class F, class... R>
void DbIOFNciMultiAx::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ToolTipPt", r.m_ToolTipPt...);
  f(Field::V(0), "m_ToolOrientVect", r.m_ToolOrientVect...);
  f(Field::V(0), "m_CompVector", r.m_CompVector...);
  f(Field::V(0), "m_CompOffsetValue", r.m_CompOffsetValue...);
  f(Field::V(0), "m_AddedByPostLogic", r.m_AddedByPostLogic...);
}

CString DbIOFNciMultiAx::ToIOFString() const {
  // No cutter compensation, time or offset value in this text: intended.
  return CString::Formatted(L"G%d %lf %lf %lf %lf %lf %lf %lf %d %s %lf %lf %lf %s INC = %d", GetGCode(), m_ToolTipPt.x,
                            m_ToolTipPt.y, m_ToolTipPt.z, m_ToolOrientVect[0], m_ToolOrientVect[1], m_ToolOrientVect[2],
                            GetFeedRate(), GetPositionCode(), GetContourPositionString(), m_CompVector[0],
                            m_CompVector[1], m_CompVector[2], m_AddedByPostLogic ? L"T" : L"F",
                            GetNcIncremental() ? 1 : 0);
}

bool DbIOFNciMultiAx::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMultiAx>(other, report);
  return o && DbIOFNciBaseMove::Compare(other, report) &&
         CompareProperty(m_ToolTipPt, o->m_ToolTipPt, L"m_ToolTipPt", report, 1e-6) &&
         CompareProperty(m_ToolOrientVect, o->m_ToolOrientVect, L"m_ToolOrientVect", report, 1e-6) &&
         CompareProperty(m_CompVector, o->m_CompVector, L"m_CompVector", report, 1e-6) &&
         CompareProperty(m_CompOffsetValue, o->m_CompOffsetValue, L"m_CompOffsetValue", report, 1e-6) &&
         CompareProperty(m_AddedByPostLogic, o->m_AddedByPostLogic, L"m_AddedByPostLogic", report);
}

}  // namespace IOF
