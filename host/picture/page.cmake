# The page for a browser: its parts are put together and become a source, page_template.cpp, when one of them changes.
set(page ${CMAKE_CURRENT_LIST_DIR}/page)
file(READ ${page}/page.html PAGE)
file(READ ${page}/page.css page_css)
set(page_js "")
foreach(script geometry view table page) # in the order in which they use each other
  file(READ ${page}/${script}.js text)
  string(APPEND page_js "${text}")
endforeach()
string(REPLACE "@PAGE_CSS@" "${page_css}" PAGE "${PAGE}")
string(REPLACE "@PAGE_JS@" "${page_js}" PAGE "${PAGE}")
configure_file(${CMAKE_CURRENT_LIST_DIR}/page_template.cpp.in page_template.cpp @ONLY)
file(GLOB page_files ${page}/*)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${page_files})
