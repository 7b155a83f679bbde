# Builds another host's libraries, the component over them and a program over both, and runs it.
# Given: source, binary (folders), generator, compiler, launcher.
set(configure_options -G ${generator} -DCMAKE_BUILD_TYPE=Debug
  -DCMAKE_CXX_COMPILER=${compiler} -DCMAKE_CXX_COMPILER_LAUNCHER=${launcher})
set(here ${source}/tests/consumers/host_libraries)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(configure_and_build folder build_folder)
  run(${CMAKE_COMMAND} -S ${folder} -B ${binary}/${build_folder} ${configure_options} ${ARGN})
  run(${CMAKE_COMMAND} --build ${binary}/${build_folder} --parallel)
endfunction()

set(component_options -DMCBINNING_BUNDLED_HOST=OFF -DMCBINNING_BUILD_TESTS=OFF
  -DMCBINNING_BUILD_CLI=OFF -DMCBINNING_BUILD_EXAMPLES=OFF)
execute_process(
  COMMAND ${CMAKE_COMMAND} -S ${source} -B ${binary}/refused ${configure_options}
    ${component_options}
  RESULT_VARIABLE result ERROR_VARIABLE message OUTPUT_QUIET)
if(result EQUAL 0 OR NOT message MATCHES "MCCOMVOR_LIBRARY must name the host's own")
  message(FATAL_ERROR "a missing path is not refused: ${result} ${message}")
endif()

configure_and_build(${here}/host host)
configure_and_build(${source} component ${component_options}
  -DMCCOMVOR_LIBRARY=${binary}/host/libMCCOMVOR.so
  -DMCCOMVOR_INCLUDE_DIR=${source}/host/mccomvor/include
  -DVORLWCOM_LIBRARY=${binary}/host/libVORLWCOM.so
  -DVORLWCOM_INCLUDE_DIR=${source}/host/vorlwcom/include)
run(${CMAKE_COMMAND} --install ${binary}/component --prefix ${binary}/prefix)
if(EXISTS ${binary}/prefix/include/mccomvor)
  message(FATAL_ERROR "the stand-ins were installed beside the host's own libraries")
endif()
configure_and_build(${here} consumer -DCMAKE_PREFIX_PATH=${binary}/prefix)
run(${binary}/consumer/consumer)
run(${binary}/consumer/other_host_test)
