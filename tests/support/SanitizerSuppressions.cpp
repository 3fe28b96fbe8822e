// Suppressions for memory and synchronisation inside the driver, its compiler and fontconfig. The sanitizers'
// runtimes read them at the start of a test executable. Other builds do not use them.

extern "C" {

[[gnu::visibility("default")]] int dlclose(void*);
[[gnu::visibility("default")]] const char* __lsan_default_suppressions();
[[gnu::visibility("default")]] const char* __tsan_default_suppressions();

const char* __lsan_default_suppressions() {
  return "leak:swrast_dri.so\nleak:libLLVM\nleak:libEGL_mesa\nleak:libGLX_mesa\nleak:libglapi\n"
         "leak:libfontconfig\n";
}

const char* __tsan_default_suppressions() {
  return "race:swrast_dri.so\nrace:libLLVM\nrace:libEGL_mesa\nmutex:swrast_dri.so\ndeadlock:swrast_dri.so\n";
}

#if GLLIB_SANITIZED
// Keeps the modules of the driver loaded. Otherwise a report about a driver that was unloaded names no
// module.
int dlclose(void*) { return 0; }
#endif
}
