#include "RecordArena.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#include <sys/mman.h>

namespace Quarp::Detail {

thread_local RecordArena* RecordArena::t_current __attribute__((tls_model("initial-exec"))) = nullptr;

RecordArena::~RecordArena() {
  for (const auto& [base, size] : m_regions) ::munmap(base, size);
}

bool RecordArena::Contains(const void* p) const noexcept {
  const auto* c = static_cast<const char*>(p);
  return std::any_of(m_regions.begin(), m_regions.end(), [c](const auto& region) {
    const auto* base = static_cast<const char*>(region.first);
    return c >= base && c < base + region.second;
  });
}

DbMgr* RecordArena::ForeignOwner(const void* record) const noexcept {
  const std::lock_guard<std::mutex> lock(m_foreignLock);
  const auto it = m_foreign.find(record);
  return it != m_foreign.end() ? it->second : nullptr;
}

void RecordArena::SetForeignOwner(const void* record, DbMgr* mgr) {
  const std::lock_guard<std::mutex> lock(m_foreignLock);
  m_foreign[record] = mgr;
}

void RecordArena::ForgetForeign(const void* record) noexcept {
  const std::lock_guard<std::mutex> lock(m_foreignLock);
  m_foreign.erase(record);
}

namespace {

constexpr std::size_t kPage = 4096;
constexpr std::size_t kMapped = 64 * kPage;              // from here on, mapped
constexpr std::size_t kFaultedIn = 16 * kPage;           // from here on, a grown vector is faulted in at once
constexpr std::size_t kHugePage = std::size_t{2} << 20;  // the system's large page

// Maps `size` bytes aligned to a large page (more is mapped, both ends trimmed) and asks
// for large pages there: one page-table entry and one fault per 2 MB instead of 512.
// Where the system keeps them for such requests (transparent huge pages on "madvise")
// this is what makes building millions of records cheap: a load writes every byte it
// maps once, and with small pages half its time went to TLB misses. Null when nothing
// could be mapped.
void* MapHugeAligned(std::size_t size) noexcept {
  void* raw = ::mmap(nullptr, size + kHugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (raw == MAP_FAILED) return nullptr;
  const auto start = reinterpret_cast<std::uintptr_t>(raw);
  const std::uintptr_t aligned = (start + kHugePage - 1) & ~(kHugePage - 1);
  if (aligned > start) ::munmap(raw, aligned - start);
  const std::uintptr_t end = (aligned + size + kPage - 1) & ~(kPage - 1);
  const std::uintptr_t rawEnd = start + size + kHugePage;
  if (rawEnd > end) ::munmap(reinterpret_cast<void*>(end), rawEnd - end);
  ::madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);
  return reinterpret_cast<void*>(aligned);
}

}  // namespace

bool RecordArena::NextChunk() noexcept {
  static_assert(kChunk % kHugePage == 0);
  char* chunk = m_chunkEnd;
  if (!chunk || chunk >= m_regionEnd) {
    // A new region, aligned to the chunk size.
    const std::size_t size = m_nextRegionSize;
    void* region = MapHugeAligned(size);
    if (!region) return false;
    try {
      m_regions.emplace_back(region, size);
    } catch (const std::bad_alloc&) {
      ::munmap(region, size);
      return false;
    }
    chunk = static_cast<char*>(region);
    m_regionEnd = chunk + size;
    m_nextRegionSize = std::min<std::size_t>(m_nextRegionSize * 2, 32 * kChunk);
  }
  // Fault the chunk in at once: one call instead of a trap every page. Older kernels
  // refuse the advice; the pages then come in one by one as usual.
  PopulatePages(chunk, kChunk);
  new (chunk) ChunkHeader{this};
  m_next = chunk + kHeader;
  m_chunkEnd = chunk + kChunk;
  return true;
}

#if defined(__SANITIZE_ADDRESS__)
#define IOF_ARENA_OFF 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define IOF_ARENA_OFF 1
#endif
#endif

void* RecordArena::Allocate(std::size_t size) noexcept {
#ifdef IOF_ARENA_OFF
  // Under AddressSanitizer every record is allocated on its own, so that the sanitizer
  // sees each record's lifetime.
  (void)size;
  return nullptr;
#endif
  size = (size + 7) & ~std::size_t{7};
  if (m_small || size > kChunk / 16) return nullptr;
  if (!m_next || static_cast<std::size_t>(m_chunkEnd - m_next) < size) {
    if (!NextChunk()) return nullptr;
  }
  void* p = m_next;
  m_next += size;
  m_live.fetch_add(1, std::memory_order_relaxed);
  m_last = p;
  return p;
}

void* MapPages(std::size_t size, bool populate) noexcept {
  if (size < kMapped) return std::malloc(size > 0 ? size : 1);
  void* p = nullptr;
  if (size >= kHugePage) {
    p = MapHugeAligned(size);
  } else {
    p = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (p == MAP_FAILED) p = nullptr;
  }
  if (p && populate) PopulatePages(p, size);
  return p;
}

void UnmapPages(void* p, std::size_t size) noexcept {
  if (size < kMapped) {
    std::free(p);
  } else if (p) {
    ::munmap(p, size);
  }
}

void PopulatePages(void* p, std::size_t size) noexcept {
  const auto begin = (reinterpret_cast<std::uintptr_t>(p) + kPage - 1) & ~(kPage - 1);
  const auto end = (reinterpret_cast<std::uintptr_t>(p) + size) & ~(kPage - 1);
  if (end > begin) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_POPULATE_WRITE);
}

void GrowFaultedIn(std::vector<std::uint8_t>& bytes, std::size_t needed) {
  if (needed <= bytes.capacity()) return;
  const std::size_t capacity = std::max(needed, 2 * bytes.capacity());
  if (capacity < kFaultedIn) {
    bytes.reserve(capacity);
    return;
  }
  std::vector<std::uint8_t> fresh;
  fresh.reserve(capacity);
  PopulatePages(fresh.data(), capacity);
  fresh.assign(bytes.begin(), bytes.end());
  bytes.swap(fresh);
}

}  // namespace Quarp::Detail
