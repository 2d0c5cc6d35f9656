// The arena that the records of one file load are allocated from (private to the
// framework).
//
// A load builds hundreds of thousands of small records in one go. Allocating them one
// by one costs an allocator call and, for a fresh process, a page fault every few
// dozen records. Instead, while DbMgr::Read builds records, DbBase::operator new bumps
// them out of large chunks mapped fresh from the system. Each
// 2 MB chunk starts with a pointer to its arena, so a record finds its arena (and its
// manager) from its own address; the arena counts its live records and returns all its
// memory when the last one is deleted. Records deleted earlier leave their space unused
// until then.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Quarp {
class DbMgr;
}

namespace Quarp::Detail {

class RecordArena {
 public:
  static constexpr std::size_t kChunk = std::size_t{2} << 20;

  // A new arena for the records of a load of `fileBytes` into `owner`, held by its
  // creator (release it with Release). Records take about twice their bytes in the file;
  // when that is below an eighth of a chunk the arena gives nothing and the records are
  // allocated one by one: mapping, clearing and unmapping a chunk costs more than a
  // small file takes to load.
  RecordArena(DbMgr* owner, std::size_t fileBytes) noexcept : m_small(2 * fileBytes < kChunk / 8), m_owner(owner) {}
  RecordArena(const RecordArena&) = delete;
  RecordArena& operator=(const RecordArena&) = delete;

  // Memory for one record, or null when the size does not suit the arena or no memory
  // could be mapped (the caller then allocates on its own).
  void* Allocate(std::size_t size) noexcept;
  // Whether `p` is what the last Allocate returned.
  bool IsLast(const void* p) const noexcept { return p == m_last; }
  bool Contains(const void* p) const noexcept;

  // Drops one hold (a record's, or the creator's); the last one frees the arena.
  void Release() noexcept {
    if (m_live.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
  }
  // The manager the arena's records belong to while they are in one. A record added to
  // another manager later (after it was removed from this one) is a foreign one: the
  // arena keeps its manager aside, under a lock, as records of one arena may be in
  // managers used on different threads.
  DbMgr* Owner() const noexcept { return m_owner; }
  DbMgr* ForeignOwner(const void* record) const noexcept;
  void SetForeignOwner(const void* record, DbMgr* mgr);
  void ForgetForeign(const void* record) noexcept;

  // The arena a record allocated from an arena lives in.
  static RecordArena* Of(const void* p) noexcept {
    return reinterpret_cast<const ChunkHeader*>(reinterpret_cast<std::uintptr_t>(p) & ~(kChunk - 1))->arena;
  }

  // The arena records built on this thread come from, if any.
  static RecordArena* Current() noexcept { return t_current; }
  static void SetCurrent(RecordArena* arena) noexcept { t_current = arena; }

 private:
  struct ChunkHeader {
    RecordArena* arena;
  };
  static constexpr std::size_t kHeader = 64;  // keeps records off the header's cache line

  ~RecordArena();
  bool NextChunk() noexcept;

  std::atomic<std::size_t> m_live{1};  // live records, plus the creator's hold
  std::vector<std::pair<void*, std::size_t>> m_regions;
  char* m_next = nullptr;
  char* m_chunkEnd = nullptr;
  char* m_regionEnd = nullptr;
  std::size_t m_nextRegionSize = 2 * kChunk;
  bool m_small;
  void* m_last = nullptr;
  DbMgr* m_owner;
  mutable std::mutex m_foreignLock;
  std::unordered_map<const void*, DbMgr*> m_foreign;

  // Initial-exec: the framework is linked at start-up, and the lookup sits on the path
  // of every record allocation.
  static thread_local RecordArena* t_current __attribute__((tls_model("initial-exec")));
};

// Memory for buffers and tables: a small block from the allocator, a large one mapped
// fresh (on large pages from 2 MB up, where the system gives them), faulted in at once
// when `populate` says so: one call instead of a trap every 4 KB page, which costs far
// more where page faults are expensive. Null when none is left. Release it with
// UnmapPages and the same size.
void* MapPages(std::size_t size, bool populate = true) noexcept;
void UnmapPages(void* p, std::size_t size) noexcept;
// Faults in the whole pages inside [p, p + size) at once.
void PopulatePages(void* p, std::size_t size) noexcept;
// Gives `bytes` room for at least `needed` bytes, keeping its contents: at least twice
// its capacity, so that growing step by step copies each byte a bounded number of
// times. A large new buffer is faulted in at once before the contents are copied into
// it (see MapPages).
void GrowFaultedIn(std::vector<std::uint8_t>& bytes, std::size_t needed);

// Bytes from MapPages, released when it goes.
class MappedPages {
 public:
  MappedPages() noexcept = default;
  // `size` bytes (at least one), as MapPages gives them; empty when none could be had.
  explicit MappedPages(std::size_t size, bool populate = true) noexcept
      : m_data(static_cast<std::uint8_t*>(MapPages(size, populate))), m_size(m_data ? size : 0) {}
  MappedPages(MappedPages&& other) noexcept
      : m_data(std::exchange(other.m_data, nullptr)), m_size(std::exchange(other.m_size, 0)) {}
  MappedPages& operator=(MappedPages&& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    return *this;
  }
  ~MappedPages() {
    if (m_data) UnmapPages(m_data, m_size);
  }

  std::uint8_t* Data() const noexcept { return m_data; }
  std::size_t Size() const noexcept { return m_size; }

 private:
  std::uint8_t* m_data = nullptr;
  std::size_t m_size = 0;
};

}  // namespace Quarp::Detail
