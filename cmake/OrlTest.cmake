# Tests: one program a module, built from the same sources on every platform, one CTest entry a test.

include(GoogleTest)
if(WIN32)
  # Debian ships GoogleTest as sources; the Windows build compiles them with its own compiler.
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  foreach(lib IN ITEMS gtest gmock gtest_main gmock_main)
    target_include_directories(${lib} SYSTEM BEFORE INTERFACE /usr/src/googletest/googletest/include
                                                             /usr/src/googletest/googlemock/include)
  endforeach()
  # Linked into every test program: how cmake/wine-run knows that it was reached.
  add_library(orl_test_started OBJECT ${CMAKE_SOURCE_DIR}/tests/support/Started.windows.cpp)
  target_link_libraries(orl_test_started PRIVATE orl_flags)
else()
  find_package(GTest REQUIRED)
endif()

# orl_test(NAME SOURCES ... DEPENDS ... [SEPARATE]): the test program NAME. ORL_TEST_DATA is the folder tests/data,
# ORL_BIN_DIR the folder of the built binaries. SEPARATE as for orl_library.
function(orl_test name)
  cmake_parse_arguments(ARG "SEPARATE" "" "SOURCES;DEPENDS;DEFINES;LABELS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  if(ARG_SEPARATE)
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  endif()
  target_link_libraries(${name} PRIVATE orl_flags ${ARG_DEPENDS} GTest::gmock_main GTest::gmock)
  if(WIN32)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:orl_test_started>)
  endif()
  # GCC 12 sees overruns in inlined copies of short standard strings where there are none; tests are full of them.
  target_compile_options(${name} PRIVATE "$<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-restrict;-Wno-stringop-overread;-Wno-stringop-overflow>")
  target_precompile_headers(${name} PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string> <vector>)
  target_compile_definitions(
    ${name}
    PRIVATE ${ARG_DEFINES} ORL_SOURCE_DIR="${CMAKE_SOURCE_DIR}" ORL_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data"
            ORL_BIN_DIR="${CMAKE_BINARY_DIR}/bin" ORL_TEST_TMP="${CMAKE_BINARY_DIR}/tmp")
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/tmp)
  gtest_discover_tests(
    ${name}
    TEST_PREFIX ${name}.
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 120 LABELS "${ARG_LABELS}")
endfunction()
