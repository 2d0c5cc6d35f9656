// The serialisation registry and the class version exchange.
//
// Every serialisable class registers its name with a factory while its library loads;
// archives carry class names, and loading makes objects through these factories.
// Class ids are dense from 1 and valid only within the process.
#pragma once

#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>

#include <string_view>

namespace Quarp {

using UtSerializeFactory = UtObject* (*)();

// Registers `className` with `factory` and returns the class id. Registering a name a
// second time returns the first id and keeps the first factory.
unsigned UtSerializeRegister(const char* className, UtSerializeFactory factory);

struct UtSerializeClass {
  unsigned id;
  const char* name;
  UtSerializeFactory factory;
};
// Registered classes by name or id; null when unknown.
const UtSerializeClass* UtSerializeFind(std::string_view className) noexcept;
const UtSerializeClass* UtSerializeFind(unsigned classId) noexcept;

// The class version exchange that starts every Serialize: when storing, writes
// `current` and returns it; when loading, returns the version that was stored.
// Versions are stored as compact integers: one byte below 128.
inline unsigned UtSerializeVersion(UtArchive& ar, unsigned current) {
  if (ar.IsStoring()) {
    ar.WriteCount(current);
    return current;
  }
  const std::uint64_t v = ar.ReadCount();
  // A version that does not fit in 32 bits is newer than anything this library knows.
  return v > 0xFFFFFFFFu ? 0xFFFFFFFFu : static_cast<unsigned>(v);
}

// Throws UtArchiveException(badSchema) when a loaded version is newer than `current`.
[[noreturn]] void UtThrowNewerVersion(unsigned stored, unsigned current, const char* className);
inline void UtCheckVersion(unsigned stored, unsigned current, const char* className) {
  if (stored > current) UtThrowNewerVersion(stored, current, className);
}

}  // namespace Quarp
