// UtIofMovePoint: the end values of an NC block in machine axes X, Y, Z, A, B, C, each
// with a flag that says whether the axis is present in the block.
#pragma once

#include <afx/CString.h>
#include <iof/GmPoint3D.h>
#include <iof/IofSerial.h>
#include <quarp/UtArchive.h>
#include <quarp/UtObject.h>

#include <vector>

namespace IOF {

class UtIofMovePoint : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(UtIofMovePoint)

 public:
  // Six values 0.0, no axis set.
  UtIofMovePoint();
  UtIofMovePoint(const UtIofMovePoint&) = default;
  UtIofMovePoint& operator=(const UtIofMovePoint&) = default;
  ~UtIofMovePoint() override = default;

  // Index 0 X, 1 Y, 2 Z, 3 A, 4 B, 5 C. Out of range: reported through the assertion
  // handler, false, nothing changed.
  bool SetValByIndex(int i, double v);
  bool GetValByIndex(int i, double& v, bool& isSet) const;

  void SetXYZ(const GmPoint3D& p);  // values 0, 1, 2 (each then set)
  void SetABC(const GmPoint3D& p);  // values 3, 4, 5
  // Copies values 0..2; true only when X, Y and Z are all set.
  bool GetXYZ(GmPoint3D& p) const;
  // Copies values 3..5; true only when X, Y and Z are all set. It deliberately tests the
  // X, Y, Z flags, not those of A, B, C.
  bool GetABC(GmPoint3D& p) const;
  void GetAllVals(std::vector<double>& values, std::vector<bool>& isSet) const;
  // Six values (existing ones kept), no axis set.
  void Reset();

  // Equal when the C values differ by less than 1e-7 and both C flags agree. Only index
  // 5 is compared: this is the equality the record comparisons use.
  bool operator==(const UtIofMovePoint& o) const;

  // "(" then " X1.50000000000000," for each set axis, then ")".
  CString ToString() const;

  // Version (0), the value count (4 bytes), the values (8 bytes each), the flag count
  // (4 bytes), the flags (1 byte each). Loading takes the stored lengths.
  void Serialize(Quarp::UtArchive& ar) override;

 private:
  std::vector<double> m_Values;
  std::vector<bool> m_IsSet;
};

}  // namespace IOF
