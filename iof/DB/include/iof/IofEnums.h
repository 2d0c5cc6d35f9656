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

// --- operations and sub-operations ----------------------------------------------------
// Values marked "stored in files" are fixed; the values of the enumerations without
// texts are the library's own choice (the library stores them as integers and attaches
// no meaning to them).

// The tool path that produced an operation (DbIOFNciOperation::m_ToolPathType); stored
// in files. The order is intended: 7 is the five-axis contour, 14 the five-axis drill,
// 15 the point turning that comes ahead of the other turning types; 23 to 26 have no
// text.
enum class IofToolPathTypes : int {
  TP_NONE = 0,
  TP_CONTR_FACEPLANAR = 1,
  TP_CONTR_CROSSPLANAR = 2,
  TP_CONTR_NONORTHOPLANAR = 3,
  TP_CONTR_FACEPOLAR = 4,
  TP_CONTR_CROSSPOLAR = 5,
  TP_CONTR_AXISSUB = 6,
  TP_CONTOUR_5AXIS = 7,
  TP_DRILL_FACEPLANAR = 8,
  TP_DRILL_CROSSPLANAR = 9,
  TP_DRILL_NONORTHOPLANAR = 10,
  TP_DRILL_FACEPOLAR = 11,
  TP_DRILL_CROSSPOLAR = 12,
  TP_DRILL_AXISSUB = 13,
  TP_DRILL_5AXIS = 14,
  TP_TURN_POINT = 15,
  TP_TURN_ROUGH = 16,
  TP_TURN_FINISH = 17,
  TP_TURN_THREAD = 18,
  TP_TURN_GROOVE = 19,
  TP_TURN_DRILL = 20,
  TP_TURN_CUTOFF = 21,
  TP_TURN_CENTERTOOL = 22,
  TP_MISCOP_TURRETPARK = 27,  // 27 to 33: the misc operations
  TP_MISCOP_STEADYREST = 28,
  TP_MISCOP_TAILSTOCK = 29,
  TP_MISCOP_SPINDLE_SYNC = 30,
  TP_MISCOP_SPINDLE_MOVE = 31,
  TP_MISCOP_SPINDLE_GRIP = 32,
  TP_MISCOP_BARFEED_NOTOOL = 33,
};
// The enumerator's name ("TP_NONE", ...); empty for 23 to 26, 34 and above and negative
// values.
const wchar_t* ToolPathTypeText(int type) noexcept;

// Where an operation sits in a part transfer (DbIOFNciOperation::m_ContextType); stored
// in files.
enum class OpContextTypes : int {
  Manual = 0,
  POBPCO = 1,
  POCO = 2,
  PickOff = 3,
  BarPull = 4,
  RT2LFTPO = 5,
  RT2LFTPOBPCO = 6,
  RT2LFTPOCO = 7,
  RT2LFTBARPULL = 8,
  TACO = 9,
  UNRECOGNIZED = 10,
};
// The enumerator's name; "Error" for any other value.
const wchar_t* OpContextText(int context) noexcept;

// The kind of a mill operation on a mill-turn machine (m_MillOpSubType); stored in files.
enum class IofMillOpSubTypes : int {
  MILL_NONE = 0,
  MILL_FACE_ROTARY = 1,
  MILL_FACE_PLANAR = 2,
  MILL_CROSS_PLANAR = 3,
  MILL_AXIS_SUB = 4,
  MILL_PLANE_ROTATION = 5,
  MULTI_AXIS_DRILL = 6,
};
// The enumerator's name; "MILL_NONE" for any other value.
const wchar_t* MillOpSubTypeText(int subType) noexcept;

// The machining technology of an operation (m_OpType). No texts.
enum class IofOpTypes : int { None = 0, Mill = 1, Lathe = 2, Drill = 3, Router = 4, Wire = 5, Misc = 6 };

// How cutter compensation is output (m_CCMethod). No texts.
enum class CompMethod : int { Computer = 0, Control = 1, Wear = 2, ReverseWear = 3, Off = 4 };

// A spindle's turning direction (m_PartSpindleDirection, m_ToolSpindleDirection): the
// same values as a dwell's spindle direction. No texts.
enum class SpindleDirectionsType : int { NotApplicable = 0, Reverse = 1, Stopped = 2, Forward = 3 };

// The machine an operation is posted for (in memory only). No texts.
enum class IofMachineTypes : int { Unknown = 0, Mill = 1, Lathe = 2, MillTurn = 3, Router = 4, Wire = 5 };

// The configurations a synchronisation-manager attribute map is kept for (the keys of
// DbIOFNciOperation's synchronisation-manager map). Single bits, like the configuration
// masks of UtSyncMgrTokenBase. No texts.
enum class SyncMgrDataConfigTypes : unsigned {
  Common = 0x1,
  Mill = 0x2,
  Lathe = 0x4,
  MillTurn = 0x8,
};

// A sub-operation's cutter compensation (DbIOFNciSubOp::m_Compensation): the values of
// the compensation event. No texts.
enum class CompType : int { None = 0, Off = 1, Left = 2, Right = 3 };  // -, G40, G41, G42

// A sub-operation's feed units (DbIOFNciSubOp::m_FeedUnits): the values of the feed-unit
// event. No texts.
enum class FeedUnitType : int { PerMinute = 0, PerRevolution = 1, InverseTime = 2 };

}  // namespace IOF
