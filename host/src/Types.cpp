// Type codes, masks and the serialisation registry.
#include <quarp/DbErr.h>
#include <quarp/DbId.h>
#include <quarp/UtMask.h>
#include <quarp/UtSerialize.h>
#include <quarp/UtTypeMgr.h>

#include <bit>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <unordered_map>
#include <vector>

namespace Quarp {

std::ostream& operator<<(std::ostream& os, DbId id) { return os << "DbId(" << id.Value() << ")"; }

const char* DbErrName(DbErr err) noexcept {
  switch (err) {
    case DbErr::Ok:
      return "Ok";
    case DbErr::NotFound:
      return "NotFound";
    case DbErr::Io:
      return "Io";
    case DbErr::NoManager:
      return "NoManager";
    case DbErr::NotAnIofFile:
      return "NotAnIofFile";
    case DbErr::NewerFormat:
      return "NewerFormat";
    case DbErr::Corrupt:
      return "Corrupt";
    case DbErr::UnknownClass:
      return "UnknownClass";
    case DbErr::BadRecord:
      return "BadRecord";
    case DbErr::ReadOnly:
      return "ReadOnly";
    case DbErr::InvalidArgument:
      return "InvalidArgument";
    case DbErr::ConstructFailed:
      return "ConstructFailed";
    case DbErr::AttachFailed:
      return "AttachFailed";
  }
  return "Unknown";
}

// --- UtMask ----------------------------------------------------------------------

void UtMask::Set(int index) {
  if (index < 0) return;
  const auto word = static_cast<std::size_t>(index) / 64;
  if (word >= m_bits.size()) m_bits.resize(word + 1, 0);
  m_bits[word] |= std::uint64_t{1} << (index % 64);
}

void UtMask::Clear(int index) noexcept {
  if (index < 0) return;
  const auto word = static_cast<std::size_t>(index) / 64;
  if (word < m_bits.size()) m_bits[word] &= ~(std::uint64_t{1} << (index % 64));
}

bool UtMask::IsEmpty() const noexcept {
  for (const auto w : m_bits) {
    if (w) return false;
  }
  return true;
}

int UtMask::Count() const noexcept {
  int n = 0;
  for (const auto w : m_bits) n += std::popcount(w);
  return n;
}

UtMask& UtMask::operator|=(const UtMask& other) {
  if (other.m_bits.size() > m_bits.size()) m_bits.resize(other.m_bits.size(), 0);
  for (std::size_t i = 0; i < other.m_bits.size(); ++i) m_bits[i] |= other.m_bits[i];
  return *this;
}

bool operator==(const UtMask& a, const UtMask& b) noexcept {
  const std::size_t n = std::max(a.m_bits.size(), b.m_bits.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = i < a.m_bits.size() ? a.m_bits[i] : 0;
    const auto y = i < b.m_bits.size() ? b.m_bits[i] : 0;
    if (x != y) return false;
  }
  return true;
}

// --- UtTypeMgr ---------------------------------------------------------------------

int UtTypeMgr::AddType(std::uint64_t code, const UtString& name) {
  const auto it = m_index.find(code);
  if (it != m_index.end()) return it->second;
  const int index = static_cast<int>(m_types.size());
  m_types.push_back({code, name});
  m_index.emplace(code, index);
  return index;
}

int UtTypeMgr::GetIndex(std::uint64_t code) const noexcept {
  const auto it = m_index.find(code);
  return it == m_index.end() ? -1 : it->second;
}

const UtString* UtTypeMgr::GetName(std::uint64_t code) const noexcept {
  const int index = GetIndex(code);
  return index < 0 ? nullptr : &m_types[static_cast<std::size_t>(index)].name;
}

DbTypeMgr& GetDbTypeMgr() {
  static DbTypeMgr mgr;
  return mgr;
}

// --- serialisation registry --------------------------------------------------------

namespace {

struct Registry {
  std::mutex mutex;
  std::vector<std::unique_ptr<UtSerializeClass>> byId;  // index = id - 1
  std::unordered_map<std::string, UtSerializeClass*> byName;
  std::vector<std::unique_ptr<std::string>> names;
};

Registry& GetRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

unsigned UtSerializeRegister(const char* className, UtSerializeFactory factory) {
  Registry& r = GetRegistry();
  std::lock_guard<std::mutex> lock(r.mutex);
  const std::string name(className ? className : "");
  const auto it = r.byName.find(name);
  if (it != r.byName.end()) return it->second->id;
  r.names.push_back(std::make_unique<std::string>(name));
  const auto id = static_cast<unsigned>(r.byId.size() + 1);
  r.byId.push_back(std::make_unique<UtSerializeClass>(UtSerializeClass{id, r.names.back()->c_str(), factory}));
  r.byName.emplace(name, r.byId.back().get());
  return id;
}

const UtSerializeClass* UtSerializeFind(std::string_view className) noexcept {
  Registry& r = GetRegistry();
  std::lock_guard<std::mutex> lock(r.mutex);
  const auto it = r.byName.find(std::string(className));
  return it == r.byName.end() ? nullptr : it->second;
}

const UtSerializeClass* UtSerializeFind(unsigned classId) noexcept {
  Registry& r = GetRegistry();
  std::lock_guard<std::mutex> lock(r.mutex);
  return classId >= 1 && classId <= r.byId.size() ? r.byId[classId - 1].get() : nullptr;
}

void UtThrowNewerVersion(unsigned stored, unsigned current, const char* className) {
  throw UtArchiveException(UtArchiveException::badSchema, std::string("stored version ") + std::to_string(stored) +
                                                              " of " + (className ? className : "a class") +
                                                              " is newer than version " + std::to_string(current) +
                                                              ", the newest this library reads");
}

}  // namespace Quarp
