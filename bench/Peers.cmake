# Other reflection systems for comparison, measured in the same run: peers/*.cpp, with messages in
# peers/*.proto.
find_package(Qt6 REQUIRED COMPONENTS Core)
find_package(Protobuf REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(GObject REQUIRED IMPORTED_TARGET gobject-2.0)

file(GLOB sources CONFIGURE_DEPENDS peers/*.cpp peers/*.h)
file(GLOB messages CONFIGURE_DEPENDS peers/*.proto)
target_sources(tarvelon_bench PRIVATE ${sources})
target_compile_definitions(tarvelon_bench PRIVATE TARVELON_PEERS=1)
target_link_libraries(tarvelon_bench PRIVATE Qt6::Core protobuf::libprotobuf PkgConfig::GObject)
set_target_properties(tarvelon_bench PROPERTIES AUTOMOC ON)

if(messages)
  # Generated code does not meet our warnings, so it is a library of its own. Included as "peers/<name>.pb.h".
  add_library(tarvelon_bench_messages OBJECT EXCLUDE_FROM_ALL ${messages})
  target_compile_options(tarvelon_bench_messages PRIVATE -w)
  target_link_libraries(tarvelon_bench_messages PUBLIC protobuf::libprotobuf)
  target_include_directories(tarvelon_bench_messages SYSTEM PUBLIC "${CMAKE_CURRENT_BINARY_DIR}")
  protobuf_generate(TARGET tarvelon_bench_messages LANGUAGE cpp)
  target_link_libraries(tarvelon_bench PRIVATE tarvelon_bench_messages)
endif()
