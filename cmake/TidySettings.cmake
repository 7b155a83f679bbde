# With clang-tidy in the build, a changed .clang-tidy makes every source be looked at again: its
# checksum becomes part of the command.
if(CMAKE_CXX_CLANG_TIDY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/.clang-tidy)
  file(SHA1 ${PROJECT_SOURCE_DIR}/.clang-tidy tidy_checksum)
  list(APPEND CMAKE_CXX_CLANG_TIDY --extra-arg=-DMCBINNING_TIDY_${tidy_checksum})
endif()
