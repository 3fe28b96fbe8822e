// ReaderChild: the reader's side of ReaderProcess. It limits its own resources, reads one model and writes it
// to a file in memory. Runs on the only thread of its process.

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <fstream>
#include <new>
#include <string_view>
#include <vector>

#include "glview/ReaderProcess.h"
#include "glview/ReaderProtocol.h"
#include "shared/model/ModelBytes.h"

namespace {

[[noreturn]] void LeaveWithoutMemory() { _exit(kNoMemory); }

/// Returns the address space in use. With a sanitizer it is far larger than the memory.
std::uint64_t AddressSpace() {
  std::uint64_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

template <class Resource>
void Limit(Resource aResource, std::uint64_t aMost) {
  const rlimit limit{aMost, aMost};
  setrlimit(aResource, &limit);
}

/// Limits memory and time of the process. The memory limit does not include what the program uses already.
void LimitSelf(std::uint64_t aBytes, std::uint64_t aSeconds) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);  // the reader ends with the viewer's thread that waits for it
  pollfd viewer{kProgressPipe, 0, 0};
  if (poll(&viewer, 1, 0) > 0) _exit(kModelRefused);  // the viewer has ended before prctl
  std::signal(SIGXFSZ, SIG_IGN);                      // a write beyond the limit returns an error instead
  Limit(RLIMIT_CORE, 0);
  Limit(RLIMIT_CPU, aSeconds + 1);  // the viewer's timeout comes first
  Limit(RLIMIT_FSIZE, aBytes);
  Limit(RLIMIT_AS, AddressSpace() + aBytes);
  std::set_new_handler(&LeaveWithoutMemory);
}

bool WriteAll(int aFile, const void* aBytes, std::size_t aSize) {
  const char* at = static_cast<const char*>(aBytes);
  while (aSize > 0) {
    const ssize_t written = write(aFile, at, aSize);
    if (written <= 0) return false;
    at += written;
    aSize -= static_cast<std::size_t>(written);
  }
  return true;
}

/// Buffers small writes; large ones go directly to the file.
class ResultFile {
 public:
  void Put(const void* aBytes, std::size_t aSize) {
    constexpr std::size_t kLargest = 1 << 16;
    if (m_waiting.size() + aSize > kLargest) Flush();
    const auto* bytes = static_cast<const char*>(aBytes);
    if (aSize > kLargest) {
      Write(aBytes, aSize);
    } else {
      m_waiting.insert(m_waiting.end(), bytes, bytes + aSize);
    }
  }
  void Flush() {
    Write(m_waiting.data(), m_waiting.size());
    m_waiting.clear();
  }

 private:
  static void Write(const void* aBytes, std::size_t aSize) {
    if (!WriteAll(kResultFile, aBytes, aSize)) LeaveWithoutMemory();
  }

  std::vector<char> m_waiting;
};

/// Reports the progress to the viewer, in steps of one percent.
class ShareReport {
 public:
  void operator()(float aShare) {
    if (aShare < m_reported + 0.01f) return;
    m_reported = aShare;
    if (!WriteAll(kProgressPipe, &aShare, sizeof(aShare))) _exit(kModelRefused);  // the viewer has ended
  }

 private:
  float m_reported = 0;
};

int Refuse(std::string_view aReason) {
  WriteAll(kResultFile, aReason.data(), std::min(aReason.size(), kLongestReason));
  return kModelRefused;
}

int Read(const std::string& aPath) {
  try {
    const Model model = LoadModel(aPath, ShareReport());
    ResultFile file;
    WriteModel(model, [&](const void* aBytes, std::size_t aSize) { file.Put(aBytes, aSize); });
    file.Flush();
    _exit(kModelRead);  // skips the destructors of the model
  } catch (const ModelError& error) {
    return Refuse(error.what());
  } catch (const std::exception& error) {
    return Refuse("cannot read " + aPath + ": " + error.what());
  }
}

}  // namespace

void RunReader(int argc, const char* const* argv) {
  if (argc != kReaderArguments || std::string_view(argv[1]) != kReaderCommand) return;
  const auto number = [](std::string_view aText) {
    std::uint64_t value = 0;
    std::from_chars(aText.data(), aText.data() + aText.size(), value);
    return value;
  };
  LimitSelf(number(argv[2]), number(argv[3]));
  _exit(Read(argv[4]));
}
