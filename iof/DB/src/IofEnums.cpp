#include <iof/IofEnums.h>

namespace IOF {

const wchar_t* ArcPlaneText(int plane, const wchar_t* fallback) noexcept {
  switch (plane) {
    case 0:
      return L"G17";
    case 1:
      return L"G18";
    case 2:
      return L"G19";
    case 3:
      return L"NoPlane";
    default:
      return fallback;
  }
}

}  // namespace IOF
