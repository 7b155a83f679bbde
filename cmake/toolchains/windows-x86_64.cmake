# Builds for 64-bit Windows on Debian: g++-mingw-w64-x86-64-posix; programs run under wine.
# scripts/windows_libraries.sh makes the libraries.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
cmake_path(SET build_folder NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../build)
set(CMAKE_FIND_ROOT_PATH ${build_folder}/windows-libraries /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
# The machine's own wine folder is left alone, and its warnings are none of a test's.
set(CMAKE_CROSSCOMPILING_EMULATOR env WINEPREFIX=${build_folder}/wine WINEDEBUG=-all wine)
# A folder with a program and its libraries runs on a bare Windows: no runtime of the compiler's.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(ZLIB_USE_STATIC_LIBS ON)
