// UtIOFDataItemInt: a int value of a synchronisation-manager token; ToString gives "INT: 5".
#pragma once

#include <iof/UtIOFDataItem.h>

namespace IOF {

IOF_DECLARE_DATA_ITEM(UtIOFDataItemInt, int, IOFAttrbType::Int)

}  // namespace IOF
