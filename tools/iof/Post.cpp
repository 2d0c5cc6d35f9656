// iof post: a reference post-processor. Each stream becomes an ISO (RS-274 style)
// G-code program, read the way a shop's post reads the database: the stream walked in
// program order (Program.h), each record's fields through its getters.
//
// How the records become NC code (the choices the data leaves to a post):
// - Program: "%", then per stream "O<stream number>" with the file and stream names, the
//   stream's tools as comments in order of first use, a safe-start block
//   (G20/G21 from the document's units, G90 G17 G40 G80), the body, M5 and M30, "%".
// - Tool change: a tool in a turret or gang holder, or any lathe tool (generation type
//   1), is indexed "T<tool><offset>" with two digits each (T0101; the offset is the
//   length offset number, else the tool number); any other tool is "T<n> M6" and its
//   first move carries "G43 H<length offset>". A tool change record for the tool in
//   the spindle is skipped unless the operation forces a tool change. After a change
//   every axis is output again.
// - Spindle: the sub-operation's spindle speed (else its approach rpm), "G96" when its
//   constant surface speed is on (with "G50 S<max>" from the operation's maximum
//   spindle speed), else "G97". Direction: the operation's tool spindle direction when
//   it turns a live tool (m_SpindleModeMill) or the tool is not a turret tool, else its
//   part spindle direction; Forward M3, Reverse M4, Stopped M5; NotApplicable falls
//   back to m_SpindleCCW (M4 when true, M3 when false); a mill tool with
//   m_ReverseMillToolSpindleDirection swaps M3 and M4. A dwell event with a spindle
//   speed sets S and direction (1 M4, 2 M5, 3 M3) before its G4.
// - Work offsets from the plane in force: 54 to 59 as G54 to G59, 0 to 5 as G54 to G59,
//   6 to 53 as "G54.1 P<n-5>"; -1 keeps the offset in force. A plane whose matrix
//   turns the axes is not output as a rotation: coordinates are written as the records
//   hold them (in the plane), with a comment and a warning, except for lathe tools,
//   whose planes turn the turning plane into X-Z by nature.
// - Plane selection G17/G18/G19 from the sub-operation's NC plane and each arc's plane;
//   G90/G91 from each move's incremental flag (records always hold absolute
//   positions); G20/G21 from the document. Feed-unit events: G94 per minute, G95 per
//   revolution, G93 inverse time.
// - Moves: G0 for rapids, G1 for feeds; modal words, unchanged axes and an unchanged F
//   are left out. Arcs in a plane: G2 (clockwise) or G3 with I J K from the start to the
//   centre in the arc's plane, the third axis of a helix with them; an arc in no plane,
//   3-D arcs (helical or spiral) as G1 chords within the tolerance, in the coordinates
//   of their own system (m_ArcCSDbId naming a plane maps them through that plane's
//   matrix into the program's plane; any other id leaves them as they are). Multi-axis
//   moves: the axes of their machine move point (the motion block under the move) when
//   it gives a rotary axis, else the tool tip; a tilted tool axis that no rotary axis gives is
//   a comment and a warning (once per stream). A motion block standing on its own is a block of its set
//   axes in the motion in force (G1 after an arc, G0 at the start). Approach and
//   retract records move the tool to their end point with G0.
// - Cutter compensation: compensation events (1 G40, 2 G41, 3 G42) and a move's own
//   m_CutterComp (40/41/42, or 1/2/3 as the events count; 0 leaves it) change it on the
//   next move, G41/G42 with "D<n>" from the sub-operation's diameter offset, else the
//   tool's, else the tool number.
// - Drill cycles: the drill record around the points, else the operation's
//   m_CannedProgId. Cycle type 0 G81, 1 G82 (P the point's dwell), 2 G83 and 3 G73 (Q the
//   first peck, else the full depth), 4 G84, 5 G85; G98 when the point's initial height
//   stands above its reference height, else G99 (the tool first goes over the first
//   hole at the higher of the two); X Y from the point's m_EndPoint1, Z its
//   m_Bottom, R its reference height, F its feed; later points give what
//   changed; G80 closes the cycle. Other cycle types are comments and a warning.
// - Sub-program references: "M98 P<number>" (with G91 when incremental; a sectioned
//   call names its section in a comment). Canned lathe calls (finish, pattern repeat,
//   rough) cannot be expressed: comment and warning.
// - Manual entries: their text as a comment, or as code when m_OutputCommentAsCode,
//   on the next move's block when m_IncludeWithMove. Sync events: the wait code
//   "M<100 + id>" in each channel's program (ids 0 to 99). Dwell: "G4 P<seconds>".
// - Generic codes, clamp events, machine operations, thread and groove cycles and any
//   other record that carries output the post cannot give: a comment in the program
//   and one warning per kind on stderr.
// - Numbers: 3 decimals (4 for inch), angles 3, trailing zeros dropped but the point
//   kept (X42.), never "-0"; S, T, D, H, P of M98 as integers. A lathe tool without a
//   Y axis gives no Y word while Y stays 0. Line numbers with
//   --line-numbers, N10 in steps of 10, on the program's blocks (not on comment lines).
#include "Commands.h"
#include "Program.h"

#include <iof/DbIOFApproach.h>
#include <iof/DbIOFEvChangeFeedUnitType.h>
#include <iof/DbIOFEvClamp.h>
#include <iof/DbIOFEvComp.h>
#include <iof/DbIOFEvDwell.h>
#include <iof/DbIOFEvSync.h>
#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFNciCFSubProgRef.h>
#include <iof/DbIOFNciCPSubProgRef.h>
#include <iof/DbIOFNciCRSubProgRef.h>
#include <iof/DbIOFNciGeneric.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciManualEntry.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFNciNonTransSubProgRef.h>
#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciToolPlaneChange.h>
#include <iof/DbIOFRetract.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace IofTool {

namespace {

// A number for NC: `decimals` fixed, trailing zeros dropped, the point kept, no "-0".
std::string Num(double v, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*f", decimals, v);
  std::string s = text;
  if (s.find('.') != std::string::npos) {
    while (s.back() == '0') s.pop_back();
  }
  if (s.find_first_not_of("-0.") == std::string::npos) return "0.";
  return s;
}

std::string Int(double v) { return std::to_string(std::lround(v)); }

// A comment: parentheses inside would end it early.
std::string Comment(std::string text) {
  for (char& c : text) {
    if (c == '(') c = '[';
    if (c == ')') c = ']';
    if (c == '\n' || c == '\r') c = ' ';
  }
  return "(" + text + ")";
}

std::string WorkOffset(int n) {
  if (n >= 54 && n <= 59) return "G" + std::to_string(n);
  if (n >= 0 && n <= 5) return "G" + std::to_string(54 + n);
  if (n >= 6 && n < 54) return "G54.1 P" + std::to_string(n - 5);
  return "";
}

// The cutter compensation code a move or an event asks for; empty for none.
std::string CompCode(int value, bool event) {
  if (value == 40 || value == 1) return "G40";
  if (value == 41 || value == 2) return "G41";
  if (value == 42 || value == 3) return "G42";
  return event || value == 0 ? "" : "?";
}

constexpr const char* kAxes = "XYZABC";
constexpr const char* kPlanes[3] = {"G17", "G18", "G19"};
constexpr const char* kCycles[6] = {"G81", "G82", "G83", "G73", "G84", "G85"};

// Writes one stream's program, keeping the modal state of the control.
class Writer {
 public:
  Writer(Program& program, const PostOptions& options, bool metric)
      : m_Program(program),
        m_Options(options),
        m_Metric(metric),
        m_Decimals(metric ? 3 : 4),
        m_Tolerance(metric ? options.tolerance : options.tolerance / 25.4) {}

  // The program of stream `id`, and its warnings in `warnings`.
  std::string Run(Quarp::DbId id, std::map<std::string, std::size_t>& warnings) {
    Block({m_Metric ? "G21" : "G20", "G90", "G17", "G40", "G80"});
    m_Modal = {{"distance", "G90"}, {"plane", "G17"}, {"comp", "G40"}, {"feedmode", "G94"}, {"css", "G97"}};
    m_Program.Walk(id, [this](const IOF::DbIOFBase& record, const ProgramState& state) { Record(record, state); });
    CloseCycle();
    if (m_Modal["comp"] != "G40") Block({"G40"});
    Flush();
    if (m_SpindleOn) Block({"M5"});
    Block({"M30"});
    warnings = m_Warnings;
    std::string head;
    const auto* stream = m_Program.Find<IOF::DbIOFStream>(id);
    const auto* doc = m_Program.Document();
    const std::string file = doc ? doc->GetFileName().ToUtf8() : std::string();
    const std::string title = (file.empty() ? file : file + ", ") + "stream " + std::to_string(m_Stream) +
                              (stream && !stream->GetIOFName().IsEmpty() ? " " + stream->GetIOFName().ToUtf8() : "");
    char number[16];
    std::snprintf(number, sizeof number, "O%04d", m_Stream < 0 ? 0 : m_Stream % 10000);
    head += std::string(number) + " " + Comment(title) + "\n";
    for (const std::string& tool : m_ToolList) head += Comment(tool) + "\n";
    return head + m_Out.str();
  }

 private:
  using Words = std::vector<std::string>;

  void Warn(const std::string& what, const std::string& comment) {
    ++m_Warnings[what];
    Block({Comment(comment)});
  }

  // Writes a block; an open drill cycle is closed first unless the block belongs to it.
  void Block(Words words, bool cycle = false) {
    if (!cycle && words.size() == 1 && words[0][0] == '(') cycle = true;  // a comment alone
    if (!cycle) CloseCycle();
    std::string line;
    const bool comment = words.size() == 1 && words[0][0] == '(';
    if (m_Options.lineNumbers && !comment) line = "N" + std::to_string(m_Line += 10);
    for (const std::string& w : words) {
      if (w.empty()) continue;
      if (!line.empty()) line += ' ';
      line += w;
    }
    m_Out << line << "\n";
  }

  void CloseCycle() {
    if (m_Cycle.empty()) return;
    m_Cycle.clear();
    m_CycleWords.clear();
    m_Modal["motion"].clear();
    Block({"G80"}, true);
  }

  // A modal word: returns it when it changes the state, else empty.
  std::string Modal(const char* group, const std::string& code) {
    std::string& now = m_Modal[group];
    if (code.empty() || now == code) return "";
    now = code;
    return code;
  }

  // The words a move gives for axis `i` moving to `v`, updating the known position.
  void Axis(Words& words, int i, double v, bool incremental, int decimals) {
    const std::string abs = Num(v, decimals);
    if (incremental) {
      const double delta = std::stod(Num(v - *m_Pos[static_cast<std::size_t>(i)], decimals));
      if (delta == 0) return;
      *m_Pos[static_cast<std::size_t>(i)] += delta;
      words.push_back(kAxes[i] + Num(delta, decimals));
      return;
    }
    auto& pos = m_Pos[static_cast<std::size_t>(i)];
    if (pos && Num(*pos, decimals) == abs) return;
    pos = std::stod(abs);
    words.push_back(kAxes[i] + abs);
  }

  // A move block: motion code, the axes that change (X Y Z of `to`, and the rotary
  // axes given), extra words (I J K), the feed. Returns false when nothing moved.
  bool Move(const std::string& motion, const IOF::GmPoint3D& to, bool incremental, double feed, const Words& extra = {},
            const std::array<std::optional<double>, 3>& rotary = {}) {
    bool known = true;
    for (int i = 0; i < 3; ++i) known = known && m_Pos[static_cast<std::size_t>(i)].has_value();
    incremental = incremental && known;
    Words axes;
    for (int i = 0; i < 3; ++i) {
      // A lathe without a Y axis: Y is given only when it leaves 0.
      if (i == 1 && m_Tool && IsLatheTool(*m_Tool) && !m_Tool->GetIsYAxisTurningTool() && to.y == 0 &&
          (!m_Pos[1] || *m_Pos[1] == 0)) {
        m_Pos[1] = 0.0;
        continue;
      }
      Axis(axes, i, to[i], incremental, m_Decimals);
    }
    for (int i = 0; i < 3; ++i) {
      if (rotary[static_cast<std::size_t>(i)]) Axis(axes, 3 + i, *rotary[static_cast<std::size_t>(i)], false, 3);
    }
    if (axes.empty() && extra.empty()) return false;
    Words words = m_Pending;
    m_Pending.clear();
    words.push_back(Modal("distance", incremental ? "G91" : "G90"));
    words.push_back(Modal("comp", m_Comp));
    words.push_back(Modal("motion", motion));
    words.insert(words.end(), axes.begin(), axes.end());
    words.insert(words.end(), extra.begin(), extra.end());
    if (m_Modal["comp"] != "G40" && !m_CompD.empty()) words.push_back(std::exchange(m_CompD, ""));
    if (motion != "G0" && feed > 0 && Num(feed, m_Decimals) != m_Feed) {
      m_Feed = Num(feed, m_Decimals);
      words.push_back("F" + m_Feed);
    }
    if (!m_LengthComp.empty()) words.push_back(std::exchange(m_LengthComp, ""));
    words.insert(words.end(), m_WithMove.begin(), m_WithMove.end());
    m_WithMove.clear();
    Block(words);
    return true;
  }

  // Words waiting for the next block: the tool's, the plane's, the compensation's.
  void Flush() {
    if (m_Pending.empty() && m_WithMove.empty()) return;
    Words words = m_Pending;
    words.insert(words.end(), m_WithMove.begin(), m_WithMove.end());
    m_Pending.clear();
    m_WithMove.clear();
    Block(words);
  }

  void Record(const IOF::DbIOFBase& record, const ProgramState& state) {
    m_Stream = state.stream;
    m_State = &state;
    if (state.plane != m_Plane) SelectPlane(state.plane);
    if (const auto* move = dynamic_cast<const IOF::DbIOFNciBaseMove*>(&record)) {
      MoveRecord(*move);
    } else if (const auto* tool = dynamic_cast<const IOF::DbIOFNciToolChange*>(&record)) {
      ToolChange(*tool);
    } else if (const auto* op = dynamic_cast<const IOF::DbIOFNciOperation*>(&record)) {
      const std::string text = op->GetMcComment().IsEmpty() ? op->GetIOFName().ToUtf8() : op->GetMcComment().ToUtf8();
      if (!text.empty()) Block({Comment(text)});
    } else if (const auto* sub = dynamic_cast<const IOF::DbIOFNciSubOp*>(&record)) {
      SubOp(*sub);
    } else if (const auto* strategy = dynamic_cast<const IOF::DbIOFMoveStrategyBase*>(&record)) {
      Move("G0", strategy->GetEndPoint(), strategy->GetNcIncremental(), 0);
    } else if (const auto* block = dynamic_cast<const IOF::DbIOFMotionBlock*>(&record)) {
      const IOF::UtIofMovePoint point = block->GetEndPt();
      IOF::GmPoint3D to;
      for (int i = 0; i < 3; ++i) {
        double v = 0;
        bool set = false;
        point.GetValByIndex(i, v, set);
        to[i] = set || !m_Pos[static_cast<std::size_t>(i)] ? v : *m_Pos[static_cast<std::size_t>(i)];
      }
      const std::string& motion = m_Modal["motion"];
      Move(motion == "G1" ? "G1" : motion.empty() || motion == "G0" ? "G0" : "G1", to, false, 0);
    } else {
      Event(record);
    }
  }

  void Event(const IOF::DbIOFBase& record) {
    if (const auto* comp = dynamic_cast<const IOF::DbIOFEvComp*>(&record)) {
      SetComp(CompCode(comp->GetCompensationType(), true));
    } else if (const auto* dwell = dynamic_cast<const IOF::DbIOFEvDwell*>(&record)) {
      if (dwell->GetSpindleSpeed() > 0) {
        const int dir = dwell->GetSpindleDir();
        Spindle(dwell->GetSpindleSpeed(), dwell->GetIsSpeedUnitCSS(), dir == 1 ? "M4" : dir == 2 ? "M5" : "M3");
      }
      Flush();
      Block({"G4", "P" + Num(dwell->GetDwellTime(), 3)});
    } else if (const auto* sync = dynamic_cast<const IOF::DbIOFEvSync*>(&record)) {
      const std::string note = sync->GetComment().IsEmpty() ? "" : Comment(sync->GetComment().ToUtf8());
      if (sync->GetSyncId() >= 0 && sync->GetSyncId() < 100) {
        Flush();
        Block({"M" + std::to_string(100 + sync->GetSyncId()), note});
      } else {
        Warn("sync events with an id outside 0 to 99",
             "sync " + std::to_string(sync->GetSyncId()) + " has no wait code: not output");
      }
    } else if (const auto* units = dynamic_cast<const IOF::DbIOFEvChangeFeedUnitType*>(&record)) {
      const int u = units->GetUnitType();
      const std::string code = Modal("feedmode", u == 1 ? "G95" : u == 2 ? "G93" : "G94");
      if (!code.empty()) Block({code});
    } else if (const auto* entry = dynamic_cast<const IOF::DbIOFNciManualEntry*>(&record)) {
      const std::string text = entry->GetComment().ToUtf8();
      const std::string word = entry->GetOutputCommentAsCode() ? text : Comment(text);
      if (entry->GetIncludeWithMove()) {
        m_WithMove.push_back(word);
      } else {
        Block({word}, !entry->GetOutputCommentAsCode());
      }
    } else if (const auto* call = dynamic_cast<const IOF::DbIOFNciSubProgRef*>(&record)) {
      SubProgram(*call);
    } else if (const auto* clamp = dynamic_cast<const IOF::DbIOFEvClamp*>(&record)) {
      Warn("steady rest clamp events", std::string("steady rest ") + (clamp->GetIsClamping() ? "clamp" : "unclamp") +
                                           ": no code for it, not output");
    } else if (const auto* generic = dynamic_cast<const IOF::DbIOFNciGeneric*>(&record)) {
      Warn("generic codes", "generic code G" + std::to_string(generic->GetGCode()) + " (" +
                                std::to_string(generic->GetGenericBlock(nullptr)) + " bytes): not output");
    } else if (dynamic_cast<const IOF::DbIOFList*>(&record) || dynamic_cast<const IOF::DbIOFNciPlaneBase*>(&record) ||
               dynamic_cast<const IOF::DbIOFNciToolPlaneChange*>(&record)) {
      // Containers and planes: their effect is in the state.
    } else {
      const std::string cls = ClassName(record);
      Warn(cls + " records", cls + " " + record.ToIOFString().ToUtf8() + ": not output");
    }
  }

  void SubProgram(const IOF::DbIOFNciSubProgRef& call) {
    const std::string number = std::to_string(call.GetSubProgNum());
    if (dynamic_cast<const IOF::DbIOFNciCFSubProgRef*>(&call) ||
        dynamic_cast<const IOF::DbIOFNciCPSubProgRef*>(&call) ||
        dynamic_cast<const IOF::DbIOFNciCRSubProgRef*>(&call)) {
      const std::string cls = ClassName(call);
      Warn("canned lathe cycle calls", cls + " of sub-program " + number + ": canned cycle not output");
      return;
    }
    Flush();
    Words words = {Modal("distance", call.GetNcIncremental() ? "G91" : "G90"), "M98", "P" + number};
    if (const auto* sectioned = dynamic_cast<const IOF::DbIOFNciNonTransSubProgRef*>(&call)) {
      words.push_back(Comment("section " + std::to_string(sectioned->GetSectionNum()) + " of " +
                              std::to_string(sectioned->GetSectionTotal())));
    }
    Block(words);
    m_Pos = {};  // the sub-program leaves the tool where it ends
  }

  void SelectPlane(const IOF::DbIOFNciPlaneBase* plane) {
    m_Plane = plane;
    if (!plane) return;
    const std::string offset = WorkOffset(plane->GetWorkOffsetNum());
    if (!offset.empty() && offset != m_Modal["offset"]) {
      m_Modal["offset"] = offset;
      m_Pending.push_back(offset);
    }
    IOF::GmXformMat3D m;
    plane->GetMatrix(m);
    const bool lathe = m_State->tool && IsLatheTool(*m_State->tool);
    if (!m.IsIdentity(1e-9) && !lathe) {
      const std::string name = plane->GetComment().ToUtf8();
      Warn("rotated planes", "plane " + (name.empty() ? offset : name) +
                                 " is rotated: coordinates are in the plane, no rotation is output");
    }
  }

  std::string SpindleDirection() const {
    const IOF::DbIOFNciOperation* op = m_State->op;
    const IOF::DbIOFNciToolChange* tool = m_State->tool;
    const bool live = op && (op->GetSpindleModeMill() || !tool || !IsTurretTool(*tool));
    using D = IOF::SpindleDirectionsType;
    const D dir = !op ? D::NotApplicable : live ? op->GetToolSpindleDirection() : op->GetPartSpindleDirection();
    if (dir == D::Stopped) return "M5";
    bool ccw = dir == D::Reverse || (dir == D::NotApplicable && (!op || op->GetSpindleCCW()));
    if (tool && live && tool->GetReverseMillToolSpindleDirection()) ccw = !ccw;
    return ccw ? "M4" : "M3";
  }

  void Spindle(double speed, bool css, const std::string& direction) {
    const double max = m_State->op ? m_State->op->GetMaxSpindleSpeed() : 0;
    if (css && max > 0 && Int(max) != m_MaxSpeed) {
      m_MaxSpeed = Int(max);
      Block({"G50", "S" + m_MaxSpeed});
    }
    const std::string mode = Modal("css", css ? "G96" : "G97");
    const std::string s = Int(speed);
    if (mode.empty() && s == m_Speed && direction == m_Direction) return;
    m_Speed = s;
    m_Direction = direction;
    m_SpindleOn = direction != "M5";
    Block({mode, "S" + s, direction});
  }

  void SubOp(const IOF::DbIOFNciSubOp& sub) {
    const double speed = sub.GetSpindleSpeed() > 0 ? sub.GetSpindleSpeed() : sub.GetApproachRpm();
    if (speed > 0) Spindle(speed, sub.GetCSSEnabled(), SpindleDirection());
    if (const int* ax = ArcAxes(sub.GetNCPlane()); ax) {
      const std::string plane = Modal("plane", kPlanes[static_cast<int>(sub.GetNCPlane())]);
      if (!plane.empty()) m_Pending.push_back(plane);
    }
    m_DiaOffset = sub.GetDiameterOffsetNum();
  }

  void ToolChange(const IOF::DbIOFNciToolChange& tool) {
    const bool same = m_Tool && m_Tool->GetToolNum() == tool.GetToolNum() &&
                      m_Tool->GetLengthOffsetNum() == tool.GetLengthOffsetNum();
    if (same && !(m_State->op && m_State->op->GetForceToolChange())) return;
    const std::string label =
        ToolLabel(tool) +
        (tool.GetToolDiameter() > 0 ? ", diameter " + Num(tool.GetToolDiameter(), m_Decimals) : std::string());
    if (std::find(m_ToolList.begin(), m_ToolList.end(), label) == m_ToolList.end()) m_ToolList.push_back(label);
    m_Tool = &tool;
    m_DiaOffset = 0;
    if (m_Modal["comp"] != "G40") Block({Modal("comp", "G40")});
    m_Comp = "G40";
    Flush();
    if (m_SpindleOn) Block({"M5"});
    m_SpindleOn = false;
    m_Speed.clear();
    m_Direction.clear();
    const int length = tool.GetLengthOffsetNum() > 0 ? tool.GetLengthOffsetNum() : tool.GetToolNum();
    const std::string name = Comment(tool.GetToolName().ToUtf8());
    if (IsTurretTool(tool)) {
      char t[32];
      std::snprintf(t, sizeof t, "T%02d%02d", tool.GetToolNum(), length);
      Block({t, name});
    } else {
      Block({"T" + std::to_string(tool.GetToolNum()), "M6", name});
      m_LengthComp = "G43 H" + std::to_string(length);
    }
    m_Pos = {};
    m_Modal["motion"].clear();
  }

  void SetComp(const std::string& code) {
    if (code.empty()) return;
    if (code == "?") {
      ++m_Warnings["moves with a cutter compensation code other than 0, 1 to 3 or 40 to 42"];
      return;
    }
    m_Comp = code;
    if (code != "G40" && code != m_Modal["comp"]) {
      const int d = m_DiaOffset > 0                           ? m_DiaOffset
                    : m_Tool && m_Tool->GetDiaOffsetNum() > 0 ? m_Tool->GetDiaOffsetNum()
                    : m_Tool                                  ? m_Tool->GetToolNum()
                                                              : 0;
      m_CompD = d > 0 ? "D" + std::to_string(d) : "";
    }
  }

  void MoveRecord(const IOF::DbIOFNciBaseMove& move) {
    SetComp(CompCode(move.GetCutterComp(), false));
    const bool inc = move.GetNcIncremental();
    const double feed = move.GetFeedRate();
    const std::string g01 = move.GetIsFeedMove() ? "G1" : "G0";
    if (const auto* line = dynamic_cast<const IOF::DbIOFNciLinear*>(&move)) {
      Move(g01, line->GetEndPoint(), inc, feed);
    } else if (const auto* arc = dynamic_cast<const IOF::DbIOFNciArc*>(&move)) {
      Arc(*arc);
    } else if (const auto* arc3 = dynamic_cast<const IOF::DbIOFNciArc3D*>(&move)) {
      Move("G1", Arc3DStart(m_Program, *arc3, m_Plane), inc, feed);
      for (const IOF::GmPoint3D& p : Arc3DChords(m_Program, *arc3, m_Plane, m_Tolerance)) Move("G1", p, inc, feed);
    } else if (const auto* multi = dynamic_cast<const IOF::DbIOFNciMultiAx*>(&move)) {
      MultiAxis(*multi, g01);
    } else if (const auto* point = dynamic_cast<const IOF::DbIOFDrillPoint*>(&move)) {
      DrillPoint(*point);
    } else {
      const std::string cls = ClassName(move);
      Warn(cls + " moves", cls + ": not output");
    }
  }

  void Arc(const IOF::DbIOFNciArc& arc) {
    const int* ax = ArcAxes(arc.GetArcPlane());
    const bool inc = arc.GetNcIncremental();
    if (!ax) {
      Warn("arcs in no plane", "arc in no plane: posted as chords");
      for (const IOF::GmPoint3D& p : ArcChords(arc, m_Tolerance)) Move("G1", p, inc, arc.GetFeedRate());
      return;
    }
    const std::string plane = Modal("plane", kPlanes[static_cast<int>(arc.GetArcPlane())]);
    if (!plane.empty()) m_Pending.push_back(plane);
    Words ijk;
    for (const int i : {0, 1, 2}) {
      if (i == ax[2]) continue;
      ijk.push_back(std::string(1, "IJK"[i]) + Num(arc.GetCenterPoint()[i] - arc.GetStartPoint()[i], m_Decimals));
    }
    Move(arc.IsClockwise() ? "G2" : "G3", arc.GetEndPoint(), inc, arc.GetFeedRate(), ijk);
  }

  void MultiAxis(const IOF::DbIOFNciMultiAx& move, const std::string& motion) {
    IOF::GmPoint3D to = move.GetToolTipPt();
    std::array<std::optional<double>, 3> rotary;
    bool anyRotary = false;
    // The machine axes as a whole when the move point gives a rotary axis; the tool tip
    // otherwise.
    if (const auto axes = MachineAxes(m_Program, move)) {
      std::vector<double> values;
      std::vector<bool> set;
      axes->GetAllVals(values, set);
      for (std::size_t i = 3; i < 6 && i < values.size() && i < set.size(); ++i) {
        if (set[i]) rotary[i - 3] = values[i];
        anyRotary = anyRotary || set[i];
      }
      for (std::size_t i = 0; anyRotary && i < 3 && i < values.size() && i < set.size(); ++i) {
        if (set[i]) to[static_cast<int>(i)] = values[i];
      }
    }
    IOF::GmVector3D axis = move.GetToolOrientVect();
    const double length = axis.Magnitude();
    if (!anyRotary && length > 0 && axis[2] / length < 1 - 1e-9 && !m_TiltNoted) {
      m_TiltNoted = true;
      Warn("multi-axis moves with a tilted tool axis and no rotary axes",
           "tool axis of the multi-axis moves not output: their move points give no rotary axes");
    }
    Move(motion, to, move.GetNcIncremental(), move.GetFeedRate(), {}, rotary);
  }

  void DrillPoint(const IOF::DbIOFDrillPoint& point) {
    const int type = m_State->drill ? m_State->drill->GetCycleType() : 0;
    const Hole hole = HoleOf(point);
    if (type < 0 || type > 5) {
      Warn("drill cycles of an unknown type",
           "drill cycle type " + std::to_string(type) + ": hole at X" + Num(hole.bottom.x, m_Decimals) + " Y" +
               Num(hole.bottom.y, m_Decimals) + " Z" + Num(hole.bottom.z, m_Decimals) + " not output");
      return;
    }
    Flush();
    const std::string code = kCycles[type];
    const bool start = m_Cycle != code || m_CycleDrill != m_State->drill;
    if (start) {
      // Over the first hole at the height the cycle returns to, so that the control's
      // initial level is the point's.
      CloseCycle();
      Move("G0", {hole.bottom.x, hole.bottom.y, std::max(hole.init, hole.r)}, false, 0);
      Flush();
    }
    m_CycleDrill = m_State->drill;
    Words words;
    if (start) {
      m_Cycle = code;
      words.push_back(Modal("distance", "G90"));
      words.push_back(hole.toInit ? "G98" : "G99");
      words.push_back(code);
      m_Modal["motion"] = code;
    }
    // X Y always (the hole), the rest when it changes.
    words.push_back("X" + Num(hole.bottom.x, m_Decimals));
    words.push_back("Y" + Num(hole.bottom.y, m_Decimals));
    const auto word = [&](const std::string& w) {
      std::string& last = m_CycleWords[w[0]];
      if (last != w) words.push_back(last = w);
    };
    word("Z" + Num(hole.bottom.z, m_Decimals));
    word("R" + Num(hole.r, m_Decimals));
    if (type == 2 || type == 3) {
      const double peck = m_State->drill->GetPeck1() > 0 ? m_State->drill->GetPeck1() : hole.r - hole.bottom.z;
      word("Q" + Num(peck, m_Decimals));
    }
    if (type == 1) word("P" + Num(point.GetDwell(), 3));
    if (point.GetFeedRate() > 0 && Num(point.GetFeedRate(), m_Decimals) != m_Feed) {
      m_Feed = Num(point.GetFeedRate(), m_Decimals);
      words.push_back("F" + m_Feed);
    }
    Block(words, true);
    m_Pos = {hole.bottom.x, hole.bottom.y, hole.ReturnHeight()};
  }

  Program& m_Program;
  const PostOptions& m_Options;
  const bool m_Metric;
  const int m_Decimals;
  const double m_Tolerance;
  const ProgramState* m_State = nullptr;
  int m_Stream = -1;
  std::ostringstream m_Out;
  int m_Line = 0;
  std::map<std::string, std::string> m_Modal;         // group -> code in force
  std::array<std::optional<double>, 6> m_Pos;         // X Y Z A B C as the control has them
  std::string m_Feed;                                 // the F in force, as written
  Words m_Pending;                                    // modal words for the next block
  Words m_WithMove;                                   // manual entries for the next move
  std::string m_Comp = "G40", m_CompD, m_LengthComp;  // compensation wanted, its D, the next G43
  int m_DiaOffset = 0;
  const IOF::DbIOFNciToolChange* m_Tool = nullptr;
  const IOF::DbIOFNciPlaneBase* m_Plane = nullptr;
  std::string m_Speed, m_Direction, m_MaxSpeed;
  bool m_SpindleOn = false;
  bool m_TiltNoted = false;
  std::string m_Cycle;  // the drill cycle in force, empty when none
  const IOF::DbIOFDrill* m_CycleDrill = nullptr;
  std::map<char, std::string> m_CycleWords;
  std::vector<std::string> m_ToolList;
  std::map<std::string, std::size_t> m_Warnings;
};

}  // namespace

int RunPost(const PostOptions& options, std::ostream& out) {
  if (!(options.tolerance > 0)) {
    std::cerr << "iof: --tolerance must be above 0\n";
    return kUsageError;
  }
  Quarp::DbMgr mgr;
  const std::vector<Quarp::DbId> streams = LoadStreams(options.file, options.stream, mgr);
  if (streams.empty()) return kDataError;
  Program program(mgr);
  std::string text = "%\n";
  for (const Quarp::DbId id : streams) {
    Writer writer(program, options, program.Document()->GetIsMetric());
    std::map<std::string, std::size_t> mine;
    text += writer.Run(id, mine);
    const auto* stream = program.Find<IOF::DbIOFStream>(id);
    for (const auto& [what, n] : mine) {
      std::cerr << "iof: warning: stream " << (stream ? stream->GetStreamId() : -1) << ": " << n << " " << what
                << " cannot be expressed; see the comments in the program\n";
    }
  }
  text += "%\n";
  if (program.Unreachable() > 0) {
    std::cerr << "iof: warning: " << program.Unreachable() << " records could not be reached and were left out\n";
  }
  if (options.output.empty()) {
    out << text;
    return kOk;
  }
  std::ofstream file(options.output, std::ios::binary);
  file << text;
  if (!file.flush()) {
    std::cerr << "iof: cannot write '" << options.output << "'\n";
    return kDataError;
  }
  return kOk;
}

}  // namespace IofTool
