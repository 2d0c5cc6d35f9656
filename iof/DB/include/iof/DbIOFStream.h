// DbIOFStream: one machining stream (channel) of a document (type IOFSTREAM, 0x5111).
//
// A record list of kind 1 whose items are the stream's records in program order, plus
// three registers of ids the producer fills while it writes the stream: the tool
// changes used in the stream, the tool planes used in it, and the lathe canned-turn
// records. Tool changes and planes are registered through de-duplicating adders, so a
// stream holds one tool-change record per distinct tool set-up and one plane record per
// distinct plane.
//
//   bool added = false;
//   Quarp::DbId tc = stream->AddToolChange(toolChange, added, true, true);
//   Quarp::DbId plane = stream->AddPlane(matrix, 54, false, 1e-6);
//
// Archive (version 1), after the list: m_StreamId (4), m_AxisCombinationDefined (1),
// the tool-change list, m_FirstToolChgId, m_LastToolChgId (8 each), the tool-plane list,
// the lathe canned-turn list, m_NCOutputFile, m_DefaultReferenceReturnPositionId (8).
// A version-0 stream held one more id list between the tool-plane list and the lathe
// canned-turn list; it is read and dropped.
#pragma once

#include <iof/DbIOFList.h>
#include <iof/GmXformMat3D.h>
#include <quarp/UtSArrayEx.h>

namespace IOF {

class DbIOFNciToolChange;

class DbIOFStream : public DbIOFList {
  IOF_RECORD_CUSTOM_CREATE(DbIOFStream, DbIOFList)

 public:
  static constexpr unsigned kVersion = 1;

  // A new stream numbered `streamId`, in no manager; error 12 when it cannot be made.
  static Quarp::DbPtr<DbIOFStream> Create(int streamId);

  int GetStreamId() const noexcept { return m_StreamId; }
  void SetStreamId(int id) noexcept { m_StreamId = id; }
  bool GetAxisCombinationDefined() const noexcept { return m_AxisCombinationDefined; }
  void SetAxisCombinationDefined(bool defined) noexcept { m_AxisCombinationDefined = defined; }
  Quarp::DbId GetFirstToolChgId() const noexcept { return m_FirstToolChgId; }
  void SetFirstToolChgId(Quarp::DbId id) noexcept { m_FirstToolChgId = id; }
  Quarp::DbId GetLastToolChgId() const noexcept { return m_LastToolChgId; }
  void SetLastToolChgId(Quarp::DbId id) noexcept { m_LastToolChgId = id; }
  Quarp::DbId GetDefaultReferencePositionId() const noexcept { return m_DefaultReferenceReturnPositionId; }
  void SetDefaultReferencePositionId(Quarp::DbId id) noexcept { m_DefaultReferenceReturnPositionId = id; }
  const CString& GetNCOutputFile() const noexcept { return m_NCOutputFile; }
  void SetNCOutputFile(const CString& file) { m_NCOutputFile = file; }

  // The registers, modifiable: callers may append to them directly.
  Quarp::UtSArrayEx<Quarp::DbId>& GetToolChangeList() noexcept { return m_ToolChangeList; }
  Quarp::UtSArrayEx<Quarp::DbId>& GetToolPlaneList() noexcept { return m_ToolPlaneList; }
  Quarp::UtSArrayEx<Quarp::DbId>& GetLatheCannedTurnIdList() noexcept { return m_LatheCannedTurnIdList; }
  const Quarp::UtSArrayEx<Quarp::DbId>& GetToolChangeList() const noexcept { return m_ToolChangeList; }
  const Quarp::UtSArrayEx<Quarp::DbId>& GetToolPlaneList() const noexcept { return m_ToolPlaneList; }
  const Quarp::UtSArrayEx<Quarp::DbId>& GetLatheCannedTurnIdList() const noexcept { return m_LatheCannedTurnIdList; }

  // Reuses the first registered tool change with the same slot, type, number and
  // station (and, when asked, length and diameter offset numbers) or adds `toolChange`
  // to the stream's manager and registers it (`added` then true). The result becomes the
  // last tool change, and the first when there was none. The null id (nothing added) for
  // a stream in no manager.
  Quarp::DbId AddToolChange(Quarp::DbPtr<DbIOFNciToolChange>& toolChange, bool& added, bool matchDiaOffset,
                            bool matchLengthOffset);
  // Reuses the first registered plane with work offset `workOffsetNum` whose matrix is
  // the same (IsSame with positions within 1e-7 and axes within 1 - cos(angleTolerance),
  // the tolerance in radians), unless `forceNew`; otherwise creates a DbIOFNciPlane in
  // the stream's manager and registers it. The null id for a stream in no manager.
  Quarp::DbId AddPlane(const GmXformMat3D& matrix, int workOffsetNum, bool forceNew, double angleTolerance);

  // "IOF Stream Object: id=%d, Name = %s, 1stToolChg=%ld, lastToolChg=%ld\n"
  CString ToIOFString() const override;
  // The list, then m_StreamId, m_AxisCombinationDefined, m_NCOutputFile,
  // m_FirstToolChgId, m_LastToolChgId and the register sizes ("NumToolChanges",
  // "NumToolPlanes", "NumSubPrograms" for the lathe canned-turn list: the label is kept
  // as it is), then m_DefaultReferenceReturnPositionId. Register contents are never
  // compared.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFStream() : DbIOFList(kStream) {}

 private:
  int m_StreamId = -1;  // the stream (channel) number
  bool m_AxisCombinationDefined = false;
  Quarp::UtSArrayEx<Quarp::DbId> m_ToolChangeList{10};  // DbIOFNciToolChange ids, first addition order
  Quarp::DbId m_FirstToolChgId;
  Quarp::DbId m_LastToolChgId;                         // most recently passed to AddToolChange
  Quarp::UtSArrayEx<Quarp::DbId> m_ToolPlaneList{10};  // DbIOFNciPlane ids
  Quarp::UtSArrayEx<Quarp::DbId> m_LatheCannedTurnIdList{10};
  CString m_NCOutputFile;                          // the NC file this stream is posted to
  Quarp::DbId m_DefaultReferenceReturnPositionId;  // a reference point record
};

}  // namespace IOF
