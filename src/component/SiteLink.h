// GLSiteLink: the way from a part back to its context, cut when the context goes.
// Any thread. Shared by the context and all of its parts.

#pragma once

#include <memory>
#include <mutex>

#include "component/ContextSite.h"

/// A back pointer that a context clears at its end, after which every part finds null.
class GLSiteLink {
 public:
  /// The context, for as long as this object stands: Clear waits for it. Not to be held across LockGL.
  class Use {
   public:
    explicit Use(GLSiteLink* aLink) noexcept {
      if (aLink == nullptr) return;
      m_Hold = std::unique_lock(aLink->m_Lock);
      m_pSite = aLink->m_pSite;
    }
    explicit operator bool() const noexcept { return m_pSite != nullptr; }
    GLContextSite* operator->() const noexcept { return m_pSite; }
    GLContextSite& operator*() const noexcept { return *m_pSite; }

   private:
    std::unique_lock<std::recursive_mutex> m_Hold;
    GLContextSite* m_pSite = nullptr;
  };

  explicit GLSiteLink(GLContextSite* aSite) noexcept : m_pSite(aSite) {}

  /// The end of the context. Not with a lock held that a user of the link may want.
  void Clear() noexcept {
    const std::scoped_lock lock(m_Lock);
    m_pSite = nullptr;
  }

 private:
  std::recursive_mutex m_Lock;
  GLContextSite* m_pSite;
};

using GLSiteLinkPtr = std::shared_ptr<GLSiteLink>;
