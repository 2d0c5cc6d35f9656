#include <iof/DbIOFNciBaseMove.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_ABSTRACT_RECORD(DbIOFNciBaseMove)

template <class F, class... R>
void DbIOFNciBaseMove::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(0), "m_bIsFeedMove", r.m_bIsFeedMove...);
  f(Field::V(0), "m_CutterComp", r.m_CutterComp...);
  f(Field::V(0), "m_PositionCode", r.m_PositionCode...);
  f(Field::V(0), "m_ContourPosition", r.m_ContourPosition...);
  f(Field::V(1), "m_NcIncremental", r.m_NcIncremental...);
}

CString DbIOFNciBaseMove::GetContourPositionString() const {
  switch (m_ContourPosition) {
    case ContourPositionState::Unresolved:
      return CString(L"ContourPosition.Unresolved");
    case ContourPositionState::Before:
      return CString(L"ContourPosition.Before");
    case ContourPositionState::LeadIn:
      return CString(L"ContourPosition.LeadIn");
    case ContourPositionState::Contour:
      return CString(L"ContourPosition.Contour");
    case ContourPositionState::LeadOut:
      return CString(L"ContourPosition.LeadOut");
    case ContourPositionState::After:
      return CString(L"ContourPosition.After");
    case ContourPositionState::Transition:
      return CString(L"ContourPosition.Transition");
  }
  return CString();
}

CString DbIOFNciBaseMove::ToIOFString() const { return CString(L"IOF NCI Base Motion Object"); }

bool DbIOFNciBaseMove::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciBaseMove>(other, report);
  // DbIOFNciBase is skipped on purpose: G-code, owner and time of moves are never compared.
  return o && DbIOFBase::Compare(other, report) &&
         CompareProperty(m_FeedRate, o->m_FeedRate, L"m_FeedRate", report, 1e-6) &&
         CompareProperty(m_bIsFeedMove, o->m_bIsFeedMove, L"m_bIsFeedMove", report) &&
         CompareProperty(m_CutterComp, o->m_CutterComp, L"m_CutterComp", report) &&
         CompareProperty(m_PositionCode, o->m_PositionCode, L"m_PositionCode", report) &&
         CompareProperty(static_cast<int>(m_ContourPosition), static_cast<int>(o->m_ContourPosition),
                         L"m_ContourPosition", report) &&
         CompareProperty(m_NcIncremental, o->m_NcIncremental, L"m_NcIncremental", report);
}

}  // namespace IOF
