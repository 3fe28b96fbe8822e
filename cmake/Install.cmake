# Installed files. Runtime: the module and its registration tool. Development: public headers, source of the type library,
# files for find_package(GLLib) and pkg-config. bindings/python installs the Python package.

include(CMakePackageConfigHelpers)
set(GLLIB_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/GLLib)

install(TARGETS gllib EXPORT GLLibTargets
        RUNTIME COMPONENT Runtime
        LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
        ARCHIVE COMPONENT Development)
if(TARGET gllib-register)
  install(TARGETS gllib-register COMPONENT Runtime)
  install(FILES tools/gllib-register.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Runtime)
endif()
install(DIRECTORY src/component/include/gllib src/platform/include/gllib DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        COMPONENT Development)
install(FILES src/component/GLLib.idl DESTINATION ${CMAKE_INSTALL_DATADIR}/gllib COMPONENT Development)
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libgllib-dev/examples COMPONENT Development)
install(EXPORT GLLibTargets NAMESPACE GLLib:: DESTINATION ${GLLIB_PACKAGE_DIR} COMPONENT Development)
configure_package_config_file(cmake/GLLibConfig.cmake.in ${PROJECT_BINARY_DIR}/GLLibConfig.cmake
                              INSTALL_DESTINATION ${GLLIB_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/GLLibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
# The file computes the prefix from its location, so that the installed tree can be moved.
file(RELATIVE_PATH GLLIB_PREFIX_FROM_PC ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/gllib.pc.in ${PROJECT_BINARY_DIR}/gllib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/GLLibConfig.cmake ${PROJECT_BINARY_DIR}/GLLibConfigVersion.cmake
        DESTINATION ${GLLIB_PACKAGE_DIR} COMPONENT Development)
install(FILES ${PROJECT_BINARY_DIR}/gllib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
