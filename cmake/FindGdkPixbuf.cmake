# GDK-Pixbuf 2, which decodes pictures off Windows, as the imported target GdkPixbuf::gdk_pixbuf.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(GdkPixbuf_pc QUIET IMPORTED_TARGET gdk-pixbuf-2.0)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GdkPixbuf REQUIRED_VARS GdkPixbuf_pc_LINK_LIBRARIES VERSION_VAR GdkPixbuf_pc_VERSION
  REASON_FAILURE_MESSAGE "pkg-config knows no gdk-pixbuf-2.0 (apt-get install pkg-config libgdk-pixbuf-2.0-dev)")
if(GdkPixbuf_FOUND AND NOT TARGET GdkPixbuf::gdk_pixbuf)
  add_library(GdkPixbuf::gdk_pixbuf INTERFACE IMPORTED)
  target_link_libraries(GdkPixbuf::gdk_pixbuf INTERFACE PkgConfig::GdkPixbuf_pc)
endif()
