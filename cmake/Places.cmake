# Where an installed copy keeps what, relative to its prefix; and what its version promises.
include(GNUInstallDirs)

set(TARVELON_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/tarvelon")
set(TARVELON_CONFIG "${CMAKE_INSTALL_LIBDIR}/cmake/Tarvelon")
set(TARVELON_PKGCONFIG "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
# Debian's own place for packages of /usr/bin/python3, whatever its minor version.
set(TARVELON_PYTHON_DIR "lib/python3/dist-packages" CACHE STRING "Folder of the Python packages, below the prefix")
set(TARVELON_DOCUMENTS "${CMAKE_INSTALL_DOCDIR}")
if(NOT PROJECT_IS_TOP_LEVEL)
  # There the folder of documents has the name of the parent.
  set(TARVELON_DOCUMENTS "${CMAKE_INSTALL_DATAROOTDIR}/doc/tarvelon")
endif()
set(TARVELON_EXAMPLES "${CMAKE_INSTALL_DATADIR}/tarvelon/examples")

# Until 1.0 a minor version may break what was there before, from then on a major one: the libraries of two such
# series have different names, and find_package() takes no other series than the one asked for.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(TARVELON_SERIES "0.${PROJECT_VERSION_MINOR}")
  set(TARVELON_COMPATIBILITY SameMinorVersion)
else()
  set(TARVELON_SERIES "${PROJECT_VERSION_MAJOR}")
  set(TARVELON_COMPATIBILITY SameMajorVersion)
endif()

# Sets `result` to the way from one folder below the prefix to another: what is installed may be moved as a whole.
function(tarvelon_way result from to)
  cmake_path(RELATIVE_PATH to BASE_DIRECTORY "${from}" OUTPUT_VARIABLE way)
  set(${result} "${way}" PARENT_SCOPE)
endfunction()
