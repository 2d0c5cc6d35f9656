// UtIOFAttribItemUInt64: a 64-bit unsigned attribute: "key = %ld" (the low 32 bits).
#pragma once

#include <iof/UtIOFAttribItem.h>
#include <cstdint>

namespace IOF {

// Its non-const GetDataType answers IOFAttrbType::Double while the virtual one answers
// UInt64: this asymmetry is intended and kept. "%ld" prints the low 32 bits of the value.
IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemUInt64, std::uint64_t, IOFAttrbType::UInt64)

}  // namespace IOF
