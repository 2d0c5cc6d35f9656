#include <iof/DbIOFNciTransSubProgOp.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciTransSubProgOp)

template <class F, class... R>
void DbIOFNciTransSubProgOp::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SubProgNum", r.m_SubProgNum...);
  f(Field::V(0), "m_NcIncremental", r.m_NcIncremental...);
  f(Field::V(0), "m_OpId", r.m_OpId...);
  f(Field::V(0), "m_SectionNum", r.m_SectionNum...);
  f(Field::V(0), "m_SectionTotal", r.m_SectionTotal...);
  f(Field::V(0), "m_Chain", r.m_Chain...);
  f(Field::V(0), "m_TransformStatus", r.m_TransformStatus...);
  f(Field::V(0), "m_IsSource", r.m_IsSource...);
  f(Field::V(0), "m_TransformType", r.m_TransformType...);
  f(Field::V(0), "m_TransformMethod", r.m_TransformMethod...);
  f(Field::V(0), "m_TransformMatrix", r.m_TransformMatrix...);
  f(Field::V(0), "m_TransformOrigin", r.m_TransformOrigin...);
  f(Field::V(0), "m_NextTool", r.m_NextTool...);
  f(Field::V(0), "m_HasToolchange", r.m_HasToolchange...);
  f(Field::V(0), "m_NoNest", r.m_NoNest...);
  f(Field::V(0), "m_AllSubNests", r.m_AllSubNests...);
  f(Field::V(0), "m_AllIncNests", r.m_AllIncNests...);
  f(Field::V(0), "m_NestLevel", r.m_NestLevel...);
  f(Field::V(1), "m_TransformMatrixEulerAngles", r.m_TransformMatrixEulerAngles...);
}

CString DbIOFNciTransSubProgOp::ToIOFString() const {
  return CString::Formatted(L"SubProgNum = %d, INC = %d", m_SubProgNum, static_cast<int>(m_NcIncremental));
}

bool DbIOFNciTransSubProgOp::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciTransSubProgOp>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciOperation::Compare(other, report) &&
         CompareProperty(m_SubProgNum, o->m_SubProgNum, L"m_SubProgNum", report) &&
         CompareProperty(m_NcIncremental, o->m_NcIncremental, L"m_NcIncremental", report) &&
         CompareProperty(m_OpId, o->m_OpId, L"m_OpId", report) &&
         CompareProperty(m_SectionNum, o->m_SectionNum, L"m_SectionNum", report) &&
         CompareProperty(m_SectionTotal, o->m_SectionTotal, L"m_SectionTotal", report) &&
         CompareProperty(m_Chain, o->m_Chain, L"m_Chain", report) &&
         CompareProperty(m_TransformStatus, o->m_TransformStatus, L"m_TransformStatus", report) &&
         CompareProperty(m_IsSource, o->m_IsSource, L"m_IsSource", report) &&
         CompareProperty(m_TransformType, o->m_TransformType, L"m_TransformType", report) &&
         CompareProperty(m_TransformMethod, o->m_TransformMethod, L"m_TransformMethod", report) &&
         CompareProperty(m_TransformMatrix, o->m_TransformMatrix, L"m_TransformMatrix", report, 2e-7) &&
         CompareProperty(m_TransformOrigin, o->m_TransformOrigin, L"m_TransformOrigin", report, tol) &&
         CompareProperty(m_NextTool, o->m_NextTool, L"m_NextTool", report) &&
         CompareProperty(m_HasToolchange, o->m_HasToolchange, L"m_HasToolchange", report) &&
         CompareProperty(m_NoNest, o->m_NoNest, L"m_NoNest", report) &&
         CompareProperty(m_AllSubNests, o->m_AllSubNests, L"m_AllSubNests", report) &&
         CompareProperty(m_AllIncNests, o->m_AllIncNests, L"m_AllIncNests", report) &&
         CompareProperty(m_NestLevel, o->m_NestLevel, L"m_NestLevel", report) &&
         CompareProperty(m_TransformMatrixEulerAngles, o->m_TransformMatrixEulerAngles, L"m_TransformMatrixEulerAngles",
                         report, tol);
}

}  // namespace IOF
