// The archive: the bytes of every field type and of the class version (the layouts of
// every version are in the record tests), polymorphic objects, and the refusal of data
// that is too short or claims too much.
#include "TestSupport.h"

#include <quarp/UtArrayEx.h>
#include <quarp/UtSArrayEx.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

enum class Color : std::int32_t { Red = 3 };

// Stores `value`, checks the bytes, and reads them back into `fresh`, which must then
// equal `value` with every byte read.
template <class T>
void ExpectEncoding(const T& value, const char* hex, T fresh = T{}) {
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  out << value;
  EXPECT_EQ(ToHex(out.GetBytes()), ToHex(Hex(hex))) << hex;
  Quarp::UtArchive in(Quarp::UtArchive::Load, out.GetBytes());
  in >> fresh;
  EXPECT_TRUE(fresh == value) << hex;
  EXPECT_EQ(in.GetRemaining(), 0u) << hex;
}

TEST(ArchiveEncoding, BytesOfEveryFieldTypeAndBack) {
  ExpectEncoding(true, "01");
  ExpectEncoding(false, "00", true);
  ExpectEncoding(std::int16_t{-2}, "FE FF");
  ExpectEncoding(std::int32_t{1}, "01 00 00 00");
  ExpectEncoding(0xDEADBEEFu, "EF BE AD DE");
  ExpectEncoding(std::int64_t{-1}, "FF FF FF FF FF FF FF FF");
  ExpectEncoding(std::uint64_t{0x0102030405060708ull}, "08 07 06 05 04 03 02 01");
  ExpectEncoding(1.0, "00 00 00 00 00 00 F0 3F");
  ExpectEncoding(-2.5, "00 00 00 00 00 00 04 C0");
  ExpectEncoding(Quarp::DbId(0x0102030405060708ull), "08 07 06 05 04 03 02 01");
  ExpectEncoding(Color::Red, "03 00 00 00");
  ExpectEncoding(CString(), "00 00 00 00", CString(L"not empty"));
  ExpectEncoding(CString(L"AB"), "02 00 00 00 41 00 42 00");
  ExpectEncoding(CString(L"\U0001F600"), "02 00 00 00 3D D8 00 DE");  // outside the BMP: a surrogate pair

  struct Case {
    const char* what;
    std::function<void(Quarp::UtArchive&)> store;
    const char* bytes;
  };
  const std::vector<Case> cases = {
      {"long is four bytes", [](auto& ar) { Quarp::WriteLong(ar, -2L); }, "FE FF FF FF"},
      {"version 0", [](auto& ar) { Quarp::UtSerializeVersion(ar, 0); }, "00"},
      {"version 9", [](auto& ar) { Quarp::UtSerializeVersion(ar, 9); }, "09"},
      {"version 200", [](auto& ar) { Quarp::UtSerializeVersion(ar, 200); }, "C8 01"},
      {"empty id array", [](auto& ar) { Quarp::UtSArrayEx<Quarp::DbId>().Serialize(ar); }, "00"},
      {"id array",
       [](auto& ar) {
         Quarp::UtSArrayEx<Quarp::DbId>{Quarp::DbId(5), Quarp::DbId(300)}.Serialize(ar);
       },
       "02 05 AC 02"},
      {"byte array",
       [](auto& ar) {
         Quarp::UtArrayEx<unsigned char> a;
         a.Add(1);
         a.Add(2);
         a.Serialize(ar);
       },
       "00 02 00 00 00 00 00 00 00 0A 00 00 00 00 00 00 00 01 02"},
  };
  for (const Case& c : cases) {
    Quarp::UtArchive ar(Quarp::UtArchive::Store);
    c.store(ar);
    EXPECT_EQ(ToHex(ar.GetBytes()), ToHex(Hex(c.bytes))) << c.what;
  }
  const Bytes longBytes = Hex("15 CD 5B 07");
  Quarp::UtArchive in(Quarp::UtArchive::Load, longBytes);
  EXPECT_EQ(Quarp::ReadLong(in), 123456789L);
}

TEST(ArchiveEncoding, StringWithLengthBelowOneIsEmptyAndReadsOnlyItsLength) {
  for (const char* bytes : {"00 00 00 00 41 00", "FF FF FF FF 41 00", "00 00 00 80 41 00"}) {
    const Bytes data = Hex(bytes);
    Quarp::UtArchive in(Quarp::UtArchive::Load, data);
    CString s(L"old");
    in >> s;
    EXPECT_TRUE(s.IsEmpty()) << bytes;
    EXPECT_EQ(in.GetPosition(), 4u) << bytes;
  }
}

TEST(ArchiveEncoding, ShortOverlongAndUnknownDataIsRefusedBeforeAllocating) {
  using E = Quarp::UtArchiveException;
  const auto readString = [](Quarp::UtArchive& ar) {
    CString s;
    ar >> s;
  };
  const auto readIds = [](Quarp::UtArchive& ar) { Quarp::UtSArrayEx<Quarp::DbId>().Serialize(ar); };
  const auto readBytes = [](Quarp::UtArchive& ar) { Quarp::UtArrayEx<unsigned char>().Serialize(ar); };
  const auto readCount = [](Quarp::UtArchive& ar) { ar.ReadCount(); };
  Quarp::UtObject* object = nullptr;
  const auto readObject = [&](Quarp::UtArchive& ar) { ar.ReadObject(object); };
  struct Case {
    const char* what;
    const char* bytes;
    std::function<void(Quarp::UtArchive&)> load;
    int cause;
  };
  const std::vector<Case> cases = {
      {"int32 from three bytes", "01 02 03", [](auto& ar) { ar.template ReadRaw<std::int32_t>(); }, E::endOfFile},
      {"string longer than the data", "05 00 00 00 41 00", readString, E::tooLarge},
      {"string claiming two billion units", "FF FF FF 7F", readString, E::tooLarge},
      {"id array claiming more ids than bytes", "FF FF FF FF 0F 01", readIds, E::tooLarge},
      {"byte array claiming more bytes than remain", "00 FF 00 00 00 00 00 00 00 0A 00 00 00 00 00 00 00 01", readBytes,
       E::tooLarge},
      {"unterminated compact integer", "80 80", readCount, E::endOfFile},
      {"compact integer beyond 64 bits", "FF FF FF FF FF FF FF FF FF 7F", readCount, E::generic},
      {"unknown class \"NoneX\"", "01 05 4E 6F 6E 65 58", readObject, E::badClass},
      {"tag of a class never named", "05", readObject, E::badIndex},
      {"empty class name", "01 00", readObject, E::badClass},
  };
  for (const Case& c : cases) {
    const Bytes data = Hex(c.bytes);
    Quarp::UtArchive in(Quarp::UtArchive::Load, data);
    try {
      c.load(in);
      ADD_FAILURE() << c.what << ": no exception";
    } catch (const Quarp::UtArchiveException& e) {
      EXPECT_EQ(e.m_cause, c.cause) << c.what << ": " << e.what();
    }
    EXPECT_EQ(object, nullptr) << c.what;
  }
}

TEST(ArchiveObjects, WriteObjectAndReadObjectCarryTheClass) {
  auto a = TestSupport::TestRecord::Create(1, L"a");
  auto b = TestSupport::TestRecordChild::Create();
  b->m_Value = 2;
  b->m_Extra = 0.5;
  auto c = TestSupport::TestRecord::Create(3, L"");

  Quarp::UtArchive out(Quarp::UtArchive::Store);
  out.WriteObject(a.Get());
  out.WriteObject(nullptr);
  out.WriteObject(b.Get());
  out.WriteObject(c.Get());
  const Bytes bytes = out.GetBytes();
  // The first object names its class; the fourth refers back to it by tag 2.
  EXPECT_EQ(ToHex(Bytes(bytes.begin(), bytes.begin() + 2)), "01 0A");
  const std::string head(bytes.begin() + 2, bytes.begin() + 12);
  EXPECT_EQ(head, "TestRecord");

  Quarp::UtArchive in(Quarp::UtArchive::Load, bytes);
  std::vector<std::unique_ptr<Quarp::UtObject>> objects;
  for (int i = 0; i < 4; ++i) {
    Quarp::UtObject* o = nullptr;
    in.ReadObject(o);
    objects.emplace_back(o);
  }
  EXPECT_EQ(in.GetRemaining(), 0u);
  ASSERT_NE(objects[0], nullptr);
  EXPECT_EQ(objects[1], nullptr);
  auto* ra = dynamic_cast<TestSupport::TestRecord*>(objects[0].get());
  auto* rb = dynamic_cast<TestSupport::TestRecordChild*>(objects[2].get());
  auto* rc = dynamic_cast<TestSupport::TestRecord*>(objects[3].get());
  ASSERT_TRUE(ra && rb && rc);
  EXPECT_EQ(ra->m_Name, L"a");
  EXPECT_EQ(rb->m_Value, 2);
  EXPECT_EQ(rb->m_Extra, 0.5);
  EXPECT_EQ(rc->m_Value, 3);
  EXPECT_STREQ(rc->GetObjectClassName(), "TestRecord");
}

// A writer that keeps its buffer from one archive to the next: the adopted buffer's old
// bytes and the classes named before it are forgotten, and its memory is stored into.
TEST(ArchiveObjects, AnAdoptedBufferStartsEmptyAndIsStoredIntoInPlace) {
  auto a = TestSupport::TestRecord::Create(1, L"a");
  Bytes buffer(100000, 0xEE);
  const std::uint8_t* memory = buffer.data();
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  out.WriteObject(a.Get());  // names the class, which the adoption forgets
  const Bytes alone = out.GetBytes();
  out.Adopt(std::move(buffer));
  out.WriteObject(a.Get());
  const Bytes stored = out.TakeBytes();
  EXPECT_EQ(ToHex(stored), ToHex(alone));
  EXPECT_EQ(stored.data(), memory);
}

TEST(ArchiveArrays, IdArrayRoundTripsAndOffersTheClassicInterface) {
  Quarp::UtSArrayEx<Quarp::DbId> ids(10);
  EXPECT_EQ(sizeof(ids), 2 * sizeof(void*));
  for (std::uint64_t i = 1; i <= 100; ++i) ids.Add(Quarp::DbId(i * 1000));
  ids.InsertAt(0, Quarp::DbId(1));
  ids.RemoveAt(50, 2);
  EXPECT_EQ(ids.GetSize(), 99);
  EXPECT_EQ(ids[0], Quarp::DbId(1));
  EXPECT_EQ(ids.Find(Quarp::DbId(49000)), 49);
  EXPECT_EQ(ids.Find(Quarp::DbId(50000)), -1);

  const Bytes bytes = TestSupport::Store(ids);
  Quarp::UtSArrayEx<Quarp::DbId> back;
  back.Add(Quarp::DbId(9));  // loading replaces what the array held
  EXPECT_TRUE(TestSupport::LoadAll(back, bytes));
  EXPECT_EQ(back, ids);

  Quarp::UtSArrayEx<Quarp::DbId> copy = ids;
  copy[0] = Quarp::DbId(2);
  EXPECT_EQ(ids[0], Quarp::DbId(1));
  std::uint64_t sum = 0;
  for (const Quarp::DbId id : copy) sum += id.Value();
  EXPECT_GT(sum, 0u);
  copy.SetSize(0);
  EXPECT_TRUE(copy.IsEmpty());
}

}  // namespace
