# Lua 5.2, built as C, as the imported target Lua52::lua: the distribution's package, or a lua52.dll with its import
# library under a prefix of CMAKE_PREFIX_PATH.
if(PACKAGE_PREFIX_DIR) # what was installed with the libraries comes first
  find_path(Lua52_INCLUDE_DIR lua.h PATHS ${PACKAGE_PREFIX_DIR}/include/lua5.2 NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  find_library(Lua52_LIBRARY NAMES lua52 PATHS ${PACKAGE_PREFIX_DIR}/lib NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
endif()
find_path(Lua52_INCLUDE_DIR lua.h PATH_SUFFIXES lua5.2 lua-5.2 lua52)
find_library(Lua52_LIBRARY NAMES lua5.2 lua-5.2 lua52)
mark_as_advanced(Lua52_INCLUDE_DIR Lua52_LIBRARY)
if(Lua52_INCLUDE_DIR)
  file(READ "${Lua52_INCLUDE_DIR}/lua.h" header)
  string(REGEX REPLACE ".*LUA_VERSION_MAJOR[ \t]+\"([0-9]+)\".*LUA_VERSION_MINOR[ \t]+\"([0-9]+)\".*LUA_VERSION_RELEASE[ \t]+\"([0-9]+)\".*"
    "\\1.\\2.\\3" Lua52_VERSION "${header}")
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Lua52 REQUIRED_VARS Lua52_LIBRARY Lua52_INCLUDE_DIR VERSION_VAR Lua52_VERSION)
if(Lua52_FOUND AND NOT TARGET Lua52::lua)
  add_library(Lua52::lua UNKNOWN IMPORTED)
  set_target_properties(Lua52::lua PROPERTIES IMPORTED_LOCATION "${Lua52_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${Lua52_INCLUDE_DIR}")
  if(WIN32)
    set_property(TARGET Lua52::lua PROPERTY INTERFACE_COMPILE_DEFINITIONS LUA_BUILD_AS_DLL)
  endif()
endif()
