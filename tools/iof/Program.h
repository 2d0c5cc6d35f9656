// A stream read as a machining program, the way `iof plot` and `iof post` read it: the
// stream walked in program order with the library's iterator, each record handed over
// with the operation, sub-operation, tool, plane and drill cycle in force, and the
// geometry both commands draw from the records (arcs broken into chords, drill holes,
// the machine axes of a multi-axis move).
//
// What the walk enters. Every list item (operations, sub-operations, motion lists, drill
// cycles) is yielded and then walked. Of the sub-lists that records carry, only drill
// cycles (kind 0x1000) are entered: the motion sub-lists under a move show that same
// move as the NC block carries it (machine axes, longhand drilling, ...), and a walk
// that entered them would yield the blocks instead of the move. The program reads them
// through the move where it needs them (MachineAxes).
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/DbIOFDocument.h>
#include <iof/DbIOFDrill.h>
#include <iof/DbIOFDrillPoint.h>
#include <iof/DbIOFNciArc.h>
#include <iof/DbIOFNciArc3D.h>
#include <iof/DbIOFNciOperation.h>
#include <iof/DbIOFNciPlaneBase.h>
#include <iof/DbIOFNciSubOp.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/GmPoint3D.h>
#include <iof/GmXformMat3D.h>
#include <iof/UtIofMovePoint.h>
#include <quarp/DbMgr.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace IofTool {

// What is in force at a record of the program.
struct ProgramState {
  int stream = -1;                                // the stream's number
  const IOF::DbIOFNciOperation* op = nullptr;     // the operation the record belongs to
  const IOF::DbIOFNciSubOp* subOp = nullptr;      // the sub-operation it belongs to
  const IOF::DbIOFNciToolChange* tool = nullptr;  // the last tool change (modal)
  const IOF::DbIOFNciPlaneBase* plane = nullptr;  // the last plane selected (modal)
  const IOF::DbIOFDrill* drill = nullptr;         // the drill cycle around the record, else the operation's
};

class Program {
 public:
  using Visitor = std::function<void(const IOF::DbIOFBase& record, const ProgramState& state)>;

  explicit Program(const Quarp::DbMgr& mgr);

  const IOF::DbIOFDocument* Document() const noexcept { return m_Doc; }
  // The ids of the streams to read: all of the document's, or the one numbered `only`
  // (none when there is no such stream).
  std::vector<Quarp::DbId> Streams(std::optional<int> only) const;
  // Walks a stream: `visit` for each record in program order, the state updated first
  // (a tool change sees itself as the tool, a sub-operation its own tool and plane).
  // Records that do not resolve are counted in Unreachable() and skipped.
  void Walk(Quarp::DbId stream, const Visitor& visit);
  std::size_t Unreachable() const noexcept { return m_Unreachable; }

  // The record `id` as a T, or null.
  template <class T>
  const T* Find(Quarp::DbId id) const {
    return dynamic_cast<const T*>(m_Mgr.Lookup(id));
  }
  const Quarp::DbMgr& Mgr() const noexcept { return m_Mgr; }

 private:
  const Quarp::DbMgr& m_Mgr;
  const IOF::DbIOFDocument* m_Doc = nullptr;
  std::size_t m_Unreachable = 0;
};

// Loads `file` into `mgr` and returns the ids of its streams to read: all the first
// document's, or the one numbered `only`. None, after one line on stderr, when the file
// cannot be read, holds no document or has no such stream.
std::vector<Quarp::DbId> LoadStreams(const std::string& file, std::optional<int> only, Quarp::DbMgr& mgr);

// Turning tools are indexed by the turret (T0101); a tool counts as one when it is a
// lathe tool (generation type 1) or sits in a turret or gang holder (holder types 2, 3).
bool IsTurretTool(const IOF::DbIOFNciToolChange& tool);
bool IsLatheTool(const IOF::DbIOFNciToolChange& tool);
// "T7 Flat end mill 10 mm"
std::string ToolLabel(const IOF::DbIOFNciToolChange& tool);

// The number of chords that keep within `tolerance` of an arc of `radius` turning
// through `sweep` radians (at least 1).
int ChordCount(double radius, double sweep, double tolerance);

// A planar arc's axes: the plane's first and second axes and its normal, as indices of
// x, y, z, in the order that makes G2 clockwise (G17 X Y Z, G18 Z X Y, G19 Y Z X); null
// for an arc in no plane.
const int* ArcAxes(IOF::IofArcPlaneType plane);
// The signed sweep in radians of a planar arc from its points and direction (a full
// circle when start and end meet); 0 for an arc in no plane.
double ArcSweep(const IOF::DbIOFNciArc& arc);
// The point of a planar arc at `t` (0 its start, 1 its end) of its sweep.
IOF::GmPoint3D ArcPointAt(const IOF::DbIOFNciArc& arc, double t);
// The points of a planar arc after its start, ending at its end point, with the third
// axis (a helix) moving evenly.
std::vector<IOF::GmPoint3D> ArcChords(const IOF::DbIOFNciArc& arc, double tolerance);
// The points of a 3-D arc after its start, ending at its end point, in the coordinates
// of the program: when the arc's coordinate system (m_ArcCSDbId) names a plane record,
// its points are mapped by that plane's matrix and back through `programPlane`'s (the
// plane the moves are written in); an id that names no plane leaves them as they are.
std::vector<IOF::GmPoint3D> Arc3DChords(const Program& program, const IOF::DbIOFNciArc3D& arc,
                                        const IOF::DbIOFNciPlaneBase* programPlane, double tolerance);
IOF::GmPoint3D Arc3DStart(const Program& program, const IOF::DbIOFNciArc3D& arc,
                          const IOF::DbIOFNciPlaneBase* programPlane);

// A drill point as a hole: X and Y of its point (m_EndPoint1, the top of the hole), the
// bottom at m_Bottom, the reference height the R plane, and the cycle returns to the initial height when that
// stands above the R plane (G98), else to the R plane (G99).
struct Hole {
  IOF::GmPoint3D bottom;
  double r;
  double init;
  bool toInit;  // returns to the initial height
  double ReturnHeight() const noexcept { return toInit ? init : r; }
};
Hole HoleOf(const IOF::DbIOFDrillPoint& point);

// The machine axes of a move: the end point of the first motion block in its
// machine-based motion sub-list, else in any of its sub-lists; none when it has none.
std::optional<IOF::UtIofMovePoint> MachineAxes(const Program& program, const IOF::DbIOFBase& move);

// The record's class name, for messages.
std::string ClassName(const IOF::DbIOFBase& record);

}  // namespace IofTool
