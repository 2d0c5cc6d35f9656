#include <iof/DbIOFEvChangeFeedUnitType.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFEvChangeFeedUnitType)

template <class F, class... R>
void DbIOFEvChangeFeedUnitType::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_FeedUnits", r.m_FeedUnits...);
}

namespace {
const wchar_t* FeedUnitText(int units) {
  switch (units) {
    case 1:
      return L"//rev";
    case 2:
      return L"Invtime";
    default:
      return L"//min";  // 0 and every unknown value
  }
}
}  // namespace

CString DbIOFEvChangeFeedUnitType::ToIOFString() const {
  return CString::Formatted(L"FeedUnits = %s", FeedUnitText(m_FeedUnits));
}

bool DbIOFEvChangeFeedUnitType::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFEvChangeFeedUnitType>(other, report);
  return o && DbIOFEventBase::Compare(other, report) &&
         CompareProperty(m_FeedUnits, o->m_FeedUnits, L"m_FeedUnits", report);
}

}  // namespace IOF
