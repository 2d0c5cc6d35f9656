// DbIOFNciMOpSpindleMove: a spindle moving along Z, rotating to an angle, returning
// home, clearing the stock or moving to a grip length. Type IOFNCIMOPSPINDLEMOVE
// (0x5205).
//
//   auto move = IOF::DbIOFNciMOpSpindleMove::Create();
//   move->SetSpindle(IOF::DbIOFNciMiscOp::kRightHead);
//   move->SetMotionType(IOF::DbIOFNciMOpSpindleMove::kLinear);
//   move->SetLinearZPos(-120.0);
//
// Archive (version 0), after DbIOFNciMiscOp: m_Spindle, m_SpindleMotionType,
// m_SpindleRotaryDirType (4 each), m_IsRapidMove (1), m_FeedRate, m_LinearZPos,
// m_RotaryFinalAngle, m_StockClearance, m_GripLength, m_MoveDistance (8 each).
//
// Comparison: the DbIOFNciMiscOp comparison, then the fields in archive order.
//
// Dump: "SpindleMove MOp Spindle:%s, Motion:%s, RotDir:%s, IsRapidMove:%s, FeedRate:%g,
// \t\t\t\t\tLinearZPos:%g, RotaryFinalAngle:%g, StockClearance:%g, GripLength:%g,
// MoveDistance:%g" (the flag as "true"/"false"). The five tab characters in the middle
// are part of the text: intended.
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpSpindleMove : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpSpindleMove, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // What the spindle does (m_SpindleMotionType).
  enum SpindleMotion : int { kLinear = 0, kRotary = 1, kHome = 2, kClearStock = 3, kGripLen = 4 };
  // Which way a rotary motion turns (m_SpindleRotaryDirType).
  enum RotaryDirection : int { kCW = 0, kCCW = 1, kShortest = 2 };
  // "Linear", "Rotary", "Home", "ClearStock", "GripLen"; "Oops" for any other value.
  static const wchar_t* SpindleMotionText(int motion) noexcept;
  // "CW", "CCW", "Shortest"; "Oops" for any other value.
  static const wchar_t* RotaryDirectionText(int direction) noexcept;

  int GetSpindle() const noexcept { return m_Spindle; }
  void SetSpindle(int spindle) noexcept { m_Spindle = spindle; }
  int GetMotionType() const noexcept { return m_SpindleMotionType; }
  void SetMotionType(int motion) noexcept { m_SpindleMotionType = motion; }
  int GetSpindleRotaryDirType() const noexcept { return m_SpindleRotaryDirType; }
  void SetSpindleRotaryDirType(int direction) noexcept { m_SpindleRotaryDirType = direction; }
  bool GetIsRapidMove() const noexcept { return m_IsRapidMove; }
  void SetIsRapidMove(bool rapid) noexcept { m_IsRapidMove = rapid; }
  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double rate) noexcept { m_FeedRate = rate; }
  double GetLinearZPos() const noexcept { return m_LinearZPos; }
  void SetLinearZPos(double z) noexcept { m_LinearZPos = z; }
  double GetRotaryFinalAngle() const noexcept { return m_RotaryFinalAngle; }
  void SetRotaryFinalAngle(double degrees) noexcept { m_RotaryFinalAngle = degrees; }
  double GetStockClearance() const noexcept { return m_StockClearance; }
  void SetStockClearance(double clearance) noexcept { m_StockClearance = clearance; }
  double GetGripLength() const noexcept { return m_GripLength; }
  void SetGripLength(double length) noexcept { m_GripLength = length; }
  double GetMoveDistance() const noexcept { return m_MoveDistance; }
  void SetMoveDistance(double distance) noexcept { m_MoveDistance = distance; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpSpindleMove() = default;

 private:
  int m_Spindle = kInvalidSpindle;    // Spindle
  int m_SpindleMotionType = kLinear;  // SpindleMotion
  int m_SpindleRotaryDirType = kCW;   // RotaryDirection
  bool m_IsRapidMove = false;
  double m_FeedRate = 0.0;
  double m_LinearZPos = 0.0;
  double m_RotaryFinalAngle = 0.0;
  double m_StockClearance = 0.0;
  double m_GripLength = 0.0;
  double m_MoveDistance = 0.0;
};

}  // namespace IOF
