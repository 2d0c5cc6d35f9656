#include "DbMgrTable.h"

#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>

#include <string>

namespace Quarp {

DbMgr::DbMgr() : m_table(std::make_unique<Table>()) { SyncLookup(); }
DbMgr::DbMgr(bool /*undo*/, DbCeo* /*ceo*/, bool /*temporary*/) : DbMgr() {}

DbMgr::~DbMgr() { Clear(); }

void DbMgr::Dispose(DbBase* ent) noexcept {
  ent->m_id = 0;
  if (ent->Unreferenced()) delete ent;  // otherwise the pointers that refer to it own it now
}

void DbMgr::Clear() {
  Table* old = m_table.get();
  old->ForEach([](std::uint32_t, DbBase* ent) { Dispose(ent); });
  m_table = std::make_unique<Table>();
  SyncLookup();
  m_count = 0;
}

DbErr DbMgr::Fail(DbErr err, std::string text) {
  m_lastError = std::move(text);
  return err;
}

void DbMgr::Adopt(DbBase* ent, std::uint32_t id) {
  ent->SetOwner(this);
  m_table->Append(id, ent);
  ent->m_id = id;
  SyncLookup();
  ++m_count;
}

DbBase* DbMgr::Find(DbId id) const noexcept { return m_table->Find(id.Value()); }

void DbMgr::SyncLookup() noexcept {
  m_lookupSlots = m_table->Slots();
  m_lookupCount = m_table->SlotCount();
  m_lookupSparse = !m_table->IsDense();
}

DbId DbMgr::Add(DbRootPtr& ptr) {
  DbBase* ent = ptr.GetEnt();
  if (!ent) {
    ptr.SetErr(DbErr::InvalidArgument);
    Fail(DbErr::InvalidArgument, "cannot add a null record");
    return DbId();
  }
  if (ent->m_id != 0) {
    ptr.SetErr(DbErr::InvalidArgument);
    Fail(DbErr::InvalidArgument, "the record is already held by a manager (id " + std::to_string(ent->m_id) + ")");
    return DbId();
  }
  if (m_readOnly) {
    ptr.SetErr(DbErr::ReadOnly);
    Fail(DbErr::ReadOnly, "the manager was opened read-only");
    return DbId();
  }
  if (m_nextId == 0xFFFFFFFFu) {
    ptr.SetErr(DbErr::InvalidArgument);
    Fail(DbErr::InvalidArgument, "the manager holds the largest number of records it can");
    return DbId();
  }
  const std::uint32_t id = m_nextId++;
  Adopt(ent, id);
  ptr.SetDbMgr(this);
  ptr.SetErr(DbErr::Ok);
  m_modified = true;
  m_lastError.clear();
  ent->InitEntity();
  return DbId(id);
}

bool DbMgr::Get(DbRootPtr& ptr, DbId id, unsigned /*flags*/) const {
  DbBase* ent = Find(id);
  if (!ent || !ptr.Accepts(ent)) {
    ptr.Detach();
    ptr.SetErr(DbErr::NotFound);
    return false;
  }
  ptr.AttachEnt(ent, 0);
  ptr.SetDbMgr(const_cast<DbMgr*>(this));
  ptr.SetErr(DbErr::Ok);
  return true;
}

bool DbMgr::GetNext(DbRootPtr& ptr, DbId& id, unsigned /*flags*/) const {
  std::uint64_t at = id.Value();
  for (DbBase* ent = m_table->Next(at); ent; ent = m_table->Next(at)) {
    if (ptr.Accepts(ent)) {
      id = DbId(at);
      ptr.AttachEnt(ent, 0);
      ptr.SetDbMgr(const_cast<DbMgr*>(this));
      ptr.SetErr(DbErr::Ok);
      return true;
    }
  }
  ptr.Detach();
  ptr.SetErr(DbErr::NotFound);
  return false;
}

std::uint64_t DbMgr::GetType(DbId id) const {
  const DbBase* ent = Find(id);
  return ent ? ent->GetType() : 0;
}

bool DbMgr::Remove(DbId id) {
  if (m_readOnly) {
    Fail(DbErr::ReadOnly, "the manager was opened read-only");
    return false;
  }
  DbBase* ent = m_table->Take(id.Value());
  if (!ent) return false;
  --m_count;
  m_modified = true;
  Dispose(ent);
  return true;
}

DbId DbMgr::CopyEntity(DbId id, DbMgr& target, UtIdXRef* xref) {
  const DbBase* ent = Find(id);
  if (!ent) return DbId();
  DbErr err = DbErr::Ok;
  const DbBase* copy = ent->Clone(DbCloneMode::Normal, &target, xref, err);
  return copy ? copy->GetId() : DbId();
}

void DbMgr::FixIds(UtIdXRef* xref) {
  m_table->ForEach([xref](std::uint32_t, DbBase* ent) { ent->FixIds(xref); });
}

}  // namespace Quarp
