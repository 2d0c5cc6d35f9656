#include <iof/DbIOFArcMotionBlock.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFArcMotionBlock)

template <class F, class... R>
void DbIOFArcMotionBlock::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_StartPt", r.m_StartPt...);
  f(Field::V(0), "m_CenterPt", r.m_CenterPt...);
  f(Field::V(0), "m_ReverseForPost", r.m_ReverseForPost...);
  f(Field::V(0), "m_NCPlane", r.m_NCPlane...);
}

CString DbIOFArcMotionBlock::ToIOFString() const {
  return CString::Formatted(L"DbIOFArcMotionBlock Pl:%s; St:%s; Ctr:%s; End: %s, reverse=%d",
                            ArcPlaneText(static_cast<int>(m_NCPlane), L""), m_StartPt.ToString(), m_CenterPt.ToString(),
                            GetEndPt().ToString(), m_ReverseForPost ? 1 : 0);
}

bool DbIOFArcMotionBlock::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFArcMotionBlock>(other, report);
  return o && DbIOFMotionBlock::Compare(other, report) &&
         CompareProperty(m_CenterPt, o->m_CenterPt, L"m_CenterPt", report) &&
         CompareProperty(m_StartPt, o->m_StartPt, L"m_StartPt", report) &&
         CompareProperty(m_ReverseForPost, o->m_ReverseForPost, L"m_ReverseForPost", report) &&
         CompareProperty(static_cast<int>(m_NCPlane), static_cast<int>(o->m_NCPlane), L"m_NCPlane", report);
}

}  // namespace IOF
