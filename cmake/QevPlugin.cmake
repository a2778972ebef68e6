# For technics plug-ins, installed or in the build folder.

# qev_add_plugin(NAME SOURCE...): a plug-in that the technics manager loads. Its entries are those of
# QEV_TECHNICS_PLUG_IN(NAME ...).
function(qev_add_plugin name)
  add_library(${name} SHARED ${ARGN})
  set_target_properties(${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_link_libraries(${name} PRIVATE QevCommon::QevTechnics)
  # a unique symbol (of a template of the standard library) would keep a plug-in from unloading
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
endfunction()
