# One set of warnings for all our code; warnings are errors.
add_library(krnqb_warnings INTERFACE)
target_compile_options(krnqb_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Woverloaded-virtual -Wnull-dereference -Wdouble-promotion -Wformat=2)

# Automation interfaces have no virtual destructor, because their layout is fixed: Release ends their objects.
if(NOT WIN32)
  target_compile_options(krnqb_warnings INTERFACE -Wnon-virtual-dtor)
endif()

# gcc 12 reports -Wrestrict inside std::string's own operator+ when it inlines it at -O2 and above
# (gcc bug 105329).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release")
  target_compile_options(krnqb_warnings INTERFACE -Wno-restrict)
endif()
