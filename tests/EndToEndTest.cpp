// A producer's run from the top and a post-processor's reading of the file: build a job
// with a document, two streams, operations with a sub-operation (approach and a motion
// list) and a retract each, de-duplicated tool changes and planes, and moves with motion
// sub-lists, write it, read it into a fresh manager and find everything again, equal
// field by field. (Each record class alone: its layout test and the type registry's
// test, which loads every registered class from a file.)
#include "ToolSupport.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFRetract.h>

#include <gtest/gtest.h>

#include <vector>

using namespace IOF;
using Quarp::DbId;

namespace {

// The producer: in each stream three operations, by tools 1, 2, 1 (the third is reused)
// in planes turned by 0, 0.5 and 0 about X (the third equals the first). Each has a
// sub-operation with an approach and a motion list, which holds a line and an arc with
// its block in a motion sub-list, and a retract.
void Produce(ToolSupport::Job& job) {
  for (int number = 1; number <= 2; ++number) {
    job.Stream(number);
    for (int opIndex = 0; opIndex < 3; ++opIndex) {
      DbIOFNciOperation& op = job.Op(opIndex % 2 ? L"Finish" : L"Rough");
      job.Tool(opIndex % 2 + 1, opIndex % 2 ? L"T2" : L"T1", 2, 1);
      job.Plane(54, GmXformMat3D::RotX(opIndex == 2 ? 0.0 : opIndex * 0.5));
      DbIOFNciSubOp& subOp = job.Sub(1000 + opIndex, IofArcPlaneType::XY);
      auto approach = DbIOFApproach::Create();
      approach->SetEndPoint(GmPoint3D(opIndex, number, 5));
      subOp.PushBack(job.mgr.Add(approach));
      job.Line(opIndex, number, -1, 300 + opIndex).SetTime(1.5);
      auto blocks = DbIOFList::Create(DbIOFList::kMotionSubList);
      auto block = DbIOFArcMotionBlock::Create();
      blocks->PushBack(job.mgr.Add(block));
      const GmPoint3D from(opIndex, number, -1);
      job.Arc(IofArcPlaneType::XY, from, {0, 0, -1}, {1, 1, -1}, true, 200).AddSubList(job.mgr.Add(blocks));
      auto retract = DbIOFRetract::Create();
      retract->SetRetractType(DbIOFRetract::kReposition);
      op.PushBack(job.mgr.Add(retract));
    }
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
  ToolSupport::Job job;
  Produce(job);
  const Quarp::DbMgr& produced = job.mgr;
  const DbId docId(1);
  const std::string path = job.Write("job.iof");

  // The post-processor: open the file, find the document, take each stream by number.
  Quarp::DbMgr post;
  ASSERT_EQ(post.Read(Quarp::UtString(path.c_str()), true), Quarp::DbErr::Ok) << post.GetLastErrorText();
  EXPECT_EQ(post.GetCount(), produced.GetCount());
  Quarp::DbCPtr<DbIOFDocument> doc;
  DbId at;
  ASSERT_TRUE(post.GetNext(doc, at, 0));
  EXPECT_EQ(doc.GetId(), docId);
  ASSERT_EQ(doc->GetNumberStreams(), 2);

  std::size_t compared = 0;
  for (int number = 1; number <= 2; ++number) {
    Quarp::DbCPtr<DbIOFStream> stream;
    ASSERT_TRUE(post.Get(stream, doc->GetStreamById(number), 0));
    EXPECT_EQ(stream->GetStreamId(), number);
    EXPECT_EQ(stream->Size(), 3);
    EXPECT_EQ(stream->GetToolChangeList().GetSize(), 2);
    EXPECT_EQ(stream->GetToolPlaneList().GetSize(), 2);
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
  EXPECT_EQ(compared, 68u);
}

}  // namespace
