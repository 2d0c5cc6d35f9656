// DbIOFNciCFSubProgRef: the sub-program call of a canned finish cycle; it names the
// canned rough operation whose contour it finishes. Type IOFNCICFSUBPROGREF (0x5151).
//
// Archive (version 0), after DbIOFNciSubProgRef: m_CannedRoughOpIdn (4).
// Comparison: DbIOFNciSubProgRef, then m_CannedRoughOpIdn.
#pragma once

#include <iof/DbIOFNciSubProgRef.h>

namespace IOF {

class DbIOFNciCFSubProgRef : public DbIOFNciSubProgRef {
  IOF_RECORD(DbIOFNciCFSubProgRef, DbIOFNciSubProgRef)

 public:
  static constexpr unsigned kVersion = 0;

  int GetCannedRoughOpIdn() const noexcept { return m_CannedRoughOpIdn; }
  void SetCannedRoughOpIdn(int idn) noexcept { m_CannedRoughOpIdn = idn; }

  // "SubProgNum = %d, MatchSubRefId = %d, CannedRoughOpIdn = %d, INC = %d"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciCFSubProgRef() = default;

 private:
  int m_CannedRoughOpIdn = 0;  // the canned rough operation finished by this call
};

}  // namespace IOF
