// The job setup (its 77-field layout, both versions, the comparison order, the dump) and
// the part spindles with their map, stock and chuck definitions.
#include "LayoutTable.h"

#include <iof/DbIOFChuckDef.h>
#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFPartSpindle.h>
#include <iof/DbIOFPartSpindleMap.h>
#include <iof/DbIOFStockDef.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace IOF;
using namespace TestSupport;
using Quarp::DbId;

namespace {

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

// The job setup's table: the list part (its version, the record base, kind 0, no items),
// then field k of kLayout holding the string "F<k>", the real k + 0.25, the int k, a
// flipped flag, the point (k, k+1, k+2), the identity with element (0, 3) = k, the names
// "A<k>" and "B<k>" (not compared) or the stick-out reference 1. Version 0 has no machine
// file name.
Layout SetupLayout() {
  Layout l = {"00 00" + kRecordBase + "00 00 00 00  00 00 00 00",
              L"IOF Job Setup Object: Name:  Chordal deviation tol=1.25 PickoffZ=24.250000",
              {}};
  std::vector<std::string> names;
  std::istringstream in(kLayout);
  char t;
  for (std::string name; in >> t >> name;) {
    names.push_back(name);
    const int k = static_cast<int>(l.rows.size());
    const std::string a = "A" + std::to_string(k), b = "B" + std::to_string(k);
    if (t == 'S') l.rows.push_back(Text(name, "F" + std::to_string(k)));
    if (t == 'D') l.rows.push_back(Real(name, k + 0.25));
    if (t == 'I' || t == 'J' || t == 'E') l.rows.push_back(Int(name, t == 'E' ? 1 : k, t == 'J' ? -1 : 0));
    if (t == 'b' || t == 'B') l.rows.push_back(Bool(name, t == 'b'));
    if (t == 'P') l.rows.push_back(Point(name, k, k + 1, k + 2));
    if (t == 'M') l.rows.push_back(Matrix(name, k));
    if (t == 'A') {
      l.rows.push_back(Named(name, Le(2) + Str(a) + Str(b), I0, "[{value=\"" + a + "\"},{value=\"" + b + "\"}]", "[]",
                             0, kNotCompared));
    }
  }
  l.rows.back().since = 1;
  const auto at = [&](const std::string& name) { return std::size_t(std::ranges::find(names, name) - names.begin()); };
  // Compared in archive order, but for three fields moved forward.
  l.order = {1, 0, 2, 5, 3, 4};
  for (auto k = l.order.size(); k < at("m_PartStickOutDistance"); ++k) l.order.push_back(k);
  l.order.push_back(at("m_PartStickOutReference"));
  return l;
}

TEST(DbIOFJobSetup, BothLayoutsComparisonOrderAndDump) {
  const Layout l = SetupLayout();
  ExpectLayout<DbIOFJobSetup>(l);
  auto full = Loaded<DbIOFJobSetup>(Image(l, 1, All));
  EXPECT_EQ(full->GetLeftStockMCOArray(), (std::vector<CString>{L"A67", L"B67"}));
  auto near = Loaded<DbIOFJobSetup>(Image(l, 1, All));
  near->SetChordDevTol(full->GetChordDevTol() + 5e-7);  // within 1e-6
  CString report;
  EXPECT_TRUE(near->Compare(full, report)) << report;
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
