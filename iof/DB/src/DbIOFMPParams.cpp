#include <iof/DbIOFMPParams.h>

#include "RecordImpl.h"

#include <vector>

namespace IOF {

IOF_IMPLEMENT_SERIAL(DbIOFMPParams)
IOF_IMPLEMENT_OBJECT_FIELDS(DbIOFMPParams)

DbIOFMPParams::DbIOFMPParams(const DbIOFMPParams& other)
    : UtObject(other), m_ComponentName(other.m_ComponentName), m_TypeId(other.m_TypeId) {
  SetParams(other.m_Params);
}

DbIOFMPParams& DbIOFMPParams::operator=(const DbIOFMPParams& other) {
  if (this == &other) return *this;
  m_ComponentName = other.m_ComponentName;
  m_TypeId = other.m_TypeId;
  SetParams(other.m_Params);
  return *this;
}

void DbIOFMPParams::SetParams(const UtIOFAttribMap& params) {
  if (&params == &m_Params) return;
  std::vector<CString> keys;
  for (const auto& entry : m_Params) keys.push_back(entry.first);
  for (const CString& key : keys) m_Params.RemoveAttribute(key);  // destroys the items
  // Through the archive form, which every item class has: the map's own copy refuses
  // 64-bit items.
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  const_cast<UtIOFAttribMap&>(params).Serialize(out);  // storing does not change the map
  Quarp::UtArchive in(Quarp::UtArchive::Load, out.GetBytes());
  m_Params.Serialize(in);
}

}  // namespace IOF
