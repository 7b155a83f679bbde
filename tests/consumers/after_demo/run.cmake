# Builds what scripts/demo.sh builds, and nothing else, then installs as the README says.
# Given: source, binary (folders), generator, compiler, launcher.
file(STRINGS ${source}/scripts/demo.sh build_line REGEX "cmake --build .* --target ")
string(REGEX REPLACE ".* --target " "" targets "${build_line}")
separate_arguments(targets)
if(NOT targets)
  message(FATAL_ERROR "scripts/demo.sh builds no targets that could be read")
endif()

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

run(${CMAKE_COMMAND} -S ${source} -B ${binary}/build -G ${generator} -DCMAKE_BUILD_TYPE=None
  -DCMAKE_CXX_COMPILER=${compiler} -DCMAKE_CXX_COMPILER_LAUNCHER=${launcher}
  -DMCBINNING_BUILD_TESTS=OFF)
run(${CMAKE_COMMAND} --build ${binary}/build --parallel --target ${targets})
run(${CMAKE_COMMAND} --install ${binary}/build --prefix ${binary}/prefix)
run(${binary}/prefix/bin/mcbin --version)
