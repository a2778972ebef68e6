# What all targets of the project have in common.

# Results do not depend on fused multiply-add; calls into other libraries go straight through the address table, which
# a call of the bridge makes ten times; nobody reads errno or the flags of the processor after arithmetic, so that the
# compiler may work on several numbers at once. None of these changes a result.
add_library(qev_options INTERFACE)
target_compile_options(qev_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wold-style-cast -Wnon-virtual-dtor
  -Woverloaded-virtual -ffp-contract=off -fno-math-errno -fno-trapping-math -fno-plt
  $<$<BOOL:${QEV_WARNINGS_AS_ERRORS}>:-Werror>
  # what is built does not tell where, so that two builds of one commit are equal
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build
  # a unique symbol (of a template of the standard library) would keep a library from unloading
  $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)

# qev_install(NAME): what is installed and exported of a library.
function(qev_install name)
  install(TARGETS ${name} EXPORT QevCommonTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endfunction()

# qev_use_options(NAME): compiles a library with the options above and links nothing for them, so that an exported
# static library does not ask its users for qev_options.
function(qev_use_options name)
  target_compile_options(${name} PRIVATE $<TARGET_PROPERTY:qev_options,INTERFACE_COMPILE_OPTIONS>)
endfunction()

# qev_shared_names(NAME): file names of a shared library, and what it hides.
function(qev_shared_names name)
  string(TOLOWER ${name} lower)
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME ${lower}
    INSTALL_RPATH $ORIGIN # its siblings stand beside it
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}) # before 1.0 the second number counts
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME ${name})
    target_link_options(${name} PRIVATE -Wl,--no-insert-timestamp)
  else()
    set(map ${PROJECT_SOURCE_DIR}/cmake/exports.map)
    target_link_options(${name} PRIVATE -Wl,--version-script=${map})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${map})
  endif()
endfunction()

# qev_library(NAME HEADERS [STATIC] SOURCE...): one of the installed libraries. HEADERS is the folder of its installed
# headers, as they are included.
function(qev_library name headers)
  add_library(${name} ${ARGN}) # shared or static, unless said: BUILD_SHARED_LIBS
  add_library(QevCommon::${name} ALIAS ${name})
  get_target_property(type ${name} TYPE)
  if(type STREQUAL SHARED_LIBRARY)
    qev_shared_names(${name})
  else()
    string(TOLOWER ${name} lower)
    set_target_properties(${name} PROPERTIES OUTPUT_NAME ${lower})
  endif()
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${name} PUBLIC QEV_STATIC)
  endif()
  qev_use_options(${name})
  target_compile_features(${name} PUBLIC cxx_std_20)
  cmake_path(ABSOLUTE_PATH headers BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${headers}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  if(QEV_INSTALL)
    install(DIRECTORY ${headers}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
    qev_install(${name})
  endif()
endfunction()

# qev_install_tool(NAME FOLDER): installs a program or a plug-in in a folder under the prefix, from where it finds the
# libraries wherever the whole has been moved to.
function(qev_install_tool name folder)
  if(NOT QEV_INSTALL)
    return()
  endif()
  file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_PREFIX}/${folder} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(${name} PROPERTIES INSTALL_RPATH $ORIGIN/${to_libraries})
  if(WIN32)
    target_link_options(${name} PRIVATE -Wl,--no-insert-timestamp)
  endif()
  install(TARGETS ${name} COMPONENT tools RUNTIME DESTINATION ${folder} LIBRARY DESTINATION ${folder}
    ARCHIVE EXCLUDE_FROM_ALL DESTINATION ${CMAKE_INSTALL_LIBDIR})
endfunction()
