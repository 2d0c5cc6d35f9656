#include <iof/DbIOFNciMOpBarFeeder.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpBarFeeder)

template <class F, class... R>
void DbIOFNciMOpBarFeeder::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_IsOn", r.m_IsOn...);
}

CString DbIOFNciMOpBarFeeder::ToIOFString() const {
  return CString::Formatted(L"MiscOp Bar Feeder IsOn:%s", UpperBoolText(m_IsOn));
}

bool DbIOFNciMOpBarFeeder::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpBarFeeder>(other, report);
  return o && DbIOFNciMiscOp::Compare(other, report) && CompareProperty(m_IsOn, o->m_IsOn, L"m_IsOn", report);
}

}  // namespace IOF
