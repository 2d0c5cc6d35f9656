#include <iof/DbIOFNciNonTransSubProgRef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciNonTransSubProgRef)

template <class F, class... R>
void DbIOFNciNonTransSubProgRef::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_SectionNum", r.m_SectionNum...);
  f(Field::V(0), "m_SectionTotal", r.m_SectionTotal...);
}

CString DbIOFNciNonTransSubProgRef::ToIOFString() const {
  // Intended: separated by blanks only, unlike the other sub-program references.
  return CString::Formatted(L"SubProgNum = %d MatchSubRefId = %d SectionNum = %d SectionTotal = %d INC = %d",
                            GetSubProgNum(), GetMatchedSubRefId(), m_SectionNum, m_SectionTotal,
                            GetNcIncremental() ? 1 : 0);
}

bool DbIOFNciNonTransSubProgRef::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciNonTransSubProgRef>(other, report);
  return o && DbIOFNciSubProgRef::Compare(other, report) &&
         CompareProperty(m_SectionNum, o->m_SectionNum, L"m_SectionNum", report) &&
         CompareProperty(m_SectionTotal, o->m_SectionTotal, L"m_SectionTotal", report);
}

}  // namespace IOF
