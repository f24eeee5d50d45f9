# The parent's own, which it includes itself.
if(NOT PROJECT_NAME STREQUAL "parent")
  message(FATAL_ERROR "a module of the parent was taken for one of Tarvelon's")
endif()
