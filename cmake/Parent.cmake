# Resets settings that a parent project has made for its own folders, such as search paths for headers and
# modules. The parent's compiler, build type, options and definitions stay in effect.
if(NOT PROJECT_IS_TOP_LEVEL)
  set_directory_properties(PROPERTIES INCLUDE_DIRECTORIES "" LINK_LIBRARIES "")
  foreach(setting IN ITEMS CMAKE_MODULE_PATH CMAKE_INCLUDE_CURRENT_DIR CMAKE_UNITY_BUILD CMAKE_DEBUG_POSTFIX
                           CMAKE_COMPILE_WARNING_AS_ERROR CMAKE_CXX_CLANG_TIDY)
    set(${setting} "")
  endforeach()
endif()
