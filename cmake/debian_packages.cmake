# What `cpack` makes, for script/package: the Debian packages krnqb and krnqb-dialogs, one a component of what is installed.

# A file that Debian requires of each package, and that no other installation has.
function(krnqb_package_file file package name)
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} RENAME ${name}
          COMPONENT ${package} EXCLUDE_FROM_ALL)
endfunction()

# Debian's changelog has the sections of CHANGELOG.md in its own form. The time is SOURCE_DATE_EPOCH, if that is set.
set(CPACK_PACKAGE_CONTACT "The KRN6_QB2002 maintainers <maintainers@krnqb.example>")
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(debianChangelog ${CMAKE_BINARY_DIR}/changelog)
execute_process(
  COMMAND ${PROJECT_SOURCE_DIR}/packaging/debian_changelog.sh ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_VERSION}
    ${CPACK_PACKAGE_CONTACT} ${now}
  OUTPUT_FILE ${debianChangelog} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND gzip --best --no-name --keep --force ${debianChangelog} COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md packaging/debian_changelog.sh)
foreach(package krnqb krnqb-dialogs)
  krnqb_package_file(${debianChangelog}.gz ${package} changelog.gz)
  krnqb_package_file(packaging/debian_copyright ${package} copyright)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL krnqb krnqb-dialogs)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# A description begins with its own summary, so that there is no common one.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_DEBIAN_KRNQB_PACKAGE_NAME krnqb)
set(CPACK_DEBIAN_KRNQB_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_KRNQB_DESCRIPTION "import QuickBooks accounting data into business plans
krnqb imports accounts and monthly amounts of QuickBooks 2002 and 2003
companies into Korrin Planner Pro plans, explains every figure, compares a
plan with the books, and undoes imports.

This package has the command line and the C++ library with its headers and
CMake package. The dialogs are in krnqb-dialogs.")
set(CPACK_DEBIAN_KRNQB_PACKAGE_RECOMMENDS krnqb-dialogs)
# For building against the library.
set(CPACK_DEBIAN_KRNQB_PACKAGE_SUGGESTS
    "cmake, g++, pkg-config, libxml2-dev, libfmt-dev, libutf8proc-dev")

set(CPACK_DEBIAN_KRNQB-DIALOGS_PACKAGE_NAME krnqb-dialogs)
set(CPACK_DEBIAN_KRNQB-DIALOGS_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_KRNQB-DIALOGS_DESCRIPTION "dialogs of krnqb, which imports QuickBooks data into business plans
krnqb imports accounts and monthly amounts of QuickBooks 2002 and 2003
companies into Korrin Planner Pro plans.

This package has the windows that krnqb dialog shows, in which the user
chooses what to import. All other commands run without it.")
set(CPACK_DEBIAN_KRNQB-DIALOGS_PACKAGE_DEPENDS "krnqb (= ${PROJECT_VERSION})")

include(CPack)
