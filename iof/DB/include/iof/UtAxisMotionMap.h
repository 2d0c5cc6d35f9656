// UtAxisMotionMap: per machine axis, how a position on that axis is given (a coordinate,
// an offset from the home position, the spindle origin or an axis limit, or not at
// all). A serialisable value, not a record.
#pragma once

#include <afx/CString.h>
#include <iof/IofSerial.h>
#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>

#include <map>

namespace IOF {

enum AxisType : int { X = 0, Y = 1, Z = 2, A = 3, B = 4, C = 5 };

enum AxisMotionType : int {
  Disabled = 0,
  Coordinate = 1,
  OffsetFromHomePosition = 2,
  OffsetFromSpindleOrigin = 3,
  OffsetFromMinLimit = 4,
  OffsetFromMaxLimit = 5,
  AxisNotDefined = 8,
};

class UtAxisMotionMapItem {
 public:
  UtAxisMotionMapItem() = default;
  UtAxisMotionMapItem(AxisMotionType type, double value) : m_MotionType(type), m_Value(value) {}
  AxisMotionType GetMotionType() const noexcept { return m_MotionType; }
  double GetValue() const noexcept { return m_Value; }
  bool operator==(const UtAxisMotionMapItem&) const noexcept = default;

 private:
  AxisMotionType m_MotionType = Coordinate;
  double m_Value = 0.0;
};

class UtAxisMotionMap : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(UtAxisMotionMap)

 public:
  UtAxisMotionMap() = default;
  UtAxisMotionMap(const UtAxisMotionMap& other) = default;
  UtAxisMotionMap& operator=(const UtAxisMotionMap& other) = default;

  // Sets the entry of `axis`, creating it or overwriting it.
  void AddMotion(AxisType axis, AxisMotionType type, double value);
  // False when the map has no entry for `axis`.
  bool GetMotion(AxisType axis, AxisMotionType& type, double& value) const;
  // The index-th entry in ascending axis order; false outside 0 .. size - 1.
  bool GetMotion(int index, AxisType& axis, AxisMotionType& type, double& value) const;
  void Reset() noexcept { m_Map.clear(); }
  void Copy(const UtAxisMotionMap& other) { m_Map = other.m_Map; }
  int GetSize() const noexcept { return static_cast<int>(m_Map.size()); }

  // The same axes with the same motion types and exactly the same values.
  bool operator==(const UtAxisMotionMap& other) const { return m_Map == other.m_Map; }

  // "UtAxisMotionMap(2): [X] (Coordinate, 1.5), [Z] (AxisNotDefined, 0), ". An axis
  // outside X..C, or a motion type without a text (6, 7, above 8), repeats the text of
  // the entry before it (empty on the first): this carry-over is intended and kept.
  CString ToString() const;

  // Version (0), the entry count (4 bytes), then per entry in axis order the axis and
  // motion type (4 bytes each) and the value (8 bytes). Loading does not empty the map:
  // each entry read is applied as AddMotion would; a count below 1 reads nothing more.
  void Serialize(Quarp::UtArchive& ar) override;

 private:
  std::map<AxisType, UtAxisMotionMapItem> m_Map;
};

}  // namespace IOF
