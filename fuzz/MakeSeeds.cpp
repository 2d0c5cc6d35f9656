// Writes the fuzz targets' seeds: the demo job's file, and for every registered class a
// file with one fresh record of it (record classes) and the stored bytes of one fresh
// object of it, behind the byte that makes fuzz_record pick the class.
//   make_seeds <fuzz/corpus>
#include "../tests/RegisteredClasses.h"
#include "Commands.h"

#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

void Save(const fs::path& path, const std::vector<std::uint8_t>& bytes) {
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: make_seeds <corpus directory>\n";
    return 2;
  }
  const fs::path root = argv[1];
  for (const char* dir : {"read", "record", "tool"}) fs::create_directories(root / dir);
  std::ostringstream summary;
  if (IofTool::RunDemo((root / "read" / "demo.iof").string(), summary) != IofTool::kOk) return 1;
  fs::copy_file(root / "read" / "demo.iof", root / "tool" / "demo.iof", fs::copy_options::overwrite_existing);

  const auto& names = RegisteredClasses::kNames;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const Quarp::UtSerializeClass* cls = Quarp::UtSerializeFind(names[i]);
    if (!cls || !cls->factory) {
      std::cerr << "make_seeds: " << names[i] << " is not registered\n";
      return 1;
    }
    std::unique_ptr<Quarp::UtObject> object(cls->factory());
    Quarp::UtArchive out(Quarp::UtArchive::Store);
    object->Serialize(out);
    std::vector<std::uint8_t> bytes = out.TakeBytes();
    bytes.insert(bytes.begin(), static_cast<std::uint8_t>(i));
    Save(root / "record" / names[i], bytes);

    auto* record = dynamic_cast<Quarp::DbBase*>(object.get());
    if (!record) continue;
    Quarp::DbBasePtr pointer;
    object.release();
    pointer.AttachEnt(record);
    Quarp::DbMgr mgr;
    mgr.Add(pointer);
    std::vector<std::uint8_t> file;
    if (mgr.WriteToMemory(file) != Quarp::DbErr::Ok) return 1;
    Save(root / "read" / (std::string(names[i]) + ".iof"), file);
  }
  return 0;
}
