# orl_resource_library(NAME file.rc): the library NAME that holds the texts of the script's string tables and no code. On
# Windows they are resources; on Linux a table made from the same script.
function(orl_resource_library name script)
  get_filename_component(script ${script} ABSOLUTE)
  if(WIN32)
    add_library(${name} SHARED ${script})
    set_source_files_properties(${script} PROPERTIES LANGUAGE RC COMPILE_OPTIONS "-c;65001")
    target_link_options(${name} PRIVATE -nostdlib -nostartfiles -Wl,--entry=0 -Wl,--dynamicbase -Wl,--nxcompat)
    set_target_properties(${name} PROPERTIES PREFIX "" LINKER_LANGUAGE CXX)
    return()
  endif()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  add_custom_command(
    OUTPUT ${source}
    COMMAND rc2cpp ${script} ${source}
    DEPENDS rc2cpp ${script}
    VERBATIM)
  add_library(${name} SHARED ${source})
  target_link_libraries(${name} PRIVATE orl_flags)
endfunction()
