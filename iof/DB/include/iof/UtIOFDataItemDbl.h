// UtIOFDataItemDbl: a double value of a synchronisation-manager token; ToString gives "DBL: 0.5".
#pragma once

#include <iof/UtIOFDataItem.h>

namespace IOF {

IOF_DECLARE_DATA_ITEM(UtIOFDataItemDbl, double, IOFAttrbType::Double)

}  // namespace IOF
