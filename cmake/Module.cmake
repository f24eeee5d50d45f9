# mm_arplatform_mi is opened by a host, under its bare name, and shows the host only what the map file names.
foreach(module IN ITEMS mm_foundation_mi mm_arplatform_mi)
  if(TARGET ${module})
    set_target_properties(${module} PROPERTIES PREFIX "")
    # What is registered stays with the object system, so its code and names must stay mapped after dlclose().
    target_link_options(${module} PRIVATE -Wl,--exclude-libs,ALL -Wl,-z,nodelete)
  endif()
endforeach()

if(TARGET mm_arplatform_mi)
  set(map "${PROJECT_SOURCE_DIR}/cmake/mm_arplatform_mi.map")
  target_link_options(mm_arplatform_mi PRIVATE "LINKER:--version-script=${map}")
  set_target_properties(mm_arplatform_mi PROPERTIES LINK_DEPENDS "${map}")
endif()
