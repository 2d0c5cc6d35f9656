// A generic reader that uses the framework alone and names no record class: it must
// still load an IOF file, which needs libiof's classes registered.
#include <quarp/DbMgr.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  Quarp::DbMgr mgr;
  if (mgr.Read(Quarp::UtString(CString::FromUtf8(argv[1])), true) != Quarp::DbErr::Ok) {
    std::fprintf(stderr, "%s\n", mgr.GetLastErrorText().c_str());
    return 1;
  }
  std::printf("%zu records\n", mgr.GetCount());
  return 0;
}
