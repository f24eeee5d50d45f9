# The files that `cmake --install` installs. They refer to each other by relative paths, so DESTDIR and moving
# the prefix work.
include(CMakePackageConfigHelpers)

# Each part can be installed alone with --component: libraries, development, python, documentation.
install(TARGETS ${TARVELON_SHARED} ${TARVELON_MODULES} tarvelon_boundary tarvelon_typed tarvelon_named EXPORT Tarvelon
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT libraries NAMELINK_COMPONENT development)

# Headers: boundary/, the rows, and the headers of platform/ that programs include.
install(DIRECTORY src/tarvelon/boundary src/tarvelon/arplatform src/tarvelon/foundation src/tarvelon/types
        DESTINATION "${TARVELON_HEADERS}" COMPONENT development
        FILES_MATCHING PATTERN "*.h")
foreach(header IN ITEMS ruvo/HostValue.h ruvo/ObjectSystem.h files/Files.h)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "src/tarvelon/platform/${header}" DESTINATION "${TARVELON_HEADERS}/platform/${folder}" COMPONENT development)
endforeach()

install(DIRECTORY src/tarvelon/platform/model/api DESTINATION "${TARVELON_HEADERS}/platform/model" COMPONENT development
        FILES_MATCHING PATTERN "*.h")

install(EXPORT Tarvelon NAMESPACE Tarvelon:: FILE TarvelonTargets.cmake DESTINATION "${TARVELON_CONFIG}"
        COMPONENT development)
set(generated "${PROJECT_BINARY_DIR}/install")
configure_package_config_file(cmake/TarvelonConfig.cmake.in "${generated}/TarvelonConfig.cmake"
                              INSTALL_DESTINATION "${TARVELON_CONFIG}"
                              NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file("${generated}/TarvelonConfigVersion.cmake" COMPATIBILITY ${TARVELON_COMPATIBILITY})
install(FILES "${generated}/TarvelonConfig.cmake" "${generated}/TarvelonConfigVersion.cmake"
        DESTINATION "${TARVELON_CONFIG}" COMPONENT development)
tarvelon_way(TARVELON_PREFIX_FROM_PKGCONFIG "${TARVELON_PKGCONFIG}" "")
configure_file(cmake/tarvelon.pc.in "${generated}/tarvelon.pc" @ONLY)
install(FILES "${generated}/tarvelon.pc" DESTINATION "${TARVELON_PKGCONFIG}" COMPONENT development)

if(TARGET _tarvelon_host)
  include("${PROJECT_SOURCE_DIR}/cmake/InstallPython.cmake")
endif()

install(FILES README.md CHANGELOG.md LICENSE DESTINATION "${TARVELON_DOCUMENTS}" COMPONENT documentation)
install(DIRECTORY docs DESTINATION "${TARVELON_DOCUMENTS}" COMPONENT documentation FILES_MATCHING PATTERN "*.md")
# The installed examples have their own CMakeLists.txt, which builds them like any program outside of this
# repository.
install(DIRECTORY examples/ DESTINATION "${TARVELON_EXAMPLES}" COMPONENT documentation
        FILES_MATCHING PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.py" PATTERN "*.arxml" PATTERN __pycache__ EXCLUDE)
configure_file(cmake/examples.CMakeLists.txt.in "${generated}/CMakeLists.txt" @ONLY)
install(FILES "${generated}/CMakeLists.txt" DESTINATION "${TARVELON_EXAMPLES}" COMPONENT documentation)
