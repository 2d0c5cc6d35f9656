#include "SystemIo.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

namespace IofBench {

namespace {

std::runtime_error SystemError(const std::string& what, const std::string& path) {
  return std::runtime_error(what + " '" + path + "': " + std::strerror(errno));
}

std::string DirectoryOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

void FsyncDirectory(const std::string& path) {
  const std::string dir = DirectoryOf(path);
  const int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) throw SystemError("cannot open directory", dir);
  ::fsync(fd);
  ::close(fd);
}

}  // namespace

ScratchDir::ScratchDir() {
  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/iof-bench-XXXXXX";
  if (!::mkdtemp(pattern.data())) throw SystemError("cannot create a directory like", pattern);
  m_path = pattern;
}

ScratchDir::~ScratchDir() {
  std::error_code ec;
  std::filesystem::remove_all(m_path, ec);
}

std::size_t FileSize(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) throw SystemError("cannot stat", path);
  return static_cast<std::size_t>(st.st_size);
}

std::unique_ptr<std::uint8_t[]> ReadWholeFile(const std::string& path, std::size_t& size) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw SystemError("cannot open", path);
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    ::close(fd);
    throw SystemError("cannot stat", path);
  }
  size = static_cast<std::size_t>(st.st_size);
  auto data = std::make_unique_for_overwrite<std::uint8_t[]>(size > 0 ? size : 1);
  std::size_t got = 0;
  while (got < size) {
    const ssize_t r = ::read(fd, data.get() + got, size - got);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) {
      ::close(fd);
      throw SystemError("cannot read", path);
    }
    got += static_cast<std::size_t>(r);
  }
  ::close(fd);
  return data;
}

void WriteDurably(const std::string& path, const std::uint8_t* data, std::size_t size) {
  const std::string temp = path + ".tmp";
  const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (fd < 0) throw SystemError("cannot create", temp);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t w = ::write(fd, data + done, size - done);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) {
      ::close(fd);
      throw SystemError("cannot write", temp);
    }
    done += static_cast<std::size_t>(w);
  }
  if (::fsync(fd) != 0 || ::close(fd) != 0) throw SystemError("cannot flush", temp);
  if (::rename(temp.c_str(), path.c_str()) != 0) throw SystemError("cannot rename over", path);
  FsyncDirectory(path);
}

void DurableReplace(const std::string& temp, const std::string& target) {
  const int fd = ::open(temp.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw SystemError("cannot open", temp);
  if (::fsync(fd) != 0) {
    ::close(fd);
    throw SystemError("cannot flush", temp);
  }
  ::close(fd);
  if (::rename(temp.c_str(), target.c_str()) != 0) throw SystemError("cannot rename over", target);
  FsyncDirectory(target);
}

std::size_t ResidentBytes() {
  std::ifstream statm("/proc/self/statm");
  std::size_t pages = 0, resident = 0;
  statm >> pages >> resident;
  return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

bool ResetPeakResident() {
  std::ofstream clear("/proc/self/clear_refs");
  clear << "5";
  clear.flush();
  return static_cast<bool>(clear);
}

std::size_t PeakResidentBytes() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind("VmHWM:", 0) == 0) return std::strtoull(line.c_str() + 6, nullptr, 10) * 1024;  // in kB
  }
  return 0;
}

std::size_t HeapBytesInUse() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.uordblks + info.hblkhd;
}

void ReleaseFreeMemory() { ::malloc_trim(0); }

}  // namespace IofBench
