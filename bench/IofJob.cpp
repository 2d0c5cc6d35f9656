#include "IofJob.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>

#include <stdexcept>
#include <string>

namespace IofBench {
namespace {

void SetLinear(IOF::DbIOFNciLinear& line, const MoveSpec& m, int opId) {
  line.SetGCode(m.gCode);
  line.SetOperationId(opId);
  line.SetTime(m.time);
  line.SetFeedRate(m.feedRate);
  line.SetIsFeedMove(m.feedMove);
  line.SetCutterComp(m.cutterComp);
  line.SetPositionCode(m.positionCode);
  line.SetContourPosition(static_cast<IOF::ContourPositionState>(m.contourPosition));
  line.SetEndPoint(IOF::GmPoint3D(m.x, m.y, m.z));
}

// The header of an IOF operation from its header.
void SetOperation(IOF::DbIOFNciOperation& op, const OperationHeader& header) {
  op.SetIOFName(CString::FromUtf8("Operation " + std::to_string(header.number)));
  op.SetMcOpNumber(header.number);
  op.SetMcOpId(header.number);
  op.SetToolPathType(static_cast<IOF::IofToolPathTypes>(header.toolPathType));
  op.SetToolpathTypeTitle(CString(L"Pocket"));
  op.SetStreamId(1);
  op.SetMaxSpindleSpeed(header.spindleSpeed);
  op.SetToolChangeTime(header.toolChangeTime);
}

}  // namespace

IofJob BuildIofJob(Quarp::DbMgr& mgr, std::size_t moves) {
  IofJob job;
  const std::size_t operations = OperationCount(moves);
  auto doc = IOF::DbIOFDocument::Create();
  mgr.Add(doc);
  Quarp::DbPtr<IOF::DbIOFStream> stream;
  if (!mgr.Get(stream, doc->AddStreamToList(1), 0)) throw std::runtime_error("the document made no stream");
  for (std::size_t op = 0; op < operations; ++op) {
    const std::size_t n = MovesInOperation(moves, op);
    OperationPath path(op, n);
    const OperationHeader header = path.Header(op + 1 == operations);
    auto operation = IOF::DbIOFNciOperation::Create();
    SetOperation(*operation, header);
    const Quarp::DbId opId = mgr.Add(operation);
    stream->PushBack(opId);
    auto sub = IOF::DbIOFNciSubOp::Create();
    sub->SetOpId(opId);
    sub->SetFeedRate(header.feed);
    sub->SetSpindleSpeed(header.spindleSpeed);
    sub->SetDiameterOffsetNum(header.toolNumber);
    sub->SetLengthOffsetNum(header.toolNumber);
    operation->PushBack(mgr.Add(sub));
    auto approach = IOF::DbIOFApproach::Create();
    approach->SetApproachType(header.approachType);
    approach->SetEndPoint(IOF::GmPoint3D(header.approachX, header.approachY, header.approachZ));
    sub->PushBack(mgr.Add(approach));
    auto motion = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionBlock);
    sub->PushBack(mgr.Add(motion));
    for (std::size_t i = 0; i < n; ++i) {
      const MoveSpec m = path.Next();
      auto line = IOF::DbIOFNciLinear::Create();
      SetLinear(*line, m, static_cast<int>(opId.Value()));
      job.lastMoveId = mgr.Add(line);
      job.lastMove = m;
      motion->PushBack(job.lastMoveId);
    }
    auto retract = IOF::DbIOFRetract::Create();
    retract->SetRetractType(header.retractType);
    retract->SetEndPoint(IOF::GmPoint3D(job.lastMove.x, job.lastMove.y, job.lastMove.z));
    operation->PushBack(mgr.Add(retract));
  }
  job.records = mgr.GetCount();
  return job;
}

}  // namespace IofBench
