#include <iof/DbIOFNciCRSubProgRef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciCRSubProgRef)

template <class F, class... R>
void DbIOFNciCRSubProgRef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Direction", r.m_Direction...);
  f(Field::V(0), "m_Overlap", r.m_Overlap...);
  f(Field::V(0), "m_RoughStep", r.m_RoughStep...);
  f(Field::V(0), "m_StockX", r.m_StockX...);
  f(Field::V(0), "m_StockZ", r.m_StockZ...);
}

CString DbIOFNciCRSubProgRef::ToIOFString() const {
  // Intended: the Z stock is printed under the label "StockY".
  return RefText(CString::Formatted(L"Direction:%d, Overlap:%g, RoughStep:%g, StockX:%g, StockY:%g, ",
                                    static_cast<int>(m_Direction), m_Overlap, m_RoughStep, m_StockX, m_StockZ));
}

bool DbIOFNciCRSubProgRef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciCRSubProgRef>(other, report);
  return o && DbIOFNciSubProgRef::Compare(other, report) &&
         CompareProperty(static_cast<int>(m_Direction), static_cast<int>(o->m_Direction), L"m_Direction", report) &&
         CompareProperty(m_Overlap, o->m_Overlap, L"m_Overlap", report, 1e-6) &&
         CompareProperty(m_RoughStep, o->m_RoughStep, L"m_RoughStep", report, 1e-6) &&
         CompareProperty(m_StockX, o->m_StockX, L"m_StockX", report, 1e-6) &&
         CompareProperty(m_StockZ, o->m_StockZ, L"m_StockZ", report, 1e-6);
}

}  // namespace IOF
