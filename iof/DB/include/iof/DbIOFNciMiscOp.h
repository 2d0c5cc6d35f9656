// DbIOFNciMiscOp: the common base of the machine operations that move no tool through
// material (bar feed, bar feeder and puller, spindle grip, move and sync, tail stock,
// turret, steady rest). Each stands among an operation's items in program order. Type
// IOFNCIMISCOP (0x5200), an abstract level.
//
// Archive (version 0), after DbIOFNciBase: m_StreamId (4).
//
// Comparison: the DbIOFNciBase comparison, then m_StreamId.
//
// Spindle fields of the subclasses use the Spindle enumeration: 0 "LH_HEAD",
// 1 "RH_HEAD", 2 "INVALID", any other value "Oops" in the dumps.
#pragma once

#include <iof/DbIOFNciBase.h>

namespace IOF {

class DbIOFNciMiscOp : public DbIOFNciBase {
  IOF_ABSTRACT_RECORD(DbIOFNciMiscOp, DbIOFNciBase)

 public:
  static constexpr unsigned kVersion = 0;

  // Which spindle (head) an operation acts on.
  enum Spindle : int { kLeftHead = 0, kRightHead = 1, kInvalidSpindle = 2 };
  // "LH_HEAD", "RH_HEAD", "INVALID"; "Oops" for any other value.
  static const wchar_t* SpindleText(int spindle) noexcept;

  int GetStreamId() const noexcept { return m_StreamId; }
  void SetStreamId(int stream) noexcept { m_StreamId = stream; }

  // "IOF NCI Base Misc Operation Object"
  CString ToIOFString() const override;
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFNciMiscOp() = default;

  // The dumps' texts of a flag: "true"/"false", and "True"/"False" for the bar feed
  // family.
  static const wchar_t* LowerBoolText(bool value) noexcept { return value ? L"true" : L"false"; }
  static const wchar_t* UpperBoolText(bool value) noexcept { return value ? L"True" : L"False"; }

 private:
  int m_StreamId = 0;  // the stream (channel) the operation belongs to
};

}  // namespace IOF
