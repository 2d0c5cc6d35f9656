# xxHash (Debian: libxxhash-dev). Defines XXHash::XXHash.
find_path(XXHASH_INCLUDE_DIR NAMES xxhash.h)
find_library(XXHASH_LIBRARY NAMES xxhash)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(XXHash REQUIRED_VARS XXHASH_LIBRARY XXHASH_INCLUDE_DIR)
if(XXHash_FOUND AND NOT TARGET XXHash::XXHash)
  add_library(XXHash::XXHash UNKNOWN IMPORTED)
  set_target_properties(XXHash::XXHash PROPERTIES
    IMPORTED_LOCATION "${XXHASH_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${XXHASH_INCLUDE_DIR}")
endif()
mark_as_advanced(XXHASH_INCLUDE_DIR XXHASH_LIBRARY)
