#include <iof/DbIOFNciGeneric.h>

#include "RecordImpl.h"

#include <cstring>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFNciGeneric)

template <class F, class... R>
void DbIOFNciGeneric::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_GenericBlock", r.m_GenericBlock...);
}

int DbIOFNciGeneric::GetGenericBlock(unsigned char* out) const {
  const auto count = m_GenericBlock.GetSize();
  if (count >= 1 && out) std::memcpy(out, m_GenericBlock.GetData(), static_cast<std::size_t>(count));
  return static_cast<int>(count);
}

void DbIOFNciGeneric::SetGenericBlock(std::size_t n, const unsigned char* data) {
  m_GenericBlock.RemoveAll();
  if (n == 0) return;
  m_GenericBlock.SetSize(static_cast<std::int64_t>(n));
  // A null source leaves n zero bytes rather than reading through a null pointer.
  if (data) std::memcpy(m_GenericBlock.GetData(), data, n);
}

CString DbIOFNciGeneric::ToIOFString() const { return CString::Formatted(L"G%d IOF NCI Generic Object", GetGCode()); }

}  // namespace IOF
