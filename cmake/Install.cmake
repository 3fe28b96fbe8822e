# What is installed: the module, the public headers, the package for find_package(GLLib) and the pkg-config file.

include(CMakePackageConfigHelpers)
set(GLLIB_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/GLLib)

install(TARGETS gllib EXPORT GLLibTargets)
install(DIRECTORY src/component/include/gllib src/platform/include/gllib DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT GLLibTargets NAMESPACE GLLib:: DESTINATION ${GLLIB_PACKAGE_DIR})
configure_package_config_file(cmake/GLLibConfig.cmake.in ${PROJECT_BINARY_DIR}/GLLibConfig.cmake
                              INSTALL_DESTINATION ${GLLIB_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/GLLibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
# The file goes by its own place, so that the installed tree can be moved.
file(RELATIVE_PATH GLLIB_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/gllib.pc.in ${PROJECT_BINARY_DIR}/gllib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/GLLibConfig.cmake ${PROJECT_BINARY_DIR}/GLLibConfigVersion.cmake
        DESTINATION ${GLLIB_PACKAGE_DIR})
install(FILES ${PROJECT_BINARY_DIR}/gllib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
