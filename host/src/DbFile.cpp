// The IOF database file: DbMgr::Write and DbMgr::Read. The format is described byte by
// byte in docs/FORMAT.md; this file is its only implementation.
#include "DbMgrTable.h"
#include "LoadInput.h"
#include "RecordArena.h"
#include "SpareBuffer.h"

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
#include <optional>
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

// Collects the file's bytes in a storing archive, block by block, and hashes them: for
// a file, each block is written to the descriptor, so that a big database is never held
// twice in memory; in memory (fd < 0), each is appended to the bytes handed over at the
// end. Records serialise straight into the archive, framed in place.
class Sink {
 public:
  explicit Sink(int fd) : m_fd(fd), m_state(XXH3_createState()) {
    if (!m_state) throw std::bad_alloc();
    XXH3_64bits_reset(m_state);
    if (std::optional<std::vector<std::uint8_t>> spare = s_spare.Take()) m_ar.Adopt(std::move(*spare));
    m_ar.Reserve(kBlock + kSlack);
  }
  ~Sink() {
    XXH3_freeState(m_state);
    std::vector<std::uint8_t> buffer = m_ar.TakeBytes();
    if (buffer.capacity() <= kBlock + kSlack) s_spare.Give(std::move(buffer));
  }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  UtArchive& Archive() noexcept { return m_ar; }

  // Passes on what is stored once it is a block. False on a write error.
  bool MaybeFlush() { return m_ar.StoredSize() < kBlock || Flush(); }
  // Appends the checksum and writes out what remains (files) or hands all the bytes over
  // (memory). False on a write error.
  bool Finish(std::vector<std::uint8_t>* memory) {
    XXH3_64bits_update(m_state, m_ar.StoredData(), m_ar.StoredSize());
    const std::uint64_t sum = XXH3_64bits_digest(m_state);
    m_ar.WriteRaw(sum);
    if (!Pass(m_ar.StoredData(), m_ar.StoredSize())) return false;
    if (memory) memory->swap(m_memory);
    return true;
  }
  int Errno() const noexcept { return m_errno; }

 private:
  // The buffer is sized once, to a block and the slack for the record that crosses it,
  // instead of doubling its way up (each step zero-filled, copied and faulted in anew on
  // every save), and kept for the next save. Small enough to stay in cache; large
  // enough that the writes are few (with 64 KB, the extra writes cost a 10M-move save
  // more than the buffer saved). Only a record larger than the slack grows it.
  static constexpr std::size_t kBlock = 128u << 10;
  static constexpr std::size_t kSlack = 16u << 10;
  // Only a buffer of the usual size is kept, not one grown for a large record.
  static inline Detail::SpareBuffer<std::vector<std::uint8_t>> s_spare;
  bool Flush() {
    XXH3_64bits_update(m_state, m_ar.StoredData(), m_ar.StoredSize());
    const bool ok = Pass(m_ar.StoredData(), m_ar.StoredSize());
    m_ar.DropStored(m_ar.StoredSize());
    return ok;
  }
  bool Pass(const std::uint8_t* p, std::size_t n) {
    if (m_fd >= 0) return WriteAll(p, n);
    Detail::GrowFaultedIn(m_memory, m_memory.size() + n);  // no zero-filling first
    m_memory.insert(m_memory.end(), p, p + n);
    return true;
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
  std::vector<std::uint8_t> m_memory;
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
  struct Closer {
    int fd;
    ~Closer() { ::close(fd); }
  } closer{fd};
  struct stat st {};
  if (::fstat(fd, &st) != 0) {
    return Fail(DbErr::Io, "cannot read '" + path + "': " + std::strerror(errno));
  }
  if (S_ISDIR(st.st_mode)) return Fail(DbErr::Io, "cannot read '" + path + "': it is a directory, not an IOF file");
  if (!S_ISREG(st.st_mode)) return Fail(DbErr::Io, "cannot read '" + path + "': it is not a regular file");
  Detail::LoadInput input(fd, static_cast<std::size_t>(st.st_size));
  const DbErr err = Load(input, readOnly);
  if (err != DbErr::Ok) m_lastError = "cannot read '" + path + "': " + m_lastError;
  return err;
}

DbErr DbMgr::ReadFromMemory(std::span<const std::uint8_t> bytes, bool readOnly) {
  Detail::LoadInput input(bytes);
  return Load(input, readOnly);
}

namespace {

// Decodes a compact integer of a record's frame from [p, end); false when the bytes end
// inside it or it does not fit in 64 bits (`malformed`).
bool DecodeCount(const std::uint8_t*& p, const std::uint8_t* end, std::uint64_t& v, bool& malformed) noexcept {
  v = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    if (p == end) return false;
    const std::uint8_t b = *p++;
    if (shift == 63 && b > 1) break;
    v |= static_cast<std::uint64_t>(b & 0x7F) << shift;
    if (!(b & 0x80)) return true;
  }
  malformed = true;
  return false;
}

// Thrown when the file could not be read to its end (LoadInput says why).
struct InputEnded {};

// Why a load failed, kept until the checksum says whether the bytes were what the
// writer wrote.
struct LoadFailure {
  DbErr err = DbErr::Ok;
  std::string text;
  bool newerClass = false;  // a class version newer than this library: rethrown as such
  explicit operator bool() const noexcept { return err != DbErr::Ok || newerClass; }
};

}  // namespace

DbErr DbMgr::Load(Detail::LoadInput& in, bool readOnly) {
  const std::size_t size = in.Size();
  if (!in.Usable()) return Fail(DbErr::Io, "not enough memory to read " + std::to_string(size) + " bytes");
  auto inputFailure = [&] {
    if (in.EndedEarly()) {
      return Fail(DbErr::Corrupt,
                  "the file is truncated: it ended while it was read (" + std::to_string(size) + " bytes expected)");
    }
    return Fail(DbErr::Io, std::strerror(in.ReadErrno()));
  };
  if (size == 0) return Fail(DbErr::NotAnIofFile, "the file is empty");
  // What the first bytes and the size say comes before the checksum.
  if (!in.Ensure(std::min(size, kHeaderSize))) return inputFailure();
  const std::uint8_t* head = in.Data();
  if (size < sizeof kMagic || std::memcmp(head, kMagic, sizeof kMagic) != 0) {
    return Fail(DbErr::NotAnIofFile, "not an IOF file (it does not start with the IOF magic number)");
  }
  if (size < kHeaderSize + kTrailerSize) {
    return Fail(DbErr::Corrupt, "the file is truncated: " + std::to_string(size) +
                                    " bytes is shorter than the smallest IOF file (" +
                                    std::to_string(kHeaderSize + kTrailerSize) + " bytes)");
  }
  std::uint32_t version = 0;
  std::memcpy(&version, head + 8, 4);
  if (version > kFormatVersion) {
    return Fail(DbErr::NewerFormat, "the file uses IOF file format version " + std::to_string(version) +
                                        "; this library reads versions up to " + std::to_string(kFormatVersion));
  }

  // Where the whole input is at hand at once (in memory, or a file of one window), the
  // checksum is checked first: a damaged file then costs one hash, not a load.
  std::uint64_t stored = 0, computed = 0;
  bool checked = false;
  auto damaged = [&] {
    return Fail(DbErr::Corrupt, "checksum mismatch: the file is damaged or truncated (stored " + Hex(stored) +
                                    ", computed " + Hex(computed) + ")");
  };
  if (!in.FinishAhead(checked, stored, computed)) return inputFailure();
  if (checked && stored != computed) return damaged();

  // The records are built as the bytes come in, into a new table that becomes the
  // manager's only when the whole file checked out. Any failure on the way is kept until
  // the checksum is known: a damaged file is reported as damaged, whatever it broke.
  LoadFailure failure;
  // The records built below come from one arena (see RecordArena.h), from the moment
  // the guard begins; it ends that on every way out of this function.
  struct ArenaGuard {
    Detail::RecordArena* arena;
    void Begin() { Detail::RecordArena::SetCurrent(arena); }
    void End() { Detail::RecordArena::SetCurrent(nullptr); }
    ~ArenaGuard() {
      End();
      arena->Release();
    }
  } arenaGuard{new Detail::RecordArena(this, size)};
  std::unique_ptr<Table> table;
  std::size_t loaded = 0;
  // Records built so far belong to `table` until it is committed; on failure they go.
  auto discard = [&]() {
    if (table) table->ForEach([](std::uint32_t, DbBase* ent) { delete ent; });
    table.reset();
  };
  auto fail = [&](DbErr err, std::string text) {
    discard();
    failure.err = err;
    failure.text = std::move(text);
  };

  std::uint64_t nextId = 0;
  std::uint64_t currentId = 0;
  const char* currentClass = nullptr;  // points into `names`, which outlives the handlers below
  std::vector<std::string> names;
  // Throws the archive's tooLarge error unless `count` items of at least `each` bytes fit
  // in what remains of the body.
  auto checkCount = [&](std::uint64_t count, std::size_t each) {
    if (count > in.BodyRemaining() / each) {
      UtArchive::ThrowTooLarge(count, each, in.Position(), in.BodyRemaining());
    }
  };
  // Reads n raw bytes of the body.
  auto readRaw = [&](void* out, std::size_t n) {
    if (n > in.BodyRemaining()) UtArchive::ThrowEndOfFile(n, in.Position(), in.BodyRemaining());
    if (!in.Ensure(n)) throw InputEnded{};
    std::memcpy(out, in.Data(), n);
    in.Consume(n);
  };
  auto readU32 = [&] {
    std::uint32_t v = 0;
    readRaw(&v, sizeof v);
    return v;
  };
  auto readU64 = [&] {
    std::uint64_t v = 0;
    readRaw(&v, sizeof v);
    return v;
  };
  try {
    in.Consume(12);  // magic and version, checked above
    const std::uint32_t flags = readU32();
    const std::uint64_t count = readU64();
    nextId = readU64();
    const std::uint32_t classCount = readU32();
    if (version == 0) {
      fail(DbErr::Corrupt, "the file declares format version 0, which does not exist");
    } else if (flags != 0) {
      fail(DbErr::NewerFormat, "the file uses format features this library does not know (flags " + Hex(flags) + ")");
    } else if (nextId == 0 || nextId > kMaxId + 1) {
      fail(DbErr::Corrupt, "the file's next record id " + std::to_string(nextId) + " is out of range");
    }
    if (!failure) checkCount(classCount, 2);
    std::vector<const UtSerializeClass*> classes;
    std::vector<bool> isRecord;
    if (!failure) names.reserve(classCount);
    for (std::uint32_t i = 0; i < classCount && !failure; ++i) {
      std::uint8_t len = 0;
      readRaw(&len, 1);
      if (len == 0) {
        fail(DbErr::Corrupt, "class name #" + std::to_string(i) + " is empty");
        break;
      }
      std::string& name = names.emplace_back(len, '\0');
      readRaw(name.data(), len);
      const UtSerializeClass* cls = UtSerializeFind(name);
      classes.push_back(cls);
      // Whether the class makes records is asked once per class, not once per record.
      bool record = false;
      if (cls && cls->factory) {
        const std::unique_ptr<UtObject> probe(cls->factory());
        record = dynamic_cast<DbBase*>(probe.get()) != nullptr;
      }
      isRecord.push_back(record);
    }
    if (!failure) {
      // Every record takes at least three bytes (id step, class, length).
      checkCount(count, 3);
      if (count >= nextId) {
        fail(DbErr::Corrupt,
             "the file holds " + std::to_string(count) + " records but its ids end at " + std::to_string(nextId - 1));
      }
    }
    if (!failure) {
      table = std::make_unique<Table>(Detail::RecordTable::DenseFits(nextId, count));
      table->Reserve(nextId, count);
    }

    UtArchive payload(UtArchive::Load);
    arenaGuard.Begin();
    for (std::uint64_t r = 0; r < count && !failure; ++r) {
      // The frame: three compact integers of at most ten bytes each.
      if (!in.Ensure(std::min<std::size_t>(3 * UtArchive::kMaxCountBytes, in.BodyRemaining()))) {
        throw InputEnded{};
      }
      const std::uint8_t* const frame = in.Data();
      const std::uint8_t* p = frame;
      const std::uint8_t* const frameEnd = frame + std::min(in.Available(), in.BodyRemaining());
      std::uint64_t step = 0, cls = 0, length = 0;
      bool malformed = false;
      if (!DecodeCount(p, frameEnd, step, malformed) || !DecodeCount(p, frameEnd, cls, malformed) ||
          !DecodeCount(p, frameEnd, length, malformed)) {
        const std::size_t at = in.Position() + static_cast<std::size_t>(p - frame);
        if (malformed) {
          throw UtArchiveException(UtArchiveException::generic,
                                   "malformed compact integer at offset " + std::to_string(at));
        }
        UtArchive::ThrowEndOfFile(1, at, 0);
      }
      if (step == 0 || step >= nextId - currentId) {
        fail(DbErr::Corrupt, "record #" + std::to_string(r) + " after " + Describe(currentId, currentClass) +
                                 " has an id out of order or out of range");
        break;
      }
      currentId += step;
      in.Consume(static_cast<std::size_t>(p - frame));
      currentClass = cls < names.size() ? names[cls].c_str() : nullptr;
      if (cls >= names.size()) {
        fail(DbErr::Corrupt, "record " + std::to_string(currentId) + " refers to class #" + std::to_string(cls) +
                                 " but the file names only " + std::to_string(names.size()) + " classes");
        break;
      }
      if (length > in.BodyRemaining()) {
        fail(DbErr::Corrupt, Describe(currentId, currentClass) + " claims " + std::to_string(length) +
                                 " bytes but only " + std::to_string(in.BodyRemaining()) + " remain");
        break;
      }
      if (!classes[cls]) {
        fail(DbErr::UnknownClass, Describe(currentId, currentClass) +
                                      ": this library does not know the class (is the file from a newer "
                                      "version, or a library that is not loaded?)");
        break;
      }
      if (!isRecord[cls]) {
        fail(DbErr::BadRecord, Describe(currentId, currentClass) + ": the class is not a record class");
        break;
      }
      if (!in.Ensure(static_cast<std::size_t>(length))) throw InputEnded{};
      auto* ent = static_cast<DbBase*>(classes[cls]->factory());
      if (arenaGuard.arena->IsLast(ent)) ent->m_refs |= DbBase::kFromArena;
      ent->SetOwner(this);
      ent->m_id = static_cast<std::uint32_t>(currentId);
      table->Append(static_cast<std::uint32_t>(currentId), ent);
      payload.Reset(std::span<const std::uint8_t>(in.Data(), static_cast<std::size_t>(length)));
      in.Consume(static_cast<std::size_t>(length));
      ent->Serialize(payload);
      if (payload.GetRemaining() != 0) {
        fail(DbErr::BadRecord, Describe(currentId, currentClass) + ": its payload is " + std::to_string(length) +
                                   " bytes but the class read only " + std::to_string(payload.GetPosition()));
        break;
      }
      ++loaded;
    }
    arenaGuard.End();
    if (!failure && in.BodyRemaining() != 0) {
      fail(DbErr::Corrupt, std::to_string(in.BodyRemaining()) + " unexpected bytes after the last record");
    }
  } catch (const InputEnded&) {
    discard();
    return inputFailure();
  } catch (const UtArchiveException& e) {
    const std::string where = currentId ? Describe(currentId, currentClass) : std::string("the file header");
    if (e.m_cause == UtArchiveException::badSchema) {
      fail(DbErr::BadRecord, where + ": " + e.what());
      failure.newerClass = true;
    } else {
      fail(currentId ? DbErr::BadRecord : DbErr::Corrupt, where + " does not read back: " + e.what());
    }
  } catch (const std::bad_alloc&) {
    fail(DbErr::Corrupt, "out of memory while loading " + Describe(currentId, currentClass));
  } catch (const std::exception& e) {
    fail(DbErr::BadRecord, Describe(currentId, currentClass) + " does not read back: " + e.what());
  } catch (...) {
    fail(DbErr::BadRecord, Describe(currentId, currentClass) + " does not read back");
  }
  arenaGuard.End();

  // The checksum decides: a damaged file is reported as such before anything it broke.
  if (!in.Finish(stored, computed)) {
    discard();
    return inputFailure();
  }
  if (stored != computed) {
    discard();
    return damaged();
  }
  if (failure.newerClass) {
    // A record from a newer library: the caller of Read gets the archive's version error.
    m_lastError = failure.text;
    throw UtArchiveException(UtArchiveException::badSchema, m_lastError);
  }
  if (failure) return Fail(failure.err, failure.text);

  // Commit: the loaded records replace the manager's contents.
  Clear();
  m_table = std::move(table);
  SyncLookup();
  m_count = loaded;
  m_nextId = static_cast<std::uint32_t>(nextId);
  m_readOnly = readOnly;
  m_modified = false;
  m_lastError.clear();
  m_table->ForEach([](std::uint32_t, DbBase* ent) { ent->LoadPostProcess(); });
  return DbErr::Ok;
}

}  // namespace Quarp
