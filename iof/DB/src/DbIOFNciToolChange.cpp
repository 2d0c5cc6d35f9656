#include <iof/DbIOFNciToolChange.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciToolChange)

// One list reads every layout from version 0 to 9: each field names the version that
// added it.
template <class F, class... R>
void DbIOFNciToolChange::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_ToolNum", r.m_ToolNum...);
  f(Field::V(0), "m_DiaOffsetNum", r.m_DiaOffsetNum...);
  f(Field::V(0), "m_LengthOffsetNum", r.m_LengthOffsetNum...);
  f(Field::V(0), "m_ToolSlotId", r.m_ToolSlotId...);
  f(Field::V(0), "m_ToolType", r.m_ToolType...);
  f(Field::V(0), "m_ToolStation", r.m_ToolStation...);
  f(Field::V(0), "m_ToolName", r.m_ToolName...);
  f(Field::V(0), "m_ToolHoldType", r.m_ToolHoldType...);
  f(Field::V(0), "m_ToolGenType", r.m_ToolGenType...);
  f(Field::V(0), "m_IsToolLive", r.m_IsToolLive...);
  f(Field::V(0), "m_ToolHolderName", r.m_ToolHolderName...);
  f(Field::V(0), "m_LatheToolInsertName", r.m_LatheToolInsertName...);
  f(Field::V(0), "m_ToolInsertCornerRadius", r.m_ToolInsertCornerRadius...);
  f(Field::V(0), "m_ToolDiameter", r.m_ToolDiameter...);
  // Kept for compatibility with files written by versions 0 and 1: one byte that is
  // read and dropped.
  f(Field::Dropped(0, 1), "m_ObsoleteByte", Field::Discard<std::uint8_t>{});
  f(Field::V(0), "m_OverallLength", r.m_OverallLength...);
  f(Field::V(0), "m_HolderLength", r.m_HolderLength...);
  f(Field::V(1), "m_TurretIndexPosition", r.m_TurretIndexPosition...);
  f(Field::V(3), "m_IsMultiInsertTool", r.m_IsMultiInsertTool...);
  f(Field::V(3), "m_ToolInsertAngleOffset", r.m_ToolInsertAngleOffset...);
  f(Field::V(3), "m_ToolInsertYOffset", r.m_ToolInsertYOffset...);
  f(Field::V(4), "m_IsMultiStationSpindleToolLocator", r.m_IsMultiStationSpindleToolLocator...);
  f(Field::V(4), "m_TotalNumberOfInserts", r.m_TotalNumberOfInserts...);
  f(Field::V(4), "m_InsertNumber", r.m_InsertNumber...);
  f(Field::V(5), "m_IsLeftHanded", r.m_IsLeftHanded...);
  f(Field::V(5), "m_IsPrimaryInsertLeftHanded", r.m_IsPrimaryInsertLeftHanded...);
  f(Field::V(6), "m_OffsetVectorFromRotationCenter", r.m_OffsetVectorFromRotationCenter...);
  f(Field::V(7), "m_ToolInsertCompensationType", r.m_ToolInsertCompensationType...);
  f(Field::V(8), "m_IsMillToolInAngularStation", r.m_IsMillToolInAngularStation...);
  f(Field::V(8), "m_MillToolStationTiltAngleInDegree", r.m_MillToolStationTiltAngleInDegree...);
  f(Field::V(8), "m_MillToolSpindleSpeedMultiplier", r.m_MillToolSpindleSpeedMultiplier...);
  f(Field::V(8), "m_ReverseMillToolSpindleDirection", r.m_ReverseMillToolSpindleDirection...);
  f(Field::V(8), "m_SpindleToolLocatorStationAngleInDegrees", r.m_SpindleToolLocatorStationAngleInDegrees...);
  f(Field::V(9), "m_IsYAxisTurningTool", r.m_IsYAxisTurningTool...);
  // Intended: held, copied and compared, never archived; it keeps its default after a load.
  f(Field::NotArchived, "m_ThreadPitch", r.m_ThreadPitch...);
}

const wchar_t* DbIOFNciToolChange::ToolHolderTypeText(int type) noexcept {
  switch (type) {
    case kATC:
      return L"ATC";
    case kTurret:
      return L"TURRET";
    case kGang:
      return L"GANG";
    case kOffset:
      return L"OFFSET";
    default:
      return L"";
  }
}

const wchar_t* DbIOFNciToolChange::ToolGenTypeText(int type) noexcept {
  switch (type) {
    case kNone:
      return L"None";
    case kLathe:
      return L"Lathe";
    case kMill:
      return L"Mill";
    case kRouter:
      return L"Router";
    case kWire:
      return L"Wire";
    default:
      return L"";
  }
}

CString DbIOFNciToolChange::ToIOFString() const {
  CString text = CString::Formatted(L"IOF Nci Tool Change Object: DbId:%d,", GetId());
  text.AppendFormat(L" slotId:%d,", m_ToolSlotId);
  text.AppendFormat(L" type:%d,", static_cast<int>(m_ToolType));
  text.AppendFormat(L" turretIndex:%d,", m_TurretIndexPosition);
  text.AppendFormat(L" station:%d,", m_ToolStation);
  text.AppendFormat(L" name:\"%s\".", m_ToolName);
  text.AppendFormat(L" Tool is \"%s\".", m_IsToolLive ? L"Live" : L"Static");
  // Intended: the two labels carry each other's values.
  text.AppendFormat(L" GenType:\"%s\".", ToolHolderTypeText(m_ToolHoldType));
  text.AppendFormat(L" HolderType:\"%s\".", ToolGenTypeText(m_ToolGenType));
  return text;
}

bool DbIOFNciToolChange::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciToolChange>(other, report);
  constexpr double tol = 1e-6;
  return o && DbIOFNciBase::Compare(other, report) &&
         CompareProperty(m_ToolHoldType, o->m_ToolHoldType, L"m_ToolHoldType", report) &&
         CompareProperty(m_ToolGenType, o->m_ToolGenType, L"m_ToolGenType", report) &&
         CompareProperty(m_ToolNum, o->m_ToolNum, L"m_ToolNum", report) &&
         CompareProperty(m_DiaOffsetNum, o->m_DiaOffsetNum, L"m_DiaOffsetNum", report) &&
         CompareProperty(m_LengthOffsetNum, o->m_LengthOffsetNum, L"m_LengthOffsetNum", report) &&
         CompareProperty(m_ToolSlotId, o->m_ToolSlotId, L"m_ToolSlotId", report) &&
         CompareProperty(static_cast<int>(m_ToolType), static_cast<int>(o->m_ToolType), L"m_ToolType", report) &&
         CompareProperty(m_ToolStation, o->m_ToolStation, L"m_ToolStation", report) &&
         CompareProperty(m_TurretIndexPosition, o->m_TurretIndexPosition, L"m_TurretIndexPosition", report) &&
         CompareProperty(m_ToolName, o->m_ToolName, L"m_ToolName", report) &&
         CompareProperty(m_IsToolLive, o->m_IsToolLive, L"m_IsToolLive", report) &&
         CompareProperty(m_ToolHolderName, o->m_ToolHolderName, L"m_ToolHolderName", report) &&
         CompareProperty(m_LatheToolInsertName, o->m_LatheToolInsertName, L"m_LatheToolInsertName", report) &&
         CompareProperty(m_ToolInsertCornerRadius, o->m_ToolInsertCornerRadius, L"m_ToolInsertCornerRadius", report,
                         tol) &&
         CompareProperty(m_ToolDiameter, o->m_ToolDiameter, L"m_ToolDiameter", report, tol) &&
         CompareProperty(m_OverallLength, o->m_OverallLength, L"m_OverallLength", report, tol) &&
         CompareProperty(m_HolderLength, o->m_HolderLength, L"m_HolderLength", report, tol) &&
         CompareProperty(m_ThreadPitch, o->m_ThreadPitch, L"m_ThreadPitch", report, tol) &&
         CompareProperty(m_IsMultiInsertTool, o->m_IsMultiInsertTool, L"m_IsMultiInsertTool", report) &&
         CompareProperty(m_ToolInsertAngleOffset, o->m_ToolInsertAngleOffset, L"m_ToolInsertAngleOffset", report,
                         tol) &&
         CompareProperty(m_ToolInsertYOffset, o->m_ToolInsertYOffset, L"m_ToolInsertYOffset", report, tol) &&
         CompareProperty(m_IsMultiStationSpindleToolLocator, o->m_IsMultiStationSpindleToolLocator,
                         L"m_IsMultiStationSpindleToolLocator", report) &&
         CompareProperty(m_TotalNumberOfInserts, o->m_TotalNumberOfInserts, L"m_TotalNumberOfInserts", report) &&
         CompareProperty(m_InsertNumber, o->m_InsertNumber, L"m_InsertNumber", report) &&
         CompareProperty(m_IsLeftHanded, o->m_IsLeftHanded, L"m_IsLeftHanded", report) &&
         CompareProperty(m_IsPrimaryInsertLeftHanded, o->m_IsPrimaryInsertLeftHanded, L"m_IsPrimaryInsertLeftHanded",
                         report) &&
         CompareProperty(m_OffsetVectorFromRotationCenter, o->m_OffsetVectorFromRotationCenter,
                         L"m_OffsetVectorFromRotationCenter", report, tol) &&
         CompareProperty(static_cast<int>(m_ToolInsertCompensationType),
                         static_cast<int>(o->m_ToolInsertCompensationType), L"m_ToolInsertCompensationType", report) &&
         CompareProperty(m_IsMillToolInAngularStation, o->m_IsMillToolInAngularStation, L"m_IsMillToolInAngularStation",
                         report) &&
         CompareProperty(m_MillToolStationTiltAngleInDegree, o->m_MillToolStationTiltAngleInDegree,
                         L"m_MillToolStationTiltAngleInDegree", report, tol) &&
         CompareProperty(m_MillToolSpindleSpeedMultiplier, o->m_MillToolSpindleSpeedMultiplier,
                         L"m_MillToolSpindleSpeedMultiplier", report, tol) &&
         CompareProperty(m_ReverseMillToolSpindleDirection, o->m_ReverseMillToolSpindleDirection,
                         L"m_ReverseMillToolSpindleDirection", report) &&
         CompareProperty(m_SpindleToolLocatorStationAngleInDegrees, o->m_SpindleToolLocatorStationAngleInDegrees,
                         L"m_SpindleToolLocatorStationAngleInDegrees", report, tol) &&
         CompareProperty(m_IsYAxisTurningTool, o->m_IsYAxisTurningTool, L"m_IsYAxisTurningTool", report);
}

}  // namespace IOF
