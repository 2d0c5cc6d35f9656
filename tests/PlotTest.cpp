// iof plot through the built binary: the picture's geometry on a small job, and every
// picture accepted by a real SVG renderer (rsvg-convert).
#include "ToolSupport.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using IOF::IofArcPlaneType;
using ToolSupport::Job;
using ToolSupport::Tool;

// A 10 x 10 square by tool 1 (its first side in two moves), then tool 2 comes over
// with a rapid and cuts a half circle in X-Y.
std::string SquareAndArc() {
  Job job;
  job.Mill(L"Square", 1, L"Square mill", 5000);
  job.Line(0, 0, 5);
  for (const auto& [x, y] : {std::pair{0, 0}, {5, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}}) job.Line(x, y, -1, 500);
  job.Line(0, 0, 5);
  job.Mill(L"Arc", 2, L"Arc mill", 5000);
  job.Line(10, 5, 5);
  job.Line(10, 5, -2, 100);
  job.Arc(IofArcPlaneType::XY, {10, 5, -2}, {0, 5, -2}, {5, 5, -2}, false, 300);
  return job.Write("square-arc.iof");
}

// Renders `svg` with rsvg-convert: true when it accepts it and writes a picture.
bool Renders(const std::string& svg) {
  const std::string png = svg + ".png";
  const int code = std::system(("rsvg-convert '" + svg + "' -o '" + png + "' 2>/dev/null").c_str());
  return code == 0 && std::filesystem::file_size(png) > 0;
}

TEST(Plot, SquareArcRapidAndTwoToolsWhereTheyBelong) {
  const std::string file = SquareAndArc();
  const std::string svg = TestSupport::TempPath("square-arc.svg");
  const ToolSupport::ToolRun r = Tool("plot '" + file + "' -o '" + svg + "' --width 400");
  ASSERT_EQ(r.code, 0) << r.err;
  const std::string text = TestSupport::ReadFile<std::string>(svg);
  // 10 mm is 34.4 px; the model's origin sits at (28, 386), Y up. The square is one
  // path, its first side one line; the half circle two arcs, counter-clockwise.
  for (const char* part :
       {"<path stroke=\"#1f77b4\" stroke-width=\"1.5\" d=\"M28 386l344 0 0 -344 -344 0 0 344\"/>",
        "<path stroke=\"#d62728\" stroke-width=\"1.5\" d=\"M372 214a172 172 0 0 0 -172 -172a172 172 0 0 0 -172 "
        "172\"/>",
        "<path stroke=\"#d62728\" stroke-width=\"0.7\" stroke-dasharray=\"4 3\" d=\"M28 386l344 -172\"/>",
        ">T1 Square mill</text>", ">T2 Arc mill</text>", ">2 mm</text>",
        "square-arc.iof \xE2\x80\x94 stream 1 &quot;Stream Object&quot; \xE2\x80\x94 XY view (X across, Y up) "
        "\xE2\x80\x94 mm"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << "\n" << text;
  }
  ASSERT_EQ(Tool("plot '" + file + "' -o '" + svg + "' --view xz").code, 0);
  EXPECT_NE(TestSupport::ReadFile<std::string>(svg).find("XZ view (X across, Z up)"), std::string::npos);
}

TEST(Plot, PicturesRender) {
  if (std::system("command -v rsvg-convert >/dev/null") != 0)
    GTEST_SKIP() << "rsvg-convert is missing: run scripts/bootstrap";
  const std::string demo = ToolSupport::Demo();
  Job drill;
  drill.Stream(3);
  drill.Mill(L"Drill", 3, L"Drill 5", 1500);
  drill.Drill(0, 0, {{10, 10, -12}, {20, 10, -12}}, 2, 10);
  for (const auto& [file, view, expect] : {std::tuple{demo, "", "XZ view (Z across, X up)"},
                                           {demo, "--view iso", "isometric view"},
                                           {drill.Write("drill.iof"), "", "a3.5 3.5 0 1 0 7 0"},
                                           {SquareAndArc(), "", "T2 Arc mill"}}) {
    const std::string svg = TestSupport::TempPath("picture.svg");
    const ToolSupport::ToolRun r = Tool("plot '" + file + "' -o '" + svg + "' " + view);
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_NE(TestSupport::ReadFile<std::string>(svg).find(expect), std::string::npos) << expect;
    EXPECT_TRUE(Renders(svg)) << file << " " << view;
  }
}

}  // namespace
