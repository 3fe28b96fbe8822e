// FirstReport: the reports made so far. Each thread has a separate list.

#include "diagnostics/FirstReport.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

struct Report {
  const char* m_szOperation;
  unsigned m_uCode;
  friend bool operator==(const Report&, const Report&) = default;
};

thread_local std::array<Report, 64> t_aReports{};
thread_local std::size_t t_uReports = 0;

}  // namespace

bool IsFirstReport(const char* aOperation, unsigned aCode) noexcept {
  const Report report{aOperation, aCode};
  const auto end = t_aReports.begin() + static_cast<std::ptrdiff_t>(t_uReports);
  if (end == t_aReports.end() || std::find(t_aReports.begin(), end, report) != end) return false;
  t_aReports[t_uReports++] = report;
  return true;
}
