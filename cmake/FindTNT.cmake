# The Template Numerical Toolkit (Debian: libtnt-dev), header-only. Defines TNT::TNT.
find_path(TNT_INCLUDE_DIR NAMES tnt/tnt_cmat.h)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(TNT REQUIRED_VARS TNT_INCLUDE_DIR)
if(TNT_FOUND AND NOT TARGET TNT::TNT)
  add_library(TNT::TNT INTERFACE IMPORTED)
  set_target_properties(TNT::TNT PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${TNT_INCLUDE_DIR}")
endif()
mark_as_advanced(TNT_INCLUDE_DIR)
