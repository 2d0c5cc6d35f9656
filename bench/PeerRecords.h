// The peer: the same records as the IOF job (the same fields in the same class
// hierarchy, ids between records, polymorphic ownership) written and read with
// Boost.Serialization's binary archives, the way a developer would write them without
// the IOF framework: a serialize() per class, base_object for the bases, the concrete
// classes exported, the job held as a vector of owning base pointers.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace IofBench::Peer {

struct Point {
  double x = 0.0, y = 0.0, z = 0.0;
};

// The record base: name, attribute map, sub-list ids.
class Base {
 public:
  virtual ~Base();
  std::string m_Name;
  std::map<std::string, std::string> m_Attributes;
  std::vector<std::uint64_t> m_SubLists;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// G-code, owning operation, machining time.
class NciBase : public Base {
 public:
  int m_GCode = 0;
  int m_OwnerOpId = -1;
  double m_Time = 0.0;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// What every move has.
class BaseMove : public NciBase {
 public:
  double m_FeedRate = 0.0;
  bool m_bIsFeedMove = true;
  int m_CutterComp = 0;
  int m_PositionCode = 0;
  int m_ContourPosition = 1;
  bool m_NcIncremental = false;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

class Linear : public BaseMove {
 public:
  Point m_EndPoint;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// An ordered list of record ids (document, stream, operation).
class List : public Base {
 public:
  int m_ListType = 0;
  std::vector<std::uint64_t> m_Items;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// An operation: a list with the operation's header (DbIOFNciOperation's fields).
struct SyncPoint {
  int FirstKey = 0, SecondKey = 0;
  bool Flag = false;
  std::string Text;
  std::map<std::string, std::string> Attributes;
};
class Operation : public List {
 public:
  std::map<int, double> m_NumericParams;
  std::map<int, std::string> m_StringParams;
  std::vector<SyncPoint> m_StrategySyncPoints;
  int m_ActiveSpindle = 0, m_ActiveTurret = 0;
  std::uint64_t m_CannedProgId = 0;
  int m_MCOpId = 0;
  std::int16_t m_MCOpCode = 0, m_OldMCOpCode = 0;
  int m_MCOpNumber = 0;
  std::string m_Comment;
  double m_MaxSpindleSpeed = 0.0;
  bool m_SpindleModeMill = false, m_SpindleCCW = true;
  std::uint64_t m_NextToolChg = 0, m_PrevToolChg = 0;
  int m_StreamId = 0;
  bool m_ForceToolChange = false;
  std::string m_ToolpathTypeTitle;
  int m_ToolPathType = 0;
  std::uint64_t m_RotaryId = 0;
  bool m_UsesAltTurretIndex = false;
  double m_MultiAxisCCOffset = 0.0, m_CCOffsetDist = 0.0;
  int m_CCMethod = 0, m_OpType = 0, m_MillOpSubType = 0;
  double m_ToolChangeTime = 0.0;
  int m_ContextType = 0;
  double m_MachineCoordSys[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  std::string m_ToolPathGroupName;
  double m_LatheToolAngle = 0.0, m_LatheToolOrientationAngle = 0.0;
  std::int16_t m_LatheToolInsertOrientation = 0;
  int m_PartSpindleDirection = 0, m_ToolSpindleDirection = 0;
  std::uint64_t m_ReferencePositionId = 0;
  int m_AxisComboNumberOfRotaryAxis = 0;
  std::map<std::uint32_t, std::map<std::string, std::string>> m_SyncMgrDataMap;
  int m_AxisComboId = 0;
  bool m_UseToolCenterCompensation = false;
  double m_ToolCenterCompensationOffset = 0.0;
  int m_TransformSubprogramNestReturn = 0;
  std::string m_OperationTypeString;
  bool m_IsReferencePositionSetToNoneByUser = false;
  int m_TransformOpId = 0;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// A sub-operation: a list with its cutting conditions.
class SubOp : public List {
 public:
  std::uint64_t m_OpId = 0, m_ToolChangeId = 0, m_ToolPlaneId = 0;
  double m_ApproachRpm = 0.0;
  bool m_CSSEnabled = false;
  int m_ToolOrientationType = 0, m_NCPlane = 0, m_NCPlaneCoordConv = 0, m_Compensation = 1;
  double m_SpindleSpeed = 0.0, m_FeedRate = 0.0;
  int m_FeedUnits = 0, m_DiameterOffsetNum = 0, m_LengthOffsetNum = 0;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// The approach and the retract share their fields; the retract has one more.
class MoveStrategy : public Base {
 public:
  Point m_EndPoint;
  int m_Type = 0;
  std::uint64_t m_ReferencePointId = 0;
  bool m_NcIncremental = false;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};
class Approach : public MoveStrategy {
 public:
  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};
class Retract : public MoveStrategy {
 public:
  bool m_IsNoneSetByUser = false;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// Record i has the id i + 1, as in the IOF job.
using Job = std::vector<std::unique_ptr<Base>>;

// Writes `job` to `path` (a binary_oarchive on an std::ofstream); throws on failure.
// Durability is the caller's (see DurableReplace).
void Save(const Job& job, const std::string& path);
// Reads a job written by Save; throws on failure.
Job Load(const std::string& path);

}  // namespace IofBench::Peer
