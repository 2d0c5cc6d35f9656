#include "PeerRecords.h"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/array.hpp>
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

template <class Archive>
void serialize(Archive& ar, SyncPoint& p, unsigned /*version*/) {
  ar& p.FirstKey& p.SecondKey& p.Flag& p.Text& p.Attributes;
}

template <class Archive>
void Operation::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<List>(*this);
  ar& m_NumericParams& m_StringParams& m_StrategySyncPoints& m_ActiveSpindle& m_ActiveTurret& m_CannedProgId;
  ar& m_MCOpId& m_MCOpCode& m_OldMCOpCode& m_MCOpNumber& m_Comment& m_MaxSpindleSpeed& m_SpindleModeMill;
  ar& m_SpindleCCW& m_NextToolChg& m_PrevToolChg& m_StreamId& m_ForceToolChange& m_ToolpathTypeTitle;
  ar& m_ToolPathType& m_RotaryId& m_UsesAltTurretIndex& m_MultiAxisCCOffset& m_CCOffsetDist& m_CCMethod& m_OpType;
  ar& m_MillOpSubType& m_ToolChangeTime& m_ContextType& m_MachineCoordSys& m_ToolPathGroupName& m_LatheToolAngle;
  ar& m_LatheToolOrientationAngle& m_LatheToolInsertOrientation& m_PartSpindleDirection& m_ToolSpindleDirection;
  ar& m_ReferencePositionId& m_AxisComboNumberOfRotaryAxis& m_SyncMgrDataMap& m_AxisComboId;
  ar& m_UseToolCenterCompensation& m_ToolCenterCompensationOffset& m_TransformSubprogramNestReturn;
  ar& m_OperationTypeString& m_IsReferencePositionSetToNoneByUser& m_TransformOpId;
}

template <class Archive>
void SubOp::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<List>(*this);
  ar& m_OpId& m_ToolChangeId& m_ToolPlaneId& m_ApproachRpm& m_CSSEnabled& m_ToolOrientationType& m_NCPlane;
  ar& m_NCPlaneCoordConv& m_Compensation& m_SpindleSpeed& m_FeedRate& m_FeedUnits& m_DiameterOffsetNum;
  ar& m_LengthOffsetNum;
}

template <class Archive>
void MoveStrategy::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<Base>(*this);
  ar& m_EndPoint& m_Type& m_ReferencePointId& m_NcIncremental;
}

template <class Archive>
void Approach::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<MoveStrategy>(*this);
}

template <class Archive>
void Retract::serialize(Archive& ar, unsigned /*version*/) {
  ar& boost::serialization::base_object<MoveStrategy>(*this);
  ar& m_IsNoneSetByUser;
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
BOOST_CLASS_EXPORT(IofBench::Peer::Operation)
BOOST_CLASS_EXPORT(IofBench::Peer::SubOp)
BOOST_CLASS_EXPORT(IofBench::Peer::Approach)
BOOST_CLASS_EXPORT(IofBench::Peer::Retract)
