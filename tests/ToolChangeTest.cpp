// The tool change: the ten archive layouts, the version error, the dump with its crossed
// labels, the comparison order, the never-archived thread pitch, round trips and the
// field list.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciToolChange.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

using namespace IOF;
using TestSupport::Bytes;
using TestSupport::Hex;
using TestSupport::kOne;
using TestSupport::kZero;
using TestSupport::ToHex;

namespace {

// Tool-change and NCI-base versions (9, 0), then the record base of an unnamed record
// and the NCI base of a fresh one.
const std::string kHeadV9 = "09 00" + TestSupport::kRecordBase + TestSupport::kFreshNciBase;
constexpr std::size_t kHeadSize = 2 + TestSupport::kRecordBaseSize + TestSupport::kNciBaseSize;

// Little-endian bytes, written independently of the library's archive.
struct Golden {
  Bytes bytes;
  template <class T>
  Golden& Raw(T v) {
    std::uint8_t b[sizeof(T)];
    std::memcpy(b, &v, sizeof(T));
    bytes.insert(bytes.end(), b, b + sizeof(T));
    return *this;
  }
  Golden& I32(std::int32_t v) { return Raw(v); }
  Golden& I16(std::int16_t v) { return Raw(v); }
  Golden& F64(double v) { return Raw(v); }
  Golden& Bool(bool v) { return Raw<std::uint8_t>(v ? 1 : 0); }
  Golden& Text(const std::u16string& s) {
    Raw(static_cast<std::int32_t>(s.size()));
    for (const char16_t c : s) Raw(c);
    return *this;
  }
  Golden& Vector(double x, double y, double z) { return Raw<std::uint8_t>(0).F64(x).F64(y).F64(z); }
};

// One archived field: the version that added it, how a stored value is written, the
// visitor's text of that value after loading, and of the construction default.
struct FieldRow {
  const char* name;
  unsigned since;
  std::function<void(Golden&)> write;
  std::string loaded;
  std::string fallback;
};

const std::vector<FieldRow>& Rows() {
  static const std::vector<FieldRow> rows = {
      {"m_ToolNum", 0, [](Golden& g) { g.I32(12); }, "12", "-1"},
      {"m_DiaOffsetNum", 0, [](Golden& g) { g.I32(22); }, "22", "-1"},
      {"m_LengthOffsetNum", 0, [](Golden& g) { g.I32(32); }, "32", "-1"},
      {"m_ToolSlotId", 0, [](Golden& g) { g.I32(4); }, "4", "-1"},
      {"m_ToolType", 0, [](Golden& g) { g.I16(-300); }, "-300", "-1"},
      {"m_ToolStation", 0, [](Golden& g) { g.I32(6); }, "6", "-1"},
      {"m_ToolName", 0, [](Golden& g) { g.Text(u"T12"); }, "\"T12\"", "\"\""},
      {"m_ToolHoldType", 0, [](Golden& g) { g.I32(3); }, "3", "1"},
      {"m_ToolGenType", 0, [](Golden& g) { g.I32(2); }, "2", "0"},
      {"m_IsToolLive", 0, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_ToolHolderName", 0, [](Golden& g) { g.Text(u"HLD"); }, "\"HLD\"", "\"\""},
      {"m_LatheToolInsertName", 0, [](Golden& g) { g.Text(u"CNMG"); }, "\"CNMG\"", "\"\""},
      {"m_ToolInsertCornerRadius", 0, [](Golden& g) { g.F64(0.4); }, "0.4", "0"},
      {"m_ToolDiameter", 0, [](Golden& g) { g.F64(12.5); }, "12.5", "0"},
      {"m_OverallLength", 0, [](Golden& g) { g.F64(75.25); }, "75.25", "0"},
      {"m_HolderLength", 0, [](Golden& g) { g.F64(40.5); }, "40.5", "0"},
      {"m_TurretIndexPosition", 1, [](Golden& g) { g.I32(9); }, "9", "-1"},
      {"m_IsMultiInsertTool", 3, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_ToolInsertAngleOffset", 3, [](Golden& g) { g.F64(45); }, "45", "0"},
      {"m_ToolInsertYOffset", 3, [](Golden& g) { g.F64(-1.5); }, "-1.5", "0"},
      {"m_IsMultiStationSpindleToolLocator", 4, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_TotalNumberOfInserts", 4, [](Golden& g) { g.I32(3); }, "3", "0"},
      {"m_InsertNumber", 4, [](Golden& g) { g.I32(2); }, "2", "0"},
      {"m_IsLeftHanded", 5, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_IsPrimaryInsertLeftHanded", 5, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_OffsetVectorFromRotationCenter", 6, [](Golden& g) { g.Vector(1, 2, 3); }, "<1,2,3>", "<0,0,0>"},
      {"m_ToolInsertCompensationType", 7, [](Golden& g) { g.I16(7); }, "7", "0"},
      {"m_IsMillToolInAngularStation", 8, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_MillToolStationTiltAngleInDegree", 8, [](Golden& g) { g.F64(30); }, "30", "0"},
      {"m_MillToolSpindleSpeedMultiplier", 8, [](Golden& g) { g.F64(2.5); }, "2.5", "1"},
      {"m_ReverseMillToolSpindleDirection", 8, [](Golden& g) { g.Bool(true); }, "true", "false"},
      {"m_SpindleToolLocatorStationAngleInDegrees", 8, [](Golden& g) { g.F64(15); }, "15", "0"},
      {"m_IsYAxisTurningTool", 9, [](Golden& g) { g.Bool(true); }, "true", "false"},
  };
  return rows;
}

// The archive of a tool change of layout `version` holding the rows' values; versions 0
// and 1 carry the obsolete byte after the tool diameter.
Bytes LayoutBytes(unsigned version) {
  Golden g;
  g.bytes = Hex(kHeadV9);
  g.bytes[0] = static_cast<std::uint8_t>(version);
  for (const FieldRow& row : Rows()) {
    if (row.since > version) continue;
    row.write(g);
    if (version <= 1 && std::string(row.name) == "m_ToolDiameter") g.Raw<std::uint8_t>(0xA5);
  }
  return g.bytes;
}

// The visitor's lines of a tool change's own fields.
std::vector<std::string> OwnFields(const DbIOFNciToolChange& tool) {
  TestSupport::RecordingVisitor v;
  tool.VisitFields(v);
  return std::vector<std::string>(v.fields.begin() + 6, v.fields.end());  // past the record and NCI bases
}

// A tool change whose thread pitch can be set: the record has no accessor for it.
class PitchedToolChange : public DbIOFNciToolChange {
 public:
  static Quarp::DbPtr<DbIOFNciToolChange> Create(double pitch) {
    auto* made = new PitchedToolChange;
    made->m_ThreadPitch = pitch;
    Quarp::DbPtr<DbIOFNciToolChange> ptr;
    ptr.AttachEnt(made);
    return ptr;
  }
  static void SetPitch(DbIOFNciToolChange& tool, double pitch) {
    static_cast<PitchedToolChange&>(tool).m_ThreadPitch = pitch;
  }
};

// Each layout, 0 to 9, with every field it holds set: every byte is read, each field it
// holds is loaded, and every later field keeps its default. Layouts 0 and 1 carry the
// obsolete byte after the tool diameter, so the lengths after it read correctly only
// when it is skipped; the turret index (since 1) follows the holder length.
TEST(DbIOFNciToolChange, EveryOldLayoutReadsExactly) {
  for (unsigned version = 0; version <= 9; ++version) {
    SCOPED_TRACE("version " + std::to_string(version));
    auto tool = DbIOFNciToolChange::Create();
    ASSERT_TRUE(TestSupport::LoadAll(*tool, LayoutBytes(version)));  // every byte read, no more
    std::vector<std::string> expected;
    for (const FieldRow& row : Rows()) {
      expected.push_back(std::string(row.name) + "=" + (row.since <= version ? row.loaded : row.fallback));
    }
    expected.push_back("m_ThreadPitch=0");
    EXPECT_EQ(OwnFields(*tool), expected);
  }
}

TEST(DbIOFNciToolChange, StoresTheCurrentLayout) {
  auto tool = DbIOFNciToolChange::Create();
  const Bytes defaults = TestSupport::Store(*tool);
  // Number, offsets, slot; the type in two bytes; station, name; holder, generation, live;
  // holder and insert names; radius, diameter, the lengths; the turret index; then the
  // fields of versions 3 to 9, the compensation type in two bytes, the multiplier 1.0.
  EXPECT_EQ(ToHex(defaults), ToHex(Hex(kHeadV9 +
                                       "FF FF FF FF  FF FF FF FF  FF FF FF FF  FF FF FF FF  FF FF"
                                       "FF FF FF FF  00 00 00 00  01 00 00 00  00 00 00 00  00"
                                       "00 00 00 00  00 00 00 00" +
                                       kZero + kZero + kZero + kZero + "FF FF FF FF  00" + kZero + kZero +
                                       "00  00 00 00 00  00 00 00 00  00  00"
                                       "00" +
                                       kZero + kZero + kZero + "00 00  00" + kZero + kOne + "00" + kZero + "00")));

  TestSupport::ExpectNewerVersionRefused(*tool, 0, kHeadSize);  // the base part read, none of the own fields

  // With every field set, the store is the version-9 layout of the rows; and it round-trips.
  auto full = DbIOFNciToolChange::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*full, LayoutBytes(9)));
  EXPECT_EQ(ToHex(TestSupport::Store(*full)), ToHex(LayoutBytes(9)));
  full->SetGCode(116);
  full->SetTime(4.5);
  full->SetIOFName(L"first tool");
  TestSupport::ExpectRoundTrips(*full);
}

TEST(DbIOFNciToolChange, DefaultsAndFieldList) {
  auto tool = DbIOFNciToolChange::Create();
  EXPECT_EQ(tool->ToIOFString(),
            L"IOF Nci Tool Change Object: DbId:0, slotId:-1, type:-1, turretIndex:-1, station:-1, "
            L"name:\"\". Tool is \"Static\". GenType:\"ATC\". HolderType:\"None\".");
  // The visitor lists the record and NCI bases, the archived fields in archive order,
  // then the thread pitch.
  std::vector<std::string> expected = {
      "m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]", "m_GCode=0", "m_OwnerOpId=-1", "m_Time=0"};
  for (const FieldRow& row : Rows()) expected.push_back(std::string(row.name) + "=" + row.fallback);
  expected.push_back("m_ThreadPitch=0");
  TestSupport::RecordingVisitor v;
  tool->VisitFields(v);
  EXPECT_EQ(v.fields, expected);
}

TEST(DbIOFNciToolChange, DumpTexts) {
  // The "GenType" label carries the holder-type text and "HolderType" the generation-type
  // text: intended.
  struct Case {
    int holder;
    int gen;
    const wchar_t* genLabelText;
    const wchar_t* holderLabelText;
  };
  const Case cases[] = {{1, 0, L"ATC", L"None"},  {2, 1, L"TURRET", L"Lathe"},
                        {3, 2, L"GANG", L"Mill"}, {4, 3, L"OFFSET", L"Router"},
                        {5, 4, L"", L"Wire"},     {0, 7, L"", L""},
                        {-1, -1, L"", L""}};
  for (const Case& c : cases) {
    auto tool = DbIOFNciToolChange::Create();
    tool->SetToolHolderType(c.holder);
    tool->SetToolGenType(c.gen);
    EXPECT_EQ(tool->ToIOFString(),
              CString::Formatted(L"IOF Nci Tool Change Object: DbId:0, slotId:-1, type:-1, turretIndex:-1, "
                                 L"station:-1, name:\"\". Tool is \"Static\". GenType:\"%s\". HolderType:\"%s\".",
                                 c.genLabelText, c.holderLabelText));
  }

  Quarp::DbMgr mgr;
  auto first = DbIOFNciLinear::Create();
  mgr.Add(first);  // the tool change gets id 2
  auto tool = DbIOFNciToolChange::Create();
  tool->SetToolSlotId(12);
  tool->SetToolType(-2);
  tool->SetTurretIndexPosition(3);
  tool->SetToolStation(4);
  tool->SetToolName(L"DRILL 5");
  tool->SetIsToolLive(true);
  mgr.Add(tool);
  EXPECT_EQ(tool->ToIOFString(),
            L"IOF Nci Tool Change Object: DbId:2, slotId:12, type:-2, turretIndex:3, station:4, "
            L"name:\"DRILL 5\". Tool is \"Live\". GenType:\"ATC\". HolderType:\"None\".");
}

TEST(DbIOFNciToolChange, ComparisonOrder) {
  // Each step makes `b` differ in one more property; the report names the first
  // difference in the comparison order, and applying the step to `a` moves on.
  using T = DbIOFNciToolChange;
  struct Step {
    std::function<void(T&)> apply;
    const wchar_t* line;
  };
  const std::vector<Step> steps = {
      {[](T& t) { t.SetGCode(116); }, L"m_GCode - 0 vs 116"},
      {[](T& t) { t.SetToolHolderType(3); }, L"m_ToolHoldType - 1 vs 3"},
      {[](T& t) { t.SetToolGenType(2); }, L"m_ToolGenType - 0 vs 2"},
      {[](T& t) { t.SetToolNum(12); }, L"m_ToolNum - -1 vs 12"},
      {[](T& t) { t.SetDiaOffsetNum(22); }, L"m_DiaOffsetNum - -1 vs 22"},
      {[](T& t) { t.SetLengthOffsetNum(32); }, L"m_LengthOffsetNum - -1 vs 32"},
      {[](T& t) { t.SetToolSlotId(4); }, L"m_ToolSlotId - -1 vs 4"},
      {[](T& t) { t.SetToolType(-300); }, L"m_ToolType - -1 vs -300"},
      {[](T& t) { t.SetToolStation(6); }, L"m_ToolStation - -1 vs 6"},
      {[](T& t) { t.SetTurretIndexPosition(9); }, L"m_TurretIndexPosition - -1 vs 9"},
      {[](T& t) { t.SetToolName(L"T12"); }, L"m_ToolName -  vs T12"},
      {[](T& t) { t.SetIsToolLive(true); }, L"m_IsToolLive - false vs true"},
      {[](T& t) { t.SetToolHolderName(L"HLD"); }, L"m_ToolHolderName -  vs HLD"},
      {[](T& t) { t.SetLatheToolInsertName(L"CNMG"); }, L"m_LatheToolInsertName -  vs CNMG"},
      {[](T& t) { t.SetToolInsertCornerRadius(0.4); }, L"m_ToolInsertCornerRadius - 0 vs 0.4"},
      {[](T& t) { t.SetToolDiameter(12.5); }, L"m_ToolDiameter - 0 vs 12.5"},
      {[](T& t) { t.SetOverallLength(75.25); }, L"m_OverallLength - 0 vs 75.25"},
      {[](T& t) { t.SetHolderLength(40.5); }, L"m_HolderLength - 0 vs 40.5"},
      {[](T& t) { PitchedToolChange::SetPitch(t, 1.25); }, L"m_ThreadPitch - 0 vs 1.25"},
      {[](T& t) { t.SetIsMultiInsertTool(true); }, L"m_IsMultiInsertTool - false vs true"},
      {[](T& t) { t.SetToolInsertAngleOffset(45); }, L"m_ToolInsertAngleOffset - 0 vs 45"},
      {[](T& t) { t.SetToolInsertYOffset(-1.5); }, L"m_ToolInsertYOffset - 0 vs -1.5"},
      {[](T& t) { t.SetIsMultiStationSpindleToolLocator(true); },
       L"m_IsMultiStationSpindleToolLocator - false vs true"},
      {[](T& t) { t.SetTotalNumberOfInserts(3); }, L"m_TotalNumberOfInserts - 0 vs 3"},
      {[](T& t) { t.SetInsertNumber(2); }, L"m_InsertNumber - 0 vs 2"},
      {[](T& t) { t.SetIsLeftHanded(true); }, L"m_IsLeftHanded - false vs true"},
      {[](T& t) { t.SetIsPrimaryInsertLeftHanded(true); }, L"m_IsPrimaryInsertLeftHanded - false vs true"},
      {[](T& t) { t.SetOffsetVectorFromRotationCenter(GmVector3D(1, 2, 3)); },
       L"m_OffsetVectorFromRotationCenter - (0, 0, 0) vs (1, 2, 3)"},
      {[](T& t) { t.SetToolInsertCompensationType(7); }, L"m_ToolInsertCompensationType - 0 vs 7"},
      {[](T& t) { t.SetIsMillToolInAngularStation(true); }, L"m_IsMillToolInAngularStation - false vs true"},
      {[](T& t) { t.SetMillToolStationTiltAngleInDegree(30); }, L"m_MillToolStationTiltAngleInDegree - 0 vs 30"},
      {[](T& t) { t.SetMillToolSpindleSpeedMultiplier(2.5); }, L"m_MillToolSpindleSpeedMultiplier - 1 vs 2.5"},
      {[](T& t) { t.SetReverseMillToolSpindleDirection(true); }, L"m_ReverseMillToolSpindleDirection - false vs true"},
      {[](T& t) { t.SetSpindleToolLocatorStationAngle(15); }, L"m_SpindleToolLocatorStationAngleInDegrees - 0 vs 15"},
      {[](T& t) { t.SetIsYAxisTurningTool(true); }, L"m_IsYAxisTurningTool - false vs true"},
  };
  auto a = PitchedToolChange::Create(0.0);
  auto b = PitchedToolChange::Create(0.0);
  for (const Step& s : steps) s.apply(*b);
  for (const Step& s : steps) {
    CString report;
    EXPECT_FALSE(a->Compare(b, report));
    EXPECT_EQ(report, CString(L"Difference Detected: ") + CString(s.line) + CString(L"\n"));
    s.apply(*a);
  }
  // Reals and the vector within 1e-6 are equal.
  b->SetToolDiameter(12.5 + 5e-7);
  b->SetOffsetVectorFromRotationCenter(GmVector3D(1, 2, 3 + 5e-7));
  CString report;
  EXPECT_TRUE(a->Compare(b, report)) << report;
  EXPECT_TRUE(report.IsEmpty());
}

TEST(DbIOFNciToolChange, ThreadPitchIsComparedCopiedButNeverArchived) {
  auto plain = DbIOFNciToolChange::Create();
  auto pitched = PitchedToolChange::Create(1.5);
  CString report;
  EXPECT_FALSE(plain->Compare(pitched, report));
  EXPECT_EQ(report, L"Difference Detected: m_ThreadPitch - 0 vs 1.5\n");

  // Copy carries it.
  auto copy = DbIOFNciToolChange::Create();
  copy->Copy(*pitched, Quarp::DbCloneMode::Normal, nullptr);
  report.Empty();
  EXPECT_FALSE(plain->Compare(copy, report));
  EXPECT_EQ(report, L"Difference Detected: m_ThreadPitch - 0 vs 1.5\n");

  // The archive does not: the stored bytes equal those of a record without it, and the
  // loaded record has 0.0 again.
  EXPECT_EQ(TestSupport::Store(*pitched), TestSupport::Store(*plain));
  auto loaded = PitchedToolChange::Create(7.0);
  ASSERT_TRUE(TestSupport::LoadAll(*loaded, TestSupport::Store(*pitched)));
  EXPECT_EQ(OwnFields(*loaded).back(), "m_ThreadPitch=7");  // a load leaves what the record held
  auto fresh = DbIOFNciToolChange::Create();
  ASSERT_TRUE(TestSupport::LoadAll(*fresh, TestSupport::Store(*pitched)));
  EXPECT_EQ(OwnFields(*fresh).back(), "m_ThreadPitch=0");
  report.Empty();
  EXPECT_TRUE(fresh->Compare(plain, report)) << report;
}

}  // namespace
