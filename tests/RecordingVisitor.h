// A FieldVisitor that writes each field as "name=value" (tests compare the lists), and
// the record checks built on it.
#pragma once

#include "TestSupport.h"

#include <iof/DbIOFBase.h>
#include <iof/FieldVisitor.h>
#include <iof/GmPoint3D.h>
#include <iof/GmVector3D.h>
#include <iof/GmXformMat3D.h>
#include <iof/UtAttribute.h>
#include <iof/UtAxisMotionMap.h>
#include <iof/UtIofMovePoint.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace TestSupport {

// A real as the visitor writes it.
inline std::string Num(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%g", v);
  return buf;
}

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
    if (v.IsIdentity(1e-12)) return Add(n, "identity");
    std::string s;
    for (int i = 0; i < 4; ++i) {
      for (int j = 0; j < 4; ++j) s += (s.empty() ? "[" : " ") + Num(v(i, j));
    }
    Add(n, s + "]");
  }
  void OnMovePoint(const char* n, const IOF::UtIofMovePoint& v) override { Add(n, v.ToString().ToUtf8()); }
  void OnAxisMotionMap(const char* n, const IOF::UtAxisMotionMap& v) override { Add(n, v.ToString().ToUtf8()); }
  void OnIds(const char* n, std::span<const Quarp::DbId> ids) override {
    std::string s = "[";
    for (const auto id : ids) s += (s.size() > 1 ? "," : "") + std::to_string(id.Value());
    Add(n, s + "]");
  }
  void OnBytes(const char* n, std::span<const std::uint8_t> bytes) override {
    Add(n, "{" + ToHex(Bytes(bytes.begin(), bytes.end())) + "}");
  }
  void OnAttributes(const char* n, const IOF::UtIOFAttribMap& v) override {
    Add(n, std::to_string(v.GetCount()) + " attributes");
  }
  // A group reads "name=[{key=1,value=2.5},{...}]".
  void OnBeginGroup(const char* n, std::size_t) override { m_Groups.push_back({n, {}, {}}); }
  void OnBeginEntry() override { m_Groups.back().entry.clear(); }
  void OnEndEntry() override { m_Groups.back().entries.push_back("{" + m_Groups.back().entry + "}"); }
  void OnEndGroup() override {
    Group g = std::move(m_Groups.back());
    m_Groups.pop_back();
    std::string joined;
    for (const std::string& e : g.entries) joined += (joined.empty() ? "" : ",") + e;
    Add(g.name.c_str(), "[" + joined + "]");
  }

 private:
  struct Group {
    std::string name;
    std::string entry;
    std::vector<std::string> entries;
  };
  std::vector<Group> m_Groups;
  void Add(const char* n, const std::string& v) {
    if (m_Groups.empty()) return fields.push_back(std::string(n) + "=" + v);
    std::string& entry = m_Groups.back().entry;
    entry += (entry.empty() ? "" : ",") + std::string(n) + "=" + v;
  }
};

// The visitor's lines of a record: every field, base classes first.
inline std::vector<std::string> Fields(const IOF::DbIOFBase& record) {
  RecordingVisitor v;
  record.VisitFields(v);
  return v.fields;
}

// The lines of the base parts of a fresh record.
inline const std::vector<std::string> kRecordBaseFields = {"m_Name=\"\"", "m_Attributes=0 attributes", "m_SubLists=[]"};
inline const std::vector<std::string> kNciBaseFields = {"m_GCode=0", "m_OwnerOpId=-1", "m_Time=0"};

// Checks the record's lines against the given parts, joined in order.
inline void ExpectFields(const IOF::DbIOFBase& record, std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> expected;
  for (const auto& part : parts) expected.insert(expected.end(), part.begin(), part.end());
  EXPECT_EQ(Fields(record), expected);
}

// Checks that `record` survives the three ways a record is copied, each copy listing
// the same fields: loaded from its archive into a fresh record of its class (and storing
// the same bytes again); cloned into another manager (Clone leaves the attribute map
// out: intended); and that clone written as a whole file and read back by its id.
template <class R>
void ExpectRoundTrips(R& record) {
  SCOPED_TRACE(std::string("round trips of ") + record.GetObjectClassName());
  const Bytes bytes = Store(record);
  std::vector<std::string> fields = Fields(record);
  std::unique_ptr<R> fresh(dynamic_cast<R*>(R::SerializeCreate()));
  ASSERT_NE(fresh, nullptr);
  ASSERT_TRUE(LoadAll(*fresh, bytes));
  EXPECT_EQ(Fields(*fresh), fields) << "memory archive";
  EXPECT_EQ(ToHex(Store(*fresh)), ToHex(bytes));

  for (std::string& f : fields) {
    if (f.starts_with("m_Attributes=")) f = "m_Attributes=0 attributes";
  }
  Quarp::DbMgr mgr;
  Quarp::DbErr err{};
  const auto* clone = dynamic_cast<const R*>(record.Clone(Quarp::DbCloneMode::Normal, &mgr, nullptr, err));
  ASSERT_NE(clone, nullptr);
  EXPECT_EQ(Fields(*clone), fields) << "clone";
  Bytes file;
  ASSERT_EQ(mgr.WriteToMemory(file), Quarp::DbErr::Ok) << mgr.GetLastErrorText();
  Quarp::DbMgr back;
  ASSERT_EQ(back.ReadFromMemory(file), Quarp::DbErr::Ok) << back.GetLastErrorText();
  Quarp::DbCPtr<R> loaded;
  ASSERT_TRUE(back.Get(loaded, clone->GetId(), 0));
  EXPECT_EQ(Fields(*loaded), fields) << "whole file";
}

// The archive of `record` is exactly `hex`, and the record round-trips.
template <class R>
void ExpectArchive(R& record, const std::string& hex) {
  ExpectStores(record, hex);
  ExpectRoundTrips(record);
}

}  // namespace TestSupport
