// DbIOFMoveStrategyBase: what an approach (DbIOFApproach) and a retract (DbIOFRetract)
// share: the position the move ends at, the strategy type, an optional reference point
// and an incremental flag, archived in one layout.
//
// It is not a record type of its own: it has no type code, and the type answers,
// Serialize, Copy and the subclass level of the two classes go from each class straight
// to DbIOFBase. Layout (after the record base): m_EndPoint (point), the type (4),
// m_ReferencePointId (8) since version 0; m_NcIncremental (1) since version 1.
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/GmPoint3D.h>

namespace IOF {

class DbIOFMoveStrategyBase : public DbIOFBase {
 public:
  const GmPoint3D& GetEndPoint() const noexcept { return m_EndPoint; }
  void SetEndPoint(const GmPoint3D& point) noexcept { m_EndPoint = point; }
  // A reference-point record (DbIOFReferencePoint) or the null id.
  Quarp::DbId GetReferencePointId() const noexcept { return m_ReferencePointId; }
  void SetReferencePointId(Quarp::DbId id) noexcept { m_ReferencePointId = id; }
  bool GetNcIncremental() const noexcept { return m_NcIncremental; }
  void SetNcIncremental(bool incremental) noexcept { m_NcIncremental = incremental; }

 protected:
  DbIOFMoveStrategyBase() = default;

  // The layout both classes share, versions 0 and 1; `typeName` names the type field.
  // It stands for the readers DeSerializeV0 and DeSerializeV1.
  template <class F, class... R>
  static void SharedFields(F& f, const char* typeName, R&... r) {
    f(Field::V(0), "m_EndPoint", r.m_EndPoint...);
    f(Field::V(0), typeName, r.m_Type...);
    f(Field::V(0), "m_ReferencePointId", r.m_ReferencePointId...);
    f(Field::V(1), "m_NcIncremental", r.m_NcIncremental...);
  }

  // The text attribute `key` of the attribute map; empty when there is none.
  CString StrategyAttribValue(const wchar_t* key) const;
  // m_EndPoint (1e-6), m_ReferencePointId, the type under `typeName`, m_NcIncremental.
  bool CompareShared(const DbIOFMoveStrategyBase& other, const wchar_t* typeName, CString& report) const;

  GmPoint3D m_EndPoint;
  int m_Type = 0;  // m_ApproachType or m_RetractType; 0 is "Not Set"
  Quarp::DbId m_ReferencePointId;
  bool m_NcIncremental = false;  // since version 1
};

}  // namespace IOF
