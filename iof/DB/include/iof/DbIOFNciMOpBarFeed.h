// DbIOFNciMOpBarFeed: feeding bar stock out of a spindle, pushed by a tool or by the
// feeder, to a final Z position. Type IOFNCIMOPBARFEED (0x5201).
//
//   auto feed = IOF::DbIOFNciMOpBarFeed::Create();
//   feed->SetSpindle(IOF::DbIOFNciMiscOp::kLeftHead);
//   feed->SetMotionType(IOF::DbIOFNciMOpBarFeed::kPushTool);
//   feed->SetFinalZPos(-50.0);
//
// Archive (version 0), after DbIOFNciMiscOp: m_Spindle, m_MotionType (4 each),
// m_FinalZPos, m_ZOffset, m_ToolXPos, m_FeedRate (8 each), m_IsRapidMove (1).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_Spindle, m_MotionType, m_FinalZPos,
// m_ZOffset, m_ToolXPos, m_IsRapidMove. m_FeedRate is archived but deliberately not
// compared.
//
// Dump: "MiscOp Bar Feed Spindle:%s, MotionType:%s, FinalZPos:%lf, ZOffset:%lf,
// ToolXPos:%lf, FeedRate:%lf, IsRapidMove:%s" (the flag as "True"/"False").
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpBarFeed : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpBarFeed, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // How the bar is pushed (m_MotionType).
  enum PushMotion : int { kPushNoTool = 0, kPushTool = 1, kPushToolStop = 2, kPushWithTool = 3 };
  // "PushNoTool", "PushTool", "PushToolStop", "PushWithTool"; "Oops" for any other value.
  static const wchar_t* PushMotionText(int motion) noexcept;

  int GetSpindle() const noexcept { return m_Spindle; }
  void SetSpindle(int spindle) noexcept { m_Spindle = spindle; }
  int GetMotionType() const noexcept { return m_MotionType; }
  void SetMotionType(int motion) noexcept { m_MotionType = motion; }
  double GetFinalZPos() const noexcept { return m_FinalZPos; }
  void SetFinalZPos(double z) noexcept { m_FinalZPos = z; }
  double GetZOffset() const noexcept { return m_ZOffset; }
  void SetZOffset(double offset) noexcept { m_ZOffset = offset; }
  double GetToolXPos() const noexcept { return m_ToolXPos; }
  void SetToolXPos(double x) noexcept { m_ToolXPos = x; }
  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double rate) noexcept { m_FeedRate = rate; }
  bool GetIsRapidMove() const noexcept { return m_IsRapidMove; }
  void SetIsRapidMove(bool rapid) noexcept { m_IsRapidMove = rapid; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpBarFeed() = default;

 private:
  int m_Spindle = kInvalidSpindle;  // Spindle
  int m_MotionType = kPushNoTool;   // PushMotion
  double m_FinalZPos = 0.0;
  double m_ZOffset = 0.0;
  double m_ToolXPos = 0.0;  // X of the pushing tool
  double m_FeedRate = 0.0;  // archived, never compared: intended
  bool m_IsRapidMove = true;
};

}  // namespace IOF
