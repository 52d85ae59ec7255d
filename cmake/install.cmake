# What is installed: the CMake package `krnqb` with its one target `krnqb::krnqb`, the command line with its man page,
# completion and the module that writes workbooks, examples; and, as a component of its own, the module with the dialogs.
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME krnqb)
set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/krnqb)

install(TARGETS krnqb EXPORT krnqb-targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/krnqb DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT krnqb-targets NAMESPACE krnqb:: DESTINATION ${packageFolder})
configure_package_config_file(cmake/krnqb-config.cmake.in ${CMAKE_BINARY_DIR}/krnqb-config.cmake
        INSTALL_DESTINATION ${packageFolder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/krnqb-config-version.cmake
        COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/krnqb-config.cmake ${CMAKE_BINARY_DIR}/krnqb-config-version.cmake
        DESTINATION ${packageFolder})

install(TARGETS krnqb_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS krnqb_workbooks LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/krnqb)
if(TARGET krnqb_dialogs)
  install(TARGETS krnqb_dialogs LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/krnqb COMPONENT krnqb-dialogs)
endif()

# The man page is made of the help that the program prints.
set(manPage ${CMAKE_BINARY_DIR}/krnqb.1)
set(manPageMaker ${PROJECT_SOURCE_DIR}/packaging/man_page.sh)
add_custom_command(OUTPUT ${manPage}
  COMMAND ${manPageMaker} $<TARGET_FILE:krnqb_program> ${PROJECT_SOURCE_DIR}/packaging/krnqb.1.in ${manPage}
    VERSION=${PROJECT_VERSION}
    MODULE=${CMAKE_INSTALL_FULL_LIBDIR}/krnqb/dialogs.so
    EXAMPLES=${CMAKE_INSTALL_FULL_DOCDIR}/examples
  DEPENDS krnqb_program ${manPageMaker} packaging/krnqb.1.in
  VERBATIM)
add_custom_target(krnqb_man_page ALL DEPENDS ${manPage})
install(FILES ${manPage}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES packaging/krnqb.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME krnqb)
install(DIRECTORY examples/ samples DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
install(FILES CHANGELOG.md docs/commands.md docs/warnings.md docs/profit-and-loss.md docs/host-guide.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs/reference DESTINATION ${CMAKE_INSTALL_DOCDIR})

include(cmake/debian_packages.cmake)
