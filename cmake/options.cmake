# What is built beside the library. Someone who adds this project to their own
# build gets the library alone.
option(NEXT_STEPS_BUILD_APPS "Build the command-line program" ${PROJECT_IS_TOP_LEVEL})
option(NEXT_STEPS_BUILD_TESTS "Build the tests" ${PROJECT_IS_TOP_LEVEL})
option(NEXT_STEPS_INSTALL "Install the library, and the program when it is built" ${PROJECT_IS_TOP_LEVEL})
option(NEXT_STEPS_BUILD_BENCH "Build the benchmarks" OFF)
option(NEXT_STEPS_BUILD_FUZZ "Build the tests' fuzz targets as fuzzers, too; needs clang" OFF)
option(NEXT_STEPS_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF)
set(NEXT_STEPS_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them")

if(PROJECT_IS_TOP_LEVEL)
  set(CMAKE_CXX_EXTENSIONS OFF)
  set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
  if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
  endif()
  find_program(NEXT_STEPS_CCACHE ccache)
  if(NEXT_STEPS_CCACHE AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${NEXT_STEPS_CCACHE})
  endif()
else()
  set(CMAKE_VERIFY_INTERFACE_HEADER_SETS OFF)  # the adapter's headers need nlohmann's
endif()

if(NEXT_STEPS_SANITIZE)
  add_compile_options(-fsanitize=${NEXT_STEPS_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${NEXT_STEPS_SANITIZE})
endif()
