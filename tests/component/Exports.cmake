# The module exports its four entry points and nothing else. Run with -DMODULE=... -DNM=...

execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
                OUTPUT_VARIABLE listing COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE " [^\n]*\n" ";" names "${listing}")
list(FILTER names EXCLUDE REGEX "^(__asan|__ubsan|__tsan|__lsan|__odr_asan|__sanitizer|___interceptor|_init$|_fini$|$)")
list(SORT names)
set(entries DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)
if(NOT names STREQUAL entries)
  message(FATAL_ERROR "unexpected exports: ${names}")
endif()
