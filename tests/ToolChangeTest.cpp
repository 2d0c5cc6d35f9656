// The tool change: the ten archive layouts, the version error, the dump with its crossed
// labels, the comparison order, the never-archived thread pitch, round trips and the
// field list.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciToolChange.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace IOF;
using namespace TestSupport;

namespace {

// Tool-change and NCI-base versions (9, 0), then the record base of an unnamed record
// and the NCI base of a fresh one.
const std::string kHeadV9 = "09 00" + kRecordBase + kFreshNciBase;

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

// The ten layouts: the turret index (since 1) follows the holder length; layouts 0 and 1
// carry an obsolete byte after the tool diameter, so the lengths after it read correctly
// only when it is skipped. The comparison puts the holder and generation types first and
// the turret index after the station.
TEST(DbIOFNciToolChange, Layouts) {
  const auto i16 = [](std::int16_t v) { return Le(v); };
  ExpectLayout<DbIOFNciToolChange>(
      {kHeadV9,
       L"IOF Nci Tool Change Object: DbId:0, slotId:4, type:-300, turretIndex:9, station:6, name:\"T12\". Tool is "
       L"\"Live\". GenType:\"GANG\". HolderType:\"Mill\".",
       {R(Le(12), Le(-1), L"m_ToolNum - -1 vs 12"),
        R(Le(22), Le(-1), L"m_DiaOffsetNum - -1 vs 22"),
        R(Le(32), Le(-1), L"m_LengthOffsetNum - -1 vs 32"),
        R(Le(4), Le(-1), L"m_ToolSlotId - -1 vs 4"),
        R(i16(-300), i16(-1), L"m_ToolType - -1 vs -300"),
        R(Le(6), Le(-1), L"m_ToolStation - -1 vs 6"),
        R(Str(u"T12"), I0, L"m_ToolName -  vs T12"),
        R(Le(3), Le(1), L"m_ToolHoldType - 1 vs 3"),
        I(2, L"m_ToolGenType - 0 vs 2"),
        Flag(L"m_IsToolLive - false vs true"),
        R(Str(u"HLD"), I0, L"m_ToolHolderName -  vs HLD"),
        R(Str(u"CNMG"), I0, L"m_LatheToolInsertName -  vs CNMG"),
        D(0.4, L"m_ToolInsertCornerRadius - 0 vs 0.4"),
        D(12.5, L"m_ToolDiameter - 0 vs 12.5"),
        Gone("A5", 2),
        D(75.25, L"m_OverallLength - 0 vs 75.25"),
        D(40.5, L"m_HolderLength - 0 vs 40.5"),
        R(Le(9), Le(-1), L"m_TurretIndexPosition - -1 vs 9", 1),
        R(kTrue, kFalse, L"m_IsMultiInsertTool - false vs true", 3),
        R(Le(45.0), D0, L"m_ToolInsertAngleOffset - 0 vs 45", 3),
        R(Le(-1.5), D0, L"m_ToolInsertYOffset - 0 vs -1.5", 3),
        R(kTrue, kFalse, L"m_IsMultiStationSpindleToolLocator - false vs true", 4),
        R(Le(3), I0, L"m_TotalNumberOfInserts - 0 vs 3", 4),
        R(Le(2), I0, L"m_InsertNumber - 0 vs 2", 4),
        R(kTrue, kFalse, L"m_IsLeftHanded - false vs true", 5),
        R(kTrue, kFalse, L"m_IsPrimaryInsertLeftHanded - false vs true", 5),
        R(Pt(1, 2, 3), kP0, L"m_OffsetVectorFromRotationCenter - (0, 0, 0) vs (1, 2, 3)", 6),
        R(i16(7), i16(0), L"m_ToolInsertCompensationType - 0 vs 7", 7),
        R(kTrue, kFalse, L"m_IsMillToolInAngularStation - false vs true", 8),
        R(Le(30.0), D0, L"m_MillToolStationTiltAngleInDegree - 0 vs 30", 8),
        R(Le(2.5), Le(1.0), L"m_MillToolSpindleSpeedMultiplier - 1 vs 2.5", 8),
        R(kTrue, kFalse, L"m_ReverseMillToolSpindleDirection - false vs true", 8),
        R(Le(15.0), D0, L"m_SpindleToolLocatorStationAngleInDegrees - 0 vs 15", 8),
        R(kTrue, kFalse, L"m_IsYAxisTurningTool - false vs true", 9)},
       {7,  8,  0,  1,  2,  3,  4,  5,  17, 6,  9,  10, 11, 12, 13, 15, 16,
        18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 14},
       "m_ToolNum=12 m_DiaOffsetNum=22 m_LengthOffsetNum=32 m_ToolSlotId=4 m_ToolType=-300 m_ToolStation=6 "
       "m_ToolName=\"T12\" m_ToolHoldType=3 m_ToolGenType=2 m_IsToolLive=true m_ToolHolderName=\"HLD\" "
       "m_LatheToolInsertName=\"CNMG\" m_ToolInsertCornerRadius=0.4 m_ToolDiameter=12.5 m_OverallLength=75.25 "
       "m_HolderLength=40.5 m_TurretIndexPosition=9 m_IsMultiInsertTool=true m_ToolInsertAngleOffset=45 "
       "m_ToolInsertYOffset=-1.5 m_IsMultiStationSpindleToolLocator=true m_TotalNumberOfInserts=3 "
       "m_InsertNumber=2 m_IsLeftHanded=true m_IsPrimaryInsertLeftHanded=true "
       "m_OffsetVectorFromRotationCenter=<1,2,3> m_ToolInsertCompensationType=7 m_IsMillToolInAngularStation=true "
       "m_MillToolStationTiltAngleInDegree=30 m_MillToolSpindleSpeedMultiplier=2.5 "
       "m_ReverseMillToolSpindleDirection=true m_SpindleToolLocatorStationAngleInDegrees=15 "
       "m_IsYAxisTurningTool=true m_ThreadPitch=0"});
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

  // The dump shows the record's id (the other values: see the layout table).
  Quarp::DbMgr mgr;
  auto first = DbIOFNciLinear::Create();
  mgr.Add(first);  // the tool change gets id 2
  auto tool = DbIOFNciToolChange::Create();
  mgr.Add(tool);
  EXPECT_EQ(tool->ToIOFString(),
            L"IOF Nci Tool Change Object: DbId:2, slotId:-1, type:-1, turretIndex:-1, station:-1, "
            L"name:\"\". Tool is \"Static\". GenType:\"ATC\". HolderType:\"None\".");
}

// What the layout table cannot show: the G-code comes before every own field, the
// never-archived thread pitch between the holder length and the multi-insert flag, and
// reals and the vector within 1e-6 are equal.
TEST(DbIOFNciToolChange, ComparisonOrderAroundTheTable) {
  using T = DbIOFNciToolChange;
  ExpectReportOrder<T>(
      {
          {[](T& t, bool) { t.SetToolDiameter(5e-7); }, nullptr},
          {[](T& t, bool) { t.SetOffsetVectorFromRotationCenter(GmVector3D(0, 0, 5e-7)); }, nullptr},
          {[](T& t, bool on) { t.SetGCode(on ? 116 : 0); }, L"Difference Detected: m_GCode - 0 vs 116\n"},
          {[](T& t, bool on) { t.SetToolHolderType(on ? 3 : 1); }, L"Difference Detected: m_ToolHoldType - 1 vs 3\n"},
          {[](T& t, bool on) { t.SetHolderLength(on ? 40.5 : 0); },
           L"Difference Detected: m_HolderLength - 0 vs 40.5\n"},
          {[](T& t, bool on) { PitchedToolChange::SetPitch(t, on ? 1.25 : 0); },
           L"Difference Detected: m_ThreadPitch - 0 vs 1.25\n"},
          {[](T& t, bool on) { t.SetIsMultiInsertTool(on); },
           L"Difference Detected: m_IsMultiInsertTool - false vs true\n"},
      },
      [] { return PitchedToolChange::Create(0.0); });
}

// Compared (see above) and copied, but never archived.
TEST(DbIOFNciToolChange, ThreadPitchIsComparedCopiedButNeverArchived) {
  auto plain = DbIOFNciToolChange::Create();
  auto pitched = PitchedToolChange::Create(1.5);
  auto copy = DbIOFNciToolChange::Create();
  copy->Copy(*pitched, Quarp::DbCloneMode::Normal, nullptr);
  CString report;
  EXPECT_FALSE(plain->Compare(copy, report));
  EXPECT_EQ(report, L"Difference Detected: m_ThreadPitch - 0 vs 1.5\n");

  // The stored bytes equal those of a record without it; a load leaves what the record held.
  EXPECT_EQ(Store(*pitched), Store(*plain));
  auto loaded = PitchedToolChange::Create(7.0);
  ASSERT_TRUE(LoadAll(*loaded, Store(*pitched)));
  EXPECT_EQ(Fields(*loaded).back(), "m_ThreadPitch=7");
}

}  // namespace
