// iof: write a demonstration job, dump a file as text or JSON, show statistics.
//
//   iof demo [-o FILE]
//   iof dump FILE [--stream N] [--json]
//   iof stats FILE
//   iof plot FILE -o OUT.svg [--view xy|xz|yz|iso] [--stream N] [--width PX]
//   iof post FILE [-o OUT] [--stream N] [--tolerance MM] [--line-numbers]
//   iof diff A B [--structural] [--json]
//   iof validate FILE
//
// Exit codes: 0 success, 1 a failure in the data (one line on stderr says what),
// 2 a usage error; diff and validate: 0 equal (clean), 1 different (problems), 2 trouble.
#include "Commands.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>

int main(int argc, char** argv) {
  CLI::App app{"iof: inspect and produce IOF database files"};
  app.footer("Examples: iof demo -o demo.iof; iof plot demo.iof -o demo.svg; iof post demo.iof -o demo.nc");
  app.require_subcommand(1);

  std::string demoOut = "demo.iof";
  auto* demo = app.add_subcommand("demo", "Write a demonstration job and print a summary of it");
  demo->add_option("-o,--output", demoOut, "File to write")->capture_default_str();

  IofTool::DumpOptions dumpOptions;
  auto* dump = app.add_subcommand("dump", "Print every record in program order, one line each");
  dump->add_option("file", dumpOptions.file, "IOF file")->required();
  dump->add_option("--stream", dumpOptions.stream, "Only the stream with this number");
  dump->add_flag("--json", dumpOptions.json, "JSON Lines: id, class, depth and fields of each record");

  std::string statsFile;
  auto* stats = app.add_subcommand("stats", "Record counts, machining time, file size and load time");
  stats->add_option("file", statsFile, "IOF file")->required();

  IofTool::PlotOptions plotOptions;
  auto* plot = app.add_subcommand("plot", "Draw the toolpath as an SVG picture, a panel per stream")
                   ->footer("Example: iof plot demo.iof -o demo.svg --view iso");
  plot->add_option("file", plotOptions.file, "IOF file")->required();
  plot->add_option("-o,--output", plotOptions.output, "SVG file to write")->required();
  plot->add_option("--view", plotOptions.view,
                   "xy, xz, yz or iso (default: the plane of the largest extent, xz for "
                   "a lathe stream)")
      ->check(CLI::IsMember({"xy", "xz", "yz", "iso"}));
  plot->add_option("--stream", plotOptions.stream, "Only the stream with this number");
  plot->add_option("--width", plotOptions.width, "Picture width in pixels")
      ->capture_default_str()
      ->check(CLI::Range(200, 20000));

  IofTool::PostOptions postOptions;
  auto* post = app.add_subcommand("post", "Post-process each stream into an ISO (RS-274) G-code program")
                   ->footer("Example: iof post demo.iof -o demo.nc --line-numbers");
  post->add_option("file", postOptions.file, "IOF file")->required();
  post->add_option("-o,--output", postOptions.output, "File to write (default: standard output)");
  post->add_option("--stream", postOptions.stream, "Only the stream with this number");
  post->add_option("--tolerance", postOptions.tolerance, "Chordal tolerance in mm for arcs posted as G1")
      ->capture_default_str()
      ->check(CLI::PositiveNumber);
  post->add_flag("--line-numbers", postOptions.lineNumbers, "Number the blocks N10, N20, ...");

  IofTool::DiffOptions diffOptions;
  auto* diff = app.add_subcommand("diff", "Differences between two files; exit 0 equal, 1 different, 2 trouble");
  diff->add_option("left", diffOptions.left, "IOF file")->required();
  diff->add_option("right", diffOptions.right, "IOF file")->required();
  diff->add_flag("--structural", diffOptions.structural, "Only the comparison manager's structural differences");
  diff->add_flag("--json", diffOptions.json, "JSON Lines: kind, both ids and classes, text");

  std::string validateFile;
  auto* validate = app.add_subcommand("validate", "Check ids, lists and streams; exit 0 clean, 1 problems, 2 trouble");
  validate->add_option("file", validateFile, "IOF file")->required();

  // CLI11 would only say that a command is missing; name the word it did not know.
  const auto known = [&app](const std::string& word) {
    const auto commands = app.get_subcommands({});
    return std::any_of(commands.begin(), commands.end(), [&](const CLI::App* c) { return c->check_name(word); });
  };
  if (argc > 1 && argv[1][0] != '-' && !known(argv[1])) {
    std::cerr << "iof: unknown command '" << argv[1] << "' (see iof --help)\n";
    return IofTool::kUsageError;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    return app.exit(e);
  } catch (const CLI::CallForAllHelp& e) {
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    app.exit(e);
    return IofTool::kUsageError;
  }

  try {
    if (*demo) return IofTool::RunDemo(demoOut, std::cout);
    if (*dump) return IofTool::RunDump(dumpOptions, std::cout);
    if (*stats) return IofTool::RunStats(statsFile, std::cout);
    if (*plot) return IofTool::RunPlot(plotOptions);
    if (*post) return IofTool::RunPost(postOptions, std::cout);
    if (*diff) return IofTool::RunDiff(diffOptions, std::cout);
    if (*validate) return IofTool::RunValidate(validateFile, std::cout);
  } catch (const std::exception& e) {
    std::cerr << "iof: " << e.what() << "\n";
    return *diff || *validate ? IofTool::kTrouble : IofTool::kDataError;
  } catch (...) {
    std::cerr << "iof: unexpected failure\n";
    return *diff || *validate ? IofTool::kTrouble : IofTool::kDataError;
  }
  return IofTool::kUsageError;
}
