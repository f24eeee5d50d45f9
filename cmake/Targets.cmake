# What a program links, under the same names in an installed copy and below add_subdirectory(): Tarvelon::<name>.
set(TARVELON_SHARED tarvelon_hx tarvelon_ruvo tarvelon_k7q tarvelon_native)
# A host opens a module under its bare name, and so does a program that is linked with it: no version behind it.
set(TARVELON_MODULES mm_foundation_mi mm_arplatform_mi)

set_target_properties(${TARVELON_SHARED} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${TARVELON_SERIES})
set_target_properties(${TARVELON_SHARED} ${TARVELON_MODULES} PROPERTIES INSTALL_RPATH "$ORIGIN")

# The two ways to embed: objects typed by the compiler, and everything by name as a host does it.
add_library(tarvelon_typed INTERFACE)
target_link_libraries(tarvelon_typed INTERFACE tarvelon_native tarvelon_k7q tarvelon_ruvo tarvelon_hx
                                               ${TARVELON_MODULES})
add_library(tarvelon_named INTERFACE)
target_link_libraries(tarvelon_named INTERFACE tarvelon_k7q tarvelon_ruvo tarvelon_hx ${CMAKE_DL_LIBS})
# A program opens the module when it runs, so it is built with the program.
add_dependencies(tarvelon_named mm_arplatform_mi)

# tarvelon_name(<target> <name>): the target is Tarvelon::<name>.
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

# A parent's warnings are about its own headers, as they are with an installed copy.
if(NOT PROJECT_IS_TOP_LEVEL)
  set_target_properties(tarvelon_boundary PROPERTIES SYSTEM ON)
endif()
