#include <iof/DbIOFNciPlane.h>
#include <iof/DbIOFNciToolChange.h>
#include <iof/DbIOFStream.h>

#include "RecordImpl.h"

#include <cmath>

namespace IOF {

IOF_IMPLEMENT_RECORD(DbIOFStream)

template <class F, class... R>
void DbIOFStream::Fields(F&& f, R&... r) {
  f(Field::V(0), "m_StreamId", r.m_StreamId...);
  f(Field::V(0), "m_AxisCombinationDefined", r.m_AxisCombinationDefined...);
  f(Field::V(0), "m_ToolChangeList", r.m_ToolChangeList...);
  f(Field::V(0), "m_FirstToolChgId", r.m_FirstToolChgId...);
  f(Field::V(0), "m_LastToolChgId", r.m_LastToolChgId...);
  f(Field::V(0), "m_ToolPlaneList", r.m_ToolPlaneList...);
  // Version 0 held one more id list here; its contents are deliberately not kept.
  f(Field::Dropped(0, 0), "m_DroppedIdList", Field::Discard<Quarp::UtSArrayEx<Quarp::DbId>>{});
  f(Field::V(0), "m_LatheCannedTurnIdList", r.m_LatheCannedTurnIdList...);
  f(Field::V(0), "m_NCOutputFile", r.m_NCOutputFile...);
  f(Field::V(0), "m_DefaultReferenceReturnPositionId", r.m_DefaultReferenceReturnPositionId...);
}

Quarp::DbPtr<DbIOFStream> DbIOFStream::Create(int streamId) {
  Quarp::DbPtr<DbIOFStream> ptr = MakeNew(nullptr);
  if (ptr) ptr->m_StreamId = streamId;
  return ptr;
}

Quarp::DbId DbIOFStream::AddToolChange(Quarp::DbPtr<DbIOFNciToolChange>& toolChange, bool& added, bool matchDiaOffset,
                                       bool matchLengthOffset) {
  Quarp::DbId result;
  added = false;
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr || toolChange.IsNull()) return result;
  const DbIOFNciToolChange& given = *toolChange;
  Quarp::DbCPtr<DbIOFNciToolChange> candidate(nullptr);
  for (const Quarp::DbId id : m_ToolChangeList) {
    if (!mgr->Get(candidate, id, 0)) continue;  // ids that no longer resolve are skipped
    if (candidate->GetToolSlotId() == given.GetToolSlotId() && candidate->GetToolType() == given.GetToolType() &&
        candidate->GetToolNum() == given.GetToolNum() && candidate->GetToolStation() == given.GetToolStation() &&
        (!matchLengthOffset || candidate->GetLengthOffsetNum() == given.GetLengthOffsetNum()) &&
        (!matchDiaOffset || candidate->GetDiaOffsetNum() == given.GetDiaOffsetNum())) {
      result = id;
      break;
    }
  }
  if (result.IsNull()) {
    result = mgr->Add(toolChange);
    if (result.IsNull()) return result;
    m_ToolChangeList.Add(result);
    added = true;
  }
  if (m_FirstToolChgId.IsNull()) m_FirstToolChgId = result;
  m_LastToolChgId = result;  // also when an existing record matched
  return result;
}

Quarp::DbId DbIOFStream::AddPlane(const GmXformMat3D& matrix, int workOffsetNum, bool forceNew, double angleTolerance) {
  Quarp::DbMgr* mgr = GetDbMgr();
  if (!mgr) return Quarp::DbId();
  if (!forceNew) {
    const double dirTol = 1.0 - std::cos(angleTolerance);
    Quarp::DbCPtr<DbIOFNciPlane> plane(nullptr);
    GmXformMat3D candidate;
    for (const Quarp::DbId id : m_ToolPlaneList) {
      if (!mgr->Get(plane, id, 0) || plane->GetWorkOffsetNum() != workOffsetNum) continue;
      plane->GetMatrix(candidate);
      if (matrix.IsSame(candidate, 1e-7, dirTol)) return id;
    }
  }
  auto plane = DbIOFNciPlane::Create();
  if (plane.IsNull()) return Quarp::DbId();
  plane->SetMatrix(matrix);
  plane->SetWorkOffsetNum(workOffsetNum);
  const Quarp::DbId id = mgr->Add(plane);
  if (!id.IsNull()) m_ToolPlaneList.Add(id);
  return id;
}

CString DbIOFStream::ToIOFString() const {
  return CString::Formatted(L"IOF Stream Object: id=%d, Name = %s, 1stToolChg=%ld, lastToolChg=%ld\n", m_StreamId,
                            GetIOFName(), m_FirstToolChgId, m_LastToolChgId);
}

bool DbIOFStream::Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const {
  const auto* o = CompareTarget<DbIOFStream>(other, report);
  return o && DbIOFList::Compare(other, report) && CompareProperty(m_StreamId, o->m_StreamId, L"m_StreamId", report) &&
         CompareProperty(m_AxisCombinationDefined, o->m_AxisCombinationDefined, L"m_AxisCombinationDefined", report) &&
         CompareProperty(m_NCOutputFile, o->m_NCOutputFile, L"m_NCOutputFile", report) &&
         CompareProperty(m_FirstToolChgId, o->m_FirstToolChgId, L"m_FirstToolChgId", report) &&
         CompareProperty(m_LastToolChgId, o->m_LastToolChgId, L"m_LastToolChgId", report) &&
         CompareProperty(m_ToolChangeList.GetSize(), o->m_ToolChangeList.GetSize(), L"NumToolChanges", report) &&
         CompareProperty(m_ToolPlaneList.GetSize(), o->m_ToolPlaneList.GetSize(), L"NumToolPlanes", report) &&
         // The lathe canned-turn register is reported under this label: intended.
         CompareProperty(m_LatheCannedTurnIdList.GetSize(), o->m_LatheCannedTurnIdList.GetSize(), L"NumSubPrograms",
                         report) &&
         CompareProperty(m_DefaultReferenceReturnPositionId, o->m_DefaultReferenceReturnPositionId,
                         L"m_DefaultReferenceReturnPositionId", report);
}

}  // namespace IOF
