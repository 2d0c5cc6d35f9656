// UtMask: a bit set indexed by type index (see UtTypeMgr).
#pragma once

#include <cstdint>
#include <vector>

namespace Quarp {

class UtMask {
 public:
  UtMask() = default;

  void Copy(const UtMask& other) { m_bits = other.m_bits; }

  // False for a negative index or one beyond the set's size.
  bool IsSet(int index) const noexcept {
    if (index < 0) return false;
    const auto word = static_cast<std::size_t>(index) / 64;
    return word < m_bits.size() && ((m_bits[word] >> (index % 64)) & 1u) != 0;
  }
  void Set(int index);
  void Clear(int index) noexcept;
  bool IsEmpty() const noexcept;
  // Number of bits set.
  int Count() const noexcept;

  UtMask& operator|=(const UtMask& other);
  friend bool operator==(const UtMask& a, const UtMask& b) noexcept;

 private:
  std::vector<std::uint64_t> m_bits;
};

}  // namespace Quarp
