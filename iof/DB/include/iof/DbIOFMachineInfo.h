// DbIOFMachineInfo: the machine a job is posted for (type code 0x5176, deliberately not
// registered by type name; its class name is registered for loading). The document
// keeps its id (DbIOFDocument::GetMachineInfoID). It answers what a post-processor asks
// of the machine:
//   - its name and kind (mill, lathe, mill-turn);
//   - its axes: name, linear or rotary, travel limits;
//   - its spindles and turrets, by the numbers the rest of the job uses (the part
//     spindle map, the axis combinations' active spindle and turret);
//   - its axis combinations: by number, which turret drives which spindle in which
//     stream (DbIOFAxisComboMiscInfo);
//   - its components (chuck, tail stock, bar feeder...), each of a component type, with
//     typed parameter values (DbIOFMPParams, an attribute map); and the component types,
//     each describing the parameters its components carry (DbIOFMPCompTypeInfo with
//     DbIOFMPCompParamInfo).
//
//   using M = IOF::DbIOFMachineInfo;
//   auto machine = M::Create();
//   machine->SetMachineName(L"Twin-spindle lathe");
//   machine->SetMachineType(M::kMillTurn);
//   machine->SetAxes({{L"X", M::kLinear, -10.0, 250.0}, {L"Z", M::kLinear, -600.0, 5.0},
//                     {L"C", M::kRotary, -360.0, 360.0}});
//   machine->SetSpindles({{1, L"Main spindle", 4000.0}, {2, L"Sub spindle", 6000.0}});
//   machine->SetTurrets({{1, L"Upper turret", 12}});
//   machine->SetAxisCombinations({{1, IOF::DbIOFAxisComboMiscInfo(L"Upper / main", 1, 1, 0)},
//                                 {2, IOF::DbIOFAxisComboMiscInfo(L"Upper / sub", 1, 2, 0)}});
//   machine->SetComponentTypes({{10, L"Chuck", {{L"ClampForce", IOF::IOFAttrbType::Double, L"kN"}}}});
//   IOF::DbIOFMPParams chuck(L"Main chuck", 10);
//   chuck.GetParams().AddAttribute(CString(L"ClampForce"), 45.0);
//   machine->SetComponents({chuck});
//   doc->SetMachineInfoID(mgr.Add(machine));
//
// Design. The tables are held by value and archived inside the record. The axes,
// spindles and turrets are small structures of this class. The axis-combination entries,
// the component types with their parameter descriptions and the components are the
// serialisable objects DbIOFAxisComboMiscInfo, DbIOFMPCompTypeInfo, DbIOFMPCompParamInfo
// and DbIOFMPParams: registered under their class names, so that they can also travel
// alone through UtArchive::WriteObject, but archived here by their own Serialize, without
// a class name, since each table holds one class only. Every table entry starts with a
// version of its own (all 0 now), so each kind of entry can grow on its own; a newer
// stored version is refused. They are not records: they have no id and belong to the
// machine information.
//
// Archive (version 0), after the record base: m_MachineName, m_MachineType (4 bytes),
// then the tables m_Axes, m_Spindles, m_Turrets, m_AxisCombinations, m_ComponentTypes,
// m_Components, each a 32-bit count followed by its entries (the axis combinations as
// number (4 bytes) then entry, in ascending number order). Entries: a version, then
//   Axis: m_Name, m_AxisType (4), m_MinLimit, m_MaxLimit (8 each);
//   Spindle: m_SpindleId (4), m_Name, m_MaxSpeed (8);
//   Turret: m_TurretId (4), m_Name, m_NumStations (4);
// and the other entries as their headers say.
//
// Comparison: the record base, then every field in archive order, table entries field
// by field; reals within 1e-6. Properties are named by their path: a table's size is
// "Num" + the table's name without "m_" ("NumAxes"), an entry's field is
// "m_Axes[1].m_MaxLimit", an axis combination's number "m_AxisCombinations[0].key". A
// component's parameters compare by count ("m_Components[0].NumParams"), then in key
// order the key, the data type and the value ("m_Components[0].m_Params[1].key",
// ".type", ".value"); the items' flags are not compared.
//
// Dump: "IOF Machine Info Object: Name: %s, Type: %s, Axes: %d, Spindles: %d, Turrets:
// %d, Axis combinations: %d, Component types: %d, Components: %d" with the machine name
// and the kind's text ("Mill", "Lathe", "Mill-Turn"; empty for any other value).
#pragma once

#include <iof/DbIOFAxisComboMiscInfo.h>
#include <iof/DbIOFBase.h>
#include <iof/DbIOFMPCompTypeInfo.h>
#include <iof/DbIOFMPParams.h>

#include <map>
#include <utility>
#include <vector>

namespace IOF {

class DbIOFMachineInfo : public DbIOFBase {
  IOF_RECORD(DbIOFMachineInfo, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  enum MachineType : int { kMill = 0, kLathe = 1, kMillTurn = 2 };
  enum AxisType : int { kLinear = 0, kRotary = 1 };
  static const wchar_t* MachineTypeText(int type) noexcept;

  // The table entries that are structures of this class; each archives a version (0)
  // first.
  struct Axis {
    static constexpr unsigned kVersion = 0;
    CString m_Name;  // "X", "Z", "C", ...
    AxisType m_AxisType = kLinear;
    double m_MinLimit = 0.0;  // travel, in the document's unit (rotary axes: degrees)
    double m_MaxLimit = 0.0;
    void Serialize(Quarp::UtArchive& ar);
    void VisitFields(FieldVisitor& visitor) const;
    template <class F, class... R>
    static void Fields(F&& f, R&... r);
  };
  struct Spindle {
    static constexpr unsigned kVersion = 0;
    int m_SpindleId = 0;  // the number the job uses for it
    CString m_Name;
    double m_MaxSpeed = 0.0;  // rpm
    void Serialize(Quarp::UtArchive& ar);
    void VisitFields(FieldVisitor& visitor) const;
    template <class F, class... R>
    static void Fields(F&& f, R&... r);
  };
  struct Turret {
    static constexpr unsigned kVersion = 0;
    int m_TurretId = 0;  // the number the job uses for it
    CString m_Name;
    int m_NumStations = 0;
    void Serialize(Quarp::UtArchive& ar);
    void VisitFields(FieldVisitor& visitor) const;
    template <class F, class... R>
    static void Fields(F&& f, R&... r);
  };
  using Axes = std::vector<Axis>;
  using Spindles = std::vector<Spindle>;
  using Turrets = std::vector<Turret>;
  using AxisCombinations = std::map<int, DbIOFAxisComboMiscInfo>;  // by combination number
  using ComponentTypes = std::vector<DbIOFMPCompTypeInfo>;
  using Components = std::vector<DbIOFMPParams>;

  const CString& GetMachineName() const noexcept { return m_MachineName; }
  void SetMachineName(const CString& v) { m_MachineName = v; }
  MachineType GetMachineType() const noexcept { return m_MachineType; }
  void SetMachineType(MachineType v) noexcept { m_MachineType = v; }
  const Axes& GetAxes() const noexcept { return m_Axes; }
  void SetAxes(Axes v) { m_Axes = std::move(v); }
  const Spindles& GetSpindles() const noexcept { return m_Spindles; }
  void SetSpindles(Spindles v) { m_Spindles = std::move(v); }
  const Turrets& GetTurrets() const noexcept { return m_Turrets; }
  void SetTurrets(Turrets v) { m_Turrets = std::move(v); }
  const AxisCombinations& GetAxisCombinations() const noexcept { return m_AxisCombinations; }
  void SetAxisCombinations(AxisCombinations v) { m_AxisCombinations = std::move(v); }
  const ComponentTypes& GetComponentTypes() const noexcept { return m_ComponentTypes; }
  void SetComponentTypes(ComponentTypes v) { m_ComponentTypes = std::move(v); }
  const Components& GetComponents() const noexcept { return m_Components; }
  void SetComponents(Components v) { m_Components = std::move(v); }

  // Look-ups by name or number; null when absent (the first match when several agree).
  const Axis* FindAxis(const CString& name) const;
  const DbIOFMPCompTypeInfo* FindComponentType(int typeId) const;
  const DbIOFMPParams* FindComponent(const CString& name) const;

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFMachineInfo() = default;

 private:
  class TableComparer;

  CString m_MachineName;
  MachineType m_MachineType = kMill;
  Axes m_Axes;
  Spindles m_Spindles;
  Turrets m_Turrets;
  AxisCombinations m_AxisCombinations;
  ComponentTypes m_ComponentTypes;
  Components m_Components;
};

}  // namespace IOF
