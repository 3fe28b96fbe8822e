// ClientSlot: the place of a client object that a host attaches to a context, with one reference.
// Changed and counted under the context's lock; the questions on any thread.

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

  /// Takes a client in, or null for none. @return the one before, whose reference the caller now holds
  GLPtr<Client> Exchange(Client* aClient) noexcept {
    if (aClient != nullptr) aClient->AddRef();
    return GLPtr<Client>::FromCounted(m_pClient.exchange(aClient));
  }
  /// A further reference to the client; null for none.
  GLPtr<Client> Get() const noexcept { return GLPtr<Client>::FromBorrowed(m_pClient); }

  bool IsEmpty() const noexcept { return m_pClient == nullptr; }
  bool Holds(const Client* aClient) const noexcept { return m_pClient == aClient; }

 private:
  std::atomic<Client*> m_pClient{nullptr};
};
