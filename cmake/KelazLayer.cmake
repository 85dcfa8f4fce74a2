# kelaz_add_layer(NAME DIR [DEPS ...]): one static library per layer, built from every
# source file below DIR. Includes are relative to the repository root.
function(kelaz_add_layer name dir)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB_RECURSE _src CONFIGURE_DEPENDS ${dir}/*.cpp)
  file(GLOB_RECURSE _hdr CONFIGURE_DEPENDS ${dir}/*.h)
  add_library(${name} STATIC ${_src} ${_hdr})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS} PRIVATE kelaz_warnings)
endfunction()

# kelaz_add_test(NAME DIR DEPS ...): one GoogleTest executable from every test source below DIR.
function(kelaz_add_test name dir)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB_RECURSE _src CONFIGURE_DEPENDS ${dir}/*.cpp)
  add_executable(${name} ${_src})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gtest GTest::gtest_main kelaz_warnings)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES ENVIRONMENT "KELAZ_SOURCE_DIR=${PROJECT_SOURCE_DIR}")
endfunction()
