#include <iof/DbIOFNciMOpBarFeed.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpBarFeed)

template <class F, class... R>
void DbIOFNciMOpBarFeed::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Spindle", r.m_Spindle...);
  f(Field::V(0), "m_MotionType", r.m_MotionType...);
  f(Field::V(0), "m_FinalZPos", r.m_FinalZPos...);
  f(Field::V(0), "m_ZOffset", r.m_ZOffset...);
  f(Field::V(0), "m_ToolXPos", r.m_ToolXPos...);
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(0), "m_IsRapidMove", r.m_IsRapidMove...);
}

const wchar_t* DbIOFNciMOpBarFeed::PushMotionText(int motion) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"PushNoTool", L"PushTool", L"PushToolStop", L"PushWithTool"};
  return Detail::TextOf(motion, kTexts, L"Oops");
}

CString DbIOFNciMOpBarFeed::ToIOFString() const {
  return CString::Formatted(
      L"MiscOp Bar Feed Spindle:%s, MotionType:%s, FinalZPos:%lf, ZOffset:%lf, ToolXPos:%lf, FeedRate:%lf, "
      L"IsRapidMove:%s",
      SpindleText(m_Spindle), PushMotionText(m_MotionType), m_FinalZPos, m_ZOffset, m_ToolXPos, m_FeedRate,
      UpperBoolText(m_IsRapidMove));
}

bool DbIOFNciMOpBarFeed::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpBarFeed>(other, report);
  constexpr double tol = 1e-6;
  // Intended: m_FeedRate is archived but not compared.
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_Spindle, o->m_Spindle, L"m_Spindle", report) &&
         CompareProperty(m_MotionType, o->m_MotionType, L"m_MotionType", report) &&
         CompareProperty(m_FinalZPos, o->m_FinalZPos, L"m_FinalZPos", report, tol) &&
         CompareProperty(m_ZOffset, o->m_ZOffset, L"m_ZOffset", report, tol) &&
         CompareProperty(m_ToolXPos, o->m_ToolXPos, L"m_ToolXPos", report, tol) &&
         CompareProperty(m_IsRapidMove, o->m_IsRapidMove, L"m_IsRapidMove", report);
}

}  // namespace IOF
