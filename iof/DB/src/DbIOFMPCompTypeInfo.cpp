#include <iof/DbIOFMPCompTypeInfo.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_SERIAL(DbIOFMPCompTypeInfo)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMPCompTypeInfo)

const DbIOFMPCompParamInfo* DbIOFMPCompTypeInfo::FindParamInfo(const CString& key) const {
  for (const DbIOFMPCompParamInfo& info : m_ParamInfos) {
    if (info.GetKey() == key) return &info;
  }
  return nullptr;
}

}  // namespace IOF
