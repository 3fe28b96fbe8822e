// ClientSlot: holds one client object that a host attaches to a context, with one reference.
// Exchange and Get need the context's lock. Any thread may call IsEmpty and Holds.

#pragma once

#include <gllib/GLPtr.h>

#include <atomic>

template <class Client>
class ClientSlot {
 public:
  ClientSlot() noexcept = default;
  ClientSlot(const ClientSlot&) = delete;
  ClientSlot& operator=(const ClientSlot&) = delete;
  ~ClientSlot() { Exchange(nullptr); }

  /// Stores a client, which may be null.
  /// @return the previous client, with its reference
  GLPtr<Client> Exchange(Client* aClient) noexcept {
    if (aClient != nullptr) aClient->AddRef();
    return GLPtr<Client>::FromCounted(m_pClient.exchange(aClient));
  }
  /// Returns a new reference to the client; null if there is none.
  GLPtr<Client> Get() const noexcept { return GLPtr<Client>::FromBorrowed(m_pClient); }

  bool IsEmpty() const noexcept { return m_pClient == nullptr; }
  bool Holds(const Client* aClient) const noexcept { return m_pClient == aClient; }

 private:
  std::atomic<Client*> m_pClient{nullptr};
};
