// iof demo: writes a realistic demonstration job, the way a toolpath producer would.
//
// A mill-turn part on a two-spindle lathe: the job setup (stock, chucks, part spindles,
// reference points) and the machine; on the main spindle a bar feed, facing and
// contouring, the tail stock and steady rest, a thread cycle, a five-axis swarf pass with
// a live tool, the turret parked and the spindles synchronised; the sub spindle takes
// the part over and peck-drills a bolt circle with a drill cycle and a sub-program call.
// The two streams meet at a sync point. Each machining operation holds its tool change
// and plane, a sub-operation (its approach, then a motion list with the cut) and its
// retract; each machine operation stands in an operation of its own.
#include "Commands.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFArcMotionBlock.h>
#include <iof/DbIOFChuckDef.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFDrill.h>
#include <iof/DbIOFDrillMotionBlock.h>
#include <iof/DbIOFDrillPoint.h>
#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvClamp.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFJobSetup.h>
#include <iof/DbIOFList.h>
#include <iof/DbIOFMachineInfo.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFMultiAxMotionBlock.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciMOpBarFeed.h>
#include <iof/DbIOFNciMOpBarFeeder.h>
#include <iof/DbIOFNciMOpSpindleGrip.h>
#include <iof/DbIOFNciMOpSpindleMove.h>
#include <iof/DbIOFNciMOpSpindleSync.h>
#include <iof/DbIOFNciMOpSteadyRest.h>
#include <iof/DbIOFNciMOpTailStock.h>
#include <iof/DbIOFNciMOpTurret.h>
#include <iof/DbIOFNciManualEntry.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciSubProgRef.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFPartSpindle.h>
#include <iof/DbIOFPartSpindleMap.h>
#include <iof/DbIOFReferencePoint.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStockDef.h>
#include <iof/DbIOFStream.h>
#include <iof/DbIOFThread.h>
#include <quarp/DbMgr.h>

#include <cmath>
#include <cstdio>
#include <initializer_list>
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
  void Retract(IOF::DbIOFNciOperation& op, int type, DbId referencePoint = DbId()) {
    auto retract = IOF::DbIOFRetract::Create();
    retract->SetIOFName(CString(L"Retract"));
    retract->SetRetractType(type);
    retract->SetReferencePointId(referencePoint);
    retract->SetEndPoint(m_at);
    retract->GetAttributes().AddAttribute(CString(L"T_RETRACT_STRATEGY"), L"Rapid to home");
    op.PushBack(Add(retract));
  }

  // A machine operation of class M (bar feed, spindle sync, turret, ...) appended to
  // `op`, an operation with the matching misc tool-path type; returns it for its
  // settings.
  template <class M>
  Quarp::DbPtr<M> Machine(IOF::DbIOFNciOperation& op) {
    auto misc = M::Create();
    misc->SetStreamId(op.GetStreamId());
    misc->SetOperationId(m_opId);
    op.PushBack(Add(misc));
    return misc;
  }
  // An operation holding one machine operation of class M.
  template <class M>
  Quarp::DbPtr<M> MachineOp(IOF::DbIOFStream& stream, const wchar_t* name, const OpHeader& header) {
    return Machine<M>(*Operation(stream, name, header));
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

// The reference points the streams and machine operations name.
struct ReferencePoints {
  DbId mainHome, subHome, park;
};

DbId ReferencePoint(Producer& p, IOF::DbIOFList& into, const wchar_t* name, int stream, int spindle, int type, double x,
                    double z) {
  auto point = IOF::DbIOFReferencePoint::Create();
  point->SetIOFName(CString(name));
  point->SetComment(CString(L"from the machine definition"));
  point->SetGuid(CString::Formatted(L"{6F1E2D3C-0000-4000-8000-%012d}", stream * 100 + type));
  point->SetStreamID(stream);
  point->SetActiveSpindle(spindle);
  point->SetActiveTurret(1);
  point->SetSourceType(IOF::DbIOFReferencePoint::kMachine);
  point->SetPositionType(type);
  IOF::UtAxisMotionMap at;
  at.AddMotion(IOF::X, IOF::Coordinate, x);
  at.AddMotion(IOF::Z, IOF::Coordinate, z);
  point->SetCoordinates(at);
  point->SetNCOutput(CString(type == IOF::DbIOFReferencePoint::kHome ? L"G28 U0 W0" : L"G53 X200. Z100."));
  const DbId id = p.Add(point);
  into.PushBack(id);
  return id;
}

// The job setup (stock, chucks, part spindles and the reference points, which stand as
// its items) and the machine: a two-spindle mill-turn lathe with a live-tool turret.
ReferencePoints JobSetupAndMachine(Producer& p, IOF::DbIOFDocument& doc) {
  auto setup = IOF::DbIOFJobSetup::Create();
  setup->SetIOFName(CString(L"Flange job setup"));
  setup->SetFileDescriptor(CString(L"Flange 50 x 40, AlMg3"));
  setup->SetChordDevTol(0.002);
  setup->SetPartLength(40);
  setup->SetMachineGroupName(CString(L"Machine Group-1"));
  setup->SetMachineGroupToolProgramNumber(1);
  setup->SetWCSName(CString(L"TOP"));
  setup->SetMaterialName(CString(L"AlMg3"));
  setup->SetMaterialComment(CString(L"EN AW-5754"));
  setup->SetInitialSpindleID(1);
  setup->SetDoStockTransfer(true);
  setup->SetJobSetupType(1);
  setup->SetIsDstSpindleEnabled(true);
  setup->SetNumParts(1);
  setup->SetStockOD(50);
  setup->SetExtraStockFace(1.5);
  setup->SetPickOffZPosition(-42);
  setup->SetCutoffWidth(3);
  setup->SetLeftChuckJawLength(30);
  setup->SetLeftChuckJawHeight(25);
  setup->SetLeftChuckJawThickness(20);
  setup->SetLeftChuckThickness(60);
  setup->SetPartStickOutFromLeftJawFace(45);
  setup->SetLeftWorkOffsetNo(54);
  setup->SetRightChuckJawLength(25);
  setup->SetRightChuckJawHeight(20);
  setup->SetRightChuckThickness(50);
  setup->SetRightWorkOffsetNo(55);
  setup->SetPartStickOutDistance(45);
  setup->SetPartStickOutReference(IOF::DbIOFJobSetup::kStickOutFromJawFace);
  setup->SetLeftChuckMCOArray({CString(L"chuck_200.mco")});
  setup->SetLeftJawsMCOArray({CString(L"jaw_hard.mco"), CString(L"jaw_hard.mco"), CString(L"jaw_hard.mco")});
  setup->SetMachineFileName(CString(L"twin_spindle_lathe.mcam-lmd"));
  doc.SetJobSetupID(p.Add(setup));

  auto spindles = IOF::DbIOFPartSpindleMap::Create();
  setup->PushBack(p.Add(spindles));
  for (int number : {1, 2}) {
    if (spindles->Add(number).IsNull()) continue;
    for (const char* made : {"DbIOFPartSpindle", "DbIOFStockDef", "DbIOFChuckDef"}) ++p.made[made];
  }
  ReferencePoints refs;
  refs.mainHome = ReferencePoint(p, *setup, L"Home, main spindle", 1, 1, IOF::DbIOFReferencePoint::kHome, 200, 150);
  refs.subHome = ReferencePoint(p, *setup, L"Home, sub spindle", 2, 2, IOF::DbIOFReferencePoint::kHome, 200, -150);
  refs.park = ReferencePoint(p, *setup, L"Turret park", 1, 1, IOF::DbIOFReferencePoint::kParkLeft, 250, 300);

  using M = IOF::DbIOFMachineInfo;
  auto machine = M::Create();
  machine->SetIOFName(CString(L"Machine"));
  machine->SetMachineName(CString(L"Twin-spindle mill-turn lathe"));
  machine->SetMachineType(M::kMillTurn);
  machine->SetAxes({{CString(L"X"), M::kLinear, -10.0, 260.0},
                    {CString(L"Y"), M::kLinear, -50.0, 50.0},
                    {CString(L"Z"), M::kLinear, -600.0, 5.0},
                    {CString(L"B"), M::kRotary, -120.0, 120.0},
                    {CString(L"C"), M::kRotary, -360.0, 360.0}});
  machine->SetSpindles({{1, CString(L"Main spindle"), 4000.0}, {2, CString(L"Sub spindle"), 6000.0}});
  machine->SetTurrets({{1, CString(L"B-axis turret"), 12}});
  machine->SetAxisCombinations({{1, IOF::DbIOFAxisComboMiscInfo(CString(L"Turret / main spindle"), 1, 1, 0)},
                                {2, IOF::DbIOFAxisComboMiscInfo(CString(L"Turret / sub spindle"), 1, 2, 1)}});
  machine->SetComponentTypes({{10, CString(L"Chuck"), {{CString(L"ClampForce"), IOF::IOFAttrbType::Double, L"kN"}}},
                              {20, CString(L"Steady rest"), {{CString(L"Range"), IOF::IOFAttrbType::Double, L"mm"}}}});
  IOF::DbIOFMPParams mainChuck(CString(L"Main chuck"), 10);
  mainChuck.GetParams().AddAttribute(CString(L"ClampForce"), 45.0);
  IOF::DbIOFMPParams steady(CString(L"Steady rest"), 20);
  steady.GetParams().AddAttribute(CString(L"Range"), 80.0);
  machine->SetComponents({mainChuck, steady});
  doc.SetMachineInfoID(p.Add(machine));
  return refs;
}

void MainSpindle(Producer& p, IOF::DbIOFStream& stream, const ReferencePoints& refs) {
  stream.SetDefaultReferencePositionId(refs.mainHome);
  // Push new bar stock out to the face stop: the bar feeder on, the push, the feeder off.
  auto bar = p.Operation(
      stream, L"Bar feed",
      {10, IOF::IofToolPathTypes::TP_MISCOP_BARFEED_NOTOOL, L"Bar Feed", L"FEED NEW BAR", IOF::IofOpTypes::Misc});
  p.Machine<IOF::DbIOFNciMOpBarFeeder>(*bar)->SetIsOn(true);
  auto push = p.Machine<IOF::DbIOFNciMOpBarFeed>(*bar);
  push->SetSpindle(0);  // LH_HEAD
  push->SetFinalZPos(2.0);
  push->SetZOffset(0.5);
  push->SetFeedRate(1000);
  p.Machine<IOF::DbIOFNciMOpBarFeeder>(*bar);  // off

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
  // A shoulder radius from the end of the last pass, with the block as the NC output
  // sees it.
  p.Linear(cut, GmPoint3D(22, 0, -35), 300, false);
  auto arc = IOF::DbIOFNciArc::Create();
  arc->SetGCode(2);  // clockwise in G18 (Z across, X up): a quarter turn
  arc->SetArcPlane(IOF::IofArcPlaneType::XZ);
  arc->SetStartPoint(GmPoint3D(22, 0, -35));
  arc->SetEndPoint(GmPoint3D(26, 0, -39));
  arc->SetCenterPoint(GmPoint3D(26, 0, -35));
  arc->SetRadius(4);
  arc->SetSweepAngle(90);
  arc->SetClockwise(true);
  arc->SetStartAngle(270);
  arc->SetEndAngle(180);
  arc->SetFeedRate(150);
  arc->SetTime(0.9);
  cut.PushBack(p.Add(arc));
  p.m_at = arc->GetEndPoint();
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

  // Support the part for threading: the tail stock's quill, then the steady rest.
  auto quill = p.MachineOp<IOF::DbIOFNciMOpTailStock>(
      stream, L"Tail stock",
      {11, IOF::IofToolPathTypes::TP_MISCOP_TAILSTOCK, L"Tailstock", L"QUILL IN", IOF::IofOpTypes::Misc});
  quill->SetActionType(IOF::DbIOFNciMOpTailStock::kQuillAdvance);
  quill->SetPosition(-60);
  quill->SetMoveDistance(25);
  quill->SetFeedRate(2000);
  quill->SetTime(2.0);
  auto rest = p.MachineOp<IOF::DbIOFNciMOpSteadyRest>(
      stream, L"Steady rest",
      {12, IOF::IofToolPathTypes::TP_MISCOP_STEADYREST, L"Steady Rest", L"CLAMP STEADY REST", IOF::IofOpTypes::Misc});
  rest->SetMotionType(IOF::DbIOFNciMOpSteadyRest::kClamp);
  rest->SetHomeXPosition(150);
  rest->SetHomeZPosition(-200);
  rest->SetFinalXPosition(50);
  rest->SetFinalZPosition(-20);
  rest->SetFeedRate(500);
  rest->SetDwellTime(0.5);
  rest->SetComponentEntityID(2);
  rest->SetSequenceNum(1);
  rest->SetLinkedSteadyRestComponentEntityIDList({2});
  rest->SetLinkedSteadyRestSequenceNumberList({1});
  rest->SetWorkOffsetNumber(54);

  // An M40 x 1.5 thread, cut as a canned thread cycle in four passes.
  auto thread = p.Operation(
      stream, L"Thread M40x1.5",
      {3, IOF::IofToolPathTypes::TP_TURN_THREAD, L"Lathe Thread", L"THREAD M40X1.5", IOF::IofOpTypes::Lathe});
  p.ToolChange(stream, *thread, Tool(3, L"Thread insert 60 deg", 0.1, false, 2, 1));
  p.Plane(stream, *thread, GmXformMat3D::RotY(std::numbers::pi / 2), 54, L"Lathe plane, main spindle");
  IOF::DbIOFList& passes = p.SubOp(*thread, {1.5 * 800, 800, GmPoint3D(44, 0, 5), IOF::DbIOFApproach::kReposition,
                                             IOF::DbIOFNciSubOp::ToolOrientType::FACE, IOF::IofArcPlaneType::XZ});
  auto cycle = IOF::DbIOFThread::Create();
  cycle->SetLead(1.5);
  cycle->SetNumStarts(1);
  cycle->SetNumCuts(4);
  cycle->SetNumSpringCuts(1);
  cycle->SetThreadStartX(40);
  cycle->SetThreadEndX(38.16);
  cycle->SetThreadStartZ(2);
  cycle->SetThreadEndZ(-20);
  cycle->SetFirstCut(0.35);
  cycle->SetLastCut(0.1);
  cycle->SetIncludedAngle(60);
  cycle->SetClearanceX(44);
  cycle->SetFinishAllowance(0.05);
  const DbId cycleId = p.Add(cycle);
  thread->SetCannedProgId(cycleId);
  passes.PushBack(cycleId);
  for (const double x : {39.3, 38.8, 38.4, 38.16}) {
    p.Linear(passes, GmPoint3D(x, 0, 5), 0, true, IOF::ContourPositionState::Transition);
    p.Linear(passes, GmPoint3D(x, 0, -20), 1.5 * 800, false);
    p.Linear(passes, GmPoint3D(44, 0, -20), 0, true, IOF::ContourPositionState::After);
  }
  p.Retract(*thread, IOF::DbIOFRetract::kFollowedByPhysicalTC);

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
    p.m_at = move->GetToolTipPt();
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
  p.m_at = helix->GetEndPoint();

  auto dwell = IOF::DbIOFEvDwell::Create();
  dwell->SetDwellTime(1.5);
  dwell->SetSpindleSpeed(2400);
  dwell->SetSpindleDir(3);
  flank.PushBack(p.Add(dwell));
  p.Retract(*swarf, IOF::DbIOFRetract::kFollowedByNullTC);

  // Park the turret at its reference point, then run both spindles in step for the
  // hand-over.
  auto park = p.MachineOp<IOF::DbIOFNciMOpTurret>(
      stream, L"Park turret",
      {13, IOF::IofToolPathTypes::TP_MISCOP_TURRETPARK, L"Turret Park", L"PARK TURRET", IOF::IofOpTypes::Misc});
  IOF::UtAxisMotionMap parkAt;
  parkAt.AddMotion(IOF::X, IOF::Coordinate, 250);
  parkAt.AddMotion(IOF::Z, IOF::Coordinate, 300);
  park->SetAxisMotionMap(parkAt);
  park->SetMoveBreakStrategy(IOF::DbIOFNciMOpTurret::kXFirst);
  park->SetRefPosId(refs.park);
  auto lockstep =
      p.MachineOp<IOF::DbIOFNciMOpSpindleSync>(stream, L"Spindle sync",
                                               {14, IOF::IofToolPathTypes::TP_MISCOP_SPINDLE_SYNC, L"Spindle Sync",
                                                L"SYNC SPINDLES FOR PICK-OFF", IOF::IofOpTypes::Misc});
  lockstep->SetSpindleSyncType(IOF::DbIOFNciMOpSpindleSync::kSync);
  lockstep->SetMasterSpindle(IOF::DbIOFNciMOpSpindleSync::kMasterLeft);
  lockstep->SetSpindleSpeedRpm(1500);
  lockstep->SetIsRapidMove(false);
  lockstep->SetRotaryFeedRate(3600);
  auto sync = IOF::DbIOFEvSync::Create();
  sync->SetSyncId(1);
  sync->SetComment(CString(L"Hand over to the sub spindle"));
  stream.PushBack(p.Add(sync));
}

void SubSpindle(Producer& p, IOF::DbIOFStream& stream, const ReferencePoints& refs) {
  auto sync = IOF::DbIOFEvSync::Create();
  sync->SetSyncId(1);
  sync->SetComment(CString(L"Take the part over"));
  stream.PushBack(p.Add(sync));
  // The sub spindle comes forward, grips the part, and takes it back.
  auto forward =
      p.MachineOp<IOF::DbIOFNciMOpSpindleMove>(stream, L"Sub spindle forward",
                                               {20, IOF::IofToolPathTypes::TP_MISCOP_SPINDLE_MOVE, L"Spindle Move",
                                                L"SUB SPINDLE TO PICK-OFF", IOF::IofOpTypes::Misc, 2, 1});
  forward->SetSpindle(1);  // RH_HEAD
  forward->SetMotionType(IOF::DbIOFNciMOpSpindleMove::kLinear);
  forward->SetLinearZPos(-42);
  forward->SetGripLength(20);
  forward->SetIsRapidMove(true);
  auto grip =
      p.MachineOp<IOF::DbIOFNciMOpSpindleGrip>(stream, L"Grip",
                                               {21, IOF::IofToolPathTypes::TP_MISCOP_SPINDLE_GRIP, L"Spindle Grip",
                                                L"GRIP AND TRANSFER", IOF::IofOpTypes::Misc, 2, 1});
  grip->SetSpindle(1);
  grip->SetIsClamping(true);
  grip->SetIsTransferStock(true);
  grip->SetDwell(0.5);
  stream.SetDefaultReferencePositionId(refs.subHome);
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
  // A peck-drilling cycle on a bolt circle of four: the cycle's record, its drill points
  // as its items (each with the longhand block the NC output sees), and a call of the
  // chamfering sub-program at the end.
  auto drill = IOF::DbIOFDrill::Create();
  drill->SetCycleType(2);  // peck drilling
  drill->SetPeck1(4.0);
  drill->SetPeck2(2.0);
  drill->SetChipRetract(0.5);
  Quarp::UtArrayEx<double> custom;
  drill->GetCustomParams(custom);
  custom[0] = 0.12;  // feed per revolution, as the cycle's producer notes it
  drill->SetCustomParams(custom);
  const DbId drillId = p.Add(drill);
  op->SetCannedProgId(drillId);
  cut.PushBack(drillId);
  const double holes[4][2] = {{12, 0}, {0, 12}, {-12, 0}, {0, -12}};
  for (const auto& hole : holes) {
    auto point = IOF::DbIOFDrillPoint::Create();
    point->SetGCode(83);
    point->SetEndPoint1(GmPoint3D(hole[0], hole[1], 2));
    point->SetEndPoint2(GmPoint3D(hole[0], hole[1], -18));
    point->SetInitHeight(10);
    point->SetRefHeight(2);
    point->SetTopOfStock(0);
    point->SetBottom(-18);
    point->SetFeedRate(240);  // 0.12 mm/rev at 2000 rpm
    point->SetOperationId(static_cast<int>(op.GetId().Value()));
    point->SetTime(20.0 / 240 * 60);
    drill->PushBack(p.Add(point));
    p.m_at = point->GetEndPoint1();  // each hole ends back at its top
    auto block = IOF::DbIOFDrillMotionBlock::Create();
    block->SetEndPt(MovePoint(hole[0], hole[1], -18));
    block->SetEndPoint2(MovePoint(hole[0], hole[1], 2));
    p.SubList(*point, IOF::DbIOFList::kDrillLonghandBlock, block);
  }
  auto chamfer = IOF::DbIOFNciSubProgRef::Create();
  chamfer->SetGCode(98);
  chamfer->SetSubProgNum(9001);
  chamfer->SetIOFName(CString(L"Chamfer the four holes"));
  cut.PushBack(p.Add(chamfer));
  auto plain = IOF::DbIOFMotionBlock::Create();
  plain->SetEndPt(MovePoint(0, 0, 50));
  cut.PushBack(p.Add(plain));
  p.Retract(*op, IOF::DbIOFRetract::kEOF, refs.subHome);
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
  const ReferencePoints refs = JobSetupAndMachine(p, *doc);
  MainSpindle(p, *main, refs);
  SubSpindle(p, *sub, refs);

  const Quarp::DbErr err = p.mgr.Write(Quarp::UtString(outFile.c_str()));
  if (err != Quarp::DbErr::Ok) {
    std::cerr << "iof: " << p.mgr.GetLastErrorText() << "\n";
    return kDataError;
  }
  auto count = [&](std::initializer_list<const char*> classes) {
    int n = 0;
    for (const char* cls : classes) n += p.made.count(cls) ? p.made.at(cls) : 0;
    return n;
  };
  const int machineOps =
      count({"DbIOFNciMOpBarFeed", "DbIOFNciMOpBarFeeder", "DbIOFNciMOpSpindleGrip", "DbIOFNciMOpSpindleMove",
             "DbIOFNciMOpSpindleSync", "DbIOFNciMOpSteadyRest", "DbIOFNciMOpTailStock", "DbIOFNciMOpTurret"});
  out << "wrote " << outFile << "\n";
  out << "A mill-turn flange in " << p.mgr.GetCount() << " records: a document with its job setup ("
      << count({"DbIOFPartSpindle"}) << " part spindles with stock and chuck, " << count({"DbIOFReferencePoint"})
      << " reference points), the machine, and two streams, the main spindle (" << main->Size()
      << " items) and the sub spindle (" << sub->Size() << " items); " << count({"DbIOFNciOperation"})
      << " operations with " << count({"DbIOFNciSubOp"}) << " sub-operations, approaches and retracts; " << machineOps
      << " machine operations; " << count({"DbIOFNciToolChange"}) << " tool changes; " << count({"DbIOFNciPlane"})
      << " planes with work offsets 54 and 55; "
      << count({"DbIOFNciLinear", "DbIOFNciArc", "DbIOFNciArc3D", "DbIOFNciMultiAx"})
      << " moves (linear, arc, 3-D arc, multi-axis); a drill cycle with " << count({"DbIOFDrillPoint"})
      << " drill points, a thread cycle and a sub-program call; "
      << count({"DbIOFMotionBlock", "DbIOFArcMotionBlock", "DbIOFDrillMotionBlock", "DbIOFMultiAxMotionBlock"})
      << " motion blocks; "
      << count({"DbIOFEvSync", "DbIOFEvDwell", "DbIOFEvComp", "DbIOFEvClamp", "DbIOFEvChangeFeedUnitType"})
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
