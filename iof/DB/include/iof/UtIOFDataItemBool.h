// UtIOFDataItemBool: a bool value of a synchronisation-manager token; ToString gives "BOOL: true".
#pragma once

#include <iof/UtIOFDataItem.h>

namespace IOF {

IOF_DECLARE_DATA_ITEM(UtIOFDataItemBool, bool, IOFAttrbType::Bool)

}  // namespace IOF
