#include <iof/DbIOFEvComp.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFEvComp)

template <class F, class... R>
void DbIOFEvComp::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_CompensationType", r.m_CompensationType...);
}

namespace {
const wchar_t* CompensationStateText(int type) {
  switch (type) {
    case 0:
      return L"NULL";
    case 1:
      return L"G40";
    case 2:
      return L"G41";
    case 3:
      return L"G42";
    default:
      return L"";
  }
}
}  // namespace

CString DbIOFEvComp::ToIOFString() const {
  return CString::Formatted(L"CComp Change Event: State = %s ", CompensationStateText(m_CompensationType));
}

}  // namespace IOF
