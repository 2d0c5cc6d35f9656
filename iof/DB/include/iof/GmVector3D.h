// GmVector3D: a direction or an offset, a TNT::Vector<double> of length 3 (x, y, z).
#pragma once

#include <iof/GmPoint3D.h>
#include <quarp/UtArchive.h>
#include <zolt/VecBase.h>

#include <tnt/tnt_vec.h>

namespace IOF {

class GmVector3D : public TNT::Vector<double> {
 public:
  GmVector3D();
  GmVector3D(double x, double y, double z);
  GmVector3D(const GmPoint3D& p);  // NOLINT: implicit, so a point converts where a vector is taken
  GmVector3D(const GmVector3D& v);
  GmVector3D(const TNT::Vector<double>& v);                     // NOLINT: implicit, so toolkit results convert
  GmVector3D(const Zolt::Math::Vector::VecBase<3, double>& v);  // NOLINT
  GmVector3D& operator=(const GmVector3D& v);

  // a x b
  static GmVector3D CrossProduct(const GmVector3D& a, const GmVector3D& b);
  // The sum of a[i] * b[i] over a's length (0.0 for an empty vector).
  static double DotProduct(const GmVector3D& a, const GmVector3D& b);

  double Magnitude() const;
  // Divides every element by the magnitude. No guard: a zero vector becomes NaN.
  void Normalize();

  // Version (0), then the three elements as 8-byte doubles.
  void Serialize(Quarp::UtArchive& ar);
};

}  // namespace IOF
