// DbIOFEvSync: a synchronisation point between channels. Type IOFEVSYNC (0x5131).
//
// Archive (version 0), after DbIOFEventBase: m_SyncId (4), m_Comment, m_IsAltType (1).
#pragma once

#include <iof/DbIOFEventBase.h>

namespace IOF {

class DbIOFEvSync : public DbIOFEventBase {
  IOF_RECORD(DbIOFEvSync, DbIOFEventBase)

 public:
  static constexpr unsigned kVersion = 0;

  int GetSyncId() const noexcept { return m_SyncId; }
  void SetSyncId(int id) noexcept { m_SyncId = id; }
  CString GetComment() const { return m_Comment; }
  void SetComment(const CString& comment) { m_Comment = comment; }
  bool GetIsAlternateType() const noexcept { return m_IsAltType; }
  void SetIsAlternateType(bool alternate) noexcept { m_IsAltType = alternate; }

  // "Sync Event %d" with m_SyncId.
  CString ToIOFString() const override;
  // The record base, then m_SyncId, m_Comment, m_IsAltType.
  bool Compare(const Quarp::DbCPtr<DbIOFBase>& other, CString& report) const override;

 protected:
  DbIOFEvSync() = default;

 private:
  int m_SyncId = -1;  // the synchronisation point's number; -1 for none
  CString m_Comment;
  bool m_IsAltType = false;  // an alternate kind of synchronisation
};

}  // namespace IOF
