// GLSiteLink: back pointer from a part to its context. The context clears it at its end.
// Any thread. The context and all of its parts share one link.

#pragma once

#include <memory>

#include "component/GLContextSite.h"
#include "thread/PCriticalSection.h"

/// A back pointer that is null after the context's end.
class GLSiteLink {
 public:
  /// Access to the context. Clear waits until this object is destroyed. Must not be held during LockGL.
  class Use {
   public:
    explicit Use(GLSiteLink* aLink) noexcept
        : m_Lock(aLink != nullptr ? &aLink->m_Lock : nullptr),
          m_pSite(aLink != nullptr ? aLink->m_pSite : nullptr) {}

    explicit operator bool() const noexcept { return m_pSite != nullptr; }
    GLContextSite* operator->() const noexcept { return m_pSite; }
    GLContextSite& operator*() const noexcept { return *m_pSite; }

   private:
    const PLock m_Lock;
    GLContextSite* const m_pSite;
  };

  explicit GLSiteLink(GLContextSite* aSite) noexcept : m_pSite(aSite) {}

  /// Clears the pointer, at the context's end. The caller must not hold a lock that a user of the link may
  /// need.
  void Clear() noexcept {
    const PLock lock(m_Lock);
    m_pSite = nullptr;
  }

 private:
  PCriticalSection m_Lock;
  GLContextSite* m_pSite;
};

using GLSiteLinkPtr = std::shared_ptr<GLSiteLink>;
