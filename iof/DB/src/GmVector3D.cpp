#include <iof/GmVector3D.h>

#include <quarp/UtSerialize.h>

#include <cmath>

namespace IOF {

GmVector3D::GmVector3D() : TNT::Vector<double>(3, 0.0) {}

GmVector3D::GmVector3D(double x, double y, double z) : TNT::Vector<double>(3, 0.0) {
  (*this)[0] = x;
  (*this)[1] = y;
  (*this)[2] = z;
}

GmVector3D::GmVector3D(const GmPoint3D& p) : GmVector3D(p.x, p.y, p.z) {}

GmVector3D::GmVector3D(const GmVector3D& v) : TNT::Vector<double>(3, 0.0) { TNT::Vector<double>::operator=(v); }

GmVector3D::GmVector3D(const TNT::Vector<double>& v) : TNT::Vector<double>(3, 0.0) {
  TNT::Vector<double>::operator=(v);
}

GmVector3D::GmVector3D(const Zolt::Math::Vector::VecBase<3, double>& v) : GmVector3D(v[0], v[1], v[2]) {}

GmVector3D& GmVector3D::operator=(const GmVector3D& v) {
  TNT::Vector<double>::operator=(v);
  return *this;
}

GmVector3D GmVector3D::CrossProduct(const GmVector3D& a, const GmVector3D& b) {
  return GmVector3D(a[1] * b[2] - a[2] * b[1], a[2] * b[0] - b[2] * a[0], b[1] * a[0] - b[0] * a[1]);
}

double GmVector3D::DotProduct(const GmVector3D& a, const GmVector3D& b) {
  double sum = 0.0;
  const int n = a.dim() < b.dim() ? a.dim() : b.dim();
  for (int i = 0; i < n; ++i) sum += a[i] * b[i];
  return sum;
}

double GmVector3D::Magnitude() const {
  double sum = 0.0;
  for (int i = 0; i < dim(); ++i) sum += std::pow((*this)[i], 2.0);
  return std::sqrt(sum);
}

void GmVector3D::Normalize() {
  const double m = Magnitude();
  for (int i = 0; i < dim(); ++i) (*this)[i] /= m;
}

void GmVector3D::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (dim() != 3) newsize(3);
  if (ar.IsStoring()) {
    ar << (*this)[0] << (*this)[1] << (*this)[2];
    return;
  }
  Quarp::UtCheckVersion(version, 0, "GmVector3D");
  ar >> (*this)[0] >> (*this)[1] >> (*this)[2];
}

}  // namespace IOF
