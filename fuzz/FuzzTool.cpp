// Runs the iof tool's commands that read a file (dump, stats, post, validate, diff) over
// arbitrary bytes. Exit codes and error lines are the tool's; the only requirement is
// that nothing crashes, hangs or leaks. A third of the inputs get a valid checksum, so
// that the commands see files that load.
#include "Commands.h"

#include <xxhash.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path = "/tmp/iof_fuzz_tool." + std::to_string(::getpid()) + ".iof";
  static std::streambuf* const quiet = [] {
    std::cerr.rdbuf(nullptr);  // the tool's warnings
    return nullptr;
  }();
  (void)quiet;
  std::vector<std::uint8_t> bytes(data, data + size);
  if (size > 44 && (data[size - 1] % 3) == 0) {
    const std::uint64_t sum = XXH3_64bits(bytes.data(), bytes.size() - 8);
    std::memcpy(bytes.data() + bytes.size() - 8, &sum, 8);
  }
  if (FILE* f = std::fopen(path.c_str(), "wb")) {
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
  } else {
    return 0;
  }
  std::ostream nowhere(nullptr);
  IofTool::RunDump({path, std::nullopt, false}, nowhere);
  IofTool::RunDump({path, 1, true}, nowhere);
  IofTool::RunStats(path, nowhere);
  IofTool::RunPost({path, "", std::nullopt, 0.01, true}, nowhere);
  IofTool::RunValidate(path, nowhere);
  IofTool::RunDiff({path, path, false, false}, nowhere);
  IofTool::RunDiff({path, path, true, true}, nowhere);
  std::cerr.clear();
  ::unlink(path.c_str());
  return 0;
}
