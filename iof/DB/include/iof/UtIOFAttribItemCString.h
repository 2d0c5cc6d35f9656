// UtIOFAttribItemCString: a text attribute: "key = %s".
#pragma once

#include <iof/UtIOFAttribItem.h>

namespace IOF {

IOF_DECLARE_ATTRIB_ITEM(UtIOFAttribItemCString, CString, IOFAttrbType::String)

}  // namespace IOF
