// GLContextSite: the interface of a context to its canvas, fonts and tasks.
// GLContext implements it. Each operation documents which threads may call it.

#pragma once

#include <gllib/GLPlatform.h>

#include "platform/DeviceContext.h"

class ListRecorder;
class PEvent;

/// A context as seen by its parts.
class GLContextSite {
 public:
  // Size of the viewport in pixels, at least 1. On the draw thread during a capture: size of the picture. Any
  // thread.
  virtual int ViewportWidth() const noexcept = 0;
  virtual int ViewportHeight() const noexcept = 0;
  /// Returns whether there are clip planes. Any thread.
  virtual bool HasClipPlanes() const noexcept = 0;
  /// Returns the device context of the GL window; null before the window exists. Draw thread.
  virtual HDC DeviceContext() const noexcept = 0;
  /// Returns whether the calling thread is this context's draw thread inside a pass, with the rendering
  /// context of that pass current. Any thread.
  virtual bool IsCurrentHere() const noexcept = 0;
  /// Returns whether a display list is being compiled. With GL current.
  virtual bool IsListOpen() const noexcept = 0;
  /// Returns a number above 0 that identifies the current rendering context of the window. Each new one has a
  /// new number. Returns 0 if another rendering context is current, for example during an off-screen capture.
  /// Draw thread.
  virtual ULONG WindowContextNumber() const noexcept = 0;

  // Enter and leave the context's lock, around work that needs GL. On the draw thread between two passes,
  // they also make this work a pass. Inside a pass they only take the lock. See GLSiteLock.
  virtual void LockGL() noexcept = 0;
  virtual void UnlockGL() noexcept = 0;

  // List keys: generation in the high 16 bits, first GL list name in the low 16 bits. Where IsCurrentHere is
  // false, these operations do nothing and return 0.
  virtual ULONG GenListKey(int aCount) noexcept = 0;
  virtual ULONG BeginListKey() noexcept = 0;
  virtual void EndListKey() noexcept = 0;
  virtual void CallListKey(ULONG aKey) noexcept = 0;
  /// Returns the recorder of the open list of BeginListKey; null if no list is open. Callers report
  /// everything that they compile to it.
  virtual ListRecorder* Recorder() noexcept = 0;
  /// Marks the open list, if any, as containing commands that its recorder does not see.
  virtual void MarkListUnbounded() noexcept = 0;
  /// Returns the first GL list name of a key. Any thread.
  virtual ULONG GetListBase(ULONG aKey) const noexcept = 0;
  /// Deletes aCount lists, starting with the key's first one, if the key is of the current generation.
  virtual void DeleteListKey(ULONG aKey, int aCount) noexcept = 0;
  virtual bool IsListKeyValid(ULONG aKey) const noexcept = 0;

  /// Passes a task to the draw thread, which owns it from then on. Any thread.
  /// @return false if there is no draw thread, the thread has stopped, or memory is insufficient; the task is
  ///         then dropped
  virtual bool PostTask(PEvent* aTask) noexcept = 0;

 protected:
  ~GLContextSite() = default;
};

/// Calls LockGL and UnlockGL around a scope.
class GLSiteLock {
 public:
  explicit GLSiteLock(GLContextSite& aSite) noexcept : m_Site(aSite) { m_Site.LockGL(); }
  ~GLSiteLock() { m_Site.UnlockGL(); }
  GLSiteLock(const GLSiteLock&) = delete;
  GLSiteLock& operator=(const GLSiteLock&) = delete;

 private:
  GLContextSite& m_Site;
};
