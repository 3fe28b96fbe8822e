# What programs that tests start find in their environment: what the sanitizer passes over, all of it the driver's and
# fontconfig's. One variable alone, since a list doesn't reach tests that are found when they run.

if(GLLIB_SANITIZE STREQUAL "thread")
  set(GLLIB_SANITIZER_ENV "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp")
else()
  set(GLLIB_SANITIZER_ENV
      "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0")
endif()
