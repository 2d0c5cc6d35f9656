// UtArchive: the binary archive every object serialises itself through.
//
// An archive either stores (into a growable memory buffer whose bytes can be read
// back) or loads (from a span of bytes that the caller keeps alive). Everything is raw
// little-endian with no padding or tags. Reading past the end throws
// UtArchiveException with cause endOfFile; every count or length read from the bytes
// is checked against what remains before anything is allocated, so hostile input
// cannot make a load allocate more than the input could hold.
//
// Field helpers: `ar << value` stores and `ar >> value` loads, one overload per field
// type (bool, 8/16/32/64-bit integers, double, DbId, CString); enumerations travel as
// 4-byte integers. The reference platform's 32-bit `long` has WriteLong/ReadLong.
#pragma once

#include <afx/CString.h>
#include <quarp/DbId.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <exception>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

namespace Quarp {

class UtObject;

class UtArchiveException : public std::exception {
 public:
  enum Cause : int {
    none = 0,
    generic = 1,
    badSchema = 2,  // a stored class version is newer than the class knows
    endOfFile = 3,  // read past the end of the data
    badClass = 4,   // an object's class is unknown or not registered
    badIndex = 5,   // a class reference in the data does not exist
    tooLarge = 6,   // a count or length is larger than the data that remains
  };

  explicit UtArchiveException(int cause, std::string message = {});
  const char* what() const noexcept override { return m_message.c_str(); }
  int GetCause() const noexcept { return m_cause; }

  int m_cause;  // public, as the platform's archive exception has it

 private:
  std::string m_message;
};

class UtArchive {
 public:
  enum Mode { Store, Load };

  // A storing archive over an empty memory buffer, or a loading archive over no bytes.
  explicit UtArchive(Mode mode);
  // A loading archive over `bytes`, which must outlive the archive.
  UtArchive(Mode mode, std::span<const std::uint8_t> bytes);
  UtArchive(Mode mode, std::vector<std::uint8_t>&& bytes) = delete;  // would dangle

  UtArchive(const UtArchive&) = delete;
  UtArchive& operator=(const UtArchive&) = delete;

  bool IsStoring() const noexcept { return m_mode == Store; }
  bool IsLoading() const noexcept { return m_mode == Load; }

  // Raw bytes. Both return n; Read throws endOfFile when fewer than n bytes remain.
  unsigned Write(const void* data, unsigned n) {
    WriteBytes(data, n);
    return n;
  }
  unsigned Read(void* data, unsigned n) {
    ReadBytes(data, n);
    return n;
  }
  void WriteBytes(const void* data, std::size_t n) {
    if (n > m_out.size() - m_used) Grow(n);
    std::memcpy(m_out.data() + m_used, data, n);
    m_used += n;
  }
  void ReadBytes(void* data, std::size_t n) {
    if (n > m_size - m_pos) ThrowEndOfFile(n);
    std::memcpy(data, m_in + m_pos, n);
    m_pos += n;
  }
  // Skips n bytes of a loading archive.
  void Skip(std::size_t n) {
    if (n > m_size - m_pos) ThrowEndOfFile(n);
    m_pos += n;
  }

  // Fixed-size little-endian values (this platform is little-endian).
  template <class T>
  requires std::is_trivially_copyable_v<T>
  void WriteRaw(const T& v) {
    static_assert(std::endian::native == std::endian::little);
    WriteBytes(&v, sizeof(T));
  }
  template <class T>
  requires std::is_trivially_copyable_v<T> T ReadRaw() {
    T v;
    ReadBytes(&v, sizeof(T));
    return v;
  }

  // Compact unsigned integers: 7 bits per byte, low bits first, high bit = more follows.
  void WriteCount(std::uint64_t v) {
    if (m_out.size() - m_used < kMaxCountBytes) Grow(kMaxCountBytes);
    m_used += EncodeCount(v, m_out.data() + m_used);
  }
  // Encodes `v` as a compact integer into `out` (room for kMaxCountBytes); returns the
  // number of bytes written.
  static constexpr std::size_t kMaxCountBytes = 10;
  static std::size_t EncodeCount(std::uint64_t v, std::uint8_t* out) noexcept {
    std::size_t n = 0;
    while (v >= 0x80) {
      out[n++] = static_cast<std::uint8_t>(v | 0x80);
      v >>= 7;
    }
    out[n++] = static_cast<std::uint8_t>(v);
    return n;
  }
  std::uint64_t ReadCount() {
    if (m_pos < m_size && m_in[m_pos] < 0x80) return m_in[m_pos++];
    return ReadCountSlow();
  }

  // Throws tooLarge unless `count` items of at least `minBytesEach` bytes fit in what
  // remains. Call before allocating for a count read from the data.
  void CheckCount(std::uint64_t count, std::size_t minBytesEach) const {
    if (minBytesEach == 0) minBytesEach = 1;
    if (count > (m_size - m_pos) / minBytesEach) ThrowTooLarge(count, minBytesEach);
  }

  // Polymorphic objects: the class name (once per archive; later by reference), then
  // the object's own Serialize. A null object is stored and read back as null. The
  // loaded object belongs to the caller.
  void WriteObject(const UtObject* obj);
  void ReadObject(UtObject*& obj);

  // The stored bytes.
  const std::vector<std::uint8_t>& GetBytes() const {
    m_out.resize(m_used);
    return m_out;
  }
  std::vector<std::uint8_t> TakeBytes() {
    m_out.resize(m_used);
    m_used = 0;
    return std::move(m_out);
  }
  // Empties a storing archive (capacity is kept) and forgets the object classes seen.
  void Reset() noexcept;
  // Makes room for n more stored bytes at once, so that storing them does not grow the
  // buffer step by step (each step copies what is stored).
  void Reserve(std::size_t n);
  // Empties a storing archive and stores from now on into `room`, whose memory becomes
  // the archive's room to grow; for writers that keep a buffer from one archive to the
  // next (TakeBytes hands it back).
  void Adopt(std::vector<std::uint8_t>&& room);

  // For writers that frame and flush what they store (the database file): the stored
  // bytes in place, dropping the first n of them, opening a gap of n bytes at `at`, and
  // forgetting the object classes named so far (so that the next object names its class
  // again and each framed part can be read on its own).
  std::uint8_t* StoredData() noexcept { return m_out.data(); }
  std::size_t StoredSize() const noexcept { return m_used; }
  void DropStored(std::size_t n) noexcept;
  void OpenGap(std::size_t at, std::size_t n);
  void ForgetObjectClasses() noexcept { m_classes.clear(); }
  // Points a loading archive at new bytes and forgets the object classes seen.
  void Reset(std::span<const std::uint8_t> bytes) noexcept {
    m_in = bytes.data();
    m_size = bytes.size();
    m_pos = 0;
    m_classes.clear();
  }

  // Position in a loading archive.
  std::size_t GetPosition() const noexcept { return m_pos; }
  std::size_t GetRemaining() const noexcept { return m_size - m_pos; }
  std::size_t GetSize() const noexcept { return m_size; }

  // The errors of a loading archive, for readers that check framed bytes themselves:
  // `remaining` bytes remain at `offset`.
  [[noreturn]] static void ThrowEndOfFile(std::size_t wanted, std::size_t offset, std::size_t remaining);
  [[noreturn]] static void ThrowTooLarge(std::uint64_t count, std::size_t each, std::size_t offset,
                                         std::size_t remaining);

 private:
  [[noreturn]] void ThrowEndOfFile(std::size_t wanted) const;
  [[noreturn]] void ThrowTooLarge(std::uint64_t count, std::size_t each) const;
  std::uint64_t ReadCountSlow();
  void Grow(std::size_t n);
  void Resize(std::size_t size);

  Mode m_mode;
  // Stored bytes are m_out[0, m_used); the vector's size beyond that is room to grow
  // (written with memcpy, never zero-filled byte by byte).
  mutable std::vector<std::uint8_t> m_out;
  std::size_t m_used = 0;
  const std::uint8_t* m_in = nullptr;
  std::size_t m_size = 0;
  std::size_t m_pos = 0;
  std::vector<unsigned> m_classes;  // class ids in the order first written or read
};

// --- field helpers -----------------------------------------------------------------

template <class T>
requires(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) inline UtArchive& operator<<(UtArchive& ar, T v) {
  ar.WriteRaw(v);
  return ar;
}
template <class T>
requires(std::is_arithmetic_v<T> && !std::is_same_v<T, bool>) inline UtArchive& operator>>(UtArchive& ar, T& v) {
  v = ar.ReadRaw<T>();
  return ar;
}

// bool: one byte, 0 or 1 (any non-zero byte loads as true).
inline UtArchive& operator<<(UtArchive& ar, bool v) {
  ar.WriteRaw<std::uint8_t>(v ? 1 : 0);
  return ar;
}
inline UtArchive& operator>>(UtArchive& ar, bool& v) {
  v = ar.ReadRaw<std::uint8_t>() != 0;
  return ar;
}

// Enumerations: four bytes, two's complement.
template <class E>
requires std::is_enum_v<E>
inline UtArchive& operator<<(UtArchive& ar, E v) {
  ar.WriteRaw(static_cast<std::int32_t>(v));
  return ar;
}
template <class E>
requires std::is_enum_v<E>
inline UtArchive& operator>>(UtArchive& ar, E& v) {
  v = static_cast<E>(ar.ReadRaw<std::int32_t>());
  return ar;
}

// DbId: its eight raw bytes.
inline UtArchive& operator<<(UtArchive& ar, DbId id) {
  ar.WriteRaw(id.Value());
  return ar;
}
inline UtArchive& operator>>(UtArchive& ar, DbId& id) {
  id = DbId(ar.ReadRaw<std::uint64_t>());
  return ar;
}

// CString: a 4-byte signed length in UTF-16 code units, then the code units; a length
// below 1 loads as the empty string and reads nothing more.
UtArchive& operator<<(UtArchive& ar, const CString& s);
UtArchive& operator>>(UtArchive& ar, CString& s);

// The reference platform's `long`, which is 32 bits wide: four bytes.
inline void WriteLong(UtArchive& ar, long v) { ar.WriteRaw(static_cast<std::int32_t>(v)); }
inline long ReadLong(UtArchive& ar) { return ar.ReadRaw<std::int32_t>(); }

}  // namespace Quarp
