// A producer's run from the top and a post-processor's reading of the file: build a job
// with a document, two streams, operations with a sub-operation (approach and a motion
// list) and a retract each, de-duplicated tool changes and planes and moves of every
// kind, write it, read it into a fresh manager and find everything again, equal field
// by field.
#include "TestSupport.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFDrillMotionBlock.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMultiAxMotionBlock.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciManualEntry.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>

#include <gtest/gtest.h>

#include <numbers>
#include <vector>

using namespace IOF;
using Quarp::DbId;

namespace {

Quarp::DbPtr<DbIOFNciToolChange> Tool(int number, double diameter) {
  auto tool = DbIOFNciToolChange::Create();
  tool->SetToolNum(number);
  tool->SetToolSlotId(number);
  tool->SetToolStation(1);
  tool->SetToolType(2);
  tool->SetToolDiameter(diameter);
  tool->SetToolName(CString::Formatted(L"T%d", number));
  return tool;
}

// The producer: one operation per tool, moves of every kind, motion blocks in sub-lists.
void Produce(Quarp::DbMgr& mgr, DbId& docId) {
  auto doc = DbIOFDocument::Create(&mgr);
  doc->SetFileName(CString(L"part.mcam"));
  docId = mgr.Add(doc);
  for (int number = 1; number <= 2; ++number) {
    Quarp::DbPtr<DbIOFStream> stream;
    ASSERT_TRUE(mgr.Get(stream, doc->AddStreamToList(number), 0));
    for (int opIndex = 0; opIndex < 3; ++opIndex) {
      auto op = DbIOFNciOperation::Create();
      op->SetIOFName(CString::Formatted(L"Op %d.%d", number, opIndex));
      const DbId opId = mgr.Add(op);
      stream->PushBack(opId);
      bool added = false;
      auto tool = Tool(opIndex % 2 + 1, 6.0 + opIndex);  // tools 1, 2, 1: the third is reused
      op->SetNextToolChg(stream->AddToolChange(tool, added, true, true));
      op->PushBack(op->GetNextToolChg());
      EXPECT_EQ(added, opIndex < 2);
      const DbId planeId = stream->AddPlane(GmXformMat3D::RotX(opIndex == 2 ? 0.0 : opIndex * 0.5), 54, false, 1e-6);
      auto planeChange = DbIOFNciToolPlaneChange::Create();
      planeChange->SetPlaneDbId(planeId);
      op->PushBack(mgr.Add(planeChange));
      // A sub-operation with its approach and a motion list that holds the cut.
      auto subOp = DbIOFNciSubOp::Create();
      subOp->SetOpId(opId);
      subOp->SetToolChangeId(op->GetNextToolChg());
      op->PushBack(mgr.Add(subOp));
      auto approach = DbIOFApproach::Create();
      approach->SetEndPoint(GmPoint3D(opIndex, number, 5));
      subOp->PushBack(mgr.Add(approach));
      auto cut = DbIOFList::Create(DbIOFList::kMotionBlock);
      subOp->PushBack(mgr.Add(cut));

      auto line = DbIOFNciLinear::Create();
      line->SetEndPoint(GmPoint3D(opIndex, number, -1));
      line->SetFeedRate(300 + opIndex);
      line->SetTime(1.5);
      line->SetOperationId(static_cast<int>(opId.Value()));
      cut->PushBack(mgr.Add(line));

      auto arc = DbIOFNciArc::Create();
      arc->SetCenterPoint(GmPoint3D(1, 1, 0));
      arc->SetSweepAngle(90);
      arc->SetClockwise(true);
      const DbId arcId = mgr.Add(arc);
      cut->PushBack(arcId);
      auto sub = DbIOFList::Create(DbIOFList::kMotionSubList);
      const DbId subId = mgr.Add(sub);
      auto block = DbIOFArcMotionBlock::Create();
      UtIofMovePoint end;
      end.SetXYZ(GmPoint3D(2, 2, 0));
      block->SetEndPt(end);
      sub->PushBack(mgr.Add(block));
      ASSERT_TRUE(arc->AddSubList(subId));

      auto helix = DbIOFNciArc3D::Create();
      helix->SetRadius(4);
      helix->SetSweepAngle(std::numbers::pi);
      helix->SetHelicalPitch(-2);
      cut->PushBack(mgr.Add(helix));

      auto multi = DbIOFNciMultiAx::Create();
      multi->SetToolTipPt(GmPoint3D(5, 5, 5));
      multi->SetToolOrientVect(GmVector3D(0, 0, 1));
      const DbId multiId = mgr.Add(multi);
      cut->PushBack(multiId);
      auto machine = DbIOFList::Create(DbIOFList::kMachineBasedMotionSubList);
      const DbId machineId = mgr.Add(machine);
      auto multiBlock = DbIOFMultiAxMotionBlock::Create();
      multiBlock->SetG43EndPt(GmPoint3D(5, 5, 105));
      machine->PushBack(mgr.Add(multiBlock));
      ASSERT_TRUE(multi->AddSubList(machineId));

      auto drill = DbIOFDrillMotionBlock::Create();
      drill->SetEndPoint2(end);
      cut->PushBack(mgr.Add(drill));
      auto generic = DbIOFNciGeneric::Create();
      const unsigned char bytes[] = {1, 2, 3};
      generic->SetGenericBlock(sizeof bytes, bytes);
      cut->PushBack(mgr.Add(generic));
      auto note = DbIOFNciManualEntry::Create();
      note->SetComment(CString(L"Stop and check"));
      cut->PushBack(mgr.Add(note));
      auto dwell = DbIOFEvDwell::Create();
      dwell->SetDwellTime(0.5 * (opIndex + 1));
      cut->PushBack(mgr.Add(dwell));
      auto retract = DbIOFRetract::Create();
      retract->SetRetractType(DbIOFRetract::kReposition);
      op->PushBack(mgr.Add(retract));
    }
    auto sync = DbIOFEvSync::Create();
    sync->SetSyncId(10);
    stream->PushBack(mgr.Add(sync));
    EXPECT_EQ(stream->GetToolChangeList().GetSize(), 2);
    EXPECT_EQ(stream->GetToolPlaneList().GetSize(), 2);  // the third plane equals the first
  }
}

// Every record reachable from `list` (items, their sub-lists, nested lists), in order.
void Collect(const Quarp::DbMgr& mgr, DbId id, std::vector<DbId>& out) {
  out.push_back(id);
  Quarp::DbCPtr<DbIOFBase> record;
  ASSERT_TRUE(mgr.Get(record, id, 0)) << id.Value();
  for (const DbId sub : record->GetSubLists()) Collect(mgr, sub, out);
  if (const auto* list = dynamic_cast<const DbIOFList*>(record.Get())) {
    for (const auto* item = list->GetHead(); item; item = item->GetNext()) Collect(mgr, item->GetId(), out);
  }
}

TEST(EndToEnd, AProducersJobReadsBackFieldByField) {
  Quarp::DbMgr produced;
  DbId docId;
  Produce(produced, docId);
  const std::string path = TestSupport::TempPath("job.iof");
  ASSERT_EQ(produced.Write(Quarp::UtString(path.c_str())), Quarp::DbErr::Ok) << produced.GetLastErrorText();

  // The post-processor: open the file, find the document, take each stream by number.
  Quarp::DbMgr post;
  ASSERT_EQ(post.Read(Quarp::UtString(path.c_str()), true), Quarp::DbErr::Ok) << post.GetLastErrorText();
  EXPECT_EQ(post.GetCount(), produced.GetCount());
  Quarp::DbCPtr<DbIOFDocument> doc;
  DbId at;
  ASSERT_TRUE(post.GetNext(doc, at, 0));
  EXPECT_EQ(doc.GetId(), docId);
  EXPECT_EQ(doc->GetFileName(), L"part.mcam");
  ASSERT_EQ(doc->GetNumberStreams(), 2);

  std::size_t compared = 0;
  for (int number = 1; number <= 2; ++number) {
    Quarp::DbCPtr<DbIOFStream> stream;
    ASSERT_TRUE(post.Get(stream, doc->GetStreamById(number), 0));
    EXPECT_EQ(stream->GetStreamId(), number);
    EXPECT_EQ(stream->Size(), 4);  // three operations and the sync event
    Quarp::DbCPtr<DbIOFNciOperation> op;
    ASSERT_TRUE(post.Get(op, stream->GetHead()->GetId(), 0));
    EXPECT_EQ(op->GetApproach()->GetEndPoint(), GmPoint3D(0, number, 5));
    EXPECT_EQ(op->GetRetract()->GetRetractType(), DbIOFRetract::kReposition);
    std::vector<DbId> produceOrder, readOrder;
    Quarp::DbCPtr<DbIOFDocument> original;
    ASSERT_TRUE(produced.Get(original, docId, 0));
    Collect(produced, original->GetStreamById(number), produceOrder);
    Collect(post, stream.GetId(), readOrder);
    ASSERT_EQ(readOrder, produceOrder);
    for (const DbId id : readOrder) {
      Quarp::DbCPtr<DbIOFBase> before, after;
      ASSERT_TRUE(produced.Get(before, id, 0));
      ASSERT_TRUE(post.Get(after, id, 0));
      EXPECT_EQ(after->GetClass(), before->GetClass());
      EXPECT_EQ(after->ToIOFString(), before->ToIOFString());
      CString report;
      EXPECT_TRUE(after->Compare(before, report)) << id.Value() << ": " << report;
      EXPECT_TRUE(report.IsEmpty()) << report;
      ++compared;
    }
    // The registers: tool changes and planes found again by id.
    EXPECT_EQ(stream->GetFirstToolChgId(), stream->GetToolChangeList()[0]);
    EXPECT_EQ(stream->GetLastToolChgId(), stream->GetToolChangeList()[0]);  // the third operation reused tool 1
    Quarp::DbCPtr<DbIOFNciPlane> plane;
    for (const DbId planeId : stream->GetToolPlaneList()) {
      ASSERT_TRUE(post.Get(plane, planeId, 0));
      EXPECT_EQ(plane->GetWorkOffsetNum(), 54);
    }
  }
  EXPECT_GT(compared, 80u);
}

}  // namespace
