# What lets others find the libraries: find_package(QevCommon) with the targets QevCommon::QevCommon, QevCommon::QevData
# and QevCommon::QevMath, installed or in the build folder, and pkg-config's qevcommon.
if(NOT QEV_INSTALL)
  return()
endif()
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QevCommon)
configure_package_config_file(cmake/QevCommonConfig.cmake.in ${PROJECT_BINARY_DIR}/QevCommonConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QevCommonConfigVersion.cmake
  COMPATIBILITY SameMinorVersion) # before 1.0 a new second number may break callers
set(package_files QevCommonConfig.cmake QevCommonConfigVersion.cmake)
if(NOT BUILD_SHARED_LIBS) # users link what the libraries use
  foreach(dependency FindLua52.cmake FindOcctFoundation.cmake FindGdkPixbuf.cmake)
    configure_file(cmake/${dependency} ${PROJECT_BINARY_DIR}/${dependency} COPYONLY)
    list(APPEND package_files ${dependency})
  endforeach()
endif()
list(TRANSFORM package_files PREPEND ${PROJECT_BINARY_DIR}/)
install(FILES ${package_files} DESTINATION ${package_dir})
if(BUILD_SHARED_LIBS) # what plug-ins are built with
  configure_file(cmake/QevPlugin.cmake ${PROJECT_BINARY_DIR}/QevPlugin.cmake COPYONLY)
  install(FILES cmake/QevPlugin.cmake cmake/qev_new_plugin.cmake DESTINATION ${package_dir})
  install(DIRECTORY kit/template DESTINATION ${package_dir})
endif()
install(FILES NOTICE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(EXPORT QevCommonTargets NAMESPACE QevCommon:: DESTINATION ${package_dir})
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
    set(pc_requires gdk-pixbuf-2.0)
    string(APPEND pc_libs " -ldl")
  endif()
endif()
configure_file(cmake/qevcommon.pc.in ${PROJECT_BINARY_DIR}/qevcommon.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/qevcommon.pc DESTINATION ${pc_dir})
