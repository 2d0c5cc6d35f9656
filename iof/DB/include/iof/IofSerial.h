// Serialisable objects of the IOF library that are not records (attribute items, the
// attribute map, move points, axis motion maps): the class-name registration written
// once.
//
//   class UtIofMovePoint : public Quarp::UtObject {
//     IOF_DECLARE_SERIAL(UtIofMovePoint)
//    public:
//     void Serialize(Quarp::UtArchive& ar) override;
//     ...
//   };
//   // in the source:
//   IOF_IMPLEMENT_SERIAL(UtIofMovePoint)
//
// The class is registered under its own name with its SerializeCreate factory while
// the library loads; GetObjectClassId() returns the id the registry gave it and
// GetObjectClassName() the name. SerializeCreate() needs a default constructor.
#pragma once

#include <quarp/UtObject.h>
#include <quarp/UtSerialize.h>

#define IOF_DECLARE_SERIAL(Class)                  \
 public:                                           \
  static Quarp::UtObject* SerializeCreate();       \
  const char* GetObjectClassName() const override; \
  unsigned GetObjectClassId() const override;      \
                                                   \
 private:                                          \
  static unsigned s__ClassId;

#define IOF_IMPLEMENT_SERIAL(Class)                                                         \
  unsigned Class::s__ClassId = Quarp::UtSerializeRegister(#Class, &Class::SerializeCreate); \
  Quarp::UtObject* Class::SerializeCreate() { return new Class(); }                         \
  const char* Class::GetObjectClassName() const { return #Class; }                          \
  unsigned Class::GetObjectClassId() const { return s__ClassId; }
