// DbIOFApproach: how the tool comes into the cut of a sub-operation: the position the
// approach ends at, the approach type, an optional reference point and an incremental
// flag. Type IOFAPPROACH (0x5123). A sub-operation holds its approach among its items
// (DbIOFNciSubOp::GetApproach).
//
//   auto approach = IOF::DbIOFApproach::Create();
//   approach->SetApproachType(IOF::DbIOFApproach::kPrecededByPhysicalTC);
//   approach->SetEndPoint(IOF::GmPoint3D(42, 0, 2));
//   approach->GetAttributes().AddAttribute(CString(L"T_APPROACH_STRATEGY"), L"Direct");
//
// Archive (version 1): the layout of DbIOFMoveStrategyBase, whose type field is
// m_ApproachType. Version 0 lacks m_NcIncremental, which then stays false. The approach
// has no readers of its own: it reads through the layout it shares with the retract.
//
// Comparison: the record base, then m_EndPoint (1e-6), m_ReferencePointId,
// m_ApproachType, m_NcIncremental.
#pragma once

#include <iof/DbIOFMoveStrategyBase.h>

namespace IOF {

class DbIOFApproach : public DbIOFMoveStrategyBase {
  IOF_RECORD(DbIOFApproach, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 1;

  // Approach types (m_ApproachType) and their texts; any other value has an empty text.
  enum ApproachType : int {
    kNotSet = 0,                // "Not Set"
    kPrecededByPhysicalTC = 1,  // "Preceded by Physical TC"
    kPrecededByNullTC = 2,      // "Preceded by Null TC"
    kReposition = 3,            // "Reposition"
    kLinkPrecededByNullTC = 4,  // "Link: Preceded by Null TC"
    kLinkReposition = 5,        // "Link: Reposition"
  };
  static const wchar_t* ApproachTypeText(int type) noexcept;

  int GetApproachType() const noexcept { return m_Type; }
  void SetApproachType(int type) noexcept { m_Type = type; }

  // The text attribute "T_APPROACH_STRATEGY"; empty when there is none.
  CString GetMoveStrategyAttribValue() const;

  // "IOF Approach Object: Name: %s, Pos (%g, %g, %g), Type \"%s\", INC = %d" with the IOF
  // name, the end point, the type text and the incremental flag (0 or 1).
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFApproach() = default;
};

}  // namespace IOF
