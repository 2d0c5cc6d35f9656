#include <iof/DbIOFApproach.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFApproach)

template <class F, class... R>
void DbIOFApproach::Fields(F&& f, R&... r) {
  SharedFields(f, "m_ApproachType", r...);
}

const wchar_t* DbIOFApproach::ApproachTypeText(int type) noexcept {
  switch (type) {
    case kNotSet:
      return L"Not Set";
    case kPrecededByPhysicalTC:
      return L"Preceded by Physical TC";
    case kPrecededByNullTC:
      return L"Preceded by Null TC";
    case kReposition:
      return L"Reposition";
    case kLinkPrecededByNullTC:
      return L"Link: Preceded by Null TC";
    case kLinkReposition:
      return L"Link: Reposition";
    default:
      return L"";
  }
}

CString DbIOFApproach::GetMoveStrategyAttribValue() const { return StrategyAttribValue(L"T_APPROACH_STRATEGY"); }

CString DbIOFApproach::ToIOFString() const {
  return CString::Formatted(L"IOF Approach Object: Name: %s, Pos (%g, %g, %g), Type \"%s\", INC = %d", GetIOFName(),
                            m_EndPoint.x, m_EndPoint.y, m_EndPoint.z, ApproachTypeText(m_Type),
                            static_cast<int>(m_NcIncremental));
}

bool DbIOFApproach::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFApproach>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareShared(*o, L"m_ApproachType", report);
}

}  // namespace IOF
