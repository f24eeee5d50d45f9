# A host opens a module by its file name without the prefix `lib`. mm_arplatform_mi exports only the symbols
# that the map file names.
foreach(module IN ITEMS mm_foundation_mi mm_arplatform_mi)
  if(TARGET ${module})
    set_target_properties(${module} PROPERTIES PREFIX "")
    # The module must stay loaded after dlclose(), because the object system keeps pointers to its code and
    # names.
    target_link_options(${module} PRIVATE -Wl,--exclude-libs,ALL -Wl,-z,nodelete)
  endif()
endforeach()

if(TARGET mm_arplatform_mi)
  set(map "${PROJECT_SOURCE_DIR}/cmake/mm_arplatform_mi.map")
  target_link_options(mm_arplatform_mi PRIVATE "LINKER:--version-script=${map}")
  set_target_properties(mm_arplatform_mi PROPERTIES LINK_DEPENDS "${map}")
endif()
