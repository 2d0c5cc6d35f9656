// DbIOFNciToolChange: a tool change in the program output: which tool is brought into
// cut, where it sits (slot, station, turret index), its offsets, its geometry, its
// holder and insert names, and the lathe and mill-turn particulars. Type
// IOFNCITOOLCHANGE (0x5116). A stream keeps one tool change per distinct tool set-up
// (DbIOFStream::AddToolChange) and places tool changes among its items.
//
//   auto tool = IOF::DbIOFNciToolChange::Create();
//   tool->SetToolNum(3);
//   tool->SetToolName(L"10 MM FLAT ENDMILL");
//   tool->SetToolDiameter(10.0);
//   bool added = false;
//   stream->AddToolChange(tool, added, true, true);
//
// Archive (version 9), after DbIOFNciBase, the fields below in declaration order; the
// version that added each field is noted. Older layouts:
//   0: up to m_ToolDiameter, one obsolete byte (read and dropped), m_OverallLength,
//      m_HolderLength;  1: as 0, then m_TurretIndexPosition;  2: up to
//      m_TurretIndexPosition without the obsolete byte;  3 to 9: as the one before, then
//      the fields of that version.
// m_ThreadPitch is held, copied and compared but never archived (it keeps its default
// after every load) and has no accessor: intended.
//
// Comparison: the DbIOFNciBase comparison, then m_ToolHoldType, m_ToolGenType,
// m_ToolNum, m_DiaOffsetNum, m_LengthOffsetNum, m_ToolSlotId, m_ToolType, m_ToolStation,
// m_TurretIndexPosition, m_ToolName, m_IsToolLive, m_ToolHolderName,
// m_LatheToolInsertName, m_ToolInsertCornerRadius, m_ToolDiameter, m_OverallLength,
// m_HolderLength, m_ThreadPitch, then the fields of versions 3 to 9 in archive order.
#pragma once

#include <iof/DbIOFNciBase.h>
#include <iof/GmVector3D.h>

#include <cstdint>
#include <utility>

namespace IOF {

class DbIOFNciToolChange : public DbIOFNciBase {
  IOF_RECORD(DbIOFNciToolChange, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 9;

  // Holder types (m_ToolHoldType).
  enum ToolHolderType : int { kATC = 1, kTurret = 2, kGang = 3, kOffset = 4 };
  // Tool generation types (m_ToolGenType).
  enum ToolGenType : int { kNone = 0, kLathe = 1, kMill = 2, kRouter = 3, kWire = 4 };
  // "ATC", "TURRET", "GANG", "OFFSET"; empty for any other value.
  static const wchar_t* ToolHolderTypeText(int type) noexcept;
  // "None", "Lathe", "Mill", "Router", "Wire"; empty for any other value.
  static const wchar_t* ToolGenTypeText(int type) noexcept;

  int GetToolNum() const noexcept { return m_ToolNum; }
  void SetToolNum(int v) noexcept { m_ToolNum = v; }
  int GetDiaOffsetNum() const noexcept { return m_DiaOffsetNum; }
  void SetDiaOffsetNum(int v) noexcept { m_DiaOffsetNum = v; }
  int GetLengthOffsetNum() const noexcept { return m_LengthOffsetNum; }
  void SetLengthOffsetNum(int v) noexcept { m_LengthOffsetNum = v; }
  int GetToolSlotId() const noexcept { return m_ToolSlotId; }
  void SetToolSlotId(int v) noexcept { m_ToolSlotId = v; }
  std::int16_t GetToolType() const noexcept { return m_ToolType; }
  void SetToolType(std::int16_t v) noexcept { m_ToolType = v; }
  int GetToolStation() const noexcept { return m_ToolStation; }
  void SetToolStation(int v) noexcept { m_ToolStation = v; }
  CString GetToolName() const { return m_ToolName; }
  void SetToolName(CString v) { m_ToolName = std::move(v); }
  int GetToolHolderType() const noexcept { return m_ToolHoldType; }
  void SetToolHolderType(int v) noexcept { m_ToolHoldType = v; }
  int GetToolGenType() const noexcept { return m_ToolGenType; }
  void SetToolGenType(int v) noexcept { m_ToolGenType = v; }
  bool GetIsToolLive() const noexcept { return m_IsToolLive; }
  void SetIsToolLive(bool v) noexcept { m_IsToolLive = v; }
  CString GetToolHolderName() const { return m_ToolHolderName; }
  void SetToolHolderName(const CString& v) { m_ToolHolderName = v; }
  CString GetLatheToolInsertName() const { return m_LatheToolInsertName; }
  void SetLatheToolInsertName(const CString& v) { m_LatheToolInsertName = v; }
  double GetToolInsertCornerRadius() const noexcept { return m_ToolInsertCornerRadius; }
  void SetToolInsertCornerRadius(double v) noexcept { m_ToolInsertCornerRadius = v; }
  double GetToolDiameter() const noexcept { return m_ToolDiameter; }
  void SetToolDiameter(double v) noexcept { m_ToolDiameter = v; }
  double GetOverallLength() const noexcept { return m_OverallLength; }
  void SetOverallLength(double v) noexcept { m_OverallLength = v; }
  double GetHolderLength() const noexcept { return m_HolderLength; }
  void SetHolderLength(double v) noexcept { m_HolderLength = v; }
  int GetTurretIndexPosition() const noexcept { return m_TurretIndexPosition; }
  void SetTurretIndexPosition(int v) noexcept { m_TurretIndexPosition = v; }
  bool GetIsMultiInsertTool() const noexcept { return m_IsMultiInsertTool; }
  void SetIsMultiInsertTool(bool v) noexcept { m_IsMultiInsertTool = v; }
  double GetToolInsertAngleOffset() const noexcept { return m_ToolInsertAngleOffset; }
  void SetToolInsertAngleOffset(double v) noexcept { m_ToolInsertAngleOffset = v; }
  double GetToolInsertYOffset() const noexcept { return m_ToolInsertYOffset; }
  void SetToolInsertYOffset(double v) noexcept { m_ToolInsertYOffset = v; }
  bool GetIsMultiStationSpindleToolLocator() const noexcept { return m_IsMultiStationSpindleToolLocator; }
  void SetIsMultiStationSpindleToolLocator(bool v) noexcept { m_IsMultiStationSpindleToolLocator = v; }
  int GetTotalNumberOfInserts() const noexcept { return m_TotalNumberOfInserts; }
  void SetTotalNumberOfInserts(int v) noexcept { m_TotalNumberOfInserts = v; }
  int GetInsertNumber() const noexcept { return m_InsertNumber; }
  void SetInsertNumber(int v) noexcept { m_InsertNumber = v; }
  bool GetIsLeftHanded() const noexcept { return m_IsLeftHanded; }
  void SetIsLeftHanded(bool v) noexcept { m_IsLeftHanded = v; }
  bool GetIsPrimaryInsertLeftHanded() const noexcept { return m_IsPrimaryInsertLeftHanded; }
  void SetIsPrimaryInsertLeftHanded(bool v) noexcept { m_IsPrimaryInsertLeftHanded = v; }
  const GmVector3D& GetOffsetVectorFromRotationCenter() const noexcept { return m_OffsetVectorFromRotationCenter; }
  void SetOffsetVectorFromRotationCenter(const GmVector3D& v) { m_OffsetVectorFromRotationCenter = v; }
  std::int16_t GetToolInsertCompensationType() const noexcept { return m_ToolInsertCompensationType; }
  void SetToolInsertCompensationType(std::int16_t v) noexcept { m_ToolInsertCompensationType = v; }
  bool GetIsMillToolInAngularStation() const noexcept { return m_IsMillToolInAngularStation; }
  void SetIsMillToolInAngularStation(bool v) noexcept { m_IsMillToolInAngularStation = v; }
  double GetMillToolStationTiltAngleInDegree() const noexcept { return m_MillToolStationTiltAngleInDegree; }
  void SetMillToolStationTiltAngleInDegree(double v) noexcept { m_MillToolStationTiltAngleInDegree = v; }
  double GetMillToolSpindleSpeedMultiplier() const noexcept { return m_MillToolSpindleSpeedMultiplier; }
  void SetMillToolSpindleSpeedMultiplier(double v) noexcept { m_MillToolSpindleSpeedMultiplier = v; }
  bool GetReverseMillToolSpindleDirection() const noexcept { return m_ReverseMillToolSpindleDirection; }
  void SetReverseMillToolSpindleDirection(bool v) noexcept { m_ReverseMillToolSpindleDirection = v; }
  double GetSpindleToolLocatorStationAngle() const noexcept { return m_SpindleToolLocatorStationAngleInDegrees; }
  void SetSpindleToolLocatorStationAngle(double v) noexcept { m_SpindleToolLocatorStationAngleInDegrees = v; }
  bool GetIsYAxisTurningTool() const noexcept { return m_IsYAxisTurningTool; }
  void SetIsYAxisTurningTool(bool v) noexcept { m_IsYAxisTurningTool = v; }

  // "IOF Nci Tool Change Object: DbId:%d," with the record's own id, then " slotId:%d,",
  // " type:%d,", " turretIndex:%d,", " station:%d,", " name:\"%s\".", " Tool is \"%s\"."
  // ("Live" or "Static"), " GenType:\"%s\"." and " HolderType:\"%s\".". Intended: the
  // "GenType" label carries the holder-type text and "HolderType" the generation-type text.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciToolChange() = default;

  // Held, copied and compared but never archived, and without an accessor: intended.
  double m_ThreadPitch = 0.0;

 private:
  int m_ToolNum = -1;
  int m_DiaOffsetNum = -1;
  int m_LengthOffsetNum = -1;
  int m_ToolSlotId = -1;
  std::int16_t m_ToolType = -1;  // defined by the producer
  int m_ToolStation = -1;
  CString m_ToolName;
  int m_ToolHoldType = kATC;  // ToolHolderType
  int m_ToolGenType = kNone;  // ToolGenType
  bool m_IsToolLive = false;  // live ("Live") or static ("Static") tool
  CString m_ToolHolderName;
  CString m_LatheToolInsertName;
  double m_ToolInsertCornerRadius = 0.0;
  double m_ToolDiameter = 0.0;
  double m_OverallLength = 0.0;
  double m_HolderLength = 0.0;
  int m_TurretIndexPosition = -1;                          // since version 1
  bool m_IsMultiInsertTool = false;                        // since version 3
  double m_ToolInsertAngleOffset = 0.0;                    // since version 3
  double m_ToolInsertYOffset = 0.0;                        // since version 3
  bool m_IsMultiStationSpindleToolLocator = false;         // since version 4
  int m_TotalNumberOfInserts = 0;                          // since version 4
  int m_InsertNumber = 0;                                  // since version 4
  bool m_IsLeftHanded = false;                             // since version 5
  bool m_IsPrimaryInsertLeftHanded = false;                // since version 5
  GmVector3D m_OffsetVectorFromRotationCenter;             // since version 6
  std::int16_t m_ToolInsertCompensationType = 0;           // since version 7; defined by the producer
  bool m_IsMillToolInAngularStation = false;               // since version 8
  double m_MillToolStationTiltAngleInDegree = 0.0;         // since version 8
  double m_MillToolSpindleSpeedMultiplier = 1.0;           // since version 8
  bool m_ReverseMillToolSpindleDirection = false;          // since version 8
  double m_SpindleToolLocatorStationAngleInDegrees = 0.0;  // since version 8
  bool m_IsYAxisTurningTool = false;                       // since version 9
};

}  // namespace IOF
