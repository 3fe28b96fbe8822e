// GLContextSite: what the canvas, the fonts and the tasks may ask of the context that they belong to.
// GLContext implements it; which thread may call is told at each operation.

#pragma once

#include <gllib/GLPlatform.h>

#include "platform/DeviceContext.h"

class ListRecorder;
class PEvent;

/// A context as its parts see it.
class GLContextSite {
 public:
  // The viewport's size in pixels, never below 1; on the draw thread during a capture the picture's. Any
  // thread.
  virtual int ViewportWidth() const noexcept = 0;
  virtual int ViewportHeight() const noexcept = 0;
  /// Whether clip planes are in force. Any thread.
  virtual bool HasClipPlanes() const noexcept = 0;
  /// The device context of the GL window, null before there is one. Draw thread.
  virtual HDC DeviceContext() const noexcept = 0;
  /// Whether the calling thread is this context's draw thread inside a pass, with the rendering context of
  /// that pass current. Any thread.
  virtual bool IsCurrentHere() const noexcept = 0;
  /// Whether a display list is being compiled. With GL current.
  virtual bool IsListOpen() const noexcept = 0;
  /// Tells the window's rendering contexts apart: another number above 0 for each one that is made; 0 while
  /// it isn't the one that is current, as during an off-screen capture. Draw thread.
  virtual ULONG WindowContextNumber() const noexcept = 0;

  // The bracket around work that touches GL: enters and leaves the context's lock. On the draw thread between
  // two passes it makes a pass of the work; inside a pass it takes the lock and nothing else. See GLSiteLock.
  virtual void LockGL() noexcept = 0;
  virtual void UnlockGL() noexcept = 0;

  // List keys: generation in the high 16 bits, first GL list name in the low 16. They do nothing, and give 0,
  // where IsCurrentHere is false.
  virtual ULONG GenListKey(int aCount) noexcept = 0;
  virtual ULONG BeginListKey() noexcept = 0;
  virtual void EndListKey() noexcept = 0;
  virtual void CallListKey(ULONG aKey) noexcept = 0;
  /// What must see all that is compiled into the open list of BeginListKey; null while none is open.
  virtual ListRecorder* Recorder() noexcept = 0;
  /// Says that the open list, if there is one, gets content that its recorder does not see.
  virtual void MarkListUnbounded() noexcept = 0;
  /// The first GL list name of a key. Any thread.
  virtual ULONG GetListBase(ULONG aKey) const noexcept = 0;
  /// Deletes aCount lists from the key's first on, if the key is of the present generation.
  virtual void DeleteListKey(ULONG aKey, int aCount) noexcept = 0;
  virtual bool IsListKeyValid(ULONG aKey) const noexcept = 0;

  /// Hands a task to the draw thread, which owns it from then on; any thread.
  /// @return false when there is no draw thread yet: the task is then deleted
  virtual bool PostTask(PEvent* aTask) noexcept = 0;

 protected:
  ~GLContextSite() = default;
};

/// Holds the bracket around GL work for the length of a scope.
class GLSiteLock {
 public:
  explicit GLSiteLock(GLContextSite& aSite) noexcept : m_Site(aSite) { m_Site.LockGL(); }
  ~GLSiteLock() { m_Site.UnlockGL(); }
  GLSiteLock(const GLSiteLock&) = delete;
  GLSiteLock& operator=(const GLSiteLock&) = delete;

 private:
  GLContextSite& m_Site;
};
