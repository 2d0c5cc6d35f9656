#include <iof/DbIOFNciOperation.h>

#include "ListItems.h"
#include "RecordImpl.h"

#include <cmath>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciOperation)

// One list reads every layout from version 0 to 5: each field names the version that
// added it.
template <class F, class... R>
void DbIOFNciOperation::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_NumericParams", r.m_NumericParams...);
  f(Field::V(0), "m_StringParams", r.m_StringParams...);
  // Intended: Copy leaves the target's sync points.
  f(Field::NotCopied(0), "m_StrategySyncPoints", r.m_StrategySyncPoints...);
  f(Field::V(0), "m_ActiveSpindle", r.m_ActiveSpindle...);
  f(Field::V(0), "m_ActiveTurret", r.m_ActiveTurret...);
  f(Field::V(0), "m_CannedProgId", r.m_CannedProgId...);
  f(Field::V(0), "m_MCOpId", r.m_MCOpId...);
  f(Field::V(0), "m_MCOpCode", r.m_MCOpCode...);
  f(Field::V(0), "m_OldMCOpCode", r.m_OldMCOpCode...);
  f(Field::V(0), "m_MCOpNumber", r.m_MCOpNumber...);
  f(Field::V(0), "m_Comment", r.m_Comment...);
  f(Field::V(0), "m_MaxSpindleSpeed", r.m_MaxSpindleSpeed...);
  f(Field::V(0), "m_SpindleModeMill", r.m_SpindleModeMill...);
  f(Field::V(0), "m_SpindleCCW", r.m_SpindleCCW...);
  f(Field::V(0), "m_NextToolChg", r.m_NextToolChg...);
  f(Field::V(0), "m_PrevToolChg", r.m_PrevToolChg...);
  f(Field::V(0), "m_StreamId", r.m_StreamId...);
  f(Field::V(0), "m_ForceToolChange", r.m_ForceToolChange...);
  f(Field::V(0), "m_ToolpathTypeTitle", r.m_ToolpathTypeTitle...);
  f(Field::V(0), "m_ToolPathType", r.m_ToolPathType...);
  f(Field::V(0), "m_RotaryId", r.m_RotaryId...);
  f(Field::V(0), "m_UsesAltTurretIndex", r.m_UsesAltTurretIndex...);
  f(Field::V(0), "m_MultiAxisCCOffset", r.m_MultiAxisCCOffset...);
  f(Field::V(0), "m_CCOffsetDist", r.m_CCOffsetDist...);
  f(Field::V(0), "m_CCMethod", r.m_CCMethod...);
  f(Field::V(0), "m_OpType", r.m_OpType...);
  f(Field::V(0), "m_MillOpSubType", r.m_MillOpSubType...);
  f(Field::V(0), "m_ToolChangeTime", r.m_ToolChangeTime...);
  f(Field::V(0), "m_ContextType", r.m_ContextType...);
  f(Field::V(0), "m_MachineCoordSys", r.m_MachineCoordSys...);
  f(Field::V(0), "m_ToolPathGroupName", r.m_ToolPathGroupName...);
  f(Field::V(0), "m_LatheToolAngle", r.m_LatheToolAngle...);
  f(Field::V(0), "m_LatheToolOrientationAngle", r.m_LatheToolOrientationAngle...);
  f(Field::V(0), "m_LatheToolInsertOrientation", r.m_LatheToolInsertOrientation...);
  f(Field::V(0), "m_PartSpindleDirection", r.m_PartSpindleDirection...);
  f(Field::V(0), "m_ToolSpindleDirection", r.m_ToolSpindleDirection...);
  // Intended: Copy leaves the target's reference position.
  f(Field::NotCopied(0), "m_ReferencePositionId", r.m_ReferencePositionId...);
  f(Field::V(0), "m_AxisComboNumberOfRotaryAxis", r.m_AxisComboNumberOfRotaryAxis...);
  f(Field::V(0), "m_SyncMgrDataMap", r.m_SyncMgrDataMap...);
  f(Field::V(1), "m_AxisComboId", r.m_AxisComboId...);
  f(Field::V(1), "m_UseToolCenterCompensation", r.m_UseToolCenterCompensation...);
  f(Field::V(1), "m_ToolCenterCompensationOffset", r.m_ToolCenterCompensationOffset...);
  f(Field::V(2), "m_TransformSubprogramNestReturn", r.m_TransformSubprogramNestReturn...);
  f(Field::V(3), "m_OperationTypeString", r.m_OperationTypeString...);
  f(Field::V(4), "m_IsReferencePositionSetToNoneByUser", r.m_IsReferencePositionSetToNoneByUser...);
  f(Field::V(5), "m_TransformOpId", r.m_TransformOpId...);
}

void DbIOFNciOperation::StrategySyncPoint::Serialize(Quarp::UtArchive& ar) {
  if (ar.IsStoring()) {
    ar << FirstKey << SecondKey << Flag << Text;
  } else {
    ar >> FirstKey >> SecondKey >> Flag >> Text;
  }
  Attributes.Serialize(ar);
}

void DbIOFNciOperation::StrategySyncPoint::VisitFields(FieldVisitor& visitor) const {
  visitor.OnInt("FirstKey", FirstKey);
  visitor.OnInt("SecondKey", SecondKey);
  visitor.OnBool("Flag", Flag);
  visitor.OnString("Text", Text);
  visitor.OnAttributes("Attributes", Attributes);
}

// Stands for SerializeSyncMgrDataMap: the map's own version, then the map as every
// field-list map is archived.
void DbIOFNciOperation::SyncMgrDataMap::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, kVersion);
  std::map<std::uint32_t, UtIOFAttribMap>& entries = *this;
  if (ar.IsStoring()) {
    Detail::StoreValue(ar, entries);
    return;
  }
  // Only 0 was ever written; anything else is refused.
  Quarp::UtCheckVersion(version, kVersion, "DbIOFNciOperation::SyncMgrDataMap");
  Detail::LoadValue(ar, entries);
}

bool DbIOFNciOperation::GetMPParameter(std::int32_t key, double& value) const {
  value = 0.0;
  const auto found = m_NumericParams.find(key);
  if (found == m_NumericParams.end()) return false;
  value = found->second;
  return true;
}

bool DbIOFNciOperation::GetMPParameter(std::int32_t key, CString& value) const {
  value.Empty();
  const auto found = m_StringParams.find(key);
  if (found == m_StringParams.end()) return false;
  value = found->second;
  return true;
}

UtIOFAttribMap* DbIOFNciOperation::AddSyncManagerAttributes(SyncMgrDataConfigTypes config) {
  return &m_SyncMgrDataMap[static_cast<std::uint32_t>(config)];
}

UtIOFAttribMap* DbIOFNciOperation::GetSyncManagerAttributes(SyncMgrDataConfigTypes config) {
  const auto found = m_SyncMgrDataMap.find(static_cast<std::uint32_t>(config));
  return found == m_SyncMgrDataMap.end() ? nullptr : &found->second;
}

const UtIOFAttribMap* DbIOFNciOperation::GetSyncManagerAttributes(SyncMgrDataConfigTypes config) const {
  return const_cast<DbIOFNciOperation*>(this)->GetSyncManagerAttributes(config);
}

void DbIOFNciOperation::SetToolChangeTime(double seconds) noexcept {
  m_ToolChangeTime = std::isfinite(seconds) && seconds >= 0.001 ? seconds : 0.0;
}

bool DbIOFNciOperation::GetIsMiscOp() const noexcept {
  // An unsigned range test: negative values wrap to large ones and give false.
  return static_cast<unsigned>(m_ToolPathType) - static_cast<unsigned>(IofToolPathTypes::TP_MISCOP_TURRETPARK) <=
         static_cast<unsigned>(IofToolPathTypes::TP_MISCOP_BARFEED_NOTOOL) -
             static_cast<unsigned>(IofToolPathTypes::TP_MISCOP_TURRETPARK);
}

bool DbIOFNciOperation::GetSubOps(Quarp::UtArrayEx<Quarp::DbId>& subOps) const {
  subOps.RemoveAll();
  Detail::ForEachItemOfType(*this, DbIOFNciSubOp::kTypeCode, [&](Quarp::DbId id) {
    subOps.Add(id);
    return false;
  });
  return !subOps.IsEmpty();
}

Quarp::DbPtr<DbIOFApproach> DbIOFNciOperation::GetApproach() const {
  Quarp::UtArrayEx<Quarp::DbId> subOps;
  Quarp::DbPtr<DbIOFNciSubOp> first(GetDbMgr());
  if (!GetSubOps(subOps) || !GetDbMgr()->Get(first, subOps[0], 0)) return Quarp::DbPtr<DbIOFApproach>(GetDbMgr());
  return first->GetApproach();
}

Quarp::DbPtr<DbIOFRetract> DbIOFNciOperation::GetRetract() const {
  return Detail::FirstItemOfType<DbIOFRetract>(*this, [](const DbIOFRetract&) { return true; });
}

CString DbIOFNciOperation::ToIOFString() const {
  if (m_MCOpCode == kTransformOpCode) {
    const CString name = GetIOFName();
    if (name.Find(CString(L"Transform Instance")) >= 0) return name;
    CString text(L"TRANSFORM OP");
    if (name.Find(CString(L"Transformed Operation, instance")) >= 0) text.AppendFormat(L", %s", name);
    return text;
  }
  // Intended: "Type" carries the tool-path title and "OpType" the machine-operation code.
  return CString::Formatted(
      L"OpNumber: %d, Type: %s; OpId: %d, OpType: %d, OpComment: %s, TP_Type: %s; Context: %s, TCTime: %gsec; "
      L"MillSubTyp: %s, Spindle:%d, Turret:%d, XformReturn:%d",
      m_MCOpNumber, m_ToolpathTypeTitle, m_MCOpId, static_cast<int>(m_MCOpCode), m_Comment,
      ToolPathTypeText(static_cast<int>(m_ToolPathType)), OpContextText(static_cast<int>(m_ContextType)),
      m_ToolChangeTime, MillOpSubTypeText(static_cast<int>(m_MillOpSubType)), m_ActiveSpindle, m_ActiveTurret,
      m_TransformSubprogramNestReturn);
}

bool DbIOFNciOperation::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFNciOperation>(other, report);
  if (!o) return false;
  constexpr double tol = 1e-6;
  const auto asInt = [](auto e) { return static_cast<int>(e); };
  const bool same =
      DbIOFList::Compare(other, report) &&
      CompareProperty(m_ActiveSpindle, o->m_ActiveSpindle, L"m_ActiveSpindle", report) &&
      CompareProperty(m_ActiveTurret, o->m_ActiveTurret, L"m_ActiveTurret", report) &&
      CompareProperty(m_CannedProgId, o->m_CannedProgId, L"m_CannedProgId", report) &&
      CompareProperty(m_MCOpId, o->m_MCOpId, L"m_MCOpId", report) &&
      CompareProperty(asInt(m_MCOpCode), asInt(o->m_MCOpCode), L"m_MCOpCode", report) &&
      CompareProperty(m_MCOpNumber, o->m_MCOpNumber, L"m_MCOpNumber", report) &&
      CompareProperty(m_Comment, o->m_Comment, L"m_Comment", report) &&
      CompareProperty(m_MaxSpindleSpeed, o->m_MaxSpindleSpeed, L"m_MaxSpindleSpeed", report, tol) &&
      CompareProperty(m_SpindleModeMill, o->m_SpindleModeMill, L"m_SpindleModeMill", report) &&
      CompareProperty(m_SpindleCCW, o->m_SpindleCCW, L"m_SpindleCCW", report) &&
      CompareProperty(m_NextToolChg, o->m_NextToolChg, L"m_NextToolChg", report) &&
      CompareProperty(m_PrevToolChg, o->m_PrevToolChg, L"m_PrevToolChg", report) &&
      CompareProperty(m_StreamId, o->m_StreamId, L"m_StreamId", report) &&
      CompareProperty(m_ForceToolChange, o->m_ForceToolChange, L"m_ForceToolChange", report) &&
      CompareProperty(m_ToolpathTypeTitle, o->m_ToolpathTypeTitle, L"m_ToolpathTypeTitle", report) &&
      CompareProperty(asInt(m_ToolPathType), asInt(o->m_ToolPathType), L"m_ToolPathType", report) &&
      CompareProperty(m_UsesAltTurretIndex, o->m_UsesAltTurretIndex, L"m_UsesAltTurretIndex", report) &&
      CompareProperty(m_MultiAxisCCOffset, o->m_MultiAxisCCOffset, L"m_MultiAxisCCOffset", report, tol) &&
      CompareProperty(m_CCOffsetDist, o->m_CCOffsetDist, L"m_CCOffsetDist", report, tol) &&
      CompareProperty(asInt(m_CCMethod), asInt(o->m_CCMethod), L"m_CCMethod", report) &&
      CompareProperty(asInt(m_OpType), asInt(o->m_OpType), L"m_OpType", report) &&
      CompareProperty(asInt(m_MillOpSubType), asInt(o->m_MillOpSubType), L"m_MillOpSubType", report) &&
      CompareProperty(asInt(m_ContextType), asInt(o->m_ContextType), L"m_ContextType", report) &&
      CompareProperty(m_MachineCoordSys, o->m_MachineCoordSys, L"m_MachineCoordSys", report, 2e-7) &&
      CompareProperty(m_ToolPathGroupName, o->m_ToolPathGroupName, L"m_ToolPathGroupName", report) &&
      CompareProperty(m_LatheToolAngle, o->m_LatheToolAngle, L"m_LatheToolAngle", report, tol) &&
      CompareProperty(m_LatheToolOrientationAngle, o->m_LatheToolOrientationAngle, L"m_LatheToolOrientationAngle",
                      report, tol) &&
      CompareProperty(asInt(m_LatheToolInsertOrientation), asInt(o->m_LatheToolInsertOrientation),
                      L"m_LatheToolInsertOrientation", report) &&
      CompareProperty(asInt(m_PartSpindleDirection), asInt(o->m_PartSpindleDirection), L"m_PartSpindleDirection",
                      report) &&
      CompareProperty(asInt(m_ToolSpindleDirection), asInt(o->m_ToolSpindleDirection), L"m_ToolSpindleDirection",
                      report) &&
      CompareProperty(m_AxisComboNumberOfRotaryAxis, o->m_AxisComboNumberOfRotaryAxis, L"m_AxisComboNumberOfRotaryAxis",
                      report) &&
      CompareProperty(m_AxisComboId, o->m_AxisComboId, L"m_AxisComboId", report) &&
      CompareProperty(m_UseToolCenterCompensation, o->m_UseToolCenterCompensation, L"m_UseToolCenterCompensation",
                      report) &&
      CompareProperty(m_ToolCenterCompensationOffset, o->m_ToolCenterCompensationOffset,
                      L"m_ToolCenterCompensationOffset", report, tol) &&
      CompareProperty(m_TransformSubprogramNestReturn, o->m_TransformSubprogramNestReturn,
                      L"m_TransformSubprogramNestReturn", report) &&
      CompareProperty(m_OperationTypeString, o->m_OperationTypeString, L"m_OperationTypeString", report) &&
      CompareProperty(m_IsReferencePositionSetToNoneByUser, o->m_IsReferencePositionSetToNoneByUser,
                      L"m_IsReferencePositionSetToNoneByUser", report) &&
      CompareProperty(m_TransformOpId, o->m_TransformOpId, L"m_TransformOpId", report);
  // Whatever the result: both rotary ids are resolved through this operation's own
  // manager, and a rotary record on one side only is noted without a line break and
  // without changing the result. Intended.
  Quarp::DbMgr* mgr = GetDbMgr();
  Quarp::DbCPtr<DbIOFRotary> mine(mgr);
  Quarp::DbCPtr<DbIOFRotary> theirs(mgr);
  const bool hasMine = mgr && mgr->Get(mine, m_RotaryId, 0);
  const bool hasTheirs = mgr && mgr->Get(theirs, o->m_RotaryId, 0);
  if (hasMine != hasTheirs) report += L"Difference Detected: RotaryInfo";
  return same;
}

}  // namespace IOF
