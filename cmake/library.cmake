# The public headers; only these are installed.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS cmake/public_headers.txt)
file(STRINGS cmake/public_headers.txt next_steps_public_headers)
list(TRANSFORM next_steps_public_headers PREPEND ${PROJECT_SOURCE_DIR}/)

# With CONFIGURE_DEPENDS, each build looks for new files.
file(GLOB_RECURSE library_sources CONFIGURE_DEPENDS src/vantrex/*.cpp)
file(GLOB_RECURSE internal_headers CONFIGURE_DEPENDS src/vantrex/*.h)
list(REMOVE_ITEM internal_headers ${next_steps_public_headers})
find_package(Threads REQUIRED)

# In a build without a type, the library is compiled with -O2 unless CMAKE_CXX_FLAGS has an -O option. An -O
# option in the properties of the directory or the target comes later on the command line, so it counts.
set(default_optimisation "")
if(NOT CMAKE_CXX_FLAGS MATCHES "(^| )-O")
  set(default_optimisation $<$<STREQUAL:$<CONFIG>,>:-O2>)
endif()

# next_steps_library(TARGET [KIND...]): adds the library; the KIND is passed to add_library.
function(next_steps_library target)
  add_library(${target} ${ARGN} ${library_sources})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS src FILES ${next_steps_public_headers})
  target_link_libraries(${target} PUBLIC Threads::Threads)
  target_compile_options(${target} BEFORE PRIVATE ${default_optimisation})
  next_steps_warnings(${target})
endfunction()

next_steps_library(next_steps)
add_library(vantrex::next_steps ALIAS next_steps)
set_target_properties(next_steps PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
  CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON
  POSITION_INDEPENDENT_CODE ON)  # a static library may be linked into a plugin

# The library with its internal headers, for the program and the tests. A shared library hides its internal
# functions; the program and the tests then use a static one.
add_library(next_steps_internals INTERFACE)
target_sources(next_steps_internals INTERFACE FILE_SET HEADERS BASE_DIRS src FILES ${internal_headers})
if(BUILD_SHARED_LIBS)
  target_compile_definitions(next_steps PUBLIC NEXT_STEPS_SHARED)
  next_steps_library(next_steps_static STATIC EXCLUDE_FROM_ALL)
  set_target_properties(next_steps_static PROPERTIES POSITION_INDEPENDENT_CODE ON)  # it is part of libnext_steps_c
  target_link_libraries(next_steps_internals INTERFACE next_steps_static)
else()
  target_link_libraries(next_steps_internals INTERFACE next_steps)
endif()
