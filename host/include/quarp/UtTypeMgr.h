// UtTypeMgr: the registry of record type codes.
//
// Each 64-bit type code is registered once with its name and gets a dense index from 0;
// masks over those indices select record types. Registration happens while libraries
// load; afterwards the registry is only read.
#pragma once

#include <quarp/UtMask.h>
#include <quarp/UtString.h>

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Quarp {

class UtTypeMgr {
 public:
  // Registers `code` under `name` and returns its index; a code registered before keeps
  // its first index and name.
  int AddType(std::uint64_t code, const UtString& name);
  // The index of `code`, or -1 when it was never registered.
  int GetIndex(std::uint64_t code) const noexcept;
  // The registered name of `code`, or null.
  const UtString* GetName(std::uint64_t code) const noexcept;
  // Number of registered types.
  int GetCount() const noexcept { return static_cast<int>(m_types.size()); }

  // A mask holding the bits of the given codes, up to the first 0. Each code contributes
  // its own bit only; callers widen a selection with ContainsType(mask, true).
  template <class... More>
  UtMask GetMaskEx(std::uint64_t code, More... more) const {
    UtMask mask;
    const std::uint64_t codes[] = {code, static_cast<std::uint64_t>(more)..., 0};
    for (const std::uint64_t c : codes) {
      if (c == 0) break;
      const int index = GetIndex(c);
      if (index >= 0) mask.Set(index);
    }
    return mask;
  }

 private:
  struct Entry {
    std::uint64_t code;
    UtString name;
  };
  std::vector<Entry> m_types;
  std::unordered_map<std::uint64_t, int> m_index;
};

class DbTypeMgr : public UtTypeMgr {};

// The one type manager of the process.
DbTypeMgr& GetDbTypeMgr();

}  // namespace Quarp
