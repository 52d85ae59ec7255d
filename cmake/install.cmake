# The installed CMake package `krnqb` with its one target `krnqb::krnqb`, and the command line.
include(CMakePackageConfigHelpers)

install(TARGETS krnqb EXPORT krnqb-targets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TARGET krnqb_program)
  install(TARGETS krnqb_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
if(TARGET krnqb_dialogs)
  install(TARGETS krnqb_dialogs LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/krnqb)
endif()
install(DIRECTORY include/krnqb DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT krnqb-targets NAMESPACE krnqb::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/krnqb)
configure_package_config_file(cmake/krnqb-config.cmake.in
        ${CMAKE_BINARY_DIR}/krnqb-config.cmake
        INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/krnqb)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/krnqb-config-version.cmake
        COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/krnqb-config.cmake
        ${CMAKE_BINARY_DIR}/krnqb-config-version.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/krnqb)
