# The Python host and the command `tarvelon`. Type stubs are installed beside the packages if they were built.
tarvelon_way(way "${TARVELON_PYTHON_DIR}" "${CMAKE_INSTALL_LIBDIR}")
set_target_properties(_tarvelon_host PROPERTIES INSTALL_RPATH "$ORIGIN/${way}")
install(TARGETS _tarvelon_host DESTINATION "${TARVELON_PYTHON_DIR}" COMPONENT python)
install(DIRECTORY python/Tarvelon python/K7Q DESTINATION "${TARVELON_PYTHON_DIR}" COMPONENT python
        FILES_MATCHING PATTERN "*.py" PATTERN "py.typed" PATTERN __pycache__ EXCLUDE)
# The packages are compiled now: a user without write access would compile them at every start.
install(CODE "execute_process(COMMAND \"${Python3_EXECUTABLE}\" -m compileall -q Tarvelon K7Q WORKING_DIRECTORY
  \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${TARVELON_PYTHON_DIR}\")" COMPONENT python)
foreach(package IN ITEMS Tarvelon K7Q _tarvelon_host)
  install(DIRECTORY "${PROJECT_BINARY_DIR}/python/${package}-stubs" DESTINATION "${TARVELON_PYTHON_DIR}"
          COMPONENT python OPTIONAL)
endforeach()
tarvelon_way(TARVELON_PYTHON_FROM_BIN "${CMAKE_INSTALL_BINDIR}" "${TARVELON_PYTHON_DIR}")
configure_file(python/tarvelon.sh "${generated}/tarvelon" @ONLY)
install(PROGRAMS "${generated}/tarvelon" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT python)
