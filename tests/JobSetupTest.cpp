// The job setup (its 77-field layout, both versions, the comparison order, the dump) and
// the part spindles with their map, stock and chuck definitions.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFChuckDef.h>
#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFPartSpindle.h>
#include <iof/DbIOFPartSpindleMap.h>
#include <iof/DbIOFStockDef.h>

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <sstream>

using namespace IOF;
using namespace TestSupport;
using Quarp::DbId;

namespace {

// The job setup's fields in archive order, each with its type: S string, D double, I int
// (default 0), J int (default -1), b bool (false), B bool (true), P point, M matrix, A
// name array, E stick-out reference.
const char* const kLayout = R"(S m_FileDescriptor D m_ChordDevTol D m_PartLength S m_MachineGroupName
  S m_MachineGroupComment I m_MachineGroupToolProgramNumber S m_WCSName S m_WCSComment S m_MaterialName
  S m_MaterialComment I m_InitialSpindleID b m_DoStockTransfer J m_JobSetupType b m_DoPullStock
  b m_IsDstStockManuallyDefined b m_IsDstSpindleEnabled I m_NumParts D m_StockOD D m_ExtraStockOD
  b m_IsStockIDDefined D m_StockID D m_ExtraStockID D m_ExtraStockFace D m_ExtraStockBack D m_PickOffZPosition
  D m_CutoffWidth D m_WcsZOffset D m_LeftG28Angle B m_IsLeftGripperChuckJaws B m_IsLeftChuckJawClampingTypeOD
  D m_LeftGripperReferencePointX D m_LeftGripperReferencePointY D m_LeftChuckJawLength D m_LeftChuckJawHeight
  D m_LeftChuckJawThickness D m_LeftChuckJawXPosition D m_LeftColletID D m_LeftColletOD D m_LeftChuckThickness
  D m_LeftChuckChannelDepth D m_PartStickOutFromLeftChuckFace D m_PartStickOutFromLeftJawFace
  D m_LeftToolPlaneOriginZ I m_LeftWorkOffsetNo D m_RightG28Angle B m_IsRightGripperChuckJaws
  B m_IsRightChuckJawClampingTypeOD D m_RightGripperReferencePointX D m_RightGripperReferencePointY
  D m_RightChuckJawLength D m_RightChuckJawHeight D m_RightChuckJawThickness D m_RightChuckJawXPosition
  D m_RightColletID D m_RightColletOD D m_RightChuckThickness D m_RightChuckChannelDepth
  D m_PartStickOutFromRightChuckFace D m_PartStickOutFromRightJawFace D m_RightToolPlaneOriginZ
  I m_RightWorkOffsetNo D m_PartStickOutDistance M m_ViewMatrix P m_ViewRectLL P m_ViewRectUR
  A m_LeftChuckMCOArray A m_LeftJawsMCOArray A m_LeftStockMCOArray A m_RightChuckMCOArray A m_RightJawsMCOArray
  A m_RightStockMCOArray M m_WCSMatrix S m_LeftWorkpieceMCOFname S m_RightWorkpieceMCOFname S m_MCOFilePath
  E m_PartStickOutReference S m_MachineFileName)";

// The comparison order: ten fields, the fields from m_InitialSpindleID to
// m_RightWorkOffsetNo in archive order, then the stick-out reference before the distance
// and the rest but the name arrays.
const char* const kCompareHead = R"(m_ChordDevTol m_FileDescriptor m_PartLength m_MachineGroupToolProgramNumber
  m_MachineGroupName m_MachineGroupComment m_WCSName m_WCSComment m_MaterialName m_MaterialComment)";
const char* const kCompareTail = R"(m_PartStickOutReference m_PartStickOutDistance m_ViewMatrix m_ViewRectLL
  m_ViewRectUR m_WCSMatrix m_LeftWorkpieceMCOFname m_RightWorkpieceMCOFname m_MCOFilePath m_MachineFileName)";

const std::string kTypes = "SDIJbBEPMA";

struct Field {
  char type;
  std::string name;
};
std::vector<Field> Layout() {
  std::istringstream in(kLayout);
  std::vector<Field> fields;
  for (Field f; in >> f.type >> f.name;) fields.push_back(f);
  return fields;
}

// Field k of the layout holds a value of its own when `set` says so, else its default:
// strings "F<k>", reals k + 0.25, ints k, flipped flags, the point (k, k+1, k+2), the
// identity with element (0, 3) = k, the names "A<k>" and "B<k>", reference 1.
Bytes Image(unsigned version, const std::function<bool(const std::string&)>& set) {
  // The job setup's version, the list's, the record base, list kind 0 and no items.
  const Bytes head = Hex(CString::Formatted(L"0%d 00", version).ToUtf8() + kRecordBase + "00000000 00000000");
  Quarp::UtArchive ar(Quarp::UtArchive::Store);
  ar.WriteBytes(head.data(), head.size());
  const auto text = [&](const std::string& s) { ar << CString::FromUtf8(s); };
  const auto matrix = [&](double x) {
    ar << std::uint8_t(0) << 4 << 4;
    for (int i = 0; i < 16; ++i) ar << (i == 3 ? x : (i % 5 == 0 ? 1.0 : 0.0));
  };
  const std::vector<Field> fields = Layout();
  for (std::size_t k = 0; k < fields.size() - (version == 0 ? 1 : 0); ++k) {
    const bool on = set(fields[k].name);
    const int n = static_cast<int>(k);
    const char t = fields[k].type;
    if (t == 'S') text(on ? "F" + std::to_string(n) : "");
    if (t == 'D') ar << (on ? n + 0.25 : 0.0);
    if (t == 'I' || t == 'J' || t == 'E') ar << std::int32_t(!on ? (t == 'J' ? -1 : 0) : (t == 'E' ? 1 : n));
    if (t == 'b' || t == 'B') ar << (on == (t == 'b'));
    if (t == 'P') ar << std::uint8_t(0) << (on ? n : 0.0) << (on ? n + 1.0 : 0.0) << (on ? n + 2.0 : 0.0);
    if (t == 'M') matrix(on ? n : 0.0);
    if (t == 'A') ar << std::int32_t(on ? 2 : 0);
    if (t == 'A' && on) text("A" + std::to_string(n)), text("B" + std::to_string(n));
  }
  return ar.GetBytes();
}
const auto kAll = [](const std::string&) { return true; };
const auto kNone = [](const std::string&) { return false; };

Quarp::DbPtr<DbIOFJobSetup> Loaded(const Bytes& bytes) {
  auto setup = DbIOFJobSetup::Create();
  EXPECT_TRUE(LoadAll(*setup, bytes));
  return setup;
}

TEST(DbIOFJobSetup, BothLayoutsDefaultsAndFieldList) {
  // Defaults: type -1, the four gripper and clamping flags true, identity matrices.
  auto fresh = DbIOFJobSetup::Create();
  ExpectStores(*fresh, ToHex(Image(1, kNone)));
  ExpectNewerVersionRefused(*fresh, 0, 2 + kRecordBaseSize + 8);

  std::vector<std::string> expected = kRecordBaseFields;
  expected.insert(expected.end(), {"m_ListType=0", "m_Items=[]"});
  const std::vector<Field> fields = Layout();
  for (std::size_t k = 0; k < fields.size(); ++k) {
    const std::string n = std::to_string(k), m = std::to_string(k + 1), o = std::to_string(k + 2);
    // One text per type, in the order of kTypes.
    // clang-format off
    const std::string shown[] = {"\"F" + n + "\"", n + ".25", n, n, "true", "false", "1", "(" + n + "," + m + "," + o + ")",
                                 "[1 0 0 " + n + " 0 1 0 0 0 0 1 0 0 0 0 1]", "[{value=\"A" + n + "\"},{value=\"B" + n + "\"}]"};
    // clang-format on
    expected.push_back(fields[k].name + "=" + shown[kTypes.find(fields[k].type)]);
  }
  auto full = Loaded(Image(1, kAll));
  EXPECT_EQ(Fields(*full), expected);
  ExpectStores(*full, ToHex(Image(1, kAll)));
  ExpectRoundTrips(*full);
  EXPECT_EQ(full->GetLeftStockMCOArray(), (std::vector<CString>{L"A67", L"B67"}));

  // Version 0 has no machine file name: it stays empty, and a re-save is version 1.
  auto old = Loaded(Image(0, kAll));
  expected.back() = "m_MachineFileName=\"\"";
  EXPECT_EQ(Fields(*old), expected);
  ExpectStores(*old, ToHex(Image(1, [](const std::string& name) { return name != "m_MachineFileName"; })));
}

TEST(DbIOFJobSetup, ComparisonOrder) {
  // Each field differs in turn from a record holding every value; the name arrays, left
  // at their defaults, never do.
  std::map<std::string, std::pair<char, int>> where;
  const std::vector<Field> fields = Layout();
  for (std::size_t k = 0; k < fields.size(); ++k) where[fields[k].name] = {fields[k].type, static_cast<int>(k)};
  auto full = Loaded(Image(1, kAll));
  std::set<std::string> agreeing;
  std::istringstream head(kCompareHead), tail(kCompareTail);
  std::vector<std::string> order(std::istream_iterator<std::string>(head), {});
  for (auto k = where.at("m_InitialSpindleID").second; k <= where.at("m_RightWorkOffsetNo").second; ++k) {
    order.push_back(fields[k].name);
  }
  order.insert(order.end(), std::istream_iterator<std::string>(tail), {});
  for (const std::string& name : order) {
    const auto [type, k] = where.at(name);
    // clang-format off
    const CString values[] = {CString::Formatted(L" vs F%d", k), CString::Formatted(L"0 vs %d.25", k),
                              CString::Formatted(L"0 vs %d", k), CString::Formatted(L"-1 vs %d", k), L"false vs true",
                              L"true vs false", L"0 vs 1", CString::Formatted(L"(0, 0, 0) vs (%d, %d, %d)", k, k + 1, k + 2),
                              L"4x4 vs 4x4"};
    // clang-format on
    CString report(L"earlier\n");
    EXPECT_FALSE(Loaded(Image(1, [&](const std::string& f) { return agreeing.contains(f); }))->Compare(full, report));
    EXPECT_EQ(report, CString(L"earlier\nDifference Detected: ") + CString::FromUtf8(name) + L" - " +
                          values[kTypes.find(type)] + L"\n");
    agreeing.insert(name);
  }
  auto same = Loaded(Image(1, [&](const std::string& f) { return agreeing.contains(f); }));
  same->SetChordDevTol(full->GetChordDevTol() + 5e-7);  // within 1e-6
  CString report;
  EXPECT_TRUE(same->Compare(full, report)) << report;

  full->SetIOFName(L"JS");
  full->SetPickOffZPosition(-12.5);
  EXPECT_EQ(full->ToIOFString(), L"IOF Job Setup Object: Name: JS Chordal deviation tol=1.25 PickoffZ=-12.500000");
}

TEST(PartSpindles, ArchivesTextsComparisonsAndVersions) {
  auto spindle = DbIOFPartSpindle::Create();
  spindle->SetStockDefId(DbId(3));
  spindle->SetChuckDefId(DbId(4));
  auto map = DbIOFPartSpindleMap::Create();
  map->SetMap({{2, DbId(7)}, {-1, DbId(9)}});
  auto stock = DbIOFStockDef::Create();
  stock->SetOffsetVector(GmVector3D(1, 0, -2));
  auto chuck = DbIOFChuckDef::Create();
  chuck->SetIOFName(L"C");
  const std::string head = "00" + kRecordBase;
  ExpectArchive(*spindle, head + "03 00 00 00 00 00 00 00  04 00 00 00 00 00 00 00");
  ExpectArchive(*map, head + "02 00 00 00  FF FF FF FF 09 00 00 00 00 00 00 00  02 00 00 00 07 00 00 00 00 00 00 00");
  ExpectArchive(*stock, head + "00" + kOne + kZero + "00 00 00 00 00 00 00 C0");
  ExpectArchive(*chuck, "00 00  01 00 00 00 43 00  00 00 00 00 00  00");
  spindle->SetIOFName(L"S");
  EXPECT_EQ(spindle->ToIOFString(), L"DbIOFPartSpindle Name: S");
  EXPECT_EQ(map->ToIOFString(), L"DbIOFPartSpindleMap Size: 2");
  EXPECT_EQ(stock->ToIOFString(), L"Offset vector (1.000000,0.000000,-2.000000)");
  EXPECT_EQ(chuck->ToIOFString(), L"DbIOFChuckDef Name: C");

  // None of the four checks the stored version: a newer one reads as version 0.
  for (Quarp::DbBase* record : std::vector<Quarp::DbBase*>{spindle.Get(), map.Get(), stock.Get(), chuck.Get()}) {
    Bytes bytes = Store(*record);
    ++bytes[0];
    EXPECT_TRUE(LoadAll(*record, bytes)) << record->GetObjectClassName();
  }
  EXPECT_EQ(Fields(*spindle).back(), "m_ChuckDefId=#4");

  // The stock compares its vector within 1e-6; the others compare names only, with no
  // type check of their own: intended.
  CString report;
  auto other = DbIOFStockDef::Create();
  other->SetOffsetVector(GmVector3D(1, 0, -2 + 5e-7));
  EXPECT_TRUE(stock->Compare(other, report));
  other->SetOffsetVector(GmVector3D(1, 2, 0));
  EXPECT_FALSE(stock->Compare(other, report));
  EXPECT_TRUE(DbIOFPartSpindleMap::Create()->Compare(DbIOFPartSpindle::Create(), report));
  EXPECT_FALSE(chuck->Compare(spindle, report));
  EXPECT_EQ(report,
            L"Difference Detected: m_OffsetVector - (1, 0, -2) vs (1, 2, 0)\n"
            L"Difference Detected: m_Name - C vs S\n");

  // The map's load enters a pair unless its number is present: entries held are kept
  // and the first of two entries with one number wins. A count below 1 reads nothing.
  ASSERT_TRUE(LoadAll(*map, Hex(head + "03 00 00 00  05 00 00 00 01 00 00 00 00 00 00 00"
                                       "02 00 00 00 02 00 00 00 00 00 00 00  05 00 00 00 03 00 00 00 00 00 00 00")));
  ASSERT_TRUE(LoadAll(*map, Hex(head + "FF FF FF FF")));
  EXPECT_EQ(Fields(*map).back(), "m_Map=[{key=-1,value=#9},{key=2,value=#7},{key=5,value=#1}]");
}

TEST(PartSpindles, AddAndInitialize) {
  // In no manager nothing is created.
  auto loose = DbIOFPartSpindleMap::Create();
  auto spindle = DbIOFPartSpindle::Create();
  EXPECT_TRUE(loose->Add(1).IsNull());
  EXPECT_FALSE(loose->Find(1) || spindle->Initialize() || spindle->GetInitialized());

  Quarp::DbMgr mgr;
  auto map = DbIOFPartSpindleMap::Create();
  mgr.Add(map);
  const DbId first = map->Add(1);
  EXPECT_EQ(map->Add(1), first);  // a number already present: nothing new
  EXPECT_EQ(mgr.GetCount(), 4u);  // the map, the spindle, its stock and its chuck
  const DbId second = map->Add(2);
  EXPECT_TRUE(map->GetSpindleId(2) == second && map->Find(2) && !map->Find(3));
  Quarp::DbPtr<DbIOFPartSpindle> made;
  ASSERT_TRUE(mgr.Get(made, first));
  EXPECT_EQ(made->ToIOFString(), L"DbIOFPartSpindle Name: Part Spindle");
  EXPECT_TRUE(made->GetInitialized() && made->Initialize());  // initialized once only
  EXPECT_EQ(made->GetStockDefPtr()->GetId(), made->GetStockDefId());
  EXPECT_EQ(mgr.GetCount(), 7u);  // two spindles, each with its stock and chuck

  // The flag is not archived; Initialize of a loaded spindle keeps the definitions it
  // refers to and creates only what is missing.
  mgr.Add(spindle);
  ASSERT_TRUE(LoadAll(*spindle, Store(*made)) && !spindle->GetInitialized());
  spindle->SetChuckDefId(DbId(99));
  EXPECT_TRUE(spindle->Initialize());
  EXPECT_TRUE(spindle->GetStockDefId() == made->GetStockDefId() && spindle->GetChuckDefPtr());
  EXPECT_EQ(mgr.GetCount(), 9u);  // the spindle and its new chuck
}

}  // namespace
