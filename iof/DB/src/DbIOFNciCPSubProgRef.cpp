#include <iof/DbIOFNciCPSubProgRef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciCPSubProgRef)

template <class F, class... R>
void DbIOFNciCPSubProgRef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_nCuts", r.m_nCuts...);
  f(Field::V(0), "m_StepX", r.m_StepX...);
  f(Field::V(0), "m_OffsetAngle", r.m_OffsetAngle...);
  f(Field::V(0), "m_StockX", r.m_StockX...);
  f(Field::V(0), "m_StockZ", r.m_StockZ...);
}

CString DbIOFNciCPSubProgRef::ToIOFString() const {
  // Intended: the Z stock is printed under the label "StockY".
  return RefText(CString::Formatted(L"nCuts:%d, StepX:%g, OffsetAngle:%g, StockX:%g, StockY:%g, ", m_nCuts, m_StepX,
                                    m_OffsetAngle, m_StockX, m_StockZ));
}

bool DbIOFNciCPSubProgRef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciCPSubProgRef>(other, report);
  return o && DbIOFNciSubProgRef::Compare(other, report) && CompareProperty(m_nCuts, o->m_nCuts, L"m_nCuts", report) &&
         CompareProperty(m_StepX, o->m_StepX, L"m_StepX", report, 1e-6) &&
         CompareProperty(m_OffsetAngle, o->m_OffsetAngle, L"m_OffsetAngle", report, 1e-6) &&
         CompareProperty(m_StockX, o->m_StockX, L"m_StockX", report, 1e-6) &&
         CompareProperty(m_StockZ, o->m_StockZ, L"m_StockZ", report, 1e-6);
}

}  // namespace IOF
