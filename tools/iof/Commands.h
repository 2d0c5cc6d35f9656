// The tool's commands. Each returns the process exit code: 0 success, 1 a failure in
// the data (a message on stderr says what), 2 a usage error. diff and validate answer
// as diff does: 0 equal (clean), 1 differences (problems) found, 2 trouble (a file
// that cannot be read or compared).
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

namespace Quarp {
class DbMgr;
}

namespace IofTool {

enum ExitCode : int { kOk = 0, kDataError = 1, kUsageError = 2, kFound = 1, kTrouble = 2 };

struct DumpOptions {
  std::string file;
  std::optional<int> stream;
  bool json = false;
};

struct PlotOptions {
  std::string file;
  std::string output;
  std::string view;  // "xy", "xz", "yz", "iso", or empty for the default
  std::optional<int> stream;
  int width = 1000;  // pixels
};

struct PostOptions {
  std::string file;
  std::string output;  // standard output when empty
  std::optional<int> stream;
  double tolerance = 0.001;  // mm, the chordal tolerance of arcs posted as G1
  bool lineNumbers = false;
};

struct DiffOptions {
  std::string left, right;
  bool structural = false;  // the comparison manager's list alone
  bool json = false;
};

int RunDemo(const std::string& outFile, std::ostream& out);
int RunDump(const DumpOptions& options, std::ostream& out);
int RunStats(const std::string& file, std::ostream& out);
int RunPlot(const PlotOptions& options);
int RunPost(const PostOptions& options, std::ostream& out);
int RunDiff(const DiffOptions& options, std::ostream& out);
int RunValidate(const std::string& file, std::ostream& out);

// Loads `file` into `mgr` read-only; on failure writes one line to stderr and returns
// false.
bool LoadFile(const std::string& file, Quarp::DbMgr& mgr);

}  // namespace IofTool
