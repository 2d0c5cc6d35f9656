// UtArrayEx<T>: the framework's growable array with the classic array interface.
//
// The growth step is kept with the array (it is part of the archive form of byte
// arrays); storage grows geometrically whatever the step says.
#pragma once

#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>

#include <cstdint>
#include <type_traits>
#include <vector>

namespace Quarp {

template <class T>
class UtArrayEx {
 public:
  explicit UtArrayEx(std::int64_t growBy = 10) noexcept : m_growBy(growBy) {}

  std::int64_t GetSize() const noexcept { return static_cast<std::int64_t>(m_data.size()); }
  std::int64_t GetCount() const noexcept { return GetSize(); }
  bool IsEmpty() const noexcept { return m_data.empty(); }
  std::int64_t GetGrowBy() const noexcept { return m_growBy; }

  // Resizes to n elements (new ones value-initialised); a negative growBy keeps the step.
  void SetSize(std::int64_t n, std::int64_t growBy = -1) {
    if (growBy >= 0) m_growBy = growBy;
    m_data.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
  }
  std::int64_t Add(const T& v) {
    m_data.push_back(v);
    return GetSize() - 1;
  }
  void RemoveAll() noexcept { m_data.clear(); }
  void RemoveAt(std::int64_t index, std::int64_t count = 1) {
    if (index < 0 || count <= 0 || index >= GetSize()) return;
    const auto last = std::min(GetSize(), index + count);
    m_data.erase(m_data.begin() + index, m_data.begin() + last);
  }

  T& operator[](std::int64_t i) { return m_data[static_cast<std::size_t>(i)]; }
  const T& operator[](std::int64_t i) const { return m_data[static_cast<std::size_t>(i)]; }
  T* GetData() noexcept { return m_data.data(); }
  const T* GetData() const noexcept { return m_data.data(); }
  auto begin() noexcept { return m_data.begin(); }
  auto end() noexcept { return m_data.end(); }
  auto begin() const noexcept { return m_data.begin(); }
  auto end() const noexcept { return m_data.end(); }

  friend bool operator==(const UtArrayEx& a, const UtArrayEx& b) { return a.m_data == b.m_data; }

  // Archive form: version (0), element count (8 bytes), growth step (8 bytes), then
  // each element raw. Loading takes the stored count and growth step.
  void Serialize(UtArchive& ar) requires std::is_arithmetic_v<T> {
    const unsigned version = UtSerializeVersion(ar, 0);
    if (ar.IsStoring()) {
      ar << static_cast<std::int64_t>(m_data.size()) << m_growBy;
      if (!m_data.empty()) ar.WriteBytes(m_data.data(), m_data.size() * sizeof(T));
      return;
    }
    UtCheckVersion(version, 0, "UtArrayEx");
    std::int64_t count = 0;
    ar >> count;
    ar >> m_growBy;
    if (count < 0) throw UtArchiveException(UtArchiveException::tooLarge, "negative array size in archive");
    ar.CheckCount(static_cast<std::uint64_t>(count), sizeof(T));
    m_data.resize(static_cast<std::size_t>(count));
    if (count > 0) ar.ReadBytes(m_data.data(), m_data.size() * sizeof(T));
  }

 private:
  std::vector<T> m_data;
  std::int64_t m_growBy;
};

}  // namespace Quarp
