#include <iof/DbIOFCannedGroove.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFCannedGroove)

template <class F, class... R>
void DbIOFCannedGroove::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ShapeDirection", r.m_ShapeDirection...);
  f(Field::V(0), "m_RoughStep", r.m_RoughStep...);
  f(Field::V(0), "m_RoughStockX", r.m_RoughStockX...);
  f(Field::V(0), "m_RoughStockZ", r.m_RoughStockZ...);
  f(Field::V(0), "m_RoughDwell", r.m_RoughDwell...);
  f(Field::V(0), "m_DepthInc", r.m_DepthInc...);
  f(Field::V(0), "m_PeckInc", r.m_PeckInc...);
  f(Field::V(0), "m_PeckDo", r.m_PeckDo...);
  f(Field::V(0), "m_PeckLast", r.m_PeckLast...);
  f(Field::V(0), "m_PeckRetractInc", r.m_PeckRetractInc...);
  f(Field::V(0), "m_FinishBackOffsetNum", r.m_FinishBackOffsetNum...);
  f(Field::V(0), "m_FinishStep", r.m_FinishStep...);
  f(Field::V(0), "m_FinishStockX", r.m_FinishStockX...);
  f(Field::V(0), "m_FinishStockZ", r.m_FinishStockZ...);
  // Intended: held, copied and compared, never archived; a load leaves them as they are.
  f(Field::NotArchived, "m_StartPt", r.m_StartPt...);
  f(Field::NotArchived, "m_EndPt", r.m_EndPt...);
}

CString DbIOFCannedGroove::ToIOFString() const { return CString(L"IOF Canned Groove Object"); }

bool DbIOFCannedGroove::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFCannedGroove>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_ShapeDirection, o->m_ShapeDirection, L"m_ShapeDirection", report) &&
         CompareProperty(m_RoughStep, o->m_RoughStep, L"m_RoughStep", report, tol) &&
         CompareProperty(m_RoughStockX, o->m_RoughStockX, L"m_RoughStockX", report, tol) &&
         CompareProperty(m_RoughStockZ, o->m_RoughStockZ, L"m_RoughStockZ", report, tol) &&
         CompareProperty(m_RoughDwell, o->m_RoughDwell, L"m_RoughDwell", report, tol) &&
         CompareProperty(m_DepthInc, o->m_DepthInc, L"m_DepthInc", report, tol) &&
         CompareProperty(m_PeckInc, o->m_PeckInc, L"m_PeckInc", report, tol) &&
         CompareProperty(m_PeckDo, o->m_PeckDo, L"m_PeckDo", report) &&
         CompareProperty(m_PeckLast, o->m_PeckLast, L"m_PeckLast", report, tol) &&
         CompareProperty(m_PeckRetractInc, o->m_PeckRetractInc, L"m_PeckRetractInc", report, tol) &&
         CompareProperty(m_FinishBackOffsetNum, o->m_FinishBackOffsetNum, L"m_FinishBackOffsetNum", report) &&
         CompareProperty(m_FinishStep, o->m_FinishStep, L"m_FinishStep", report, tol) &&
         CompareProperty(m_FinishStockX, o->m_FinishStockX, L"m_FinishStockX", report, tol) &&
         CompareProperty(m_FinishStockZ, o->m_FinishStockZ, L"m_FinishStockZ", report, tol) &&
         CompareProperty(m_StartPt, o->m_StartPt, L"m_StartPt", report) &&
         CompareProperty(m_EndPt, o->m_EndPt, L"m_EndPt", report);
}

}  // namespace IOF
