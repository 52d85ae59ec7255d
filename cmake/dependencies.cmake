# Every external library that the project uses, named once; the rest of the build uses these variables.
find_package(PkgConfig REQUIRED)

# The XML document model and XPath.
find_package(LibXml2 2.9.14 REQUIRED)
set(KRNQB_XML LibXml2::LibXml2)

# The company file.
find_package(SQLite3 3.40 REQUIRED)
set(KRNQB_DATABASE SQLite::SQLite3)

# The checksums of its pages.
pkg_check_modules(XXHASH REQUIRED IMPORTED_TARGET libxxhash>=0.8)
set(KRNQB_CHECKSUM PkgConfig::XXHASH)

# The digests of kept versions of plans.
pkg_check_modules(NETTLE REQUIRED IMPORTED_TARGET nettle>=3.8)
set(KRNQB_DIGEST PkgConfig::NETTLE)

# The lower case of collection keys.
pkg_check_modules(UTF8PROC REQUIRED IMPORTED_TARGET libutf8proc)
set(KRNQB_UNICODE PkgConfig::UTF8PROC)

# Spreadsheets.
pkg_check_modules(XLSXWRITER REQUIRED IMPORTED_TARGET xlsxwriter)
set(KRNQB_SPREADSHEET PkgConfig::XLSXWRITER)

# Number texts and messages.
find_package(fmt 9 REQUIRED)
set(KRNQB_FORMAT fmt::fmt)

# What is written as JSON, recordings too, and small files that are read; header-only.
find_package(nlohmann_json 3.11 REQUIRED)
set(KRNQB_JSON $<BUILD_INTERFACE:nlohmann_json::nlohmann_json>)

# The lines of recordings, which are read where they lie, and the tests' schemas; header-only. The definition has texts
# searched in blocks, with instructions that every processor of the kind has.
pkg_check_modules(RAPIDJSON REQUIRED IMPORTED_TARGET RapidJSON>=1.1)
add_library(krnqb_json_reader INTERFACE)
target_link_libraries(krnqb_json_reader INTERFACE PkgConfig::RAPIDJSON)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  target_compile_definitions(krnqb_json_reader INTERFACE RAPIDJSON_SSE2)
endif()
set(KRNQB_JSON_READER $<BUILD_INTERFACE:krnqb_json_reader>)

# The command line; header-only.
find_package(CLI11 2.1 REQUIRED)
set(KRNQB_COMMAND_LINE CLI11::CLI11)

# The dialogs. Without Qt everything else is built, and the command line says that dialogs are missing.
option(KRNQB_DIALOGS "Build the dialogs with Qt, where it is installed" ON)
if(KRNQB_DIALOGS)
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
  pkg_check_modules(XCB QUIET IMPORTED_TARGET xcb)
  if(TARGET Qt6::Widgets AND TARGET PkgConfig::XCB)
    set(KRNQB_QT Qt6::Widgets)
    set(KRNQB_DISPLAY PkgConfig::XCB)
  endif()
endif()

# The tests.
if(BUILD_TESTING)
  find_package(GTest 1.12 REQUIRED)
  include(GoogleTest)
  set(KRNQB_TEST GTest::gtest)
  set(KRNQB_TEST_MAIN GTest::gtest_main)

  # Property tests over generated cases.
  find_package(rapidcheck REQUIRED)
  set(KRNQB_PROPERTY_TEST rapidcheck)

  # Mouse and keyboard for the dialogs.
  if(KRNQB_QT)
    find_package(Qt6 6.4 REQUIRED COMPONENTS Test)
    set(KRNQB_QT_TEST Qt6::Test)
  endif()
endif()
