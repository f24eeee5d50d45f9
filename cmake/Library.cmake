# Sets `result` to every C++ source below the given folders of the repository; a new file is found without an edit here.
function(tarvelon_sources result)
  set(patterns "")
  foreach(folder IN LISTS ARGN)
    list(APPEND patterns "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
  endforeach()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns})
  set(${result} "${sources}" PARENT_SCOPE)
endfunction()

# Links those of the given targets that exist.
function(tarvelon_link target)
  foreach(library IN LISTS ARGN)
    if(TARGET ${library})
      target_link_libraries(${target} PRIVATE ${library})
    endif()
  endforeach()
endfunction()

# tarvelon_library(<name> SHARED|STATIC FOLDERS <folder>... [LINKS <target>...])
# The library of all sources below the folders of src/tarvelon. A folder without sources makes no target.
function(tarvelon_library name kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "FOLDERS;LINKS")
  list(TRANSFORM arg_FOLDERS PREPEND src/tarvelon/)
  tarvelon_sources(sources ${arg_FOLDERS})
  if(sources)
    add_library(${name} ${kind} ${sources})
    target_link_libraries(${name} PUBLIC tarvelon_boundary)
    tarvelon_link(${name} ${arg_LINKS})
    if(kind STREQUAL "SHARED")
      # What was registered points into a library, and so do threads that are yet to end: it stays mapped.
      target_link_options(${name} PRIVATE ${TARVELON_NO_UNDEFINED} -Wl,-z,nodelete)
    endif()
  endif()
endfunction()

# Makes `runtime`, if there is one, build those of the given targets that exist.
function(tarvelon_runtime)
  foreach(target IN LISTS ARGN)
    if(TARGET runtime AND TARGET ${target})
      add_dependencies(runtime ${target})
    endif()
  endforeach()
endfunction()

# Every library that a C++ program of ours (test, example, benchmark) may call.
set(TARVELON_LIBRARIES
    tarvelon_binding mm_foundation_mi tarvelon_native tarvelon_k7q tarvelon_ruvo tarvelon_hx)

# tarvelon_program(<name> <source>...): an executable with all libraries at hand. The module is opened at run time
# (tarvelon_module_path); a program that names one of its exported symbols gets it linked as well.
function(tarvelon_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tarvelon_boundary ${CMAKE_DL_LIBS})
  tarvelon_link(${name} ${TARVELON_LIBRARIES})
  if(TARGET mm_arplatform_mi)
    target_link_options(${name} PRIVATE -Wl,--as-needed)
    target_link_libraries(${name} PRIVATE mm_arplatform_mi)
  endif()
endfunction()

# tarvelon_module_path(<source>): TARVELON_MODULE_PATH is where the module lies. In that source alone, since what is
# compiled with the path of a build folder comes from no compiler cache in another one.
function(tarvelon_module_path source)
  set_source_files_properties("${source}" PROPERTIES
                              COMPILE_DEFINITIONS "TARVELON_MODULE_PATH=\"$<TARGET_FILE:mm_arplatform_mi>\"")
endfunction()
