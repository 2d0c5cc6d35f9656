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
unsigned UtSerializeVersion(UtArchive& ar, unsigned current);

// Throws UtArchiveException(badSchema) when a loaded version is newer than `current`.
void UtCheckVersion(unsigned stored, unsigned current, const char* className);

}  // namespace Quarp
