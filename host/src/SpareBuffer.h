// One buffer kept from one file load or save for the next (private to the framework).
//
// A load reads a file through a 512 KB window and a save stores through a 144 KB buffer.
// Mapping such a buffer, faulting it in and giving it back again costs a 10k-move job
// about a third of its load time and a fifth of its save time where page faults and TLB
// flushes are expensive. A process that loads or saves many files (or loads two to
// compare them) pays that once. One buffer of each kind is kept for the whole process,
// whatever the number of threads: a caller that finds none makes its own, and a buffer
// given back while one is kept already stays with the caller, who drops it.
#pragma once

#include <mutex>
#include <optional>
#include <utility>

namespace Quarp::Detail {

template <class Buffer>
class SpareBuffer {
 public:
  // The kept buffer, which is no longer kept; nothing when none is.
  std::optional<Buffer> Take() noexcept {
    const std::lock_guard<std::mutex> lock(m_lock);
    return std::exchange(m_kept, std::nullopt);
  }
  // Keeps `buffer` (moved from) for the next Take when none is kept yet.
  void Give(Buffer&& buffer) noexcept {
    const std::lock_guard<std::mutex> lock(m_lock);
    if (!m_kept) m_kept.emplace(std::move(buffer));
  }

 private:
  std::mutex m_lock;
  std::optional<Buffer> m_kept;
};

}  // namespace Quarp::Detail
