// Runs a fuzz target without libFuzzer: first the corpus files, then inputs generated from seeds. One thread.
//   <target> [-runs=N] [-first=SEED] [-seconds=S] [FILE or FOLDER]...
// Runs N seeds, starting with SEED, and stops after S seconds. "-first=K -runs=1" repeats seed K. With
// FUZZ_VERBOSE in the environment it prints each seed.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int*, char***) __attribute__((weak));
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* aData, std::size_t aSize);

namespace {

using Input = std::vector<std::uint8_t>;

Input FromFile(const std::filesystem::path& aFile) {
  std::ifstream in(aFile, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "cannot read %s\n", aFile.c_str());
    std::exit(1);
  }
  return Input(std::istreambuf_iterator<char>(in), {});
}

Input FromSeed(unsigned aSeed) {
  std::mt19937 random(aSeed);
  Input input(random() % 4096);
  for (std::uint8_t& byte : input) byte = static_cast<std::uint8_t>(random());
  return input;
}

unsigned g_uFiles = 0;

void Run(const Input& aInput) { LLVMFuzzerTestOneInput(aInput.data(), aInput.size()); }

void RunFiles(const std::filesystem::path& aPath) {
  if (std::filesystem::is_directory(aPath)) {
    for (const auto& entry : std::filesystem::directory_iterator(aPath)) RunFiles(entry.path());
    return;
  }
  Run(FromFile(aPath));
  ++g_uFiles;
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) LLVMFuzzerInitialize(&argc, &argv);
  unsigned runs = 0, first = 0, seconds = 0;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    const auto number = [&](const char* aOption, unsigned& aValue) {
      const std::string head = std::string("-") + aOption + "=";
      if (!argument.starts_with(head)) return false;
      aValue = static_cast<unsigned>(std::stoul(argument.substr(head.size())));
      return true;
    };
    if (!number("runs", runs) && !number("first", first) && !number("seconds", seconds)) RunFiles(argument);
  }
  using Clock = std::chrono::steady_clock;
  const auto end = seconds > 0 ? Clock::now() + std::chrono::seconds(seconds) : Clock::time_point::max();
  unsigned done = 0;
  for (; done < runs && Clock::now() < end; ++done) {
    // Printed before the run: if the run crashes, the last line of the log is its seed.
    if (std::getenv("FUZZ_VERBOSE") != nullptr) std::fprintf(stderr, "seed %u\n", first + done);
    Run(FromSeed(first + done));
  }
  std::printf("%u files, %u seeds from %u on\n", g_uFiles, done, first);
  return 0;
}
