// TestSite: the context as its parts see it, with the plain rendering context that is current on the thread.
// The test sets its results.

#pragma once

#include "component/GLContextSite.h"
#include "component/Module.h"
#include "platform/DeviceContext.h"
#include "platform/GL.h"
#include "thread/PEvent.h"

class TestSite final : public GLContextSite {
 public:
  ~TestSite() { ReleaseDC(nullptr, m_hDC); }

  int ViewportWidth() const noexcept override { return m_iWidth; }
  int ViewportHeight() const noexcept override { return m_iHeight; }
  bool HasClipPlanes() const noexcept override { return m_bClipPlanes; }
  HDC DeviceContext() const noexcept override { return m_hDC; }
  bool IsCurrentHere() const noexcept override { return true; }
  bool IsListOpen() const noexcept override { return m_bListOpen; }
  ULONG WindowContextNumber() const noexcept override { return 1; }
  void LockGL() noexcept override {}
  void UnlockGL() noexcept override {}
  ULONG GenListKey(int aCount) noexcept override { return g_uListGeneration << 16 | glGenLists(aCount); }
  ULONG BeginListKey() noexcept override { return m_uNextKey; }
  void EndListKey() noexcept override {}
  void CallListKey(ULONG aKey) noexcept override { m_uCalled = aKey; }
  ListRecorder* Recorder() noexcept override { return nullptr; }
  void MarkListUnbounded() noexcept override {}
  ULONG GetListBase(ULONG aKey) const noexcept override { return aKey & 0xFFFF; }
  void DeleteListKey(ULONG aKey, int aCount) noexcept override {
    if (IsOfThisGeneration(aKey)) glDeleteLists(aKey & 0xFFFF, aCount);
  }
  bool IsListKeyValid(ULONG aKey) const noexcept override {
    return aKey != 0 && IsOfThisGeneration(aKey) && glIsList(aKey & 0xFFFF) == GL_TRUE;
  }
  bool PostTask(PEvent* aTask) noexcept override {
    delete aTask;  // no thread runs it
    return false;
  }

  int m_iWidth = 800, m_iHeight = 400;
  bool m_bClipPlanes = false, m_bListOpen = false;
  ULONG m_uNextKey = 0xFFFF0007,
        m_uCalled = 0;  ///< keys: of the next compiled list, and of the last drawn one

 private:
  static bool IsOfThisGeneration(ULONG aKey) noexcept { return aKey >> 16 == (g_uListGeneration & 0xFFFF); }

  HDC m_hDC = GetDC(nullptr);
};
