# What scripts/demo.sh builds is all that the README's `cmake --install` needs: asking Ninja for the
# installed files as well adds no step. Nothing is compiled.
# Given: source, binary (folders), compiler, ninja.
cmake_minimum_required(VERSION 3.25)
file(STRINGS ${source}/scripts/demo.sh build_line REGEX "cmake --build .* --target ")
string(REGEX REPLACE ".* --target " "" targets "${build_line}")
separate_arguments(targets)
if(NOT targets)
  message(FATAL_ERROR "scripts/demo.sh builds no targets that could be read")
endif()

set(build ${binary}/build)
file(REMOVE_RECURSE ${build})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${source} -B ${build} -G Ninja
  -DCMAKE_CXX_COMPILER=${compiler} -DMCBINNING_BUILD_TESTS=OFF
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE install_scripts ${build}/cmake_install.cmake)
set(installed "")
foreach(script ${install_scripts})
  file(READ ${script} text)
  string(REGEX MATCHALL "\"${build}/[^\"]+\"" paths "${text}")
  foreach(path ${paths})
    string(REPLACE "\"" "" path ${path})
    if(NOT EXISTS ${path} AND NOT path MATCHES "[:$]|/install_manifest")
      file(RELATIVE_PATH path ${build} ${path})
      list(APPEND installed ${path})
    endif()
  endforeach()
endforeach()
list(REMOVE_DUPLICATES installed)
foreach(file mcbin mcbin.1 completion.bash completion.zsh completion.fish)
  if(NOT "cli/${file}" IN_LIST installed)
    message(FATAL_ERROR "not found among the installed files: ${file}: ${installed}")
  endif()
endforeach()

foreach(wanted "${targets}" "${targets};${installed}")
  execute_process(COMMAND ${ninja} -C ${build} -t commands ${wanted}
    OUTPUT_VARIABLE commands COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "[^\n]" "" lines "${commands}")
  string(LENGTH "${lines}" count)
  list(APPEND counts ${count})
endforeach()
list(REMOVE_DUPLICATES counts)
list(LENGTH counts different)
if(NOT different EQUAL 1)
  message(FATAL_ERROR "to install, more must be built than scripts/demo.sh does: ${counts} steps")
endif()
