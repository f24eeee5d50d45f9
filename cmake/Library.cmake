# Sets `result` to all C++ sources below the given folders of the repository. New files are found
# automatically.
function(tarvelon_sources result)
  set(patterns "")
  foreach(folder IN LISTS ARGN)
    list(APPEND patterns "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
  endforeach()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${patterns})
  set(${result} "${sources}" PARENT_SCOPE)
endfunction()

# Links `target` with those of the given libraries that exist.
function(tarvelon_link target)
  foreach(library IN LISTS ARGN)
    if(TARGET ${library})
      target_link_libraries(${target} PRIVATE ${library})
    endif()
  endforeach()
endfunction()

# tarvelon_library(<name> SHARED|STATIC FOLDERS <folder>... [LINKS <target>...])
# Adds a library of all sources below the given folders of src/tarvelon. Adds no target if there are no
# sources.
function(tarvelon_library name kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "FOLDERS;LINKS")
  list(TRANSFORM arg_FOLDERS PREPEND src/tarvelon/)
  tarvelon_sources(sources ${arg_FOLDERS})
  if(sources)
    add_library(${name} ${kind} ${sources})
    target_link_libraries(${name} PUBLIC tarvelon_boundary)
    tarvelon_link(${name} ${arg_LINKS})
    if(kind STREQUAL "SHARED")
      # The library must stay loaded: the object system and the exit handlers of threads keep pointers into
      # it.
      target_link_options(${name} PRIVATE ${TARVELON_NO_UNDEFINED} -Wl,-z,nodelete)
    endif()
  endif()
endfunction()

# Makes the target `runtime` depend on those of the given targets that exist. Does nothing without a target
# `runtime`.
function(tarvelon_runtime)
  foreach(target IN LISTS ARGN)
    if(TARGET runtime AND TARGET ${target})
      add_dependencies(runtime ${target})
    endif()
  endforeach()
endfunction()

# The libraries that the project's own C++ programs (tests, examples, benchmarks) may use.
set(TARVELON_LIBRARIES
    tarvelon_binding mm_foundation_mi tarvelon_native tarvelon_k7q tarvelon_ruvo tarvelon_hx)

# tarvelon_program(<name> <source>...)
# Adds an executable that may use all libraries. The program opens the module at run time
# (tarvelon_module_path). The module is also linked, but only if the program uses one of its exported symbols.
function(tarvelon_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE tarvelon_boundary ${CMAKE_DL_LIBS})
  tarvelon_link(${name} ${TARVELON_LIBRARIES})
  if(TARGET mm_arplatform_mi)
    target_link_options(${name} PRIVATE -Wl,--as-needed)
    target_link_libraries(${name} PRIVATE mm_arplatform_mi)
  endif()
endfunction()

# tarvelon_module_path(<source>)
# Defines TARVELON_MODULE_PATH, the path of the module, for that source only: a compiler cache cannot share a
# source that is compiled with the path of a build folder.
function(tarvelon_module_path source)
  set_source_files_properties("${source}" PROPERTIES
                              COMPILE_DEFINITIONS "TARVELON_MODULE_PATH=\"$<TARGET_FILE:mm_arplatform_mi>\"")
endfunction()
