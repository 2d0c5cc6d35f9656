// UtIofDiffItem: one difference that the document comparison (UtIofCompareMgr) found: the
// pair of records concerned, each may be null, and a message.
//
//   IOF::UtIofDiffItem item(left, right, CString(L"IOFLists not same size."));
//   CString line = item.ToString(CString(L"Stream 1"));
//   // Stream 1:  Id1:12, Id2:14, "IOFLists not same size.".\n
#pragma once

#include <afx/CString.h>
#include <quarp/DbId.h>

#include <utility>

namespace IOF {

class UtIofDiffItem {
 public:
  UtIofDiffItem() = default;
  UtIofDiffItem(Quarp::DbId id1, Quarp::DbId id2, CString text) : m_Id1(id1), m_Id2(id2), m_Text(std::move(text)) {}

  void GetData(Quarp::DbId& id1, Quarp::DbId& id2, CString& text) const {
    id1 = m_Id1;
    id2 = m_Id2;
    text = m_Text;
  }
  // Not part of the classic interface: the same, one at a time.
  Quarp::DbId GetId1() const noexcept { return m_Id1; }
  Quarp::DbId GetId2() const noexcept { return m_Id2; }
  const CString& GetText() const noexcept { return m_Text; }

  // "%s%s Id1:%d, Id2:%d, \"%s\".\n" with the prefix, ": " when the prefix is not empty
  // (else nothing), the low 32 bits of both ids and the text.
  CString ToString(CString prefix) const;

  friend bool operator==(const UtIofDiffItem&, const UtIofDiffItem&) = default;

 private:
  Quarp::DbId m_Id1;  // the record in the first (left) database, or null
  Quarp::DbId m_Id2;  // the record in the second (right) database, or null
  CString m_Text;
};

}  // namespace IOF
