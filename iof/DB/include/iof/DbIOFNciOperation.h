// DbIOFNciOperation: one machining operation of a stream, the record that opens the
// program output of one tool path. Type IOFNCIOPERATION (0x5121). A record list of kind
// 2 whose items are the operation's own records in program order (sub-operations,
// retracts, tool changes, planes, moves, events, misc machine operations), carrying the
// operation's header: identity and numbering, tool-path type and context, spindle and
// turret choices, cutter compensation, the machine coordinate system, lathe tool
// orientation, axis-combination and transform bookkeeping, two keyed parameter tables,
// per-configuration attribute maps for the synchronisation manager and a list of
// strategy synchronisation points.
//
//   auto op = IOF::DbIOFNciOperation::Create();
//   op->SetMcOpNumber(1);
//   op->SetToolPathType(IOF::IofToolPathTypes::TP_TURN_FINISH);
//   op->SetToolpathTypeTitle(L"Lathe Finish");
//   stream->PushBack(mgr.Add(op));
//   op->PushBack(toolChangeId);
//   op->PushBack(mgr.Add(subOp));            // its approach and moves inside
//   op->PushBack(mgr.Add(retract));
//
// Archive (version 5), after DbIOFList, the fields below in declaration order: the two
// parameter maps and the sync points (a 4-byte count, then the entries in key order /
// the points member by member), then the scalars, the machine coordinate system, the
// synchronisation-manager map (its own version, 0, then a 4-byte count, then per entry
// in key order the 4-byte key and the attribute map), then the fields of versions 1 to
// 5. The one field list stands for the readers DeserializeV0 to DeserializeV5:
//   0: the parameter maps up to the synchronisation-manager map;
//   1: then m_AxisComboId, m_UseToolCenterCompensation, m_ToolCenterCompensationOffset;
//   2: then m_TransformSubprogramNestReturn;  3: then m_OperationTypeString;
//   4: then m_IsReferencePositionSetToNoneByUser;  5: then m_TransformOpId.
// Fields an old layout lacks keep their defaults. A synchronisation-manager map stored
// with a version other than 0 is refused with the version error (cause 2).
//
// The machine type and the last states are held in memory only: never archived, copied
// or compared. Copy leaves the target's reference position id and sync points as they
// were: intended.
//
// Comparison: the list, then m_ActiveSpindle, m_ActiveTurret, m_CannedProgId, m_MCOpId,
// m_MCOpCode, m_MCOpNumber, m_Comment, m_MaxSpindleSpeed, m_SpindleModeMill,
// m_SpindleCCW, m_NextToolChg, m_PrevToolChg, m_StreamId, m_ForceToolChange,
// m_ToolpathTypeTitle, m_ToolPathType, m_UsesAltTurretIndex, m_MultiAxisCCOffset,
// m_CCOffsetDist, m_CCMethod, m_OpType, m_MillOpSubType, m_ContextType,
// m_MachineCoordSys (matrix, 2e-7), m_ToolPathGroupName, m_LatheToolAngle,
// m_LatheToolOrientationAngle, m_LatheToolInsertOrientation, m_PartSpindleDirection,
// m_ToolSpindleDirection, m_AxisComboNumberOfRotaryAxis, m_AxisComboId,
// m_UseToolCenterCompensation, m_ToolCenterCompensationOffset,
// m_TransformSubprogramNestReturn, m_OperationTypeString,
// m_IsReferencePositionSetToNoneByUser, m_TransformOpId (reals within 1e-6). Not
// compared: the parameter maps, the sync points, the synchronisation-manager map, the
// old machine-operation code, the tool change time, the reference position id. Then,
// whatever the result, "Difference Detected: RotaryInfo" (no line break) is appended
// when exactly one of the two rotary ids names a rotary record in this operation's
// manager; this does not change the result.
#pragma once

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/GmXformMat3D.h>
#include <iof/IofEnums.h>
#include <iof/UtIOFAttribMap.h>
#include <iof/UtIofMovePoint.h>
#include <quarp/UtArrayEx.h>

#include <cstdint>
#include <map>
#include <vector>

namespace IOF {

class DbIOFNciOperation : public DbIOFList {
  IOF_RECORD(DbIOFNciOperation, DbIOFList)

 public:
  static constexpr unsigned kVersion = 5;
  // m_MCOpCode of a transform operation (an instance made by transforming another one).
  static constexpr std::int16_t kTransformOpCode = 4;

  // A strategy synchronisation point; the producer defines what its members mean.
  struct StrategySyncPoint {
    std::int32_t FirstKey = 0;
    std::int32_t SecondKey = 0;
    bool Flag = false;
    CString Text;
    UtIOFAttribMap Attributes;

    // The five members in order, the attribute map by its own Serialize; no version.
    void Serialize(Quarp::UtArchive& ar);
    void VisitFields(FieldVisitor& visitor) const;
  };

  // The synchronisation-manager attribute maps by configuration. Archived with a version
  // of its own (0): a stored version other than 0 is refused with the version error. Its
  // Serialize stands for the operation's SerializeSyncMgrDataMap.
  class SyncMgrDataMap : public std::map<std::uint32_t, UtIOFAttribMap> {
   public:
    static constexpr unsigned kVersion = 0;
    void Serialize(Quarp::UtArchive& ar);
  };

  using NumericParams = std::map<std::int32_t, double>;
  using StringParams = std::map<std::int32_t, CString>;

  // Parameters keyed by the producer's numbers; not compared.
  NumericParams& GetNumericParams() noexcept { return m_NumericParams; }
  const NumericParams& GetNumericParams() const noexcept { return m_NumericParams; }
  StringParams& GetStringParams() noexcept { return m_StringParams; }
  const StringParams& GetStringParams() const noexcept { return m_StringParams; }
  // The parameter stored under `key`: true with the value, or false with 0.0 / empty.
  bool GetMPParameter(std::int32_t key, double& value) const;
  bool GetMPParameter(std::int32_t key, CString& value) const;

  const std::vector<StrategySyncPoint>& GetStrategySyncPoints() const noexcept { return m_StrategySyncPoints; }
  void SetStrategySyncPoints(const std::vector<StrategySyncPoint>& points) { m_StrategySyncPoints = points; }

  SyncMgrDataMap& GetSyncMgrDataMap() noexcept { return m_SyncMgrDataMap; }
  const SyncMgrDataMap& GetSyncMgrDataMap() const noexcept { return m_SyncMgrDataMap; }
  // The attribute map kept for `config`, inserted empty first when there is none. The
  // operation keeps it.
  UtIOFAttribMap* AddSyncManagerAttributes(SyncMgrDataConfigTypes config);
  // The attribute map kept for `config`, or null; never inserts.
  UtIOFAttribMap* GetSyncManagerAttributes(SyncMgrDataConfigTypes config);
  const UtIOFAttribMap* GetSyncManagerAttributes(SyncMgrDataConfigTypes config) const;

  int GetActiveSpindle() const noexcept { return m_ActiveSpindle; }
  void SetActiveSpindle(int spindle) noexcept { m_ActiveSpindle = spindle; }
  int GetActiveTurret() const noexcept { return m_ActiveTurret; }
  void SetActiveTurret(int turret) noexcept { m_ActiveTurret = turret; }
  Quarp::DbId GetCannedProgId() const noexcept { return m_CannedProgId; }
  void SetCannedProgId(const Quarp::DbId& id) noexcept { m_CannedProgId = id; }
  int GetMcOpId() const noexcept { return m_MCOpId; }
  void SetMcOpId(int id) noexcept { m_MCOpId = id; }
  std::int16_t GetMcOpCode() const noexcept { return m_MCOpCode; }
  void SetMcOpCode(std::int16_t code) noexcept { m_MCOpCode = code; }
  std::int16_t GetOldMcOpCode() const noexcept { return m_OldMCOpCode; }
  void SetOldMcOpCode(std::int16_t code) noexcept { m_OldMCOpCode = code; }
  int GetMcOpNumber() const noexcept { return m_MCOpNumber; }
  void SetMcOpNumber(int number) noexcept { m_MCOpNumber = number; }
  CString GetMcComment() const { return m_Comment; }
  void SetMcComment(const CString& comment) { m_Comment = comment; }
  double GetMaxSpindleSpeed() const noexcept { return m_MaxSpindleSpeed; }
  void SetMaxSpindleSpeed(double speed) noexcept { m_MaxSpindleSpeed = speed; }
  bool GetSpindleModeMill() const noexcept { return m_SpindleModeMill; }
  void SetSpindleModeMill(bool mill) noexcept { m_SpindleModeMill = mill; }
  bool GetSpindleCCW() const noexcept { return m_SpindleCCW; }
  void SetSpindleCCW(bool ccw) noexcept { m_SpindleCCW = ccw; }
  Quarp::DbId GetNextToolChg() const noexcept { return m_NextToolChg; }
  void SetNextToolChg(const Quarp::DbId& id) noexcept { m_NextToolChg = id; }
  Quarp::DbId GetPrevToolChg() const noexcept { return m_PrevToolChg; }
  void SetPrevToolChg(const Quarp::DbId& id) noexcept { m_PrevToolChg = id; }
  int GetStreamId() const noexcept { return m_StreamId; }
  void SetStreamId(int id) noexcept { m_StreamId = id; }
  bool GetForceToolChange() const noexcept { return m_ForceToolChange; }
  void SetForceToolChange(bool force) noexcept { m_ForceToolChange = force; }
  CString GetToolpathTypeTitle() const { return m_ToolpathTypeTitle; }
  void SetToolpathTypeTitle(const CString& title) { m_ToolpathTypeTitle = title; }
  IofToolPathTypes GetToolPathType() const noexcept { return m_ToolPathType; }
  void SetToolPathType(IofToolPathTypes type) noexcept { m_ToolPathType = type; }
  Quarp::DbId GetRotaryId() const noexcept { return m_RotaryId; }
  void SetRotaryId(const Quarp::DbId& id) noexcept { m_RotaryId = id; }
  bool GetUsesAltTurretIndex() const noexcept { return m_UsesAltTurretIndex; }
  void SetUsesAltTurretIndex(bool alt) noexcept { m_UsesAltTurretIndex = alt; }
  double GetMultiAxisCCOffset() const noexcept { return m_MultiAxisCCOffset; }
  void SetMultiAxisCCOffset(double offset) noexcept { m_MultiAxisCCOffset = offset; }
  double GetCCOffsetDist() const noexcept { return m_CCOffsetDist; }
  void SetCCOffsetDist(double distance) noexcept { m_CCOffsetDist = distance; }
  CompMethod GetCutterCompMethod() const noexcept { return m_CCMethod; }
  void SetCutterCompMethod(CompMethod method) noexcept { m_CCMethod = method; }
  IofOpTypes GetOpType() const noexcept { return m_OpType; }
  void SetOpType(IofOpTypes type) noexcept { m_OpType = type; }
  IofMillOpSubTypes GetMillOpSubType() const noexcept { return m_MillOpSubType; }
  void SetMillOpSubType(IofMillOpSubTypes type) noexcept { m_MillOpSubType = type; }
  double GetToolChangeTime() const noexcept { return m_ToolChangeTime; }
  // Stores 0.0 instead of a time below 0.001 s (negative times included), positive
  // infinity or NaN.
  void SetToolChangeTime(double seconds) noexcept;
  OpContextTypes GetContextType() const noexcept { return m_ContextType; }
  void SetContextType(OpContextTypes context) noexcept { m_ContextType = context; }
  void GetMachineCoordSys(GmXformMat3D& matrix) const { matrix = m_MachineCoordSys; }
  void SetMachineCoordSys(const GmXformMat3D& matrix) { m_MachineCoordSys = matrix; }
  CString GetToolPathGroupName() const { return m_ToolPathGroupName; }
  void SetToolPathGroupName(const CString& name) { m_ToolPathGroupName = name; }
  double GetLatheToolAngle() const noexcept { return m_LatheToolAngle; }
  void SetLatheToolAngle(double angle) noexcept { m_LatheToolAngle = angle; }
  double GetLatheToolOrientationAngle() const noexcept { return m_LatheToolOrientationAngle; }
  void SetLatheToolOrientationAngle(double angle) noexcept { m_LatheToolOrientationAngle = angle; }
  std::int16_t GetLatheToolInsertOrientation() const noexcept { return m_LatheToolInsertOrientation; }
  void SetLatheToolInsertOrientation(std::int16_t orientation) noexcept { m_LatheToolInsertOrientation = orientation; }
  SpindleDirectionsType GetPartSpindleDirection() const noexcept { return m_PartSpindleDirection; }
  void SetPartSpindleDirection(SpindleDirectionsType direction) noexcept { m_PartSpindleDirection = direction; }
  SpindleDirectionsType GetToolSpindleDirection() const noexcept { return m_ToolSpindleDirection; }
  void SetToolSpindleDirection(SpindleDirectionsType direction) noexcept { m_ToolSpindleDirection = direction; }
  Quarp::DbId GetReferencePositionId() const noexcept { return m_ReferencePositionId; }
  void SetReferencePositionId(const Quarp::DbId& id) noexcept { m_ReferencePositionId = id; }
  int GetAxisComboNumberOfRotaryAxis() const noexcept { return m_AxisComboNumberOfRotaryAxis; }
  void SetAxisComboNumberOfRotaryAxis(int count) noexcept { m_AxisComboNumberOfRotaryAxis = count; }
  int GetAxisComboId() const noexcept { return m_AxisComboId; }
  void SetAxisComboId(int id) noexcept { m_AxisComboId = id; }
  bool GetUseToolCenterCompensation() const noexcept { return m_UseToolCenterCompensation; }
  void SetUseToolCenterCompensation(bool use) noexcept { m_UseToolCenterCompensation = use; }
  double GetToolCenterCompensationOffset() const noexcept { return m_ToolCenterCompensationOffset; }
  void SetToolCenterCompensationOffset(double offset) noexcept { m_ToolCenterCompensationOffset = offset; }
  int GetTransformSubprogramNestReturn() const noexcept { return m_TransformSubprogramNestReturn; }
  void SetTransformSubprogramNestReturn(int nest) noexcept { m_TransformSubprogramNestReturn = nest; }
  CString GetOpTypeString() const { return m_OperationTypeString; }
  void SetOpTypeString(const CString& text) { m_OperationTypeString = text; }
  bool GetIsReferencePositionSetToNoneByUser() const noexcept { return m_IsReferencePositionSetToNoneByUser; }
  void SetIsReferencePositionSetToNoneByUser(bool none) noexcept { m_IsReferencePositionSetToNoneByUser = none; }
  int GetTransformOpId() const noexcept { return m_TransformOpId; }
  void SetTransformOpId(int id) noexcept { m_TransformOpId = id; }

  // In memory only.
  IofMachineTypes GetMachineType() const noexcept { return m_MachineType; }
  void SetMachineType(IofMachineTypes type) noexcept { m_MachineType = type; }
  UtIofMovePoint GetLastStates() const { return m_LastStates; }
  void SetLastStates(const UtIofMovePoint& states) { m_LastStates = states; }

  // True for the misc-operation tool-path types, 27 to 33.
  bool GetIsMiscOp() const noexcept;

  // Lookups among the operation's items; false / null for an operation in no manager.
  // The ids of the items that are exactly sub-operations (DbIOFNciSubOp), in order;
  // true when there is at least one.
  bool GetSubOps(Quarp::UtArrayEx<Quarp::DbId>& subOps) const;
  // The approach of the first sub-operation (DbIOFNciSubOp::GetApproach).
  Quarp::DbPtr<DbIOFApproach> GetApproach() const;
  // The first item that is exactly a retract. Intended: the retract is looked for among
  // the operation's own items, while the approach comes from its first sub-operation.
  Quarp::DbPtr<DbIOFRetract> GetRetract() const;

  // For a transform operation (m_MCOpCode 4): the IOF name when it contains "Transform
  // Instance"; otherwise "TRANSFORM OP", followed by ", " and the IOF name when that
  // contains "Transformed Operation, instance". Any other operation:
  // "OpNumber: %d, Type: %s; OpId: %d, OpType: %d, OpComment: %s, TP_Type: %s; Context: %s,
  // TCTime: %gsec; MillSubTyp: %s, Spindle:%d, Turret:%d, XformReturn:%d". Intended: the
  // "Type" slot carries m_ToolpathTypeTitle and "OpType" m_MCOpCode, not m_OpType.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciOperation() : DbIOFList(kOperation) {}

 private:
  NumericParams m_NumericParams;
  StringParams m_StringParams;
  std::vector<StrategySyncPoint> m_StrategySyncPoints;  // not copied by Copy: intended
  int m_ActiveSpindle = 0;
  int m_ActiveTurret = 0;
  Quarp::DbId m_CannedProgId;  // the canned-cycle record the operation uses
  int m_MCOpId = 0;
  std::int16_t m_MCOpCode = 0;     // kTransformOpCode for a transform operation
  std::int16_t m_OldMCOpCode = 0;  // the old machine-operation code; not compared
  int m_MCOpNumber = 0;
  CString m_Comment;
  double m_MaxSpindleSpeed = 0.0;
  bool m_SpindleModeMill = false;
  bool m_SpindleCCW = true;
  Quarp::DbId m_NextToolChg;
  Quarp::DbId m_PrevToolChg;
  int m_StreamId = 0;  // set by the producer to the stream that holds the operation
  bool m_ForceToolChange = false;
  CString m_ToolpathTypeTitle;
  IofToolPathTypes m_ToolPathType = IofToolPathTypes::TP_NONE;
  Quarp::DbId m_RotaryId;  // a rotary record (DbIOFRotary)
  bool m_UsesAltTurretIndex = false;
  double m_MultiAxisCCOffset = 0.0;
  double m_CCOffsetDist = 0.0;
  CompMethod m_CCMethod = CompMethod::Computer;
  IofOpTypes m_OpType = IofOpTypes::None;
  IofMillOpSubTypes m_MillOpSubType = IofMillOpSubTypes::MILL_NONE;
  double m_ToolChangeTime = 0.0;  // seconds; not compared
  OpContextTypes m_ContextType = OpContextTypes::Manual;
  GmXformMat3D m_MachineCoordSys;  // identity
  CString m_ToolPathGroupName;
  double m_LatheToolAngle = 0.0;
  double m_LatheToolOrientationAngle = 0.0;
  std::int16_t m_LatheToolInsertOrientation = 0;
  SpindleDirectionsType m_PartSpindleDirection = SpindleDirectionsType::NotApplicable;
  SpindleDirectionsType m_ToolSpindleDirection = SpindleDirectionsType::NotApplicable;
  Quarp::DbId m_ReferencePositionId;  // a reference-point record; not copied, not compared
  int m_AxisComboNumberOfRotaryAxis = 0;
  SyncMgrDataMap m_SyncMgrDataMap;                    // not compared
  int m_AxisComboId = 0;                              // since version 1
  bool m_UseToolCenterCompensation = false;           // since version 1
  double m_ToolCenterCompensationOffset = 0.0;        // since version 1
  int m_TransformSubprogramNestReturn = 0;            // since version 2
  CString m_OperationTypeString;                      // since version 3
  bool m_IsReferencePositionSetToNoneByUser = false;  // since version 4
  int m_TransformOpId = 0;                            // since version 5

  IofMachineTypes m_MachineType = IofMachineTypes::Unknown;  // in memory only
  UtIofMovePoint m_LastStates;                               // in memory only
};

}  // namespace IOF
