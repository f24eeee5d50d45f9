# The compile and link options of all C++ files of the project.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
endif()

# Symbols are hidden. TARVELON_API marks those that other libraries use (boundary/Export.h).
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# x86-64-v2, which processors have since 2009, counts bits in one instruction. The option is set only if the
# building machine has that instruction. On other machines, and with TARVELON_PORTABLE, a library call counts
# bits.
if(NOT TARVELON_PORTABLE AND CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND EXISTS /proc/cpuinfo)
  file(STRINGS /proc/cpuinfo flags REGEX "^flags" LIMIT_COUNT 1)
  if(flags MATCHES " popcnt " AND flags MATCHES " sse4_2 ")
    add_compile_options(-march=x86-64-v2)
  endif()
endif()
# Error texts name source files relative to src/tarvelon or to the repository. The option is needed for the
# absolute paths and for the relative paths that a compiler cache uses.
file(RELATIVE_PATH way "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}/src")
cmake_path(GET way PARENT_PATH way)
foreach(folder IN ITEMS "${PROJECT_SOURCE_DIR}" "${way}" "${PROJECT_SOURCE_DIR}/src/tarvelon" "${way}/src/tarvelon")
  add_compile_options("-fmacro-prefix-map=${folder}/=")
endforeach()
add_compile_options(-fno-plt -fno-semantic-interposition -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(TARVELON_WERROR)
  add_compile_options(-Werror)
elseif(NOT PROJECT_IS_TOP_LEVEL)
  # The -Werror of a parent project is not meant for the additional warnings of this project.
  add_compile_options(-Wno-error)
endif()

# Tables of constant data contain many addresses. Packing their relocations makes the relocations 40 times
# smaller.
include(CheckLinkerFlag)
check_linker_flag(CXX "LINKER:-z,pack-relative-relocs" TARVELON_PACKS_RELOCATIONS)
if(TARVELON_PACKS_RELOCATIONS)
  add_link_options("LINKER:-z,pack-relative-relocs")
endif()

# All libraries are in one folder and find each other through $ORIGIN.
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(CCACHE ccache)
  if(CCACHE)
    # The cache looks up paths relative to the repository, so several clones share its entries.
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
# Clang links its sanitizer runtimes only into programs, so libraries must be allowed to have undefined
# symbols.
set(TARVELON_NO_UNDEFINED -Wl,--no-undefined)
if(TARVELON_FUZZ)
  set(TARVELON_NO_UNDEFINED "")
  add_compile_options(-fsanitize=fuzzer-no-link)
  # Debug information names sources relative to the build folder, so that object files are the same in every
  # clone.
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

# Always Debian's interpreter, not another one on PATH, because the packages that the tests need belong to it.
set(Python3_EXECUTABLE /usr/bin/python3)
find_package(Python3 REQUIRED COMPONENTS Interpreter Development.Module)

# The ENVIRONMENT property of tests that run Python programs with the built packages.
set(TARVELON_PYTHON_ENVIRONMENT "PYTHONPATH=${PROJECT_BINARY_DIR}/python")
if(TARVELON_SANITIZE)
  # The interpreter is not instrumented, so the sanitizer runtime must be preloaded. libstdc++ is preloaded as
  # well, because otherwise the runtime does not intercept exceptions. PYTHONMALLOC=malloc lets the sanitizer
  # see the memory of Python objects. CPython 3.11 itself has no leaks, so no suppressions are needed.
  foreach(library IN ITEMS libasan.so libstdc++.so)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${library}
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    list(APPEND preload "${file}")
  endforeach()
  list(JOIN preload " " preload)
  list(APPEND TARVELON_PYTHON_ENVIRONMENT "LD_PRELOAD=${preload}" PYTHONMALLOC=malloc)
endif()
