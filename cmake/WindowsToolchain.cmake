# The Windows program, made on Linux by the distribution's cross compiler and linked statically.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)

# Runs the tests, and what the build itself makes and needs.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
set(CMAKE_CROSSCOMPILING_EMULATOR ${root}/scripts/lib/under-wine)

# What scripts/windows has built, and of this machine nothing but its programs.
set(dependencies ${root}/build/windows/dependencies/prefix)
set(CMAKE_FIND_ROOT_PATH ${dependencies} /usr/x86_64-w64-mingw32)
set(CMAKE_PREFIX_PATH /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr)
set(ENV{PKG_CONFIG_LIBDIR} ${dependencies}/lib/pkgconfig)
