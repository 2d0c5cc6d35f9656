// Runs the built iof tool (IOF_TOOL_PATH) and collects its exit code and output.
#pragma once

#include "TestSupport.h"

#include <sys/wait.h>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

namespace TestSupport {

struct ToolRun {
  int code;
  std::string out;
  std::string err;
};

inline std::string Slurp(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

// Runs the tool with `args` (already quoted as needed) and collects its output.
inline ToolRun Tool(const std::string& args) {
  const std::string out = TempPath("stdout.txt");
  const std::string err = TempPath("stderr.txt");
  const std::string cmd = std::string("'") + IOF_TOOL_PATH + "' " + args + " >'" + out + "' 2>'" + err + "'";
  const int status = std::system(cmd.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, Slurp(out), Slurp(err)};
}

}  // namespace TestSupport
