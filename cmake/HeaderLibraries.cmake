# Sets GLLIB_HEADER_LIBRARIES to a folder with the header-only libraries: stb and cxxopts, and for tests glm. A cross
# compiler gets a separate folder of links, because /usr/include contains headers of the build system.

if(CMAKE_CROSSCOMPILING)
  set(GLLIB_HEADER_LIBRARIES ${PROJECT_BINARY_DIR}/headers)
  file(MAKE_DIRECTORY ${GLLIB_HEADER_LIBRARIES})
  foreach(name cxxopts.hpp glm stb)
    file(CREATE_LINK /usr/include/${name} ${GLLIB_HEADER_LIBRARIES}/${name} SYMBOLIC)
  endforeach()
else()
  find_path(GLLIB_HEADER_LIBRARIES cxxopts.hpp REQUIRED)
endif()
