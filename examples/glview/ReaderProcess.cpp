// ReaderProcess on Linux: the viewer's side. It starts the reader, follows its progress and maps its result.
// Any thread.

#include "glview/ReaderProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "glview/ReaderProtocol.h"
#include "shared/model/ModelBytes.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::uint64_t kMebibyte = 1 << 20;

/// A file descriptor above those that the reader uses; closed by the destructor.
class Descriptor {
 public:
  explicit Descriptor(int aDescriptor) : m_descriptor(fcntl(aDescriptor, F_DUPFD_CLOEXEC, 2 * kFirstOther)) {
    close(aDescriptor);
    if (m_descriptor < 0) throw std::runtime_error("too many files are open");
  }
  ~Descriptor() { Close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int Get() const { return m_descriptor; }
  void Close() {
    if (m_descriptor >= 0) close(std::exchange(m_descriptor, -1));
  }

 private:
  int m_descriptor;
};

/// A file without a name that exists in memory only.
struct MemoryFile : Descriptor {
  MemoryFile() : Descriptor(memfd_create("glview", MFD_CLOEXEC)) {}
  std::size_t Size() const {
    struct stat state {};
    return fstat(Get(), &state) == 0 ? static_cast<std::size_t>(state.st_size) : 0;
  }
  std::string Text(std::size_t aMost) const {
    std::string text(std::min(Size(), aMost), '\0');
    const ssize_t read = pread(Get(), text.data(), text.size(), 0);
    text.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return text;
  }
};

/// Maps a file into memory for the lifetime of the object.
class Mapping {
 public:
  explicit Mapping(const MemoryFile& aFile) : m_size(aFile.Size()) {
    if (m_size > 0) m_bytes = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, aFile.Get(), 0);
  }
  ~Mapping() {
    if (m_bytes != MAP_FAILED) munmap(m_bytes, m_size);
  }
  Mapping(const Mapping&) = delete;
  Mapping& operator=(const Mapping&) = delete;

  std::span<const std::byte> Bytes() const {
    if (m_bytes == MAP_FAILED) return {};
    return {static_cast<const std::byte*>(m_bytes), m_size};
  }

 private:
  std::size_t m_size;
  void* m_bytes = MAP_FAILED;
};

struct Pipe {
  std::array<int, 2> Open() {
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("too many files are open");
    return ends;
  }
  std::array<int, 2> ends = Open();
  Descriptor out{ends[0]};
  Descriptor in{ends[1]};
};

std::uint64_t AvailableMemory() {
  std::ifstream file("/proc/meminfo");
  for (std::string name, rest; file >> name; std::getline(file, rest)) {
    std::uint64_t kibibytes = 0;
    if (name == "MemAvailable:" && file >> kibibytes) return kibibytes * 1024;
  }
  return static_cast<std::uint64_t>(sysconf(_SC_PHYS_PAGES)) *
         static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

/// Returns the limits, with defaults replaced by numbers.
ReadLimits Settle(ReadLimits aLimits, const std::string& aPath) {
  constexpr std::uint64_t kShortestRead = 15, kLongestRead = 3600;  // seconds
  if (aLimits.mebibytes == 0) aLimits.mebibytes = AvailableMemory() / 2 / kMebibyte;
  if (aLimits.seconds == 0) {
    std::error_code error;
    const std::uint64_t size = std::filesystem::file_size(aPath, error);
    const std::uint64_t more = error ? 0 : size / kMebibyte;  // one second per MiB
    aLimits.seconds = static_cast<unsigned>(std::min(kShortestRead + more, kLongestRead));
  }
  return aLimits;
}

/// Returns the environment of the reader: search paths of modules, locale, and settings of sanitizers.
std::vector<char*> ReaderEnvironment() {
  std::vector<char*> kept;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    const std::string_view name = std::string_view(*entry).substr(0, std::string_view(*entry).find('='));
    if (name == "LD_LIBRARY_PATH" || name == "LANG" || name.starts_with("LC_") ||
        name.ends_with("SAN_OPTIONS"))
      kept.push_back(*entry);
  }
  kept.push_back(nullptr);
  return kept;
}

class Reader {
 public:
  Reader(const ReadLimits& aLimits, std::string aPath)
      : m_limits(aLimits),
        m_path(std::move(aPath)),
        m_end(Clock::now() + std::chrono::seconds(aLimits.seconds)) {
    Start();
  }
  ~Reader() {
    if (m_process <= 0) return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  Model Take(const ReadProgress& aProgress) {
    FollowProgress(aProgress);
    RequireModel(WaitForEnd());
    // Prints the reader's messages about the model, for example about a missing image.
    std::fputs(m_notes.Text(1 << 16).c_str(), stderr);
    const Mapping mapping(m_result);
    try {
      return ModelFromBytes(mapping.Bytes());
    } catch (const ModelError& error) {
      Refuse(error.what());
    }
  }

 private:
  void Start();
  void FollowProgress(const ReadProgress& aProgress);
  int WaitForEnd();
  void RequireModel(int aStatus) const;
  void RequireTime() const {
    if (Clock::now() > m_end) RefuseForTime();
  }
  [[noreturn]] void RefuseForTime() const {
    Refuse("reading it takes longer than " + std::to_string(m_limits.seconds) + " s");
  }
  [[noreturn]] void Refuse(const std::string& aReason) const {
    throw ModelError("cannot read " + m_path + ": " + aReason);
  }

  const ReadLimits m_limits;
  const std::string m_path;
  const Clock::time_point m_end;
  MemoryFile m_result, m_notes;
  Pipe m_progress;
  pid_t m_process = -1;
};

void Reader::Start() {
  std::array<std::string, kReaderArguments> texts = {"glview", kReaderCommand,
                                                     std::to_string(m_limits.mebibytes * kMebibyte),
                                                     std::to_string(m_limits.seconds), m_path};
  std::vector<char*> arguments;
  arguments.reserve(texts.size() + 1);
  for (std::string& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  auto environment = ReaderEnvironment();

  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&files, m_notes.Get(), STDERR_FILENO);
  posix_spawn_file_actions_adddup2(&files, m_result.Get(), kResultFile);
  posix_spawn_file_actions_adddup2(&files, m_progress.in.Get(), kProgressPipe);
  posix_spawn_file_actions_addclosefrom_np(&files, kFirstOther);
  const int failed =
      posix_spawn(&m_process, "/proc/self/exe", &files, nullptr, arguments.data(), environment.data());
  posix_spawn_file_actions_destroy(&files);
  m_progress.in.Close();
  if (failed != 0) {
    m_process = -1;
    Refuse(std::string("cannot start its reader process: ") + std::strerror(failed));
  }
}

void Reader::FollowProgress(const ReadProgress& aProgress) {
  constexpr int kPeriod = 50;  // ms between two checks for cancellation
  for (float share = 0;;) {
    pollfd wait{m_progress.out.Get(), POLLIN, 0};
    if (poll(&wait, 1, kPeriod) > 0) {
      std::array<float, 128> shares{};
      const ssize_t size = read(wait.fd, shares.data(), sizeof(shares));
      if (size <= 0) return;  // the reader has ended
      const auto count = static_cast<std::size_t>(size) / sizeof(float);
      if (count > 0) share = std::fmin(std::fmax(shares[count - 1], 0.0f), 1.0f);
    }
    if (aProgress) aProgress(share);
    RequireTime();
  }
}

int Reader::WaitForEnd() {
  int status = 0;
  while (waitpid(m_process, &status, WNOHANG) == 0) {
    RequireTime();
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  m_process = -1;
  return status;
}

void Reader::RequireModel(int aStatus) const {
  if (WIFSIGNALED(aStatus)) {
    if (WTERMSIG(aStatus) == SIGXCPU) RefuseForTime();
    Refuse("its reader was ended by signal " + std::to_string(WTERMSIG(aStatus)));
  }
  switch (WEXITSTATUS(aStatus)) {
    case kModelRead:
      return;
    case kModelRefused: {
      std::string reason = m_result.Text(kLongestReason);
      std::replace_if(
          reason.begin(), reason.end(), [](char aCharacter) { return aCharacter >= 0 && aCharacter < ' '; },
          ' ');
      throw ModelError(reason);
    }
    case kNoMemory:
      Refuse("reading it takes more than " + std::to_string(m_limits.mebibytes) + " MiB of memory");
    default:
      Refuse("its reader failed with status " + std::to_string(WEXITSTATUS(aStatus)));
  }
}

}  // namespace

Model LoadModelWithin(const ReadLimits& aLimits, const std::string& aPath, const ReadProgress& aProgress) {
  return Reader(Settle(aLimits, aPath), aPath).Take(aProgress);
}
