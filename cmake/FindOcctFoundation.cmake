# Open CASCADE foundation classes as the imported targets Occt::TKernel and Occt::TKMath.
# The package's own config file is not used: it adds directory-wide definitions and its targets carry no
# include directories.
find_path(OcctFoundation_INCLUDE_DIR gp_Vec2d.hxx PATH_SUFFIXES opencascade occt)
find_library(OcctFoundation_TKernel_LIBRARY TKernel)
find_library(OcctFoundation_TKMath_LIBRARY TKMath)
mark_as_advanced(OcctFoundation_INCLUDE_DIR OcctFoundation_TKernel_LIBRARY OcctFoundation_TKMath_LIBRARY)
if(OcctFoundation_INCLUDE_DIR)
  file(STRINGS "${OcctFoundation_INCLUDE_DIR}/Standard_Version.hxx" version_line REGEX "define OCC_VERSION_COMPLETE")
  string(REGEX REPLACE ".*\"([0-9.]+)\".*" "\\1" OcctFoundation_VERSION "${version_line}")
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OcctFoundation REQUIRED_VARS OcctFoundation_TKMath_LIBRARY
  OcctFoundation_TKernel_LIBRARY OcctFoundation_INCLUDE_DIR VERSION_VAR OcctFoundation_VERSION)
if(OcctFoundation_FOUND)
  foreach(toolkit TKernel TKMath)
    if(NOT TARGET Occt::${toolkit})
      add_library(Occt::${toolkit} UNKNOWN IMPORTED)
      set_target_properties(Occt::${toolkit} PROPERTIES IMPORTED_LOCATION "${OcctFoundation_${toolkit}_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${OcctFoundation_INCLUDE_DIR}")
    endif()
  endforeach()
  set_property(TARGET Occt::TKMath PROPERTY INTERFACE_LINK_LIBRARIES Occt::TKernel)
endif()
