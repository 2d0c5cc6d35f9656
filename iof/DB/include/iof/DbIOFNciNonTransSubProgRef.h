// DbIOFNciNonTransSubProgRef: the sub-program call of a non-transformed, sectioned
// sub-program: which section this call outputs and how many there are. Type code 0x5154;
// deliberately not registered by type name (its class name is registered for loading).
//
// Archive (version 0), after DbIOFNciSubProgRef: m_SectionNum, m_SectionTotal (4 each).
// Comparison: DbIOFNciSubProgRef, then m_SectionNum, m_SectionTotal.
#pragma once

#include <iof/DbIOFNciSubProgRef.h>

namespace IOF {

class DbIOFNciNonTransSubProgRef : public DbIOFNciSubProgRef {
  IOF_RECORD(DbIOFNciNonTransSubProgRef, DbIOFNciSubProgRef)

 public:
  static constexpr unsigned kVersion = 0;

  int GetSectionNum() const noexcept { return m_SectionNum; }
  void SetSectionNum(int num) noexcept { m_SectionNum = num; }
  int GetSectionTotal() const noexcept { return m_SectionTotal; }
  void SetSectionTotal(int total) noexcept { m_SectionTotal = total; }

  // "SubProgNum = %d MatchSubRefId = %d SectionNum = %d SectionTotal = %d INC = %d".
  // Intended: no commas, unlike the other sub-program references.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciNonTransSubProgRef() = default;

 private:
  int m_SectionNum = 0;
  int m_SectionTotal = 0;
};

}  // namespace IOF
