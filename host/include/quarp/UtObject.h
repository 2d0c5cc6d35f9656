// UtObject: root of every serialisable object of the framework.
#pragma once

namespace Quarp {

class UtArchive;

class UtObject {
 public:
  virtual ~UtObject() = default;

  // The class name registered with UtSerializeRegister, and the id it returned.
  virtual const char* GetObjectClassName() const = 0;
  virtual unsigned GetObjectClassId() const = 0;

  // Stores to or loads from `ar`, as its direction says.
  virtual void Serialize(UtArchive& ar) = 0;

 protected:
  UtObject() = default;
  UtObject(const UtObject&) = default;
  UtObject& operator=(const UtObject&) = default;
};

}  // namespace Quarp
