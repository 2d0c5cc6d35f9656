// The toolpath both sides of the benchmark store: a deterministic stream of linear moves
// grouped into operations, each with a sub-operation (its approach, then a motion list
// of the moves) and a retract, with the values a real pocketing job has (rapid approach
// and retract, lead-in and lead-out at a reduced feed, zig-zag passes stepping down, a
// few rapids between levels, times from distance and feed). The IOF job and the
// Boost.Serialization peer are both built from it, so they hold the same values.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace IofBench {

// One linear move, field by field as a DbIOFNciLinear holds it.
struct MoveSpec {
  int gCode = 1;  // 0 rapid, 1 feed
  bool feedMove = true;
  double feedRate = 0.0;  // mm/min
  int cutterComp = 40;    // 40 off, 41 left
  int positionCode = 0;
  int contourPosition = 3;  // ContourPositionState: 1 Before, 2 LeadIn, 3 Contour, 4 LeadOut, 5 After, 6 Transition
  double x = 0.0, y = 0.0, z = 0.0;
  double time = 0.0;  // seconds
};

// What the producer writes around the moves of one operation: the operation's header,
// its sub-operation's cutting conditions, where its approach and retract end. Both jobs
// hold these values.
struct OperationHeader {
  int number = 0;             // the machine-operation number, from 1
  int toolPathType = 1;       // IofToolPathTypes: TP_CONTR_FACEPLANAR, a pocket on the face
  int toolNumber = 0;         // one tool per four operations
  double toolChangeTime = 0;  // seconds; the first operation of each tool changes it
  double feed = 0.0;          // mm/min
  double spindleSpeed = 0.0;  // rpm
  double approachX = 0.0, approachY = 0.0, approachZ = 0.0;  // above the start point
  int approachType = 1;                                      // DbIOFApproach: 1 after a tool change, 3 a reposition
  int retractType = 3;                                       // DbIOFRetract: 3 reposition, 4 end of file
};

constexpr std::size_t kMovesPerOperation = 1000;
constexpr double kRapidFeed = 10000.0;  // mm/min
constexpr double kSafeZ = 50.0;
constexpr double kClearanceZ = 2.0;

inline std::size_t OperationCount(std::size_t moves) { return (moves + kMovesPerOperation - 1) / kMovesPerOperation; }
inline std::size_t MovesInOperation(std::size_t moves, std::size_t op) {
  return std::min(kMovesPerOperation, moves - op * kMovesPerOperation);
}

// The moves of one operation, in order.
class OperationPath {
 public:
  OperationPath(std::size_t opIndex, std::size_t moves)
      : m_opIndex(opIndex),
        m_moves(moves),
        m_x0(static_cast<double>(opIndex % 10) * 120.0),
        m_y0(static_cast<double>(opIndex / 10 % 10) * 80.0),
        m_feed(600.0 + 100.0 * static_cast<double>(opIndex % 8)),
        m_comp(opIndex % 3 == 0 ? 41 : 40) {}

  // The operation's header; `last` for the last operation of the job.
  OperationHeader Header(bool last) const {
    OperationHeader header;
    header.number = static_cast<int>(m_opIndex) + 1;
    header.toolNumber = static_cast<int>(m_opIndex / 4) + 1;
    header.toolChangeTime = m_opIndex % 4 == 0 ? 6.5 : 0.0;
    header.feed = m_feed;
    header.spindleSpeed = 6000.0 + 500.0 * static_cast<double>(m_opIndex % 8);
    header.approachX = m_x0;
    header.approachY = m_y0;
    header.approachZ = kSafeZ;
    header.approachType = m_opIndex % 4 == 0 ? 1 : 3;
    header.retractType = last ? 4 : 3;
    return header;
  }

  MoveSpec Next() {
    const std::size_t i = m_index++;
    MoveSpec m;
    m.cutterComp = m_comp;
    if (i == 0) {  // rapid over the start point
      Rapid(m, m_x0, m_y0, kSafeZ, 1);
    } else if (i + 1 == m_moves) {  // rapid retract
      Rapid(m, m_x, m_y, kSafeZ, 5);
    } else if (i == 1) {  // rapid down to the clearance plane
      Rapid(m, m_x0, m_y0, kClearanceZ, 1);
    } else if (i % 100 == 0) {  // up between levels
      Rapid(m, m_x, m_y, kClearanceZ, 6);
    } else {
      // Zig-zag rows 5 mm apart, 2 mm steps, one level per 100 moves, with a small
      // wobble so that coordinates are not round numbers.
      const std::size_t k = i - 2;
      const std::size_t row = k / 20 % 16;
      const std::size_t col = k % 20;
      const double along = static_cast<double>(row % 2 == 0 ? col : 19 - col) * 2.0;
      const double x = m_x0 + along + 0.0005 * std::sin(static_cast<double>(i));
      const double y = m_y0 + static_cast<double>(row) * 5.0 + 0.0003 * std::cos(static_cast<double>(i));
      const double z = -1.0 - 0.5 * static_cast<double>(i / 100);
      const bool leadIn = i % 100 == 1 || i % 100 == 2 || i == 2;
      const bool leadOut = i % 100 == 99 || i + 2 == m_moves;
      m.gCode = 1;
      m.feedMove = true;
      m.feedRate = leadIn || leadOut ? m_feed * 0.5 : m_feed;
      m.contourPosition = leadIn ? 2 : leadOut ? 4 : 3;
      MoveTo(m, x, y, z);
    }
    return m;
  }

 private:
  void Rapid(MoveSpec& m, double x, double y, double z, int contourPosition) {
    m.gCode = 0;
    m.feedMove = false;
    m.feedRate = kRapidFeed;
    m.cutterComp = 40;
    m.contourPosition = contourPosition;
    MoveTo(m, x, y, z);
  }
  void MoveTo(MoveSpec& m, double x, double y, double z) {
    const double d = std::sqrt((x - m_x) * (x - m_x) + (y - m_y) * (y - m_y) + (z - m_z) * (z - m_z));
    m.x = x;
    m.y = y;
    m.z = z;
    m.time = d / m.feedRate * 60.0;
    m_x = x;
    m_y = y;
    m_z = z;
  }

  std::size_t m_opIndex;
  std::size_t m_moves;
  std::size_t m_index = 0;
  double m_x0, m_y0, m_feed;
  int m_comp;
  double m_x = 0.0, m_y = 0.0, m_z = kSafeZ;
};

}  // namespace IofBench
