# Packages of cpack: libgllib1 to run programs, libgllib-dev to build them, python3-gllib for Python programs, and
# gllib-glview, the viewer.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME gllib)
set(CPACK_PACKAGE_CONTACT "The GLLib developers <gllib@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libgllib${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
    "The module that programs load, and gllib-register, which registers its classes for
programs that create objects by name.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
# The EGL library finds its driver at run time, and its package requires none.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS libgl1-mesa-dri)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libgllib-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "Headers, the source of the type library, and the files with which CMake and
pkg-config find the module.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}), libgl-dev")

if(TARGET python_package)
  list(APPEND CPACK_COMPONENTS_ALL Python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-gllib)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION
      "The package gllib, with which Python programs draw, and examples. Drawing from arrays
and reading pictures as arrays require NumPy.")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
      "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}), python3 (>= 3.9)")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS python3-numpy)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/bindings/python/debian/postinst
                                                ${PROJECT_SOURCE_DIR}/bindings/python/debian/prerm)
endif()

if(GLLIB_GLVIEW)
  list(APPEND CPACK_COMPONENTS_ALL glview)
  set(CPACK_DEBIAN_GLVIEW_PACKAGE_NAME gllib-glview)
  set(CPACK_DEBIAN_GLVIEW_PACKAGE_SECTION graphics)
  set(CPACK_COMPONENT_GLVIEW_DESCRIPTION
      "A viewer for 3-D models, in a window or to a picture file, with an entry in the
desktop menu.")
  set(CPACK_DEBIAN_GLVIEW_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)  # location of the module while packages are built
  set(CPACK_DEBIAN_GLVIEW_PACKAGE_DEPENDS "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION})")
endif()

include(CPack)
