// gllib-register: enters the module's classes into the registry, or takes them out. It loads the module as a
// host does and leaves the work to its entry points. One thread.

#include <dlfcn.h>
#include <getopt.h>
#include <gllib/GLEntryPoints.h>

#include <cstdio>
#include <cstdlib>

namespace {

enum ExitCode { kDone = 0, kRefused = 1, kUsage = 2, kNoModule = 3 };

constexpr char kHelp[] =
    "usage: gllib-register [--user] [--remove] [MODULE]\n"
    "\n"
    "Enters the classes of GLLib into the registry, where hosts find them by name.\n"
    "\n"
    "  -u, --user    into the registry of this user, not of the machine\n"
    "  -r, --remove  takes them out again\n"
    "  -h, --help    shows this\n"
    "  MODULE        a module's file; the installed one where none is named\n"
    "\n"
    "exit codes: 0 done, 1 the registry refused, 2 wrong usage, 3 no such module\n";

struct Options {
  bool m_bUser = false;
  bool m_bRemove = false;
  const char* m_szModule = GLLIB_MODULE_NAME;
};

/// Reads the command line; ends the program where that is all there is to do.
Options Read(int argc, char** argv) {
  constexpr option kOptions[] = {{"user", no_argument, nullptr, 'u'},
                                 {"remove", no_argument, nullptr, 'r'},
                                 {"help", no_argument, nullptr, 'h'},
                                 {}};
  Options options;
  for (int letter; (letter = getopt_long(argc, argv, "urh", kOptions, nullptr)) != -1;) {
    switch (letter) {
      case 'u':
        options.m_bUser = true;
        break;
      case 'r':
        options.m_bRemove = true;
        break;
      case 'h':
        std::fputs(kHelp, stdout);
        std::exit(kDone);
      default:
        std::fputs(kHelp, stderr);
        std::exit(kUsage);
    }
  }
  if (argc - optind > 1) {
    std::fputs(kHelp, stderr);
    std::exit(kUsage);
  }
  if (optind < argc) options.m_szModule = argv[optind];
  return options;
}

const char* Reason(HRESULT aResult) {
  switch (static_cast<unsigned>(aResult)) {
    case 0x80070005:
      return "the registry can't be written";
    case 0x800703F1:
      return "a registry file is damaged; it was left as it is";
    case 0x8007001D:
      return "the registry couldn't be written to its end; it was left as it was";
    case 0x8007001E:
      return "a registry file can't be read to its end; it was left as it is";
    case 0x80070021:
      return "another program has locked the registry; it was left as it is";
    default:
      return "the module refused";
  }
}

}  // namespace

int main(int argc, char** argv) {
  const Options options = Read(argc, argv);
  if (options.m_bUser) setenv("GLLIB_REGISTRY_USER", "1", 1);

  void* module = dlopen(options.m_szModule, RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    std::fprintf(stderr, "gllib-register: %s\n", dlerror());
    return kNoModule;
  }
  using EntryPoint = HRESULT (*)();
  const char* name = options.m_bRemove ? "DllUnregisterServer" : "DllRegisterServer";
  const auto entryPoint = reinterpret_cast<EntryPoint>(dlsym(module, name));
  if (entryPoint == nullptr) {
    std::fprintf(stderr, "gllib-register: %s has no %s\n", options.m_szModule, name);
    return kNoModule;
  }
  const HRESULT result = entryPoint();
  if (FAILED(result)) {
    std::fprintf(stderr, "gllib-register: %s (0x%08X)\n", Reason(result), static_cast<unsigned>(result));
    return kRefused;
  }
  return kDone;
}
