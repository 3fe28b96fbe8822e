# Environment of the tests and the programs that they start: suppressions of the sanitizer, only for the driver and
# fontconfig. It is one variable, because tests that are discovered at run time do not accept a list.

if(GLLIB_SANITIZE STREQUAL "thread")
  set(GLLIB_SANITIZER_ENV "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp")
else()
  set(GLLIB_SANITIZER_ENV
      "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0")
endif()
