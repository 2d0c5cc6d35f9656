#include <iof/GmPoint3D.h>

#include <quarp/UtSerialize.h>
#include <zolt/Diagnostics.h>

#include <cmath>

namespace IOF {

namespace {
void ReportBadIndex() {
  Zolt::Diagnostics::Details::InvokeCurrentAssertHandler("DB/src/GmPoint3D", 39, "IOF::GmPoint3D::operator []", "");
}
}  // namespace

double& GmPoint3D::operator[](int i) {
  if (static_cast<unsigned>(i) > 2) ReportBadIndex();
  return i == 0 ? x : i == 1 ? y : z;
}

const double& GmPoint3D::operator[](int i) const {
  if (static_cast<unsigned>(i) > 2) ReportBadIndex();
  return i == 0 ? x : i == 1 ? y : z;
}

double GmPoint3D::Distance(const GmPoint3D& b) const {
  return std::sqrt(std::pow(y - b.y, 2.0) + std::pow(x - b.x, 2.0) + std::pow(z - b.z, 2.0));
}

void GmPoint3D::Serialize(Quarp::UtArchive& ar) {
  const unsigned version = Quarp::UtSerializeVersion(ar, 0);
  if (ar.IsStoring()) {
    ar << x << y << z;
    return;
  }
  Quarp::UtCheckVersion(version, 0, "GmPoint3D");
  ar >> x >> y >> z;
}

}  // namespace IOF
