#include <iof/DbIOFMotionBlock.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFMotionBlock)

template <class F, class... R>
void DbIOFMotionBlock::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_EndPt", r.m_EndPt...);
}

CString DbIOFMotionBlock::ToIOFString() const {
  return CString::Formatted(L"DbIOFMotionBlock End: %s", m_EndPt.ToString());
}

bool DbIOFMotionBlock::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFMotionBlock>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareProperty(m_EndPt, o->m_EndPt, L"m_EndPt", report);
}

}  // namespace IOF
