#include "TestSupport.h"

#include <gtest/gtest.h>
#include <xxhash.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace TestSupport {

Bytes Hex(const std::string& text) {
  Bytes out;
  int nibble = -1;
  for (const char c : text) {
    int v = -1;
    if (c >= '0' && c <= '9') v = c - '0';
    if (c >= 'a' && c <= 'f') v = c - 'a' + 10;
    if (c >= 'A' && c <= 'F') v = c - 'A' + 10;
    if (v < 0) continue;
    if (nibble < 0) {
      nibble = v;
    } else {
      out.push_back(static_cast<std::uint8_t>(nibble * 16 + v));
      nibble = -1;
    }
  }
  if (nibble >= 0) throw std::invalid_argument("odd number of hex digits");
  return out;
}

std::string ToHex(const Bytes& bytes) {
  std::string s;
  char buf[4];
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    std::snprintf(buf, sizeof buf, "%02X", bytes[i]);
    if (i) s += ' ';
    s += buf;
  }
  return s;
}

AssertRecorder::AssertRecorder() {
  m_previous = Zolt::Diagnostics::SetAssertHandler(
      [this](const char* file, int line, const char* function, const char* message) {
        m_calls.push_back({file ? file : "", line, function ? function : "", message ? message : ""});
      });
}
AssertRecorder::~AssertRecorder() { Zolt::Diagnostics::SetAssertHandler(std::move(m_previous)); }

unsigned TestRecord::s_ClassId = Quarp::UtSerializeRegister("TestRecord", &TestRecord::SerializeCreate);
unsigned TestRecordChild::s_ClassId = Quarp::UtSerializeRegister("TestRecordChild", &TestRecordChild::SerializeCreate);

Quarp::DbPtr<TestRecord> TestRecord::Create(int value, const wchar_t* name) {
  Quarp::DbPtr<TestRecord> p;
  auto* rec = new TestRecord;
  rec->m_Value = value;
  rec->m_Name = name;
  p.AttachEnt(rec);
  return p;
}

void TestRecord::Serialize(Quarp::UtArchive& ar) {
  const unsigned v = Quarp::UtSerializeVersion(ar, kVersion);
  DbBase::Serialize(ar);
  if (ar.IsStoring()) {
    if (m_FailToStore) throw std::runtime_error("cannot store this one");
    ar << m_Value << m_Name;
    return;
  }
  Quarp::UtCheckVersion(v, kVersion, "TestRecord");
  ar >> m_Value;
  if (v >= 1) ar >> m_Name;
}

Quarp::DbPtr<TestRecordChild> TestRecordChild::Create() {
  Quarp::DbPtr<TestRecordChild> p;
  p.AttachEnt(new TestRecordChild);
  return p;
}

void TestRecordChild::Serialize(Quarp::UtArchive& ar) {
  const unsigned v = Quarp::UtSerializeVersion(ar, 0);
  TestRecord::Serialize(ar);
  if (ar.IsStoring()) {
    ar << m_Extra;
    return;
  }
  Quarp::UtCheckVersion(v, 0, "TestRecordChild");
  ar >> m_Extra;
}

std::string TempPath(const std::string& name) {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  std::string leaf = info ? std::string(info->test_suite_name()) + "." + info->name() : "global";
  for (char& c : leaf) {
    if (c == '/' || c == '<' || c == '>' || c == ' ' || c == ',') c = '_';
  }
  const std::filesystem::path dir = std::filesystem::path(IOF_TEST_TMP) / leaf;
  // Each test starts with an empty directory of its own.
  static std::string current;
  if (current != leaf) {
    std::filesystem::remove_all(dir);
    current = leaf;
  }
  std::filesystem::create_directories(dir);
  return (dir / name).string();
}

void WriteFile(const std::string& path, const Bytes& bytes) {
  std::ofstream f(path, std::ios::binary | std::ios::trunc);
  f.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!f) throw std::runtime_error("cannot write " + path);
}

void Reseal(Bytes& file) {
  if (file.size() < 8) return;
  const std::uint64_t sum = XXH3_64bits(file.data(), file.size() - 8);
  std::memcpy(file.data() + file.size() - 8, &sum, 8);
}

}  // namespace TestSupport
