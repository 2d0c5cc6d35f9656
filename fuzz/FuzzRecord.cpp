// Loads one object of a registered class from arbitrary bytes: the first byte picks the
// class, the rest is the loading archive its Serialize reads. Whatever loads is then used
// as a reader would: its text, its fields, a comparison with a fresh object of its class
// and a store. Every input must end in success or the archive's error, without a crash,
// a hang, a leak or a large allocation.
#include "../tests/RegisteredClasses.h"

#include <iof/DbIOFBase.h>
#include <iof/FieldVisitor.h>
#include <quarp/DbPtr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>

#include <cstdint>
#include <memory>
#include <span>

namespace {

// Takes every field and keeps nothing: the fields of a loaded object must all be readable.
class Touch final : public IOF::FieldVisitor {
 public:
  void OnBool(const char*, bool v) override { m_n += v; }
  void OnInt(const char*, std::int64_t v) override { m_n += static_cast<std::uint64_t>(v); }
  void OnUInt(const char*, std::uint64_t v) override { m_n += v; }
  void OnDouble(const char*, double v) override { m_n += v == v; }
  void OnId(const char*, Quarp::DbId v) override { m_n += v.Value(); }
  void OnString(const char*, const CString& v) override { m_n += static_cast<std::uint64_t>(v.GetLength()); }
  void OnPoint(const char*, const IOF::GmPoint3D&) override { ++m_n; }
  void OnVector(const char*, const IOF::GmVector3D&) override { ++m_n; }
  void OnMatrix(const char*, const IOF::GmXformMat3D&) override { ++m_n; }
  void OnMovePoint(const char*, const IOF::UtIofMovePoint&) override { ++m_n; }
  void OnAxisMotionMap(const char*, const IOF::UtAxisMotionMap&) override { ++m_n; }
  void OnIds(const char*, std::span<const Quarp::DbId> ids) override { m_n += ids.size(); }
  void OnBytes(const char*, std::span<const std::uint8_t> bytes) override { m_n += bytes.size(); }
  void OnAttributes(const char*, const IOF::UtIOFAttribMap&) override { ++m_n; }
  void OnBeginGroup(const char*, std::size_t count) override { m_n += count; }
  void OnBeginEntry() override { ++m_n; }
  void OnEndEntry() override { ++m_n; }
  void OnEndGroup() override { ++m_n; }

 private:
  std::uint64_t m_n = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const auto& names = RegisteredClasses::kNames;
  const Quarp::UtSerializeClass* cls = Quarp::UtSerializeFind(names[data[0] % names.size()]);
  if (!cls || !cls->factory) return 0;
  std::unique_ptr<Quarp::UtObject> object(cls->factory());
  Quarp::UtArchive in(Quarp::UtArchive::Load, std::span<const std::uint8_t>(data + 1, size - 1));
  try {
    object->Serialize(in);
  } catch (const Quarp::UtArchiveException&) {
    return 0;
  }
  if (auto* record = dynamic_cast<IOF::DbIOFBase*>(object.get())) {
    Quarp::DbCPtr<IOF::DbIOFBase> loaded, fresh;
    object.release();
    loaded.AttachEnt(record);  // owns it from here
    fresh.AttachEnt(dynamic_cast<IOF::DbIOFBase*>(cls->factory()));
    (void)record->ToIOFString();
    Touch touch;
    record->VisitFields(touch);
    CString report;
    record->Compare(fresh, report);
    fresh->Compare(loaded, report);
    Quarp::UtArchive out(Quarp::UtArchive::Store);
    record->Serialize(out);
    return 0;
  }
  Quarp::UtArchive out(Quarp::UtArchive::Store);
  object->Serialize(out);
  return 0;
}
