// GmPoint3D: a position, three doubles x, y, z. A plain value: copied into and out of
// records, archived by its own Serialize.
#pragma once

#include <quarp/UtArchive.h>
#include <zolt/VecBase.h>

namespace IOF {

class GmPoint3D {
 public:
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  GmPoint3D() noexcept = default;
  GmPoint3D(double px, double py, double pz) noexcept : x(px), y(py), z(pz) {}
  GmPoint3D(const Zolt::Math::Vector::VecBase<3, double>& v) noexcept : x(v[0]), y(v[1]), z(v[2]) {}  // NOLINT

  // 0 is x, 1 is y, anything else z. An index outside 0..2 is reported through the
  // assertion handler first; z is then returned.
  double& operator[](int i);
  const double& operator[](int i) const;

  GmPoint3D operator-(const GmPoint3D& b) const noexcept { return {x - b.x, y - b.y, z - b.z}; }
  GmPoint3D operator+(const GmPoint3D& b) const noexcept { return {x + b.x, y + b.y, z + b.z}; }
  // Exact, component by component (record comparisons use a tolerance instead).
  bool operator==(const GmPoint3D& b) const noexcept = default;

  // Euclidean distance.
  double Distance(const GmPoint3D& b) const;

  // Version (0), then x, y, z as 8-byte doubles.
  void Serialize(Quarp::UtArchive& ar);
};

}  // namespace IOF
