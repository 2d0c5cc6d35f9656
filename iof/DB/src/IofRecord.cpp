#include <iof/IofRecord.h>

#include <quarp/UtTypeMgr.h>

namespace IOF {

Quarp::UtString TrimClassName(const char* qualifiedFunction) {
  Quarp::UtString name(qualifiedFunction);
  int colon = name.ReverseFind(u':');
  if (colon >= 1 && name[colon - 1] == u':') name.Delete(colon - 1, name.GetLength());
  colon = name.ReverseFind(u':');
  name.Delete(0, colon + 1);
  return name;
}

int CachedTypeIdx(std::atomic<int>& cache, std::uint64_t code) {
  int index = cache.load(std::memory_order_relaxed);
  if (index == -1) {
    index = Quarp::GetDbTypeMgr().GetIndex(code);
    cache.store(index, std::memory_order_relaxed);
  }
  return index;
}

}  // namespace IOF
