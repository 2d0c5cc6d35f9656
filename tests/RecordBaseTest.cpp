// The record base: property comparisons and their exact lines, type answers, sub-lists,
// copying and cloning.
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
  bool equal;
  const wchar_t* line;  // appended when not equal
};

TEST(CompareProperty, LinesAndTolerances) {
  UtAxisMotionMap mapA, mapB;
  mapA.AddMotion(X, Coordinate, 1.0);
  mapB.AddMotion(X, Coordinate, 2.0);
  UtIofMovePoint ptA, ptB;
  ptA.SetValByIndex(5, 1.0);
  ptB.SetValByIndex(0, 1.0);
  const CString name(L"m_P");
  const std::vector<CompareCase> cases = {
      {"int equal", [&](CString& r) { return Probe::CompareProperty(3, 3, name, r); }, true, L""},
      {"int", [&](CString& r) { return Probe::CompareProperty(1, 2, name, r); }, false,
       L"Difference Detected: m_P - 1 vs 2\n"},
      {"long", [&](CString& r) { return Probe::CompareProperty(-1L, 2L, name, r); }, false,
       L"Difference Detected: m_P - -1 vs 2\n"},
      {"64-bit prints the low 32 bits", [&](CString& r) { return Probe::CompareProperty(0x100000005LL, 5LL, name, r); },
       false, L"Difference Detected: m_P - 5 vs 5\n"},
      {"id prints the low 32 bits, signed",
       [&](CString& r) { return Probe::CompareProperty(DbId(0x1FFFFFFFFull), DbId(1), name, r); }, false,
       L"Difference Detected: m_P - -1 vs 1\n"},
      {"bool", [&](CString& r) { return Probe::CompareProperty(true, false, name, r); }, false,
       L"Difference Detected: m_P - true vs false\n"},
      {"string is case-sensitive",
       [&](CString& r) { return Probe::CompareProperty(CString(L"abc"), CString(L"ABC"), name, r); }, false,
       L"Difference Detected: m_P - abc vs ABC\n"},
      {"double within tolerance", [&](CString& r) { return Probe::CompareProperty(1.0, 1.0000005, name, r, 1e-6); },
       true, L""},
      // 1.000001 - 1.0 is 9.99999999918e-7 in doubles, below the tolerance: equal.
      {"double just inside", [&](CString& r) { return Probe::CompareProperty(1.0, 1.000001, name, r, 1e-6); }, true,
       L""},
      {"double outside", [&](CString& r) { return Probe::CompareProperty(1.0, 1.0000011, name, r, 1e-6); }, false,
       L"Difference Detected: m_P - 1 vs 1.0000011\n"},
      {"difference equal to the tolerance is reported",
       [&](CString& r) { return Probe::CompareProperty(0.5, 0.75, name, r, 0.25); }, false,
       L"Difference Detected: m_P - 0.5 vs 0.75\n"},
      {"tolerance 0 reports equal reals", [&](CString& r) { return Probe::CompareProperty(2.0, 2.0, name, r, 0.0); },
       false, L"Difference Detected: m_P - 2 vs 2\n"},
      {"point",
       [&](CString& r) { return Probe::CompareProperty(GmPoint3D(1, 2, 3), GmPoint3D(1, 2, 3.5), name, r, 1e-6); },
       false, L"Difference Detected: m_P - (1, 2, 3) vs (1, 2, 3.5)\n"},
      {"point within tolerance",
       [&](CString& r) { return Probe::CompareProperty(GmPoint3D(1, 2, 3), GmPoint3D(1 + 5e-7, 2, 3), name, r, 1e-6); },
       true, L""},
      {"point distance, not per component",
       [&](CString& r) {
         return Probe::CompareProperty(GmPoint3D(0, 0, 0), GmPoint3D(6e-7, 6e-7, 6e-7), name, r, 1e-6);
       },
       false, L"Difference Detected: m_P - (0, 0, 0) vs (6e-07, 6e-07, 6e-07)\n"},
      {"vector",
       [&](CString& r) { return Probe::CompareProperty(GmVector3D(0, 0, 1), GmVector3D(0, 1, 0), name, r, 1e-6); },
       false, L"Difference Detected: m_P - (0, 0, 1) vs (0, 1, 0)\n"},
      {"matrix",
       [&](CString& r) {
         return Probe::CompareProperty(GmXformMat3D(), GmXformMat3D::Translate(0, 0, 1), name, r, 1e-6);
       },
       false, L"Difference Detected: m_P - 4x4 vs 4x4\n"},
      {"matrix same", [&](CString& r) { return Probe::CompareProperty(GmXformMat3D(), GmXformMat3D(), name, r, 0.0); },
       true, L""},
      {"axis motion map", [&](CString& r) { return Probe::CompareProperty(mapA, mapB, name, r); }, false,
       L"Difference Detected: m_P - UtAxisMotionMap(1): [X] (Coordinate, 1),  vs UtAxisMotionMap(1): [X] "
       L"(Coordinate, 2), \n"},
      {"move point", [&](CString& r) { return Probe::CompareProperty(ptA, ptB, name, r); }, false,
       L"Difference Detected: m_P - ( C1.00000000000000,) vs ( X1.00000000000000,)\n"},
  };
  for (const CompareCase& c : cases) {
    CString report(L"before\n");
    EXPECT_EQ(c.compare(report), c.equal) << c.what;
    EXPECT_EQ(report, CString(L"before\n") + c.line) << c.what << ": " << report;  // appending never clears
  }
}

TEST(DbIOFBase, ComparesTheNameOnlyAndStopsAtTheFirstDifference) {
  auto a = DbIOFList::Create(DbIOFList::kOperation);
  auto b = DbIOFList::Create(DbIOFList::kOperation);
  a->GetAttributes().AddAttribute(CString(L"Only"), 1);
  a->SetIOFName(CString(L"Same"));
  b->SetIOFName(CString(L"Same"));
  CString report;
  EXPECT_TRUE(a->Compare(b, report));  // attributes are not compared
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

TEST(DbIOFBase, TypeAnswers) {
  auto list = DbIOFList::Create(0);
  EXPECT_EQ(list->GetClass(), L"DbIOFList");
  EXPECT_EQ(list->DbIOFBase::GetClass(), L"DbIOFBase");
  EXPECT_EQ(list->GetType(), 0x5110u);
  EXPECT_EQ(list->GetTypeIdx(), DbIOFTypeMgr::GetIOFLISTIdx());
  EXPECT_EQ(list->GetSubclassLevel(0), 3);
  EXPECT_EQ(list->DbIOFBase::GetSubclassLevel(0), 2);
  EXPECT_STREQ(list->GetObjectClassName(), "DbIOFList");
  ASSERT_NE(Quarp::UtSerializeFind("DbIOFList"), nullptr);
  EXPECT_EQ(list->GetObjectClassId(), Quarp::UtSerializeFind("DbIOFList")->id);
  EXPECT_EQ(Quarp::UtSerializeFind("DbIOFBase"), nullptr);  // the base is not registered

  EXPECT_TRUE(list->ContainsType(DbIOFTypeMgr::GetIOFLISTMask(), false));
  EXPECT_FALSE(list->ContainsType(DbIOFTypeMgr::GetIOFBASEMask(), false));
  EXPECT_TRUE(list->ContainsType(DbIOFTypeMgr::GetIOFBASEMask(), true));
  EXPECT_FALSE(list->ContainsType(DbIOFTypeMgr::GetIOFSTREAMMask(), true));
  EXPECT_TRUE(list->ContainsType(0x5100));
  EXPECT_TRUE(list->ContainsType(0x5110));
  EXPECT_FALSE(list->ContainsType(0x5111));
  EXPECT_EQ(list->ToIOFString(), L"IOF List Object - ");
  EXPECT_EQ(list->DbIOFBase::ToIOFString(), L"DbIOFBase Base");
}

TEST(DbIOFBase, TrimClassName) {
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

TEST(DbIOFBase, CopyConstructorCopiesAttributesButCopyDoesNot) {
  auto source = DbIOFList::Create(DbIOFList::kOperation);
  source->SetIOFName(CString(L"Op"));
  source->GetAttributes().AddAttribute(CString(L"Tag"), 5);
  const DbIOFList byConstructor(*source);
  EXPECT_EQ(byConstructor.GetAttributes().GetCount(), 1u);
  EXPECT_EQ(byConstructor.GetIOFName(), L"Op");

  auto target = DbIOFList::Create(0);
  target->GetAttributes().AddAttribute(CString(L"Own"), true);
  target->Copy(*source, Quarp::DbCloneMode::Normal, nullptr);
  EXPECT_EQ(target->GetIOFName(), L"Op");
  EXPECT_EQ(target->GetAttributes().GetCount(), 1u);
  EXPECT_NE(target->GetAttributes().FindAttrib(CString(L"Own")), nullptr);  // kept: Copy leaves attributes alone

  *target = *source;  // operator= copies them
  EXPECT_NE(target->GetAttributes().FindAttrib(CString(L"Tag")), nullptr);
  EXPECT_EQ(target->GetAttributes().FindAttrib(CString(L"Own")), nullptr);
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
  EXPECT_EQ(clone->GetHead()->GetOwner(), clone);
  EXPECT_EQ(xref.Find(source->GetId()), clone->GetId());

  err = Quarp::DbErr::Ok;
  EXPECT_EQ(source->Clone(Quarp::DbCloneMode::Normal, nullptr, nullptr, err), nullptr);
  EXPECT_EQ(err, Quarp::DbErr::AttachFailed);
  EXPECT_EQ(static_cast<int>(err), 16);
}

TEST(DbIOFBase, ArchiveOfTheBasePart) {
  auto list = DbIOFList::Create(0);
  const auto empty = TestSupport::Store(*list);
  // list version, base version, empty name, attribute map (version, count 0), no sub-lists,
  // kind, item count.
  EXPECT_EQ(TestSupport::ToHex(empty), "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
  list->SetIOFName(CString(L"AB"));
  const auto named = TestSupport::Store(*list);
  EXPECT_EQ(TestSupport::ToHex({named.begin() + 2, named.begin() + 10}), "02 00 00 00 41 00 42 00");

  auto back = DbIOFList::Create(0);
  ASSERT_TRUE(TestSupport::LoadAll(*back, named));
  EXPECT_EQ(back->GetIOFName(), L"AB");
  ASSERT_TRUE(TestSupport::LoadAll(*back, empty));
  EXPECT_TRUE(back->GetIOFName().IsEmpty());
}

TEST(DbIOFBase, AttributesAndSubListsRoundTrip) {
  Quarp::DbMgr mgr;
  auto list = DbIOFList::Create(DbIOFList::kOperation);
  auto sub = DbIOFList::Create(DbIOFList::kMotionSubList);
  mgr.Add(list);
  list->AddSubList(mgr.Add(sub));
  list->GetAttributes().AddAttribute(CString(L"Coolant"), true);
  list->GetAttributes().AddAttribute(CString(L"Pass"), 3);
  auto back = DbIOFList::Create(0);
  ASSERT_TRUE(TestSupport::LoadAll(*back, TestSupport::Store(*list)));
  EXPECT_EQ(back->GetAttributes().GetCount(), 2u);
  int pass = 0;
  EXPECT_EQ(back->GetAttributes().GetIntAttribVal(CString(L"Pass"), pass), AttribGetStatus::Done);
  EXPECT_EQ(pass, 3);
  EXPECT_EQ(back->GetSubLists(), list->GetSubLists());
}

TEST(DbIOFBase, VisitsItsFieldsBaseFirst) {
  auto list = DbIOFList::Create(DbIOFList::kStream);
  list->SetIOFName(CString(L"Main"));
  list->PushBack(DbId(4));
  list->PushBack(DbId(9));
  TestSupport::RecordingVisitor v;
  list->VisitFields(v);
  EXPECT_EQ(v.fields, (std::vector<std::string>{"m_Name=\"Main\"", "m_Attributes=0 attributes", "m_SubLists=[]",
                                                "m_ListType=1", "m_Items=[4,9]"}));
}

}  // namespace
