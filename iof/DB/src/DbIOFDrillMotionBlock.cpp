#include <iof/DbIOFDrillMotionBlock.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFDrillMotionBlock)

template <class F, class... R>
void DbIOFDrillMotionBlock::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_EndPt2", r.m_EndPt2...);
}

CString DbIOFDrillMotionBlock::ToIOFString() const {
  return CString::Formatted(L"DbIOFDrillMotionBlock End1:%s; End2:%s", GetEndPt().ToString(), m_EndPt2.ToString());
}

bool DbIOFDrillMotionBlock::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFDrillMotionBlock>(other, report);
  return o && DbIOFMotionBlock::Compare(other, report) && CompareProperty(m_EndPt2, o->m_EndPt2, L"m_EndPt2", report);
}

}  // namespace IOF
