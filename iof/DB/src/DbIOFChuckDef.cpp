#include <iof/DbIOFChuckDef.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFChuckDef)

template <class F, class... R>
void DbIOFChuckDef::Fields(F&&, R&...) {}  // no fields of its own

CString DbIOFChuckDef::ToIOFString() const { return CString::Formatted(L"DbIOFChuckDef Name: %s", GetIOFName()); }

}  // namespace IOF
