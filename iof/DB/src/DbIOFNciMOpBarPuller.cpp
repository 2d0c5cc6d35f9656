#include <iof/DbIOFNciMOpBarPuller.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpBarPuller)

template <class F, class... R>
void DbIOFNciMOpBarPuller::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_IsOn", r.m_IsOn...);
}

CString DbIOFNciMOpBarPuller::ToIOFString() const {
  return CString::Formatted(L"MiscOp Bar Puller IsOn:%s", UpperBoolText(m_IsOn));
}

bool DbIOFNciMOpBarPuller::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpBarPuller>(other, report);
  return o && DbIOFNciMiscOp::Compare(other, report) && CompareProperty(m_IsOn, o->m_IsOn, L"m_IsOn", report);
}

}  // namespace IOF
