#include <iof/DbIOFNciMOpSpindleMove.h>

#include "RecordImpl.h"
#include "TextTable.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciMOpSpindleMove)

template <class F, class... R>
void DbIOFNciMOpSpindleMove::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Spindle", r.m_Spindle...);
  f(Field::V(0), "m_SpindleMotionType", r.m_SpindleMotionType...);
  f(Field::V(0), "m_SpindleRotaryDirType", r.m_SpindleRotaryDirType...);
  f(Field::V(0), "m_IsRapidMove", r.m_IsRapidMove...);
  f(Field::V(0), "m_FeedRate", r.m_FeedRate...);
  f(Field::V(0), "m_LinearZPos", r.m_LinearZPos...);
  f(Field::V(0), "m_RotaryFinalAngle", r.m_RotaryFinalAngle...);
  f(Field::V(0), "m_StockClearance", r.m_StockClearance...);
  f(Field::V(0), "m_GripLength", r.m_GripLength...);
  f(Field::V(0), "m_MoveDistance", r.m_MoveDistance...);
}

const wchar_t* DbIOFNciMOpSpindleMove::SpindleMotionText(int motion) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"Linear", L"Rotary", L"Home", L"ClearStock", L"GripLen"};
  return Detail::TextOf(motion, kTexts, L"Oops");
}

const wchar_t* DbIOFNciMOpSpindleMove::RotaryDirectionText(int direction) noexcept {
  static constexpr const wchar_t* kTexts[] = {L"CW", L"CCW", L"Shortest"};
  return Detail::TextOf(direction, kTexts, L"Oops");
}

CString DbIOFNciMOpSpindleMove::ToIOFString() const {
  // Intended: the five tabs belong to the text.
  return CString::Formatted(
      L"SpindleMove MOp Spindle:%s, Motion:%s, RotDir:%s, IsRapidMove:%s, FeedRate:%g, \t\t\t\t\tLinearZPos:%g, "
      L"RotaryFinalAngle:%g, StockClearance:%g, GripLength:%g, MoveDistance:%g",
      SpindleText(m_Spindle), SpindleMotionText(m_SpindleMotionType), RotaryDirectionText(m_SpindleRotaryDirType),
      LowerBoolText(m_IsRapidMove), m_FeedRate, m_LinearZPos, m_RotaryFinalAngle, m_StockClearance, m_GripLength,
      m_MoveDistance);
}

bool DbIOFNciMOpSpindleMove::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciMOpSpindleMove>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciMiscOp::Compare(other, report) &&
         CompareProperty(m_Spindle, o->m_Spindle, L"m_Spindle", report) &&
         CompareProperty(m_SpindleMotionType, o->m_SpindleMotionType, L"m_SpindleMotionType", report) &&
         CompareProperty(m_SpindleRotaryDirType, o->m_SpindleRotaryDirType, L"m_SpindleRotaryDirType", report) &&
         CompareProperty(m_IsRapidMove, o->m_IsRapidMove, L"m_IsRapidMove", report) &&
         CompareProperty(m_FeedRate, o->m_FeedRate, L"m_FeedRate", report, tol) &&
         CompareProperty(m_LinearZPos, o->m_LinearZPos, L"m_LinearZPos", report, tol) &&
         CompareProperty(m_RotaryFinalAngle, o->m_RotaryFinalAngle, L"m_RotaryFinalAngle", report, tol) &&
         CompareProperty(m_StockClearance, o->m_StockClearance, L"m_StockClearance", report, tol) &&
         CompareProperty(m_GripLength, o->m_GripLength, L"m_GripLength", report, tol) &&
         CompareProperty(m_MoveDistance, o->m_MoveDistance, L"m_MoveDistance", report, tol);
}

}  // namespace IOF
