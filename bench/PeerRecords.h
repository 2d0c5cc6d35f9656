// The peer: the same records as the IOF job (the same fields in the same class
// hierarchy, ids between records, polymorphic ownership) written and read with
// Boost.Serialization's binary archives, the way a developer would write them without
// the IOF framework: a serialize() per class, base_object for the bases, the concrete
// classes exported, the job held as a vector of owning base pointers.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace IofBench::Peer {

struct Point {
  double x = 0.0, y = 0.0, z = 0.0;
};

// The record base: name, attribute map, sub-list ids.
class Base {
 public:
  virtual ~Base();
  std::string m_Name;
  std::map<std::string, std::string> m_Attributes;
  std::vector<std::uint64_t> m_SubLists;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// G-code, owning operation, machining time.
class NciBase : public Base {
 public:
  int m_GCode = 0;
  int m_OwnerOpId = -1;
  double m_Time = 0.0;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// What every move has.
class BaseMove : public NciBase {
 public:
  double m_FeedRate = 0.0;
  bool m_bIsFeedMove = true;
  int m_CutterComp = 0;
  int m_PositionCode = 0;
  int m_ContourPosition = 1;
  bool m_NcIncremental = false;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

class Linear : public BaseMove {
 public:
  Point m_EndPoint;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// An ordered list of record ids (document, stream, operation).
class List : public Base {
 public:
  int m_ListType = 0;
  std::vector<std::uint64_t> m_Items;

  template <class Archive>
  void serialize(Archive& ar, unsigned version);
};

// Record i has the id i + 1, as in the IOF job.
using Job = std::vector<std::unique_ptr<Base>>;

// Writes `job` to `path` (a binary_oarchive on an std::ofstream); throws on failure.
// Durability is the caller's (see DurableReplace).
void Save(const Job& job, const std::string& path);
// Reads a job written by Save; throws on failure.
Job Load(const std::string& path);

}  // namespace IofBench::Peer
