// Points, vectors and 4x4 transforms: arithmetic against hand-computed values, the
// text form, the archive form and the assertion calls.
#include "TestSupport.h"

#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sstream>

using IOF::GmPoint3D;
using IOF::GmVector3D;
using IOF::GmXformMat3D;
using TestSupport::Hex;
using TestSupport::ToHex;

namespace {

void ExpectVector(const GmVector3D& v, double x, double y, double z, double tol = 1e-12) {
  EXPECT_NEAR(v[0], x, tol);
  EXPECT_NEAR(v[1], y, tol);
  EXPECT_NEAR(v[2], z, tol);
}

void ExpectMatrixNear(const GmXformMat3D& a, const GmXformMat3D& b, double tol) {
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) EXPECT_NEAR(a(i, j), b(i, j), tol) << "[" << i << "][" << j << "]";
  }
}

TEST(GmPoint3D, ArithmeticAndDistance) {
  const GmPoint3D a(1, 2, 3);
  const GmPoint3D b(4, 6, 3);
  EXPECT_EQ(a + b, GmPoint3D(5, 8, 6));
  EXPECT_EQ(b - a, GmPoint3D(3, 4, 0));
  EXPECT_DOUBLE_EQ(a.Distance(b), 5.0);
  EXPECT_EQ(GmPoint3D(Zolt::Math::Vector::VecBase<3, double>(7.0, 8.0, 9.0)), GmPoint3D(7, 8, 9));
  EXPECT_EQ(GmPoint3D(), GmPoint3D(0, 0, 0));
}

TEST(GmPoint3D, IndexOutOfRangeIsReportedAndGivesZ) {
  TestSupport::AssertRecorder recorder;
  GmPoint3D p(1, 2, 3);
  EXPECT_EQ(p[0], 1);
  EXPECT_EQ(p[1], 2);
  EXPECT_EQ(p[2], 3);
  EXPECT_TRUE(recorder.Calls().empty());
  EXPECT_EQ(p[3], 3);
  EXPECT_EQ(p[-1], 3);
  p[7] = 9;
  EXPECT_EQ(p.z, 9);
  ASSERT_EQ(recorder.Calls().size(), 3u);
  for (const auto& call : recorder.Calls()) {
    EXPECT_EQ(call.file, "DB/src/GmPoint3D");
    EXPECT_EQ(call.line, 39);
    EXPECT_EQ(call.function, "IOF::GmPoint3D::operator []");
    EXPECT_EQ(call.message, "");
  }
}

// The bytes of points and vectors are pinned by the record layout tables; here the
// version error, which leaves the point as it was.
TEST(GmPoint3D, ArchiveForm) {
  GmPoint3D untouched(5, 5, 5);
  std::size_t stopped = 0;
  EXPECT_EQ(TestSupport::LoadCause(untouched, Hex("01 00 00 00 00 00 00 F0 3F"), &stopped), 2);
  EXPECT_EQ(untouched, GmPoint3D(5, 5, 5));
  EXPECT_EQ(stopped, 1u);
}

TEST(GmVector3D, ProductsMagnitudeAndNormalize) {
  ExpectVector(GmVector3D::CrossProduct(GmVector3D(1, 0, 0), GmVector3D(0, 1, 0)), 0, 0, 1);
  ExpectVector(GmVector3D::CrossProduct(GmVector3D(1, 2, 3), GmVector3D(4, 5, 6)), -3, 6, -3);
  EXPECT_DOUBLE_EQ(GmVector3D::DotProduct(GmVector3D(1, 2, 3), GmVector3D(4, 5, 6)), 32.0);
  EXPECT_DOUBLE_EQ(GmVector3D(2, 3, 6).Magnitude(), 7.0);
  GmVector3D v(0, 3, 4);
  v.Normalize();
  ExpectVector(v, 0, 0.6, 0.8);
  GmVector3D zero;
  zero.Normalize();  // deliberately unguarded
  EXPECT_TRUE(std::isnan(zero[0]) && std::isnan(zero[1]) && std::isnan(zero[2]));
  ExpectVector(GmVector3D(GmPoint3D(1, 2, 3)), 1, 2, 3);
  ExpectVector(GmVector3D(Zolt::Math::Vector::VecBase<3, double>(4.0, 5.0, 6.0)), 4, 5, 6);
  const GmVector3D sum = GmVector3D(1, 1, 1) + GmVector3D(1, 2, 3);  // the toolkit's arithmetic
  ExpectVector(sum, 2, 3, 4);
}

TEST(GmXformMat3D, IdentityAndItsTextForm) {
  const GmXformMat3D m;
  std::ostringstream text;
  text << m;
  // The field width of 15 applies once, to the first element; no separators follow.
  EXPECT_EQ(text.str(), "4 4\n              1000\n0100\n0010\n0001\n");
  EXPECT_TRUE(m.IsIdentity(1e-12));
  EXPECT_FALSE(m.IsIdentity(0.0));  // strict test
  GmXformMat3D t = GmXformMat3D::Translate(0, 0, 1e-9);
  EXPECT_FALSE(t.IsIdentity(1e-9));
  EXPECT_TRUE(t.IsIdentity(2e-9));
  t.Eye();
  EXPECT_TRUE(t.IsIdentity(1e-15));
}

TEST(GmXformMat3D, QuickInvert) {
  ExpectMatrixNear(GmXformMat3D::Translate(1, 2, 3).QuickInvert(), GmXformMat3D::Translate(-1, -2, -3), 0.0);
  const double a = 0.7;
  ExpectMatrixNear(GmXformMat3D::RotZ(a).QuickInvert(), GmXformMat3D::RotZ(-a), 1e-15);
  // A general rigid transform times its inverse is the identity.
  GmXformMat3D m = GmXformMat3D::Translate(5, -3, 2);
  m.RotXThis(0.3);
  m.RotYThis(-1.1);
  GmXformMat3D inv = m;
  inv.QuickInvertThis();
  const GmVector3D p(1.5, 2.5, -0.5);
  ExpectVector(inv * (m * p), 1.5, 2.5, -0.5, 1e-12);
}

TEST(GmXformMat3D, RotationsAndPostMultiplication) {
  const double q = std::numbers::pi / 2;
  ExpectVector(GmXformMat3D::RotZ(q) * GmVector3D(1, 0, 0), 0, 1, 0);
  ExpectVector(GmXformMat3D::RotX(q) * GmVector3D(0, 1, 0), 0, 0, 1);
  ExpectVector(GmXformMat3D::RotY(q) * GmVector3D(0, 0, 1), 1, 0, 0);
  // M <- M * RotZ: the rotation acts in the matrix's own frame, before the translation.
  GmXformMat3D m = GmXformMat3D::Translate(1, 0, 0);
  m.RotZThis(q);
  ExpectVector(m * GmVector3D(1, 0, 0), 1, 1, 0);
  m.TranslateThis(0, 2, 0);  // along the rotated Y axis, which is -X
  ExpectVector(m * GmVector3D(0, 0, 0), -1, 0, 0);
  // The fourth component is 1: the translation applies to the vector.
  ExpectVector(GmXformMat3D::Translate(1, 0, 0) * GmVector3D(0, 0, 0), 1, 0, 0);
}

TEST(GmXformMat3D, IsOrthogonal) {
  GmXformMat3D m = GmXformMat3D::RotX(0.4);
  m.RotZThis(1.3);
  EXPECT_TRUE(m.IsOrthogonal(1e-12));
  GmXformMat3D skew;
  skew(0, 1) = 0.1;
  EXPECT_FALSE(skew.IsOrthogonal(1e-3));
  GmXformMat3D mirrored;
  mirrored(2, 2) = -1;  // |r2 . (r0 x r1)| is still 1
  EXPECT_TRUE(mirrored.IsOrthogonal(1e-12));
}

TEST(GmXformMat3D, IsSameIgnoresTheYAxis) {
  const GmXformMat3D a = GmXformMat3D::Translate(1, 2, 3);
  GmXformMat3D b = a;
  b(0, 1) = 0.5;  // only the Y column changes, its direction too
  b(1, 1) = 0.2;
  b(2, 1) = -7;
  EXPECT_TRUE(a.IsSame(b, 1e-7, 1e-7));
  GmXformMat3D c = a;
  c(2, 3) = 3.5;
  EXPECT_FALSE(a.IsSame(c, 0.4999, 1e-7));
  EXPECT_TRUE(a.IsSame(c, 0.5, 1e-7));  // the position test is "not above"
  const double tilt = 0.01;
  const GmXformMat3D r = GmXformMat3D::RotY(tilt);  // X and Z both turn by 0.01 rad
  EXPECT_FALSE(GmXformMat3D().IsSame(r, 1e-7, 1e-6));
  EXPECT_TRUE(GmXformMat3D().IsSame(r, 1e-7, 1.0 - std::cos(tilt) + 1e-12));
}

TEST(GmXformMat3D, CopyOfANonFourByFourIsReported) {
  TestSupport::AssertRecorder recorder;
  const GmXformMat3D small(TNT::Matrix<double>(3, 2, 2.0));  // taken as it is
  EXPECT_EQ(small.GetNumRows(), 3);
  EXPECT_TRUE(recorder.Calls().empty());
  const GmXformMat3D copy(small);
  EXPECT_EQ(recorder.Places(), (std::vector<std::string>{"DB/src/GmXformMat3D:61 IOF::GmXformMat3D::GmXformMat3D",
                                                         "DB/src/GmXformMat3D:62 IOF::GmXformMat3D::GmXformMat3D"}));
  EXPECT_EQ(copy.GetNumRows(), 4);
  EXPECT_EQ(copy(2, 1), 2.0);
  EXPECT_EQ(copy(3, 3), 1.0);
  // A transform of another size still answers without reading outside its storage.
  EXPECT_FALSE(small.IsIdentity(0.5));
  ExpectVector(small * GmVector3D(0, 0, 0), 0, 0, 0);
}

TEST(GmXformMat3D, TraceLines) {
  const GmXformMat3D m = GmXformMat3D::Translate(2, 0, 0);
  EXPECT_TRUE(m.TraceLines(nullptr, false).empty());
  const auto lines = m.TraceLines("plane", false);
  ASSERT_EQ(lines.size(), 5u);
  EXPECT_EQ(lines[0], "plane");
  EXPECT_EQ(lines[1], "      1,\t      0,\t      0,\t      2,\t");
  const auto mcode = m.TraceLines("m", true);
  EXPECT_EQ(mcode[4], "             0              0              0              1 ");
}

// The bytes of a transform are pinned by the plane's layout table; one of another size
// is refused.
TEST(GmXformMat3D, ArchiveForm) {
  GmXformMat3D back = GmXformMat3D::RotX(1);
  auto threeByThree = Hex("00 03 00 00 00 03 00 00 00");
  threeByThree.resize(threeByThree.size() + 72, 0);
  EXPECT_EQ(TestSupport::LoadCause(back, threeByThree), Quarp::UtArchiveException::generic);
}

}  // namespace
