#include "Program.h"

#include "Commands.h"
#include "Walk.h"

#include <iof/DbIOFList.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFStream.h>
#include <iof/GmVector3D.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <numbers>

namespace IofTool {

namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr int kDrillCycleList = 0x1000;  // DbIOFDrill's list kind
constexpr int kMaxChords = 1 << 20;      // per arc, whatever the tolerance asks

IOF::GmPoint3D Map(const IOF::GmXformMat3D& m, const IOF::GmPoint3D& p) {
  const IOF::GmVector3D v = m * IOF::GmVector3D(p);
  return {v[0], v[1], v[2]};
}

}  // namespace

Program::Program(const Quarp::DbMgr& mgr) : m_Mgr(mgr) {
  Quarp::DbId at;
  Quarp::DbCPtr<IOF::DbIOFDocument> doc(nullptr);
  if (m_Mgr.GetNext(doc, at, 0)) m_Doc = doc.Get();
}

std::vector<Quarp::DbId> LoadStreams(const std::string& file, std::optional<int> only, Quarp::DbMgr& mgr) {
  if (!LoadFile(file, mgr)) return {};
  const Program program(mgr);
  if (!program.Document()) {
    std::cerr << "iof: '" << file << "' holds no document\n";
    return {};
  }
  std::vector<Quarp::DbId> streams = program.Streams(only);
  if (streams.empty()) {
    std::cerr << "iof: '" << file << "' has no stream" << (only ? " " + std::to_string(*only) : std::string()) << "\n";
  }
  return streams;
}

std::vector<Quarp::DbId> Program::Streams(std::optional<int> only) const {
  std::vector<Quarp::DbId> ids;
  if (!m_Doc) return ids;
  if (only) {
    const Quarp::DbId id = m_Doc->GetStreamById(*only);
    if (!id.IsNull()) ids.push_back(id);
    return ids;
  }
  for (const Quarp::DbId id : m_Doc->GetStreams()) ids.push_back(id);
  return ids;
}

void Program::Walk(Quarp::DbId streamId, const Visitor& visit) {
  Quarp::DbCPtr<IOF::DbIOFList> list(nullptr);
  if (!m_Mgr.Get(list, streamId, 0)) {
    ++m_Unreachable;
    return;
  }
  ProgramState state;
  if (const auto* stream = Find<IOF::DbIOFStream>(streamId)) state.stream = stream->GetStreamId();
  ToolIterator it(list, kDrillCycleList);
  // The lists the walk stands in, and what they say about the state; recomputed only
  // when they change.
  std::vector<const IOF::DbIOFList*> owners;
  const IOF::DbIOFDrill* drillAround = nullptr;
  ToolIterator::Step step = ToolIterator::Step::First;
  for (;;) {
    ToolIterator::Error error;
    const Quarp::DbId id = it.Move(step, error);
    step = ToolIterator::After(error);
    m_Unreachable += error == ToolIterator::Error::NotFound ? 1 : 0;
    if (error != ToolIterator::Error::None) continue;
    if (id.IsNull()) break;
    const auto* record = Find<IOF::DbIOFBase>(id);
    if (!record) {
      ++m_Unreachable;
      continue;
    }
    const auto& stack = it.GetSubListStack();
    if (stack.size() > kMaxNesting) {
      ++m_Unreachable;  // left out, with the tool's warning
      continue;
    }
    bool changed = owners.size() + 1 != stack.size();
    for (std::size_t k = 1; !changed && k < stack.size(); ++k) changed = owners[k - 1] != stack[k]->GetList();
    if (changed) {
      owners.clear();
      state.op = nullptr;
      state.subOp = nullptr;
      drillAround = nullptr;
      for (std::size_t k = 1; k < stack.size(); ++k) {
        const IOF::DbIOFList* owner = stack[k]->GetList();
        owners.push_back(owner);
        if (const auto* op = dynamic_cast<const IOF::DbIOFNciOperation*>(owner)) state.op = op;
        if (const auto* sub = dynamic_cast<const IOF::DbIOFNciSubOp*>(owner)) state.subOp = sub;
        if (const auto* drill = dynamic_cast<const IOF::DbIOFDrill*>(owner)) drillAround = drill;
      }
    }
    // The containers themselves, which the walk yields before their items.
    if (const auto* op = dynamic_cast<const IOF::DbIOFNciOperation*>(record)) {
      state.op = op;
      state.subOp = nullptr;
    } else if (const auto* sub = dynamic_cast<const IOF::DbIOFNciSubOp*>(record)) {
      state.subOp = sub;
      if (const auto* tool = Find<IOF::DbIOFNciToolChange>(sub->GetToolChangeId())) state.tool = tool;
      if (const auto* plane = Find<IOF::DbIOFNciPlaneBase>(sub->GetToolPlaneId())) state.plane = plane;
    } else if (const auto* tool = dynamic_cast<const IOF::DbIOFNciToolChange*>(record)) {
      state.tool = tool;
    } else if (const auto* plane = dynamic_cast<const IOF::DbIOFNciPlaneBase*>(record)) {
      state.plane = plane;
    } else if (const auto* change = dynamic_cast<const IOF::DbIOFNciToolPlaneChange*>(record)) {
      if (const auto* target = Find<IOF::DbIOFNciPlaneBase>(change->GetPlaneDbId())) state.plane = target;
    }
    state.drill = dynamic_cast<const IOF::DbIOFDrill*>(record);
    if (!state.drill) state.drill = drillAround;
    if (!state.drill && state.op) state.drill = Find<IOF::DbIOFDrill>(state.op->GetCannedProgId());
    visit(*record, state);
  }
}

bool IsLatheTool(const IOF::DbIOFNciToolChange& tool) { return tool.GetToolGenType() == 1; }

bool IsTurretTool(const IOF::DbIOFNciToolChange& tool) {
  return IsLatheTool(tool) || tool.GetToolHolderType() == 2 || tool.GetToolHolderType() == 3;
}

std::string ToolLabel(const IOF::DbIOFNciToolChange& tool) {
  std::string label = "T" + std::to_string(tool.GetToolNum());
  const std::string name = tool.GetToolName().ToUtf8();
  return name.empty() ? label : label + " " + name;
}

int ChordCount(double radius, double sweep, double tolerance) {
  double step = std::numbers::pi / 2;
  if (tolerance > 0 && radius > tolerance) step = std::min(step, 2 * std::acos(1 - tolerance / radius));
  const double n = std::ceil(std::abs(sweep) / step - 1e-9);
  return static_cast<int>(std::clamp(n, 1.0, static_cast<double>(kMaxChords)));
}

const int* ArcAxes(IOF::IofArcPlaneType plane) {
  static const int kAxes[3][3] = {{0, 1, 2}, {2, 0, 1}, {1, 2, 0}};
  const int p = static_cast<int>(plane);
  return p >= 0 && p < 3 ? kAxes[p] : nullptr;
}

double ArcSweep(const IOF::DbIOFNciArc& arc) {
  const int* ax = ArcAxes(arc.GetArcPlane());
  if (!ax) return 0;
  const IOF::GmPoint3D& s = arc.GetStartPoint();
  const IOF::GmPoint3D& e = arc.GetEndPoint();
  const IOF::GmPoint3D& c = arc.GetCenterPoint();
  const double a0 = std::atan2(s[ax[1]] - c[ax[1]], s[ax[0]] - c[ax[0]]);
  const double a1 = std::atan2(e[ax[1]] - c[ax[1]], e[ax[0]] - c[ax[0]]);
  double ccw = std::fmod(a1 - a0 + 2 * kTwoPi, kTwoPi);
  if (ccw < 1e-9 || kTwoPi - ccw < 1e-9) ccw = kTwoPi;  // start and end meet: a full circle
  return arc.IsClockwise() ? (ccw == kTwoPi ? -kTwoPi : ccw - kTwoPi) : ccw;
}

IOF::GmPoint3D ArcPointAt(const IOF::DbIOFNciArc& arc, double t) {
  const int* ax = ArcAxes(arc.GetArcPlane());
  const IOF::GmPoint3D& s = arc.GetStartPoint();
  const IOF::GmPoint3D& e = arc.GetEndPoint();
  if (!ax) return t < 1 ? s : e;
  const IOF::GmPoint3D& c = arc.GetCenterPoint();
  const double r0 = std::hypot(s[ax[0]] - c[ax[0]], s[ax[1]] - c[ax[1]]);
  const double r1 = std::hypot(e[ax[0]] - c[ax[0]], e[ax[1]] - c[ax[1]]);
  const double a = std::atan2(s[ax[1]] - c[ax[1]], s[ax[0]] - c[ax[0]]) + ArcSweep(arc) * t;
  const double r = r0 + (r1 - r0) * t;
  IOF::GmPoint3D p;
  p[ax[0]] = c[ax[0]] + r * std::cos(a);
  p[ax[1]] = c[ax[1]] + r * std::sin(a);
  p[ax[2]] = s[ax[2]] + (e[ax[2]] - s[ax[2]]) * t;
  return p;
}

std::vector<IOF::GmPoint3D> ArcChords(const IOF::DbIOFNciArc& arc, double tolerance) {
  const int* ax = ArcAxes(arc.GetArcPlane());
  if (!ax) return {arc.GetEndPoint()};
  const IOF::GmPoint3D& s = arc.GetStartPoint();
  const IOF::GmPoint3D& e = arc.GetEndPoint();
  const IOF::GmPoint3D& c = arc.GetCenterPoint();
  const double r = std::max(std::hypot(s[ax[0]] - c[ax[0]], s[ax[1]] - c[ax[1]]),
                            std::hypot(e[ax[0]] - c[ax[0]], e[ax[1]] - c[ax[1]]));
  const int n = ChordCount(r, ArcSweep(arc), tolerance);
  std::vector<IOF::GmPoint3D> points;
  points.reserve(static_cast<std::size_t>(n));
  for (int i = 1; i < n; ++i) points.push_back(ArcPointAt(arc, static_cast<double>(i) / n));
  points.push_back(e);
  return points;
}

namespace {

// The transform from a 3-D arc's own coordinates to the program's, if there is one.
std::optional<IOF::GmXformMat3D> ArcToProgram(const Program& program, const IOF::DbIOFNciArc3D& arc,
                                              const IOF::DbIOFNciPlaneBase* programPlane) {
  const auto* arcPlane = program.Find<IOF::DbIOFNciPlaneBase>(arc.GetArcCSDbId());
  if (!arcPlane || arcPlane == programPlane) return std::nullopt;
  IOF::GmXformMat3D toWorld;
  arcPlane->GetMatrix(toWorld);
  if (!programPlane) return toWorld;
  IOF::GmXformMat3D programMatrix;
  programPlane->GetMatrix(programMatrix);
  return IOF::GmXformMat3D(programMatrix.QuickInvert().GetTNTMatrix() * toWorld.GetTNTMatrix());
}

IOF::GmPoint3D Arc3DPoint(const IOF::DbIOFNciArc3D& arc, double t) {
  const double sweep = arc.GetSweepAngle() * t;
  const double turns = std::abs(sweep / kTwoPi);
  const double r = arc.GetRadius() + turns * arc.GetSpiralPitch();
  const double a = arc.GetStartAngle() + sweep;
  const IOF::GmPoint3D& c = arc.GetCenterPoint();
  return {c.x + r * std::cos(a), c.y + r * std::sin(a), c.z + turns * arc.GetHelicalPitch()};
}

}  // namespace

std::vector<IOF::GmPoint3D> Arc3DChords(const Program& program, const IOF::DbIOFNciArc3D& arc,
                                        const IOF::DbIOFNciPlaneBase* programPlane, double tolerance) {
  const double turns = std::abs(arc.GetSweepAngle() / kTwoPi);
  const double rMax = std::max(arc.GetRadius(), arc.GetRadius() + turns * arc.GetSpiralPitch());
  const int n = ChordCount(rMax, arc.GetSweepAngle(), tolerance);
  const auto map = ArcToProgram(program, arc, programPlane);
  std::vector<IOF::GmPoint3D> points;
  points.reserve(static_cast<std::size_t>(n));
  for (int i = 1; i <= n; ++i) {
    const IOF::GmPoint3D p = Arc3DPoint(arc, static_cast<double>(i) / n);
    points.push_back(map ? Map(*map, p) : p);
  }
  return points;
}

IOF::GmPoint3D Arc3DStart(const Program& program, const IOF::DbIOFNciArc3D& arc,
                          const IOF::DbIOFNciPlaneBase* programPlane) {
  const auto map = ArcToProgram(program, arc, programPlane);
  const IOF::GmPoint3D p = Arc3DPoint(arc, 0);
  return map ? Map(*map, p) : p;
}

Hole HoleOf(const IOF::DbIOFDrillPoint& point) {
  const IOF::GmPoint3D& at = point.GetEndPoint1();
  return {{at.x, at.y, point.GetBottom()},
          point.GetRefHeight(),
          point.GetInitHeight(),
          point.GetInitHeight() > point.GetRefHeight()};
}

std::optional<IOF::UtIofMovePoint> MachineAxes(const Program& program, const IOF::DbIOFBase& move) {
  for (const int kinds : {static_cast<int>(IOF::DbIOFList::kMachineBasedMotionSubList), -1}) {
    for (const Quarp::DbId id : move.GetSubLists()) {
      const auto* list = program.Find<IOF::DbIOFList>(id);
      if (!list || !(list->GetListType() & kinds)) continue;
      for (const auto* item = list->GetHead(); item; item = item->GetNext()) {
        if (const auto* block = program.Find<IOF::DbIOFMotionBlock>(item->GetId())) return block->GetEndPt();
      }
    }
  }
  return std::nullopt;
}

std::string ClassName(const IOF::DbIOFBase& record) { return record.GetClass().ToUtf8(); }

}  // namespace IofTool
