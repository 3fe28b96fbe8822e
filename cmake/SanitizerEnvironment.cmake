# What tests find in their environment: what the sanitizers pass over, all of it the driver's.

set(GLLIB_SANITIZER_ENV
    "TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp"
    "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0")
