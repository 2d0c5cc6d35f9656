// DbIOFEvClamp: a clamp or unclamp of a steady rest. Type IOFEVCLAMP (0x5138).
//
// Archive (version 0), after DbIOFEventBase: m_IsClamping (1), m_Time (8).
#pragma once

#include <iof/DbIOFEventBase.h>

namespace IOF {

class DbIOFEvClamp : public DbIOFEventBase {
  IOF_RECORD(DbIOFEvClamp, DbIOFEventBase)

 public:
  static constexpr unsigned kVersion = 0;

  bool GetIsClamping() const noexcept { return m_IsClamping; }
  void SetIsClamping(bool clamping) noexcept { m_IsClamping = clamping; }
  double GetTime() const noexcept { return m_Time; }
  void SetTime(double seconds) noexcept { m_Time = seconds; }

  // "Steady Rest Event %s Time:  %lf(sec)" (two blanks after the colon) with "Clamp" or
  // "UnClamp" and m_Time.
  CString ToIOFString() const override;
  // The record base, then m_IsClamping, m_Time.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFEvClamp() = default;

 private:
  bool m_IsClamping = false;  // true: clamp; false: unclamp
  double m_Time = 0.0;        // seconds
};

}  // namespace IOF
