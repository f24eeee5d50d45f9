# The targets Tarvelon::<name> that programs link. An installed copy and add_subdirectory() give them the same
# names.
set(TARVELON_SHARED tarvelon_hx tarvelon_ruvo tarvelon_k7q tarvelon_native)
# The file name of a module has no version, because hosts open a module by its name.
set(TARVELON_MODULES mm_foundation_mi mm_arplatform_mi)

set_target_properties(${TARVELON_SHARED} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${TARVELON_SERIES})
set_target_properties(${TARVELON_SHARED} ${TARVELON_MODULES} PROPERTIES INSTALL_RPATH "$ORIGIN")

# The two ways to use Tarvelon: with native handles, which the compiler checks (native), or by name, like a
# host (host).
add_library(tarvelon_typed INTERFACE)
target_link_libraries(tarvelon_typed INTERFACE tarvelon_native tarvelon_k7q tarvelon_ruvo tarvelon_hx
                                               ${TARVELON_MODULES})
add_library(tarvelon_named INTERFACE)
target_link_libraries(tarvelon_named INTERFACE tarvelon_k7q tarvelon_ruvo tarvelon_hx ${CMAKE_DL_LIBS})
# A program of the second kind opens the module at run time. The dependency makes sure that the module is
# built.
add_dependencies(tarvelon_named mm_arplatform_mi)

# tarvelon_name(<target> <name>): gives the target the name Tarvelon::<name>.
function(tarvelon_name target name)
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  add_library(Tarvelon::${name} ALIAS ${target})
endfunction()

tarvelon_name(tarvelon_typed native)
tarvelon_name(tarvelon_named host)
tarvelon_name(mm_arplatform_mi module)
tarvelon_name(mm_foundation_mi foundation)
tarvelon_name(tarvelon_native model)
foreach(name IN ITEMS boundary hx ruvo k7q)
  tarvelon_name(tarvelon_${name} ${name})
endforeach()

# As with an installed copy, the headers are system headers for a parent project, so the parent gets no
# warnings from them.
if(NOT PROJECT_IS_TOP_LEVEL)
  set_target_properties(tarvelon_boundary PROPERTIES SYSTEM ON)
endif()
