# Builds and runs test programs for Windows: googletest from its sources, each program under Wine with a prefix in the build
# folder. The caller provides the X server.

set(GLLIB_GOOGLETEST /usr/src/googletest CACHE PATH "sources of googletest")
set(BUILD_GMOCK ON)
set(INSTALL_GTEST OFF)
add_subdirectory(${GLLIB_GOOGLETEST} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(library gtest gtest_main gmock gmock_main)
  target_compile_options(${library} PRIVATE -w)
endforeach()
foreach(library gtest gtest_main gmock)
  if(NOT TARGET GTest::${library})
    add_library(GTest::${library} ALIAS ${library})
  endif()
endforeach()
include_directories(SYSTEM ${GLLIB_HEADER_LIBRARIES})
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_SOURCE_DIR}/windows/run.sh ${PROJECT_BINARY_DIR}/wine)

# All unit tests that are built run there. Of the gl tests one takes minutes on a busy machine and runs separately.
set(GLLIB_WINDOWS_unit_FILTER "*")
set(GLLIB_WINDOWS_captures_FILTER "Capture.LeavesTheWindowUnchanged")
set(GLLIB_WINDOWS_gl_FILTER "*-${GLLIB_WINDOWS_captures_FILTER}")
