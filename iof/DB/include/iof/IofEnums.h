// Enumerations shared by several record classes.
#pragma once

namespace IOF {

// Where a move lies relative to the contour (DbIOFNciBaseMove::m_ContourPosition).
enum class ContourPositionState : int {
  Unresolved = 0,  // "ContourPosition.Unresolved"
  Before = 1,      // "ContourPosition.Before"
  LeadIn = 2,      // "ContourPosition.LeadIn"
  Contour = 3,     // "ContourPosition.Contour"
  LeadOut = 4,     // "ContourPosition.LeadOut"
  After = 5,       // "ContourPosition.After"
  Transition = 6,  // "ContourPosition.Transition"
};

// The working plane of an arc.
enum class IofArcPlaneType : int {
  XY = 0,       // "G17"
  XZ = 1,       // "G18"
  YZ = 2,       // "G19"
  NoPlane = 3,  // "NoPlane"
};

// "G17", "G18", "G19" or "NoPlane" for 0..3; `fallback` for any other value.
const wchar_t* ArcPlaneText(int plane, const wchar_t* fallback) noexcept;

}  // namespace IOF
