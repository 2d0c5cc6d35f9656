// DbBase: the framework's record.
//
// A record is created on the heap, owned by the typed pointers that refer to it until a
// DbMgr takes it over (DbMgr::Add), and from then on by that manager. Pointers count
// their references, so a record that leaves its manager (DbMgr::Remove, or the manager's
// destruction) while pointers still refer to it stays valid until the last pointer lets
// go. Copying a record copies its data, never its identity (manager, id).
#pragma once

#include <quarp/DbCloneMode.h>
#include <quarp/DbErr.h>
#include <quarp/DbId.h>
#include <quarp/UtMask.h>
#include <quarp/UtObject.h>
#include <quarp/UtString.h>

#include <cstdint>
#include <new>

namespace Quarp {

class DbMgr;
class DbRootPtr;

class DbBase : public UtObject {
 public:
  ~DbBase() override = default;

  // Identity: the record's id in its manager (null before DbMgr::Add) and the manager.
  DbId GetId() const noexcept { return DbId(m_id); }
  DbMgr* GetDbMgr() const noexcept { return m_id != 0 ? Owner() : nullptr; }

  // The framework part of a record carries no data of its own.
  void Serialize(UtArchive& ar) override;

  // Type answers. The framework root has no type code of its own.
  virtual const UtString& GetClass() const;
  virtual std::uint64_t GetType() const { return 0; }
  virtual int GetTypeIdx() const { return -1; }
  virtual bool ContainsType(const UtMask& mask, bool withBases) const;
  virtual bool ContainsType(std::uint64_t code) const;
  // Depth below the framework root: UtObject 0, DbBase 1.
  virtual int GetSubclassLevel(int n) const { return n + 1; }

  // Makes a copy of this record in `mgr`; the framework root cannot be cloned and
  // reports AttachFailed.
  virtual DbBase* Clone(DbCloneMode mode, DbMgr* mgr, UtIdXRef* xref, DbErr& err) const;
  // Copies the data of `source` into this record (the framework part has none).
  virtual void Copy(const DbBase& source, DbCloneMode mode, UtIdXRef* xref);

  // Hooks the framework calls; records may override them.
  virtual void InitEntity() {}                // after a record is added to a manager
  virtual void FixIds(UtIdXRef* /*xref*/) {}  // after a group of records was cloned
  virtual void LoadPostProcess() {}           // after a whole file was loaded
  // The record's display name: its class name unless a record says otherwise.
  virtual UtString GetName() const { return GetClass(); }
  // Marks the record's manager as modified.
  void NotifyDirty(bool dirty = true, bool notify = true);

  // Allocation. Records are allocated one by one (with a word in front of them for their
  // manager), except those DbMgr::Read builds, which come in bulk from an arena of that
  // load; delete returns either kind to where it came from. A record class must not
  // need an alignment above 8.
  static void* operator new(std::size_t size);
  static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
  void operator delete(DbBase* p, std::destroying_delete_t) noexcept;
  // For a constructor that throws.
  static void operator delete(void* p) noexcept;
  static void operator delete(void* p, const std::nothrow_t&) noexcept;

  // Memory for what a record keeps beside it (a list's items), while DbMgr::Read builds
  // records: a block of the load's arena, faulted in with the records; null outside a
  // load (and in the sanitizer build). The block keeps the arena until ReleaseLoadBlock.
  static void* AllocateLoadBlock(std::size_t size) noexcept;
  static void ReleaseLoadBlock(void* block) noexcept;

 protected:
  DbBase() noexcept = default;
  // Identity is not copied: a copy belongs to no manager until it is added.
  DbBase(const DbBase& /*other*/) noexcept : UtObject() {}
  DbBase& operator=(const DbBase& /*other*/) noexcept { return *this; }

 private:
  friend class DbMgr;
  friend class DbRootPtr;

  // Flags kept in m_refs.
  static constexpr std::uint32_t kFromArena = 1u << 31;  // allocated from a load's arena
  static constexpr std::uint32_t kForeign = 1u << 30;    // from an arena, now in another manager
  static constexpr std::uint32_t kFlags = kFromArena | kForeign;
  void AddRef() noexcept { ++m_refs; }
  // Drops one pointer's reference; true when none is left.
  bool DropRef() noexcept { return (--m_refs & ~kFlags) == 0; }
  bool Unreferenced() const noexcept { return (m_refs & ~kFlags) == 0; }

  // The manager of a record in one. A record does not keep it (millions of records, one
  // manager): one allocated on its own has it in a word just before the record, one
  // from a load's arena has it from its arena (see RecordArena.h).
  DbMgr* Owner() const noexcept;
  // Makes `mgr` the record's manager; the caller sets the id.
  void SetOwner(DbMgr* mgr);

  std::uint32_t m_id = 0;    // ids are 32-bit within a manager (4 billion records); 0: in none
  std::uint32_t m_refs = 0;  // pointers referring to this record, and the flags
};

}  // namespace Quarp
