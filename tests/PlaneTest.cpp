// Planes, plane references and tool-plane changes: texts, archive bytes, the old plane
// layout, the comparison chains, and the forwarding of a reference to its plane through
// its own manager, with the reports and fallbacks when the plane is missing.
#include "CompareOrderSupport.h"
#include "LayoutTable.h"

#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciPlaneReference.h>
#include <iof/DbIOFNciToolPlaneChange.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <string>
#include <vector>

using namespace IOF;
using namespace TestSupport;

namespace {

// A transform: version 0, 4 rows, 4 columns, then the elements row by row, each 0 or 1
// as the 16 characters of `ones` say.
std::string MatrixHex(const char* ones) {
  std::string s = "00 04 00 00 00 04 00 00 00 ";
  for (int i = 0; i < 16; ++i) s += ones[i] == '1' ? kOne : kZero;
  return s;
}
const std::string kIdentity = MatrixHex("1000010000100001");
// A move point: version 0, six values, six flags; here with at most C set to 1.
const std::string kNoAxis =
    "00 06 00 00 00 " + kZero + kZero + kZero + kZero + kZero + kZero + "06 00 00 00  00 00 00 00 00 00";
const std::string kC1 =
    "00 06 00 00 00 " + kZero + kZero + kZero + kZero + kZero + kOne + "06 00 00 00  00 00 00 00 00 01";

UtIofMovePoint WithC(double c) {
  UtIofMovePoint p;
  p.SetValByIndex(5, c);
  return p;
}

GmXformMat3D MatrixOf(const DbIOFNciPlaneBase& plane) {
  GmXformMat3D m;
  plane.GetMatrix(m);
  return m;
}

// --- DbIOFNciPlane ---------------------------------------------------------------------

// Plane, plane reference and tool-plane change: the plane's version 0 carried one more
// transform after the G68 matrix, read and dropped; its comment is never compared; the
// reference's and the tool-plane change's ids are archived raw, the former printing its
// low 32 bits. A record in no manager resolves no plane, so the tool-plane change
// compares equal.
TEST(PlaneRecords, Layouts) {
  const std::string base = kRecordBase + kFreshNciBase;
  ExpectLayout<DbIOFNciPlane>(
      {"01 00 00" + base,
       L"IOF NCI Plane Object - WorkOffsetNum = 54",
       {R(Le(54), Le(-1), L"m_WorkOffsetNum - -1 vs 54"), R(Le(2), Le(-1), L"m_PlaneId - -1 vs 2"),
        R(Str(u"AB"), I0, nullptr), Flag(L"m_IsG68Compatible - false vs true"),
        R(MatrixHex("1000010000110001"), kIdentity, L"m_Matrix - 4x4 vs 4x4"),
        R(kC1, kNoAxis, L"m_OriginMoveCoords - () vs ( C1.00000000000000,)"),
        R(kC1, kNoAxis, L"m_ModeOriginMoveCoords - () vs ( C1.00000000000000,)"),
        R(MatrixHex("1001010000100001"), kIdentity, L"m_G68MapMatrix - 4x4 vs 4x4"),
        Gone(MatrixHex("1111111111111111"), 1)},
       {1, 0, 4, 5, 6, 3, 7, 2, 8}});
  ExpectLayout<DbIOFNciPlaneReference>({"00 00 00" + base,
                                        L"IOF NCI Plane reference Object - RefPlaneId = 3",
                                        {R(Le(0x100000003ull), Le(~0ull), L"m_ReferencedPlaneId - -1 vs 3"),
                                         R(kC1, kNoAxis, L"m_ModeOriginMoveCoords - () vs ( C1.00000000000000,)")}});
  ExpectLayout<DbIOFNciToolPlaneChange>(
      {"00 00" + base, L"IOF Tool Plane Change Object - ref Plane -2", {R(Le(0xFFFFFFFEull), Le(0ull), nullptr)}});
  // A new plane: its texts, its matrix through the getter, its fields.
  auto plane = DbIOFNciPlane::Create();
  EXPECT_EQ(plane->ToIOFString(), L"IOF NCI Plane Object - WorkOffsetNum = -1");
  EXPECT_EQ(plane->DbIOFNciPlaneBase::ToIOFString(), L"IOF NCI Plane Base Object");
  GmXformMat3D out = GmXformMat3D::Translate(1, 2, 3);
  plane->GetMatrix(out);
  EXPECT_TRUE(out.IsIdentity(1e-15));
  ExpectFields(*plane,
               {kRecordBaseFields,
                kNciBaseFields,
                {"m_WorkOffsetNum=-1", "m_PlaneId=-1", "m_Comment=\"\"", "m_IsG68Compatible=false", "m_Matrix=identity",
                 "m_OriginMoveCoords=()", "m_ModeOriginMoveCoords=()", "m_G68MapMatrix=identity"}});
  EXPECT_EQ(DbIOFNciPlaneReference::Create()->ToIOFString(), L"IOF NCI Plane reference Object - RefPlaneId = -1");
  EXPECT_EQ(DbIOFNciToolPlaneChange::Create()->ToIOFString(), L"IOF Tool Plane Change Object - ref Plane 0");

  // The plane-base level's version is exchanged but deliberately not checked.
  plane->SetWorkOffsetNum(54);
  Bytes oddBase = Store(*plane);
  oddBase[1] = 7;
  auto loaded = DbIOFNciPlane::Create();
  ASSERT_TRUE(LoadAll(*loaded, oddBase));
  EXPECT_EQ(loaded->GetWorkOffsetNum(), 54);

  // Of the NCI base, the plane compares the name, G-code, owner and time first; the
  // reference none of it.
  using P = DbIOFNciPlane;
  ExpectReportOrder<P>({
      {[](P& p, bool on) { p.SetIOFName(on ? L"P" : L""); }, L"Difference Detected: m_Name -  vs P\n"},
      {[](P& p, bool on) { p.SetGCode(on ? 68 : 0); }, L"Difference Detected: m_GCode - 0 vs 68\n"},
      {[](P& p, bool on) { p.SetOperationId(on ? 3 : -1); }, L"Difference Detected: m_OwnerOpId - -1 vs 3\n"},
      {[](P& p, bool on) { p.SetTime(on ? 2.0 : 0); }, L"Difference Detected: m_Time - 0 vs 2\n"},
      {[](P& p, bool on) { p.SetPlaneId(on ? 7 : -1); }, L"Difference Detected: m_PlaneId - -1 vs 7\n"},
  });
  using Ref = DbIOFNciPlaneReference;
  ExpectReportOrder<Ref>({
      {[](Ref& r, bool) { r.SetGCode(68); }, nullptr},
      {[](Ref& r, bool) { r.SetTime(3.0); }, nullptr},
      {[](Ref& r, bool) { r.SetIOFName(L"R"); }, nullptr},
  });
}

TEST(DbIOFNciPlane, MatrixTolerances) {
  // Directions within 2e-7 (1 - cos of the angle), origins within the fixed 1e-7.
  struct Case {
    GmXformMat3D other;
    bool equal;
  };
  const Case cases[] = {{GmXformMat3D::RotZ(std::acos(1.0 - 1e-7)), true},
                        {GmXformMat3D::RotZ(std::acos(1.0 - 3e-7)), false},
                        {GmXformMat3D::Translate(5e-8, 0, 0), true},
                        {GmXformMat3D::Translate(2e-7, 0, 0), false},
                        {GmXformMat3D::RotY(0.5), false}};
  for (const Case& c : cases) {
    auto a = DbIOFNciPlane::Create();
    auto b = DbIOFNciPlane::Create();
    b->SetMatrix(c.other);
    CString report;
    EXPECT_EQ(a->Compare(b, report), c.equal) << report.ToUtf8();
    b->SetMatrix(GmXformMat3D());
    b->SetG68MapMatrix(c.other);
    EXPECT_EQ(a->Compare(b, report), c.equal) << report.ToUtf8();
  }
}

TEST(DbIOFNciPlane, PlaneBaseComparisonIsTheTypeTestOnly) {
  auto a = DbIOFNciPlane::Create();
  auto b = DbIOFNciPlane::Create();
  b->SetGCode(17);
  b->SetWorkOffsetNum(3);
  CString report;
  EXPECT_TRUE(a->DbIOFNciPlaneBase::Compare(b, report));
  EXPECT_TRUE(a->DbIOFNciPlaneBase::Compare(DbIOFNciPlaneReference::Create(), report));
  EXPECT_TRUE(report.IsEmpty());
  EXPECT_FALSE(a->DbIOFNciPlaneBase::Compare(DbIOFNciLinear::Create(), report));
  EXPECT_EQ(report, L"Incompatible types.\n");
}

// --- DbIOFNciPlaneReference ------------------------------------------------------------

// Sets every property a reference forwards to its plane to values made from `n`; for
// n > 0 no two sets agree in any property, and none holds a default.
void SetForwarded(DbIOFNciPlaneBase& p, int n) {
  p.SetComment(CString::Formatted(L"plane %d", n));
  p.SetMatrix(GmXformMat3D::RotX(0.25 * n));
  p.SetOriginMoveCoords(WithC(n));
  p.SetG68Compatible(n % 2 == 1);
  p.SetG68MapMatrix(GmXformMat3D::Translate(n, 2, 3));
  p.SetWorkOffsetNum(50 + n);
}

// What the forwarded getters answer, in the visitor's notation.
std::vector<std::string> Forwarded(const DbIOFNciPlaneBase& p) {
  RecordingVisitor v;
  v.OnString("comment", p.GetComment());
  v.OnMatrix("matrix", MatrixOf(p));
  v.OnMovePoint("origin", p.GetOriginMoveCoords());
  v.OnBool("g68", p.GetG68Compatible());
  v.OnMatrix("g68 matrix", p.GetG68MapMatrix());
  v.OnInt("work offset", p.GetWorkOffsetNum());
  return v.fields;
}

// A manager holding a plane (id 1) set with SetForwarded(1), and a reference to it (id 2).
struct ReferenceFixture {
  Quarp::DbMgr mgr;
  Quarp::DbPtr<DbIOFNciPlane> plane = DbIOFNciPlane::Create();
  Quarp::DbPtr<DbIOFNciPlaneReference> ref = DbIOFNciPlaneReference::Create();
  Quarp::DbId planeId;

  ReferenceFixture() {
    SetForwarded(*plane, 1);
    plane->SetModeOriginMoveCoords(WithC(5.0));
    planeId = mgr.Add(plane);
    ref->SetReferencedPlaneId(planeId);
    mgr.Add(ref);
  }
};

TEST(DbIOFNciPlaneReference, ForwardsToItsPlane) {
  ReferenceFixture f;
  TestSupport::AssertRecorder asserts;
  auto expected = DbIOFNciPlane::Create();
  SetForwarded(*expected, 1);
  EXPECT_EQ(Forwarded(*f.ref), Forwarded(*expected));
  SetForwarded(*f.ref, 2);
  SetForwarded(*expected, 2);
  EXPECT_EQ(Forwarded(*f.plane), Forwarded(*expected));
  // The modal coordinates are the reference's own.
  EXPECT_EQ(f.ref->GetModeOriginMoveCoords().ToString(), L"()");
  f.ref->SetModeOriginMoveCoords(WithC(9.0));
  EXPECT_EQ(f.plane->GetModeOriginMoveCoords().ToString(), L"( C5.00000000000000,)");
  EXPECT_EQ(f.ref->GetModeOriginMoveCoords().ToString(), L"( C9.00000000000000,)");
  EXPECT_TRUE(asserts.Calls().empty());
}

// Every getter, with the line it reports and a check of its fallback.
struct Getter {
  int line;
  const char* function;
  std::function<void(const DbIOFNciPlaneReference&)> callAndCheckFallback;
};

std::vector<Getter> Getters() {
  return {
      {38, "IOF::DbIOFNciPlaneReference::GetComment",
       [](const DbIOFNciPlaneReference& r) { EXPECT_TRUE(r.GetComment().IsEmpty()); }},
      {62, "IOF::DbIOFNciPlaneReference::GetMatrix",
       [](const DbIOFNciPlaneReference& r) {
         GmXformMat3D out = GmXformMat3D::Translate(7, 8, 9);
         r.GetMatrix(out);
         EXPECT_TRUE(out.IsSame(GmXformMat3D::Translate(7, 8, 9), 0.0, 0.0));  // left unchanged
       }},
      {94, "IOF::DbIOFNciPlaneReference::GetOriginMoveCoords",
       [](const DbIOFNciPlaneReference& r) { EXPECT_EQ(r.GetOriginMoveCoords().ToString(), L"()"); }},
      {118, "IOF::DbIOFNciPlaneReference::GetG68Compatible",
       [](const DbIOFNciPlaneReference& r) { EXPECT_FALSE(r.GetG68Compatible()); }},
      {132, "IOF::DbIOFNciPlaneReference::GetG68MapMatrix",
       [](const DbIOFNciPlaneReference& r) { EXPECT_TRUE(r.GetG68MapMatrix().IsIdentity(1e-15)); }},
      {166, "IOF::DbIOFNciPlaneReference::GetWorkOffsetNum",
       [](const DbIOFNciPlaneReference& r) { EXPECT_EQ(r.GetWorkOffsetNum(), -1); }},
  };
}

void ExpectEveryGetterReportsAndFallsBack(const DbIOFNciPlaneReference& ref, const char* scenario) {
  SCOPED_TRACE(scenario);
  for (const Getter& g : Getters()) {
    TestSupport::AssertRecorder asserts;
    g.callAndCheckFallback(ref);
    ASSERT_EQ(asserts.Places(),
              std::vector<std::string>{"DB/src/DbIOFNciPlaneReference:" + std::to_string(g.line) + " " + g.function});
    EXPECT_EQ(asserts.Calls()[0].message, g.function);
  }
}

TEST(DbIOFNciPlaneReference, MissingPlaneReportsFromGettersOnly) {
  {
    ReferenceFixture f;
    ASSERT_TRUE(f.mgr.Remove(f.planeId));
    ExpectEveryGetterReportsAndFallsBack(*f.ref, "plane removed");
    TestSupport::AssertRecorder asserts;
    SetForwarded(*f.ref, 3);
    EXPECT_TRUE(asserts.Calls().empty());
    EXPECT_EQ(f.ref->GetReferencedPlaneId(), f.planeId);  // the reference keeps the dangling id
  }
  {
    // The plane exists, but the reference is in no manager: it resolves nothing, and the
    // setters leave the plane alone.
    ReferenceFixture f;
    auto loose = DbIOFNciPlaneReference::Create();
    loose->SetReferencedPlaneId(f.planeId);
    ExpectEveryGetterReportsAndFallsBack(*loose, "reference in no manager");
    const auto before = Forwarded(*f.plane);
    TestSupport::AssertRecorder asserts;
    SetForwarded(*loose, 3);
    EXPECT_TRUE(asserts.Calls().empty());
    EXPECT_EQ(Forwarded(*f.plane), before);
  }
  {
    // The id names a record that is not a plane, or a fresh reference's all-bits id.
    ReferenceFixture f;
    auto line = DbIOFNciLinear::Create();
    f.ref->SetReferencedPlaneId(f.mgr.Add(line));
    ExpectEveryGetterReportsAndFallsBack(*f.ref, "id of a linear move");
    f.ref->SetReferencedPlaneId(Quarp::DbId(~std::uint64_t{0}));
    ExpectEveryGetterReportsAndFallsBack(*f.ref, "default id");
  }
}

// A loaded reference resolves in the manager it was loaded into, where its plane has
// the same id as in the first.
TEST(DbIOFNciPlaneReference, ResolvesThroughItsOwnManager) {
  ReferenceFixture first;
  Bytes file;
  ASSERT_EQ(first.mgr.WriteToMemory(file), Quarp::DbErr::Ok);
  Quarp::DbMgr second;
  ASSERT_EQ(second.ReadFromMemory(file), Quarp::DbErr::Ok) << second.GetLastErrorText();
  Quarp::DbPtr<DbIOFNciPlaneReference> ref;
  Quarp::DbPtr<DbIOFNciPlane> other;
  ASSERT_TRUE(second.Get(ref, first.ref->GetId(), 0) && second.Get(other, first.planeId, 0));
  TestSupport::AssertRecorder asserts;
  EXPECT_EQ(Forwarded(*ref), Forwarded(*first.plane));
  other->SetWorkOffsetNum(99);
  EXPECT_EQ(ref->GetWorkOffsetNum(), 99);
  ref->SetWorkOffsetNum(100);
  EXPECT_EQ(other->GetWorkOffsetNum(), 100);
  EXPECT_EQ(first.plane->GetWorkOffsetNum(), 51);
  EXPECT_TRUE(asserts.Calls().empty());
}

// --- DbIOFNciToolPlaneChange -----------------------------------------------------------

// A manager with one plane (id 1) of the given matrix and a tool-plane change naming it.
struct PlaneChangeFixture {
  Quarp::DbMgr mgr;
  Quarp::DbPtr<DbIOFNciToolPlaneChange> change = DbIOFNciToolPlaneChange::Create();

  explicit PlaneChangeFixture(const GmXformMat3D& matrix) {
    auto plane = DbIOFNciPlane::Create();
    plane->SetMatrix(matrix);
    change->SetPlaneDbId(mgr.Add(plane));
    mgr.Add(change);
  }
};

TEST(DbIOFNciToolPlaneChange, ComparesThePlaneMatricesWhenBothResolve) {
  PlaneChangeFixture flat{GmXformMat3D()};
  PlaneChangeFixture turned(GmXformMat3D::RotX(0.5));
  PlaneChangeFixture nearlyFlat(GmXformMat3D::RotX(std::acos(1.0 - 1e-7)));
  CString report;
  EXPECT_FALSE(flat.change->Compare(turned.change, report));
  EXPECT_EQ(report, L"Difference Detected: ToolPlaneMatrix - 4x4 vs 4x4\n");
  report.Empty();
  EXPECT_TRUE(flat.change->Compare(nearlyFlat.change, report)) << report;

  // Either plane unresolved: the base comparison alone decides.
  auto loose = DbIOFNciToolPlaneChange::Create();
  loose->SetPlaneDbId(Quarp::DbId(1));  // an id of a plane, but the record is in no manager
  EXPECT_TRUE(turned.change->Compare(loose, report));
  EXPECT_TRUE(loose->Compare(turned.change, report));
  turned.change->SetPlaneDbId(Quarp::DbId(42));
  EXPECT_TRUE(flat.change->Compare(turned.change, report));
  EXPECT_TRUE(report.IsEmpty());

  // The NCI base comparison runs first.
  turned.change->SetPlaneDbId(Quarp::DbId(1));
  turned.change->SetGCode(3);
  EXPECT_FALSE(flat.change->Compare(turned.change, report));
  EXPECT_EQ(report, L"Difference Detected: m_GCode - 0 vs 3\n");
}

}  // namespace
