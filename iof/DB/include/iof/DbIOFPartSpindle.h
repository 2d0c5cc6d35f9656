// DbIOFPartSpindle: a spindle that holds the part (type IOFPARTSPINDLE, 0x5172), with the
// ids of its stock definition (DbIOFStockDef) and chuck definition (DbIOFChuckDef). A
// DbIOFPartSpindleMap creates the spindles of a job by number.
//
//   auto spindle = IOF::DbIOFPartSpindle::Create();
//   mgr.Add(spindle);
//   spindle->Initialize();                        // creates its stock and chuck in `mgr`
//   spindle->GetStockDefPtr()->SetOffsetVector(IOF::GmVector3D(0, 0, 5));
//
// Archive (version 0), after the record base: the stock definition id, the chuck
// definition id (8 bytes each). The initialized flag is not archived (a loaded spindle
// reads false until Initialize or SetInitialized). Loading does not check the stored
// version: a newer one is read as version 0 (kept for compatibility with files written
// by older versions, which never checked it).
//
// Comparison: the record base (the name) only, with no type check of its own: intended.
// Dump: "DbIOFPartSpindle Name: %s" with the IOF name.
#pragma once

#include <iof/DbIOFBase.h>
#include <iof/DbIOFChuckDef.h>
#include <iof/DbIOFStockDef.h>

namespace IOF {

class DbIOFPartSpindle : public DbIOFBase {
  IOF_RECORD(DbIOFPartSpindle, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;
  static constexpr bool kChecksVersion = false;  // intended: see the top of this file

  Quarp::DbId GetStockDefId() const noexcept { return m_StockDefId; }
  void SetStockDefId(Quarp::DbId id) noexcept { m_StockDefId = id; }
  Quarp::DbId GetChuckDefId() const noexcept { return m_ChuckDefId; }
  void SetChuckDefId(Quarp::DbId id) noexcept { m_ChuckDefId = id; }
  // The definitions resolved through the spindle's manager; an empty pointer when the
  // spindle is in no manager or the id names no record of that class.
  Quarp::DbPtr<DbIOFStockDef> GetStockDefPtr() const;
  Quarp::DbPtr<DbIOFChuckDef> GetChuckDefPtr() const;

  bool GetInitialized() const noexcept { return m_Initialized; }
  void SetInitialized(bool initialized) noexcept { m_Initialized = initialized; }
  // Links the spindle to a stock and a chuck definition in its manager and sets the
  // initialized flag. A definition the spindle already refers to (a loaded spindle, say)
  // is kept; a missing one is created and added to the manager. Already initialized:
  // true, nothing done. In no manager: false, nothing created, the flag unchanged; false
  // too when a definition cannot be created.
  bool Initialize();

  CString ToIOFString() const override;

 protected:
  DbIOFPartSpindle() = default;

 private:
  Quarp::DbId m_StockDefId;
  Quarp::DbId m_ChuckDefId;
  bool m_Initialized = false;  // not archived
};

}  // namespace IOF
