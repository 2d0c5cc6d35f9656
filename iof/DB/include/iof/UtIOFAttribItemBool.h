// UtIOFAttribItemBool: a bool attribute: "key = true" / "key = false".
#pragma once

#include <iof/UtIOFAttribItem.h>

namespace IOF {

IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemBool, bool, IOFAttrbType::Bool)

}  // namespace IOF
