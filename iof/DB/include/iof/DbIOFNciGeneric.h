// DbIOFNciGeneric: an NC code number with an opaque block of bytes that the producing
// system attaches to it; the library neither reads nor interprets the bytes. Type
// IOFNCIGENERIC (0x5102).
//
//   auto generic = IOF::DbIOFNciGeneric::Create();
//   generic->SetGCode(1000);
//   generic->SetGenericBlock(data.size(), data.data());
//   ...
//   std::vector<unsigned char> bytes(generic->GetGenericBlock(nullptr));  // ask for the size
//   generic->GetGenericBlock(bytes.data());                              // then copy
//
// Archive (version 0), after DbIOFNciBase: the byte array through its own serialisation
// (its version, the element count in 8 bytes, the growth step in 8 bytes, then each
// byte). On load the array takes the stored count and growth step.
//
// There is no comparison of its own: two generic records are compared by the NCI base
// (m_GCode, m_OwnerOpId, m_Time) only, so different byte blocks are not a difference.
#pragma once

#include <iof/DbIOFNciBase.h>
#include <quarp/UtArrayEx.h>

#include <cstddef>

namespace IOF {

class DbIOFNciGeneric : public DbIOFNciBase {
  IOF_RECORD(DbIOFNciGeneric, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 0;

  // The number of bytes in the block; copies them into `out` only when there is at
  // least one and `out` is not null. Call with null for the size, then with a buffer
  // of that size.
  int GetGenericBlock(unsigned char* out) const;
  // Empties the block; when n is not 0, sizes it to n bytes and copies n bytes from
  // `data` (n zero bytes when `data` is null). With n = 0 the block stays empty and
  // `data` is not read. The growth step is kept.
  void SetGenericBlock(std::size_t n, const unsigned char* data);
  // The whole array, growth step included, as it is archived and copied.
  const Quarp::UtArrayEx<unsigned char>& GetGenericArray() const noexcept { return m_GenericBlock; }
  void SetGenericArray(const Quarp::UtArrayEx<unsigned char>& block) { m_GenericBlock = block; }

  // "G%d IOF NCI Generic Object" with m_GCode.
  CString ToIOFString() const override;
  // Compare is intentionally inherited from DbIOFNciBase: the bytes are never compared.

 protected:
  DbIOFNciGeneric() = default;  // m_GCode keeps the NCI base default 0

 private:
  Quarp::UtArrayEx<unsigned char> m_GenericBlock{10};  // opaque bytes; growth step starts at 10
};

}  // namespace IOF
