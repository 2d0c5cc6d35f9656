// iof plot: one SVG picture of a job's toolpath, a panel per stream.
//
// Feed moves are solid lines and rapids thin dashed ones, coloured by tool; arcs that
// lie in the view plane are true SVG arcs, everything else (helices, 3-D arcs, arcs
// seen from the side, the iso view) is drawn through chords finer than a quarter pixel.
// Multi-axis moves are drawn through their tool tips, drill points as rings (with the
// plunge and the return as lines), tool changes as a diamond and the tool's number
// where the new tool starts. Approach and retract records are rapids to their end
// points, as the post moves them. Each panel has a title (file, stream, view, units),
// a scale bar and a legend of its tools.
//
// Views: xy (X across, Y up), xz (X across, Z up; for a lathe stream Z across and X up,
// the way a turned part is drawn), yz (Y across, Z up), iso (isometric, Z up). The
// default is xz for a lathe stream (one that uses a lathe tool) and otherwise the plane
// in which the stream's toolpath has the largest extent.
//
// Size: one path element per tool and move kind, coordinates in tenths of a pixel
// written relative to the last point, moves that continue in the same direction merged
// into one line and moves shorter than the rounding dropped, so a million-move job
// stays a few megabytes.
#include "Commands.h"
#include "Program.h"

#include <iof/DbIOFMotionBlock.h>
#include <iof/DbIOFMoveStrategyBase.h>
#include <iof/DbIOFNciLinear.h>
#include <iof/DbIOFNciMultiAx.h>
#include <iof/DbIOFStream.h>
#include <quarp/DbMgr.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <numbers>
#include <set>
#include <string>
#include <vector>

namespace IofTool {

namespace {

using IOF::GmPoint3D;

constexpr const char* kColours[] = {"#1f77b4", "#d62728", "#2ca02c", "#ff7f0e", "#9467bd",
                                    "#8c564b", "#e377c2", "#17becf", "#bcbd22", "#7f7f7f"};
constexpr double kMargin = 16;
constexpr double kTitleHeight = 30;
constexpr double kRowHeight = 18;

std::string Escape(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

// A length in pixels, one decimal, no trailing ".0".
std::string Px(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", v);
  std::string s = text;
  if (s.size() > 2 && s.compare(s.size() - 2, 2, ".0") == 0) s.resize(s.size() - 2);
  return s == "-0" ? "0" : s;
}

// A coordinate in tenths of a pixel.
std::string Tenths(std::int64_t v) { return Px(static_cast<double>(v) / 10.0); }

// One step of the toolpath: a move to `to` of a kind, by a tool; `curve` indexes the
// arc the move follows, -1 for a straight move.
struct Step {
  GmPoint3D to;
  std::int32_t curve;
  std::uint16_t tool;
  bool rapid;
};

struct Curve {
  const IOF::DbIOFBase* record;         // a DbIOFNciArc or a DbIOFNciArc3D
  const IOF::DbIOFNciPlaneBase* plane;  // the plane the program is written in
};

struct Mark {
  GmPoint3D at;
  std::uint16_t tool;
};

struct Panel {
  int stream = -1;
  std::string name;
  bool lathe = false;
  std::vector<Step> steps;
  std::vector<Curve> curves;
  std::vector<Mark> holes;
  std::vector<Mark> changes;
  std::set<std::uint16_t> tools;
};

// The tools of the whole document, so that a tool has one colour in every panel.
struct Tools {
  std::vector<std::string> labels{"no tool"};
  std::map<std::string, std::uint16_t> index;
  std::uint16_t Of(const IOF::DbIOFNciToolChange* tool) {
    if (!tool) return 0;
    const std::string label = ToolLabel(*tool);
    const auto [it, added] = index.emplace(label, static_cast<std::uint16_t>(labels.size()));
    if (added) labels.push_back(label);
    return it->second;
  }
};

// Collects a stream's toolpath.
class Collector {
 public:
  Collector(Program& program, Tools& tools, Panel& panel) : m_Program(program), m_Tools(tools), m_Panel(panel) {}

  void operator()(const IOF::DbIOFBase& record, const ProgramState& state) {
    const std::uint16_t tool = m_Tools.Of(state.tool);
    if (tool != m_Tool) {
      m_Tool = tool;
      m_Changed = state.tool != nullptr;
      if (state.tool && IsLatheTool(*state.tool)) m_Panel.lathe = true;
    }
    if (const auto* line = dynamic_cast<const IOF::DbIOFNciLinear*>(&record)) {
      To(line->GetEndPoint(), !line->GetIsFeedMove());
    } else if (const auto* arc = dynamic_cast<const IOF::DbIOFNciArc*>(&record)) {
      To(arc->GetStartPoint(), false, -1, true);
      To(arc->GetEndPoint(), !arc->GetIsFeedMove(), Add(record, state));
    } else if (const auto* arc3 = dynamic_cast<const IOF::DbIOFNciArc3D*>(&record)) {
      To(Arc3DStart(m_Program, *arc3, state.plane), false, -1, true);
      const auto points = Arc3DChords(m_Program, *arc3, state.plane, 0);
      To(points.back(), !arc3->GetIsFeedMove(), Add(record, state));
    } else if (const auto* multi = dynamic_cast<const IOF::DbIOFNciMultiAx*>(&record)) {
      To(multi->GetToolTipPt(), !multi->GetIsFeedMove());
    } else if (const auto* point = dynamic_cast<const IOF::DbIOFDrillPoint*>(&record)) {
      const Hole hole = HoleOf(*point);
      const GmPoint3D& b = hole.bottom;
      To({b.x, b.y, std::max(hole.init, hole.r)}, true);
      To({b.x, b.y, hole.r}, true);
      To(b, false);
      To({b.x, b.y, hole.ReturnHeight()}, true);
      m_Panel.holes.push_back({b, m_Tool});
    } else if (const auto* strategy = dynamic_cast<const IOF::DbIOFMoveStrategyBase*>(&record)) {
      To(strategy->GetEndPoint(), true);
    } else if (const auto* block = dynamic_cast<const IOF::DbIOFMotionBlock*>(&record)) {
      GmPoint3D to = m_Panel.steps.empty() ? GmPoint3D() : m_Panel.steps.back().to;
      const IOF::UtIofMovePoint end = block->GetEndPt();
      for (int i = 0; i < 3; ++i) {
        double v = 0;
        bool set = false;
        if (end.GetValByIndex(i, v, set) && set) to[i] = v;
      }
      To(to, m_Panel.steps.empty() || m_Panel.steps.back().rapid);
    }
  }

 private:
  std::int32_t Add(const IOF::DbIOFBase& record, const ProgramState& state) {
    m_Panel.curves.push_back({&record, state.plane});
    return static_cast<std::int32_t>(m_Panel.curves.size() - 1);
  }

  // A move to `to`; `quiet` only places the pen (an arc's start, where the last move
  // ended in any sound program).
  void To(const GmPoint3D& to, bool rapid, std::int32_t curve = -1, bool quiet = false) {
    if (quiet && !m_Panel.steps.empty()) return;
    if (m_Changed) {
      m_Panel.changes.push_back({m_Panel.steps.empty() ? to : m_Panel.steps.back().to, m_Tool});
      m_Changed = false;
    }
    m_Panel.tools.insert(m_Tool);
    m_Panel.steps.push_back({to, curve, m_Tool, rapid});
  }

  Program& m_Program;
  Tools& m_Tools;
  Panel& m_Panel;
  std::uint16_t m_Tool = 0;
  bool m_Changed = false;
};

enum class View { XY, XZ, YZ, Iso };

struct Projection {
  View view;
  bool lathe;
  // Model to drawing plane, v up.
  void operator()(const GmPoint3D& p, double& u, double& v) const {
    switch (view) {
      case View::XY:
        u = p.x, v = p.y;
        break;
      case View::XZ:
        lathe ? (u = p.z, v = p.x) : (u = p.x, v = p.z);
        break;
      case View::YZ:
        u = p.y, v = p.z;
        break;
      case View::Iso:
        u = (p.x - p.y) * std::cos(std::numbers::pi / 6);
        v = (p.x + p.y) * std::sin(std::numbers::pi / 6) + p.z;
        break;
    }
  }
  // The arc plane drawn true in this view, or -1.
  int TruePlane() const { return view == View::XY ? 0 : view == View::XZ ? 1 : view == View::YZ ? 2 : -1; }
  const char* Name() const {
    switch (view) {
      case View::XY:
        return "XY view (X across, Y up)";
      case View::XZ:
        return lathe ? "XZ view (Z across, X up)" : "XZ view (X across, Z up)";
      case View::YZ:
        return "YZ view (Y across, Z up)";
      case View::Iso:
        return "isometric view (Z up)";
    }
    return "";
  }
};

// The drawing area of a panel: model coordinates to pixels, rounded to tenths.
struct Frame {
  Projection project;
  double scale = 1, u0 = 0, v0 = 0, x0 = 0, y0 = 0;
  void ToTenths(const GmPoint3D& p, std::int64_t& x, std::int64_t& y) const {
    double u = 0, v = 0;
    project(p, u, v);
    x = std::llround((x0 + (u - u0) * scale) * 10);
    y = std::llround((y0 - (v - v0) * scale) * 10);
  }
};

// One SVG path's data: absolute moves where the pen jumps, relative lines and arcs,
// lines that go on in the same direction merged.
class PathData {
 public:
  std::string d;

  void LineTo(std::int64_t fx, std::int64_t fy, std::int64_t x, std::int64_t y) {
    Start(fx, fy);
    const std::int64_t dx = x - m_X, dy = y - m_Y;
    if (dx == 0 && dy == 0) return;
    if (m_Pending && m_Dx * dy == m_Dy * dx && m_Dx * dx + m_Dy * dy > 0) {
      m_Dx += dx, m_Dy += dy;
    } else {
      Flush();
      m_Pending = true, m_Dx = dx, m_Dy = dy;
    }
    m_X = x, m_Y = y;
  }

  void ArcTo(std::int64_t fx, std::int64_t fy, double radiusTenths, bool clockwise, std::int64_t x, std::int64_t y) {
    Start(fx, fy);
    Flush();
    m_Letter = 'a';
    d += "a" + Tenths(std::llround(radiusTenths)) + " " + Tenths(std::llround(radiusTenths)) + " 0 0 " +
         (clockwise ? "1 " : "0 ") + Tenths(x - m_X) + " " + Tenths(y - m_Y);
    m_X = x, m_Y = y;
  }

  void Flush() {
    if (!m_Pending) return;
    m_Pending = false;
    d += m_Letter == 'l' ? " " : "l";
    m_Letter = 'l';
    d += Tenths(m_Dx) + " " + Tenths(m_Dy);
  }

 private:
  void Start(std::int64_t x, std::int64_t y) {
    if (m_Open && x == m_X && y == m_Y) return;
    Flush();
    d += (d.empty() ? "M" : "M") + Tenths(x) + " " + Tenths(y);
    m_Letter = 'M';
    m_Open = true, m_X = x, m_Y = y;
  }

  bool m_Open = false, m_Pending = false;
  char m_Letter = 0;
  std::int64_t m_X = 0, m_Y = 0, m_Dx = 0, m_Dy = 0;
};

// Draws the part of `curve` from `from`: true arcs in the view plane, chords otherwise.
void DrawCurve(const Program& program, const Frame& f, const Curve& curve, const GmPoint3D& from, PathData& path) {
  const double tolerance = 0.25 / f.scale;
  std::vector<GmPoint3D> points;
  if (const auto* arc = dynamic_cast<const IOF::DbIOFNciArc*>(curve.record)) {
    const int plane = static_cast<int>(arc->GetArcPlane());
    const int* ax = ArcAxes(arc->GetArcPlane());
    if (ax && plane == f.project.TruePlane() &&
        std::abs(arc->GetStartPoint()[ax[2]] - arc->GetEndPoint()[ax[2]]) < 1e-9) {
      // Two halves, each under a half turn; the screen decides the direction.
      const double r = std::hypot(arc->GetStartPoint()[ax[0]] - arc->GetCenterPoint()[ax[0]],
                                  arc->GetStartPoint()[ax[1]] - arc->GetCenterPoint()[ax[1]]);
      std::int64_t x[5], y[5];
      for (int i = 0; i < 5; ++i) f.ToTenths(ArcPointAt(*arc, i / 4.0), x[i], y[i]);
      const bool clockwise = (x[1] - x[0]) * (y[2] - y[1]) - (y[1] - y[0]) * (x[2] - x[1]) > 0;
      path.ArcTo(x[0], y[0], r * f.scale * 10, clockwise, x[2], y[2]);
      path.ArcTo(x[2], y[2], r * f.scale * 10, clockwise, x[4], y[4]);
      return;
    }
    points = ArcChords(*arc, tolerance);
  } else if (const auto* arc3 = dynamic_cast<const IOF::DbIOFNciArc3D*>(curve.record)) {
    points = Arc3DChords(program, *arc3, curve.plane, tolerance);
  }
  GmPoint3D at = from;
  for (const GmPoint3D& p : points) {
    std::int64_t fx, fy, x, y;
    f.ToTenths(at, fx, fy);
    f.ToTenths(p, x, y);
    path.LineTo(fx, fy, x, y);
    at = p;
  }
}

// Points that bound a curve's drawing: quarter turns and its ends.
void CurveSamples(const Program& program, const Curve& curve, std::vector<GmPoint3D>& out) {
  if (const auto* arc = dynamic_cast<const IOF::DbIOFNciArc*>(curve.record)) {
    for (int i = 0; i <= 8; ++i) out.push_back(ArcPointAt(*arc, i / 8.0));
  } else if (const auto* arc3 = dynamic_cast<const IOF::DbIOFNciArc3D*>(curve.record)) {
    const auto points = Arc3DChords(program, *arc3, curve.plane, 0);
    out.insert(out.end(), points.begin(), points.end());
  }
}

// A round length for the scale bar, about `target` long: 1, 2 or 5 times a power of 10.
double RoundLength(double target) {
  const double p = std::pow(10.0, std::floor(std::log10(target)));
  return target >= 5 * p ? 5 * p : target >= 2 * p ? 2 * p : p;
}

std::string Number(double v) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", v);
  return text;
}

class Renderer {
 public:
  Renderer(const Program& program, const Tools& tools, const PlotOptions& options)
      : m_Program(program), m_Tools(tools), m_Options(options) {}

  // Draws `panel` at height `top`; returns the panel's height.
  double Draw(const Panel& panel, double top, std::string& svg) const {
    const double width = m_Options.width;
    Projection project{View::XY, panel.lathe};
    double lo[3], hi[3];
    Bounds(panel, lo, hi);
    if (!m_Options.view.empty()) {
      project.view = m_Options.view == "xy"   ? View::XY
                     : m_Options.view == "xz" ? View::XZ
                     : m_Options.view == "yz" ? View::YZ
                                              : View::Iso;
    } else if (panel.lathe) {
      project.view = View::XZ;
    } else {
      const double ex = hi[0] - lo[0], ey = hi[1] - lo[1], ez = hi[2] - lo[2];
      project.view = ex * ey >= ex * ez && ex * ey >= ey * ez ? View::XY : ex * ez >= ey * ez ? View::XZ : View::YZ;
    }
    // The drawing's extent in the view.
    double u0 = std::numeric_limits<double>::max(), v0 = u0, u1 = -u0, v1 = -u0;
    ForEachPoint(panel, [&](const GmPoint3D& p) {
      double u = 0, v = 0;
      project(p, u, v);
      u0 = std::min(u0, u), u1 = std::max(u1, u), v0 = std::min(v0, v), v1 = std::max(v1, v);
    });
    if (u0 > u1) u0 = v0 = 0, u1 = v1 = 1;
    const double eu = std::max(u1 - u0, 1e-6), ev = std::max(v1 - v0, 1e-6);
    const double dw = width - 2 * kMargin;
    const double dh = std::clamp(dw * ev / eu, 160.0, 1.2 * dw);
    Frame f{project};
    f.scale = std::min((dw - 24) / eu, (dh - 24) / ev);
    f.u0 = u0, f.v0 = v0;
    f.x0 = kMargin + (dw - eu * f.scale) / 2;
    const double boxTop = top + kTitleHeight;
    f.y0 = boxTop + dh - (dh - ev * f.scale) / 2;

    std::string title =
        m_Options.file.empty() ? std::string() : std::filesystem::path(m_Options.file).filename().string();
    title += " \xE2\x80\x94 stream " + std::to_string(panel.stream);
    if (!panel.name.empty()) title += " \"" + panel.name + "\"";
    title += std::string(" \xE2\x80\x94 ") + project.Name() + " \xE2\x80\x94 " + Units();
    svg += "<text x=\"" + Px(kMargin) + "\" y=\"" + Px(top + 20) + "\" font-size=\"15\" font-weight=\"bold\">" +
           Escape(title) + "</text>\n";
    svg += "<rect x=\"" + Px(kMargin) + "\" y=\"" + Px(boxTop) + "\" width=\"" + Px(dw) + "\" height=\"" + Px(dh) +
           "\" fill=\"none\" stroke=\"#ccc\"/>\n";
    if (panel.steps.empty()) {
      svg += "<text x=\"" + Px(width / 2) + "\" y=\"" + Px(boxTop + dh / 2) +
             "\" text-anchor=\"middle\" fill=\"#888\">no moves</text>\n";
    }
    Paths(panel, f, svg);
    Marks(panel, f, svg);
    double y = boxTop + dh + 22;
    ScaleBar(f, y, svg);
    y += 12;
    // The tools in columns of 240 pixels.
    const std::size_t columns = std::max<std::size_t>(1, static_cast<std::size_t>((width - 2 * kMargin) / 240));
    const std::size_t rows = (panel.tools.size() + columns - 1) / columns;
    std::size_t k = 0;
    for (const std::uint16_t tool : panel.tools) {
      const double x = kMargin + static_cast<double>(k / rows) * 240;
      const double row = y + kRowHeight * static_cast<double>(k % rows + 1);
      ++k;
      svg += "<path d=\"M" + Px(x) + " " + Px(row - 4) + "h24\" stroke=\"" + Colour(tool) +
             "\" stroke-width=\"3\"/><text x=\"" + Px(x + 32) + "\" y=\"" + Px(row) + "\">" +
             Escape(m_Tools.labels[tool]) + "</text>\n";
    }
    y += kRowHeight * static_cast<double>(rows + 1);
    svg +=
        "<text x=\"" + Px(kMargin) + "\" y=\"" + Px(y) +
        "\" fill=\"#555\">solid: feed \xC2\xB7 dashed: rapid \xC2\xB7 ring: drill point \xC2\xB7 diamond: tool change"
        "</text>\n";
    return y + kMargin - top;
  }

 private:
  std::string Units() const {
    const auto* doc = m_Program.Document();
    return doc && !doc->GetIsMetric() ? "in" : "mm";
  }
  static std::string Colour(std::uint16_t tool) {
    return tool == 0 ? "#000" : kColours[(tool - 1) % std::size(kColours)];
  }

  template <class F>
  void ForEachPoint(const Panel& panel, F f) const {
    for (const Step& s : panel.steps) f(s.to);
    std::vector<GmPoint3D> samples;
    for (const Curve& c : panel.curves) {
      samples.clear();
      CurveSamples(m_Program, c, samples);
      for (const GmPoint3D& p : samples) f(p);
    }
  }

  void Bounds(const Panel& panel, double lo[3], double hi[3]) const {
    std::fill(lo, lo + 3, std::numeric_limits<double>::max());
    std::fill(hi, hi + 3, -std::numeric_limits<double>::max());
    ForEachPoint(panel, [&](const GmPoint3D& p) {
      for (int i = 0; i < 3; ++i) lo[i] = std::min(lo[i], p[i]), hi[i] = std::max(hi[i], p[i]);
    });
    if (lo[0] > hi[0]) std::fill(lo, lo + 3, 0.0), std::fill(hi, hi + 3, 0.0);
  }

  void Paths(const Panel& panel, const Frame& f, std::string& svg) const {
    std::map<std::pair<std::uint16_t, bool>, PathData> paths;
    for (std::size_t i = 1; i < panel.steps.size(); ++i) {
      const Step& s = panel.steps[i];
      const GmPoint3D& from = panel.steps[i - 1].to;
      PathData& path = paths[{s.tool, s.rapid}];
      if (s.curve >= 0) {
        DrawCurve(m_Program, f, panel.curves[static_cast<std::size_t>(s.curve)], from, path);
        continue;
      }
      std::int64_t fx, fy, x, y;
      f.ToTenths(from, fx, fy);
      f.ToTenths(s.to, x, y);
      path.LineTo(fx, fy, x, y);
    }
    svg += "<g fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\">\n";
    for (auto& [key, path] : paths) {
      path.Flush();
      if (path.d.empty()) continue;
      svg += "<path stroke=\"" + Colour(key.first) + "\"" +
             (key.second ? " stroke-width=\"0.7\" stroke-dasharray=\"4 3\"" : " stroke-width=\"1.5\"") + " d=\"" +
             path.d + "\"/>\n";
    }
    svg += "</g>\n";
  }

  void Marks(const Panel& panel, const Frame& f, std::string& svg) const {
    std::map<std::uint16_t, std::string> rings;
    std::set<std::pair<std::int64_t, std::int64_t>> seen;
    for (const Mark& m : panel.holes) {
      std::int64_t x, y;
      f.ToTenths(m.at, x, y);
      if (!seen.insert({x, y}).second) continue;
      rings[m.tool] += "M" + Tenths(x - 35) + " " + Tenths(y) + "a3.5 3.5 0 1 0 7 0a3.5 3.5 0 1 0 -7 0";
    }
    for (const auto& [tool, d] : rings) {
      svg += "<path fill=\"none\" stroke=\"" + Colour(tool) + "\" stroke-width=\"1.2\" d=\"" + d + "\"/>\n";
    }
    for (const Mark& m : panel.changes) {
      std::int64_t x, y;
      f.ToTenths(m.at, x, y);
      const std::string& label = m_Tools.labels[m.tool];
      svg += "<path fill=\"" + Colour(m.tool) + "\" d=\"M" + Tenths(x) + " " + Tenths(y - 50) +
             "l5 5l-5 5l-5 -5z\"/><text x=\"" + Tenths(x + 70) + "\" y=\"" + Tenths(y - 40) + "\" fill=\"" +
             Colour(m.tool) + "\">" + Escape(label.substr(0, label.find(' '))) + "</text>\n";
    }
  }

  void ScaleBar(const Frame& f, double y, std::string& svg) const {
    const double length = RoundLength((m_Options.width - 2 * kMargin) / 5 / f.scale);
    const double px = length * f.scale;
    svg += "<path fill=\"none\" stroke=\"#000\" d=\"M" + Px(kMargin) + " " + Px(y - 5) + "v5h" + Px(px) + "v-5\"/>" +
           "<text x=\"" + Px(kMargin + px + 8) + "\" y=\"" + Px(y) + "\">" + Number(length) + " " + Units() +
           "</text>\n";
  }

  const Program& m_Program;
  const Tools& m_Tools;
  const PlotOptions& m_Options;
};

}  // namespace

int RunPlot(const PlotOptions& options) {
  Quarp::DbMgr mgr;
  const std::vector<Quarp::DbId> streams = LoadStreams(options.file, options.stream, mgr);
  if (streams.empty()) return kDataError;
  Program program(mgr);
  Tools tools;
  std::vector<Panel> panels(streams.size());
  for (std::size_t i = 0; i < streams.size(); ++i) {
    Panel& panel = panels[i];
    if (const auto* stream = program.Find<IOF::DbIOFStream>(streams[i])) {
      panel.stream = stream->GetStreamId();
      panel.name = stream->GetIOFName().ToUtf8();
    }
    Collector collect(program, tools, panel);
    program.Walk(streams[i], std::ref(collect));
  }
  if (program.Unreachable() > 0) {
    std::cerr << "iof: warning: " << program.Unreachable() << " records could not be reached and were left out\n";
  }
  std::string body;
  double height = 0;
  const Renderer renderer(program, tools, options);
  for (const Panel& panel : panels) height += renderer.Draw(panel, height, body);
  std::ofstream out(options.output, std::ios::binary);
  out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << options.width << "\" height=\"" << Px(height)
      << "\" viewBox=\"0 0 " << options.width << " " << Px(height)
      << "\" font-family=\"sans-serif\" font-size=\"12\">\n<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n"
      << body << "</svg>\n";
  if (!out.flush()) {
    std::cerr << "iof: cannot write '" << options.output << "'\n";
    return kDataError;
  }
  return kOk;
}

}  // namespace IofTool
