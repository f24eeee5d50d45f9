# How every C++ file of the project is compiled.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

# Hidden unless marked: what crosses a library carries TARVELON_API (boundary/Export.h).
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# Counting bits is one instruction from this level on, which 64-bit x86 processors since 2009 have. What is built
# runs where it is built: a machine without it gets the library call instead, and so does a build for any machine.
if(NOT TARVELON_PORTABLE AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND EXISTS /proc/cpuinfo)
  file(STRINGS /proc/cpuinfo flags REGEX "^flags" LIMIT_COUNT 1)
  if(flags MATCHES " popcnt " AND flags MATCHES " sse4_2 ")
    add_compile_options(-march=x86-64-v2)
  endif()
endif()
# Error texts name a source file relative to src/tarvelon or the repository, also when a compiler cache has made its path relative.
file(RELATIVE_PATH way "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/src")
cmake_path(GET way PARENT_PATH way)
foreach(folder IN ITEMS "${PROJECT_SOURCE_DIR}" "${way}" "${PROJECT_SOURCE_DIR}/src/tarvelon" "${way}/src/tarvelon")
  add_compile_options("-fmacro-prefix-map=${folder}/=")
endforeach()
add_compile_options(-fno-plt -fno-semantic-interposition -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(TARVELON_WERROR)
  add_compile_options(-Werror)
elseif(NOT PROJECT_IS_TOP_LEVEL)
  # A parent's -Werror is meant for the warnings that the parent asks for.
  add_compile_options(-Wno-error)
endif()

# Tables of constant data are full of addresses: packed, what relocates them is a fortieth of its size.
include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:-z,pack-relative-relocs" TARVELON_PACKS_RELOCATIONS)
if(TARVELON_PACKS_RELOCATIONS)
  add_link_options("LINKER:-z,pack-relative-relocs")
endif()

# All libraries lie in one folder and find each other relative to $ORIGIN.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(CCACHE ccache)
  if(CCACHE)
    # What one clone has compiled serves another: paths below the repository are looked up relative to it.
    set(CMAKE_CXX_COMPILER_LAUNCHER /usr/bin/env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" "${CCACHE}")
  endif()
endif()

if(TARVELON_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(TARVELON_SANITIZE_THREAD)
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
endif()
# Clang's sanitizers stand in the program alone: its libraries cannot be asked to be complete.
set(TARVELON_NO_UNDEFINED -Wl,--no-undefined)
if(TARVELON_FUZZ)
  set(TARVELON_NO_UNDEFINED "")
  add_compile_options(-fsanitize=fuzzer-no-link)
  # Sources are named relative to the build folder, which keeps what is compiled the same in every clone.
  add_compile_options("-fdebug-prefix-map=${PROJECT_BINARY_DIR}=.")
endif()
if(TARVELON_PROFILE)
  set(TARVELON_NO_UNDEFINED "")
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()
if(TARVELON_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(NOT TARVELON_PYTHON)
  if(TARVELON_TESTS OR TARVELON_BENCH)
    message(FATAL_ERROR "TARVELON_TESTS and TARVELON_BENCH run the Python host: set TARVELON_PYTHON to ON as well")
  endif()
  return()
endif()

# Debian's own interpreter, whatever else stands on PATH: the packages that the tests need belong to it.
set(Python3_EXECUTABLE /usr/bin/python3)
find_package(Python3 REQUIRED COMPONENTS Interpreter Development.Module)

# The environment in which a Python program meets the built tree, for the ENVIRONMENT property of a test.
set(TARVELON_PYTHON_ENVIRONMENT "PYTHONPATH=${PROJECT_BINARY_DIR}/python")
if(TARVELON_SANITIZE)
  # The interpreter is not instrumented, so the runtime must be loaded first, and the C++ library with it, or
  # exceptions pass the interceptors by. With malloc for its own pools, Python objects are seen as well.
  # CPython 3.11 itself leaks nothing, so there is no list of suppressions: what is reported is ours.
  foreach(library IN ITEMS libasan.so libstdc++.so)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${library}
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND preload "${file}")
  endforeach()
  list(JOIN preload " " preload)
  list(APPEND TARVELON_PYTHON_ENVIRONMENT "LD_PRELOAD=${preload}" PYTHONMALLOC=malloc)
endif()
