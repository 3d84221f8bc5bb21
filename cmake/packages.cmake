# The Debian packages: libnext-steps-dev with the headers, the static library, the pages of docs and the examples in C++;
# next-steps with the program, its manual page and the examples for it; libnext-steps-c1, named after its soname,
# with the C interface; and python3-next-steps. They hold the components "dev", "program", "c" and "python".
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_CONTACT "The maintainers of next_steps <next_steps@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnext-steps-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libnext-steps-c${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS "nlohmann-json3-dev, rapidjson-dev")
set(CPACK_DEBIAN_DEV_DESCRIPTION "This package has the header files and the static library, with a CMake
package, a file for pkg-config, the documents and the examples.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME next-steps)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "This package has the program: it takes answers as JSON, drops their null
fields and appends the calls that an agent may make next.")

set(CPACK_DEBIAN_C_PACKAGE_NAME libnext-steps-c${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_C_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_C_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_C_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_C_DESCRIPTION "This package has the shared library with the C interface, for programs in C and
for the packages of other languages.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-next-steps)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libnext-steps-c${PROJECT_VERSION_MAJOR} (>= ${PROJECT_VERSION}), python3 (>= 3.9)")
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/debian/postinst ${PROJECT_SOURCE_DIR}/cmake/debian/prerm)
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "This package has the module next_steps for Python 3. It finishes answers in
the process of the server.")

# next_steps_packaged(COMPONENT DESTINATION FILE...): adds files to the package only, not to an installation.
function(next_steps_packaged component destination)
  install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_DATADIR}/${destination} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

set(packaged ${PROJECT_BINARY_DIR}/packaged)
file(GLOB pages CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} docs/*.md)
list(REMOVE_ITEM pages docs/values.md)
foreach(file cmake/debian/changelog docs/next-steps.1 ${pages})
  get_filename_component(name ${file} NAME)
  configure_file(${file} ${packaged}/${name} @ONLY)
  execute_process(COMMAND gzip -9nf ${packaged}/${name} COMMAND_ERROR_IS_FATAL ANY)
endforeach()

set(dev_docs doc/libnext-steps-dev)
list(TRANSFORM pages REPLACE "docs/(.*)" "${packaged}/\\1.gz")
next_steps_packaged(dev ${dev_docs} cmake/debian/copyright ${packaged}/changelog.gz ${pages})
next_steps_packaged(program doc/next-steps cmake/debian/copyright ${packaged}/changelog.gz)
next_steps_packaged(program man/man1 ${packaged}/next-steps.1.gz)
next_steps_packaged(c doc/libnext-steps-c${PROJECT_VERSION_MAJOR} cmake/debian/copyright ${packaged}/changelog.gz)
next_steps_packaged(python doc/python3-next-steps cmake/debian/copyright ${packaged}/changelog.gz python/README.md)
file(GLOB python_module CONFIGURE_DEPENDS python/next_steps/*.py python/next_steps/py.typed)
install(FILES ${python_module} DESTINATION lib/python3/dist-packages/next_steps COMPONENT python EXCLUDE_FROM_ALL)

# next_steps_packaged_examples(COMPONENT DESTINATION PATTERN...): adds the files that match, except tests.
function(next_steps_packaged_examples component destination)
  file(GLOB files CONFIGURE_DEPENDS LIST_DIRECTORIES false ${ARGN})
  list(FILTER files EXCLUDE REGEX _test.cpp$)
  next_steps_packaged(${component} ${destination} ${files})
endfunction()

# next_steps_needed(RESULT PATTERN...): the patterns of the sources in apps and of the library's internal headers that
# the matching files include, directly or not.
function(next_steps_needed result)
  set(found "")
  file(GLOB sources CONFIGURE_DEPENDS ${ARGN})
  while(sources)
    list(POP_FRONT sources source)
    file(STRINGS ${source} names REGEX "^#include \"(requests|vantrex)/")
    list(TRANSFORM names REPLACE ".*\"(requests/.*)h\".*" "${PROJECT_SOURCE_DIR}/apps/\\1*")
    list(TRANSFORM names REPLACE ".*\"(vantrex/.*)\".*" "${PROJECT_SOURCE_DIR}/src/\\1")
    list(REMOVE_ITEM names "" ${found} ${next_steps_public_headers})
    list(APPEND found ${names})
    if(names)
      file(GLOB included ${names})
      list(APPEND sources ${included})
    endif()
  endwhile()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

set(examples ${dev_docs}/examples)
next_steps_packaged_examples(dev ${examples} examples/CMakeLists.txt examples/*.cpp)
next_steps_packaged_examples(dev ${examples}/code_index examples/code_index/* schemas/finished_answer.schema.json)
next_steps_needed(needed examples/code_index/*.h examples/code_index/*.cpp)
foreach(pattern ${needed})
  string(REGEX REPLACE "^${PROJECT_SOURCE_DIR}/[a-z]+/(.*)/.*" "\\1" folder ${pattern})
  next_steps_packaged_examples(dev ${examples}/code_index/${folder} ${pattern})
endforeach()
next_steps_packaged_examples(program doc/next-steps/examples examples/*.py examples/*.mjs)
next_steps_packaged_examples(program doc/next-steps/examples/answers examples/answers/*)
next_steps_packaged_examples(program doc/next-steps/examples/catalogues examples/catalogues/*)
next_steps_packaged_examples(program doc/next-steps/examples/logs examples/logs/*)
next_steps_packaged_examples(program doc/next-steps/examples/index examples/index/*)

include(CPack)
