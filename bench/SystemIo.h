// What the benchmark needs from the system: a scratch directory, raw file reads and
// durable writes (the physical limit the IOF file is measured against), and the
// process's memory figures.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace IofBench {

// A fresh directory under $TMPDIR (default /tmp), removed with everything in it when
// the object goes.
class ScratchDir {
 public:
  ScratchDir();
  ~ScratchDir();
  ScratchDir(const ScratchDir&) = delete;
  ScratchDir& operator=(const ScratchDir&) = delete;
  const std::string& Path() const noexcept { return m_path; }
  std::string File(const std::string& name) const { return m_path + "/" + name; }

 private:
  std::string m_path;
};

std::size_t FileSize(const std::string& path);

// Reads the whole file into newly allocated memory, as a load must; throws on failure.
std::unique_ptr<std::uint8_t[]> ReadWholeFile(const std::string& path, std::size_t& size);

// Writes `size` bytes to `path` with the flush policy of DbMgr::Write: a new file
// beside the target, fsync, rename over the target, fsync of the directory. Throws on
// failure.
void WriteDurably(const std::string& path, const std::uint8_t* data, std::size_t size);

// Makes the finished file `temp` durable and renames it over `target` (fsync of the
// file, rename, fsync of the directory), as WriteDurably does after writing.
void DurableReplace(const std::string& temp, const std::string& target);

// Resident set size of the process, in bytes (/proc/self/statm).
std::size_t ResidentBytes();
// Resets the peak resident size (/proc/self/clear_refs); false where the kernel refuses.
bool ResetPeakResident();
// Peak resident size since the last reset, in bytes (VmHWM in /proc/self/status).
std::size_t PeakResidentBytes();
// Bytes the allocator has handed out and not taken back (mallinfo2).
std::size_t HeapBytesInUse();
// Gives free heap memory back to the system, so that RSS growth counts new memory only.
void ReleaseFreeMemory();

}  // namespace IofBench
