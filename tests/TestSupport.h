// Helpers shared by the test suites: byte strings, archives, assertion capture, and two
// small record classes for the framework's own tests.
#pragma once

#include <afx/CString.h>
#include <quarp/DbBase.h>
#include <quarp/DbMgr.h>
#include <quarp/DbPtr.h>
#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>
#include <zolt/Diagnostics.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace TestSupport {

using Bytes = std::vector<std::uint8_t>;

// "01 0a FF" -> {0x01, 0x0a, 0xff}; blanks are ignored.
Bytes Hex(const std::string& text);
// {0x01, 0x0a} -> "01 0A"
std::string ToHex(const Bytes& bytes);

// Stores `obj` through its Serialize and returns the bytes.
template <class T>
Bytes Store(T& obj) {
  Quarp::UtArchive ar(Quarp::UtArchive::Store);
  obj.Serialize(ar);
  return ar.GetBytes();
}

// Loads `obj` from `bytes` and checks that every byte was read.
template <class T>
bool LoadAll(T& obj, const Bytes& bytes) {
  Quarp::UtArchive ar(Quarp::UtArchive::Load, bytes);
  obj.Serialize(ar);
  return ar.GetRemaining() == 0;
}

// Loads `bytes` into `obj` and returns the cause of the UtArchiveException that ended
// the load, or -1 when none was thrown; `position` gets where the load stopped.
template <class T>
int LoadCause(T& obj, const Bytes& bytes, std::size_t* position = nullptr) {
  Quarp::UtArchive ar(Quarp::UtArchive::Load, bytes);
  int cause = -1;
  try {
    obj.Serialize(ar);
  } catch (const Quarp::UtArchiveException& e) {
    cause = e.m_cause;
  }
  if (position) *position = ar.GetPosition();
  return cause;
}

// Checks that `obj` stores exactly the bytes `hex` (blanks ignored).
template <class T>
void ExpectStores(T& obj, const std::string& hex) {
  EXPECT_EQ(ToHex(Store(obj)), ToHex(Hex(hex)));
}

// Raises the version at byte `versionAt` of `obj`'s archive by one: the load must end in
// the version error (cause 2) after `readBefore` bytes, so before the fields that
// version would lay out.
template <class T>
void ExpectNewerVersionRefused(T& obj, std::size_t versionAt, std::size_t readBefore) {
  Bytes bytes = Store(obj);
  ++bytes.at(versionAt);
  std::size_t stopped = 0;
  EXPECT_EQ(LoadCause(obj, bytes, &stopped), 2) << "version at byte " << versionAt;
  EXPECT_EQ(stopped, readBefore) << "version at byte " << versionAt;
}

// Archive parts that many records share.
// The record base of an unnamed record: its version, an empty name, an empty attribute
// map (version, count 0) and no sub-lists.
inline const std::string kRecordBase = "00  00 00 00 00  00 00 00 00 00  00 ";
inline constexpr std::size_t kRecordBaseSize = 11;
// The NCI base of a fresh record: m_GCode 0, m_OwnerOpId -1, m_Time 0.
inline const std::string kFreshNciBase = "00 00 00 00  FF FF FF FF  00 00 00 00 00 00 00 00 ";
inline constexpr std::size_t kNciBaseSize = 16;
// The base-move part of a fresh move: no feed, feed move, no compensation, position
// code 0, Before, not incremental.
inline const std::string kFreshBaseMove = "00 00 00 00 00 00 00 00  01  00 00 00 00  00 00 00 00  01 00 00 00  00 ";
inline constexpr std::size_t kBaseMoveSize = 22;
// Doubles 1.0 and 0.0.
inline const std::string kOne = "00 00 00 00 00 00 F0 3F ";
inline const std::string kZero = "00 00 00 00 00 00 00 00 ";

// Records the assertion handler's calls while in scope.
class AssertRecorder {
 public:
  struct Call {
    std::string file;
    int line;
    std::string function;
    std::string message;
  };
  AssertRecorder();
  ~AssertRecorder();
  AssertRecorder(const AssertRecorder&) = delete;
  AssertRecorder& operator=(const AssertRecorder&) = delete;
  const std::vector<Call>& Calls() const { return m_calls; }
  // Where the calls came from, as "file:line function".
  std::vector<std::string> Places() const {
    std::vector<std::string> places;
    for (const Call& c : m_calls) places.push_back(c.file + ":" + std::to_string(c.line) + " " + c.function);
    return places;
  }

 private:
  std::vector<Call> m_calls;
  Zolt::Diagnostics::AssertHandler m_previous;
};

// A small record of the framework's tests: an int and a string, at version 1 (version
// 0 had the int only).
class TestRecord : public Quarp::DbBase {
 public:
  static constexpr std::uint64_t kTypeCode = 0x7001;
  static constexpr unsigned kVersion = 1;

  static Quarp::DbPtr<TestRecord> Create(int value = 0, const wchar_t* name = L"");
  static Quarp::UtObject* SerializeCreate() { return new TestRecord; }

  const char* GetObjectClassName() const override { return "TestRecord"; }
  unsigned GetObjectClassId() const override { return s_ClassId; }
  std::uint64_t GetType() const override { return kTypeCode; }
  bool ContainsType(std::uint64_t code) const override { return code == kTypeCode || DbBase::ContainsType(code); }
  void Serialize(Quarp::UtArchive& ar) override;

  int m_Value = 0;
  CString m_Name;
  bool m_FailToStore = false;  // storing throws, to make a Write fail half-way

 protected:
  TestRecord() = default;

 private:
  static unsigned s_ClassId;
};

// Derived from TestRecord, to exercise typed pointers.
class TestRecordChild : public TestRecord {
 public:
  static constexpr std::uint64_t kTypeCode = 0x7002;
  static Quarp::DbPtr<TestRecordChild> Create();
  static Quarp::UtObject* SerializeCreate() { return new TestRecordChild; }
  const char* GetObjectClassName() const override { return "TestRecordChild"; }
  unsigned GetObjectClassId() const override { return s_ClassId; }
  std::uint64_t GetType() const override { return kTypeCode; }
  bool ContainsType(std::uint64_t code) const override { return code == kTypeCode || TestRecord::ContainsType(code); }
  void Serialize(Quarp::UtArchive& ar) override;

  double m_Extra = 0.0;

 private:
  TestRecordChild() = default;
  static unsigned s_ClassId;
};

// Writes `bytes` to a fresh file under the test's temporary directory and returns its path.
std::string TempPath(const std::string& name);
void WriteFile(const std::string& path, const Bytes& bytes);
// The whole of a file, as bytes or as text.
template <class T = Bytes>
T ReadFile(const std::string& path) {
  std::ifstream f(path, std::ios::binary);
  return T(std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>());
}

// Recomputes the trailing checksum of an IOF file image, so that tests can forge
// structurally bad files that pass the checksum.
void Reseal(Bytes& file);

}  // namespace TestSupport
