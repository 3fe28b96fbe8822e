# docs: builds the reference of the public headers by Doxygen, where that is found. A warning is an error, so that
# whatever a host can call is documented.

find_package(Doxygen QUIET)
if(DOXYGEN_FOUND)
  set(GLLIB_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
  configure_file(docs/Doxyfile.in ${GLLIB_DOCS_DIR}/Doxyfile @ONLY)
  add_custom_target(docs COMMAND ${DOXYGEN_EXECUTABLE} ${GLLIB_DOCS_DIR}/Doxyfile
                    COMMENT "Reference in ${GLLIB_DOCS_DIR}/html/index.html" VERBATIM)
  if(GLLIB_TESTS)
    add_test(NAME docs COMMAND ${DOXYGEN_EXECUTABLE} ${GLLIB_DOCS_DIR}/Doxyfile)
    set_tests_properties(docs PROPERTIES TIMEOUT 120)
  endif()
endif()
