#include <iof/DbIOFNciMOpTailStock.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpTailStock)

template <class F, class... R>
void DbIOFNciMOpTailStock::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ActionType", r.m_ActionType...);
  f(Field::V(0), "m_Position", r.m_Position...);
  f(Field::V(0), "m_IsRapid", r.m_IsRapid...);
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(0), "m_MoveDistance", r.m_MoveDistance...);
}

const wchar_t* DbIOFNciMOpTailStock::ActionTypeText(int action) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Load Center",       L"Unload Center",  L"Tailstock Retract",
                                              L"Tailstock Advance", L"Quill Retract",  L"Quill Advance",
                                              L"Stock clearance",   L"Linear Position"};
  return Detail::TextOf(action, kTexts, L"Oops");
}

CString DbIOFNciMOpTailStock::ToIOFString() const {
  return CString::Formatted(L"TailStock Action Type:%s, Position:%g, Dist:%g, Rapid:%s, FRate:%g, t=%gs",
                            ActionTypeText(m_ActionType), m_Position, m_MoveDistance, LowerBoolText(m_IsRapid),
                            m_FeedRate, GetTime());
}

bool DbIOFNciMOpTailStock::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpTailStock>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_ActionType, o->m_ActionType, L"m_ActionType", report) &&
         CompareProperty(m_Position, o->m_Position, L"m_Position", report, tol) &&
         CompareProperty(m_IsRapid, o->m_IsRapid, L"m_IsRapid", report) &&
         CompareProperty(m_FeedRate, o->m_FeedRate, L"m_FeedRate", report, tol) &&
         CompareProperty(m_MoveDistance, o->m_MoveDistance, L"m_MoveDistance", report, tol);
}

}  // namespace IOF
