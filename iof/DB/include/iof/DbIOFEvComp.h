// DbIOFEvComp: a change of cutter compensation. Type IOFEVCOMP (0x5136).
//
// Archive (version 0), after DbIOFEventBase: m_CompensationType (4). The same layout as
// DbIOFEvChangeFeedUnitType: one 4-byte integer after the event base.
//
// It has no comparison of its own: DbIOFBase::Compare (the name only, with no type
// check) serves it, so two compensation events with different states compare equal.
// This is intended.
#pragma once

#include <iof/DbIOFEventBase.h>

namespace IOF {

class DbIOFEvComp : public DbIOFEventBase {
  IOF_RECORD(DbIOFEvComp, DbIOFEventBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetCompensationType() const noexcept { return m_CompensationType; }
  void SetCompensationType(int type) noexcept { m_CompensationType = type; }

  // "CComp Change Event: State = %s " (with its trailing blank) and the state text:
  // 0 "NULL", 1 "G40", 2 "G41", 3 "G42", any other value an empty text.
  CString ToIOFString() const override;

 protected:
  DbIOFEvComp() = default;

 private:
  int m_CompensationType = 1;  // 0 none, 1 G40 (off), 2 G41 (left), 3 G42 (right)
};

}  // namespace IOF
