// ClientCheck: detects GL stack depths and open display lists that a painter or gauge leaves changed. Draw
// thread, with GL current.

#pragma once

#include <array>

#include "platform/Log.h"

/// Exists during one call of a client. If warnings are logged, it compares GL before and after the call. It
/// reports changed stack depths and a display list that is left open. Each fault is reported once per thread.
class ClientCheck {
 public:
  explicit ClientCheck(const char* aClient) noexcept
      : m_szClient(IsLogged(LogLevel::kWarning) ? aClient : nullptr) {
    if (m_szClient != nullptr) Read(m_aiBefore);
  }
  ~ClientCheck() {
    if (m_szClient != nullptr) Report();
  }
  ClientCheck(const ClientCheck&) = delete;
  ClientCheck& operator=(const ClientCheck&) = delete;

 private:
  static constexpr int kStacks = 6;
  using Depths = std::array<int, kStacks + 1>;  // the last element is the name of the open list

  static void Read(Depths& aDepths) noexcept;
  void Report() const noexcept;

  const char* const m_szClient;
  Depths m_aiBefore{};  // 0 if warnings are not logged
};
