// Feeds arbitrary bytes to DbMgr::ReadFromMemory and walks whatever loads: every input
// must end in success, a DbErr or the archive's version error, without a crash, a hang
// or an out-of-bounds access. A third of the inputs get a valid checksum, so that the
// structural checks behind it are reached too.
#include <iof/DbIOFBase.h>
#include <iof/DbIOFList.h>
#include <quarp/DbMgr.h>
#include <quarp/UtArchive.h>

#include <xxhash.h>

#include <cstdint>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::uint8_t> bytes(data, data + size);
  if (size > 44 && (data[size - 1] % 3) == 0) {
    const std::uint64_t sum = XXH3_64bits(bytes.data(), bytes.size() - 8);
    std::memcpy(bytes.data() + bytes.size() - 8, &sum, 8);
  }
  Quarp::DbMgr mgr;
  try {
    if (mgr.ReadFromMemory(bytes) != Quarp::DbErr::Ok) return 0;
  } catch (const Quarp::UtArchiveException&) {
    return 0;
  }
  // Exercise what a reader does with loaded records: texts, lists, sub-lists.
  Quarp::DbBaseCPtr any(nullptr);
  Quarp::DbId id;
  while (mgr.GetNext(any, id, 0)) {
    const auto* record = dynamic_cast<const IOF::DbIOFBase*>(any.Get());
    if (!record) continue;
    (void)record->ToIOFString();
    (void)record->GetSubList(-1);
    if (const auto* list = dynamic_cast<const IOF::DbIOFList*>(record)) (void)list->Size();
  }
  return 0;
}
