// What every record class answers about its type, and the refusal to compare records of
// unrelated classes, in one table for all the classes.
#include "TestSupport.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFDrillMotionBlock.h>
#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvClamp.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFMultiAxMotionBlock.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciManualEntry.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciPlaneReference.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFNciTransSubProgOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>
#include <iof/DbIOFTypeMgr.h>
#include <quarp/UtTypeMgr.h>

#include <gtest/gtest.h>

#include <vector>

using namespace IOF;
using T = DbIOFTypeMgr;

namespace {

struct TypeRow {
  Quarp::DbPtr<DbIOFBase> record;
  const char* name;
  std::uint64_t code;
  int level;                                    // GetSubclassLevel(0)
  std::vector<std::uint64_t> bases;             // codes of its base classes below DbIOFBase
  std::uint64_t sibling;                        // a code it does not contain
  const Quarp::UtMask* own;                     // null where the code is not registered by name
  std::vector<const Quarp::UtMask*> ancestors;  // contained with bases only
  std::vector<const Quarp::UtMask*> unrelated;  // never contained
};

TypeRow Row(Quarp::DbPtr<DbIOFBase> record, const char* name, std::uint64_t code, int level,
            std::vector<std::uint64_t> bases, std::uint64_t sibling, const Quarp::UtMask* own,
            std::vector<const Quarp::UtMask*> ancestors, std::vector<const Quarp::UtMask*> unrelated) {
  return {record, name, code, level, bases, sibling, own, ancestors, unrelated};
}

TEST(RecordClasses, TypeAnswers) {
  const std::vector<TypeRow> rows = {
      Row(DbIOFList::Create(0), "DbIOFList", 0x5110, 3, {}, 0x5111, &T::GetIOFLISTMask(), {&T::GetIOFBASEMask()},
          {&T::GetIOFSTREAMMask(), &T::GetIOFNCIBASEMask()}),
      Row(DbIOFStream::Create(1), "DbIOFStream", 0x5111, 4, {0x5110}, 0x5112, &T::GetIOFSTREAMMask(),
          {&T::GetIOFLISTMask()}, {&T::GetIOFNCIBASEMask()}),
      Row(DbIOFDocument::Create(), "DbIOFDocument", 0x5112, 3, {}, 0x5110, &T::GetIOFDOCUMENTMask(),
          {&T::GetIOFBASEMask()}, {&T::GetIOFLISTMask()}),
      Row(DbIOFNciGeneric::Create(), "DbIOFNciGeneric", 0x5102, 4, {0x5101}, 0x5103, &T::GetIOFNCIGENERICMask(),
          {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCIBASEMOVEMask()}),
      Row(DbIOFNciManualEntry::Create(), "DbIOFNciManualEntry", 0x5117, 4, {0x5101}, 0x5102,
          &T::GetIOFNCIMANUALENTRYMask(), {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCIGENERICMask()}),
      Row(DbIOFNciLinear::Create(), "DbIOFNciLinear", 0x5104, 5, {0x5101, 0x5103}, 0x5105, &T::GetIOFNCILINEARMask(),
          {&T::GetIOFNCIBASEMask(), &T::GetIOFNCIBASEMOVEMask()}, {&T::GetIOFNCIARCMask()}),
      Row(DbIOFNciArc::Create(), "DbIOFNciArc", 0x5105, 5, {0x5101, 0x5103}, 0x5106, &T::GetIOFNCIARCMask(),
          {&T::GetIOFNCIBASEMOVEMask()}, {&T::GetIOFMOTIONBLOCKMask()}),
      Row(DbIOFNciArc3D::Create(), "DbIOFNciArc3D", 0x5106, 5, {0x5101, 0x5103}, 0x5105, &T::GetIOFNCIARC3DMask(),
          {&T::GetIOFNCIBASEMOVEMask()}, {&T::GetIOFNCIARCMask()}),
      Row(DbIOFNciMultiAx::Create(), "DbIOFNciMultiAx", 0x5107, 5, {0x5101, 0x5103}, 0x5104, &T::GetIOFNCIMULTIAXMask(),
          {&T::GetIOFNCIBASEMOVEMask()}, {&T::GetIOFMOTIONBLOCKMask()}),
      Row(DbIOFNciPlane::Create(), "DbIOFNciPlane", 0x5114, 5, {0x5101, 0x5113}, 0x5115, &T::GetIOFNCIPLANEMask(),
          {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCITOOLPLANECHANGEMask()}),
      Row(DbIOFNciPlaneReference::Create(), "DbIOFNciPlaneReference", 0x5115, 5, {0x5101, 0x5113}, 0x5114, nullptr,
          {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCIPLANEMask()}),
      Row(DbIOFNciToolPlaneChange::Create(), "DbIOFNciToolPlaneChange", 0x5126, 4, {0x5101}, 0x5114,
          &T::GetIOFNCITOOLPLANECHANGEMask(), {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCIPLANEMask()}),
      Row(DbIOFNciToolChange::Create(), "DbIOFNciToolChange", 0x5116, 4, {0x5101}, 0x5103,
          &T::GetIOFNCITOOLCHANGEMask(), {&T::GetIOFNCIBASEMask()}, {&T::GetIOFNCIBASEMOVEMask()}),
      Row(DbIOFEvSync::Create(), "DbIOFEvSync", 0x5131, 4, {0x5130}, 0x5136, &T::GetIOFEVSYNCMask(),
          {&T::GetIOFEVENTBASEMask()}, {&T::GetIOFNCIBASEMask()}),
      Row(DbIOFEvDwell::Create(), "DbIOFEvDwell", 0x5133, 4, {0x5130}, 0x5131, &T::GetIOFEVDWELLMask(),
          {&T::GetIOFEVENTBASEMask()}, {&T::GetIOFEVSYNCMask()}),
      Row(DbIOFEvComp::Create(), "DbIOFEvComp", 0x5136, 4, {0x5130}, 0x5137, &T::GetIOFEVCOMPMask(),
          {&T::GetIOFEVENTBASEMask()}, {&T::GetIOFEVSYNCMask()}),
      Row(DbIOFEvChangeFeedUnitType::Create(), "DbIOFEvChangeFeedUnitType", 0x5137, 4, {0x5130}, 0x5136, nullptr,
          {&T::GetIOFEVENTBASEMask()}, {&T::GetIOFEVCOMPMask()}),
      Row(DbIOFEvClamp::Create(), "DbIOFEvClamp", 0x5138, 4, {0x5130}, 0x5137, &T::GetIOFEVCLAMPMask(),
          {&T::GetIOFEVENTBASEMask()}, {&T::GetIOFEVDWELLMask()}),
      Row(DbIOFNciTransSubProgOp::Create(), "DbIOFNciTransSubProgOp", 0x5300, 5, {0x5110, 0x5121}, 0x5122,
          &T::GetIOFNCITRANSSUBPROGOPMask(), {&T::GetIOFNCIOPERATIONMask()}, {&T::GetIOFNCISUBOPMask()}),
      // The approach and the retract share a layout class that is no record level.
      Row(DbIOFApproach::Create(), "DbIOFApproach", 0x5123, 3, {}, 0x5124, &T::GetIOFAPPROACHMask(),
          {&T::GetIOFBASEMask()}, {&T::GetIOFRETRACTMask()}),
      Row(DbIOFRetract::Create(), "DbIOFRetract", 0x5124, 3, {}, 0x5123, &T::GetIOFRETRACTMask(),
          {&T::GetIOFBASEMask()}, {&T::GetIOFAPPROACHMask()}),
      Row(DbIOFMotionBlock::Create(), "DbIOFMotionBlock", 0x5140, 3, {}, 0x5141, &T::GetIOFMOTIONBLOCKMask(),
          {&T::GetIOFBASEMask()}, {&T::GetIOFNCIBASEMOVEMask(), &T::GetIOFNCIBASEMask()}),
      Row(DbIOFArcMotionBlock::Create(), "DbIOFArcMotionBlock", 0x5141, 4, {0x5140}, 0x5142,
          &T::GetIOFARCMOTIONBLOCKMask(), {&T::GetIOFMOTIONBLOCKMask()}, {&T::GetIOFNCIBASEMOVEMask()}),
      Row(DbIOFDrillMotionBlock::Create(), "DbIOFDrillMotionBlock", 0x5142, 4, {0x5140}, 0x5141,
          &T::GetIOFDRILLMOTIONBLOCKMask(), {&T::GetIOFMOTIONBLOCKMask()}, {&T::GetIOFNCIBASEMask()}),
      Row(DbIOFMultiAxMotionBlock::Create(), "DbIOFMultiAxMotionBlock", 0x5143, 4, {0x5140}, 0x5141,
          &T::GetIOFMULTIAXMOTIONBLOCKMask(), {&T::GetIOFMOTIONBLOCKMask()}, {&T::GetIOFARCMOTIONBLOCKMask()}),
  };
  for (const TypeRow& r : rows) {
    SCOPED_TRACE(r.name);
    EXPECT_EQ(r.record->GetType(), r.code);
    EXPECT_EQ(r.record->GetClass(), CString::FromUtf8(r.name));
    EXPECT_STREQ(r.record->GetObjectClassName(), r.name);
    const auto* registered = Quarp::UtSerializeFind(r.name);
    ASSERT_NE(registered, nullptr);
    EXPECT_EQ(r.record->GetObjectClassId(), registered->id);
    EXPECT_EQ(r.record->GetTypeIdx(), Quarp::GetDbTypeMgr().GetIndex(r.code));
    EXPECT_EQ(r.record->GetSubclassLevel(0), r.level);
    EXPECT_TRUE(r.record->ContainsType(r.code));
    EXPECT_TRUE(r.record->ContainsType(0x5100));
    for (const std::uint64_t base : r.bases) EXPECT_TRUE(r.record->ContainsType(base)) << base;
    EXPECT_FALSE(r.record->ContainsType(r.sibling));
    EXPECT_TRUE(!r.own || r.record->ContainsType(*r.own, false));
    EXPECT_TRUE(r.record->ContainsType(T::GetIOFBASEMask(), true));
    for (const auto* m : r.ancestors) {
      EXPECT_TRUE(r.record->ContainsType(*m, true));
      EXPECT_FALSE(r.record->ContainsType(*m, false));
    }
    for (const auto* m : r.unrelated) EXPECT_FALSE(r.record->ContainsType(*m, true));
  }

  // The abstract levels name themselves but are not registered for archiving.
  auto line = DbIOFNciLinear::Create();
  EXPECT_EQ(line->DbIOFBase::GetClass(), L"DbIOFBase");
  EXPECT_EQ(line->DbIOFNciBase::GetClass(), L"DbIOFNciBase");
  EXPECT_EQ(line->DbIOFNciBaseMove::GetClass(), L"DbIOFNciBaseMove");
  EXPECT_EQ(DbIOFNciPlane::Create()->DbIOFNciPlaneBase::GetClass(), L"DbIOFNciPlaneBase");
  EXPECT_EQ(DbIOFEvSync::Create()->DbIOFEventBase::GetClass(), L"DbIOFEventBase");
  EXPECT_EQ(line->DbIOFBase::GetSubclassLevel(0), 2);
  for (const char* name : {"DbIOFBase", "DbIOFNciBase", "DbIOFNciBaseMove", "DbIOFNciPlaneBase", "DbIOFEventBase"}) {
    EXPECT_EQ(Quarp::UtSerializeFind(name), nullptr) << name;
  }
  // Files hold millions of moves: a linear move must stay this small.
  EXPECT_LE(sizeof(DbIOFNciLinear), 120u);
}

TEST(RecordClasses, RecordsOfUnrelatedClassesAreIncompatible) {
  // Each pair: the first compared with the second.
  const std::vector<std::pair<Quarp::DbPtr<DbIOFBase>, Quarp::DbPtr<DbIOFBase>>> pairs = {
      {DbIOFDocument::Create(), DbIOFList::Create(0)},
      {DbIOFStream::Create(1), DbIOFList::Create(DbIOFList::kStream)},
      {DbIOFNciLinear::Create(), DbIOFList::Create(0)},
      {DbIOFNciLinear::Create(), DbIOFNciArc::Create()},
      {DbIOFNciArc::Create(), DbIOFNciLinear::Create()},
      {DbIOFNciArc::Create(), DbIOFNciArc3D::Create()},
      {DbIOFNciMultiAx::Create(), DbIOFNciLinear::Create()},
      {DbIOFNciGeneric::Create(), DbIOFList::Create(0)},
      {DbIOFNciManualEntry::Create(), DbIOFNciGeneric::Create()},
      {DbIOFNciPlane::Create(), DbIOFNciPlaneReference::Create()},  // a reference is no plane
      {DbIOFNciPlaneReference::Create(), DbIOFNciPlane::Create()},
      {DbIOFNciToolPlaneChange::Create(), DbIOFNciPlane::Create()},
      {DbIOFNciToolChange::Create(), DbIOFNciLinear::Create()},
      {DbIOFEvSync::Create(), DbIOFEvDwell::Create()},
      {DbIOFEvDwell::Create(), DbIOFEvClamp::Create()},
      {DbIOFEvChangeFeedUnitType::Create(), DbIOFEvComp::Create()},
      {DbIOFEvClamp::Create(), DbIOFList::Create(0)},
      {DbIOFMotionBlock::Create(), DbIOFNciLinear::Create()},
      {DbIOFArcMotionBlock::Create(), DbIOFMotionBlock::Create()},
      {DbIOFDrillMotionBlock::Create(), DbIOFArcMotionBlock::Create()},
      {DbIOFMultiAxMotionBlock::Create(), DbIOFMotionBlock::Create()},
      {DbIOFNciOperation::Create(), DbIOFList::Create(DbIOFList::kOperation)},
      {DbIOFApproach::Create(), DbIOFRetract::Create()},
  };
  for (const auto& [a, b] : pairs) {
    CString report(L"earlier\n");
    EXPECT_FALSE(a->Compare(b, report)) << a->GetObjectClassName() << " with " << b->GetObjectClassName();
    EXPECT_EQ(report, L"earlier\nIncompatible types.\n") << a->GetObjectClassName();
  }
  // A record of a derived class is compatible: an arc block is a motion block.
  CString report;
  EXPECT_TRUE(DbIOFMotionBlock::Create()->Compare(DbIOFArcMotionBlock::Create(), report));
  EXPECT_TRUE(report.IsEmpty());
}

}  // namespace
