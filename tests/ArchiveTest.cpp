// The archive: the bytes of every field type, the class version exchange, polymorphic
// objects, and the refusal of data that is too short or claims too much.
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

struct FieldCase {
  const char* what;
  std::function<void(Quarp::UtArchive&)> store;
  const char* bytes;
};

TEST(ArchiveEncoding, BytesOfEveryFieldType) {
  const std::vector<FieldCase> cases = {
      {"bool true", [](auto& ar) { ar << true; }, "01"},
      {"bool false", [](auto& ar) { ar << false; }, "00"},
      {"int16", [](auto& ar) { ar << std::int16_t{-2}; }, "FE FF"},
      {"int32", [](auto& ar) { ar << std::int32_t{1}; }, "01 00 00 00"},
      {"unsigned", [](auto& ar) { ar << 0xDEADBEEFu; }, "EF BE AD DE"},
      {"long is four bytes", [](auto& ar) { Quarp::WriteLong(ar, -2L); }, "FE FF FF FF"},
      {"int64", [](auto& ar) { ar << std::int64_t{-1}; }, "FF FF FF FF FF FF FF FF"},
      {"uint64", [](auto& ar) { ar << std::uint64_t{0x0102030405060708ull}; }, "08 07 06 05 04 03 02 01"},
      {"double 1.0", [](auto& ar) { ar << 1.0; }, "00 00 00 00 00 00 F0 3F"},
      {"double -2.5", [](auto& ar) { ar << -2.5; }, "00 00 00 00 00 00 04 C0"},
      {"DbId", [](auto& ar) { ar << Quarp::DbId(0x0102030405060708ull); }, "08 07 06 05 04 03 02 01"},
      {"enumeration", [](auto& ar) { ar << Color::Red; }, "03 00 00 00"},
      {"empty CString", [](auto& ar) { ar << CString(); }, "00 00 00 00"},
      {"CString AB", [](auto& ar) { ar << CString(L"AB"); }, "02 00 00 00 41 00 42 00"},
      {"CString outside the BMP", [](auto& ar) { ar << CString(L"\U0001F600"); }, "02 00 00 00 3D D8 00 DE"},
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
  for (const FieldCase& c : cases) {
    Quarp::UtArchive ar(Quarp::UtArchive::Store);
    c.store(ar);
    EXPECT_EQ(ToHex(ar.GetBytes()), ToHex(Hex(c.bytes))) << c.what;
  }
}

TEST(ArchiveEncoding, ValuesReadBack) {
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  out << true << std::int16_t{-7} << std::int32_t{-123456} << 0xFFFFFFFFu << std::int64_t{-9} << 3.25 << Quarp::DbId(77)
      << CString(L"name") << CString() << Color::Red;
  Quarp::WriteLong(out, 123456789L);
  const Bytes bytes = out.GetBytes();

  Quarp::UtArchive in(Quarp::UtArchive::Load, bytes);
  bool b = false;
  std::int16_t s = 0;
  std::int32_t i = 0;
  unsigned u = 0;
  std::int64_t l = 0;
  double d = 0;
  Quarp::DbId id;
  CString name(L"x"), empty(L"not empty");
  Color color{};
  in >> b >> s >> i >> u >> l >> d >> id >> name >> empty >> color;
  const long lg = Quarp::ReadLong(in);
  EXPECT_TRUE(b);
  EXPECT_EQ(s, -7);
  EXPECT_EQ(i, -123456);
  EXPECT_EQ(u, 0xFFFFFFFFu);
  EXPECT_EQ(l, -9);
  EXPECT_EQ(d, 3.25);
  EXPECT_EQ(id, Quarp::DbId(77));
  EXPECT_EQ(name, L"name");
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_EQ(color, Color::Red);
  EXPECT_EQ(lg, 123456789L);
  EXPECT_EQ(in.GetRemaining(), 0u);
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

TEST(ArchiveEncoding, ShortOrOverlongDataIsRefusedBeforeAllocating) {
  struct Case {
    const char* what;
    const char* bytes;
    std::function<void(Quarp::UtArchive&)> load;
    int cause;
  };
  const std::vector<Case> cases = {
      {"int32 from three bytes", "01 02 03", [](auto& ar) { ar.template ReadRaw<std::int32_t>(); },
       Quarp::UtArchiveException::endOfFile},
      {"string longer than the data", "05 00 00 00 41 00",
       [](auto& ar) {
         CString s;
         ar >> s;
       },
       Quarp::UtArchiveException::tooLarge},
      {"string claiming two billion units", "FF FF FF 7F",
       [](auto& ar) {
         CString s;
         ar >> s;
       },
       Quarp::UtArchiveException::tooLarge},
      {"id array claiming more ids than bytes", "FF FF FF FF 0F 01",
       [](auto& ar) {
         Quarp::UtSArrayEx<Quarp::DbId> a;
         a.Serialize(ar);
       },
       Quarp::UtArchiveException::tooLarge},
      {"byte array claiming more bytes than remain", "00 FF 00 00 00 00 00 00 00 0A 00 00 00 00 00 00 00 01",
       [](auto& ar) {
         Quarp::UtArrayEx<unsigned char> a;
         a.Serialize(ar);
       },
       Quarp::UtArchiveException::tooLarge},
      {"unterminated compact integer", "80 80", [](auto& ar) { ar.ReadCount(); }, Quarp::UtArchiveException::endOfFile},
      {"compact integer beyond 64 bits", "FF FF FF FF FF FF FF FF FF 7F", [](auto& ar) { ar.ReadCount(); },
       Quarp::UtArchiveException::generic},
  };
  for (const Case& c : cases) {
    const Bytes data = Hex(c.bytes);
    Quarp::UtArchive in(Quarp::UtArchive::Load, data);
    try {
      c.load(in);
      ADD_FAILURE() << c.what << ": no exception";
    } catch (const Quarp::UtArchiveException& e) {
      EXPECT_EQ(e.m_cause, c.cause) << c.what << ": " << e.what();
      EXPECT_NE(e.m_cause, Quarp::UtArchiveException::badSchema) << c.what;
    }
  }
}

// The version mechanism: version first, then the base, then the own fields in the
// layout of the stored version.
TEST(ArchiveVersions, CurrentOlderAndNewer) {
  auto rec = TestSupport::TestRecord::Create(42, L"AB");
  const Bytes current = TestSupport::Store(*rec);
  EXPECT_EQ(ToHex(current), ToHex(Hex("01 2A 00 00 00 02 00 00 00 41 00 42 00")));

  // Version 0 had the int only; the name keeps its default.
  auto old = TestSupport::TestRecord::Create(0, L"default");
  EXPECT_TRUE(TestSupport::LoadAll(*old, Hex("00 07 00 00 00")));
  EXPECT_EQ(old->m_Value, 7);
  EXPECT_EQ(old->m_Name, L"default");

  // A newer version throws cause 2 after the version and before any own field.
  auto newer = TestSupport::TestRecord::Create(5, L"keep");
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(*newer, Hex("02 2A 00 00 00"), &stopped), 2);
  EXPECT_EQ(stopped, 1u);
  EXPECT_EQ(newer->m_Value, 5);
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

TEST(ArchiveObjects, UnknownClassesAndDanglingTagsAreRefused) {
  const std::vector<std::pair<const char*, int>> cases = {
      {"01 05 4E 6F 6E 65 58", Quarp::UtArchiveException::badClass},  // "NoneX"
      {"05", Quarp::UtArchiveException::badIndex},                    // tag of a class never named
      {"01 00", Quarp::UtArchiveException::badClass},                 // empty class name
  };
  for (const auto& [hex, cause] : cases) {
    const Bytes data = Hex(hex);
    Quarp::UtArchive in(Quarp::UtArchive::Load, data);
    Quarp::UtObject* o = nullptr;
    try {
      in.ReadObject(o);
      ADD_FAILURE() << hex;
    } catch (const Quarp::UtArchiveException& e) {
      EXPECT_EQ(e.m_cause, cause) << hex << ": " << e.what();
    }
    EXPECT_EQ(o, nullptr);
  }
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
