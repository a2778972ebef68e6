# What `cpack` makes of a build folder: three Debian packages and an archive on Linux, an archive on Windows.
set(CPACK_PACKAGE_NAME qevcommon)
set(CPACK_PACKAGE_VENDOR "The QevCommon developers")
set(QEV_PACKAGE_CONTACT "The QevCommon developers" CACHE STRING "Who packages: \"Name <mail>\", the maintainer of the Debian packages")
set(CPACK_PACKAGE_CONTACT "${QEV_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_THREADS 1) # compressed by several threads at once, an archive may differ from one made alone
set(CPACK_COMPONENTS_ALL runtime development tools)
set(CPACK_ARCHIVE_COMPONENT_INSTALL OFF)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_SYSTEM_NAME windows-x86_64)
else()
  set(CPACK_GENERATOR "DEB;TGZ")
  set(CPACK_SYSTEM_NAME linux-${CMAKE_SYSTEM_PROCESSOR})
endif()

# Versions of one minor number have one name and replace one another; others stand side by side.
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/math ${PROJECT_BINARY_DIR}/data
  ${PROJECT_BINARY_DIR}/common)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY >=)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(runtime_package libqevcommon${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/triggers)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS libgdk-pixbuf-2.0-0) # loaded with the first picture
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The libraries that programs run with: contours, positions and ranges along
them, conversion, cutting, picking, settings in Lua and machining processes.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libqevcommon-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "liblua5.2-dev, cmake, pkg-config") # Lua: for hosts that call it themselves
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Headers and build files for hosts and for technics plug-ins, with a template of
a plug-in.")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME qevcommon-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "${runtime_package} (= ${PROJECT_VERSION}), fonts-dejavu-core")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "The program qev_host, which reads DXF drawings, reports their contours, plans
their cutting and draws them, and its plug-ins for lead-ins and micro-joints.")
set(CPACK_QEV_SOURCES ${PROJECT_SOURCE_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian.cmake)
include(CPack)
