#include <iof/GmXformMat3D.h>

#include <quarp/UtSerialize.h>
#include <zolt/Diagnostics.h>

#include <cmath>
#include <cstdio>
#include <ostream>

namespace IOF {

namespace {

const double kIdentity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

void ReportNotFour(int line) {
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/GmXformMat3D", line, "IOF::GmXformMat3D::GmXformMat3D",
                                                         "");
}

}  // namespace

GmXformMat3D::GmXformMat3D() : m_Matrix(4, 4, kIdentity) {}

GmXformMat3D::GmXformMat3D(const GmXformMat3D& m) : m_Matrix(4, 4, kIdentity) {
  const int rows = m.m_Matrix.num_rows();
  const int cols = m.m_Matrix.num_cols();
  if (rows != 4) ReportNotFour(61);
  if (cols != 4) ReportNotFour(62);
  for (int i = 0; i < rows && i < 4; ++i) {
    for (int j = 0; j < cols && j < 4; ++j) m_Matrix[i][j] = m.m_Matrix[i][j];
  }
}

GmXformMat3D::GmXformMat3D(const TNT::Matrix<double>& m) : m_Matrix(m) {}

GmXformMat3D& GmXformMat3D::operator=(const GmXformMat3D& m) {
  m_Matrix = m.m_Matrix;
  return *this;
}

GmXformMat3D& GmXformMat3D::operator=(const TNT::Matrix<double>& m) {
  m_Matrix = m;
  return *this;
}

double GmXformMat3D::Elem(int row, int col) const noexcept {
  if (row < m_Matrix.num_rows() && col < m_Matrix.num_cols()) return m_Matrix[row][col];
  return row == col ? 1.0 : 0.0;
}

void GmXformMat3D::MakeFour() {
  if (m_Matrix.num_rows() == 4 && m_Matrix.num_cols() == 4) return;
  TNT::Matrix<double> four(4, 4, kIdentity);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) four[i][j] = Elem(i, j);
  }
  m_Matrix = four;
}

void GmXformMat3D::Eye() { m_Matrix = TNT::Matrix<double>(4, 4, kIdentity); }

bool GmXformMat3D::IsIdentity(double tol) const {
  for (int i = 0; i < m_Matrix.num_rows(); ++i) {
    for (int j = 0; j < m_Matrix.num_cols(); ++j) {
      if (!(std::fabs(m_Matrix[i][j] - (i == j ? 1.0 : 0.0)) < tol)) return false;
    }
  }
  return true;
}

bool GmXformMat3D::IsOrthogonal(double tol) const {
  const GmVector3D r0(Elem(0, 0), Elem(0, 1), Elem(0, 2));
  const GmVector3D r1(Elem(1, 0), Elem(1, 1), Elem(1, 2));
  const GmVector3D r2(Elem(2, 0), Elem(2, 1), Elem(2, 2));
  const GmVector3D c = GmVector3D::CrossProduct(r0, r1);
  return 1.0 - std::fabs(GmVector3D::DotProduct(r2, c)) < tol && std::fabs(GmVector3D::DotProduct(r0, r1)) < tol;
}

bool GmXformMat3D::IsSame(const GmXformMat3D& other, double posTol, double dirTol) const {
  const GmXformMat3D& a = *this;
  auto col = [](const GmXformMat3D& m, int c) { return GmVector3D(m.Elem(0, c), m.Elem(1, c), m.Elem(2, c)); };
  if (dirTol < 1.0 - GmVector3D::DotProduct(col(a, 0), col(other, 0))) return false;
  if (dirTol < 1.0 - GmVector3D::DotProduct(col(a, 2), col(other, 2))) return false;
  const GmVector3D delta = col(other, 3) - col(a, 3);
  return posTol >= GmVector3D(delta).Magnitude();
}

GmXformMat3D GmXformMat3D::QuickInvert() const {
  TNT::Matrix<double> rt(3, 3, 0.0);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) rt[i][j] = Elem(j, i);
  }
  TNT::Vector<double> t(3, 0.0);
  for (int i = 0; i < 3; ++i) t[i] = -Elem(i, 3);
  const TNT::Vector<double> tp = rt * t;
  GmXformMat3D result;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) result.m_Matrix[i][j] = rt[i][j];
    result.m_Matrix[i][3] = tp[i];
  }
  return result;
}

void GmXformMat3D::QuickInvertThis() { *this = QuickInvert(); }

GmXformMat3D GmXformMat3D::RotX(double a) {
  GmXformMat3D m;
  m.m_Matrix[1][1] = std::cos(a);
  m.m_Matrix[1][2] = -std::sin(a);
  m.m_Matrix[2][1] = std::sin(a);
  m.m_Matrix[2][2] = std::cos(a);
  return m;
}

GmXformMat3D GmXformMat3D::RotY(double a) {
  GmXformMat3D m;
  m.m_Matrix[0][0] = std::cos(a);
  m.m_Matrix[0][2] = std::sin(a);
  m.m_Matrix[2][0] = -std::sin(a);
  m.m_Matrix[2][2] = std::cos(a);
  return m;
}

GmXformMat3D GmXformMat3D::RotZ(double a) {
  GmXformMat3D m;
  m.m_Matrix[0][0] = std::cos(a);
  m.m_Matrix[0][1] = -std::sin(a);
  m.m_Matrix[1][0] = std::sin(a);
  m.m_Matrix[1][1] = std::cos(a);
  return m;
}

GmXformMat3D GmXformMat3D::Translate(double x, double y, double z) {
  GmXformMat3D m;
  m.m_Matrix[0][3] = x;
  m.m_Matrix[1][3] = y;
  m.m_Matrix[2][3] = z;
  return m;
}

void GmXformMat3D::RotXThis(double a) {
  MakeFour();
  m_Matrix = m_Matrix * RotX(a).m_Matrix;
}
void GmXformMat3D::RotYThis(double a) {
  MakeFour();
  m_Matrix = m_Matrix * RotY(a).m_Matrix;
}
void GmXformMat3D::RotZThis(double a) {
  MakeFour();
  m_Matrix = m_Matrix * RotZ(a).m_Matrix;
}
void GmXformMat3D::TranslateThis(double x, double y, double z) {
  MakeFour();
  m_Matrix = m_Matrix * Translate(x, y, z).m_Matrix;
}

GmVector3D GmXformMat3D::operator*(const GmVector3D& v) const {
  TNT::Vector<double> p(4, 0.0);
  p[0] = v[0];
  p[1] = v[1];
  p[2] = v[2];
  p[3] = 1.0;  // a position: the translation applies
  GmXformMat3D four(*this);
  four.MakeFour();
  const TNT::Vector<double> r = four.m_Matrix * p;
  return GmVector3D(r[0], r[1], r[2]);
}

std::vector<std::string> GmXformMat3D::TraceLines(const char* label, bool mcode) const {
  std::vector<std::string> lines;
  if (!label) return lines;
  lines.emplace_back(label);
  char buf[64];
  for (int i = 0; i < m_Matrix.num_rows(); ++i) {
    std::string line;
    for (int j = 0; j < m_Matrix.num_cols(); ++j) {
      std::snprintf(buf, sizeof buf, mcode ? "%14.10g " : "%7.3g,\t", m_Matrix[i][j]);
      line += buf;
    }
    lines.push_back(line);
  }
  return lines;
}

void GmXformMat3D::TraceDump(const char* label) const {
#ifndef NDEBUG
  for (const std::string& line : TraceLines(label, false)) Zolt::Diagnostics::Trace(line.c_str());
#else
  (void)label;
#endif
}

void GmXformMat3D::TraceDumpMCode(const char* label) const {
#ifndef NDEBUG
  for (const std::string& line : TraceLines(label, true)) Zolt::Diagnostics::Trace(line.c_str());
#else
  (void)label;
#endif
}

void GmXformMat3D::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (ar.IsStoring()) {
    const std::int32_t rows = m_Matrix.num_rows();
    const std::int32_t cols = m_Matrix.num_cols();
    ar << rows << cols;
    for (int i = 0; i < rows; ++i) {
      for (int j = 0; j < cols; ++j) ar << m_Matrix[i][j];
    }
    return;
  }
  Quarp::UtCheckVersion(version, 0, "GmXformMat3D");
  std::int32_t rows = 0;
  std::int32_t cols = 0;
  ar >> rows >> cols;
  if (rows != 4 || cols != 4) {
    throw Quarp::UtArchiveException(Quarp::UtArchiveException::generic,
                                    "a transform in the archive is " + std::to_string(rows) + " by " +
                                        std::to_string(cols) + "; only 4 by 4 can be loaded");
  }
  MakeFour();
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) ar >> m_Matrix[i][j];
  }
}

std::ostream& operator<<(std::ostream& s, const GmXformMat3D& m) {
  const TNT::Matrix<double>& a = m.GetTNTMatrix();
  s << a.num_rows() << " " << a.num_cols() << "\n";
  s.width(15);
  for (int i = 0; i < a.num_rows(); ++i) {
    for (int j = 0; j < a.num_cols(); ++j) s << a[i][j];
    s << "\n";
  }
  return s;
}

}  // namespace IOF
