// DbIOFThread: the parameters of a lathe thread cycle: spring passes, finish
// allowance, pull-off, starts, clearance, lead-in, the depth method and number of cuts,
// the thread's start and end in X and Z, lead, first and last cut, angles, type,
// orientation and taper. Type IOFTHREAD (0x5161).
//
// Archive (version 0), after the record base, in declaration order: 4 bytes for the
// ints, 1 for m_StartClosest, 8 for the doubles.
// Comparison: the record base, then every field in archive order except the last cut,
// which is archived but intentionally not compared.
#pragma once

#include <iof/DbIOFBase.h>

namespace IOF {

class DbIOFThread : public DbIOFBase {
  IOF_RECORD(DbIOFThread, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetNumSpringCuts() const noexcept { return m_NumSpringCuts; }
  void SetNumSpringCuts(int v) noexcept { m_NumSpringCuts = v; }
  double GetFinishAllowance() const noexcept { return m_FinishAllowance; }
  void SetFinishAllowance(double v) noexcept { m_FinishAllowance = v; }
  double GetThreadPullOff() const noexcept { return m_ThreadPullOff; }
  void SetThreadPullOff(double v) noexcept { m_ThreadPullOff = v; }
  int GetNumStarts() const noexcept { return m_NumStarts; }
  void SetNumStarts(int v) noexcept { m_NumStarts = v; }
  bool GetStartClosest() const noexcept { return m_StartClosest; }
  void SetStartClosest(bool v) noexcept { m_StartClosest = v; }
  double GetClearanceX() const noexcept { return m_ClearanceX; }
  void SetClearanceX(double v) noexcept { m_ClearanceX = v; }
  double GetLeadInAngle() const noexcept { return m_LeadInAngle; }
  void SetLeadInAngle(double v) noexcept { m_LeadInAngle = v; }
  int GetEqualDepthMethod() const noexcept { return m_EqualDepthMethod; }
  void SetEqualDepthMethod(int v) noexcept { m_EqualDepthMethod = v; }
  int GetNumCuts() const noexcept { return m_NumCuts; }
  void SetNumCuts(int v) noexcept { m_NumCuts = v; }
  double GetThreadStartX() const noexcept { return m_ThreadStartX; }
  void SetThreadStartX(double v) noexcept { m_ThreadStartX = v; }
  double GetThreadEndX() const noexcept { return m_ThreadEndX; }
  void SetThreadEndX(double v) noexcept { m_ThreadEndX = v; }
  double GetThreadStartZ() const noexcept { return m_ThreadStartZ; }
  void SetThreadStartZ(double v) noexcept { m_ThreadStartZ = v; }
  double GetThreadEndZ() const noexcept { return m_ThreadEndZ; }
  void SetThreadEndZ(double v) noexcept { m_ThreadEndZ = v; }
  double GetLead() const noexcept { return m_Lead; }
  void SetLead(double v) noexcept { m_Lead = v; }
  double GetFirstCut() const noexcept { return m_FirstCut; }
  void SetFirstCut(double v) noexcept { m_FirstCut = v; }
  double GetLastCut() const noexcept { return m_LastCut; }
  void SetLastCut(double v) noexcept { m_LastCut = v; }
  double GetAccellClearance() const noexcept { return m_AccellClearance; }
  void SetAccellClearance(double v) noexcept { m_AccellClearance = v; }
  double GetLeadAngle() const noexcept { return m_LeadAngle; }
  void SetLeadAngle(double v) noexcept { m_LeadAngle = v; }
  double GetIncludedAngle() const noexcept { return m_IncludedAngle; }
  void SetIncludedAngle(double v) noexcept { m_IncludedAngle = v; }
  int GetThreadType() const noexcept { return m_ThreadType; }
  void SetThreadType(int v) noexcept { m_ThreadType = v; }
  int GetThreadOrientation() const noexcept { return m_ThreadOrientation; }
  void SetThreadOrientation(int v) noexcept { m_ThreadOrientation = v; }
  double GetTaperEndX() const noexcept { return m_TaperEndX; }
  void SetTaperEndX(double v) noexcept { m_TaperEndX = v; }

  // "IOF Thread Object"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFThread() = default;

 private:
  int m_NumSpringCuts = 0;
  double m_FinishAllowance = 0.0;
  double m_ThreadPullOff = 0.0;
  int m_NumStarts = 0;
  bool m_StartClosest = true;
  double m_ClearanceX = 0.0;
  double m_LeadInAngle = 0.0;
  int m_EqualDepthMethod = 0;
  int m_NumCuts = 0;
  double m_ThreadStartX = 0.0;
  double m_ThreadEndX = 0.0;
  double m_ThreadStartZ = 0.0;
  double m_ThreadEndZ = 0.0;
  double m_Lead = 0.0;
  double m_FirstCut = 0.0;
  double m_LastCut = 0.0;  // archived but not compared: intended
  double m_AccellClearance = 0.0;
  double m_LeadAngle = 0.0;
  double m_IncludedAngle = 0.0;
  int m_ThreadType = 0;
  int m_ThreadOrientation = 0;
  double m_TaperEndX = 0.0;
};

}  // namespace IOF
