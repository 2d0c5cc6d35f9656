// DbIOFNciSubOp: one part of an operation's tool path with the cutting conditions that
// hold for it: tool orientation, NC plane, feed, spindle speed, cutter compensation,
// offset numbers and the tool change and tool plane in force. Type IOFNCISUBOP
// (0x5122). A record list of kind 0x2000 whose items are its approach (DbIOFApproach),
// its motion lists and the records inside them; the operation holds its sub-operations
// among its own items.
//
//   auto sub = IOF::DbIOFNciSubOp::Create();
//   sub->SetOpId(opId);
//   sub->SetToolChangeId(toolId);
//   sub->SetFeedRate(300.0);
//   op->PushBack(mgr.Add(sub));
//   sub->PushBack(mgr.Add(approach));
//   auto motion = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionBlock);
//   sub->PushBack(mgr.Add(motion));          // the moves go into `motion`
//
// Archive (version 0, the only one), after DbIOFList: m_OpId, m_ToolChangeId,
// m_ToolPlaneId (8 each), m_ApproachRpm (8), m_CSSEnabled (1), m_ToolOrientationType,
// m_NCPlane, m_NCPlaneCoordConv, m_Compensation (4 each), m_SpindleSpeed, m_FeedRate
// (8 each), m_FeedUnits, m_DiameterOffsetNum, m_LengthOffsetNum (4 each).
// The dead-section flag is held in memory only: not archived, compared or carried by
// Copy (the copy constructor does carry it). Intended.
//
// Comparison: the list (DbIOFList::Compare), then m_OpId, m_ToolChangeId,
// m_ToolPlaneId, m_ApproachRpm, m_CSSEnabled, m_ToolOrientationType, m_NCPlane,
// m_Compensation, m_SpindleSpeed, m_FeedUnits, m_FeedRate, m_NCPlaneCoordConv,
// m_DiameterOffsetNum, m_LengthOffsetNum (reals within 1e-6).
#pragma once

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFList.h>
#include <iof/IofEnums.h>

namespace IOF {

class DbIOFNciSubOp : public DbIOFList {
  IOF_RECORD(DbIOFNciSubOp, DbIOFList)

 public:
  static constexpr unsigned kVersion = 0;
  static constexpr int kListType = 0x2000;  // the list kind of every sub-operation

  // The tool's orientation (m_ToolOrientationType), with its dump text.
  enum class ToolOrientType : int {
    NOTSET = 0,    // "NOTSET"
    CROSS = 1,     // "CROSS"
    FACE = 2,      // "FACE"
    NONORTHO = 3,  // "NONORTHO"
  };
  // The orientation's text; empty for any other value.
  static const wchar_t* ToolOrientText(int orientation) noexcept;
  // "G17", "G18", "G19" for 0 to 2; "NOTSET" for any other value (3 included).
  static const wchar_t* NCPlaneText(int plane) noexcept;

  Quarp::DbId GetOpId() const noexcept { return m_OpId; }
  void SetOpId(Quarp::DbId id) noexcept { m_OpId = id; }
  Quarp::DbId GetToolChangeId() const noexcept { return m_ToolChangeId; }
  void SetToolChangeId(Quarp::DbId id) noexcept { m_ToolChangeId = id; }
  Quarp::DbId GetToolPlaneId() const noexcept { return m_ToolPlaneId; }
  void SetToolPlaneId(Quarp::DbId id) noexcept { m_ToolPlaneId = id; }
  double GetApproachRpm() const noexcept { return m_ApproachRpm; }
  void SetApproachRpm(double rpm) noexcept { m_ApproachRpm = rpm; }
  bool GetCSSEnabled() const noexcept { return m_CSSEnabled; }
  void SetCSSEnabled(bool enabled) noexcept { m_CSSEnabled = enabled; }
  ToolOrientType GetToolOrientationType() const noexcept { return m_ToolOrientationType; }
  void SetToolOrientationType(ToolOrientType type) noexcept { m_ToolOrientationType = type; }
  IofArcPlaneType GetNCPlane() const noexcept { return m_NCPlane; }
  void SetNCPlane(const IofArcPlaneType& plane) noexcept { m_NCPlane = plane; }
  IofArcPlaneType GetNCPlaneCoordConv() const noexcept { return m_NCPlaneCoordConv; }
  void SetNCPlaneCoordConv(const IofArcPlaneType& plane) noexcept { m_NCPlaneCoordConv = plane; }
  CompType GetCompensationType() const noexcept { return m_Compensation; }
  void SetCompensationType(CompType type) noexcept { m_Compensation = type; }
  double GetSpindleSpeed() const noexcept { return m_SpindleSpeed; }
  void SetSpindleSpeed(double speed) noexcept { m_SpindleSpeed = speed; }
  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double feed) noexcept { m_FeedRate = feed; }
  FeedUnitType GetTurnFeedUnitType() const noexcept { return m_FeedUnits; }
  void SetTurnFeedUnitType(FeedUnitType units) noexcept { m_FeedUnits = units; }
  int GetDiameterOffsetNum() const noexcept { return m_DiameterOffsetNum; }
  void SetDiameterOffsetNum(int number) noexcept { m_DiameterOffsetNum = number; }
  int GetLengthOffsetNum() const noexcept { return m_LengthOffsetNum; }
  void SetLengthOffsetNum(int number) noexcept { m_LengthOffsetNum = number; }
  bool GetDeadSection() const noexcept { return m_DeadSection; }
  void SetDeadSection(bool dead) noexcept { m_DeadSection = dead; }

  // Lookups among the items, head to tail, first match; null for a sub-operation in no
  // manager. Only records of exactly the class count (a subclass does not).
  // The first DbIOFApproach.
  Quarp::DbPtr<DbIOFApproach> GetApproach() const;
  // The first plain DbIOFList of kind 4 (kMotionBlock).
  Quarp::DbPtr<DbIOFList> GetMotionList() const;
  // The first plain DbIOFList of kind 0x400000 (kCutterCompMotionSubList).
  Quarp::DbPtr<DbIOFList> GetCutterCompMotionList() const;

  // "IOF SubOp Object: Name: %s; Orient: %s, NCPlane: %s, NCPlaneCoordConv: %s, TC=%ld"
  // with the framework's GetName (the class name: intended, not the IOF name), the
  // orientation and plane texts and m_ToolChangeId.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciSubOp() : DbIOFList(kListType) {}

 private:
  Quarp::DbPtr<DbIOFList> MotionList(int kind) const;

  Quarp::DbId m_OpId;          // the owning operation
  Quarp::DbId m_ToolChangeId;  // the tool change in force
  Quarp::DbId m_ToolPlaneId;   // the tool plane in force
  double m_ApproachRpm = 0.0;
  bool m_CSSEnabled = false;  // constant surface speed
  ToolOrientType m_ToolOrientationType = ToolOrientType::NOTSET;
  IofArcPlaneType m_NCPlane = IofArcPlaneType::XY;
  IofArcPlaneType m_NCPlaneCoordConv = IofArcPlaneType::XY;
  CompType m_Compensation = CompType::Off;
  double m_SpindleSpeed = 0.0;
  double m_FeedRate = 0.0;
  FeedUnitType m_FeedUnits = FeedUnitType::PerMinute;
  int m_DiameterOffsetNum = 0;
  int m_LengthOffsetNum = 0;
  bool m_DeadSection = false;  // in memory only
};

}  // namespace IOF
