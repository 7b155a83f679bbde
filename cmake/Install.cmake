# Headers, libraries, the CMake package and the pkg-config file. What a program needs to run is the
# component "library", the rest "development".
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/MCBinning)
set(package_files
  ${CMAKE_CURRENT_BINARY_DIR}/MCBinningConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/MCBinningConfigVersion.cmake)
set(installed_libraries mcbinning)
set(library_folders $ORIGIN)  # the libraries find one another in the folder that they share

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT library)
install(DIRECTORY include/mcbinning DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
if(MCBINNING_BUNDLED_HOST)
  install(DIRECTORY host/mccomvor/include/mccomvor host/vorlwcom/include/vorlwcom
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
  list(APPEND installed_libraries MCCOMVOR VORLWCOM)
  set(host_libs "-lMCCOMVOR")
else()
  list(APPEND package_files ${PROJECT_SOURCE_DIR}/cmake/HostLibraries.cmake)
  set(host_cflags " -I${MCCOMVOR_INCLUDE_DIR}")
  set(host_libs "${MCCOMVOR_LIBRARY}")
  foreach(host_library ${MCCOMVOR_LIBRARY} ${VORLWCOM_LIBRARY})
    cmake_path(GET host_library PARENT_PATH folder)
    list(APPEND library_folders ${folder})
  endforeach()
  list(REMOVE_DUPLICATES library_folders)
endif()

set_target_properties(${installed_libraries} PROPERTIES INSTALL_RPATH "${library_folders}")
install(TARGETS ${installed_libraries} EXPORT MCBinningTargets
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(EXPORT MCBinningTargets NAMESPACE MCBinning:: DESTINATION ${package_dir}
  COMPONENT development)

configure_package_config_file(cmake/MCBinningConfig.cmake.in MCBinningConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(MCBinningConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${package_files} DESTINATION ${package_dir} COMPONENT development)

file(RELATIVE_PATH relative_prefix
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/mcbinning.pc.in mcbinning.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mcbinning.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
