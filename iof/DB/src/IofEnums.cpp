#include <iof/IofEnums.h>

#include <cstddef>

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

namespace {
// The text of `value` in `table`, `fallback` outside it.
template <std::size_t N>
const wchar_t* TableText(const wchar_t* const (&table)[N], int value, const wchar_t* fallback) noexcept {
  return value >= 0 && static_cast<std::size_t>(value) < N ? table[value] : fallback;
}
}  // namespace

const wchar_t* ToolPathTypeText(int type) noexcept {
  static const wchar_t* const kTexts[] = {
      L"TP_NONE",
      L"TP_CONTR_FACEPLANAR",
      L"TP_CONTR_CROSSPLANAR",
      L"TP_CONTR_NONORTHOPLANAR",
      L"TP_CONTR_FACEPOLAR",
      L"TP_CONTR_CROSSPOLAR",
      L"TP_CONTR_AXISSUB",
      L"TP_CONTOUR_5AXIS",
      L"TP_DRILL_FACEPLANAR",
      L"TP_DRILL_CROSSPLANAR",
      L"TP_DRILL_NONORTHOPLANAR",
      L"TP_DRILL_FACEPOLAR",
      L"TP_DRILL_CROSSPOLAR",
      L"TP_DRILL_AXISSUB",
      L"TP_DRILL_5AXIS",
      L"TP_TURN_POINT",
      L"TP_TURN_ROUGH",
      L"TP_TURN_FINISH",
      L"TP_TURN_THREAD",
      L"TP_TURN_GROOVE",
      L"TP_TURN_DRILL",
      L"TP_TURN_CUTOFF",
      L"TP_TURN_CENTERTOOL",
      L"",  // 23 to 26: no text, intended
      L"",
      L"",
      L"",
      L"TP_MISCOP_TURRETPARK",
      L"TP_MISCOP_STEADYREST",
      L"TP_MISCOP_TAILSTOCK",
      L"TP_MISCOP_SPINDLE_SYNC",
      L"TP_MISCOP_SPINDLE_MOVE",
      L"TP_MISCOP_SPINDLE_GRIP",
      L"TP_MISCOP_BARFEED_NOTOOL",
  };
  return TableText(kTexts, type, L"");
}

const wchar_t* OpContextText(int context) noexcept {
  static const wchar_t* const kTexts[] = {L"Manual",        L"POBPCO",   L"POCO",         L"PickOff",
                                          L"BarPull",       L"RT2LFTPO", L"RT2LFTPOBPCO", L"RT2LFTPOCO",
                                          L"RT2LFTBARPULL", L"TACO",     L"UNRECOGNIZED"};
  return TableText(kTexts, context, L"Error");
}

const wchar_t* MillOpSubTypeText(int subType) noexcept {
  static const wchar_t* const kTexts[] = {L"MILL_NONE",         L"MILL_FACE_ROTARY", L"MILL_FACE_PLANAR",
                                          L"MILL_CROSS_PLANAR", L"MILL_AXIS_SUB",    L"MILL_PLANE_ROTATION",
                                          L"MULTI_AXIS_DRILL"};
  return TableText(kTexts, subType, L"MILL_NONE");
}

}  // namespace IOF
