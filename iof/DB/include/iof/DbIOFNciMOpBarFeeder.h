// DbIOFNciMOpBarFeeder: switching the bar feeder on or off. Type IOFNCIMOPBARFEEDER (0x5202).
//
// Archive (version 0), after DbIOFNciMiscOp: m_IsOn (1).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_IsOn.
//
// Dump: "MiscOp Bar Feeder IsOn:%s" (the flag as "True"/"False", like the bar feed's).
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpBarFeeder : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpBarFeeder, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  bool GetIsOn() const noexcept { return m_IsOn; }
  void SetIsOn(bool on) noexcept { m_IsOn = on; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpBarFeeder() = default;

 private:
  bool m_IsOn = false;
};

}  // namespace IOF
