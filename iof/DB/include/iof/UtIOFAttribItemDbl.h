// UtIOFAttribItemDbl: a double attribute: "key = %g".
#pragma once

#include <iof/UtIOFAttribItem.h>

namespace IOF {

IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemDbl, double, IOFAttrbType::Double)

}  // namespace IOF
