// UtIOFDataItemString: a CString value of a synchronisation-manager token; ToString gives "STRING: text".
#pragma once

#include <iof/UtIOFDataItem.h>

namespace IOF {

IOF_DECLARE_DATA_ITEM(UtIOFDataItemString, CString, IOFAttrbType::String)

}  // namespace IOF
