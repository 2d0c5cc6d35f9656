// DbIOFNciPlane: a working coordinate system of a stream: its transform, work offset
// number, origin-shift coordinates and the mapping used when the plane is output as a
// G68 coordinate rotation. Type IOFNCIPLANE (0x5114). Streams create planes through
// DbIOFStream::AddPlane, which reuses a plane with the same work offset and matrix.
//
// Archive (version 1), after DbIOFNciPlaneBase: m_WorkOffsetNum, m_PlaneId (4 bytes
// each), m_Comment, m_IsG68Compatible (1), m_Matrix, m_OriginMoveCoords,
// m_ModeOriginMoveCoords, m_G68MapMatrix. Version 0 carried one more transform after
// m_G68MapMatrix; it is read and dropped.
//
// Comparison: the DbIOFNciBase comparison (the plane-base level is skipped), then
// m_PlaneId, m_WorkOffsetNum, m_Matrix, m_OriginMoveCoords, m_ModeOriginMoveCoords,
// m_IsG68Compatible, m_G68MapMatrix (matrices with tolerance 2e-7). m_Comment is
// deliberately not compared.
#pragma once

#include <iof/DbIOFNciPlaneBase.h>

#include <utility>

namespace IOF {

class DbIOFNciPlane : public DbIOFNciPlaneBase {
  IOF_RECORD(DbIOFNciPlane, DbIOFNciPlaneBase)

 public:
  static constexpr unsigned kVersion = 1;
  // The tolerance of the matrix comparisons.
  static constexpr double kMatrixTolerance = 2e-7;

  CString GetComment() const override { return m_Comment; }
  void SetComment(const CString& comment) override { m_Comment = comment; }
  void GetMatrix(GmXformMat3D& out) const override { out = m_Matrix; }
  void SetMatrix(const GmXformMat3D& matrix) override { m_Matrix = matrix; }
  UtIofMovePoint GetOriginMoveCoords() const override { return m_OriginMoveCoords; }
  void SetOriginMoveCoords(UtIofMovePoint coords) override { m_OriginMoveCoords = std::move(coords); }
  UtIofMovePoint GetModeOriginMoveCoords() const override { return m_ModeOriginMoveCoords; }
  void SetModeOriginMoveCoords(UtIofMovePoint coords) override { m_ModeOriginMoveCoords = std::move(coords); }
  bool GetG68Compatible() const override { return m_IsG68Compatible; }
  void SetG68Compatible(bool compatible) override { m_IsG68Compatible = compatible; }
  GmXformMat3D GetG68MapMatrix() const override { return m_G68MapMatrix; }
  void SetG68MapMatrix(const GmXformMat3D& matrix) override { m_G68MapMatrix = matrix; }
  int GetWorkOffsetNum() const override { return m_WorkOffsetNum; }
  void SetWorkOffsetNum(int workOffset) override { m_WorkOffsetNum = workOffset; }
  int GetPlaneId() const noexcept { return m_PlaneId; }
  void SetPlaneId(int planeId) noexcept { m_PlaneId = planeId; }

  // "IOF NCI Plane Object - WorkOffsetNum = %d"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciPlane() = default;

 private:
  int m_WorkOffsetNum = -1;
  int m_PlaneId = -1;                     // the plane's id in the producing system
  CString m_Comment;                      // free text; not compared
  bool m_IsG68Compatible = false;         // the plane can be output as a G68 rotation
  GmXformMat3D m_Matrix;                  // the plane's transform; identity
  UtIofMovePoint m_OriginMoveCoords;      // origin-shift coordinates; no axis set
  UtIofMovePoint m_ModeOriginMoveCoords;  // modal origin-shift coordinates; no axis set
  GmXformMat3D m_G68MapMatrix;            // mapping used for G68 output; identity
};

}  // namespace IOF
