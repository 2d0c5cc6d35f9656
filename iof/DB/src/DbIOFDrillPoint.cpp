#include <iof/DbIOFDrillPoint.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFDrillPoint)

template <class F, class... R>
void DbIOFDrillPoint::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_EndPoint1", r.m_EndPoint1...);
  f(Field::V(0), "m_EndPoint2", r.m_EndPoint2...);
  f(Field::V(0), "m_Dwell", r.m_Dwell...);
  f(Field::V(0), "m_InitHeight", r.m_InitHeight...);
  f(Field::V(0), "m_RefHeight", r.m_RefHeight...);
  f(Field::V(0), "m_TopOfStock", r.m_TopOfStock...);
  f(Field::V(0), "m_SelGeoHeight", r.m_SelGeoHeight...);
  f(Field::V(0), "m_Bottom", r.m_Bottom...);
  f(Field::V(0), "m_ReverseFlag", r.m_ReverseFlag...);
}

CString DbIOFDrillPoint::ToIOFString() const {
  return CString::Formatted(L"IOF Cycle Repeat Object, INC = %d", GetNcIncremental() ? 1 : 0);
}

bool DbIOFDrillPoint::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFDrillPoint>(other, report);
  return o && DbIOFNciBaseMove::Compare(other, report) &&
         CompareProperty(m_EndPoint1, o->m_EndPoint1, L"m_EndPoint1", report, 1e-6) &&
         CompareProperty(m_EndPoint2, o->m_EndPoint2, L"m_EndPoint2", report, 1e-6) &&
         CompareProperty(m_Dwell, o->m_Dwell, L"m_Dwell", report, 1e-6) &&
         CompareProperty(m_InitHeight, o->m_InitHeight, L"m_InitHeight", report, 1e-6) &&
         CompareProperty(m_RefHeight, o->m_RefHeight, L"m_RefHeight", report, 1e-6) &&
         CompareProperty(m_TopOfStock, o->m_TopOfStock, L"m_TopOfStock", report, 1e-6) &&
         CompareProperty(m_SelGeoHeight, o->m_SelGeoHeight, L"m_SelGeoHeight", report, 1e-6) &&
         CompareProperty(m_Bottom, o->m_Bottom, L"m_Bottom", report, 1e-6) &&
         CompareProperty(m_ReverseFlag, o->m_ReverseFlag, L"m_ReverseFlag", report);
}

}  // namespace IOF
