#include <iof/DbIOFDocument.h>
#include <iof/DbIOFStream.h>

#include "RecordImpl.h"

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFDocument)

template <class F, class... R>
void DbIOFDocument::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_Streams", r.m_Streams...);
  f(Field::V(0), "m_IsMetric", r.m_IsMetric...);
  f(Field::V(0), "m_FileName", r.m_FileName...);
  f(Field::V(0), "m_NcFilename", r.m_NcFilename...);
  f(Field::NotCopied(0), "m_JobSetupId", r.m_JobSetupId...);  // Copy keeps the target's: intended
  f(Field::V(0), "m_MachineInfoId", r.m_MachineInfoId...);
  f(Field::V(1), "m_UseTCPForSimulationByDefault", r.m_UseTCPForSimulationByDefault...);
}

Quarp::DbId DbIOFDocument::GetStreamById(int streamNumber) const {
  Quarp::DbId result;
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return result;
  Quarp::DbCPtr<DbIOFStream> stream(nullptr);
  for (int i = m_Streams.GetSize() - 1; i >= 0; --i) {
    if (!mgr->Get(stream, m_Streams[i], 0)) return result;             // ends the walk early: intended
    if (stream->GetStreamId() == streamNumber) result = m_Streams[i];  // keep walking: the earliest wins
  }
  return result;
}

Quarp::DbId DbIOFDocument::GetStreamByIndex(int index) const {
  return index >= 0 && index < m_Streams.GetSize() ? m_Streams[index] : Quarp::DbId();
}

Quarp::DbId DbIOFDocument::AddStreamToList(int streamNumber) {
  const Quarp::DbId existing = GetStreamById(streamNumber);
  if (!existing.IsNull()) return existing;
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return Quarp::DbId();
  auto stream = DbIOFStream::Create(streamNumber);
  if (stream.IsNull()) return Quarp::DbId();
  stream->SetIOFName(CString(L"Stream Object"));
  const Quarp::DbId id = mgr->Add(stream);
  if (!id.IsNull()) m_Streams.Add(id);
  return id;
}

CString DbIOFDocument::ToIOFString() const {
  return CString::Formatted(L"IOF Document Object fname: %s, ncName %s, isMetric %d", m_FileName, m_NcFilename,
                            m_IsMetric ? 1 : 0);
}

bool DbIOFDocument::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFDocument>(other, report);
  return o && DbIOFBase::Compare(other, report) && CompareProperty(m_IsMetric, o->m_IsMetric, L"m_IsMetric", report) &&
         CompareProperty(m_FileName, o->m_FileName, L"m_FileName", report) &&
         CompareProperty(m_NcFilename, o->m_NcFilename, L"m_NcFilename", report) &&
         CompareProperty(m_UseTCPForSimulationByDefault, o->m_UseTCPForSimulationByDefault,
                         L"m_UseTCPForSimulationByDefault", report) &&
         CompareProperty(static_cast<long long>(GetNumberStreams()), static_cast<long long>(o->GetNumberStreams()),
                         L"TotalStreams", report);
}

}  // namespace IOF
