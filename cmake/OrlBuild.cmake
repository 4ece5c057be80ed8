# Flags and helper functions that every module shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# Every binary in one folder: libraries are found beside each other, as after an installation.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH $ORIGIN)

find_program(ORL_CCACHE ccache)
if(ORL_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER ${ORL_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ORL_CCACHE})
endif()

add_library(orl_flags INTERFACE)
target_include_directories(orl_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(orl_flags INTERFACE UNICODE _UNICODE)
target_compile_options(
  orl_flags
  INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall
    -Wextra
    -Wpedantic
    -Wconversion
    -Wsign-conversion
    -Wshadow
    -Wnon-virtual-dtor
    -Woverloaded-virtual
    -Wcast-align
    -Wformat=2
    -Werror
    -fstack-protector-strong>)
# COM interfaces have no destructor by contract (it would take slots of their table); objects end in Release.
target_compile_options(orl_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-non-virtual-dtor>)
# GCC 12 sees overlapping copies in inlined joins of standard strings where there are none.
target_compile_options(orl_flags INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
if(WIN32)
  # -static: one C++ runtime per module and none to ship; the CRT stays the system's msvcrt.dll.
  target_link_options(orl_flags INTERFACE -static -fstack-protector-strong -Wl,--high-entropy-va -Wl,--dynamicbase -Wl,--nxcompat)
  target_compile_definitions(orl_flags INTERFACE _WIN32_WINNT=0x0A00 WINVER=0x0A00)
  # The SDK's own headers use anonymous structs and casts that our flags refuse.
  target_compile_options(orl_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-unknown-pragmas>)
else()
  # A library that is released goes, as on Windows: one unique symbol of a standard template would pin it.
  target_compile_options(orl_flags INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  target_link_options(orl_flags INTERFACE -Wl,--as-needed)
endif()

set(ORL_SANITIZE "" CACHE STRING "Sanitizers of the build, as for -fsanitize=")
if(ORL_SANITIZE)
  # GCC's own manual: with its sanitizers this warning fires where nothing is uninitialized.
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_compile_options(-fsanitize=${ORL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${ORL_SANITIZE})
elseif(NOT WIN32)
  # Not with a sanitizer: such a library finds its runtime in the program that loads it.
  target_link_options(orl_flags INTERFACE -Wl,-z,defs)
endif()

option(ORL_COVERAGE "Count which lines are run" OFF)
if(ORL_COVERAGE)
  # Counted in one step: the service and its providers are threads. Processes that are killed leave no counts.
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(ORL_FUZZ)
  # All code tells the fuzzer which way it went; only the fuzz targets themselves link its main function.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()

# orl_library(NAME SOURCES ... DEPENDS ... [SEPARATE]): a static library of one module. Some presets compile several
# sources at once, which saves most of their time; SEPARATE keeps the sources of a module apart whose files use the same
# private names.
function(orl_library name)
  cmake_parse_arguments(ARG "SEPARATE" "" "SOURCES;DEPENDS;DEFINES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  if(ARG_SEPARATE)
    set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  endif()
  target_link_libraries(${name} PUBLIC orl_flags ${ARG_DEPENDS})
  target_compile_definitions(${name} PRIVATE ${ARG_DEFINES})
endfunction()

# orl_shared_library(NAME SOURCES ... DEPENDS ... DEF file.def MAP file.map): a library that is loaded by name. DEF and
# MAP name its exports on Windows and on Linux; nothing else leaves it.
function(orl_shared_library name)
  cmake_parse_arguments(ARG "" "DEF;MAP" "SOURCES;DEPENDS;DEFINES" ${ARGN})
  add_library(${name} SHARED ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE orl_flags ${ARG_DEPENDS})
  target_compile_definitions(${name} PRIVATE ${ARG_DEFINES})
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "")
    if(ARG_DEF)
      target_sources(${name} PRIVATE ${ARG_DEF})
    endif()
  elseif(ARG_MAP)
    target_link_options(${name} PRIVATE -Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/${ARG_MAP})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_MAP})
  endif()
endfunction()

# orl_header_library(NAME HEADER): a library of headers from the build machine's packages, as <HEADER>. The other packages'
# headers stay out of sight: they are the build machine's, which need not be the target.
function(orl_header_library name header)
  find_path(ORL_${name}_DIR ${header} PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  get_filename_component(top ${header} DIRECTORY)
  set(include ${CMAKE_BINARY_DIR}/headers/${name})
  file(MAKE_DIRECTORY ${include})
  file(CREATE_LINK ${ORL_${name}_DIR}/${top} ${include}/${top} SYMBOLIC)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${include})
endfunction()
