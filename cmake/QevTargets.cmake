# What all targets of the project have in common.

# Warnings are errors; results do not depend on fused multiply-add; calls into other libraries go straight through the
# address table, which a call of the bridge makes ten times.
add_library(qev_options INTERFACE)
target_compile_options(qev_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror -ffp-contract=off -fno-plt
  # a unique symbol (of a template of the standard library) would keep a library from unloading
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)

# qev_library(NAME HEADERS SOURCE...): one of the installed shared libraries. HEADERS is the folder of its installed
# headers, as they are included.
function(qev_library name headers)
  string(TOLOWER ${name} lower)
  add_library(${name} SHARED ${ARGN})
  add_library(QevCommon::${name} ALIAS ${name})
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${lower}
    INSTALL_RPATH $ORIGIN # its siblings stand beside it
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME ${name})
  else()
    set(map ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_link_options(${name} PRIVATE -Wl,--version-script=${map})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${map})
  endif()
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:qev_options>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  cmake_path(ABSOLUTE_PATH headers BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${headers}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  install(DIRECTORY ${headers}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
  install(TARGETS ${name} EXPORT QevCommonTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()
