# What lets others find the libraries: find_package(QevCommon) with the targets QevCommon::QevCommon, QevCommon::QevData,
# QevCommon::QevMath and QevCommon::QevTechnics, installed or in the build folder, and pkg-config's qevcommon.
if(NOT QEV_INSTALL)
  return()
endif()
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QevCommon)
set(plug_in_dir ${CMAKE_INSTALL_LIBDIR}/qevcommon/plugins)
configure_package_config_file(cmake/QevCommonConfig.cmake.in ${PROJECT_BINARY_DIR}/QevCommonConfig.cmake
  INSTALL_DESTINATION ${package_dir} PATH_VARS plug_in_dir)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QevCommonConfigVersion.cmake
  COMPATIBILITY SameMinorVersion) # before 1.0 a new second number may break callers
set(package_files QevCommonConfig.cmake QevCommonConfigVersion.cmake FindLua52.cmake)
configure_file(cmake/FindLua52.cmake ${PROJECT_BINARY_DIR}/FindLua52.cmake COPYONLY)
if(NOT BUILD_SHARED_LIBS) # users link what the libraries use
  configure_file(cmake/FindOcctFoundation.cmake ${PROJECT_BINARY_DIR}/FindOcctFoundation.cmake COPYONLY)
  list(APPEND package_files FindOcctFoundation.cmake)
endif()
list(TRANSFORM package_files PREPEND ${PROJECT_BINARY_DIR}/)
install(FILES ${package_files} DESTINATION ${package_dir} COMPONENT development)
if(BUILD_SHARED_LIBS) # what plug-ins are built with
  configure_file(cmake/QevPlugin.cmake ${PROJECT_BINARY_DIR}/QevPlugin.cmake COPYONLY)
  install(FILES cmake/QevPlugin.cmake cmake/qev_new_plugin.cmake DESTINATION ${package_dir} COMPONENT development)
  install(DIRECTORY kit/template DESTINATION ${package_dir} COMPONENT development)
  file(RELATIVE_PATH to_package_dir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_PREFIX}/${package_dir})
  set(new_plugin qev_new_plugin)
  set(newlines LF)
  if(WIN32)
    set(new_plugin qev_new_plugin.cmd)
    set(newlines CRLF)
  else()
    install(FILES cmake/qev_new_plugin.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT development)
  endif()
  configure_file(cmake/${new_plugin}.in ${PROJECT_BINARY_DIR}/${new_plugin} @ONLY NO_SOURCE_PERMISSIONS NEWLINE_STYLE ${newlines})
  install(PROGRAMS ${PROJECT_BINARY_DIR}/${new_plugin} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT development)
endif()
install(FILES NOTICE README.md CHANGELOG.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(FILES docs/plate.svg DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT runtime) # where README.md shows it
install(FILES docs/technics.md DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT tools)
set(examples_dir ${CMAKE_INSTALL_DOCDIR}/examples)
install(DIRECTORY examples/drawings DESTINATION ${examples_dir} COMPONENT tools)
install(DIRECTORY docs/guides examples/plugins DESTINATION ${examples_dir} COMPONENT development)
install(FILES tests/consumer/CMakeLists.txt tests/consumer/main.cpp tests/consumer/build_with_pkg_config
  DESTINATION ${examples_dir}/host COMPONENT development)
install(EXPORT QevCommonTargets NAMESPACE QevCommon:: DESTINATION ${package_dir} COMPONENT development)
export(EXPORT QevCommonTargets NAMESPACE QevCommon:: FILE ${PROJECT_BINARY_DIR}/QevCommonTargets.cmake)

# pkg-config's file names its place relative to itself, so that the installed folder may move.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH pc_to_include ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_FULL_INCLUDEDIR})
set(pc_libs "-lqevcommon -lqevdata -lqevmath")
if(WIN32)
  set(pc_cflags " -D_USE_MATH_DEFINES")
  if(BUILD_SHARED_LIBS)
    set(pc_libs "-lQevCommon -lQevData -lQevMath")
  endif()
endif()
if(NOT BUILD_SHARED_LIBS)
  string(APPEND pc_cflags " -DQEV_STATIC")
  get_filename_component(lua ${Lua52_LIBRARY} NAME_WLE)
  string(REGEX REPLACE "^lib|\\.dll$" "" lua ${lua})
  string(APPEND pc_libs " -lqev_platform -l${lua} -lTKMath -lTKernel")
  if(WIN32)
    string(APPEND pc_libs " -lgdiplus -lole32 -lshlwapi")
  else()
    string(APPEND pc_libs " -ldl")
  endif()
endif()
configure_file(cmake/qevcommon.pc.in ${PROJECT_BINARY_DIR}/qevcommon.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qevcommon.pc DESTINATION ${pc_dir} COMPONENT development)

# On Windows everything that the libraries need stands beside them: a program without it ends before it can say why.
if(WIN32 AND BUILD_SHARED_LIBS AND PROJECT_IS_TOP_LEVEL)
  foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll} OUTPUT_VARIABLE file
      OUTPUT_STRIP_TRAILING_WHITESPACE)
    cmake_path(IS_ABSOLUTE file found) # else it is a bare name
    if(NOT found)
      message(FATAL_ERROR "the compiler does not know its own ${dll}")
    endif()
    list(APPEND dlls ${file})
  endforeach()
  foreach(library ${Lua52_LIBRARY} ${OcctFoundation_TKernel_LIBRARY} ${OcctFoundation_TKMath_LIBRARY})
    get_filename_component(name ${library} NAME_WE) # libTKMath.dll.a
    string(REGEX REPLACE "^lib" "" name ${name})
    get_filename_component(folder ${library} DIRECTORY)
    file(GLOB file ${folder}/../bin/${name}.dll ${folder}/../bin/lib${name}.dll)
    list(APPEND dlls ${file})
  endforeach()
  install(PROGRAMS ${dlls} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  install(FILES ${Lua52_LIBRARY} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
  install(DIRECTORY ${Lua52_INCLUDE_DIR}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lua5.2 COMPONENT development)
endif()

# The terms of what is compiled into the program, and on Windows of what stands beside it, go along with it, as the
# building system's packages state them.
if(QEV_BUILD_EXAMPLES)
  set(works libcli11-dev nlohmann-json3-dev fonts-dejavu-core)
  if(WIN32)
    list(APPEND works libfreetype-dev liblua5.2-dev libocct-foundation-dev gcc-mingw-w64-base mingw-w64-common)
    install(FILES /usr/share/common-licenses/GPL-3 /usr/share/common-licenses/LGPL-2.1
      DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences COMPONENT tools OPTIONAL)
  endif()
  foreach(work ${works})
    install(FILES /usr/share/doc/${work}/copyright RENAME ${work}.txt
      DESTINATION ${CMAKE_INSTALL_DOCDIR}/licences COMPONENT tools OPTIONAL)
  endforeach()
endif()

if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -DMANIFEST=${PROJECT_BINARY_DIR}/install_manifest.txt
    -P ${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake COMMENT "Removing what the last installation wrote")
  include(QevCPack)
endif()
