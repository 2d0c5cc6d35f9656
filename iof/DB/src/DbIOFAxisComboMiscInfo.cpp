#include <iof/DbIOFAxisComboMiscInfo.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_SERIAL(DbIOFAxisComboMiscInfo)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFAxisComboMiscInfo)

CString DbIOFAxisComboMiscInfo::ToString() const {
  return CString::Formatted(L"Description %s, Active Turret Id %d, Active Spindle Id %d, stream Index %d",
                            m_Description, static_cast<int>(m_ActiveTurretID), static_cast<int>(m_ActiveSpindleID),
                            m_StreamIndex);
}

}  // namespace IOF
