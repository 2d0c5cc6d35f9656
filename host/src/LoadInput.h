// The bytes of one file load as they come in (private to the framework).
//
// A file is read block by block into a window that is reused, so that a load never
// holds the whole file and the bytes it decodes are still in the cache (the window
// itself is kept for the next load when this one is done); bytes already in
// memory are used in place. Every byte of the body (the file without its trailing
// checksum) is hashed once, as it enters the window, so the checksum is known as soon as
// the last record is built; where the whole input is at hand at once (in memory, or a
// file of one window), FinishAhead hashes it before anything is decoded.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <xxhash.h>

#include "RecordArena.h"

namespace Quarp::Detail {

class LoadInput {
 public:
  static constexpr std::size_t kTrailerSize = 8;  // XXH3-64 of everything before it
  // The size of a file's window (smaller for a smaller file).
  static constexpr std::size_t kWindow = std::size_t{512} << 10;

  // Bytes in memory, which must outlive the input.
  explicit LoadInput(std::span<const std::uint8_t> bytes);
  // The open file `fd` of `size` bytes, read from its start.
  LoadInput(int fd, std::size_t size);
  ~LoadInput();
  LoadInput(const LoadInput&) = delete;
  LoadInput& operator=(const LoadInput&) = delete;

  // False when the window could not be allocated.
  bool Usable() const noexcept { return m_state != nullptr && (m_fd < 0 || m_window.Size() > 0); }

  // The size of the input and of its body (the bytes before the checksum; 0 when the
  // input is shorter than a checksum).
  std::size_t Size() const noexcept { return m_size; }
  std::size_t BodySize() const noexcept { return m_body; }
  // Bytes consumed so far, and what remains of the body after them.
  std::size_t Position() const noexcept { return m_pos; }
  std::size_t BodyRemaining() const noexcept { return m_pos < m_body ? m_body - m_pos : 0; }

  // The bytes at the position: Available() of them (some may be the checksum's).
  const std::uint8_t* Data() const noexcept { return m_data + (m_pos - m_dataStart); }
  std::size_t Available() const noexcept { return m_readTo - m_pos; }
  // Makes n bytes available at Data() (n at most Size() - Position()). False when the
  // file could not be read or ended early (see ReadErrno and EndedEarly).
  bool Ensure(std::size_t n) {
    if (m_readTo - m_pos >= n && m_hashedTo >= Min(m_pos + n, m_body)) return true;
    return Fill(n);
  }
  void Consume(std::size_t n) noexcept { m_pos += n; }

  // Hashes what remains of the body (nothing, after FinishAhead) and reads the stored
  // checksum. False when the file could not be read to its end.
  bool Finish(std::uint64_t& stored, std::uint64_t& computed);
  // When the whole input fits in the window at once (bytes in memory, or a file of at
  // most one block), reads all of it and does what Finish does, before anything is
  // decoded: `known` says whether it did. A damaged input is then refused at the cost of
  // one hash, instead of after its records were built. False as Finish.
  bool FinishAhead(bool& known, std::uint64_t& stored, std::uint64_t& computed);

  int ReadErrno() const noexcept { return m_errno; }
  bool EndedEarly() const noexcept { return m_endedEarly; }

 private:
  static std::size_t Min(std::size_t a, std::size_t b) noexcept { return a < b ? a : b; }
  bool Fill(std::size_t n);
  bool Grow(std::size_t n);
  void HashTo(std::size_t end) noexcept;
  // The stored checksum and the digest so far; the trailer must be in the window.
  void Trailer(std::uint64_t& stored, std::uint64_t& computed) const noexcept;

  int m_fd = -1;
  std::size_t m_size = 0;
  std::size_t m_body = 0;
  const std::uint8_t* m_data = nullptr;  // the window; its first byte is at offset m_dataStart
  std::size_t m_dataStart = 0;
  std::size_t m_pos = 0;
  std::size_t m_readTo = 0;    // bytes in the window end here
  std::size_t m_hashedTo = 0;  // the body is hashed up to here
  XXH3_state_t* m_state = nullptr;
  MappedPages m_window;  // a file's
  int m_errno = 0;
  bool m_endedEarly = false;
};

}  // namespace Quarp::Detail
