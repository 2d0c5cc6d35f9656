// UtIOFAttribItemInt: a 32-bit integer attribute: "key = %d".
#pragma once

#include <iof/UtIOFAttribItem.h>
#include <cstdint>

namespace IOF {

IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemInt, std::int32_t, IOFAttrbType::Int)

}  // namespace IOF
