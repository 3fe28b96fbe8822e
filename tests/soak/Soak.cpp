// The soak: two hosts that stay and two places where hosts come and go, for as long as is asked.
// After a tenth of the time and at its end the guests are gone, and what the process then holds is compared.
// Frame times are told, and decide nothing.
//
//   soak [seconds]      120 without an argument

#include <malloc.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "soak/SoakHost.h"

namespace {

std::atomic<int> s_iFailures{0};

/// A place of a host: the thread that makes hosts there, one after the other, and lives their rounds.
class Place {
 public:
  explicit Place(bool aStays) : m_bStays(aStays), m_Thread([this] { Live(); }) {}
  ~Place() { m_Thread.join(); }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;

  void End() { m_bEnds = true; }
  long Frames() const { return m_iFrames; }
  int Hosts() const { return m_iHosts; }

 private:
  static constexpr int kRoundsOfAGuest = 50;

  void Live() {
    while (!m_bEnds) {
      SoakHost host;
      ++m_iHosts;
      for (int round = 0; !m_bEnds && (m_bStays || round < kRoundsOfAGuest); ++round) {
        if (!host.Round()) ++s_iFailures;
        if (m_bStays) m_iFrames = host.Frames();
      }
    }
  }

  const bool m_bStays;
  std::atomic<bool> m_bEnds{false};
  std::atomic<long> m_iFrames{0};
  std::atomic<int> m_iHosts{0};
  std::thread m_Thread;
};

/// What the process holds, and how often its hosts that stay have drawn.
struct Sample {
  double m_dAllocatedMegabytes = 0, m_dResidentMegabytes = 0;
  long m_iThreads = 0, m_iDescriptors = 0;
  double m_dMillisecondsAFrame = 0;
};

long EntriesOf(const char* aFolder) {
  return std::distance(std::filesystem::directory_iterator(aFolder), std::filesystem::directory_iterator());
}

constexpr double kMegabyte = 1024.0 * 1024.0;

/// What is allocated and not freed, the driver's included.
double AllocatedMegabytes() {
  const auto heap = mallinfo2();
  return static_cast<double>(heap.uordblks + heap.hblkhd) / kMegabyte;
}

double ResidentMegabytes() {
  malloc_trim(0);  // what has been freed is no longer held
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / kMegabyte;
}

/// Lives for a while beside guests. @return what is held once they are gone
Sample LiveWithGuests(const Place& aStaying, double aSeconds) {
  const auto start = std::chrono::steady_clock::now();
  const long before = aStaying.Frames();
  int guests = 0;
  Sample sample;
  {
    Place places[] = {Place(false), Place(false)};
    std::this_thread::sleep_for(std::chrono::duration<double>(aSeconds));
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    sample.m_dMillisecondsAFrame = took.count() / static_cast<double>(aStaying.Frames() - before);
    for (Place& place : places) {
      place.End();
      guests += place.Hosts();
    }
  }
  std::this_thread::sleep_for(std::chrono::seconds(1));  // what ended guests left to other threads is done
  sample.m_dAllocatedMegabytes = AllocatedMegabytes();
  sample.m_dResidentMegabytes = ResidentMegabytes();
  sample.m_iThreads = EntriesOf("/proc/self/task");
  sample.m_iDescriptors = EntriesOf("/proc/self/fd");
  std::printf(
      "%7.0f s, %4d guests: %.1f MiB allocated, %.1f resident, %ld threads, %ld descriptors, %.2f ms a "
      "frame\n",
      aSeconds, guests, sample.m_dAllocatedMegabytes, sample.m_dResidentMegabytes, sample.m_iThreads,
      sample.m_iDescriptors, sample.m_dMillisecondsAFrame);
  std::fflush(stdout);
  return sample;
}

int Compare(const char* aWhat, double aBefore, double aAfter) {
  constexpr double kAllowed = 1.05;
  if (aAfter <= aBefore * kAllowed) return 0;
  std::printf("FAILED: the %s grew from %g to %g\n", aWhat, aBefore, aAfter);
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const double seconds = argc > 1 ? std::atof(argv[1]) : 120.0;
  if (!(seconds >= 10.0)) {
    std::puts("usage: soak [seconds, 10 or more]");
    return 2;
  }
  setenv("GLLIB_DISPLAY", "headless", 1);
  mallopt(M_ARENA_MAX, 2);  // an arena a thread would blur what is held

  Place staying[] = {Place(true), Place(true)};
  const Sample first = LiveWithGuests(staying[0], seconds * 0.1);
  const Sample last = LiveWithGuests(staying[0], seconds * 0.9);
  for (Place& place : staying) place.End();

  const int failures = s_iFailures +
                       Compare("memory", first.m_dAllocatedMegabytes, last.m_dAllocatedMegabytes) +
                       Compare("number of threads", static_cast<double>(first.m_iThreads),
                               static_cast<double>(last.m_iThreads)) +
                       Compare("number of descriptors", static_cast<double>(first.m_iDescriptors),
                               static_cast<double>(last.m_iDescriptors));
  if (s_iFailures > 0) std::printf("FAILED: %d rounds\n", s_iFailures.load());
  std::printf("the time a frame went from %.2f to %.2f ms\n", first.m_dMillisecondsAFrame,
              last.m_dMillisecondsAFrame);
  return failures == 0 ? 0 : 1;
}
