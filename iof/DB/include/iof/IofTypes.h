// The IOF record types: every type name, type code and record class in one table.
//
// Each record class has a 64-bit type code (its IOF type) and, for most, a type name
// that the type registry (DbIOFTypeMgr) registers with the host at load. The tables
// below drive the registry, the class declarations and the typed pointers.
#pragma once

#include <quarp/DbPtr.h>

#include <cstdint>

// X(NAME, Class, code): the registered types, in registration order.
#define IOF_REGISTERED_TYPES(X)                             \
  X(IOFBASE, DbIOFBase, 0x5100)                             \
  X(IOFNCIBASE, DbIOFNciBase, 0x5101)                       \
  X(IOFNCIGENERIC, DbIOFNciGeneric, 0x5102)                 \
  X(IOFNCIBASEMOVE, DbIOFNciBaseMove, 0x5103)               \
  X(IOFNCILINEAR, DbIOFNciLinear, 0x5104)                   \
  X(IOFNCIARC, DbIOFNciArc, 0x5105)                         \
  X(IOFNCIARC3D, DbIOFNciArc3D, 0x5106)                     \
  X(IOFNCIMULTIAX, DbIOFNciMultiAx, 0x5107)                 \
  X(IOFLIST, DbIOFList, 0x5110)                             \
  X(IOFSTREAM, DbIOFStream, 0x5111)                         \
  X(IOFDOCUMENT, DbIOFDocument, 0x5112)                     \
  X(IOFNCIPLANE, DbIOFNciPlane, 0x5114)                     \
  X(IOFNCITOOLCHANGE, DbIOFNciToolChange, 0x5116)           \
  X(IOFNCIMANUALENTRY, DbIOFNciManualEntry, 0x5117)         \
  X(IOFNCIOPERATION, DbIOFNciOperation, 0x5121)             \
  X(IOFNCITRANSSUBPROGOP, DbIOFNciTransSubProgOp, 0x5300)   \
  X(IOFNCISUBOP, DbIOFNciSubOp, 0x5122)                     \
  X(IOFAPPROACH, DbIOFApproach, 0x5123)                     \
  X(IOFRETRACT, DbIOFRetract, 0x5124)                       \
  X(IOFNCITOOLPLANECHANGE, DbIOFNciToolPlaneChange, 0x5126) \
  X(IOFEVENTBASE, DbIOFEventBase, 0x5130)                   \
  X(IOFEVSYNC, DbIOFEvSync, 0x5131)                         \
  X(IOFEVDWELL, DbIOFEvDwell, 0x5133)                       \
  X(IOFEVCOMP, DbIOFEvComp, 0x5136)                         \
  X(IOFEVCLAMP, DbIOFEvClamp, 0x5138)                       \
  X(IOFMOTIONBLOCK, DbIOFMotionBlock, 0x5140)               \
  X(IOFARCMOTIONBLOCK, DbIOFArcMotionBlock, 0x5141)         \
  X(IOFDRILLMOTIONBLOCK, DbIOFDrillMotionBlock, 0x5142)     \
  X(IOFMULTIAXMOTIONBLOCK, DbIOFMultiAxMotionBlock, 0x5143) \
  X(IOFNCISUBPROGREF, DbIOFNciSubProgRef, 0x5150)           \
  X(IOFNCICFSUBPROGREF, DbIOFNciCFSubProgRef, 0x5151)       \
  X(IOFNCICPSUBPROGREF, DbIOFNciCPSubProgRef, 0x5152)       \
  X(IOFNCICRSUBPROGREF, DbIOFNciCRSubProgRef, 0x5153)       \
  X(IOFCANNEDGROOVE, DbIOFCannedGroove, 0x5160)             \
  X(IOFTHREAD, DbIOFThread, 0x5161)                         \
  X(IOFDRILL, DbIOFDrill, 0x5162)                           \
  X(IOFDRILLPOINT, DbIOFDrillPoint, 0x5163)                 \
  X(IOFROTARY, DbIOFRotary, 0x5164)                         \
  X(IOFJOBSETUP, DbIOFJobSetup, 0x5170)                     \
  X(IOFPARTSPINDLEMAP, DbIOFPartSpindleMap, 0x5171)         \
  X(IOFPARTSPINDLE, DbIOFPartSpindle, 0x5172)               \
  X(IOFSTOCKDEF, DbIOFStockDef, 0x5173)                     \
  X(IOFCHUCKDEF, DbIOFChuckDef, 0x5174)                     \
  X(IOFREFERENCEPOINT, DbIOFReferencePoint, 0x5175)         \
  X(IOFNCIMISCOP, DbIOFNciMiscOp, 0x5200)                   \
  X(IOFNCIMOPBARFEED, DbIOFNciMOpBarFeed, 0x5201)           \
  X(IOFNCIMOPBARFEEDER, DbIOFNciMOpBarFeeder, 0x5202)       \
  X(IOFNCIMOPBARPULLER, DbIOFNciMOpBarPuller, 0x5203)       \
  X(IOFNCIMOPSPINDLEGRIP, DbIOFNciMOpSpindleGrip, 0x5204)   \
  X(IOFNCIMOPSPINDLEMOVE, DbIOFNciMOpSpindleMove, 0x5205)   \
  X(IOFNCIMOPSPINDLESYNC, DbIOFNciMOpSpindleSync, 0x5206)   \
  X(IOFNCIMOPTAILSTOCK, DbIOFNciMOpTailStock, 0x5207)       \
  X(IOFNCIMOPTURRET, DbIOFNciMOpTurret, 0x5208)             \
  X(IOFNCIMOPSTEADYREST, DbIOFNciMOpSteadyRest, 0x5209)

// X(Class, code): record classes with a type code that are deliberately not registered
// by name; the host answers their index as it does for any unregistered code.
#define IOF_UNREGISTERED_TYPES(X)       \
  X(DbIOFNciPlaneBase, 0x5113)          \
  X(DbIOFNciPlaneReference, 0x5115)     \
  X(DbIOFEvChangeFeedUnitType, 0x5137)  \
  X(DbIOFNciNonTransSubProgRef, 0x5154) \
  X(DbIOFMachineInfo, 0x5176)

// X(NAME): type names with registry accessors that are never registered and that no
// record class carries; their index stays -1 and their mask empty.
#define IOF_NEVER_REGISTERED_NAMES(X) \
  X(IOFCANNEDTEXT)                    \
  X(IOFCOOLANT)                       \
  X(IOFEVAXISMOTION)                  \
  X(IOFEVCHUCKOPENCLOSE)              \
  X(IOFEVTOOLCALL)

namespace IOF {

#define IOF_X_DECLARE_REGISTERED(NAME, Class, code) class Class;
#define IOF_X_DECLARE_UNREGISTERED(Class, code) class Class;
IOF_REGISTERED_TYPES(IOF_X_DECLARE_REGISTERED)
IOF_UNREGISTERED_TYPES(IOF_X_DECLARE_UNREGISTERED)
#undef IOF_X_DECLARE_REGISTERED
#undef IOF_X_DECLARE_UNREGISTERED

}  // namespace IOF

// The type code of each record class, known wherever the class is declared, so that
// DbPtr<DbIOFStream> can be named before DbIOFStream is defined.
#define IOF_X_TYPE_CODE_REGISTERED(NAME, Class, code) \
  template <>                                         \
  struct Quarp::DbTypeCode<IOF::Class> {              \
    static constexpr std::uint64_t value = code;      \
  };
#define IOF_X_TYPE_CODE_UNREGISTERED(Class, code) IOF_X_TYPE_CODE_REGISTERED(_, Class, code)
IOF_REGISTERED_TYPES(IOF_X_TYPE_CODE_REGISTERED)
IOF_UNREGISTERED_TYPES(IOF_X_TYPE_CODE_UNREGISTERED)
#undef IOF_X_TYPE_CODE_REGISTERED
#undef IOF_X_TYPE_CODE_UNREGISTERED
