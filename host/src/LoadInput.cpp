#include "LoadInput.h"

#include "RecordArena.h"
#include "SpareBuffer.h"

#include <cerrno>
#include <cstring>
#include <optional>

#include <unistd.h>

namespace Quarp::Detail {

namespace {

SpareBuffer<MappedPages> g_spareWindow;  // only windows of the full size are kept

}  // namespace

LoadInput::LoadInput(std::span<const std::uint8_t> bytes)
    : m_size(bytes.size()),
      m_body(bytes.size() >= kTrailerSize ? bytes.size() - kTrailerSize : 0),
      m_data(bytes.data()),
      m_readTo(bytes.size()),
      m_state(XXH3_createState()) {
  if (m_state) XXH3_64bits_reset(m_state);
}

LoadInput::LoadInput(int fd, std::size_t size)
    : m_fd(fd), m_size(size), m_body(size >= kTrailerSize ? size - kTrailerSize : 0), m_state(XXH3_createState()) {
  if (m_state) XXH3_64bits_reset(m_state);
  Grow(Min(size, kWindow));
  m_data = m_window.Data();
}

LoadInput::~LoadInput() {
  if (m_window.Size() == kWindow) g_spareWindow.Give(std::move(m_window));
  XXH3_freeState(m_state);
}

bool LoadInput::Grow(std::size_t n) {
  std::size_t capacity = Min(m_size, kWindow);
  if (capacity < n) capacity = n;
  if (capacity == 0) capacity = 1;
  std::optional<MappedPages> spare;
  if (capacity == kWindow) spare = g_spareWindow.Take();
  MappedPages window = spare ? std::move(*spare) : MappedPages(capacity);
  if (window.Size() == 0) return false;
  const std::size_t kept = m_readTo - m_pos;
  if (kept > 0) std::memcpy(window.Data(), Data(), kept);
  m_window = std::move(window);  // the old window goes with `window`
  return true;
}

void LoadInput::HashTo(std::size_t end) noexcept {
  if (end <= m_hashedTo) return;
  XXH3_64bits_update(m_state, m_data + (m_hashedTo - m_dataStart), end - m_hashedTo);
  m_hashedTo = end;
}

bool LoadInput::Fill(std::size_t n) {
  if (m_fd < 0) {
    // In memory: hash a window ahead, so that the bytes are hashed while in cache.
    HashTo(Min(m_body, m_pos + (n > kWindow ? n : kWindow)));
    return true;
  }
  // Keep the bytes not yet consumed, at the start of a window large enough for n.
  const std::size_t kept = m_readTo - m_pos;
  if (n > m_window.Size()) {
    if (!Grow(n)) {
      m_errno = ENOMEM;
      return false;
    }
  } else if (kept > 0) {
    std::memmove(m_window.Data(), Data(), kept);
  }
  m_data = m_window.Data();
  m_dataStart = m_pos;
  while (m_readTo - m_pos < n) {
    const std::size_t room = m_window.Size() - (m_readTo - m_dataStart);
    const ssize_t r = ::read(m_fd, m_window.Data() + (m_readTo - m_dataStart), Min(room, m_size - m_readTo));
    if (r < 0) {
      if (errno == EINTR) continue;
      m_errno = errno;
      return false;
    }
    if (r == 0) {  // the file shrank while it was read
      m_endedEarly = true;
      return false;
    }
    m_readTo += static_cast<std::size_t>(r);
    HashTo(Min(m_readTo, m_body));
  }
  return true;
}

bool LoadInput::Finish(std::uint64_t& stored, std::uint64_t& computed) {
  while (m_pos < m_body) {
    const std::size_t step = Min(m_body - m_pos, kWindow);
    if (!Ensure(step)) return false;
    Consume(step);
  }
  if (!Ensure(kTrailerSize)) return false;
  Trailer(stored, computed);
  return true;
}

bool LoadInput::FinishAhead(bool& known, std::uint64_t& stored, std::uint64_t& computed) {
  known = m_fd < 0 || m_size <= m_window.Size();
  if (!known || m_size < m_pos + kTrailerSize) {
    known = false;
    return true;
  }
  if (!Ensure(m_size - m_pos)) return false;
  HashTo(m_body);
  Trailer(stored, computed);
  return true;
}

void LoadInput::Trailer(std::uint64_t& stored, std::uint64_t& computed) const noexcept {
  std::memcpy(&stored, m_data + (m_body - m_dataStart), kTrailerSize);
  computed = XXH3_64bits_digest(m_state);
}

}  // namespace Quarp::Detail
