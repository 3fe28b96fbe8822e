# docs: builds the documentation site by Doxygen and Python, where these are found. A warning is an error, so that
# whatever a host can call is documented, and so is a dead link.

find_package(Doxygen QUIET)
if(DOXYGEN_FOUND AND GLLIB_PYTHON)
  set(GLLIB_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
  set(GLLIB_DOCS_BUILD ${GLLIB_PYTHON} -B ${PROJECT_SOURCE_DIR}/docs/site/build.py ${DOXYGEN_EXECUTABLE}
                       ${GLLIB_DOCS_DIR})
  configure_file(docs/Doxyfile.in ${GLLIB_DOCS_DIR}/Doxyfile @ONLY)
  add_custom_target(docs COMMAND ${GLLIB_DOCS_BUILD} COMMENT "Site in ${GLLIB_DOCS_DIR}/html/index.html" VERBATIM)
  if(GLLIB_TESTS)
    add_test(NAME docs COMMAND ${GLLIB_DOCS_BUILD})
    set_tests_properties(docs PROPERTIES TIMEOUT 120)
  endif()
endif()
