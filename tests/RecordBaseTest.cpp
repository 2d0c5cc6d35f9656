// The record base: property comparisons and their exact lines, texts, sub-lists and
// cloning (its archive, field list and copies are in DbIOFListTest).
#include "RecordingVisitor.h"
#include "TestSupport.h"

#include <iof/DbIOFBase.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFTypeMgr.h>

#include <gtest/gtest.h>

#include <functional>

using namespace IOF;
using Quarp::DbId;

namespace {

// Exposes the protected comparisons.
struct Probe : DbIOFBase {
  using DbIOFBase::CompareProperty;
};

struct CompareCase {
  const char* what;
  std::function<bool(CString&)> compare;
  const wchar_t* line;  // appended when not equal; empty when equal
};

// A case comparing `a` with `b` under the name "m_P", with a tolerance where one is given.
template <class T, class... Tolerance>
CompareCase Case(const char* what, T a, T b, const wchar_t* line, Tolerance... tolerance) {
  return {what, [=](CString& r) { return Probe::CompareProperty(a, b, CString(L"m_P"), r, tolerance...); }, line};
}

TEST(CompareProperty, LinesAndTolerances) {
  UtAxisMotionMap mapA, mapB;
  mapA.AddMotion(X, Coordinate, 1.0);
  mapB.AddMotion(X, Coordinate, 2.0);
  UtIofMovePoint ptA, ptB;
  ptA.SetValByIndex(5, 1.0);
  ptB.SetValByIndex(0, 1.0);
  const std::vector<CompareCase> cases = {
      Case("int equal", 3, 3, L""),
      Case("int", 1, 2, L"Difference Detected: m_P - 1 vs 2\n"),
      Case("long", -1L, 2L, L"Difference Detected: m_P - -1 vs 2\n"),
      Case("64-bit prints the low 32 bits", 0x100000005LL, 5LL, L"Difference Detected: m_P - 5 vs 5\n"),
      Case("id prints the low 32 bits, signed", DbId(0x1FFFFFFFFull), DbId(1), L"Difference Detected: m_P - -1 vs 1\n"),
      Case("bool", true, false, L"Difference Detected: m_P - true vs false\n"),
      Case("string is case-sensitive", CString(L"abc"), CString(L"ABC"), L"Difference Detected: m_P - abc vs ABC\n"),
      Case("double within tolerance", 1.0, 1.0000005, L"", 1e-6),
      // 1.000001 - 1.0 is 9.99999999918e-7 in doubles, below the tolerance: equal.
      Case("double just inside", 1.0, 1.000001, L"", 1e-6),
      Case("double outside", 1.0, 1.0000011, L"Difference Detected: m_P - 1 vs 1.0000011\n", 1e-6),
      Case("difference equal to the tolerance is reported", 0.5, 0.75, L"Difference Detected: m_P - 0.5 vs 0.75\n",
           0.25),
      Case("tolerance 0 reports equal reals", 2.0, 2.0, L"Difference Detected: m_P - 2 vs 2\n", 0.0),
      Case("point", GmPoint3D(1, 2, 3), GmPoint3D(1, 2, 3.5), L"Difference Detected: m_P - (1, 2, 3) vs (1, 2, 3.5)\n",
           1e-6),
      Case("point within tolerance", GmPoint3D(1, 2, 3), GmPoint3D(1 + 5e-7, 2, 3), L"", 1e-6),
      Case("point distance, not per component", GmPoint3D(0, 0, 0), GmPoint3D(6e-7, 6e-7, 6e-7),
           L"Difference Detected: m_P - (0, 0, 0) vs (6e-07, 6e-07, 6e-07)\n", 1e-6),
      Case("vector", GmVector3D(0, 0, 1), GmVector3D(0, 1, 0), L"Difference Detected: m_P - (0, 0, 1) vs (0, 1, 0)\n",
           1e-6),
      Case("matrix", GmXformMat3D(), GmXformMat3D::Translate(0, 0, 1), L"Difference Detected: m_P - 4x4 vs 4x4\n",
           1e-6),
      Case("matrix same", GmXformMat3D(), GmXformMat3D(), L"", 0.0),
      Case("axis motion map", mapA, mapB,
           L"Difference Detected: m_P - UtAxisMotionMap(1): [X] (Coordinate, 1),  vs UtAxisMotionMap(1): [X] "
           L"(Coordinate, 2), \n"),
      Case("move point", ptA, ptB, L"Difference Detected: m_P - ( C1.00000000000000,) vs ( X1.00000000000000,)\n"),
  };
  for (const CompareCase& c : cases) {
    CString report(L"before\n");
    EXPECT_EQ(c.compare(report), *c.line == 0) << c.what;
    EXPECT_EQ(report, CString(L"before\n") + c.line) << c.what << ": " << report;  // appending never clears
  }
}

TEST(DbIOFBase, ComparesTheNameOnlyAndStopsAtTheFirstDifference) {
  auto a = DbIOFList::Create(DbIOFList::kOperation);
  auto b = DbIOFList::Create(DbIOFList::kOperation);
  a->GetAttributes().AddAttribute(CString(L"Only"), 1);
  a->PushBack(DbId(1));
  a->SetIOFName(CString(L"Same"));
  b->SetIOFName(CString(L"Same"));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // attributes and list items are not compared
  EXPECT_TRUE(report.IsEmpty());

  b->SetIOFName(CString(L"Other"));
  b->SetListType(DbIOFList::kStream);
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_Name - Same vs Other\n");  // one line, for the field compared first
  b->SetIOFName(CString(L"Same"));
  report.Empty();
  EXPECT_FALSE(a->Compare(b, report));
  EXPECT_EQ(report, L"Difference Detected: m_ListType - 2 vs 1\n");
}

TEST(DbIOFBase, TextsAndTrimClassName) {
  EXPECT_EQ(DbIOFList::Create(0)->ToIOFString(), L"IOF List Object - ");
  EXPECT_EQ(DbIOFList::Create(0)->DbIOFBase::ToIOFString(), L"DbIOFBase Base");
  EXPECT_EQ(TrimClassName("IOF::DbIOFBase::GetClass"), L"DbIOFBase");
  EXPECT_EQ(TrimClassName("IOF::DbIOFNciLinear::GetClass"), L"DbIOFNciLinear");
  EXPECT_EQ(TrimClassName("GetClass"), L"GetClass");
  EXPECT_EQ(TrimClassName("Outer::Inner::Klass::GetClass"), L"Klass");
}

TEST(DbIOFBase, SubLists) {
  Quarp::DbMgr mgr;
  auto owner = DbIOFList::Create(DbIOFList::kOperation);
  auto motion = DbIOFList::Create(DbIOFList::kMotionSubList);
  auto retract = DbIOFList::Create(DbIOFList::kRetractBlock);
  EXPECT_FALSE(owner->AddSubList(DbId(1)));  // in no manager
  mgr.Add(owner);
  const DbId motionId = mgr.Add(motion);
  const DbId retractId = mgr.Add(retract);
  EXPECT_FALSE(owner->HasSubLists());
  EXPECT_FALSE(owner->AddSubList(DbId(99)));  // unknown id
  EXPECT_TRUE(owner->AddSubList(motionId));
  EXPECT_TRUE(owner->AddSubList(retractId));
  EXPECT_TRUE(owner->HasSubLists());
  EXPECT_EQ(owner->GetSubLists().GetSize(), 2);
  EXPECT_EQ(owner->GetSubList(DbIOFList::kRetractBlock), retractId);
  EXPECT_EQ(owner->GetSubList(DbIOFList::kRetractBlock | DbIOFList::kMotionSubList), motionId);  // first in order
  EXPECT_TRUE(owner->GetSubList(DbIOFList::kStream).IsNull());
  mgr.Remove(motionId);  // unresolvable ids are skipped
  EXPECT_EQ(owner->GetSubList(DbIOFList::kRetractBlock | DbIOFList::kMotionSubList), retractId);
}

TEST(DbIOFBase, CloneCopiesNameAndSubListsButNotAttributes) {
  Quarp::DbMgr mgr, target;
  auto source = DbIOFList::Create(DbIOFList::kOperation);
  auto sub = DbIOFList::Create(DbIOFList::kMotionSubList);
  mgr.Add(source);
  const DbId subId = mgr.Add(sub);
  source->SetIOFName(CString(L"Roughing"));
  source->AddSubList(subId);
  source->GetAttributes().AddAttribute(CString(L"Tag"), 1);
  source->PushBack(subId);

  Quarp::UtIdXRef xref;
  Quarp::DbErr err = Quarp::DbErr::NotFound;
  Quarp::DbBase* made = source->Clone(Quarp::DbCloneMode::Normal, &target, &xref, err);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(err, Quarp::DbErr::Ok);
  EXPECT_EQ(made->GetDbMgr(), &target);
  auto* clone = dynamic_cast<DbIOFList*>(made);
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(clone->GetIOFName(), L"Roughing");
  EXPECT_EQ(clone->GetSubLists().GetSize(), 1);
  EXPECT_EQ(clone->GetSubLists()[0], subId);  // ids are not translated
  EXPECT_TRUE(clone->GetAttributes().IsEmpty());
  EXPECT_EQ(clone->GetListType(), DbIOFList::kOperation);
  ASSERT_EQ(clone->Size(), 1);
  EXPECT_NE(clone->GetHead(), source->GetHead());  // independent items
  EXPECT_EQ(clone->GetHead()->GetList(), clone);
  EXPECT_EQ(xref.Find(source->GetId()), clone->GetId());
  TestSupport::ExpectRoundTrips(*source);  // the attributes through the memory archive only

  err = Quarp::DbErr::Ok;
  EXPECT_EQ(source->Clone(Quarp::DbCloneMode::Normal, nullptr, nullptr, err), nullptr);
  EXPECT_EQ(err, Quarp::DbErr::AttachFailed);
  EXPECT_EQ(static_cast<int>(err), 16);
}

}  // namespace
