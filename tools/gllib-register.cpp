// gllib-register: registers the module's classes, or removes them. It loads the module as a host does and
// calls its entry points. One thread.

#include <dlfcn.h>
#include <gllib/GLEntryPoints.h>

#include <cstdio>
#include <cstdlib>
#include <cxxopts.hpp>
#include <iostream>
#include <stdexcept>
#include <string>

namespace {

enum ExitCode { kDone = 0, kRefused = 1, kUsage = 2, kNoModule = 3 };

struct Options {
  bool m_bUser = false;
  bool m_bRemove = false;
  bool m_bHelp = false;
  std::string m_sModule = GLLIB_MODULE_NAME;
};

cxxopts::Options CommandLine() {
  cxxopts::Options command("gllib-register",
                           "usage: gllib-register [--user] [--remove] [MODULE]\n\n"
                           "Registers the classes of GLLib, so that hosts can create objects by name.\n"
                           "MODULE is the file of a module. Default: the installed module.");
  command.custom_help("");
  command.add_options()("u,user", "use the registry of this user instead of the machine's")(
      "r,remove", "remove the classes")("h,help", "show this text");
  return command;
}

std::string HelpText() {
  return CommandLine().help({}, false) +
         "\nexit status: 0 success, 1 registration failed, 2 invalid command line, 3 no such module\n";
}

/// Reads the command line. Throws a std::exception with the reason if it is invalid.
Options Read(int argc, char** argv) {
  const cxxopts::ParseResult given = CommandLine().parse(argc, argv);
  Options options{given["user"].as<bool>(), given["remove"].as<bool>(), given["help"].as<bool>()};
  if (given.unmatched().size() > 1) {
    throw std::invalid_argument("more than one module: " + given.unmatched()[1]);
  }
  if (!given.unmatched().empty()) options.m_sModule = given.unmatched().front();
  return options;
}

const char* Reason(HRESULT aResult) {
  switch (static_cast<unsigned>(aResult)) {
    case 0x80070005:
      return "the registry cannot be written";
    case 0x800703F1:
      return "a registry file is damaged; it was not changed";
    case 0x8007001D:
      return "the registry could not be written completely; it was not changed";
    case 0x8007001E:
      return "a registry file cannot be read completely; it was not changed";
    case 0x80070021:
      return "another program has locked the registry; it was not changed";
    default:
      return "the module returned an error";
  }
}

int Register(const Options& aOptions) {
  if (aOptions.m_bUser) setenv("GLLIB_REGISTRY_USER", "1", 1);
  if (aOptions.m_sModule.empty()) {  // would name the tool itself
    std::fprintf(stderr, "gllib-register: the name of the module is empty\n");
    return kNoModule;
  }
  void* module = dlopen(aOptions.m_sModule.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    std::fprintf(stderr, "gllib-register: %s\n", dlerror());
    return kNoModule;
  }
  using EntryPoint = HRESULT (*)();
  const char* name = aOptions.m_bRemove ? "DllUnregisterServer" : "DllRegisterServer";
  const auto entryPoint = reinterpret_cast<EntryPoint>(dlsym(module, name));
  if (entryPoint == nullptr) {
    std::fprintf(stderr, "gllib-register: %s does not export %s\n", aOptions.m_sModule.c_str(), name);
    return kNoModule;
  }
  const HRESULT result = entryPoint();
  if (FAILED(result)) {
    std::fprintf(stderr, "gllib-register: %s (0x%08X)\n", Reason(result), static_cast<unsigned>(result));
    return kRefused;
  }
  return kDone;
}

}  // namespace

int main(int argc, char** argv) try {
  const Options options = Read(argc, argv);
  if (!options.m_bHelp) return Register(options);
  std::cout << HelpText();
  return kDone;
} catch (const std::exception& error) {
  std::cerr << "gllib-register: " << error.what() << "; --help shows the usage\n";
  return kUsage;
}
