// DbIOFRetract: how the tool leaves the cut of an operation: the position the retract
// ends at, the retract type, an optional reference point, an incremental flag, and
// whether the user chose no reference point. Type IOFRETRACT (0x5124). An operation
// holds its retract among its own items (DbIOFNciOperation::GetRetract).
//
//   auto retract = IOF::DbIOFRetract::Create();
//   retract->SetRetractType(IOF::DbIOFRetract::kFollowedByPhysicalTC);
//   retract->SetReferencePointId(homeId);   // printed by its IOF name
//
// Archive (version 2): the layout of DbIOFMoveStrategyBase, whose type field is
// m_RetractType, then m_IsNoneSetByUser (1). The field list stands for the readers
// DeSerializeV0 (end point, type, reference point), DeSerializeV1 (then
// m_NcIncremental) and DeSerializeV2 (then m_IsNoneSetByUser); fields an old layout
// lacks stay false.
//
// Comparison: the record base, then m_EndPoint (1e-6), m_ReferencePointId,
// m_RetractType, m_NcIncremental, m_IsNoneSetByUser.
#pragma once

#include <iof/DbIOFMoveStrategyBase.h>

namespace IOF {

class DbIOFRetract : public DbIOFMoveStrategyBase {
  IOF_RECORD(DbIOFRetract, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 2;

  // Retract types (m_RetractType) and their texts; any other value has an empty text.
  enum RetractType : int {
    kNotSet = 0,                // "Not Set"
    kFollowedByPhysicalTC = 1,  // "Followed by Physical TC"
    kFollowedByNullTC = 2,      // "Followed by Null TC"
    kReposition = 3,            // "Reposition"
    kEOF = 4,                   // "EOF"
  };
  static const wchar_t* RetractTypeText(int type) noexcept;

  int GetRetractType() const noexcept { return m_Type; }
  void SetRetractType(int type) noexcept { m_Type = type; }
  bool GetIsNoneSetByUser() const noexcept { return m_IsNoneSetByUser; }
  void SetIsNoneSetByUser(bool none) noexcept { m_IsNoneSetByUser = none; }

  // The text attribute "T_RETRACT_STRATEGY"; empty when there is none.
  CString GetMoveStrategyAttribValue() const;

  // "IOF Retract Object: Name: %s, Type \"%s\", RefPos: %s, INC = %d" with the IOF name,
  // the type text, the reference point's IOF name ("None" unless the record is found in
  // the retract's manager) and the incremental flag (0 or 1).
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFRetract() = default;

 private:
  bool m_IsNoneSetByUser = false;  // since version 2
};

}  // namespace IOF
