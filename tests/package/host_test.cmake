# Installs the package from the build folder `build` into an empty folder under `work`, builds the host program `host`
# against it, runs the host, with and without an open company, and compares its output.

function(Run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGV " " command)
    message(FATAL_ERROR "${command} exited with ${result}:\n${output}")
  endif()
endfunction()

file(REMOVE_RECURSE ${work})
Run(${CMAKE_COMMAND} --install ${build} --prefix ${work}/prefix)
Run(${CMAKE_COMMAND} -S ${host} -B ${work}/build -G ${generator}
    -D CMAKE_PREFIX_PATH=${work}/prefix
    -D CMAKE_BUILD_TYPE=${buildType}
    -D CMAKE_C_COMPILER=${cCompiler}
    -D CMAKE_CXX_COMPILER=${cxxCompiler}
    -D CMAKE_CXX_FLAGS=${cxxFlags}
    -D CMAKE_FIND_USE_PACKAGE_REGISTRY=OFF)
Run(${CMAKE_COMMAND} --build ${work}/build)

# Expect(RESULT FILE [ARGUMENT]): runs the host, which must exit with RESULT and print what FILE holds.
function(Expect expectedResult file)
  execute_process(COMMAND ${work}/build/krnqb_host ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE actual)
  file(READ ${host}/${file} expected)
  if(NOT result EQUAL expectedResult OR NOT actual STREQUAL expected)
    message(FATAL_ERROR "krnqb_host ${ARGN} exited with ${result} and printed\n${actual}instead of\n${expected}")
  endif()
endfunction()

Expect(0 expected-output.txt)
Expect(1 expected-failure.txt closed)
