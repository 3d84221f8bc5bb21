# The Debian packages of the development files, with the static library, and of the
# program; their names are those of the components in install.cmake.
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_CONTACT "The maintainers of next_steps <next_steps@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnext-steps-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SUGGESTS nlohmann-json3-dev)
set(CPACK_DEBIAN_DEV_DESCRIPTION "This package has the header files and the static library, with a CMake
package and a file for pkg-config.")

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME next-steps)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "This package has the program: it takes answers as JSON, drops their null
fields and appends the calls that an agent may make next.")

configure_file(cmake/debian/changelog.in changelog)
execute_process(COMMAND gzip -9nf ${PROJECT_BINARY_DIR}/changelog COMMAND_ERROR_IS_FATAL ANY)
foreach(component DEV PROGRAM)
  string(TOLOWER ${component} of_component)
  install(FILES cmake/debian/copyright ${PROJECT_BINARY_DIR}/changelog.gz COMPONENT ${of_component} EXCLUDE_FROM_ALL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${component}_PACKAGE_NAME})
endforeach()

include(CPack)
