#include <quarp/DbBase.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtArchive.h>
#include <zolt/Diagnostics.h>

#include "RecordArena.h"

namespace Quarp {

void DbBase::Serialize(UtArchive& /*ar*/) {}

const UtString& DbBase::GetClass() const {
  static const UtString name(L"DbBase");
  return name;
}

bool DbBase::ContainsType(const UtMask& /*mask*/, bool /*withBases*/) const { return false; }
bool DbBase::ContainsType(std::uint64_t /*code*/) const { return false; }

DbBase* DbBase::Clone(DbCloneMode /*mode*/, DbMgr* /*mgr*/, UtIdXRef* /*xref*/, DbErr& err) const {
  err = DbErr::AttachFailed;
  return nullptr;
}

void DbBase::Copy(const DbBase& /*source*/, DbCloneMode /*mode*/, UtIdXRef* /*xref*/) {}

void DbBase::NotifyDirty(bool dirty, bool /*notify*/) {
  if (DbMgr* mgr = GetDbMgr(); mgr && dirty) mgr->SetModified(true);
}

// --- the manager ---------------------------------------------------------------------

namespace {
// A record allocated on its own is preceded by a word that holds its manager.
constexpr std::size_t kOwnerWord = sizeof(DbMgr*);
DbMgr*& OwnerWord(const DbBase* ent) noexcept {
  return *reinterpret_cast<DbMgr**>(reinterpret_cast<char*>(const_cast<DbBase*>(ent)) - kOwnerWord);
}
void* WithOwnerWord(void* raw) noexcept {
  if (!raw) return nullptr;
  *static_cast<DbMgr**>(raw) = nullptr;
  return static_cast<char*>(raw) + kOwnerWord;
}
void* RawOf(void* p) noexcept { return static_cast<char*>(p) - kOwnerWord; }
}  // namespace

DbMgr* DbBase::Owner() const noexcept {
  if (!(m_refs & kFromArena)) return OwnerWord(this);
  const Detail::RecordArena* arena = Detail::RecordArena::Of(this);
  return (m_refs & kForeign) ? arena->ForeignOwner(this) : arena->Owner();
}

void DbBase::SetOwner(DbMgr* mgr) {
  if (!(m_refs & kFromArena)) {
    OwnerWord(this) = mgr;
    return;
  }
  Detail::RecordArena* arena = Detail::RecordArena::Of(this);
  if (mgr == arena->Owner()) {
    if (m_refs & kForeign) arena->ForgetForeign(this);
    m_refs &= ~kForeign;
    return;
  }
  arena->SetForeignOwner(this, mgr);
  m_refs |= kForeign;
}

// --- allocation --------------------------------------------------------------------

void* DbBase::operator new(std::size_t size) {
  if (Detail::RecordArena* arena = Detail::RecordArena::Current()) {
    if (void* p = arena->Allocate(size)) return p;
  }
  return WithOwnerWord(::operator new(size + kOwnerWord));
}

void* DbBase::operator new(std::size_t size, const std::nothrow_t&) noexcept {
  if (Detail::RecordArena* arena = Detail::RecordArena::Current()) {
    if (void* p = arena->Allocate(size)) return p;
  }
  return WithOwnerWord(::operator new(size + kOwnerWord, std::nothrow));
}

void DbBase::operator delete(DbBase* p, std::destroying_delete_t) noexcept {
  const std::uint32_t flags = p->m_refs & kFlags;
  p->~DbBase();
  if (flags & kFromArena) {
    Detail::RecordArena* arena = Detail::RecordArena::Of(p);
    if (flags & kForeign) arena->ForgetForeign(p);
    arena->Release();
  } else {
    ::operator delete(RawOf(p));
  }
}

void DbBase::operator delete(void* p) noexcept {
  Detail::RecordArena* arena = Detail::RecordArena::Current();
  if (arena && arena->Contains(p)) {
    arena->Release();
  } else {
    ::operator delete(RawOf(p));
  }
}

void DbBase::operator delete(void* p, const std::nothrow_t&) noexcept { DbBase::operator delete(p); }

void* DbBase::AllocateLoadBlock(std::size_t size) noexcept {
  Detail::RecordArena* arena = Detail::RecordArena::Current();
  return arena ? arena->Allocate(size) : nullptr;
}

void DbBase::ReleaseLoadBlock(void* block) noexcept { Detail::RecordArena::Of(block)->Release(); }

// --- pointers ----------------------------------------------------------------------

void DbRootPtr::Share(DbBase* ent) noexcept {
  if (ent) ent->AddRef();
  m_ent = ent;
}

void DbRootPtr::Release() noexcept {
  DbBase* ent = m_ent;
  m_ent = nullptr;
  if (ent && ent->DropRef() && ent->m_id == 0) delete ent;
}

DbRootPtr::DbRootPtr(const DbRootPtr& other) noexcept
    : m_mgr(other.m_mgr), m_typeCode(other.m_typeCode), m_err(other.m_err), m_const(other.m_const) {
  Share(other.m_ent);
}

DbRootPtr::DbRootPtr(DbRootPtr&& other) noexcept
    : m_ent(other.m_ent), m_mgr(other.m_mgr), m_typeCode(other.m_typeCode), m_err(other.m_err), m_const(other.m_const) {
  other.m_ent = nullptr;
}

DbRootPtr& DbRootPtr::operator=(const DbRootPtr& other) noexcept {
  if (this != &other) {
    DbBase* keep = other.m_ent;
    if (keep && !Accepts(keep)) {
      Release();
      m_err = DbErr::NotFound;
      return *this;
    }
    if (keep) keep->AddRef();  // before releasing, in case both refer to the same record
    Release();
    m_ent = keep;
    m_mgr = other.m_mgr;
    m_err = other.m_err;
  }
  return *this;
}

DbRootPtr& DbRootPtr::operator=(DbRootPtr&& other) noexcept {
  if (this != &other) {
    Release();
    if (other.m_ent && !Accepts(other.m_ent)) {
      other.Release();
      m_err = DbErr::NotFound;
      return *this;
    }
    m_ent = other.m_ent;
    other.m_ent = nullptr;
    m_mgr = other.m_mgr;
    m_err = other.m_err;
  }
  return *this;
}

bool DbRootPtr::AttachEnt(DbBase* ent, int /*mode*/) {
  if (ent == m_ent) return ent != nullptr;
  if (ent && !Accepts(ent)) {
    Release();
    m_err = DbErr::NotFound;
    return false;
  }
  if (ent) ent->AddRef();
  Release();
  m_ent = ent;
  return ent != nullptr;
}

bool DbRootPtr::AttachSp(const DbRootPtr& other) { return AttachEnt(other.m_ent, 0); }

void DbRootPtr::Destroy() {
  if (DbMgr* mgr = m_ent ? m_ent->GetDbMgr() : nullptr) mgr->Remove(m_ent->GetId());
  Release();
}

DbMgr* DbRootPtr::GetDbMgr() const noexcept {
  DbMgr* mgr = m_ent ? m_ent->GetDbMgr() : nullptr;
  return mgr ? mgr : m_mgr;
}

void DbRootPtr::NullAccess() const {
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("quarp/DbPtr", 0, "Quarp::DbRootPtr::NullAccess",
                                                         "null record pointer dereferenced");
  throw DbNullAccess();
}

}  // namespace Quarp
