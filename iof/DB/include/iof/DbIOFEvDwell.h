// DbIOFEvDwell: a dwell (G4) with the spindle state kept during it. Type IOFEVDWELL
// (0x5133).
//
// Archive (version 0), after DbIOFEventBase: m_DwellTime (8), m_SpindleSpeed (8),
// m_SpindleDirection (4), m_IsSpindleSpeedUnitCSS (1).
#pragma once

#include <iof/DbIOFEventBase.h>

namespace IOF {

class DbIOFEvDwell : public DbIOFEventBase {
  IOF_RECORD(DbIOFEvDwell, DbIOFEventBase)

 public:
  static constexpr unsigned kVersion = 0;

  double GetDwellTime() const noexcept { return m_DwellTime; }
  void SetDwellTime(double seconds) noexcept { m_DwellTime = seconds; }
  double GetSpindleSpeed() const noexcept { return m_SpindleSpeed; }
  void SetSpindleSpeed(double speed) noexcept { m_SpindleSpeed = speed; }
  int GetSpindleDir() const noexcept { return m_SpindleDirection; }
  void SetSpindleDir(int direction) noexcept { m_SpindleDirection = direction; }
  bool GetIsSpeedUnitCSS() const noexcept { return m_IsSpindleSpeedUnitCSS; }
  void SetIsSpeedUnitCSS(bool css) noexcept { m_IsSpindleSpeedUnitCSS = css; }

  // "G4 %lf(sec), %lf(%s), SpindleDir: %s": dwell time, spindle speed, "css" or "rpm",
  // and the direction text ("Not Applicable", "Reverse", "Stopped", "Forward", any
  // other value "Unrecognized").
  CString ToIOFString() const override;
  // The record base, then m_DwellTime, m_SpindleSpeed, m_SpindleDirection,
  // m_IsSpindleSpeedUnitCSS (through the int comparison: a difference prints 1 and 0).
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFEvDwell() = default;

 private:
  double m_DwellTime = 0.0;              // seconds
  double m_SpindleSpeed = 0.0;           // in the unit m_IsSpindleSpeedUnitCSS says
  int m_SpindleDirection = 0;            // 0 not applicable, 1 reverse, 2 stopped, 3 forward
  bool m_IsSpindleSpeedUnitCSS = false;  // true: constant surface speed; false: rpm
};

}  // namespace IOF
