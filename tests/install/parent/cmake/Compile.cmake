message(FATAL_ERROR "a module of the parent was taken for one of Tarvelon's")
