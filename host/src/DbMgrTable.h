// The id -> record table of a DbMgr (private to the framework).
//
// Dense mode: a vector indexed by id, so Get is one index. A table is dense unless a
// file's ids are so sparse that a vector would cost far more than its records; then it
// keeps (id, record) pairs sorted by id and looks ids up by binary search.
#pragma once

#include "RecordArena.h"

#include <quarp/DbBase.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>
#include <vector>

namespace Quarp::Detail {

// The dense slots of a table: an array of record pointers that grows by doubling. A
// large one is mapped from the system, on large pages where it gives them (see
// MapPages): a table of millions of ids is looked up at random by every walk.
class SlotArray {
 public:
  SlotArray() = default;
  SlotArray(const SlotArray&) = delete;
  SlotArray& operator=(const SlotArray&) = delete;

  DbBase** data() noexcept { return Slots(); }
  DbBase* const* data() const noexcept { return Slots(); }
  std::size_t size() const noexcept { return m_size; }
  DbBase*& operator[](std::size_t i) noexcept { return Slots()[i]; }
  DbBase* operator[](std::size_t i) const noexcept { return Slots()[i]; }

  // Room for n slots; `populate` faults the memory in at once (a load fills it all).
  void Reserve(std::size_t n, bool populate) {
    if (n <= Capacity()) return;
    MappedPages pages(n * sizeof(DbBase*), populate);
    if (pages.Size() == 0) throw std::bad_alloc();
    if (m_size > 0) std::memcpy(pages.Data(), m_pages.Data(), m_size * sizeof(DbBase*));
    m_pages = std::move(pages);
  }
  void PushBack(DbBase* ent) {
    if (m_size == Capacity()) Reserve(m_size < 16 ? 16 : 2 * m_size, false);
    Slots()[m_size++] = ent;
  }
  // Grows to n slots, the new ones null.
  void Resize(std::size_t n) {
    if (n <= m_size) return;
    if (n > Capacity()) Reserve(n > 2 * Capacity() ? n : 2 * Capacity(), false);
    std::memset(Slots() + m_size, 0, (n - m_size) * sizeof(DbBase*));
    m_size = n;
  }

 private:
  DbBase** Slots() const noexcept { return reinterpret_cast<DbBase**>(m_pages.Data()); }
  std::size_t Capacity() const noexcept { return m_pages.Size() / sizeof(DbBase*); }

  MappedPages m_pages;
  std::size_t m_size = 0;
};

class RecordTable {
 public:
  // Whether ids below `nextId` for `count` records are best kept dense.
  static bool DenseFits(std::uint64_t nextId, std::uint64_t count) noexcept { return nextId <= 2 * count + (1u << 20); }

  explicit RecordTable(bool dense = true) : m_dense(dense) {
    if (m_dense) m_slots.PushBack(nullptr);  // id 0 is the null id
  }

  // Prepares for `count` records with ids below `nextId`, with the memory faulted in at
  // once.
  void Reserve(std::uint64_t nextId, std::uint64_t count) {
    if (m_dense) {
      m_slots.Reserve(static_cast<std::size_t>(nextId), true);
    } else {
      m_pairs.reserve(static_cast<std::size_t>(count));
      PopulatePages(m_pairs.data(), m_pairs.capacity() * sizeof(Pair));
    }
  }

  DbBase* Find(std::uint64_t id) const noexcept {
    if (m_dense) return id < m_slots.size() ? m_slots[id] : nullptr;
    const auto it = std::lower_bound(m_pairs.begin(), m_pairs.end(), id,
                                     [](const Pair& p, std::uint64_t v) { return p.first < v; });
    return it != m_pairs.end() && it->first == id ? it->second : nullptr;
  }

  // The dense slots, indexed by id (null and 0 when the table is sparse). Valid until
  // the next Append.
  DbBase* const* Slots() const noexcept { return m_dense ? m_slots.data() : nullptr; }
  std::size_t SlotCount() const noexcept { return m_dense ? m_slots.size() : 0; }
  bool IsDense() const noexcept { return m_dense; }

  // Stores `ent` under `id`, which is greater than every id stored so far.
  void Append(std::uint32_t id, DbBase* ent) {
    if (m_dense) {
      if (m_slots.size() == id) {
        m_slots.PushBack(ent);  // ids without holes: the common case
        return;
      }
      m_slots.Resize(static_cast<std::size_t>(id) + 1);
      m_slots[id] = ent;
    } else {
      m_pairs.emplace_back(id, ent);
    }
  }

  // Removes and returns the record under `id`.
  DbBase* Take(std::uint64_t id) noexcept {
    if (m_dense) {
      if (id >= m_slots.size()) return nullptr;
      return std::exchange(m_slots[id], nullptr);
    }
    const auto it = std::lower_bound(m_pairs.begin(), m_pairs.end(), id,
                                     [](const Pair& p, std::uint64_t v) { return p.first < v; });
    if (it == m_pairs.end() || it->first != id) return nullptr;
    return std::exchange(it->second, nullptr);
  }

  // The first record with an id above `id`, or null; sets `id` to its id.
  DbBase* Next(std::uint64_t& id) const noexcept {
    if (m_dense) {
      for (std::uint64_t i = id + 1; i < m_slots.size(); ++i) {
        if (m_slots[i]) {
          id = i;
          return m_slots[i];
        }
      }
      return nullptr;
    }
    auto it = std::upper_bound(m_pairs.begin(), m_pairs.end(), id,
                               [](std::uint64_t v, const Pair& p) { return v < p.first; });
    for (; it != m_pairs.end(); ++it) {
      if (it->second) {
        id = it->first;
        return it->second;
      }
    }
    return nullptr;
  }

  // Calls f(id, record) for every record in id order.
  template <class F>
  void ForEach(F&& f) const {
    if (m_dense) {
      for (std::size_t i = 1; i < m_slots.size(); ++i) {
        if (m_slots[i]) f(static_cast<std::uint32_t>(i), m_slots[i]);
      }
    } else {
      for (const Pair& p : m_pairs) {
        if (p.second) f(p.first, p.second);
      }
    }
  }

 private:
  using Pair = std::pair<std::uint32_t, DbBase*>;
  bool m_dense;
  SlotArray m_slots;
  std::vector<Pair> m_pairs;
};

}  // namespace Quarp::Detail

#include <quarp/DbMgr.h>

struct Quarp::DbMgr::Table : Quarp::Detail::RecordTable {
  using RecordTable::RecordTable;
};
