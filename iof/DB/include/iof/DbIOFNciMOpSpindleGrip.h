// DbIOFNciMOpSpindleGrip: a spindle clamping or releasing the stock, optionally
// ejecting it or taking it over from the other spindle. Type IOFNCIMOPSPINDLEGRIP
// (0x5204).
//
// Archive (version 0), after DbIOFNciMiscOp: m_Spindle (4), m_IsClamping, m_IsEjecting
// (1 each), m_Dwell (8), m_IsTransferStock (1), m_Offset (8).
//
// Comparison: the DbIOFNciMiscOp comparison, then m_Spindle, m_IsClamping,
// m_IsEjecting, m_Dwell, m_IsTransferStock, m_Offset.
//
// Dump: "TailStock MOp Type:%s, IsClamping:%s, IsEjecting:%s, Dwell:%g,
// IsTransferStock:%d, Offset:%g" with the spindle text, the two flags as "true"/"false",
// the dwell, the transfer flag as 1 or 0 and the offset. Intended: the grip's dump
// carries the tail stock's label, and "Type" shows the spindle.
#pragma once

#include <iof/DbIOFNciMiscOp.h>

namespace IOF {

class DbIOFNciMOpSpindleGrip : public DbIOFNciMiscOp {
  IOF_RECORD(DbIOFNciMOpSpindleGrip, DbIOFNciMiscOp)

 public:
  static constexpr unsigned kVersion = 0;

  int GetSpindle() const noexcept { return m_Spindle; }
  void SetSpindle(int spindle) noexcept { m_Spindle = spindle; }
  bool GetIsClamping() const noexcept { return m_IsClamping; }
  void SetIsClamping(bool clamping) noexcept { m_IsClamping = clamping; }
  bool GetIsEjecting() const noexcept { return m_IsEjecting; }
  void SetIsEjecting(bool ejecting) noexcept { m_IsEjecting = ejecting; }
  double GetDwell() const noexcept { return m_Dwell; }
  void SetDwell(double seconds) noexcept { m_Dwell = seconds; }
  bool GetIsTransferStock() const noexcept { return m_IsTransferStock; }
  void SetIsTransferStock(bool transfer) noexcept { m_IsTransferStock = transfer; }
  double GetOffset() const noexcept { return m_Offset; }
  void SetOffset(double offset) noexcept { m_Offset = offset; }

  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMOpSpindleGrip() = default;

 private:
  int m_Spindle = kInvalidSpindle;  // Spindle
  bool m_IsClamping = false;        // clamping (true) or releasing
  bool m_IsEjecting = false;
  double m_Dwell = 0.0;            // seconds
  bool m_IsTransferStock = false;  // the stock passes to the other spindle
  double m_Offset = 0.0;
};

}  // namespace IOF
