#include <iof/DbIOFMPCompParamInfo.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_SERIAL(DbIOFMPCompParamInfo)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMPCompParamInfo)

}  // namespace IOF
