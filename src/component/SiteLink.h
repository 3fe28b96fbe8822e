// GLSiteLink: the way from a part back to its context, cut when the context goes.
// Any thread. Shared by the context and all of its parts.

#pragma once

#include <memory>

#include "component/ContextSite.h"
#include "thread/PCriticalSection.h"

/// A back pointer that a context clears at its end, after which every part finds null.
class GLSiteLink {
 public:
  /// The context, for as long as this object stands: Clear waits for it. Not to be held across LockGL.
  class Use {
   public:
    explicit Use(GLSiteLink* aLink) noexcept : m_pLink(aLink) {
      if (m_pLink == nullptr) return;
      m_pLink->m_Lock.Enter();
      m_pSite = m_pLink->m_pSite;
    }
    ~Use() {
      if (m_pLink != nullptr) m_pLink->m_Lock.Leave();
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    explicit operator bool() const noexcept { return m_pSite != nullptr; }
    GLContextSite* operator->() const noexcept { return m_pSite; }
    GLContextSite& operator*() const noexcept { return *m_pSite; }

   private:
    GLSiteLink* m_pLink;
    GLContextSite* m_pSite = nullptr;
  };

  explicit GLSiteLink(GLContextSite* aSite) noexcept : m_pSite(aSite) {}

  /// The end of the context. Not with a lock held that a user of the link may want.
  void Clear() noexcept {
    const PLock lock(m_Lock);
    m_pSite = nullptr;
  }

 private:
  PCriticalSection m_Lock;
  GLContextSite* m_pSite;
};

using GLSiteLinkPtr = std::shared_ptr<GLSiteLink>;
