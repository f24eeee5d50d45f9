# What a parent project has set for its own folders. Its compiler, build type, options and definitions hold here as well;
# what it looks for its own headers and modules in does not.
if(NOT PROJECT_IS_TOP_LEVEL)
  set_directory_properties(PROPERTIES INCLUDE_DIRECTORIES "" LINK_LIBRARIES "")
  foreach(setting IN ITEMS CMAKE_MODULE_PATH CMAKE_INCLUDE_CURRENT_DIR CMAKE_UNITY_BUILD CMAKE_DEBUG_POSTFIX
                           CMAKE_COMPILE_WARNING_AS_ERROR CMAKE_CXX_CLANG_TIDY)
    set(${setting} "")
  endforeach()
endif()
