// DbIOFDrill: the parameters of a drilling canned cycle that an operation uses (the
// operation names it by its canned-program id): the cycle type, the peck depths, the
// chip clearance and retract, the bore shift, the thread pitch and ten custom
// parameters. It is a record list of kind 0x1000 (4096) and holds ids like any list.
// Type IOFDRILL (0x5162).
//
//   auto drill = IOF::DbIOFDrill::Create();
//   drill->SetCycleType(2);
//   drill->SetPeck1(0.5);
//   Quarp::UtArrayEx<double> params;
//   drill->GetCustomParams(params);      // ten entries
//   params[3] = 1.25;
//   drill->SetCustomParams(params);      // true: same number of entries
//
// Archive (version 0), after the list: the custom parameters (the array's own form:
// version, count, growth step, values), m_CycleType (4), m_Peck1, m_Peck2, m_ChipClear,
// m_ChipRetract, m_BoreShift, m_ThreadPitch (8 each).
//
// Comparison: the list, then m_CycleType, m_Peck1, m_Peck2, m_ChipClear,
// m_ChipRetract, m_BoreShift, m_ThreadPitch, then "TotalCustomParams" (the two entry
// counts), stopping at the first difference. Then, whatever that found, two equal
// non-zero counts have their entries compared exactly, one by one: every entry that
// differs appends "Difference Detected: CustomParams\n", so several lines can appear.
#pragma once

#include <iof/DbIOFList.h>
#include <quarp/UtArrayEx.h>

namespace IOF {

class DbIOFDrill : public DbIOFList {
  IOF_RECORD(DbIOFDrill, DbIOFList)

 public:
  static constexpr unsigned kVersion = 0;
  static constexpr int kDrillListType = 0x1000;  // the list kind of every drill
  static constexpr int kDefaultCustomParams = 10;

  // Fills `params` with the custom parameters.
  void GetCustomParams(Quarp::UtArrayEx<double>& params) const { params = m_CustomParams; }
  // Copies the values of `params` when it has exactly as many entries as the record
  // holds (ten unless a load brought another count) and returns true; otherwise changes
  // nothing and returns false.
  bool SetCustomParams(const Quarp::UtArrayEx<double>& params);

  int GetCycleType() const noexcept { return m_CycleType; }
  void SetCycleType(int type) noexcept { m_CycleType = type; }
  double GetPeck1() const noexcept { return m_Peck1; }
  void SetPeck1(double v) noexcept { m_Peck1 = v; }
  double GetPeck2() const noexcept { return m_Peck2; }
  void SetPeck2(double v) noexcept { m_Peck2 = v; }
  double GetChipClear() const noexcept { return m_ChipClear; }
  void SetChipClear(double v) noexcept { m_ChipClear = v; }
  double GetChipRetract() const noexcept { return m_ChipRetract; }
  void SetChipRetract(double v) noexcept { m_ChipRetract = v; }
  double GetBoreShift() const noexcept { return m_BoreShift; }
  void SetBoreShift(double v) noexcept { m_BoreShift = v; }
  double GetThreadPitch() const noexcept { return m_ThreadPitch; }
  void SetThreadPitch(double v) noexcept { m_ThreadPitch = v; }

  // "IOF Drill Object"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFDrill();

 private:
  Quarp::UtArrayEx<double> m_CustomParams;  // ten entries of 0.0 by default
  int m_CycleType = 0;                      // the producer's cycle code, stored as given
  double m_Peck1 = 0.0;
  double m_Peck2 = 0.0;
  double m_ChipClear = 0.0;
  double m_ChipRetract = 0.0;
  double m_BoreShift = 0.0;
  double m_ThreadPitch = 0.0;
};

}  // namespace IOF
