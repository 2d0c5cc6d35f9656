// UtSArrayEx<T>: the framework's compact growable array, used for id lists (a record's
// sub-lists, a document's streams, a stream's registers).
//
// The object is two words: records carry several of these and files hold millions of
// records, so an empty array allocates nothing. The growth step given to the
// constructor is accepted for source compatibility; storage grows geometrically.
//
// Archive form of UtSArrayEx<DbId> (compact, because most arrays are empty or short):
// the element count as a compact integer, then each id as a compact integer.
#pragma once

#include <quarp/DbId.h>
#include <quarp/UtArchive.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <new>
#include <type_traits>

namespace Quarp {

template <class T>
class UtSArrayEx {
  static_assert(std::is_trivially_copyable_v<T> && alignof(T) <= 8);

 public:
  explicit UtSArrayEx(int /*growBy*/ = 10) noexcept {}
  UtSArrayEx(std::initializer_list<T> items) {
    for (const T& v : items) Add(v);
  }
  UtSArrayEx(const UtSArrayEx& other) { Assign(other.GetData(), other.GetSize()); }
  UtSArrayEx(UtSArrayEx&& other) noexcept : m_block(other.m_block) { other.m_block = nullptr; }
  UtSArrayEx& operator=(const UtSArrayEx& other) {
    if (this != &other) Assign(other.GetData(), other.GetSize());
    return *this;
  }
  UtSArrayEx& operator=(UtSArrayEx&& other) noexcept {
    if (this != &other) {
      ::operator delete(m_block);
      m_block = other.m_block;
      other.m_block = nullptr;
    }
    return *this;
  }
  virtual ~UtSArrayEx() { ::operator delete(m_block); }

  int GetSize() const noexcept { return m_block ? static_cast<int>(m_block->size) : 0; }
  int GetCount() const noexcept { return GetSize(); }
  bool IsEmpty() const noexcept { return GetSize() == 0; }

  // Resizes to n elements; new elements are value-initialised.
  void SetSize(int n) {
    if (n <= 0) {
      RemoveAll();
      return;
    }
    Reserve(n);
    T* d = Data();
    for (int i = GetSize(); i < n; ++i) d[i] = T();
    m_block->size = static_cast<std::uint32_t>(n);
  }
  // Appends and returns the new element's index.
  int Add(const T& v) {
    const int n = GetSize();
    if (!m_block || m_block->size == m_block->capacity) {
      const T copy = v;  // v may live in this array
      Reserve(n < 4 ? 4 : n * 2);
      Data()[n] = copy;
    } else {
      Data()[n] = v;
    }
    m_block->size = static_cast<std::uint32_t>(n + 1);
    return n;
  }
  void InsertAt(int index, const T& v) {
    const int n = GetSize();
    index = std::clamp(index, 0, n);
    const T copy = v;
    Add(copy);
    T* d = Data();
    std::memmove(d + index + 1, d + index, static_cast<std::size_t>(n - index) * sizeof(T));
    d[index] = copy;
  }
  void RemoveAt(int index, int count = 1) {
    const int n = GetSize();
    if (index < 0 || index >= n || count <= 0) return;
    count = std::min(count, n - index);
    T* d = Data();
    std::memmove(d + index, d + index + count, static_cast<std::size_t>(n - index - count) * sizeof(T));
    m_block->size = static_cast<std::uint32_t>(n - count);
  }
  void RemoveAll() noexcept {
    ::operator delete(m_block);
    m_block = nullptr;
  }
  // Index of the first element equal to v, or -1.
  int Find(const T& v) const noexcept {
    const T* d = GetData();
    for (int i = 0, n = GetSize(); i < n; ++i) {
      if (d[i] == v) return i;
    }
    return -1;
  }

  T& operator[](int i) noexcept { return Data()[i]; }
  const T& operator[](int i) const noexcept { return GetData()[i]; }
  T GetAt(int i) const noexcept { return GetData()[i]; }
  T* GetData() noexcept { return m_block ? Data() : nullptr; }
  const T* GetData() const noexcept { return m_block ? reinterpret_cast<const T*>(m_block + 1) : nullptr; }
  T* begin() noexcept { return GetData(); }
  T* end() noexcept { return GetData() + GetSize(); }
  const T* begin() const noexcept { return GetData(); }
  const T* end() const noexcept { return GetData() + GetSize(); }

  friend bool operator==(const UtSArrayEx& a, const UtSArrayEx& b) noexcept {
    return a.GetSize() == b.GetSize() && std::equal(a.begin(), a.end(), b.begin());
  }

  virtual void Serialize(UtArchive& ar);

 private:
  struct alignas(8) Block {
    std::uint32_t size;
    std::uint32_t capacity;
  };
  T* Data() noexcept { return reinterpret_cast<T*>(m_block + 1); }
  void Reserve(int capacity) {
    if (m_block && static_cast<int>(m_block->capacity) >= capacity) return;
    auto* block = static_cast<Block*>(::operator new(sizeof(Block) + static_cast<std::size_t>(capacity) * sizeof(T)));
    block->size = m_block ? m_block->size : 0;
    block->capacity = static_cast<std::uint32_t>(capacity);
    if (m_block) std::memcpy(block + 1, m_block + 1, m_block->size * sizeof(T));
    ::operator delete(m_block);
    m_block = block;
  }
  void Assign(const T* data, int n) {
    if (n <= 0) {
      RemoveAll();
      return;
    }
    if (!m_block || static_cast<int>(m_block->capacity) < n) {
      RemoveAll();
      Reserve(n);
    }
    std::memcpy(Data(), data, static_cast<std::size_t>(n) * sizeof(T));
    m_block->size = static_cast<std::uint32_t>(n);
  }

  Block* m_block = nullptr;
};

// Other element types: the count, then the elements raw.
template <class T>
void UtSArrayEx<T>::Serialize(UtArchive& ar) {
  if (ar.IsStoring()) {
    ar.WriteCount(static_cast<std::uint64_t>(GetSize()));
    if (GetSize() > 0) ar.WriteBytes(GetData(), static_cast<std::size_t>(GetSize()) * sizeof(T));
    return;
  }
  const std::uint64_t n = ar.ReadCount();
  ar.CheckCount(n, sizeof(T));
  if (n > 0x7FFFFFFF) throw UtArchiveException(UtArchiveException::tooLarge, "array too long");
  RemoveAll();
  if (n == 0) return;
  Reserve(static_cast<int>(n));
  ar.ReadBytes(Data(), static_cast<std::size_t>(n) * sizeof(T));
  m_block->size = static_cast<std::uint32_t>(n);
}

template <>
inline void UtSArrayEx<DbId>::Serialize(UtArchive& ar) {
  if (ar.IsStoring()) {
    const int n = GetSize();
    ar.WriteCount(static_cast<std::uint64_t>(n));
    for (int i = 0; i < n; ++i) ar.WriteCount(GetData()[i].Value());
    return;
  }
  const std::uint64_t n = ar.ReadCount();
  ar.CheckCount(n, 1);
  if (n > 0x7FFFFFFF) throw UtArchiveException(UtArchiveException::tooLarge, "id array too long");
  RemoveAll();
  if (n == 0) return;
  Reserve(static_cast<int>(n));
  for (std::uint64_t i = 0; i < n; ++i) Data()[i] = DbId(ar.ReadCount());
  m_block->size = static_cast<std::uint32_t>(n);
}

}  // namespace Quarp
