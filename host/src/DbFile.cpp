// The IOF database file: DbMgr::Write and DbMgr::Read. The format is described byte by
// byte in docs/FORMAT.md; this file is its only implementation.
#include "DbMgrTable.h"
#include "RecordArena.h"

#include <quarp/DbMgr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>

#include <xxhash.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Quarp {
namespace {

constexpr std::uint8_t kMagic[8] = {0x89, 'I', 'O', 'F', '\r', '\n', 0x1A, '\n'};
constexpr std::uint32_t kFormatVersion = 1;
constexpr std::size_t kHeaderSize = 36;  // magic, version, flags, record count, next id, class count
constexpr std::size_t kTrailerSize = 8;  // XXH3-64 of everything before it
constexpr std::uint64_t kMaxId = 0xFFFFFFFEu;

std::string Hex(std::uint64_t v) {
  char buf[24];
  std::snprintf(buf, sizeof buf, "0x%016llx", static_cast<unsigned long long>(v));
  return buf;
}

std::string Describe(std::uint64_t id, const char* className) {
  return "record " + std::to_string(id) + " (" + (className ? className : "?") + ")";
}

// Collects the file's bytes in a storing archive and hashes them; for a file, flushes
// to the descriptor in large blocks so that a big database is never held twice in
// memory. Records serialise straight into it, framed in place.
class Sink {
 public:
  explicit Sink(int fd) : m_fd(fd), m_state(XXH3_createState()) {
    if (!m_state) throw std::bad_alloc();
    XXH3_64bits_reset(m_state);
  }
  ~Sink() { XXH3_freeState(m_state); }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  UtArchive& Archive() noexcept { return m_ar; }

  // Writes out what is stored once it is large (files only). False on a write error.
  bool MaybeFlush() { return m_fd < 0 || m_ar.StoredSize() < kBlock || Flush(); }
  // Appends the checksum and writes out what remains (files) or hands the bytes over
  // (memory). False on a write error.
  bool Finish(std::vector<std::uint8_t>* memory) {
    XXH3_64bits_update(m_state, m_ar.StoredData(), m_ar.StoredSize());
    const std::uint64_t sum = XXH3_64bits_digest(m_state);
    m_ar.WriteRaw(sum);
    if (memory) {
      *memory = m_ar.TakeBytes();
      return true;
    }
    return WriteAll(m_ar.StoredData(), m_ar.StoredSize());
  }
  int Errno() const noexcept { return m_errno; }

 private:
  static constexpr std::size_t kBlock = 1u << 20;
  bool Flush() {
    XXH3_64bits_update(m_state, m_ar.StoredData(), m_ar.StoredSize());
    const bool ok = WriteAll(m_ar.StoredData(), m_ar.StoredSize());
    m_ar.DropStored(m_ar.StoredSize());
    return ok;
  }
  bool WriteAll(const std::uint8_t* p, std::size_t n) {
    while (n > 0) {
      const ssize_t w = ::write(m_fd, p, n);
      if (w < 0) {
        if (errno == EINTR) continue;
        m_errno = errno;
        return false;
      }
      p += w;
      n -= static_cast<std::size_t>(w);
    }
    return true;
  }

  int m_fd;
  XXH3_state_t* m_state;
  UtArchive m_ar{UtArchive::Store};
  int m_errno = 0;
};

// Stores one record framed as: compact id step, compact class index, compact payload
// length, payload. The payload is written in place after a one-byte length, which
// grows (moving the payload) in the rare case it needs more.
void StoreFrame(UtArchive& ar, std::uint32_t step, std::uint32_t classIndex, DbBase& ent) {
  ar.WriteCount(step);
  ar.WriteCount(classIndex);
  const std::size_t lengthAt = ar.StoredSize();
  ar.WriteCount(0);
  ar.ForgetObjectClasses();  // each payload names its own object classes
  ent.Serialize(ar);
  std::uint8_t encoded[UtArchive::kMaxCountBytes];
  const std::size_t k = UtArchive::EncodeCount(ar.StoredSize() - lengthAt - 1, encoded);
  if (k > 1) ar.OpenGap(lengthAt + 1, k - 1);
  std::memcpy(ar.StoredData() + lengthAt, encoded, k);
}

std::string PathText(const UtString& path) { return path.ToUtf8(); }

// The buffer a file is read into. A large one is mapped fresh from the system and
// handed back when the load is done, so that a load never keeps the file's size in the
// heap. (Advising huge pages here made the average load faster but the first load of a
// process up to twice as slow while the kernel compacted memory: not worth it.)
class ReadBuffer {
 public:
  explicit ReadBuffer(std::size_t size) : m_size(size) {
    if (size < kHuge) {
      m_data = static_cast<std::uint8_t*>(std::malloc(size > 0 ? size : 1));
      return;
    }
    // Populated at once: one call instead of a trap every 4 KB page while reading.
    void* p = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    if (p == MAP_FAILED) return;
    m_data = static_cast<std::uint8_t*>(p);
    m_mapped = true;
  }
  ~ReadBuffer() {
    if (m_mapped) {
      ::munmap(m_data, m_size);
    } else {
      std::free(m_data);
    }
  }
  ReadBuffer(const ReadBuffer&) = delete;
  ReadBuffer& operator=(const ReadBuffer&) = delete;
  std::uint8_t* get() const noexcept { return m_data; }
  explicit operator bool() const noexcept { return m_data != nullptr; }

 private:
  static constexpr std::size_t kHuge = 2u << 20;
  std::uint8_t* m_data = nullptr;
  std::size_t m_size;
  bool m_mapped = false;
};

std::string DirectoryOf(const std::string& path) {
  const auto slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

// Removes what writers of `base` in `dir` left behind when they died mid-write (killed,
// or the machine went down): the temporaries `.<base>.tmp.<pid>.<n>` whose process no
// longer runs. Those of running writers, this process's own among them, stay; so does
// anything that is not a regular file. Without this, every crash would leave a file the
// size of the database behind, and they would pile up until the disk is full.
void RemoveStaleTemporaries(const std::string& dir, const std::string& base) {
  DIR* d = ::opendir(dir.c_str());
  if (!d) return;
  const std::string prefix = "." + base + ".tmp.";
  while (const dirent* entry = ::readdir(d)) {
    const char* name = entry->d_name;
    if (std::strncmp(name, prefix.c_str(), prefix.size()) != 0) continue;
    // <pid>.<n>, both decimal, and nothing else.
    const char* at = name + prefix.size();
    const std::size_t pidDigits = std::strspn(at, "0123456789");
    if (pidDigits == 0 || pidDigits > 9 || at[pidDigits] != '.') continue;
    const char* attempt = at + pidDigits + 1;
    const std::size_t attemptDigits = std::strspn(attempt, "0123456789");
    if (attemptDigits == 0 || attempt[attemptDigits] != '\0') continue;
    const auto pid = static_cast<pid_t>(std::strtol(at, nullptr, 10));
    if (pid <= 0 || pid == ::getpid()) continue;
    if (::kill(pid, 0) == 0 || errno != ESRCH) continue;  // running (or not ours to ask)
    struct stat st {};
    if (::fstatat(::dirfd(d), name, &st, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(st.st_mode)) continue;
    ::unlinkat(::dirfd(d), name, 0);
  }
  ::closedir(d);
}

}  // namespace

// Serialises every record into `sink`. Returns an error text, empty on success.
static std::string WriteBody(const Detail::RecordTable& table, std::size_t count, std::uint32_t nextId, Sink& sink) {
  // The class table: every class that occurs, in order of first occurrence.
  std::vector<std::int32_t> indexOfClass;  // class id -> index in the table, -1 if absent
  std::vector<const UtSerializeClass*> classes;
  std::string error;
  table.ForEach([&](std::uint32_t id, DbBase* ent) {
    if (!error.empty()) return;
    const unsigned classId = ent->GetObjectClassId();
    if (classId >= indexOfClass.size()) indexOfClass.resize(classId + 1, -1);
    if (indexOfClass[classId] >= 0) return;
    const UtSerializeClass* cls = UtSerializeFind(classId);
    if (!cls) {
      error = Describe(id, ent->GetObjectClassName()) + ": its class is not registered for archiving";
      return;
    }
    indexOfClass[classId] = static_cast<std::int32_t>(classes.size());
    classes.push_back(cls);
  });
  if (!error.empty()) return error;

  UtArchive& ar = sink.Archive();
  ar.WriteBytes(kMagic, sizeof kMagic);
  ar.WriteRaw<std::uint32_t>(kFormatVersion);
  ar.WriteRaw<std::uint32_t>(0);  // flags
  ar.WriteRaw<std::uint64_t>(count);
  ar.WriteRaw<std::uint64_t>(nextId);
  ar.WriteRaw<std::uint32_t>(static_cast<std::uint32_t>(classes.size()));
  for (const UtSerializeClass* cls : classes) {
    const std::size_t len = std::strlen(cls->name);
    ar.WriteRaw<std::uint8_t>(static_cast<std::uint8_t>(len));
    ar.WriteBytes(cls->name, len);
  }

  std::uint32_t previous = 0;
  table.ForEach([&](std::uint32_t id, DbBase* ent) {
    if (!error.empty()) return;
    try {
      StoreFrame(ar, id - previous, static_cast<std::uint32_t>(indexOfClass[ent->GetObjectClassId()]), *ent);
    } catch (const std::exception& e) {
      error = Describe(id, ent->GetObjectClassName()) + " could not be stored: " + e.what();
      return;
    }
    previous = id;
    if (!sink.MaybeFlush()) error = std::string("write failed: ") + std::strerror(sink.Errno());
  });
  return error;
}

DbErr DbMgr::WriteToMemory(std::vector<std::uint8_t>& out) {
  try {
    Sink sink(-1);
    const std::string error = WriteBody(*m_table, m_count, m_nextId, sink);
    if (!error.empty()) return Fail(DbErr::BadRecord, error);
    sink.Finish(&out);
  } catch (const std::bad_alloc&) {
    return Fail(DbErr::Io, "out of memory while writing the database");
  }
  m_lastError.clear();
  return DbErr::Ok;
}

DbErr DbMgr::Write(const UtString& pathText) {
  const std::string path = PathText(pathText);
  if (path.empty()) return Fail(DbErr::InvalidArgument, "cannot write: the file name is empty");

  // A temporary file beside the target, so that the rename below is atomic.
  const std::string dir = DirectoryOf(path);
  const std::string base = path.substr(path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1);
  RemoveStaleTemporaries(dir, base);
  std::string temp;
  int fd = -1;
  for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
    temp = (dir == "/" ? std::string() : dir) + "/." + base + ".tmp." + std::to_string(::getpid()) + "." +
           std::to_string(attempt);
    fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) break;
  }
  if (fd < 0) {
    return Fail(DbErr::Io,
                "cannot write '" + path + "': cannot create a file in '" + dir + "': " + std::strerror(errno));
  }

  auto abandon = [&](std::string text) {
    ::close(fd);
    ::unlink(temp.c_str());
    return Fail(DbErr::Io, "cannot write '" + path + "': " + text);
  };

  try {
    Sink sink(fd);
    const std::string error = WriteBody(*m_table, m_count, m_nextId, sink);
    if (!error.empty()) {
      const DbErr e = abandon(error);
      return error.rfind("write failed", 0) == 0 ? e : DbErr::BadRecord;
    }
    if (!sink.Finish(nullptr)) return abandon(std::string("write failed: ") + std::strerror(sink.Errno()));
  } catch (const std::bad_alloc&) {
    return abandon("out of memory");
  }
  if (::fsync(fd) != 0) return abandon(std::string("flush failed: ") + std::strerror(errno));
  // Keep the permissions of the file being replaced.
  struct stat st {};
  if (::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode)) ::fchmod(fd, st.st_mode & 07777);
  if (::close(fd) != 0) {
    ::unlink(temp.c_str());
    return Fail(DbErr::Io, "cannot write '" + path + "': close failed: " + std::strerror(errno));
  }
  if (::rename(temp.c_str(), path.c_str()) != 0) {
    const int e = errno;
    ::unlink(temp.c_str());
    return Fail(DbErr::Io, "cannot write '" + path + "': " + std::strerror(e));
  }
  // Make the rename itself durable.
  const int dfd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dfd >= 0) {
    ::fsync(dfd);
    ::close(dfd);
  }
  m_modified = false;
  m_lastError.clear();
  return DbErr::Ok;
}

DbErr DbMgr::Read(const UtString& pathText, bool readOnly) {
  const std::string path = PathText(pathText);
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    const int e = errno;
    return Fail(e == ENOENT ? DbErr::NotFound : DbErr::Io, "cannot open '" + path + "': " + std::strerror(e));
  }
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    const int e = errno;
    ::close(fd);
    return Fail(DbErr::Io, "cannot read '" + path + "': " + std::strerror(e));
  }
  if (S_ISDIR(st.st_mode)) {
    ::close(fd);
    return Fail(DbErr::Io, "cannot read '" + path + "': it is a directory, not an IOF file");
  }
  if (!S_ISREG(st.st_mode)) {
    ::close(fd);
    return Fail(DbErr::Io, "cannot read '" + path + "': it is not a regular file");
  }
  const auto size = static_cast<std::size_t>(st.st_size);
  const ReadBuffer data(size);
  if (!data) {
    ::close(fd);
    return Fail(DbErr::Io, "cannot read '" + path + "': not enough memory for " + std::to_string(size) + " bytes");
  }
  std::size_t got = 0;
  while (got < size) {
    const ssize_t r = ::read(fd, data.get() + got, size - got);
    if (r < 0) {
      if (errno == EINTR) continue;
      const int e = errno;
      ::close(fd);
      return Fail(DbErr::Io, "cannot read '" + path + "': " + std::strerror(e));
    }
    if (r == 0) break;  // the file shrank while we read it
    got += static_cast<std::size_t>(r);
  }
  ::close(fd);
  const DbErr err = ReadFromMemory(std::span<const std::uint8_t>(data.get(), got), readOnly);
  if (err != DbErr::Ok) m_lastError = "cannot read '" + path + "': " + m_lastError;
  return err;
}

DbErr DbMgr::ReadFromMemory(std::span<const std::uint8_t> bytes, bool readOnly) {
  const std::size_t size = bytes.size();
  const std::uint8_t* p = bytes.data();
  if (size == 0) return Fail(DbErr::NotAnIofFile, "the file is empty");
  if (size < sizeof kMagic || std::memcmp(p, kMagic, sizeof kMagic) != 0) {
    return Fail(DbErr::NotAnIofFile, "not an IOF file (it does not start with the IOF magic number)");
  }
  if (size < kHeaderSize + kTrailerSize) {
    return Fail(DbErr::Corrupt, "the file is truncated: " + std::to_string(size) +
                                    " bytes is shorter than the smallest IOF file (" +
                                    std::to_string(kHeaderSize + kTrailerSize) + " bytes)");
  }
  std::uint32_t version = 0;
  std::memcpy(&version, p + 8, 4);
  if (version > kFormatVersion) {
    return Fail(DbErr::NewerFormat, "the file uses IOF file format version " + std::to_string(version) +
                                        "; this library reads versions up to " + std::to_string(kFormatVersion));
  }
  const std::size_t bodyEnd = size - kTrailerSize;
  std::uint64_t stored = 0;
  std::memcpy(&stored, p + bodyEnd, 8);
  const std::uint64_t computed = XXH3_64bits(p, bodyEnd);
  if (stored != computed) {
    return Fail(DbErr::Corrupt, "checksum mismatch: the file is damaged or truncated (stored " + Hex(stored) +
                                    ", computed " + Hex(computed) + ")");
  }
  if (version == 0) return Fail(DbErr::Corrupt, "the file declares format version 0, which does not exist");

  UtArchive in(UtArchive::Load, std::span<const std::uint8_t>(p, bodyEnd));
  // The records built below come from one arena (see RecordArena.h), from the moment
  // the guard begins; it ends that on every way out of this function.
  struct ArenaGuard {
    Detail::RecordArena* arena = new Detail::RecordArena();
    void Begin() { Detail::RecordArena::SetCurrent(arena); }
    ~ArenaGuard() {
      Detail::RecordArena::SetCurrent(nullptr);
      arena->Release();
    }
  } arenaGuard;
  std::unique_ptr<Table> table;
  std::size_t loaded = 0;
  // Records built so far belong to `table` until it is committed; on failure they go.
  auto discard = [&]() {
    if (table) table->ForEach([](std::uint32_t, DbBase* ent) { delete ent; });
  };

  std::uint64_t currentId = 0;
  const char* currentClass = nullptr;  // points into `names`, which outlives the handlers below
  std::vector<std::string> names;
  try {
    in.Skip(12);
    const auto flags = in.ReadRaw<std::uint32_t>();
    if (flags != 0) {
      return Fail(DbErr::NewerFormat,
                  "the file uses format features this library does not know (flags " + Hex(flags) + ")");
    }
    const auto count = in.ReadRaw<std::uint64_t>();
    const auto nextId = in.ReadRaw<std::uint64_t>();
    const auto classCount = in.ReadRaw<std::uint32_t>();
    if (nextId == 0 || nextId > kMaxId + 1) {
      return Fail(DbErr::Corrupt, "the file's next record id " + std::to_string(nextId) + " is out of range");
    }
    in.CheckCount(classCount, 2);
    std::vector<const UtSerializeClass*> classes(classCount, nullptr);
    std::vector<bool> isRecord(classCount, false);
    names.resize(classCount);
    for (std::uint32_t i = 0; i < classCount; ++i) {
      const auto len = in.ReadRaw<std::uint8_t>();
      if (len == 0) return Fail(DbErr::Corrupt, "class name #" + std::to_string(i) + " is empty");
      names[i].resize(len);
      in.ReadBytes(names[i].data(), len);
      classes[i] = UtSerializeFind(names[i]);
      // Whether the class makes records is asked once per class, not once per record.
      if (classes[i] && classes[i]->factory) {
        const std::unique_ptr<UtObject> probe(classes[i]->factory());
        isRecord[i] = dynamic_cast<DbBase*>(probe.get()) != nullptr;
      }
    }
    // Every record takes at least three bytes (id step, class, length).
    in.CheckCount(count, 3);
    if (count >= nextId) {
      return Fail(DbErr::Corrupt, "the file holds " + std::to_string(count) + " records but its ids end at " +
                                      std::to_string(nextId - 1));
    }
    table = std::make_unique<Table>(Detail::RecordTable::DenseFits(nextId, count));
    table->Reserve(nextId, count);

    UtArchive payload(UtArchive::Load);
    arenaGuard.Begin();
    for (std::uint64_t r = 0; r < count; ++r) {
      const std::uint64_t step = in.ReadCount();
      if (step == 0 || step >= nextId - currentId) {
        discard();
        return Fail(DbErr::Corrupt, "record #" + std::to_string(r) + " after " + Describe(currentId, currentClass) +
                                        " has an id out of order or out of range");
      }
      currentId += step;
      const std::uint64_t cls = in.ReadCount();
      const std::uint64_t length = in.ReadCount();
      currentClass = cls < classCount ? names[cls].c_str() : nullptr;
      if (cls >= classCount) {
        discard();
        return Fail(DbErr::Corrupt, "record " + std::to_string(currentId) + " refers to class #" + std::to_string(cls) +
                                        " but the file names only " + std::to_string(classCount) + " classes");
      }
      if (length > in.GetRemaining()) {
        discard();
        return Fail(DbErr::Corrupt, Describe(currentId, currentClass) + " claims " + std::to_string(length) +
                                        " bytes but only " + std::to_string(in.GetRemaining()) + " remain");
      }
      if (!classes[cls]) {
        discard();
        return Fail(DbErr::UnknownClass, Describe(currentId, currentClass) +
                                             ": this library does not know the class (is the file from a newer "
                                             "version, or a library that is not loaded?)");
      }
      if (!isRecord[cls]) {
        discard();
        return Fail(DbErr::BadRecord, Describe(currentId, currentClass) + ": the class is not a record class");
      }
      auto* ent = static_cast<DbBase*>(classes[cls]->factory());
      if (arenaGuard.arena->IsLast(ent)) ent->m_refs |= DbBase::kFromArena;
      ent->m_mgr = this;
      ent->m_id = static_cast<std::uint32_t>(currentId);
      table->Append(static_cast<std::uint32_t>(currentId), ent);
      payload.Reset(std::span<const std::uint8_t>(p + in.GetPosition(), static_cast<std::size_t>(length)));
      in.Skip(static_cast<std::size_t>(length));
      ent->Serialize(payload);
      if (payload.GetRemaining() != 0) {
        discard();
        return Fail(DbErr::BadRecord, Describe(currentId, currentClass) + ": its payload is " + std::to_string(length) +
                                          " bytes but the class read only " + std::to_string(payload.GetPosition()));
      }
      ++loaded;
    }
    if (in.GetRemaining() != 0) {
      discard();
      return Fail(DbErr::Corrupt, std::to_string(in.GetRemaining()) + " unexpected bytes after the last record");
    }
    // Commit: the loaded records replace the manager's contents.
    Clear();
    m_table = std::move(table);
    SyncLookup();
    m_count = loaded;
    m_nextId = static_cast<std::uint32_t>(nextId);
  } catch (const UtArchiveException& e) {
    discard();
    const std::string where = currentId ? Describe(currentId, currentClass) : std::string("the file header");
    if (e.m_cause == UtArchiveException::badSchema) {
      // A record from a newer library: the caller of Read gets the archive's version error.
      m_lastError = where + ": " + e.what();
      throw UtArchiveException(UtArchiveException::badSchema, m_lastError);
    }
    return Fail(currentId ? DbErr::BadRecord : DbErr::Corrupt, where + " does not read back: " + e.what());
  } catch (const std::bad_alloc&) {
    discard();
    return Fail(DbErr::Corrupt, "out of memory while loading " + Describe(currentId, currentClass));
  } catch (const std::exception& e) {
    discard();
    return Fail(DbErr::BadRecord, Describe(currentId, currentClass) + " does not read back: " + e.what());
  } catch (...) {
    discard();
    return Fail(DbErr::BadRecord, Describe(currentId, currentClass) + " does not read back");
  }
  m_readOnly = readOnly;
  m_modified = false;
  m_lastError.clear();
  m_table->ForEach([](std::uint32_t, DbBase* ent) { ent->LoadPostProcess(); });
  return DbErr::Ok;
}

}  // namespace Quarp
