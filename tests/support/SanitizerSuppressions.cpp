// What the sanitizers pass over: what the driver, its compiler and fontconfig keep to themselves or guard in
// ways of their own. Read by the sanitizers' runtimes at the start of a test executable; without them, by
// nobody.

extern "C" {

[[gnu::visibility("default")]] const char* __lsan_default_suppressions();
[[gnu::visibility("default")]] const char* __tsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:swrast_dri.so\nleak:libLLVM\nleak:libEGL_mesa\nleak:libGLX_mesa\nleak:libglapi\n"
         "leak:libfontconfig\n";
}

const char* __tsan_default_suppressions() {
  return "race:swrast_dri.so\nrace:libLLVM\nrace:libEGL_mesa\nmutex:swrast_dri.so\ndeadlock:swrast_dri.so\n";
}
}
