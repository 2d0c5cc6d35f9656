#include <iof/DbIOFNciManualEntry.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciManualEntry)

template <class F, class... R>
void DbIOFNciManualEntry::Fields(F&& f, R&... r) {
  // The field added in version 1 is archived first, ahead of the version 0 fields.
  f(Field::V(1), "m_ReadOnlyWhenPosting", r.m_ReadOnlyWhenPosting...);
  f(Field::V(0), "m_Comment", r.m_Comment...);
  f(Field::V(0), "m_OutputCommentAsCode", r.m_OutputCommentAsCode...);
  f(Field::V(0), "m_IncludeWithMove", r.m_IncludeWithMove...);
}

CString DbIOFNciManualEntry::ToIOFString() const {
  return CString::Formatted(L"G%d %s - OutAs: %s, Include With Move: %s, Read Only When Posting: %s", GetGCode(),
                            m_Comment, m_OutputCommentAsCode ? L"Code" : L"Comment", m_IncludeWithMove ? L"Yes" : L"No",
                            m_ReadOnlyWhenPosting ? L"Yes" : L"No");
}

bool DbIOFNciManualEntry::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciManualEntry>(other, report);
  return o && DbIOFNciBase::Compare(other, report) && CompareProperty(m_Comment, o->m_Comment, L"m_Comment", report) &&
         CompareProperty(m_OutputCommentAsCode, o->m_OutputCommentAsCode, L"m_OutputCommentAsCode", report) &&
         CompareProperty(m_IncludeWithMove, o->m_IncludeWithMove, L"m_IncludeWithMove", report) &&
         CompareProperty(m_ReadOnlyWhenPosting, o->m_ReadOnlyWhenPosting, L"m_ReadOnlyWhenPosting", report);
}

}  // namespace IOF
