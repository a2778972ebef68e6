# The headers of GDK-Pixbuf 2, which decodes pictures off Windows: GdkPixbuf_INCLUDE_DIRS. Its library is not linked.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
  pkg_check_modules(GdkPixbuf QUIET gdk-pixbuf-2.0)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GdkPixbuf REQUIRED_VARS GdkPixbuf_INCLUDE_DIRS VERSION_VAR GdkPixbuf_VERSION
  REASON_FAILURE_MESSAGE "pkg-config knows no gdk-pixbuf-2.0 (apt-get install pkg-config libgdk-pixbuf-2.0-dev)")
