// GmXformMat3D: a 4x4 homogeneous transform held in a TNT::Matrix<double>.
//
// Conventions, fixed for the whole system: elements are [row][column], 0-based; column
// vectors, so a transform maps a point p to M * p; the upper-left 3x3 block is the
// rotation, its columns 0, 1, 2 the X, Y and Z axes of the transformed frame; column 3
// rows 0..2 the translation (the frame's origin); row 3 is (0, 0, 0, 1). The default
// value is the identity.
#pragma once

#include <iof/GmVector3D.h>
#include <quarp/UtArchive.h>

#include <tnt/tnt_cmat.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace IOF {

class GmXformMat3D {
 public:
  GmXformMat3D();
  // Copies a transform; a source that is not 4x4 is reported through the assertion
  // handler and its overlapping elements are copied into the identity.
  GmXformMat3D(const GmXformMat3D& m);
  // Takes the toolkit matrix as it is, dimensions included, without a check.
  GmXformMat3D(const TNT::Matrix<double>& m);  // NOLINT: implicit, so toolkit results convert
  virtual ~GmXformMat3D() = default;
  GmXformMat3D& operator=(const GmXformMat3D& m);
  GmXformMat3D& operator=(const TNT::Matrix<double>& m);

  // Element access, [row][column].
  double& operator()(int row, int col) { return m_Matrix[row][col]; }
  double operator()(int row, int col) const { return m_Matrix[row][col]; }
  const TNT::Matrix<double>& GetTNTMatrix() const noexcept { return m_Matrix; }
  int GetNumRows() const noexcept { return m_Matrix.num_rows(); }
  int GetNumCols() const noexcept { return m_Matrix.num_cols(); }

  void Eye();
  // True when every element differs from the identity's by strictly less than tol
  // (so IsIdentity(0.0) is false even for the identity).
  bool IsIdentity(double tol) const;
  // 1 - |r2 . (r0 x r1)| < tol and |r0 . r1| < tol, over the first three elements of
  // rows 0, 1 and 2.
  bool IsOrthogonal(double tol) const;
  // Same X axis, Z axis and origin: 1 - X.X' and 1 - Z.Z' not above dirTol, the origins
  // at most posTol apart. The Y axis is deliberately not compared.
  bool IsSame(const GmXformMat3D& other, double posTol, double dirTol) const;

  // The rigid-body inverse (transposed rotation, rotated negated translation); valid
  // for a rotation plus a translation, wrong without report for anything else.
  GmXformMat3D QuickInvert() const;
  void QuickInvertThis();

  static GmXformMat3D RotX(double a);
  static GmXformMat3D RotY(double a);
  static GmXformMat3D RotZ(double a);
  static GmXformMat3D Translate(double x, double y, double z);
  // M <- M * Rot(a) / M <- M * Translate(x, y, z): the change acts in the matrix's own frame.
  void RotXThis(double a);
  void RotYThis(double a);
  void RotZThis(double a);
  void TranslateThis(double x, double y, double z);

  // Transforms a position: (v.x, v.y, v.z, 1.0), so the translation is applied.
  GmVector3D operator*(const GmVector3D& v) const;

  // Debugging aids: nothing happens for a null label; otherwise the label and one line
  // per row ("%7.3g,\t" per element, or "%14.10g " for the M-code form) go to the debug
  // trace channel in debug builds. TraceLines builds those lines.
  void TraceDump(const char* label) const;
  void TraceDumpMCode(const char* label) const;
  std::vector<std::string> TraceLines(const char* label, bool mcode) const;

  // Version (0), row count, column count (4 bytes each), then the elements row by row
  // as 8-byte doubles. Loading reads into the 4x4 storage and accepts only 4 and 4.
  void Serialize(Quarp::UtArchive& ar);

 private:
  void MakeFour();                               // completes a matrix of another size to 4x4
  double Elem(int row, int col) const noexcept;  // identity value outside the matrix

  TNT::Matrix<double> m_Matrix;
};

// The row count, a blank, the column count and a new line; then every row, its elements
// written with no separator and a new line after the row. The field width is set to 15
// once, before the first element.
std::ostream& operator<<(std::ostream& s, const GmXformMat3D& m);

}  // namespace IOF
