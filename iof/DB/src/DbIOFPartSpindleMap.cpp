#include <iof/DbIOFPartSpindle.h>
#include <iof/DbIOFPartSpindleMap.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD_TYPE(DbIOFPartSpindleMap)
IOF_IMPLEMENT_RECORD_CREATION(DbIOFPartSpindleMap)

template <class F, class... R>
void DbIOFPartSpindleMap::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Map", r.m_Map...);
}

// Stored as the field list says; loaded by hand, because a load keeps what the map holds
// and the first entry of a number wins.
void DbIOFPartSpindleMap::Serialize(Quarp::UtArchive& ar) {
  Quarp::UtSerializeVersion(ar, kVersion);  // intended: the stored version is not checked
  DbIOFBase::Serialize(ar);
  if (ar.IsStoring()) return Fields(Detail::StoreField{ar}, *this);
  const std::size_t count = Detail::LoadCount(ar, 12);
  for (std::size_t i = 0; i < count; ++i) {
    std::int32_t number = 0;
    Quarp::DbId id;
    ar >> number >> id;
    m_Map.emplace(number, id);  // a number already present keeps its id
  }
}

void DbIOFPartSpindleMap::Copy(const Quarp::DbBase& source, Quarp::DbCloneMode mode, Quarp::UtIdXRef* xref) {
  Detail::RecordOps<DbIOFPartSpindleMap>::Copy(*this, source, mode, xref);
}

void DbIOFPartSpindleMap::VisitFields(FieldVisitor& visitor) const {
  Detail::RecordOps<DbIOFPartSpindleMap>::Visit(*this, visitor);
}

Quarp::DbId DbIOFPartSpindleMap::Add(int number) {
  if (const auto found = m_Map.find(number); found != m_Map.end()) return found->second;
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return {};
  auto spindle = DbIOFPartSpindle::Create();
  if (!spindle) return {};
  spindle->SetIOFName(L"Part Spindle");
  const Quarp::DbId id = mgr->Add(spindle);
  if (id.IsNull()) return id;
  m_Map.emplace(number, id);
  spindle->Initialize();
  return id;
}

Quarp::DbId DbIOFPartSpindleMap::GetSpindleId(int number) const {
  const auto found = m_Map.find(number);
  return found == m_Map.end() ? Quarp::DbId() : found->second;
}

CString DbIOFPartSpindleMap::ToIOFString() const {
  return CString::Formatted(L"DbIOFPartSpindleMap Size: %d", static_cast<int>(m_Map.size()));
}

}  // namespace IOF
