// DbIOFPartSpindleMap: the part spindles of a job by spindle number (type
// IOFPARTSPINDLEMAP, 0x5171), an ordered map from number to DbIOFPartSpindle id.
//
//   auto spindles = IOF::DbIOFPartSpindleMap::Create();
//   mgr.Add(spindles);
//   Quarp::DbId main = spindles->Add(1);   // "Part Spindle", with its stock and chuck
//   Quarp::DbId sub = spindles->Add(2);
//   for (auto it = spindles->GetBegin(); it != spindles->GetEnd(); ++it) use(it->first, it->second);
//
// Archive (version 0), after the record base: the entry count (4 bytes), then each
// entry in ascending number order, its number (4 bytes) and id (8 bytes). Loading reads
// the count (below 1: nothing more) and enters each pair unless its number is already
// present, so the first of two entries with one number wins and entries already held are
// kept. The stored version is not checked: a newer one is read as version 0 (kept for
// compatibility with files written by older versions, which never checked it).
//
// Comparison: the record base (the name) only, with no type check of its own: intended.
// Dump: "DbIOFPartSpindleMap Size: %d" with the number of entries.
#pragma once

#include <iof/DbIOFBase.h>

#include <map>

namespace IOF {

class DbIOFPartSpindleMap : public DbIOFBase {
  IOF_RECORD(DbIOFPartSpindleMap, DbIOFBase)

 public:
  static constexpr unsigned kVersion = 0;
  using Map = std::map<int, Quarp::DbId>;

  // The id stored under `number`, creating nothing, when the number is present.
  // Otherwise creates a DbIOFPartSpindle named "Part Spindle" in the map's manager,
  // enters it under `number`, initializes it (DbIOFPartSpindle::Initialize) and returns
  // its id. In no manager: the null id, nothing created or entered.
  Quarp::DbId Add(int number);
  // Whether `number` is in the map.
  bool Find(int number) const { return m_Map.contains(number); }
  // The id stored under `number`; the null id when absent.
  Quarp::DbId GetSpindleId(int number) const;

  Map::const_iterator GetBegin() const noexcept { return m_Map.begin(); }
  Map::const_iterator GetEnd() const noexcept { return m_Map.end(); }
  const Map& GetMap() const noexcept { return m_Map; }
  void SetMap(Map map) { m_Map = std::move(map); }

  CString ToIOFString() const override;

 protected:
  DbIOFPartSpindleMap() = default;

 private:
  Map m_Map;
};

}  // namespace IOF
