// DbMgr: the record database.
//
// A manager holds records under dense ids from 1 (Get is one array index), owns them,
// and writes and reads them as one file. Records refer to each other by id only.
//
//   Quarp::DbMgr mgr;
//   auto line = IOF::DbIOFNciLinear::Create();
//   Quarp::DbId id = mgr.Add(line);          // the manager owns the record now
//   Quarp::DbBaseCPtr any(nullptr);
//   bool ok = mgr.Get(any, id, 0);
//   Quarp::DbErr e = mgr.Write(Quarp::UtString(L"job.iof"));
//
// Files: Write is atomic (a temporary file beside the target, flushed, then renamed
// over it): a failed or interrupted write leaves any existing file as it was. Read
// checks the magic number and the format version, then builds the records into a new
// table as the bytes come in, and replaces the manager's contents only when everything
// loaded and the checksum matched; a damaged file is reported as damaged (checksum
// mismatch), whatever else it broke. Bytes in memory and files of up to 512 KB are
// checked against their checksum before a record is built, so refusing them costs one
// hash. Any failure leaves the manager unchanged, returns a DbErr and
// puts a sentence for a person in GetLastErrorText(). One failure is an exception
// instead: a record whose stored class version is newer than this library knows makes
// Read throw UtArchiveException with cause 2 (badSchema), naming the record. The format
// is described byte by byte in docs/FORMAT.md.
#pragma once

#include <quarp/DbBase.h>
#include <quarp/DbErr.h>
#include <quarp/DbId.h>
#include <quarp/DbPtr.h>
#include <quarp/UtString.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Quarp {

namespace Detail {
class LoadInput;
}
class DbCeo;  // the host's undo/transaction controller; not part of this framework

class DbMgr {
 public:
  DbMgr();
  // Kept for source compatibility with host code that passes an undo flag and a
  // controller: this framework has no undo machinery, the arguments have no effect.
  DbMgr(bool undo, DbCeo* ceo, bool temporary);
  DbMgr(const DbMgr&) = delete;
  DbMgr& operator=(const DbMgr&) = delete;
  // Deletes the records; a record that pointers still refer to is handed over to them.
  virtual ~DbMgr();

  // Takes over the record that `ptr` refers to, gives it the next id and returns it.
  // Returns the null id (and sets the pointer's error) when the pointer is null, the
  // record is already in a manager, or the manager is read-only.
  DbId Add(DbRootPtr& ptr);

  // Attaches `ptr` to the record `id`. False (pointer detached, error NotFound) when
  // there is no such record or it is not of the pointer's class. Flags are reserved.
  bool Get(DbRootPtr& ptr, DbId id, unsigned flags = 0) const;

  // The next record after `id` (id 0: the first) that the pointer accepts; updates `id`.
  bool GetNext(DbRootPtr& ptr, DbId& id, unsigned flags = 0) const;

  // The record's type code without attaching a pointer; 0 for an unknown id.
  std::uint64_t GetType(DbId id) const;

  // The record `id`, or null, without a pointer: for walks that look up many ids and
  // keep none (the stream iterator). The record stays the manager's; the result is
  // valid until the record is removed or the manager cleared or read again.
  const DbBase* Lookup(DbId id) const noexcept {
    const std::uint64_t v = id.Value();
    if (v < m_lookupCount) return m_lookupSlots[v];
    return m_lookupSparse ? Find(id) : nullptr;
  }

  // Deletes a record (or hands it over to the pointers that still refer to it). Its id
  // then dangles: it is never given out again.
  bool Remove(DbId id);

  // Deletes every record.
  void Clear();

  std::size_t GetCount() const noexcept { return m_count; }
  // The id the next Add will give out.
  DbId GetNextId() const noexcept { return DbId(m_nextId); }

  bool IsReadOnly() const noexcept { return m_readOnly; }
  bool IsModified() const noexcept { return m_modified; }
  void SetModified(bool modified) noexcept { m_modified = modified; }

  // Files. `readOnly`: after a successful load, Add and Remove are refused until the next
  // Read (for post-processors and comparison tools that must not change the data).
  DbErr Write(const UtString& path);
  DbErr Read(const UtString& path, bool readOnly = false);
  // The same format in memory.
  DbErr WriteToMemory(std::vector<std::uint8_t>& out);
  DbErr ReadFromMemory(std::span<const std::uint8_t> bytes, bool readOnly = false);

  // What went wrong in the last failed Add, Write or Read, for a person; empty after
  // success.
  const std::string& GetLastErrorText() const noexcept { return m_lastError; }

  // Copies a record into `target` through the record's Clone.
  DbId CopyEntity(DbId id, DbMgr& target, UtIdXRef* xref = nullptr);
  // Calls FixIds on every record.
  void FixIds(UtIdXRef* xref);

  virtual const char* GetObjectClassName() const { return "DbMgr"; }

 private:
  struct Table;
  DbErr Fail(DbErr err, std::string text);
  // Loads a whole file from `input`: the one implementation behind Read and ReadFromMemory.
  DbErr Load(Detail::LoadInput& input, bool readOnly);
  void Adopt(DbBase* ent, std::uint32_t id);
  static void Dispose(DbBase* ent) noexcept;
  DbBase* Find(DbId id) const noexcept;
  // Points Lookup at the table's slots again; after every change of the table.
  void SyncLookup() noexcept;

  std::unique_ptr<Table> m_table;
  DbBase* const* m_lookupSlots = nullptr;  // the table's dense slots, for Lookup
  std::uint64_t m_lookupCount = 0;
  bool m_lookupSparse = false;  // a sparse table: Lookup asks Find
  std::size_t m_count = 0;
  std::uint32_t m_nextId = 1;
  bool m_readOnly = false;
  bool m_modified = false;
  std::string m_lastError;
};

}  // namespace Quarp
