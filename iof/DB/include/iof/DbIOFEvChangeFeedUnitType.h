// DbIOFEvChangeFeedUnitType: a change of feed units. Type code 0x5137, deliberately not
// registered with the type registry by name (its type index is whatever the host
// answers for an unregistered code); its class name is registered for archiving like
// every concrete record.
//
// Archive (version 0), after DbIOFEventBase: m_FeedUnits (4). The same layout as
// DbIOFEvComp: one 4-byte integer after the event base.
#pragma once

#include <iof/DbIOFEventBase.h>

namespace IOF {

class DbIOFEvChangeFeedUnitType : public DbIOFEventBase {
  IOF_RECORD(DbIOFEvChangeFeedUnitType, DbIOFEventBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetUnitType() const noexcept { return m_FeedUnits; }
  void SetUnitType(int units) noexcept { m_FeedUnits = units; }

  // "FeedUnits = %s" with "//min" (0), "//rev" (1), "Invtime" (2), any other value
  // "//min"; the doubled slashes are part of the texts.
  CString ToIOFString() const override;
  // The record base, then m_FeedUnits.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFEvChangeFeedUnitType() = default;

 private:
  int m_FeedUnits = 0;  // 0 feed per minute, 1 feed per revolution, 2 inverse time
};

}  // namespace IOF
