// DbIOFNciMOpTurret: indexing a turret to a station, with the axis motions that bring it
// there, the order in which the axes move, and optionally a reference point to pass
// through. Type IOFNCIMOPTURRET (0x5208).
//
//   auto turret = IOF::DbIOFNciMOpTurret::Create();
//   turret->SetStation(4);
//   turret->SetRefPosId(home->GetId());  // a DbIOFReferencePoint of the same manager
//
// Archive (version 0), after DbIOFNciMiscOp, deliberately not in member order:
// m_AxisMotion (the map's own serialisation), m_OutputToolCall (1), m_Station (4),
// m_RefPosId (8), m_MoveBreakStrategy (4).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_MoveBreakStrategy, m_Station,
// m_AxisMotion, m_RefPosId, m_OutputToolCall.
//
// Dump: "Turret MOp DoTC:%s, Station:%d, Motion: %s, MovStrategy: %s, RefPos: %s,
// Ref Point Guid: %s" with m_OutputToolCall ("true"/"false"), the station, the axis
// motions' text, the strategy text, and the reference point that m_RefPosId names in
// the turret's manager: "Name:%s, StreamId:%d" of that point and its GUID, or
// "NoRefPos" and an empty GUID when the turret is in no manager or the id names no
// reference point there.
#pragma once

#include <iof/DbIOFNciMiscOp.h>
#include <iof/UtAxisMotionMap.h>

namespace IOF {

class DbIOFNciMOpTurret : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpTurret, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // The order in which the axes move (m_MoveBreakStrategy).
  enum MoveBreakStrategy : int { kXFirst = 0, kYFirst = 1, kZFirst = 2, kDirect = 3, kRefReturn = 4 };
  // "XFIRST", "YFIRST", "ZFIRST", "DIRECT", "REFRETURN"; empty for any other value.
  static const wchar_t* MoveBreakStrategyText(int strategy) noexcept;

  int GetMoveBreakStrategy() const noexcept { return m_MoveBreakStrategy; }
  void SetMoveBreakStrategy(int strategy) noexcept { m_MoveBreakStrategy = strategy; }
  const UtAxisMotionMap& GetAxisMotionMap() const noexcept { return m_AxisMotion; }
  void SetAxisMotionMap(const UtAxisMotionMap& motions) { m_AxisMotion = motions; }
  bool GetOutputToolCall() const noexcept { return m_OutputToolCall; }
  void SetOutputToolCall(bool output) noexcept { m_OutputToolCall = output; }
  int GetStation() const noexcept { return m_Station; }
  void SetStation(int station) noexcept { m_Station = station; }
  Quarp::DbId GetRefPosId() const noexcept { return m_RefPosId; }
  void SetRefPosId(Quarp::DbId id) noexcept { m_RefPosId = id; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpTurret() = default;

 private:
  int m_MoveBreakStrategy = kDirect;  // MoveBreakStrategy
  UtAxisMotionMap m_AxisMotion;
  bool m_OutputToolCall = false;  // output a tool call with the index
  int m_Station = 1;
  Quarp::DbId m_RefPosId;  // a DbIOFReferencePoint; null for none
};

}  // namespace IOF
