#include "PeerRecords.h"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/base_object.hpp>
#include <boost/serialization/export.hpp>
#include <boost/serialization/map.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/unique_ptr.hpp>
#include <boost/serialization/vector.hpp>

#include <fstream>
#include <stdexcept>

namespace IofBench::Peer {

Base::~Base() = default;

template <class Archive>
void serialize(Archive& ar, Point& p, unsigned /*version*/) {
  ar& p.x& p.y& p.z;
}

template <class Archive>
void Base::serialize(Archive& ar, unsigned /*version*/) {
  ar& m_Name& m_Attributes& m_SubLists;
}

template <class Archive>
void NciBase::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<Base>(*this);
  ar& m_GCode& m_OwnerOpId& m_Time;
}

template <class Archive>
void BaseMove::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<NciBase>(*this);
  ar& m_FeedRate& m_bIsFeedMove& m_CutterComp& m_PositionCode& m_ContourPosition& m_NcIncremental;
}

template <class Archive>
void Linear::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<BaseMove>(*this);
  ar& m_EndPoint;
}

template <class Archive>
void List::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<Base>(*this);
  ar& m_ListType& m_Items;
}

void Save(const Job& job, const std::string& path) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) throw std::runtime_error("cannot create " + path);
  {
    boost::archive::binary_oarchive ar(out);
    ar << job;
  }
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path);
}

Job Load(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw std::runtime_error("cannot open " + path);
  Job job;
  boost::archive::binary_iarchive ar(in);
  ar >> job;
  return job;
}

}  // namespace IofBench::Peer

// The concrete classes, written through base pointers.
BOOST_CLASS_EXPORT(IofBench::Peer::Linear)
BOOST_CLASS_EXPORT(IofBench::Peer::List)
