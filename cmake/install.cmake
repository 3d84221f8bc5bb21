# Installs the library with a CMake package and a file for pkg-config, the program, and the C interface.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/next_steps)
install(TARGETS next_steps EXPORT next_steps
  ARCHIVE COMPONENT dev
  LIBRARY COMPONENT dev
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(EXPORT next_steps NAMESPACE vantrex:: FILE next_steps-targets.cmake DESTINATION ${package_dir} COMPONENT dev)

configure_package_config_file(cmake/next_steps-config.cmake.in next_steps-config.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(next_steps-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/next_steps-config.cmake ${PROJECT_BINARY_DIR}/next_steps-config-version.cmake
  DESTINATION ${package_dir} COMPONENT dev)

# Directories in the file for pkg-config are relative to that file, so the installed tree may be moved. An
# absolute CMAKE_INSTALL_LIBDIR or CMAKE_INSTALL_INCLUDEDIR stays absolute.
set(pkgconfig_dir ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig ${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
cmake_path(APPEND libdir_of_pc "\${prefix}" ${CMAKE_INSTALL_LIBDIR})
cmake_path(APPEND includedir_of_pc "\${prefix}" ${CMAKE_INSTALL_INCLUDEDIR})
get_target_property(definitions next_steps INTERFACE_COMPILE_DEFINITIONS)
if(definitions)
  list(TRANSFORM definitions PREPEND -D OUTPUT_VARIABLE cflags_of_pc)
endif()
configure_file(cmake/next_steps.pc.in next_steps.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/next_steps.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

install(FILES schemas/catalogue.schema.json schemas/finished_answer.schema.json
  DESTINATION ${CMAKE_INSTALL_DATADIR}/next_steps COMPONENT dev)

if(TARGET next-steps)
  install(TARGETS next-steps RUNTIME COMPONENT program)
  install(TARGETS next_steps_c LIBRARY COMPONENT c NAMELINK_COMPONENT dev
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
endif()
