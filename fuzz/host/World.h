// World: the objects that the operations of one run share, in four places per interface. A place keeps the
// object stored last, which may belong to another context or to a context that has dropped it. Any thread.
// The lock of a place is held only while a pointer is copied.

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
  /// Stores an object. The previous object is released without the lock, since it may be the last reference
  /// to a context.
  void Put(std::size_t aIndex, GLPtr<Interface> aObject) noexcept {
    const std::scoped_lock lock(m_Lock);  // released before aObject is destroyed
    if (!m_bClosed) std::swap(m_Places[aIndex % m_Places.size()], aObject);
  }
  /// Releases all objects. Later Put calls release their object at once.
  void Close() noexcept {
    std::array<GLPtr<Interface>, 4> last;  // destroyed after the lock is released
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
    std::apply([](auto&... aPlaces) { (aPlaces.Close(), ...); }, m_Places);
  }

  // Images have no lock: one thread at a time may use them and the textures that draw them.
  std::recursive_mutex m_ImageLock;

  // Counts of objects; they limit the length of a run.
  std::atomic<int> m_iContexts{0}, m_iViewers{0}, m_iLights{0}, m_iFonts{0}, m_iOutlines{0};
  std::atomic<int> m_iList{0};  // the list compiled last

 private:
  std::tuple<Places<IGLContext>, Places<IGLViewer>, Places<IGLLight>, Places<IGLFog>, Places<IGLFont>,
             Places<IGLCoord>, Places<IGLDrawAttr>, Places<IGLMaterial>, Places<IGLCollection>,
             Places<IGLBitmap>, Places<IGLPixmap>, Places<IGLTexture1D>, Places<IGLTexture2D>,
             Places<IGLPainter>, Places<IGLViewerGauge>, Places<IGLCapture>>
      m_Places;
};
