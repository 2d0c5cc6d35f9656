// Attributes and synchronisation-manager tokens in one include: the attribute map and
// its items, the data items and the token. Each class has a header of its own
// (UtIOFAttribMap.h, UtIOFAttribItem.h, UtIOFAttribItemBool.h, ..., UtIOFDataItem.h,
// UtSyncMgrTokenBase.h); this one is kept for code that includes them all at once.
#pragma once

#include <iof/UtIOFAttribItem.h>
#include <iof/UtIOFAttribItemBool.h>
#include <iof/UtIOFAttribItemCString.h>
#include <iof/UtIOFAttribItemDbl.h>
#include <iof/UtIOFAttribItemInt.h>
#include <iof/UtIOFAttribItemUInt64.h>
#include <iof/UtIOFAttribMap.h>
#include <iof/UtIOFDataItem.h>
#include <iof/UtIOFDataItemBool.h>
#include <iof/UtIOFDataItemDbl.h>
#include <iof/UtIOFDataItemInt.h>
#include <iof/UtIOFDataItemString.h>
#include <iof/UtSyncMgrTokenBase.h>
