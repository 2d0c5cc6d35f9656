// FieldVisitor: a record lists its fields to it, one call per field.
//
//   struct Printer : IOF::FieldVisitor { ... };
//   Printer p;
//   record->VisitFields(p);
//
// Fields come base class first, each class's own fields in archive order, named by the
// member names the system uses in difference reports ("m_FeedRate"). Every archived
// field is listed; so is a field that a class holds and compares without archiving it.
// Values that a field of an older layout carried and a newer one dropped are not.
//
// Composite fields (maps, sequences, tables of structures) come as a group:
// OnBeginGroup(name, count), then for each entry OnBeginEntry(), the entry's members as
// fields of their own, OnEndEntry(); then OnEndGroup(). A map entry's members are named
// "key" and "value", an element of a plain sequence "value", and the members of a
// structure by their own names.
#pragma once

#include <afx/CString.h>
#include <quarp/DbId.h>

#include <cstddef>
#include <cstdint>
#include <span>

namespace IOF {

class GmPoint3D;
class GmVector3D;
class GmXformMat3D;
class UtIofMovePoint;
class UtAxisMotionMap;
class UtIOFAttribMap;

class FieldVisitor {
 public:
  virtual ~FieldVisitor() = default;

  virtual void OnBool(const char* name, bool value) = 0;
  // Signed integers and enumerations of any width.
  virtual void OnInt(const char* name, std::int64_t value) = 0;
  // Unsigned integers of any width.
  virtual void OnUInt(const char* name, std::uint64_t value) = 0;
  virtual void OnDouble(const char* name, double value) = 0;
  virtual void OnId(const char* name, Quarp::DbId value) = 0;
  virtual void OnString(const char* name, const CString& value) = 0;
  virtual void OnPoint(const char* name, const GmPoint3D& value) = 0;
  virtual void OnVector(const char* name, const GmVector3D& value) = 0;
  virtual void OnMatrix(const char* name, const GmXformMat3D& value) = 0;
  virtual void OnMovePoint(const char* name, const UtIofMovePoint& value) = 0;
  virtual void OnAxisMotionMap(const char* name, const UtAxisMotionMap& value) = 0;
  // Id arrays and the items of a list, in order.
  virtual void OnIds(const char* name, std::span<const Quarp::DbId> ids) = 0;
  // Opaque byte blocks.
  virtual void OnBytes(const char* name, std::span<const std::uint8_t> bytes) = 0;
  virtual void OnAttributes(const char* name, const UtIOFAttribMap& value) = 0;
  virtual void OnBeginGroup(const char* name, std::size_t count) = 0;
  virtual void OnBeginEntry() = 0;
  virtual void OnEndEntry() = 0;
  virtual void OnEndGroup() = 0;
};

}  // namespace IOF
