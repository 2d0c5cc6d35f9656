// iof demo: writes a realistic demonstration job, the way a toolpath producer would.
//
// A mill-turn part: the main spindle faces and contours the part, then a live tool
// mills a five-axis swarf pass; the sub spindle takes the part over and drills it. The
// two streams meet at a sync point. Each operation holds its tool change and plane, a
// sub-operation (its approach, then a motion list with the cut) and its retract.
#include "Commands.h"

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
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <numbers>
#include <string>

namespace IofTool {

namespace {

using IOF::GmPoint3D;
using IOF::GmVector3D;
using IOF::GmXformMat3D;
using Quarp::DbId;

// What a producer writes into an operation's header.
struct OpHeader {
  int number;                  // the machine-operation number
  IOF::IofToolPathTypes type;  // the tool path that produced it
  const wchar_t* typeTitle;    // the tool path's title
  const wchar_t* comment;
  IOF::IofOpTypes opType;
  int spindle = 1;  // the spindle (1 main, 2 sub) and turret in use
  int turret = 1;
  bool millSpindle = false;       // a live tool turns, not the part
  double maxSpindleSpeed = 3000;  // rpm
};

// The cutting conditions of a sub-operation and how its approach comes in.
struct Cut {
  double feed;  // mm/min
  double rpm;
  IOF::GmPoint3D approachTo;
  int approachType = IOF::DbIOFApproach::kPrecededByPhysicalTC;
  IOF::DbIOFNciSubOp::ToolOrientType orientation = IOF::DbIOFNciSubOp::ToolOrientType::FACE;
  IOF::IofArcPlaneType plane = IOF::IofArcPlaneType::XY;
};

// Builds the job and counts what it made, so that the summary says exactly what the
// file holds.
class Producer {
 public:
  Quarp::DbMgr mgr;
  std::map<std::string, int> made;

  // Adds a record and counts it by class.
  template <class P>
  DbId Add(P& record) {
    const DbId id = mgr.Add(record);
    ++made[record->GetClass().ToUtf8()];
    return id;
  }

  // An operation of class O with its header, pushed onto the stream. Its tool change,
  // plane, sub-operations and retract follow as its items.
  template <class O = IOF::DbIOFNciOperation>
  Quarp::DbPtr<O> Operation(IOF::DbIOFStream& stream, const wchar_t* name, const OpHeader& header) {
    auto op = O::Create();
    op->SetIOFName(CString(name));
    op->SetMcOpNumber(header.number);
    op->SetMcOpId(header.number);
    op->SetToolPathType(header.type);
    op->SetToolpathTypeTitle(CString(header.typeTitle));
    op->SetMcComment(CString(header.comment));
    op->SetOpType(header.opType);
    op->SetStreamId(stream.GetStreamId());
    op->SetActiveSpindle(header.spindle);
    op->SetActiveTurret(header.turret);
    op->SetSpindleModeMill(header.millSpindle);
    op->SetMaxSpindleSpeed(header.maxSpindleSpeed);
    op->SetToolPathGroupName(CString(L"Machine Group-1"));
    stream.PushBack(Add(op));
    m_opId = static_cast<int>(op.GetId().Value());
    return op;
  }

  // A tool change through the stream's de-duplicating adder, placed in the operation,
  // which notes the tool change before it and its own; a new tool takes 4.5 s.
  void ToolChange(IOF::DbIOFStream& stream, IOF::DbIOFNciOperation& op, Quarp::DbPtr<IOF::DbIOFNciToolChange> tool) {
    bool added = false;
    tool->SetOperationId(m_opId);
    op.SetPrevToolChg(stream.GetLastToolChgId());
    m_toolId = stream.AddToolChange(tool, added, true, true);
    if (added) ++made["DbIOFNciToolChange"];
    op.SetNextToolChg(m_toolId);
    op.SetToolChangeTime(m_toolId != op.GetPrevToolChg() ? 4.5 : 0.0);
    op.PushBack(m_toolId);
  }

  // A plane through the stream's adder, and the tool-plane change that selects it.
  void Plane(IOF::DbIOFStream& stream, IOF::DbIOFList& op, const GmXformMat3D& m, int workOffset,
             const wchar_t* comment) {
    const std::size_t before = stream.GetToolPlaneList().GetSize();
    m_planeId = stream.AddPlane(m, workOffset, false, 1e-6);
    if (static_cast<std::size_t>(stream.GetToolPlaneList().GetSize()) > before) {
      // A new plane also stands where it first takes effect.
      ++made["DbIOFNciPlane"];
      Quarp::DbPtr<IOF::DbIOFNciPlane> plane;
      if (mgr.Get(plane, m_planeId, 0)) {
        plane->SetComment(CString(comment));
        plane->SetPlaneId(workOffset);
        plane->SetOperationId(m_opId);
      }
      op.PushBack(m_planeId);
    }
    auto change = IOF::DbIOFNciToolPlaneChange::Create();
    change->SetPlaneDbId(m_planeId);
    change->SetOperationId(m_opId);
    op.PushBack(Add(change));
  }

  // A sub-operation of `op` under the tool and plane in force, holding its approach and
  // a motion list; returns the motion list, where the cut's moves and events go.
  IOF::DbIOFList& SubOp(IOF::DbIOFNciOperation& op, const Cut& cut) {
    auto sub = IOF::DbIOFNciSubOp::Create();
    sub->SetOpId(op.GetId());
    sub->SetToolChangeId(m_toolId);
    sub->SetToolPlaneId(m_planeId);
    sub->SetFeedRate(cut.feed);
    sub->SetSpindleSpeed(cut.rpm);
    sub->SetApproachRpm(cut.rpm);
    sub->SetToolOrientationType(cut.orientation);
    sub->SetNCPlane(cut.plane);
    sub->SetNCPlaneCoordConv(cut.plane);
    Quarp::DbPtr<IOF::DbIOFNciToolChange> tool;
    if (mgr.Get(tool, m_toolId, 0)) {
      sub->SetDiameterOffsetNum(tool->GetDiaOffsetNum());
      sub->SetLengthOffsetNum(tool->GetLengthOffsetNum());
    }
    op.PushBack(Add(sub));
    auto approach = IOF::DbIOFApproach::Create();
    approach->SetIOFName(CString(L"Approach"));
    approach->SetApproachType(cut.approachType);
    approach->SetEndPoint(cut.approachTo);
    approach->GetAttributes().AddAttribute(CString(L"T_APPROACH_STRATEGY"), L"Rapid to clearance");
    sub->PushBack(Add(approach));
    auto motion = IOF::DbIOFList::Create(IOF::DbIOFList::kMotionBlock);
    motion->SetIOFName(CString(L"Cut"));
    sub->PushBack(Add(motion));
    return *motion;  // the manager holds it
  }

  // The operation's retract, among its own items after the cut.
  void Retract(IOF::DbIOFNciOperation& op, int type) {
    auto retract = IOF::DbIOFRetract::Create();
    retract->SetIOFName(CString(L"Retract"));
    retract->SetRetractType(type);
    retract->SetEndPoint(m_at);
    retract->GetAttributes().AddAttribute(CString(L"T_RETRACT_STRATEGY"), L"Rapid to home");
    op.PushBack(Add(retract));
  }

  // A linear move from the last position; `feed` in mm/min (rapids at 10 m/min).
  DbId Linear(IOF::DbIOFList& into, const GmPoint3D& to, double feed, bool rapid,
              IOF::ContourPositionState where = IOF::ContourPositionState::Contour) {
    auto line = IOF::DbIOFNciLinear::Create();
    line->SetGCode(rapid ? 0 : 1);
    line->SetIsFeedMove(!rapid);
    line->SetEndPoint(to);
    line->SetFeedRate(rapid ? 10000.0 : feed);
    line->SetContourPosition(where);
    line->SetOperationId(m_opId);
    line->SetTime(m_at.Distance(to) / (rapid ? 10000.0 : feed) * 60.0);
    m_at = to;
    const DbId id = Add(line);
    into.PushBack(id);
    return id;
  }

  // A motion sub-list of `kind` under `owner`, holding `block`.
  template <class Block>
  void SubList(IOF::DbIOFBase& owner, int kind, Block& block) {
    auto list = IOF::DbIOFList::Create(kind);
    const DbId listId = Add(list);
    list->PushBack(Add(block));
    owner.AddSubList(listId);
  }

  GmPoint3D m_at;
  int m_opId = -1;
  DbId m_toolId;
  DbId m_planeId;
};

IOF::UtIofMovePoint MovePoint(double x, double y, double z) {
  IOF::UtIofMovePoint p;
  p.SetXYZ(GmPoint3D(x, y, z));
  return p;
}

Quarp::DbPtr<IOF::DbIOFNciToolChange> Tool(int number, const wchar_t* name, double diameter, bool live, int holderType,
                                           int genType) {
  auto tool = IOF::DbIOFNciToolChange::Create();
  tool->SetGCode(1000);
  tool->SetToolNum(number);
  tool->SetToolSlotId(number);
  tool->SetToolStation(number);
  tool->SetToolType(static_cast<std::int16_t>(genType == 2 ? 1 : 10));
  tool->SetLengthOffsetNum(number);
  tool->SetDiaOffsetNum(number);
  tool->SetToolName(CString(name));
  tool->SetToolDiameter(diameter);
  tool->SetOverallLength(120.0);
  tool->SetHolderLength(45.0);
  tool->SetIsToolLive(live);
  tool->SetToolHolderType(holderType);
  tool->SetToolGenType(genType);
  tool->SetTurretIndexPosition(number);
  return tool;
}

void MainSpindle(Producer& p, IOF::DbIOFStream& stream) {
  // Face and contour with a turning tool.
  auto op = p.Operation(
      stream, L"Face and contour",
      {1, IOF::IofToolPathTypes::TP_TURN_ROUGH, L"Lathe Rough", L"FACE AND ROUGH THE OD", IOF::IofOpTypes::Lathe});
  p.ToolChange(stream, *op, Tool(1, L"CNMG 120408 rough", 0.8, false, 2, 1));
  p.Plane(stream, *op, GmXformMat3D::RotY(std::numbers::pi / 2), 54, L"Lathe plane, main spindle");
  IOF::DbIOFList& cut = p.SubOp(*op, {300, 1800, GmPoint3D(42, 0, 2), IOF::DbIOFApproach::kPrecededByPhysicalTC,
                                      IOF::DbIOFNciSubOp::ToolOrientType::FACE, IOF::IofArcPlaneType::XZ});
  auto comp = IOF::DbIOFEvComp::Create();
  comp->SetCompensationType(3);  // G42
  cut.PushBack(p.Add(comp));
  p.Linear(cut, GmPoint3D(42, 0, 2), 0, true, IOF::ContourPositionState::Before);
  p.Linear(cut, GmPoint3D(-1.6, 0, 0), 250, false, IOF::ContourPositionState::LeadIn);
  p.Linear(cut, GmPoint3D(-1.6, 0, 1), 250, false, IOF::ContourPositionState::LeadOut);
  for (int pass = 0; pass < 6; ++pass) {
    const double x = 40.0 - 3.0 * pass;
    p.Linear(cut, GmPoint3D(x, 0, 1), 0, true, IOF::ContourPositionState::Transition);
    p.Linear(cut, GmPoint3D(x, 0, -35), 300, false);
  }
  // A shoulder radius, with the block as the NC output sees it.
  auto arc = IOF::DbIOFNciArc::Create();
  arc->SetGCode(3);
  arc->SetArcPlane(IOF::IofArcPlaneType::XZ);
  arc->SetStartPoint(GmPoint3D(22, 0, -35));
  arc->SetEndPoint(GmPoint3D(26, 0, -39));
  arc->SetCenterPoint(GmPoint3D(26, 0, -35));
  arc->SetRadius(4);
  arc->SetSweepAngle(90);
  arc->SetStartAngle(180);
  arc->SetEndAngle(270);
  arc->SetFeedRate(150);
  arc->SetTime(0.9);
  cut.PushBack(p.Add(arc));
  auto arcBlock = IOF::DbIOFArcMotionBlock::Create();
  arcBlock->SetEndPt(MovePoint(26, 0, -39));
  arcBlock->SetStartPt(MovePoint(22, 0, -35));
  arcBlock->SetCenterPt(MovePoint(26, 0, -35));
  arcBlock->SetNCPlane(IOF::IofArcPlaneType::XZ);
  p.SubList(*arc, IOF::DbIOFList::kMotionSubList, arcBlock);
  auto off = IOF::DbIOFEvComp::Create();
  off->SetCompensationType(1);  // G40
  cut.PushBack(p.Add(off));
  auto note = IOF::DbIOFNciManualEntry::Create();
  note->SetComment(CString(L"CHECK INSERT WEAR"));
  op->PushBack(p.Add(note));
  p.Retract(*op, IOF::DbIOFRetract::kFollowedByPhysicalTC);

  // Five-axis swarf milling with a live tool in the B axis.
  auto swarf = p.Operation(stream, L"Swarf mill, live tool",
                           {2, IOF::IofToolPathTypes::TP_CONTOUR_5AXIS, L"Multiaxis Swarf", L"SWARF THE FLANK",
                            IOF::IofOpTypes::Mill, 1, 1, true, 8000});
  swarf->SetMillOpSubType(IOF::IofMillOpSubTypes::MILL_PLANE_ROTATION);
  p.ToolChange(stream, *swarf, Tool(7, L"Flat end mill 10 mm", 10.0, true, 2, 2));
  GmXformMat3D tilted = GmXformMat3D::Translate(0, 0, 10);
  tilted.RotYThis(std::numbers::pi / 6);
  p.Plane(stream, *swarf, tilted, 54, L"B30");
  IOF::DbIOFList& flank = p.SubOp(*swarf, {800, 2400, GmPoint3D(30, 0, 5)});
  auto code = IOF::DbIOFNciGeneric::Create();
  code->SetGCode(1016);
  const unsigned char block[] = {0x4D, 0x32, 0x33, 0x00, 0x01};
  code->SetGenericBlock(sizeof block, block);
  flank.PushBack(p.Add(code));
  for (int i = 0; i <= 8; ++i) {
    const double a = i * std::numbers::pi / 16;
    auto move = IOF::DbIOFNciMultiAx::Create();
    move->SetGCode(1);
    move->SetToolTipPt(GmPoint3D(30 * std::cos(a), 30 * std::sin(a), -5.0));
    move->SetToolOrientVect(GmVector3D(0.5 * std::cos(a), 0.5 * std::sin(a), std::sqrt(0.75)));
    move->SetFeedRate(800);
    move->SetTime(0.45);
    flank.PushBack(p.Add(move));
    auto machine = IOF::DbIOFMultiAxMotionBlock::Create();
    machine->SetEndPt(MovePoint(30 * std::cos(a), 30 * std::sin(a), 12.0));
    machine->SetInputPt(move->GetToolTipPt());
    machine->SetToolOrientVec(move->GetToolOrientVect());
    machine->SetG434EndPt(move->GetToolTipPt());
    p.SubList(*move, IOF::DbIOFList::kMachineBasedMotionSubList, machine);
  }
  // A helical ramp down into the pocket.
  auto helix = IOF::DbIOFNciArc3D::Create();
  helix->SetGCode(2);
  helix->SetCenterPoint(GmPoint3D(0, 0, -5));
  helix->SetRadius(8);
  helix->SetSweepAngle(-4 * std::numbers::pi);
  helix->SetHelicalPitch(-1.5);
  helix->SetFeedRate(600);
  helix->SetTime(1.2);
  flank.PushBack(p.Add(helix));

  auto dwell = IOF::DbIOFEvDwell::Create();
  dwell->SetDwellTime(1.5);
  dwell->SetSpindleSpeed(2400);
  dwell->SetSpindleDir(3);
  flank.PushBack(p.Add(dwell));
  p.Retract(*swarf, IOF::DbIOFRetract::kEOF);
  auto sync = IOF::DbIOFEvSync::Create();
  sync->SetSyncId(1);
  sync->SetComment(CString(L"Hand over to the sub spindle"));
  stream.PushBack(p.Add(sync));
}

void SubSpindle(Producer& p, IOF::DbIOFStream& stream) {
  auto sync = IOF::DbIOFEvSync::Create();
  sync->SetSyncId(1);
  sync->SetComment(CString(L"Take the part over"));
  stream.PushBack(p.Add(sync));
  auto clamp = IOF::DbIOFEvClamp::Create();
  clamp->SetIsClamping(true);
  clamp->SetTime(0.8);
  stream.PushBack(p.Add(clamp));

  auto op = p.Operation(stream, L"Drill back face",
                        {3, IOF::IofToolPathTypes::TP_DRILL_FACEPLANAR, L"Drill", L"DRILL 4X 6.8 ON 24 BC",
                         IOF::IofOpTypes::Drill, 2, 2});
  p.ToolChange(stream, *op, Tool(12, L"Drill 6.8", 6.8, false, 3, 2));
  p.Plane(stream, *op, GmXformMat3D::RotX(std::numbers::pi), 55, L"Back face, sub spindle");
  IOF::DbIOFList& cut = p.SubOp(*op, {240, 2000, GmPoint3D(12, 0, 2)});
  auto units = IOF::DbIOFEvChangeFeedUnitType::Create();
  units->SetUnitType(0);  // feed per minute from here on
  cut.PushBack(p.Add(units));
  const double holes[4][2] = {{12, 0}, {0, 12}, {-12, 0}, {0, -12}};  // a bolt circle of four
  for (const auto& hole : holes) {
    const GmPoint3D top(hole[0], hole[1], 2);
    p.Linear(cut, top, 0, true, IOF::ContourPositionState::Before);
    const DbId feedId = p.Linear(cut, GmPoint3D(top.x, top.y, -18), 240, false);  // 0.12 mm/rev at 2000 rpm
    p.Linear(cut, top, 0, true, IOF::ContourPositionState::After);
    Quarp::DbPtr<IOF::DbIOFNciLinear> feed;
    if (p.mgr.Get(feed, feedId, 0)) {
      auto drill = IOF::DbIOFDrillMotionBlock::Create();
      drill->SetEndPt(MovePoint(top.x, top.y, -18));
      drill->SetEndPoint2(MovePoint(top.x, top.y, 2));
      p.SubList(*feed, IOF::DbIOFList::kDrillLonghandBlock, drill);
    }
  }
  auto plain = IOF::DbIOFMotionBlock::Create();
  plain->SetEndPt(MovePoint(0, 0, 50));
  cut.PushBack(p.Add(plain));
  p.Retract(*op, IOF::DbIOFRetract::kEOF);
  auto release = IOF::DbIOFEvClamp::Create();
  release->SetTime(0.5);
  stream.PushBack(p.Add(release));
}

}  // namespace

int RunDemo(const std::string& outFile, std::ostream& out) {
  Producer p;
  auto doc = IOF::DbIOFDocument::Create();
  doc->SetFileName(CString(L"flange.mcam"));
  doc->SetNcFilename(CString(L"flange.nc"));
  doc->SetIOFName(CString(L"Flange, mill-turn demonstration"));
  p.Add(doc);

  Quarp::DbPtr<IOF::DbIOFStream> main, sub;
  p.mgr.Get(main, doc->AddStreamToList(1), 0);
  p.mgr.Get(sub, doc->AddStreamToList(2), 0);
  p.made["DbIOFStream"] += 2;
  main->SetIOFName(CString(L"Main spindle"));
  main->SetNCOutputFile(CString(L"flange_main.nc"));
  sub->SetIOFName(CString(L"Sub spindle"));
  sub->SetNCOutputFile(CString(L"flange_sub.nc"));
  MainSpindle(p, *main);
  SubSpindle(p, *sub);

  const Quarp::DbErr err = p.mgr.Write(Quarp::UtString(outFile.c_str()));
  if (err != Quarp::DbErr::Ok) {
    std::cerr << "iof: " << p.mgr.GetLastErrorText() << "\n";
    return kDataError;
  }
  auto count = [&](const char* cls) { return p.made.count(cls) ? p.made.at(cls) : 0; };
  const int moves = count("DbIOFNciLinear") + count("DbIOFNciArc") + count("DbIOFNciArc3D") + count("DbIOFNciMultiAx");
  const int blocks = count("DbIOFMotionBlock") + count("DbIOFArcMotionBlock") + count("DbIOFDrillMotionBlock") +
                     count("DbIOFMultiAxMotionBlock");
  const int events = count("DbIOFEvSync") + count("DbIOFEvDwell") + count("DbIOFEvComp") + count("DbIOFEvClamp") +
                     count("DbIOFEvChangeFeedUnitType");
  out << "wrote " << outFile << "\n";
  out << "A mill-turn flange in " << p.mgr.GetCount() << " records: a document with two streams, the main spindle ("
      << main->Size() << " items) and the sub spindle (" << sub->Size() << " items), " << count("DbIOFNciOperation")
      << " operations with " << count("DbIOFNciSubOp") << " sub-operations, " << count("DbIOFApproach")
      << " approaches and " << count("DbIOFRetract") << " retracts, " << count("DbIOFList")
      << " lists (motion lists and motion sub-lists), " << count("DbIOFNciToolChange") << " tool changes, "
      << count("DbIOFNciPlane") << " planes with work offsets 54 and 55, " << moves << " moves ("
      << count("DbIOFNciLinear") << " linear, " << count("DbIOFNciArc") << " arc, " << count("DbIOFNciArc3D")
      << " 3-D arc, " << count("DbIOFNciMultiAx") << " multi-axis), " << blocks << " motion blocks, "
      << count("DbIOFNciGeneric") << " generic code, " << count("DbIOFNciManualEntry") << " manual entry and " << events
      << " events. Try: iof dump " << outFile << "\n";
  out << "records by class:\n";
  for (const auto& [cls, n] : p.made) {
    char line[96];
    std::snprintf(line, sizeof line, "  %-28s %10d\n", cls.c_str(), n);
    out << line;
  }
  return kOk;
}

}  // namespace IofTool
