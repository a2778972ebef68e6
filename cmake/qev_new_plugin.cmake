# cmake -DNAME=groove -P qev_new_plugin.cmake: makes a folder `groove` (or -DFOLDER=...) with a technics plug-in of that
# name, which builds, loads and passes its own test as it is.
if(NOT NAME MATCHES "^[A-Za-z][A-Za-z0-9_]*$")
  message(FATAL_ERROR "a plug-in's name is letters, digits and underscores and begins with a letter, not '${NAME}'")
endif()
if(NOT FOLDER)
  set(FOLDER ${NAME})
endif()
cmake_path(ABSOLUTE_PATH FOLDER)
if(EXISTS ${FOLDER}/CMakeLists.txt)
  message(FATAL_ERROR "there is a project in ${FOLDER} already; it is left as it is")
endif()
set(from ${CMAKE_CURRENT_LIST_DIR}/template)
configure_file(${from}/CMakeLists.txt.in ${FOLDER}/CMakeLists.txt @ONLY)
configure_file(${from}/plugin.cpp.in ${FOLDER}/${NAME}.cpp @ONLY)
configure_file(${from}/plugin_test.cpp.in ${FOLDER}/${NAME}_test.cpp @ONLY)
message(STATUS "made; to build and to test it, in ${FOLDER}:
   cmake -B build -DQevCommon_DIR=\"${CMAKE_CURRENT_LIST_DIR}\" && cmake --build build && ctest --test-dir build")
