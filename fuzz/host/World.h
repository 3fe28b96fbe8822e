// World: all objects that the operations of one run share, in four places for each interface. A place keeps
// what was put there last, so it may hold a part of another context, or one that its context has given up.
// Any thread; a place's lock is held for the copy of a pointer alone.

#pragma once

#include <gllib/GLLibHost.h>

#include <array>
#include <atomic>
#include <mutex>
#include <tuple>

template <class Interface>
class Places {
 public:
  GLPtr<Interface> At(std::size_t aIndex) noexcept {
    const std::scoped_lock lock(m_Lock);
    return m_Places[aIndex % m_Places.size()];
  }
  /// What stood there goes with no lock held: it may be the last reference to a context.
  void Put(std::size_t aIndex, GLPtr<Interface> aObject) noexcept {
    const std::scoped_lock lock(m_Lock);  // ends before aObject does
    if (!m_bClosed) std::swap(m_Places[aIndex % m_Places.size()], aObject);
  }
  /// Gives up everything; what is put there from now on goes at once.
  void Close() noexcept {
    std::array<GLPtr<Interface>, 4> last;  // outlives the lock
    const std::scoped_lock lock(m_Lock);
    m_bClosed = true;
    last.swap(m_Places);
  }

 private:
  std::mutex m_Lock;
  bool m_bClosed = false;
  std::array<GLPtr<Interface>, 4> m_Places;
};

class World {
 public:
  template <class Interface>
  Places<Interface>& Of() noexcept {
    return std::get<Places<Interface>>(m_Places);
  }
  void Close() noexcept {
    std::apply([](auto&... places) { (places.Close(), ...); }, m_Places);
  }

  // Images have no lock of their own: they serve one thread at a time, and so does what draws them.
  std::recursive_mutex m_ImageLock;

  // What is counted, to keep a run short.
  std::atomic<int> m_iContexts{0}, m_iViewers{0}, m_iLights{0}, m_iFonts{0}, m_iOutlines{0};
  std::atomic<int> m_iList{0};  // compiled last

 private:
  std::tuple<Places<IGLContext>, Places<IGLViewer>, Places<IGLLight>, Places<IGLFog>, Places<IGLFont>,
             Places<IGLCoord>, Places<IGLDrawAttr>, Places<IGLMaterial>, Places<IGLCollection>,
             Places<IGLBitmap>, Places<IGLPixmap>, Places<IGLTexture1D>, Places<IGLTexture2D>,
             Places<IGLPainter>, Places<IGLViewerGauge>, Places<IGLCapture>>
      m_Places;
};
