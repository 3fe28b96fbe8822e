# Target docs: builds the documentation site with Doxygen and Python, if both are found. Warnings are errors, so that
# everything that a host can call is documented. Dead links are errors too.

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
