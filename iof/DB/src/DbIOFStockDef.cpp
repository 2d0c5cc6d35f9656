#include <iof/DbIOFStockDef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFStockDef)

template <class F, class... R>
void DbIOFStockDef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_OffsetVector", r.m_OffsetVector...);
}

CString DbIOFStockDef::ToIOFString() const {
  return CString::Formatted(L"Offset vector (%f,%f,%f)", m_OffsetVector[0], m_OffsetVector[1], m_OffsetVector[2]);
}

bool DbIOFStockDef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFStockDef>(other, report);
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_OffsetVector, o->m_OffsetVector, L"m_OffsetVector", report, 1e-6);
}

}  // namespace IOF
