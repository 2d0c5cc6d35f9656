// DbIOFNciSubProgRef: stands in the program output where a sub-program is called: the
// sub-program number, the id of the matching sub-program reference and whether the call
// is output incrementally. Type IOFNCISUBPROGREF (0x5150). The CF, CP, CR and
// non-transformed references derive from it and add their callers' data.
//
//   auto call = IOF::DbIOFNciSubProgRef::Create();
//   call->SetSubProgNum(1000);
//   call->SetMatchedSubRefId(otherCallId);
//
// Archive (version 1), after DbIOFNciBase: m_SubProgNum (4), m_NcIncremental (1),
// m_matchedSubRefId (8). Version 0 stored the number and the id only; version 1 put the
// flag between them. A version-0 record reads the number and then the id with nothing
// between them, and the flag stays false. The field list reads both layouts; it stands
// for the readers DeSerializeV0 and DeSerializeV1.
//
// Comparison: DbIOFNciBase, then m_SubProgNum, m_NcIncremental, m_matchedSubRefId.
#pragma once

#include <iof/DbIOFNciBase.h>

namespace IOF {

class DbIOFNciSubProgRef : public DbIOFNciBase {
  IOF_RECORD(DbIOFNciSubProgRef, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 1;

  int GetSubProgNum() const noexcept { return m_SubProgNum; }
  void SetSubProgNum(int num) noexcept { m_SubProgNum = num; }
  bool GetNcIncremental() const noexcept { return m_NcIncremental; }
  void SetNcIncremental(bool incremental) noexcept { m_NcIncremental = incremental; }
  Quarp::DbId GetMatchedSubRefId() const noexcept { return m_matchedSubRefId; }
  void SetMatchedSubRefId(Quarp::DbId id) noexcept { m_matchedSubRefId = id; }

  // "SubProgNum = %d, MatchSubRefId = %d, INC = %d" (the id as its value, the flag 0 or 1).
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciSubProgRef() = default;

  // "SubProgNum = %d, MatchSubRefId = %d, " then `middle`, then "INC = %d": the dump of
  // this class and of the subclasses whose dumps are comma-separated.
  CString RefText(const CString& middle) const;

 private:
  int m_SubProgNum = -1;
  bool m_NcIncremental = false;   // since version 1
  Quarp::DbId m_matchedSubRefId;  // the matching sub-program reference; null for none
};

}  // namespace IOF
