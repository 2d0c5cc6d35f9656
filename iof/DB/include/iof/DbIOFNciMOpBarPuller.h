// DbIOFNciMOpBarPuller: opening (m_IsOn true) or closing the bar puller. Type IOFNCIMOPBARPULLER (0x5203).
//
// Archive (version 0), after DbIOFNciMiscOp: m_IsOn (1).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_IsOn.
//
// Dump: "MiscOp Bar Puller IsOn:%s" (the flag as "True"/"False", like the bar feed's).
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpBarPuller : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpBarPuller, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // Intended: the flag m_IsOn is read and written as "IsOpen".
  bool GetIsOpen() const noexcept { return m_IsOn; }
  void SetIsOpen(bool on) noexcept { m_IsOn = on; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpBarPuller() = default;

 private:
  bool m_IsOn = false;
};

}  // namespace IOF
