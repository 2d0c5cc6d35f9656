// DbIOFNciMOpSpindleSync: aligning or synchronising the two spindles, or cancelling
// their synchronisation. Type IOFNCIMOPSPINDLESYNC (0x5206).
//
// Archive (version 0), after DbIOFNciMiscOp: m_SyncType (4), m_IsRapidMove (1),
// m_LeftAngle, m_RightAngle, m_RotaryFeedRate, m_SpindleSpeedRpm (8 each),
// m_IsRotaryCCW (1), m_MasterSpindle (4), m_UseRotaryPostOpt, m_UseSpindleStartOpt
// (1 each).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_SyncType, m_MasterSpindle,
// m_IsRapidMove, m_LeftAngle, m_RightAngle, m_RotaryFeedRate, m_SpindleSpeedRpm,
// m_IsRotaryCCW, m_UseRotaryPostOpt, m_UseSpindleStartOpt.
//
// Dump: "SyncType:%s, IsRapidMove:%s, LeftAngle:%g, RightAngle:%g, RotaryFeedRate:%g,
// SpindleSpeedRpm:%g, IsRotaryCCW:%s, Master:%s, UseRotOpt:%d, UseSpindleStartOpt:%d"
// (the two flags shown as texts print "true"/"false", the last two 1 or 0).
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpSpindleSync : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpSpindleSync, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // m_SyncType.
  enum SyncType : int { kAlign = 0, kSync = 1, kCancel = 2 };
  // m_MasterSpindle.
  enum MasterSpindle : int { kMasterLeft = 0, kMasterRight = 1, kMasterInvalid = 2 };
  // "Align", "sync", "Cancel"; "Oops" for any other value.
  static const wchar_t* SyncTypeText(int type) noexcept;
  // "Left", "Right", "Invalid"; "Oops" for any other value.
  static const wchar_t* MasterSpindleText(int master) noexcept;

  int GetSpindleSyncType() const noexcept { return m_SyncType; }
  void SetSpindleSyncType(int type) noexcept { m_SyncType = type; }
  bool GetIsRapidMove() const noexcept { return m_IsRapidMove; }
  void SetIsRapidMove(bool rapid) noexcept { m_IsRapidMove = rapid; }
  double GetLeftAngle() const noexcept { return m_LeftAngle; }
  void SetLeftAngle(double degrees) noexcept { m_LeftAngle = degrees; }
  double GetRightAngle() const noexcept { return m_RightAngle; }
  void SetRightAngle(double degrees) noexcept { m_RightAngle = degrees; }
  double GetRotaryFeedRate() const noexcept { return m_RotaryFeedRate; }
  void SetRotaryFeedRate(double rate) noexcept { m_RotaryFeedRate = rate; }
  double GetSpindleSpeedRpm() const noexcept { return m_SpindleSpeedRpm; }
  void SetSpindleSpeedRpm(double rpm) noexcept { m_SpindleSpeedRpm = rpm; }
  bool GetIsRotaryCCW() const noexcept { return m_IsRotaryCCW; }
  void SetIsRotaryCCW(bool ccw) noexcept { m_IsRotaryCCW = ccw; }
  int GetMasterSpindle() const noexcept { return m_MasterSpindle; }
  void SetMasterSpindle(int master) noexcept { m_MasterSpindle = master; }
  bool GetUseRotaryPostOpt() const noexcept { return m_UseRotaryPostOpt; }
  void SetUseRotaryPostOpt(bool use) noexcept { m_UseRotaryPostOpt = use; }
  bool GetUseSpindleStartOpt() const noexcept { return m_UseSpindleStartOpt; }
  void SetUseSpindleStartOpt(bool use) noexcept { m_UseSpindleStartOpt = use; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpSpindleSync() = default;

 private:
  int m_SyncType = kCancel;  // SyncType
  bool m_IsRapidMove = true;
  double m_LeftAngle = 0.0;
  double m_RightAngle = 0.0;
  double m_RotaryFeedRate = 0.0;
  double m_SpindleSpeedRpm = 0.0;
  bool m_IsRotaryCCW = true;
  int m_MasterSpindle = kMasterInvalid;  // MasterSpindle
  bool m_UseRotaryPostOpt = false;       // leave the rotary positioning to the post
  bool m_UseSpindleStartOpt = false;     // leave the spindle start to the post
};

}  // namespace IOF
