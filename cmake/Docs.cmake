# docs: builds the documentation site by Doxygen and Python, where these are found. A warning is an error, so that
# whatever a host can call is documented, and so is a dead link.

find_package(Doxygen QUIET)
if(DOXYGEN_FOUND AND GLLIB_PYTHON)
  set(GLLIB_DOCS_DIR ${PROJECT_BINARY_DIR}/docs)
  set(GLLIB_DOCS_BUILD ${GLLIB_PYTHON} -B ${PROJECT_SOURCE_DIR}/docs/site/build.py ${DOXYGEN_EXECUTABLE}
                       ${GLLIB_DOCS_DIR})
  set(GLLIB_DOCS_PAGES)  # in the order of the navigation
  foreach(page README docs/host-guide docs/gallery docs/reference bindings/python/README docs/decisions
               docs/architecture docs/platform docs/performance docs/testing SECURITY)
    string(APPEND GLLIB_DOCS_PAGES "\"${PROJECT_SOURCE_DIR}/${page}.md\" ")
  endforeach()
  configure_file(docs/Doxyfile.in ${GLLIB_DOCS_DIR}/Doxyfile @ONLY)
  add_custom_target(docs COMMAND ${GLLIB_DOCS_BUILD} COMMENT "Site in ${GLLIB_DOCS_DIR}/html/index.html" VERBATIM)
  if(GLLIB_TESTS)
    add_test(NAME docs COMMAND ${GLLIB_DOCS_BUILD})
    set_tests_properties(docs PROPERTIES TIMEOUT 120)
  endif()
endif()
