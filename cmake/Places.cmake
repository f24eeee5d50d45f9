# The folders of an installed copy, relative to its prefix, and the compatibility of versions.
include(GNUInstallDirs)

set(TARVELON_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/tarvelon")
set(TARVELON_CONFIG "${CMAKE_INSTALL_LIBDIR}/cmake/Tarvelon")
set(TARVELON_PKGCONFIG "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
# Debian's folder for packages of /usr/bin/python3. It does not depend on the minor version of Python.
set(TARVELON_PYTHON_DIR "lib/python3/dist-packages" CACHE STRING "Folder of the Python packages, below the prefix")
set(TARVELON_DOCUMENTS "${CMAKE_INSTALL_DOCDIR}")
if(NOT PROJECT_IS_TOP_LEVEL)
  # In a parent project, CMAKE_INSTALL_DOCDIR has the name of the parent.
  set(TARVELON_DOCUMENTS "${CMAKE_INSTALL_DATAROOTDIR}/doc/tarvelon")
endif()
set(TARVELON_EXAMPLES "${CMAKE_INSTALL_DATADIR}/tarvelon/examples")

# Before 1.0, a new minor version may be incompatible; from 1.0 on, a new major version. The versions that are
# compatible with each other are a series. Libraries of different series have different names, and
# find_package() accepts only the requested series.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(TARVELON_SERIES "0.${PROJECT_VERSION_MINOR}")
  set(TARVELON_COMPATIBILITY SameMinorVersion)
else()
  set(TARVELON_SERIES "${PROJECT_VERSION_MAJOR}")
  set(TARVELON_COMPATIBILITY SameMajorVersion)
endif()

# Sets `result` to the relative path from folder `from` to folder `to`, both below the prefix. With relative
# paths, an installed copy can be moved as a whole.
function(tarvelon_way result from to)
  cmake_path(RELATIVE_PATH to BASE_DIRECTORY "${from}" OUTPUT_VARIABLE way)
  set(${result} "${way}" PARENT_SCOPE)
endfunction()
