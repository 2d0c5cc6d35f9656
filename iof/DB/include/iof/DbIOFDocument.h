// DbIOFDocument: the top record of an IOF database (type IOFDOCUMENT, 0x5112). It names
// the files the data came from, says whether the data is metric, and holds the ids of
// the document's streams (machining channels), of its job setup and of its machine
// information.
//
//   auto doc = IOF::DbIOFDocument::Create();
//   mgr.Add(doc);
//   Quarp::DbId main = doc->AddStreamToList(1);   // creates stream 1 in the same manager
//   Quarp::DbId same = doc->GetStreamById(1);
//
// Archive (version 1), after the record base: the stream ids, m_IsMetric (1),
// m_FileName, m_NcFilename, the job setup id, the machine info id (8 each), then, since
// version 1, m_UseTCPForSimulationByDefault (1).
#pragma once

#include <iof/DbIOFBase.h>
#include <quarp/UtSArrayEx.h>

namespace IOF {

class DbIOFDocument : public DbIOFBase {
  IOF_RECORD(DbIOFDocument, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 1;

  bool GetIsMetric() const noexcept { return m_IsMetric; }
  void SetIsMetric(bool metric) noexcept { m_IsMetric = metric; }
  const CString& GetFileName() const noexcept { return m_FileName; }
  void SetFileName(CString name) { m_FileName = std::move(name); }
  const CString& GetNcFilename() const noexcept { return m_NcFilename; }
  void SetNcFilename(const CString& name) { m_NcFilename = name; }
  Quarp::DbId GetJobSetupID() const noexcept { return m_JobSetupId; }
  void SetJobSetupID(Quarp::DbId id) noexcept { m_JobSetupId = id; }
  Quarp::DbId GetMachineInfoID() const noexcept { return m_MachineInfoId; }
  void SetMachineInfoID(Quarp::DbId id) noexcept { m_MachineInfoId = id; }
  bool GetUseTCPForSimulationByDefault() const noexcept { return m_UseTCPForSimulationByDefault; }
  void SetUseTCPForSimulationByDefault(bool use) noexcept { m_UseTCPForSimulationByDefault = use; }

  // The stream ids, in the order added.
  const Quarp::UtSArrayEx<Quarp::DbId>& GetStreams() const noexcept { return m_Streams; }
  Quarp::UtSArrayEx<Quarp::DbId>& GetStreams() noexcept { return m_Streams; }
  int GetNumberStreams() const noexcept { return m_Streams.GetSize(); }

  // The stream numbered `streamNumber`, created (named "Stream Object", added to this
  // document's manager and appended) when there is none. The null id for a document in
  // no manager.
  Quarp::DbId AddStreamToList(int streamNumber);
  // The stream numbered `streamNumber`, or the null id. The stream ids are walked from
  // the last to the first and the walk goes on after a match, so the earliest stream
  // with that number wins; an id that does not resolve ends the walk early, leaving the
  // earlier streams unexamined. Both are intended.
  Quarp::DbId GetStreamById(int streamNumber) const;
  // The id at `index`, or the null id outside 0 .. GetNumberStreams() - 1.
  Quarp::DbId GetStreamByIndex(int index) const;

  // "IOF Document Object fname: %s, ncName %s, isMetric %d"
  CString ToIOFString() const override;
  // The record base, then m_IsMetric, m_FileName, m_NcFilename,
  // m_UseTCPForSimulationByDefault and "TotalStreams" (the stream counts). The streams,
  // the job setup and the machine information are not compared here.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFDocument() = default;

 private:
  bool m_IsMetric = true;
  CString m_FileName;    // the file the data came from
  CString m_NcFilename;  // the NC file it is posted to
  Quarp::UtSArrayEx<Quarp::DbId> m_Streams{10};
  Quarp::DbId m_JobSetupId;  // not copied by Copy: intended
  Quarp::DbId m_MachineInfoId;
  bool m_UseTCPForSimulationByDefault = false;  // since version 1
};

}  // namespace IOF
