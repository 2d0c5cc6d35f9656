// A FieldVisitor that writes each field as "name=value" (tests compare the lists).
#pragma once

#include <iof/FieldVisitor.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>
#include <iof/UtAttribute.h>
#include <iof/UtAxisMotionMap.h>
#include <iof/UtIofMovePoint.h>

#include <string>
#include <vector>

namespace TestSupport {

class RecordingVisitor : public IOF::FieldVisitor {
 public:
  std::vector<std::string> fields;

  void OnBool(const char* n, bool v) override { Add(n, v ? "true" : "false"); }
  void OnInt(const char* n, std::int64_t v) override { Add(n, std::to_string(v)); }
  void OnUInt(const char* n, std::uint64_t v) override { Add(n, std::to_string(v) + "u"); }
  void OnDouble(const char* n, double v) override { Add(n, Num(v)); }
  void OnId(const char* n, Quarp::DbId v) override { Add(n, "#" + std::to_string(v.Value())); }
  void OnString(const char* n, const CString& v) override { Add(n, "\"" + v.ToUtf8() + "\""); }
  void OnPoint(const char* n, const IOF::GmPoint3D& v) override {
    Add(n, "(" + Num(v.x) + "," + Num(v.y) + "," + Num(v.z) + ")");
  }
  void OnVector(const char* n, const IOF::GmVector3D& v) override {
    Add(n, "<" + Num(v[0]) + "," + Num(v[1]) + "," + Num(v[2]) + ">");
  }
  void OnMatrix(const char* n, const IOF::GmXformMat3D& v) override {
    Add(n, v.IsIdentity(1e-12) ? "identity" : "matrix");
  }
  void OnMovePoint(const char* n, const IOF::UtIofMovePoint& v) override { Add(n, v.ToString().ToUtf8()); }
  void OnAxisMotionMap(const char* n, const IOF::UtAxisMotionMap& v) override { Add(n, v.ToString().ToUtf8()); }
  void OnIds(const char* n, std::span<const Quarp::DbId> ids) override {
    std::string s = "[";
    for (const auto id : ids) s += (s.size() > 1 ? "," : "") + std::to_string(id.Value());
    Add(n, s + "]");
  }
  void OnBytes(const char* n, std::span<const std::uint8_t> bytes) override {
    Add(n, std::to_string(bytes.size()) + " bytes");
  }
  void OnAttributes(const char* n, const IOF::UtIOFAttribMap& v) override {
    Add(n, std::to_string(v.GetCount()) + " attributes");
  }

 private:
  static std::string Num(double v) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%g", v);
    return buf;
  }
  void Add(const char* n, const std::string& v) { fields.push_back(std::string(n) + "=" + v); }
};

}  // namespace TestSupport
