#include <iof/DbIOFEventBase.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_ABSTRACT_RECORD(DbIOFEventBase)

// No fields: the archive holds only the version.
template <class F, class... R>
void DbIOFEventBase::Fields(F&&, R&...) {}

}  // namespace IOF
