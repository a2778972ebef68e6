# Installation: find_package(QevCommon) gives QevCommon::QevCommon, QevCommon::QevData and QevCommon::QevMath.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/QevCommon)
configure_package_config_file(cmake/QevCommonConfig.cmake.in ${PROJECT_BINARY_DIR}/QevCommonConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QevCommonConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QevCommonConfig.cmake ${PROJECT_BINARY_DIR}/QevCommonConfigVersion.cmake
  DESTINATION ${package_dir})
install(EXPORT QevCommonTargets NAMESPACE QevCommon:: DESTINATION ${package_dir})
