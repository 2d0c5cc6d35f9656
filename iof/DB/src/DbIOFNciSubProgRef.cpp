#include <iof/DbIOFNciSubProgRef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciSubProgRef)

// Versions 0 and 1 in one list: the flag added in version 1 stands between the two
// older fields, and a version-0 load skips it.
template <class F, class... R>
void DbIOFNciSubProgRef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SubProgNum", r.m_SubProgNum...);
  f(Field::V(1), "m_NcIncremental", r.m_NcIncremental...);
  f(Field::V(0), "m_matchedSubRefId", r.m_matchedSubRefId...);
}

CString DbIOFNciSubProgRef::RefText(const CString& middle) const {
  CString text = CString::Formatted(L"SubProgNum = %d, MatchSubRefId = %d, ", m_SubProgNum, m_matchedSubRefId);
  text += middle;
  text.AppendFormat(L"INC = %d", m_NcIncremental ? 1 : 0);
  return text;
}

CString DbIOFNciSubProgRef::ToIOFString() const { return RefText(CString()); }

bool DbIOFNciSubProgRef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciSubProgRef>(other, report);
  return o && DbIOFNciBase::Compare(other, report) &&
         CompareProperty(m_SubProgNum, o->m_SubProgNum, L"m_SubProgNum", report) &&
         CompareProperty(m_NcIncremental, o->m_NcIncremental, L"m_NcIncremental", report) &&
         CompareProperty(m_matchedSubRefId, o->m_matchedSubRefId, L"m_matchedSubRefId", report);
}

}  // namespace IOF
