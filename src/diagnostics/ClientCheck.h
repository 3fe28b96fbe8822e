// ClientCheck: what a painter or gauge leaves in GL that it did not find there. Draw thread, with GL current.

#pragma once

#include <array>

#include "platform/Log.h"

/// Around one call of a client. Where warnings are logged, warns of stacks that the client leaves at another
/// depth and of a display list that it leaves open. Each is reported once per thread.
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
  using Depths = std::array<int, kStacks + 1>;  // and the name of the open list

  static void Read(Depths& aDepths) noexcept;
  void Report() const noexcept;

  const char* const m_szClient;
  Depths m_aiBefore;  // without a value where nothing is logged
};
