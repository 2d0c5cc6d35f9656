// DbIOFAxisComboMiscInfo: what an axis combination of a machine drives: a description,
// the active turret and spindle, and the stream (channel) it runs in. A plain
// serialisable object (no type code), registered under its class name; the machine
// information keeps one per axis combination (DbIOFMachineInfo::GetAxisCombinations).
//
//   IOF::DbIOFAxisComboMiscInfo combo(L"Upper turret / main spindle", 1, 1, 0);
//
// Archive (version 0): the version, m_Description, m_ActiveTurretID (2 bytes),
// m_ActiveSpindleID (2 bytes), m_StreamIndex (4 bytes). A newer stored version is
// refused (Quarp::UtArchiveException, cause 2). The field list stands for the reader
// DeserializeV0.
//
// Dump (ToString): "Description %s, Active Turret Id %d, Active Spindle Id %d, stream
// Index %d".
#pragma once

#include <afx/CString.h>
#include <iof/FieldVisitor.h>
#include <iof/IofRecord.h>
#include <iof/IofSerial.h>
#include <quarp/UtObject.h>

#include <cstdint>
#include <utility>

namespace IOF {

class DbIOFAxisComboMiscInfo : public Quarp::UtObject {
  IOF_DECLARE_SERIAL(DbIOFAxisComboMiscInfo)

 public:
  static constexpr unsigned kVersion = 0;

  DbIOFAxisComboMiscInfo() = default;
  DbIOFAxisComboMiscInfo(CString description, std::int16_t turretId, std::int16_t spindleId, int streamIndex)
      : m_Description(std::move(description)),
        m_ActiveTurretID(turretId),
        m_ActiveSpindleID(spindleId),
        m_StreamIndex(streamIndex) {}
  DbIOFAxisComboMiscInfo(const DbIOFAxisComboMiscInfo&) = default;
  DbIOFAxisComboMiscInfo& operator=(const DbIOFAxisComboMiscInfo&) = default;
  ~DbIOFAxisComboMiscInfo() override = default;

  CString GetDescription() const { return m_Description; }
  void SetDescription(const CString& v) { m_Description = v; }
  std::int16_t GetActiveTurretID() const noexcept { return m_ActiveTurretID; }
  void SetActiveTurretID(std::int16_t v) noexcept { m_ActiveTurretID = v; }
  std::int16_t GetActiveSpindleID() const noexcept { return m_ActiveSpindleID; }
  void SetActiveSpindleID(std::int16_t v) noexcept { m_ActiveSpindleID = v; }
  int GetStreamIndex() const noexcept { return m_StreamIndex; }
  void SetStreamIndex(int v) noexcept { m_StreamIndex = v; }

  CString ToString() const;
  void Serialize(Quarp::UtArchive& ar) override;
  void VisitFields(FieldVisitor& visitor) const;

  // The field list (see iof/IofRecord.h).
  template <class F, class... R>
  static void Fields(F&& f, R&... r) {
    f(Field::V(0), "m_Description", r.m_Description...);
    f(Field::V(0), "m_ActiveTurretID", r.m_ActiveTurretID...);
    f(Field::V(0), "m_ActiveSpindleID", r.m_ActiveSpindleID...);
    f(Field::V(0), "m_StreamIndex", r.m_StreamIndex...);
  }

 private:
  CString m_Description;
  std::int16_t m_ActiveTurretID = -1;
  std::int16_t m_ActiveSpindleID = -1;
  int m_StreamIndex = -1;
};

}  // namespace IOF
