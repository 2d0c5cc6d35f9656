// Cloning support: the clone mode and the id cross-reference filled while cloning.
#pragma once

#include <quarp/DbId.h>

#include <unordered_map>

namespace Quarp {

// Passed through Copy and Clone unchanged; record classes do not branch on it.
enum class DbCloneMode : int {
  Normal = 0,
  Deep = 1,
};

// Old id -> new id, filled by Clone when records are cloned into another manager.
class UtIdXRef {
 public:
  void Add(DbId from, DbId to) { m_map[from] = to; }
  // The new id of `from`, or the null id when it was not cloned.
  DbId Find(DbId from) const {
    const auto it = m_map.find(from);
    return it == m_map.end() ? DbId() : it->second;
  }
  std::size_t GetCount() const noexcept { return m_map.size(); }
  void RemoveAll() noexcept { m_map.clear(); }

 private:
  std::unordered_map<DbId, DbId> m_map;
};

}  // namespace Quarp
