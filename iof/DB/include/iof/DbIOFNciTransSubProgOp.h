// DbIOFNciTransSubProgOp: the operation of a transformed sub-program: a full operation
// (DbIOFNciOperation, every field, item and behaviour of one) plus the transform's
// bookkeeping: the sub-program number, operation id, section numbering, chain, transform
// status, type and method, the transform matrix, origin and Euler angles, the next tool
// and the nesting flags. Type IOFNCITRANSSUBPROGOP (0x5300).
//
// Archive (version 1), after the operation (with its own version): m_SubProgNum (4),
// m_NcIncremental (1), m_OpId, m_SectionNum, m_SectionTotal, m_Chain, m_TransformStatus
// (4 each), m_IsSource (1), m_TransformType, m_TransformMethod (4 each),
// m_TransformMatrix (matrix), m_TransformOrigin (point), m_NextTool (4),
// m_HasToolchange, m_NoNest, m_AllSubNests, m_AllIncNests (1 each), m_NestLevel (4), then
// since version 1 m_TransformMatrixEulerAngles (point). The field list stands for the
// readers DeserializeV0 (without the angles, which stay (0, 0, 0)) and DeserializeV1.
//
// Comparison: the operation (DbIOFNciOperation::Compare), then the fields in archive
// order: the matrix within 2e-7, the origin and the angles within 1e-6.
#pragma once

#include <iof/DbIOFNciOperation.h>
#include <iof/GmPoint3D.h>
#include <iof/GmXformMat3D.h>

namespace IOF {

class DbIOFNciTransSubProgOp : public DbIOFNciOperation {
  IOF_RECORD(DbIOFNciTransSubProgOp, DbIOFNciOperation)

 public:
  static constexpr unsigned kVersion = 1;

  int GetSubProgNum() const noexcept { return m_SubProgNum; }
  void SetSubProgNum(int number) noexcept { m_SubProgNum = number; }
  bool GetNcIncremental() const noexcept { return m_NcIncremental; }
  void SetNcIncremental(bool incremental) noexcept { m_NcIncremental = incremental; }
  int GetOpId() const noexcept { return m_OpId; }
  void SetOpId(int id) noexcept { m_OpId = id; }
  int GetSectionNum() const noexcept { return m_SectionNum; }
  void SetSectionNum(int number) noexcept { m_SectionNum = number; }
  int GetSectionTotal() const noexcept { return m_SectionTotal; }
  void SetSectionTotal(int total) noexcept { m_SectionTotal = total; }
  int GetChain() const noexcept { return m_Chain; }
  void SetChain(int chain) noexcept { m_Chain = chain; }
  int GetTransformStatus() const noexcept { return m_TransformStatus; }
  void SetTransformStatus(int status) noexcept { m_TransformStatus = status; }
  bool GetIsSource() const noexcept { return m_IsSource; }
  void SetIsSource(bool source) noexcept { m_IsSource = source; }
  int GetTransformType() const noexcept { return m_TransformType; }
  void SetTransformType(int type) noexcept { m_TransformType = type; }
  int GetTransformMethod() const noexcept { return m_TransformMethod; }
  void SetTransformMethod(int method) noexcept { m_TransformMethod = method; }
  const GmXformMat3D& GetTransformMatrix() const noexcept { return m_TransformMatrix; }
  void SetTransformMatrix(const GmXformMat3D& matrix) { m_TransformMatrix = matrix; }
  const GmPoint3D& GetTransformOrigin() const noexcept { return m_TransformOrigin; }
  void SetTransformOrigin(const GmPoint3D& origin) noexcept { m_TransformOrigin = origin; }
  int GetNextTool() const noexcept { return m_NextTool; }
  void SetNextTool(int tool) noexcept { m_NextTool = tool; }
  bool GetHasToolchange() const noexcept { return m_HasToolchange; }
  void SetHasToolchange(bool has) noexcept { m_HasToolchange = has; }
  bool GetNoNest() const noexcept { return m_NoNest; }
  void SetNoNest(bool noNest) noexcept { m_NoNest = noNest; }
  bool GetAllSubNests() const noexcept { return m_AllSubNests; }
  void SetAllSubNests(bool all) noexcept { m_AllSubNests = all; }
  bool GetAllIncNests() const noexcept { return m_AllIncNests; }
  void SetAllIncNests(bool all) noexcept { m_AllIncNests = all; }
  int GetNestLevel() const noexcept { return m_NestLevel; }
  void SetNestLevel(int level) noexcept { m_NestLevel = level; }
  const GmPoint3D& GetTransformMatrixEulerAngles() const noexcept { return m_TransformMatrixEulerAngles; }
  void SetTransformMatrixEulerAngles(const GmPoint3D& angles) noexcept { m_TransformMatrixEulerAngles = angles; }

  // "SubProgNum = %d, INC = %d" with m_SubProgNum and m_NcIncremental (0 or 1); it
  // replaces the operation's text entirely.
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciTransSubProgOp() = default;

 private:
  int m_SubProgNum = -1;
  bool m_NcIncremental = false;
  int m_OpId = 0;
  int m_SectionNum = 0;
  int m_SectionTotal = 0;
  int m_Chain = 0;
  int m_TransformStatus = 0;
  bool m_IsSource = false;  // the operation the instances are made from
  int m_TransformType = 0;
  int m_TransformMethod = 0;
  GmXformMat3D m_TransformMatrix;  // identity
  GmPoint3D m_TransformOrigin;
  int m_NextTool = 0;
  bool m_HasToolchange = false;
  bool m_NoNest = true;
  bool m_AllSubNests = false;
  bool m_AllIncNests = false;
  int m_NestLevel = -1;
  GmPoint3D m_TransformMatrixEulerAngles;  // three angles; since version 1
};

}  // namespace IOF
