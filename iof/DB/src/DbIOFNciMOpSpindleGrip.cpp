#include <iof/DbIOFNciMOpSpindleGrip.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpSpindleGrip)

template <class F, class... R>
void DbIOFNciMOpSpindleGrip::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Spindle", r.m_Spindle...);
  f(Field::V(0), "m_IsClamping", r.m_IsClamping...);
  f(Field::V(0), "m_IsEjecting", r.m_IsEjecting...);
  f(Field::V(0), "m_Dwell", r.m_Dwell...);
  f(Field::V(0), "m_IsTransferStock", r.m_IsTransferStock...);
  f(Field::V(0), "m_Offset", r.m_Offset...);
}

CString DbIOFNciMOpSpindleGrip::ToIOFString() const {
  // Intended: the tail stock's label on the grip's dump.
  return CString::Formatted(
      L"TailStock MOp Type:%s, IsClamping:%s, IsEjecting:%s, Dwell:%g, IsTransferStock:%d, Offset:%g",
      SpindleText(m_Spindle), LowerBoolText(m_IsClamping), LowerBoolText(m_IsEjecting), m_Dwell,
      m_IsTransferStock ? 1 : 0, m_Offset);
}

bool DbIOFNciMOpSpindleGrip::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpSpindleGrip>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_Spindle, o->m_Spindle, L"m_Spindle", report) &&
         CompareProperty(m_IsClamping, o->m_IsClamping, L"m_IsClamping", report) &&
         CompareProperty(m_IsEjecting, o->m_IsEjecting, L"m_IsEjecting", report) &&
         CompareProperty(m_Dwell, o->m_Dwell, L"m_Dwell", report, tol) &&
         CompareProperty(m_IsTransferStock, o->m_IsTransferStock, L"m_IsTransferStock", report) &&
         CompareProperty(m_Offset, o->m_Offset, L"m_Offset", report, tol);
}

}  // namespace IOF
