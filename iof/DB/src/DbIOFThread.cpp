#include <iof/DbIOFThread.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFThread)

template <class F, class... R>
void DbIOFThread::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_NumSpringCuts", r.m_NumSpringCuts...);
  f(Field::V(0), "m_FinishAllowance", r.m_FinishAllowance...);
  f(Field::V(0), "m_ThreadPullOff", r.m_ThreadPullOff...);
  f(Field::V(0), "m_NumStarts", r.m_NumStarts...);
  f(Field::V(0), "m_StartClosest", r.m_StartClosest...);
  f(Field::V(0), "m_ClearanceX", r.m_ClearanceX...);
  f(Field::V(0), "m_LeadInAngle", r.m_LeadInAngle...);
  f(Field::V(0), "m_EqualDepthMethod", r.m_EqualDepthMethod...);
  f(Field::V(0), "m_NumCuts", r.m_NumCuts...);
  f(Field::V(0), "m_ThreadStartX", r.m_ThreadStartX...);
  f(Field::V(0), "m_ThreadEndX", r.m_ThreadEndX...);
  f(Field::V(0), "m_ThreadStartZ", r.m_ThreadStartZ...);
  f(Field::V(0), "m_ThreadEndZ", r.m_ThreadEndZ...);
  f(Field::V(0), "m_Lead", r.m_Lead...);
  f(Field::V(0), "m_FirstCut", r.m_FirstCut...);
  f(Field::V(0), "m_LastCut", r.m_LastCut...);
  f(Field::V(0), "m_AccellClearance", r.m_AccellClearance...);
  f(Field::V(0), "m_LeadAngle", r.m_LeadAngle...);
  f(Field::V(0), "m_IncludedAngle", r.m_IncludedAngle...);
  f(Field::V(0), "m_ThreadType", r.m_ThreadType...);
  f(Field::V(0), "m_ThreadOrientation", r.m_ThreadOrientation...);
  f(Field::V(0), "m_TaperEndX", r.m_TaperEndX...);
}

CString DbIOFThread::ToIOFString() const { return CString(L"IOF Thread Object"); }

bool DbIOFThread::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFThread>(other, report);
  constexpr double tol = 1e-6;
  // Intended: the last cut is archived but never compared.
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_NumSpringCuts, o->m_NumSpringCuts, L"m_NumSpringCuts", report) &&
         CompareProperty(m_FinishAllowance, o->m_FinishAllowance, L"m_FinishAllowance", report, tol) &&
         CompareProperty(m_ThreadPullOff, o->m_ThreadPullOff, L"m_ThreadPullOff", report, tol) &&
         CompareProperty(m_NumStarts, o->m_NumStarts, L"m_NumStarts", report) &&
         CompareProperty(m_StartClosest, o->m_StartClosest, L"m_StartClosest", report) &&
         CompareProperty(m_ClearanceX, o->m_ClearanceX, L"m_ClearanceX", report, tol) &&
         CompareProperty(m_LeadInAngle, o->m_LeadInAngle, L"m_LeadInAngle", report, tol) &&
         CompareProperty(m_EqualDepthMethod, o->m_EqualDepthMethod, L"m_EqualDepthMethod", report) &&
         CompareProperty(m_NumCuts, o->m_NumCuts, L"m_NumCuts", report) &&
         CompareProperty(m_ThreadStartX, o->m_ThreadStartX, L"m_ThreadStartX", report, tol) &&
         CompareProperty(m_ThreadEndX, o->m_ThreadEndX, L"m_ThreadEndX", report, tol) &&
         CompareProperty(m_ThreadStartZ, o->m_ThreadStartZ, L"m_ThreadStartZ", report, tol) &&
         CompareProperty(m_ThreadEndZ, o->m_ThreadEndZ, L"m_ThreadEndZ", report, tol) &&
         CompareProperty(m_Lead, o->m_Lead, L"m_Lead", report, tol) &&
         CompareProperty(m_FirstCut, o->m_FirstCut, L"m_FirstCut", report, tol) &&
         CompareProperty(m_AccellClearance, o->m_AccellClearance, L"m_AccellClearance", report, tol) &&
         CompareProperty(m_LeadAngle, o->m_LeadAngle, L"m_LeadAngle", report, tol) &&
         CompareProperty(m_IncludedAngle, o->m_IncludedAngle, L"m_IncludedAngle", report, tol) &&
         CompareProperty(m_ThreadType, o->m_ThreadType, L"m_ThreadType", report) &&
         CompareProperty(m_ThreadOrientation, o->m_ThreadOrientation, L"m_ThreadOrientation", report) &&
         CompareProperty(m_TaperEndX, o->m_TaperEndX, L"m_TaperEndX", report, tol);
}

}  // namespace IOF
