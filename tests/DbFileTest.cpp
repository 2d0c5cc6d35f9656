// The database file: exact bytes, round trips, and every kind of bad input. A failed
// Read leaves the manager as it was; a failed Write leaves the old file as it was.
#include "TestSupport.h"

#include <gtest/gtest.h>
#include <xxhash.h>

#include <cstring>
#include <filesystem>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::TestRecord;
using TestSupport::TestRecordChild;
using TestSupport::ToHex;

namespace {

void PutCount(Bytes& out, std::uint64_t v) {
  while (v >= 0x80) {
    out.push_back(static_cast<std::uint8_t>(v | 0x80));
    v >>= 7;
  }
  out.push_back(static_cast<std::uint8_t>(v));
}
template <class T>
void PutRaw(Bytes& out, T v) {
  const auto* p = reinterpret_cast<const std::uint8_t*>(&v);
  out.insert(out.end(), p, p + sizeof v);
}

struct Frame {
  std::uint64_t idStep;
  std::uint64_t classIndex;
  Bytes payload;
  std::optional<std::uint64_t> length = std::nullopt;  // a lie about the payload length
};

// Builds a file image by hand, so that tests can forge files the library never writes.
Bytes BuildFile(const std::vector<std::string>& classes, const std::vector<Frame>& frames, std::uint64_t nextId,
                std::optional<std::uint64_t> count = std::nullopt, std::uint32_t version = 1, std::uint32_t flags = 0) {
  Bytes f = Hex("89 49 4F 46 0D 0A 1A 0A");
  PutRaw<std::uint32_t>(f, version);
  PutRaw<std::uint32_t>(f, flags);
  PutRaw<std::uint64_t>(f, count.value_or(frames.size()));
  PutRaw<std::uint64_t>(f, nextId);
  PutRaw<std::uint32_t>(f, static_cast<std::uint32_t>(classes.size()));
  for (const std::string& c : classes) {
    f.push_back(static_cast<std::uint8_t>(c.size()));
    f.insert(f.end(), c.begin(), c.end());
  }
  for (const Frame& fr : frames) {
    PutCount(f, fr.idStep);
    PutCount(f, fr.classIndex);
    PutCount(f, fr.length.value_or(fr.payload.size()));
    f.insert(f.end(), fr.payload.begin(), fr.payload.end());
  }
  PutRaw<std::uint64_t>(f, 0);
  TestSupport::Reseal(f);
  return f;
}

const Bytes kRecord42AB = Hex("01 2A 00 00 00 02 00 00 00 41 00 42 00");  // TestRecord(42, "AB")

// A manager holding one record, to check that failed loads leave it alone.
struct Populated {
  Quarp::DbMgr mgr;
  Populated() {
    auto rec = TestRecord::Create(1234, L"before");
    mgr.Add(rec);
  }
  bool Unchanged() const {
    Quarp::DbCPtr<TestRecord> p;
    return mgr.GetCount() == 1 && mgr.Get(p, Quarp::DbId(1), 0) && p->m_Value == 1234;
  }
};

// `err` is `expected`, and the manager's last error text contains `fragment`.
void ExpectError(const Quarp::DbMgr& mgr, Quarp::DbErr err, Quarp::DbErr expected, const std::string& fragment) {
  EXPECT_EQ(err, expected) << mgr.GetLastErrorText();
  EXPECT_NE(mgr.GetLastErrorText().find(fragment), std::string::npos) << mgr.GetLastErrorText();
}

TEST(DbFile, ExactBytesOfASmallDatabase) {
  Quarp::DbMgr mgr;
  auto a = TestRecord::Create(42, L"AB");
  auto b = TestRecordChild::Create();
  b->m_Extra = 0.5;
  mgr.Add(a);
  mgr.Add(b);
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok);

  const Bytes body =
      Hex("89 49 4F 46 0D 0A 1A 0A"                                           // magic
          "01 00 00 00"                                                       // format version
          "00 00 00 00"                                                       // flags
          "02 00 00 00 00 00 00 00"                                           // records
          "03 00 00 00 00 00 00 00"                                           // next id
          "02 00 00 00"                                                       // classes
          "0A 54 65 73 74 52 65 63 6F 72 64"                                  // "TestRecord"
          "0F 54 65 73 74 52 65 63 6F 72 64 43 68 69 6C 64"                   // "TestRecordChild"
          "01 00 0D 01 2A 00 00 00 02 00 00 00 41 00 42 00"                   // id +1, class 0, 13 bytes
          "01 01 12 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 E0 3F");  // id +1, class 1, 18 bytes
  ASSERT_EQ(file.size(), body.size() + 8);
  EXPECT_EQ(ToHex(Bytes(file.begin(), file.end() - 8)), ToHex(body));
  const std::uint64_t sum = XXH3_64bits(body.data(), body.size());
  EXPECT_EQ(std::memcmp(file.data() + body.size(), &sum, 8), 0);
  // BuildFile forges the same image, and that of an empty manager.
  EXPECT_EQ(file,
            BuildFile({"TestRecord", "TestRecordChild"},
                      {{1, 0, kRecord42AB}, {1, 1, Hex("00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 E0 3F")}}, 3));
  Quarp::DbMgr empty;
  ASSERT_EQ(empty.WriteToMemory(file), Quarp::DbErr::Ok);
  EXPECT_EQ(file, BuildFile({}, {}, 1));
}

// Ids far apart load without a table as large as the ids, and a round trip through a
// file keeps the ids, the values and the next id, and leaves removed records out.
TEST(DbFile, RoundTripThroughAFileKeepsSparseIdsAndValues) {
  const Bytes file = BuildFile({"TestRecord"}, {{5, 0, kRecord42AB}, {1999999995, 0, kRecord42AB}}, 3000000000ull);
  Quarp::DbMgr mgr;
  ASSERT_EQ(mgr.ReadFromMemory(file), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  Quarp::DbCPtr<TestRecord> p;
  EXPECT_FALSE(mgr.Get(p, Quarp::DbId(6), 0));
  Quarp::DbId at(5);
  Quarp::DbBasePtr walker;
  ASSERT_TRUE(mgr.GetNext(walker, at, 0));
  EXPECT_EQ(at, Quarp::DbId(2000000000));
  auto child = TestRecordChild::Create();
  child->m_Extra = -1.25;
  EXPECT_EQ(mgr.Add(child), Quarp::DbId(3000000000ull));
  ASSERT_TRUE(mgr.Remove(Quarp::DbId(5)));
  const std::string path = TestSupport::TempPath("job.iof");
  ASSERT_EQ(mgr.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  EXPECT_FALSE(mgr.IsModified());

  Quarp::DbMgr back;
  ASSERT_EQ(back.Read(Quarp::UtString(path.c_str()), false), Quarp::DbErr::Ok) << back.GetLastErrorText();
  EXPECT_TRUE(back.GetLastErrorText().empty());
  EXPECT_EQ(back.GetCount(), 2u);
  EXPECT_FALSE(back.Get(p, Quarp::DbId(5), 0));
  ASSERT_TRUE(back.Get(p, Quarp::DbId(2000000000), 0));
  EXPECT_EQ(p->m_Value, 42);
  EXPECT_EQ(p->m_Name, L"AB");
  Quarp::DbCPtr<TestRecordChild> c;
  ASSERT_TRUE(back.Get(c, Quarp::DbId(3000000000ull), 0));
  EXPECT_EQ(c->m_Extra, -1.25);
  auto more = TestRecord::Create();
  EXPECT_EQ(back.Add(more), Quarp::DbId(3000000001ull));
}

struct BadFile {
  const char* what;
  Bytes bytes;
  Quarp::DbErr err;
  const char* message;  // part of GetLastErrorText()
};

TEST(DbFile, BadInputEndsInAnErrorThatSaysWhatIsWrong) {
  const Bytes good = BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}}, 2);
  Bytes wrongMagic = good;
  wrongMagic[1] = 'X';
  Bytes truncated(good.begin(), good.end() - 3);
  Bytes flipped = good;
  flipped[40] ^= 0x10;
  Bytes longPayload = kRecord42AB;
  longPayload.push_back(0);
  const Bytes shortPayload(kRecord42AB.begin(), kRecord42AB.end() - 2);
  Bytes trailing = good;
  trailing.insert(trailing.end() - 8, 0x00);
  TestSupport::Reseal(trailing);

  const std::vector<BadFile> cases = {
      {"empty", {}, Quarp::DbErr::NotAnIofFile, "empty"},
      {"wrong magic", wrongMagic, Quarp::DbErr::NotAnIofFile, "magic"},
      {"text file", Hex("68 65 6C 6C 6F 0A"), Quarp::DbErr::NotAnIofFile, "not an IOF file"},
      {"only the magic", Hex("89 49 4F 46 0D 0A 1A 0A"), Quarp::DbErr::Corrupt, "truncated"},
      {"newer format", BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}}, 2, std::nullopt, 2), Quarp::DbErr::NewerFormat,
       "version 2"},
      {"unknown flags", BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}}, 2, std::nullopt, 1, 4),
       Quarp::DbErr::NewerFormat, "flags"},
      {"truncated", truncated, Quarp::DbErr::Corrupt, "checksum"},
      {"flipped bit", flipped, Quarp::DbErr::Corrupt, "checksum mismatch"},
      {"unknown class", BuildFile({"NoSuchClass"}, {{1, 0, kRecord42AB}}, 2), Quarp::DbErr::UnknownClass,
       "record 1 (NoSuchClass)"},
      {"payload longer than the class reads", BuildFile({"TestRecord"}, {{1, 0, longPayload}}, 2),
       Quarp::DbErr::BadRecord, "record 1 (TestRecord): its payload is 14 bytes but the class read only 13"},
      {"payload shorter than the class reads", BuildFile({"TestRecord"}, {{1, 0, shortPayload}}, 2),
       Quarp::DbErr::BadRecord, "record 1 (TestRecord) does not read back"},
      {"payload length beyond the file", BuildFile({"TestRecord"}, {{1, 0, kRecord42AB, 5000}}, 2),
       Quarp::DbErr::Corrupt, "record 1 (TestRecord) claims 5000 bytes"},
      {"record count beyond the file", BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}}, 2, 1000000000000ull),
       Quarp::DbErr::Corrupt, "larger than the"},
      {"class count beyond the file",
       [] {
         Bytes b = BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}}, 2);
         b[32] = 0xFF;
         b[33] = 0xFF;
         b[34] = 0xFF;
         TestSupport::Reseal(b);
         return b;
       }(),
       Quarp::DbErr::Corrupt, "larger than the"},
      {"id step of zero", BuildFile({"TestRecord"}, {{1, 0, kRecord42AB}, {0, 0, kRecord42AB}}, 3),
       Quarp::DbErr::Corrupt, "out of order"},
      {"id at or beyond the next id", BuildFile({"TestRecord"}, {{2, 0, kRecord42AB}}, 2), Quarp::DbErr::Corrupt,
       "out of range"},
      {"class index out of range", BuildFile({"TestRecord"}, {{1, 3, kRecord42AB}}, 2), Quarp::DbErr::Corrupt,
       "refers to class #3"},
      {"bytes after the last record", trailing, Quarp::DbErr::Corrupt, "unexpected bytes"},
      {"next id of zero", BuildFile({"TestRecord"}, {}, 0), Quarp::DbErr::Corrupt, "next record id"},
  };
  for (const BadFile& c : cases) {
    Populated target;
    SCOPED_TRACE(c.what);
    ExpectError(target.mgr, target.mgr.ReadFromMemory(c.bytes), c.err, c.message);
    EXPECT_TRUE(target.Unchanged()) << c.what;
  }
}

TEST(DbFile, FilesThatCannotBeReadGiveAnError) {
  Quarp::DbMgr mgr;
  const std::string missing = TestSupport::TempPath("missing.iof");
  ExpectError(mgr, mgr.Read(Quarp::UtString(missing.c_str()), false), Quarp::DbErr::NotFound, "missing.iof");

  const std::string dir = TestSupport::TempPath("a-directory");
  std::filesystem::create_directories(dir);
  ExpectError(mgr, mgr.Read(Quarp::UtString(dir.c_str()), false), Quarp::DbErr::Io, "directory");

  const std::string fifo = TestSupport::TempPath("a-fifo");
  ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
  ExpectError(mgr, mgr.Read(Quarp::UtString(fifo.c_str()), false), Quarp::DbErr::Io, "not a regular file");

  const std::string empty = TestSupport::TempPath("empty.iof");
  TestSupport::WriteFile(empty, {});
  ExpectError(mgr, mgr.Read(Quarp::UtString(empty.c_str()), false), Quarp::DbErr::NotAnIofFile, "empty.iof");
}

TEST(DbFile, ReadOnlyManagersRefuseChanges) {
  Quarp::DbMgr source;
  auto rec = TestRecord::Create(3);
  source.Add(rec);
  Bytes file;
  ASSERT_EQ(source.WriteToMemory(file), Quarp::DbErr::Ok);

  Quarp::DbMgr mgr;
  ASSERT_EQ(mgr.ReadFromMemory(file, true), Quarp::DbErr::Ok);
  EXPECT_TRUE(mgr.IsReadOnly());
  auto more = TestRecord::Create();
  EXPECT_TRUE(mgr.Add(more).IsNull());
  EXPECT_EQ(more.GetErr(), Quarp::DbErr::ReadOnly);
  EXPECT_FALSE(mgr.Remove(Quarp::DbId(1)));
  EXPECT_EQ(mgr.GetCount(), 1u);
  ASSERT_EQ(mgr.ReadFromMemory(file, false), Quarp::DbErr::Ok);
  EXPECT_FALSE(mgr.IsReadOnly());
}

// Loaded records come in bulk from an arena of the load; each must still live and die on
// its own: removed early, kept by a pointer after its manager is gone, or replaced by
// the next load (the sanitizer build checks that nothing leaks or is used after free).
// A record does not keep its manager: one allocated on its own has it beside it, a
// loaded one from its load's arena, or (added later to another manager) from what the
// arena keeps aside.
TEST(DbFile, LoadedRecordsLiveAndDieOneByOne) {
  Quarp::DbMgr source;
  for (int i = 0; i < 5000; ++i) {
    auto rec = TestRecord::Create(i, i % 3 ? L"" : L"named");
    source.Add(rec);
  }
  Bytes file;
  ASSERT_EQ(source.WriteToMemory(file), Quarp::DbErr::Ok);

  Quarp::DbCPtr<TestRecord> survivor, own;
  {
    Quarp::DbMgr mgr, other;
    ASSERT_EQ(mgr.ReadFromMemory(file), Quarp::DbErr::Ok);
    for (std::uint64_t id = 1; id <= 5000; id += 2) ASSERT_TRUE(mgr.Remove(Quarp::DbId(id)));
    Quarp::DbPtr<TestRecord> p;
    ASSERT_TRUE(mgr.Get(p, Quarp::DbId(2), 0));
    EXPECT_EQ(p->GetDbMgr(), &mgr);
    ASSERT_TRUE(mgr.Remove(Quarp::DbId(2)));
    EXPECT_EQ(p->GetDbMgr(), nullptr);
    EXPECT_EQ(other.Add(p), Quarp::DbId(1));
    EXPECT_EQ(p->GetDbMgr(), &other);
    auto fresh = TestRecord::Create(9);
    other.Add(fresh);
    EXPECT_EQ(fresh->GetDbMgr(), &other);
    ASSERT_TRUE(other.Remove(Quarp::DbId(1)));
    EXPECT_EQ(p->GetDbMgr(), nullptr);
    EXPECT_EQ(mgr.Add(p), Quarp::DbId(5001));
    EXPECT_EQ(p->GetDbMgr(), &mgr);
    EXPECT_EQ(p->m_Value, 1);

    ASSERT_TRUE(mgr.Get(survivor, Quarp::DbId(4000), 0));
    auto added = TestRecord::Create(-1);  // made one by one, beside the loaded ones
    mgr.Add(added);
    ASSERT_EQ(mgr.ReadFromMemory(file), Quarp::DbErr::Ok);  // replaces every record
    EXPECT_EQ(mgr.GetCount(), 5000u);
    own = fresh;  // outlives both managers
  }
  EXPECT_EQ(survivor->m_Value, 3999);
  EXPECT_EQ(survivor->m_Name, L"named");
  EXPECT_EQ(survivor->GetDbMgr(), nullptr);
  survivor.Detach();  // the last record of that load goes, and its arena with it
  EXPECT_EQ(own->m_Value, 9);
  EXPECT_EQ(own->GetDbMgr(), nullptr);
}

// The window a file is read through, and the buffer a save stores through, outlive the
// load or save, for the next one: loads and saves on several threads at once, of files
// larger than a window and each followed by another, never share one (a shared window
// would mix two files' bytes and fail the checksum; a shared buffer, the bytes saved).
TEST(DbFile, LoadsAndSavesOnSeveralThreadsAtOnceEachHaveTheirOwnBuffers) {
  std::vector<Bytes> files(3);
  std::vector<Quarp::UtString> names;
  for (std::size_t f = 0; f < files.size(); ++f) {
    Quarp::DbMgr source;
    for (int i = 0; i < 20000; ++i) {
      auto rec = TestRecord::Create(i * static_cast<int>(f + 1), L"a longer name");
      source.Add(rec);
    }
    ASSERT_EQ(source.WriteToMemory(files[f]), Quarp::DbErr::Ok);
    names.emplace_back(TestSupport::TempPath("t" + std::to_string(f)).c_str());
    TestSupport::WriteFile(names[f].ToUtf8(), files[f]);
  }
  std::vector<std::thread> threads;  // gtest's assertions are thread-safe where it has pthreads
  for (std::size_t t = 0; t < files.size(); ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t round = 0; round < 6; ++round) {
        const std::size_t f = (t + round) % files.size();
        Quarp::DbMgr mgr;
        Bytes saved;  // a load of other records would save other bytes
        EXPECT_TRUE(mgr.Read(names[f]) == Quarp::DbErr::Ok && mgr.WriteToMemory(saved) == Quarp::DbErr::Ok &&
                    saved == files[f])
            << "file " << f << ": " << mgr.GetLastErrorText();
      }
    });
  }
  for (std::thread& t : threads) t.join();
}

// A file is read block by block and its records are built as the blocks come in. A file
// far larger than a block that turns out damaged, or that holds a record from a newer
// library, deep inside it still leaves the manager as it was, and the damage is named
// before anything it broke; a record larger than a block is written and loads whole.
TEST(DbFile, AFileFailingDeepInsideLeavesTheManagerAsItWas) {
  Quarp::DbMgr source;
  for (int i = 0; i < 60000; ++i) {
    auto rec = TestRecord::Create(i, L"a name of some length");
    source.Add(rec);
  }
  auto big = TestRecord::Create(-7, std::wstring(300000, L'x').c_str());
  source.Add(big);
  Bytes good;
  ASSERT_EQ(source.WriteToMemory(good), Quarp::DbErr::Ok);
  const std::string path = TestSupport::TempPath("large.iof");
  const Quarp::UtString file(path.c_str());

  // Written to a file block by block, the record larger than a block included, the
  // bytes are those written to memory at once.
  ASSERT_EQ(source.Write(file), Quarp::DbErr::Ok) << source.GetLastErrorText();
  EXPECT_EQ(TestSupport::ReadFile<Bytes>(path), good);
  Quarp::DbMgr back;
  ASSERT_EQ(back.Read(file), Quarp::DbErr::Ok) << back.GetLastErrorText();
  Quarp::DbCPtr<TestRecord> p;
  ASSERT_TRUE(back.Get(p, Quarp::DbId(60001), 0));
  EXPECT_EQ(p->m_Name.GetLength(), 300000);

  // Record 50000 says it is of version 2: 47 header bytes, 54 bytes a record, the
  // version after a frame of three bytes.
  Bytes newer = good;
  newer[47 + 49999 * 54 + 3] = 2;
  TestSupport::WriteFile(path, newer);
  Populated damaged;
  ExpectError(damaged.mgr, damaged.mgr.Read(file), Quarp::DbErr::Corrupt, "checksum mismatch");
  EXPECT_TRUE(damaged.Unchanged());

  TestSupport::Reseal(newer);
  TestSupport::WriteFile(path, newer);
  Populated target;
  try {
    target.mgr.Read(file);
    ADD_FAILURE() << "expected the archive's version error";
  } catch (const Quarp::UtArchiveException& e) {
    EXPECT_EQ(e.m_cause, 2);
    EXPECT_NE(std::string(e.what()).find("record 50000 (TestRecord)"), std::string::npos) << e.what();
  }
  EXPECT_TRUE(target.Unchanged());
}

}  // namespace
