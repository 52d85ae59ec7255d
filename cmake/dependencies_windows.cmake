# The same variables for a self-contained Windows library and program: static libraries and headers that script/windows has
# installed into one folder.
set(KRNQB_WINDOWS_LIBRARIES "" CACHE PATH "Where script/windows has installed the libraries for this target")
if(NOT EXISTS ${KRNQB_WINDOWS_LIBRARIES}/lib)
  message(FATAL_ERROR "KRNQB_WINDOWS_LIBRARIES has no libraries: run script/windows")
endif()

# A static library in that folder; further arguments are its compile definitions.
function(krnqb_static_library target file include_folder)
  add_library(${target} STATIC IMPORTED)
  set_target_properties(${target} PROPERTIES
    IMPORTED_LOCATION ${KRNQB_WINDOWS_LIBRARIES}/lib/${file}
    INTERFACE_INCLUDE_DIRECTORIES ${KRNQB_WINDOWS_LIBRARIES}/${include_folder}
    INTERFACE_COMPILE_DEFINITIONS "${ARGN}")
endfunction()

# A header-only library in that folder.
function(krnqb_header_library target include_folder)
  add_library(${target} INTERFACE IMPORTED)
  set_target_properties(${target} PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES ${KRNQB_WINDOWS_LIBRARIES}/${include_folder}
    INTERFACE_COMPILE_DEFINITIONS "${ARGN}")
endfunction()

krnqb_static_library(krnqb_windows_xml libxml2.a include/libxml2 LIBXML_STATIC)
krnqb_static_library(krnqb_windows_unicode libutf8proc.a include UTF8PROC_STATIC)
krnqb_header_library(krnqb_windows_format include FMT_HEADER_ONLY)
krnqb_header_library(krnqb_windows_json include)
krnqb_header_library(krnqb_windows_json_reader include)
krnqb_static_library(krnqb_windows_database libsqlite3.a include)
krnqb_static_library(krnqb_windows_digest libnettle.a include)
krnqb_static_library(krnqb_windows_compression libz.a include)
krnqb_static_library(krnqb_windows_spreadsheet libxlsxwriter.a include)
target_link_libraries(krnqb_windows_spreadsheet INTERFACE krnqb_windows_compression)
krnqb_header_library(krnqb_windows_checksum include XXH_INLINE_ALL)
krnqb_header_library(krnqb_windows_command_line include)
set(KRNQB_XML krnqb_windows_xml)
set(KRNQB_UNICODE krnqb_windows_unicode)
set(KRNQB_FORMAT krnqb_windows_format)
set(KRNQB_JSON krnqb_windows_json)
set(KRNQB_JSON_READER krnqb_windows_json_reader)
set(KRNQB_DATABASE krnqb_windows_database)
set(KRNQB_DIGEST krnqb_windows_digest)
set(KRNQB_SPREADSHEET krnqb_windows_spreadsheet)
set(KRNQB_CHECKSUM krnqb_windows_checksum)
set(KRNQB_COMMAND_LINE krnqb_windows_command_line)

# The interface compiler, the files it includes, and the type library that every automation interface imports.
find_program(KRNQB_WIDL ${CMAKE_SYSTEM_PROCESSOR}-w64-mingw32-widl REQUIRED)
find_path(KRNQB_IDL_INCLUDES oaidl.idl REQUIRED NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows)
file(GLOB standardTypeLibraries /usr/lib/*/wine/*-windows/stdole2.tlb)
if(NOT standardTypeLibraries)
  message(FATAL_ERROR "stdole2.tlb is missing: run script/windows")
endif()
list(GET standardTypeLibraries 0 standardTypeLibrary)
cmake_path(GET standardTypeLibrary PARENT_PATH KRNQB_TYPE_LIBRARIES)

# The tests: for other systems Debian provides GoogleTest only as sources.
if(BUILD_TESTING)
  add_subdirectory(/usr/src/googletest/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  set(KRNQB_TEST gtest)
endif()
