#include <iof/DbIOFRetract.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFRetract)

template <class F, class... R>
void DbIOFRetract::Fields(F&& f, R&... r) {
  SharedFields(f, "m_RetractType", r...);
  f(Field::V(2), "m_IsNoneSetByUser", r.m_IsNoneSetByUser...);
}

const wchar_t* DbIOFRetract::RetractTypeText(int type) noexcept {
  switch (type) {
    case kNotSet:
      return L"Not Set";
    case kFollowedByPhysicalTC:
      return L"Followed by Physical TC";
    case kFollowedByNullTC:
      return L"Followed by Null TC";
    case kReposition:
      return L"Reposition";
    case kEOF:
      return L"EOF";
    default:
      return L"";
  }
}

CString DbIOFRetract::GetMoveStrategyAttribValue() const { return StrategyAttribValue(L"T_RETRACT_STRATEGY"); }

CString DbIOFRetract::ToIOFString() const {
  CString reference(L"None");
  Quarp::DbCPtr<DbIOFBase> point(nullptr);
  if (Quarp::DbMgr* mgr = GetDbMgr(); mgr && mgr->Get(point, m_ReferencePointId, 0)) reference = point->GetIOFName();
  return CString::Formatted(L"IOF Retract Object: Name: %s, Type \"%s\", RefPos: %s, INC = %d", GetIOFName(),
                            RetractTypeText(m_Type), reference, static_cast<int>(m_NcIncremental));
}

bool DbIOFRetract::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFRetract>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareShared(*o, L"m_RetractType", report) &&
         CompareProperty(m_IsNoneSetByUser, o->m_IsNoneSetByUser, L"m_IsNoneSetByUser", report);
}

}  // namespace IOF
