# What `cmake --install` puts where. Everything finds the rest relative to itself, so DESTDIR and a moved prefix work.
include(CMakePackageConfigHelpers)

# The parts that a packager may install alone, with --component: libraries, development, python, documentation.
set(libraries tarvelon_hx tarvelon_ruvo tarvelon_k7q tarvelon_native)
# A host opens a module under its bare name, and so does a program that is linked with it: no version behind it.
set(modules mm_foundation_mi mm_arplatform_mi)

set_target_properties(${libraries} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${TARVELON_SERIES})
set_target_properties(${libraries} ${modules} PROPERTIES INSTALL_RPATH "$ORIGIN")

# The two ways to embed: objects typed by the compiler, and everything by name as a host does it.
add_library(tarvelon_typed INTERFACE)
target_link_libraries(tarvelon_typed INTERFACE tarvelon_native tarvelon_k7q tarvelon_ruvo tarvelon_hx ${modules})
add_library(tarvelon_named INTERFACE)
target_link_libraries(tarvelon_named INTERFACE tarvelon_k7q tarvelon_ruvo tarvelon_hx ${CMAKE_DL_LIBS})

# What a program names as Tarvelon::<name>.
set_target_properties(tarvelon_typed PROPERTIES EXPORT_NAME native)
set_target_properties(tarvelon_named PROPERTIES EXPORT_NAME host)
set_target_properties(mm_arplatform_mi PROPERTIES EXPORT_NAME module)
set_target_properties(mm_foundation_mi PROPERTIES EXPORT_NAME foundation)
set_target_properties(tarvelon_native PROPERTIES EXPORT_NAME model)
foreach(name IN ITEMS boundary hx ruvo k7q)
  set_target_properties(tarvelon_${name} PROPERTIES EXPORT_NAME ${name})
endforeach()

install(TARGETS ${libraries} ${modules} tarvelon_boundary tarvelon_typed tarvelon_named EXPORT Tarvelon
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT libraries NAMELINK_COMPONENT development)

# Headers: the boundary, the rows, and of the platform what a program includes.
install(DIRECTORY src/tarvelon/boundary src/tarvelon/arplatform src/tarvelon/foundation src/tarvelon/types
        DESTINATION "${TARVELON_HEADERS}" COMPONENT development
        FILES_MATCHING PATTERN "*.h")
foreach(header IN ITEMS ruvo/HostValue.h ruvo/ObjectSystem.h tarvelon/Metamodel.h tarvelon/Reflection.h files/Files.h)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES "src/tarvelon/platform/${header}" DESTINATION "${TARVELON_HEADERS}/platform/${folder}" COMPONENT development)
endforeach()

install(DIRECTORY src/tarvelon/platform/tarvelon/api DESTINATION "${TARVELON_HEADERS}/platform/tarvelon" COMPONENT development
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

# The Python host and its command. Stubs lie beside the packages once they are made.
tarvelon_way(way "${TARVELON_PYTHON_DIR}" "${CMAKE_INSTALL_LIBDIR}")
set_target_properties(_tarvelon_host PROPERTIES INSTALL_RPATH "$ORIGIN/${way}")
install(TARGETS _tarvelon_host DESTINATION "${TARVELON_PYTHON_DIR}" COMPONENT python)
install(DIRECTORY python/Tarvelon python/K7Q DESTINATION "${TARVELON_PYTHON_DIR}" COMPONENT python
        FILES_MATCHING PATTERN "*.py" PATTERN "py.typed" PATTERN __pycache__ EXCLUDE)
# Who runs a copy may not be able to write into it, and would compile the packages with every start.
install(CODE "execute_process(COMMAND \"${Python3_EXECUTABLE}\" -m compileall -q Tarvelon K7Q WORKING_DIRECTORY
  \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${TARVELON_PYTHON_DIR}\")" COMPONENT python)
foreach(package IN ITEMS Tarvelon K7Q _tarvelon_host)
  install(DIRECTORY "${PROJECT_BINARY_DIR}/python/${package}-stubs" DESTINATION "${TARVELON_PYTHON_DIR}"
          COMPONENT python OPTIONAL)
endforeach()
tarvelon_way(TARVELON_PYTHON_FROM_BIN "${CMAKE_INSTALL_BINDIR}" "${TARVELON_PYTHON_DIR}")
configure_file(python/tarvelon.sh "${generated}/tarvelon" @ONLY)
install(PROGRAMS "${generated}/tarvelon" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT python)

install(FILES README.md CHANGELOG.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation)
install(DIRECTORY docs DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT documentation FILES_MATCHING PATTERN "*.md")
# They come with a CMakeLists.txt of their own, which builds them as any program outside this tree is built.
install(DIRECTORY examples/ DESTINATION "${TARVELON_EXAMPLES}" COMPONENT documentation
        FILES_MATCHING PATTERN "*.cpp" PATTERN "*.h" PATTERN "*.py" PATTERN __pycache__ EXCLUDE)
configure_file(cmake/examples.CMakeLists.txt.in "${generated}/CMakeLists.txt" @ONLY)
install(FILES "${generated}/CMakeLists.txt" DESTINATION "${TARVELON_EXAMPLES}" COMPONENT documentation)
