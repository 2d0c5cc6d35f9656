#include <iof/UtIofDiffItem.h>

namespace IOF {

CString UtIofDiffItem::ToString(CString prefix) const {
  const wchar_t* separator = prefix.IsEmpty() ? L"" : L": ";
  return CString::Formatted(L"%s%s Id1:%d, Id2:%d, \"%s\".\n", prefix, separator, m_Id1, m_Id2, m_Text);
}

}  // namespace IOF
