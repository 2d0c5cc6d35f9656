// DbIOFNciMOpTailStock: a tail-stock or quill motion: loading or unloading the centre,
// advancing or retracting, clearing the stock or moving to a position. Type
// IOFNCIMOPTAILSTOCK (0x5207).
//
// Archive (version 0), after DbIOFNciMiscOp: m_ActionType (4), m_Position (8),
// m_IsRapid (1), m_FeedRate, m_MoveDistance (8 each).
//
// Comparison: the DbIOFNciMiscOp comparison, then the fields in archive order.
//
// Dump: "TailStock Action Type:%s, Position:%g, Dist:%g, Rapid:%s, FRate:%g, t=%gs" with
// the action text, m_Position, m_MoveDistance, m_IsRapid ("true"/"false"), m_FeedRate
// and the record's machining time (m_Time).
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpTailStock : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpTailStock, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  // m_ActionType.
  enum TailStockAction : int {
    kLoadCenter = 0,
    kUnloadCenter = 1,
    kTailstockRetract = 2,
    kTailstockAdvance = 3,
    kQuillRetract = 4,
    kQuillAdvance = 5,
    kStockClearance = 6,
    kLinearPosition = 7,
  };
  // "Load Center", "Unload Center", "Tailstock Retract", "Tailstock Advance",
  // "Quill Retract", "Quill Advance", "Stock clearance", "Linear Position"; "Oops" for
  // any other value.
  static const wchar_t* ActionTypeText(int action) noexcept;

  int GetActionType() const noexcept { return m_ActionType; }
  void SetActionType(int action) noexcept { m_ActionType = action; }
  double GetPosition() const noexcept { return m_Position; }
  void SetPosition(double position) noexcept { m_Position = position; }
  bool GetIsRapid() const noexcept { return m_IsRapid; }
  void SetIsRapid(bool rapid) noexcept { m_IsRapid = rapid; }
  double GetFeedRate() const noexcept { return m_FeedRate; }
  void SetFeedRate(double rate) noexcept { m_FeedRate = rate; }
  double GetMoveDistance() const noexcept { return m_MoveDistance; }
  void SetMoveDistance(double distance) noexcept { m_MoveDistance = distance; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpTailStock() = default;

 private:
  int m_ActionType = kTailstockRetract;  // TailStockAction
  double m_Position = 0.0;
  bool m_IsRapid = true;
  double m_FeedRate = 0.0;
  double m_MoveDistance = 0.0;
};

}  // namespace IOF
