#include <quarp/UtArchive.h>
#include <quarp/UtSerialize.h>

#include "RecordArena.h"

#include <algorithm>
#include <memory>
#include <string>

namespace Quarp {

UtArchiveException::UtArchiveException(int cause, std::string message) : m_cause(cause), m_message(std::move(message)) {
  if (m_message.empty()) m_message = "archive error " + std::to_string(cause);
}

UtArchive::UtArchive(Mode mode) : m_mode(mode) {}

UtArchive::UtArchive(Mode mode, std::span<const std::uint8_t> bytes)
    : m_mode(mode), m_in(bytes.data()), m_size(bytes.size()) {}

void UtArchive::Reset() noexcept {
  m_used = 0;
  m_classes.clear();
}

void UtArchive::Grow(std::size_t n) { Resize(std::max<std::size_t>(256, m_used + n)); }

void UtArchive::Reserve(std::size_t n) {
  if (n > m_out.size() - m_used) Resize(m_used + n);
}

void UtArchive::Adopt(std::vector<std::uint8_t>&& room) {
  Reset();
  m_out = std::move(room);
  m_out.resize(m_out.capacity());
}

void UtArchive::Resize(std::size_t size) {
  // The whole capacity is room to store into. A large new buffer is faulted in at once:
  // one call instead of a trap every 4 KB page, which costs far more where page faults
  // are expensive (a save's 144 KB buffer in memory the allocator had just given back
  // took longer to fault in than a 10k-move job takes to encode).
  Detail::GrowFaultedIn(m_out, size);
  m_out.resize(m_out.capacity());
}

void UtArchive::DropStored(std::size_t n) noexcept {
  if (n >= m_used) {
    m_used = 0;
    return;
  }
  std::memmove(m_out.data(), m_out.data() + n, m_used - n);
  m_used -= n;
}

void UtArchive::OpenGap(std::size_t at, std::size_t n) {
  if (at > m_used) at = m_used;
  if (n > m_out.size() - m_used) Grow(n);
  std::memmove(m_out.data() + at + n, m_out.data() + at, m_used - at);
  m_used += n;
}

void UtArchive::ThrowEndOfFile(std::size_t wanted, std::size_t offset, std::size_t remaining) {
  throw UtArchiveException(UtArchiveException::endOfFile, "read past the end of the data: " + std::to_string(wanted) +
                                                              " bytes wanted at offset " + std::to_string(offset) +
                                                              ", " + std::to_string(remaining) + " remain");
}

void UtArchive::ThrowTooLarge(std::uint64_t count, std::size_t each, std::size_t offset, std::size_t remaining) {
  throw UtArchiveException(UtArchiveException::tooLarge, "a count of " + std::to_string(count) + " (at least " +
                                                             std::to_string(each) + " bytes each) is larger than the " +
                                                             std::to_string(remaining) +
                                                             " bytes that remain at offset " + std::to_string(offset));
}

void UtArchive::ThrowEndOfFile(std::size_t wanted) const { ThrowEndOfFile(wanted, m_pos, m_size - m_pos); }
void UtArchive::ThrowTooLarge(std::uint64_t count, std::size_t each) const {
  ThrowTooLarge(count, each, m_pos, m_size - m_pos);
}

std::uint64_t UtArchive::ReadCountSlow() {
  std::uint64_t v = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    if (m_pos >= m_size) ThrowEndOfFile(1);
    const std::uint8_t b = m_in[m_pos++];
    if (shift == 63 && b > 1) break;  // does not fit in 64 bits
    v |= static_cast<std::uint64_t>(b & 0x7F) << shift;
    if (!(b & 0x80)) return v;
  }
  throw UtArchiveException(UtArchiveException::generic, "malformed compact integer at offset " + std::to_string(m_pos));
}

// Objects: a compact tag, then (for a class not seen before in this archive) its name,
// then the object's own Serialize.
//   tag 0: null object
//   tag 1: a new class: name length (compact), then the name's bytes
//   tag n >= 2: the (n - 2)-th class seen in this archive
void UtArchive::WriteObject(const UtObject* obj) {
  if (!obj) {
    WriteCount(0);
    return;
  }
  const unsigned id = obj->GetObjectClassId();
  const UtSerializeClass* cls = UtSerializeFind(id);
  if (!cls) {
    throw UtArchiveException(UtArchiveException::badClass,
                             std::string("class ") + obj->GetObjectClassName() + " is not registered for archiving");
  }
  std::size_t tag = 0;
  while (tag < m_classes.size() && m_classes[tag] != id) ++tag;
  if (tag < m_classes.size()) {
    WriteCount(tag + 2);
  } else {
    m_classes.push_back(id);
    const std::string_view name(cls->name);
    WriteCount(1);
    WriteCount(name.size());
    WriteBytes(name.data(), name.size());
  }
  const_cast<UtObject*>(obj)->Serialize(*this);
}

void UtArchive::ReadObject(UtObject*& obj) {
  obj = nullptr;
  const std::uint64_t tag = ReadCount();
  if (tag == 0) return;
  const UtSerializeClass* cls = nullptr;
  if (tag == 1) {
    const std::uint64_t length = ReadCount();
    if (length == 0 || length > 255) {
      throw UtArchiveException(UtArchiveException::badClass, "malformed class name in archive");
    }
    CheckCount(length, 1);
    const std::string name(reinterpret_cast<const char*>(m_in + m_pos), static_cast<std::size_t>(length));
    m_pos += static_cast<std::size_t>(length);
    cls = UtSerializeFind(name);
    if (!cls) throw UtArchiveException(UtArchiveException::badClass, "unknown class '" + name + "' in archive");
    m_classes.push_back(cls->id);
  } else {
    if (tag - 2 >= m_classes.size()) {
      throw UtArchiveException(UtArchiveException::badIndex, "object refers to class #" + std::to_string(tag - 2) +
                                                                 ", which the archive never named");
    }
    cls = UtSerializeFind(m_classes[static_cast<std::size_t>(tag - 2)]);
  }
  std::unique_ptr<UtObject> made(cls && cls->factory ? cls->factory() : nullptr);
  if (!made) throw UtArchiveException(UtArchiveException::badClass, "class could not be created while loading");
  made->Serialize(*this);
  obj = made.release();
}

UtArchive& operator<<(UtArchive& ar, const CString& s) {
  const int n = s.GetLength();
  ar.WriteRaw(static_cast<std::int32_t>(n));
  if (n > 0) ar.WriteBytes(s.GetString(), static_cast<std::size_t>(n) * sizeof(char16_t));
  return ar;
}

UtArchive& operator>>(UtArchive& ar, CString& s) {
  const auto n = ar.ReadRaw<std::int32_t>();
  if (n < 1) {
    s.Empty();
    return ar;
  }
  ar.CheckCount(static_cast<std::uint64_t>(n), sizeof(char16_t));
  std::u16string buf(static_cast<std::size_t>(n), u'\0');
  ar.ReadBytes(buf.data(), buf.size() * sizeof(char16_t));
  s = CString(std::u16string_view(buf));
  return ar;
}

}  // namespace Quarp
