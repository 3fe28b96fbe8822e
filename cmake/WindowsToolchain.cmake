# Cross-compilation for 64-bit Windows with mingw-w64. The GNU runtime is linked statically, so that the module is one file
# that needs only libraries of the system.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(GLLIB_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${GLLIB_MINGW}-gcc-posix)  # googletest requires one
set(CMAKE_CXX_COMPILER ${GLLIB_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${GLLIB_MINGW}-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
set(CMAKE_FIND_ROOT_PATH /usr/${GLLIB_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
