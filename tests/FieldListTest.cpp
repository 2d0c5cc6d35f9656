// The record pattern's field list, on a record class of the tests' own: each entry is
// stored in the current layout, loaded from the layout of the stored version, copied
// and listed as it says.
#include "LayoutTable.h"
#include "RecordImpl.h"

#include <iof/DbIOFBase.h>

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace IOF {
class FieldListRecord;
class FieldListChild;
class FieldListContainers;
}  // namespace IOF
template <>
struct Quarp::DbTypeCode<IOF::FieldListContainers> {
  static constexpr std::uint64_t value = 0x7F02;
};
template <>
struct Quarp::DbTypeCode<IOF::FieldListRecord> {
  static constexpr std::uint64_t value = 0x7F00;
};
template <>
struct Quarp::DbTypeCode<IOF::FieldListChild> {
  static constexpr std::uint64_t value = 0x7F01;
};

namespace IOF {

// Version 2. Version 0 carried an int after m_Int that version 1 dropped; version 2
// added m_Added.
class FieldListRecord : public DbIOFBase {
  IOF_RECORD(FieldListRecord, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 2;

  std::int32_t m_Int = -1;
  std::int16_t m_Short = 3;
  bool m_Flag = true;
  double m_Real = 0.5;
  CString m_Text;
  Quarp::DbId m_Ref;
  GmPoint3D m_Point;
  std::int32_t m_Added = 7;  // since version 2
  double m_Transient = 0.0;  // held and copied, never archived
  Quarp::DbId m_Owner;       // archived, not copied
  int m_Loads = 0;           // counts OnLoaded calls; not a field

  void OnLoaded(unsigned version) { m_Loads += 1 + static_cast<int>(version) * 10; }

 protected:
  FieldListRecord() = default;
};

IOF_IMPLEMENT_RECORD(FieldListRecord)

template <class F, class... R>
void FieldListRecord::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Int", r.m_Int...);
  f(Field::Dropped(0, 0), "m_Obsolete", Field::Discard<std::int32_t>{});
  f(Field::V(0), "m_Short", r.m_Short...);
  f(Field::V(0), "m_Flag", r.m_Flag...);
  f(Field::V(0), "m_Real", r.m_Real...);
  f(Field::V(0), "m_Text", r.m_Text...);
  f(Field::V(0), "m_Ref", r.m_Ref...);
  f(Field::V(0), "m_Point", r.m_Point...);
  f(Field::V(2), "m_Added", r.m_Added...);
  f(Field::NotArchived, "m_Transient", r.m_Transient...);
  f(Field::NotCopied(0), "m_Owner", r.m_Owner...);
}

// A subclass inherits OnLoaded: it runs once, at the level that declares it.
class FieldListChild : public FieldListRecord {
  IOF_RECORD(FieldListChild, FieldListRecord)

 public:
  static constexpr unsigned kVersion = 0;
  double m_More = 1.0;

 protected:
  FieldListChild() = default;
};

IOF_IMPLEMENT_RECORD(FieldListChild)

template <class F, class... R>
void FieldListChild::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_More", r.m_More...);
}

// Containers and a structure in a field list.
class FieldListContainers : public DbIOFBase {
  IOF_RECORD(FieldListContainers, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;
  struct Pair {
    std::int16_t a = 0;
    CString b;
    void Serialize(Quarp::UtArchive& ar) {
      if (ar.IsStoring()) {
        ar << a << b;
      } else {
        ar >> a >> b;
      }
    }
    void VisitFields(FieldVisitor& fv) const {
      fv.OnInt("a", a);
      fv.OnString("b", b);
    }
    bool operator==(const Pair&) const = default;
  };
  std::vector<CString> m_Names;
  std::map<std::int32_t, double> m_Params;
  std::vector<Pair> m_Pairs;

 protected:
  FieldListContainers() = default;
};

IOF_IMPLEMENT_RECORD(FieldListContainers)

template <class F, class... R>
void FieldListContainers::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Names", r.m_Names...);
  f(Field::V(0), "m_Params", r.m_Params...);
  f(Field::V(0), "m_Pairs", r.m_Pairs...);
}

}  // namespace IOF

namespace {

using IOF::FieldListChild;
using IOF::FieldListContainers;
using IOF::FieldListRecord;
using namespace TestSupport;

// A sequence or a map is a 32-bit count and its elements (map entries key first, in key
// order); a count below 1 loads as empty, a count the bytes cannot hold is refused.
TEST(FieldList, ContainersAndStructures) {
  auto rec = FieldListContainers::Create();
  rec->m_Names = {L"A", L""};
  rec->m_Params = {{7, 1.0}, {-1, 0.0}};
  rec->m_Pairs = {{3, L"B"}};
  const std::string body =
      "02 00 00 00  01 00 00 00 41 00  00 00 00 00"
      "02 00 00 00  FF FF FF FF" +
      kZero + "07 00 00 00" + kOne + "01 00 00 00  03 00 01 00 00 00 42 00";
  ExpectArchive(*rec, "00" + kRecordBase + body);
  ExpectFields(*rec, {kRecordBaseFields,
                      {"m_Names=[{value=\"A\"},{value=\"\"}]", "m_Params=[{key=-1,value=0},{key=7,value=1}]",
                       "m_Pairs=[{a=3,b=\"B\"}]"}});
  auto back = FieldListContainers::Create();
  back->m_Names = {L"old"};
  ASSERT_TRUE(LoadAll(*back, Hex("00" + kRecordBase + "FF FF FF FF  00 00 00 00  00 00 00 80")));
  EXPECT_TRUE(back->m_Names.empty() && back->m_Params.empty() && back->m_Pairs.empty());
  EXPECT_EQ(LoadCause(*back, Hex("00" + kRecordBase + "FF FF FF 7F")), Quarp::UtArchiveException::tooLarge);
}

// Version 0 holds the obsolete int after m_Int; m_Added arrives with version 2; m_Owner
// is archived but not copied (so a clone would lose it: the table holds 0 for it) and
// m_Transient is never archived. The record compares its name only.
TEST(FieldList, LayoutsOfEveryVersion) {
  const Layout layout = {
      "02" + kRecordBase,
      nullptr,
      {R(Le(5), Le(-1), nullptr), Gone("EE EE EE EE ", 1), R("04 00 ", "03 00 ", nullptr), R(kFalse, kTrue, nullptr),
       R(Le(0.25), Le(0.5), nullptr), R(Str(u"A"), I0, nullptr), R(Le(9ull), Le(0ull), nullptr),
       R(Pt(1, 2, 3), kP0, nullptr), R(Le(8), Le(7), nullptr, 2), R(Le(0ull), Le(0ull), nullptr)},
      {},
      "m_Int=5 m_Short=4 m_Flag=false m_Real=0.25 m_Text=\"A\" m_Ref=#9 m_Point=(1,2,3) m_Added=8 "
      "m_Transient=0 m_Owner=#0"};
  ExpectLayout<FieldListRecord>(layout);
  // OnLoaded hears the stored version.
  EXPECT_EQ(Loaded<FieldListRecord>(Image(layout, 0, [](std::size_t) { return true; }))->m_Loads, 1);
}

TEST(FieldList, CopyCopiesWhatTheListSays) {
  auto a = FieldListRecord::Create();
  a->m_Int = 11;
  a->m_Transient = 2.5;
  a->m_Owner = Quarp::DbId(8);
  a->SetIOFName(CString(L"a"));
  auto b = FieldListRecord::Create();
  b->Copy(*a, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(b->m_Int, 11);
  EXPECT_EQ(b->m_Transient, 2.5);
  EXPECT_TRUE(b->m_Owner.IsNull());  // not copied
  EXPECT_EQ(b->GetIOFName(), L"a");
  // Copying from a record of a base class copies the common part only.
  auto child = FieldListChild::Create();
  child->m_More = 9;
  child->Copy(*a, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(child->m_Int, 11);
  EXPECT_EQ(child->m_More, 9);
}

TEST(FieldList, DerivedLevelsAndHooks) {
  auto child = FieldListChild::Create();
  ExpectFields(*child, {kRecordBaseFields,
                        {"m_Int=-1", "m_Short=3", "m_Flag=true", "m_Real=0.5", "m_Text=\"\"", "m_Ref=#0",
                         "m_Point=(0,0,0)", "m_Added=7", "m_Transient=0", "m_Owner=#0", "m_More=1"}});
  EXPECT_EQ(child->GetClass(), L"FieldListChild");
  EXPECT_EQ(child->GetSubclassLevel(0), 4);
  EXPECT_TRUE(child->ContainsType(0x7F00));
  EXPECT_TRUE(child->ContainsType(0x5100));
  EXPECT_FALSE(child->ContainsType(0x5110));
  EXPECT_EQ(child->GetTypeIdx(), -1);  // not a registered type
  child->m_More = 2.0;
  child->m_Int = 3;
  auto back = FieldListChild::Create();
  ASSERT_TRUE(LoadAll(*back, Store(*child)));
  EXPECT_EQ(back->m_Loads, 21);  // once, at the level that declares OnLoaded
  ExpectRoundTrips(*child);
}

}  // namespace
