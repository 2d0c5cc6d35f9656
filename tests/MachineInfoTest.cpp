// The machine information and its table entries: the archive, the entries' versions,
// the comparison by table paths, the dump and look-ups.
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFMachineInfo.h>

#include <gtest/gtest.h>

using namespace IOF;
using namespace TestSupport;
using M = DbIOFMachineInfo;

namespace {

// The header's example, with a 64-bit parameter, which the attribute map alone cannot copy.
Quarp::DbPtr<M> Example() {
  auto machine = M::Create();
  machine->SetMachineName(L"Twin-spindle lathe");
  machine->SetMachineType(M::kMillTurn);
  machine->SetAxes({{L"X", M::kLinear, -10.0, 250.0}, {L"Z", M::kLinear, -600.0, 5.0}, {L"C", M::kRotary, -360, 360}});
  machine->SetSpindles({{1, L"Main spindle", 4000.0}, {2, L"Sub spindle", 6000.0}});
  machine->SetTurrets({{1, L"Upper turret", 12}});
  machine->SetAxisCombinations(
      {{1, DbIOFAxisComboMiscInfo(L"Upper / main", 1, 1, 0)}, {2, DbIOFAxisComboMiscInfo(L"Upper / sub", 1, 2, 0)}});
  machine->SetComponentTypes({{10, L"Chuck", {{L"ClampForce", IOFAttrbType::Double, L"kN"}}}});
  DbIOFMPParams chuck(L"Main chuck", 10);
  chuck.GetParams().AddAttribute(CString(L"ClampForce"), 45.0);
  chuck.GetParams().AddAttribute(CString(L"Serial"), std::uint64_t{1} << 40);
  machine->SetComponents({chuck});
  return machine;
}

// One entry per table; the component has no parameters.
Quarp::DbPtr<M> Small() {
  auto machine = M::Create();
  machine->SetMachineName(L"M");
  machine->SetMachineType(M::kLathe);
  machine->SetAxes({{L"X", M::kRotary, 0.0, 1.0}});
  machine->SetSpindles({{2, L"S", 1.0}});
  machine->SetTurrets({{3, L"T", 4}});
  machine->SetAxisCombinations({{5, DbIOFAxisComboMiscInfo(L"C", 1, 2, 3)}});
  machine->SetComponentTypes({{6, L"K", {{L"P", IOFAttrbType::Double, L"D"}}}});
  machine->SetComponents({{L"N", 6}});
  return machine;
}

TEST(DbIOFMachineInfo, ArchiveEntriesAndTexts) {
  auto small = Small();
  // Name, kind, then each table: a count, then entries that start with their version.
  ExpectArchive(*small, "00" + kRecordBase + "01000000 4D00  01000000  01000000 00 01000000 5800 01000000" + kZero +
                            kOne + "01000000 00 02000000 01000000 5300" + kOne +
                            "01000000 00 03000000 01000000 5400 04000000"
                            "01000000 05000000 00 01000000 4300 0100 0200 03000000"
                            "01000000 00 06000000 01000000 4B00  01000000 00 01000000 5000 06000000 01000000 4400"
                            "01000000 00 01000000 4E00 06000000 00 00000000");
  EXPECT_EQ(Fields(*small)[5], "m_Axes=[{m_Name=\"X\",m_AxisType=1,m_MinLimit=0,m_MaxLimit=1}]");
  ExpectNewerVersionRefused(*small, 26, 27);  // the axis entry's own version
  auto example = Example();
  ExpectRoundTrips(*example);  // its clone copies the 64-bit parameter
  EXPECT_EQ(Fields(*example)[10], "m_Components=[{m_ComponentName=\"Main chuck\",m_TypeId=10,m_Params=2 attributes}]");
  EXPECT_EQ(example->ToIOFString(),
            L"IOF Machine Info Object: Name: Twin-spindle lathe, Type: Mill-Turn, Axes: 3, "
            L"Spindles: 2, Turrets: 1, Axis combinations: 2, Component types: 1, Components: 1");
  EXPECT_TRUE(example->FindAxis(L"C")->m_MinLimit == -360.0 && !example->FindAxis(L"Y"));
  EXPECT_EQ(example->FindComponent(L"Main chuck")->GetTypeId(), 10);
  EXPECT_EQ(example->FindComponentType(10)->FindParamInfo(L"ClampForce")->GetDescription(), L"kN");

  DbIOFAxisComboMiscInfo combo;
  EXPECT_EQ(combo.ToString(), L"Description , Active Turret Id -1, Active Spindle Id -1, stream Index -1");
  combo = DbIOFAxisComboMiscInfo(L"AB", -2, 7, 9);
  ExpectStores(combo, "00 02000000 4100 4200  FEFF 0700 09000000");
  ExpectNewerVersionRefused(combo, 0, 1);
  EXPECT_EQ(combo.ToString(), L"Description AB, Active Turret Id -2, Active Spindle Id 7, stream Index 9");
}

// Changes a copy of one of the machine's tables and puts it back.
template <class T>
void Edit(M& m, const T& (M::*get)() const noexcept, void (M::*set)(T),
          const std::type_identity_t<std::function<void(T&)>>& change) {
  T table = (m.*get)();
  change(table);
  (m.*set)(std::move(table));
}
void Params(M& m, const std::function<void(UtIOFAttribMap&)>& change) {
  Edit(m, &M::GetComponents, &M::SetComponents, [&](auto& c) { change(c[0].GetParams()); });
}

TEST(DbIOFMachineInfo, ComparisonByTablePaths) {
  // Each step makes `b` differ in one more property; the report names the first
  // difference in the comparison order, and applying the step to `a` moves on.
  const std::vector<std::pair<std::function<void(M&)>, const wchar_t*>> steps = {
      {[](M& m) { m.SetIOFName(L"I"); }, L"m_Name -  vs I"},
      {[](M& m) { m.SetMachineName(L"N"); }, L"m_MachineName - M vs N"},
      {[](M& m) { m.SetMachineType(M::kMill); }, L"m_MachineType - 1 vs 0"},
      {[](M& m) { Edit(m, &M::GetAxes, &M::SetAxes, [](auto& a) { a.resize(2); }); }, L"NumAxes - 1 vs 2"},
      {[](M& m) { Edit(m, &M::GetAxes, &M::SetAxes, [](auto& a) { a[0].m_MinLimit = -2; }); },
       L"m_Axes[0].m_MinLimit - 0 vs -2"},
      {[](M& m) { Edit(m, &M::GetTurrets, &M::SetTurrets, [](auto& t) { t[0].m_NumStations = 8; }); },
       L"m_Turrets[0].m_NumStations - 4 vs 8"},
      {[](M& m) {
         m.SetAxisCombinations({{7, m.GetAxisCombinations().at(5)}});
       },
       L"m_AxisCombinations[0].key - 5 vs 7"},
      {[](M& m) {
         Edit(m, &M::GetAxisCombinations, &M::SetAxisCombinations, [](auto& c) { c[7].SetActiveSpindleID(-1); });
       },
       L"m_AxisCombinations[0].m_ActiveSpindleID - 2 vs -1"},
      {[](M& m) {
         Edit(m, &M::GetComponentTypes, &M::SetComponentTypes, [](auto& t) {
           t[0].SetParamInfos({{L"P", IOFAttrbType::Int, L"D"}});
         });
       },
       L"m_ComponentTypes[0].m_ParamInfos[0].m_DataType - 6 vs 2"},
      {[](M& m) { Edit(m, &M::GetComponents, &M::SetComponents, [](auto& c) { c[0].SetTypeId(9); }); },
       L"m_Components[0].m_TypeId - 6 vs 9"},
      {[](M& m) { Params(m, [](auto& p) { p.AddAttribute(CString(L"P3"), 3); }); },
       L"m_Components[0].NumParams - 2 vs 3"},
      {[](M& m) { Params(m, [](auto& p) { p.RemoveAttribute(L"P1"), p.AddAttribute(CString(L"P0"), 1.0); }); },
       L"m_Components[0].m_Params[0].key - P1 vs P0"},
      {[](M& m) { Params(m, [](auto& p) { p.SetDblAttribVal(L"P0", 1.5); }); },
       L"m_Components[0].m_Params[0].value - 1 vs 1.5"},
      {[](M& m) { Params(m, [](auto& p) { p.RemoveAttribute(L"P2"), p.AddAttribute(CString(L"P2"), L"2"); }); },
       L"m_Components[0].m_Params[1].type - 6 vs 7"},
  };
  const auto make = [] {
    auto m = Small();
    Params(*m, [](auto& p) { p.AddAttribute(CString(L"P1"), 1.0), p.AddAttribute(CString(L"P2"), 2.0); });
    return m;
  };
  auto a = make();
  auto b = make();
  for (const auto& step : steps) step.first(*b);
  for (const auto& [apply, line] : steps) {
    CString report(L"earlier\n");
    EXPECT_FALSE(a->Compare(b, report));
    EXPECT_EQ(report, CString(L"earlier\nDifference Detected: ") + line + L"\n");
    apply(*a);
  }
  // Reals within 1e-6 are equal.
  Edit(*b, &M::GetAxes, &M::SetAxes, [](auto& a) { a[0].m_MinLimit += 5e-7; });
  CString report;
  EXPECT_TRUE(a->Compare(b, report)) << report;
}

}  // namespace
