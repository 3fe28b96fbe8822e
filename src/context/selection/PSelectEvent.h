// PSelectEvent: one selection, by GL's selection mode.
// Made and waited for by a host thread in Select, run on the draw thread between two frames.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLPainter.h>
#include <gllib/IGLViewer.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "context/scene/GLClipPlane.h"
#include "thread/PEvent.h"

class GLContext;

/// Where the waiting caller learns how its selection ended. Shared, since either side may go first.
class PSelectOutcome {
 public:
  /// Draw thread, or whoever ends the task unrun. The first word stands.
  void Set(HRESULT aResult) noexcept;
  /// Waits for the outcome, at most 10 ms. @return whether it stands
  bool Wait() noexcept;
  /// E_GL_BADSTATE until it stands.
  HRESULT Result() noexcept;

 private:
  std::mutex m_Lock;
  std::condition_variable m_Changed;
  bool m_bDone = false;
  HRESULT m_hResult = E_GL_BADSTATE;
};

class PSelectEvent final : public PEvent {
 public:
  /// All pointers are the caller's, who waits; the viewer is counted by the caller.
  PSelectEvent(GLContext& aContext, IGLViewer& aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2,
               bool aSelectClosest, bool aSelectEnclosed, int* aArraySize, ULONG* aIDArray,
               std::shared_ptr<PSelectOutcome> aOutcome) noexcept;
  /// Tells the caller, if nothing else did.
  ~PSelectEvent() override;

  /// Outcome: S_OK, or E_OUTOFMEMORY where a pass had no room for its records.
  void Run() override;

 private:
  struct ViewRectangle {
    int x, y, width, height;
  };
  /// The viewer as it is when the selection begins: a painter that changes it during one pass must not change
  /// what the next pass of the same selection sees.
  struct View {
    ViewRectangle m_Clip{};  ///< of a clipped viewer
    bool m_bClipped = false, m_bScaled = false, m_bOrtho = false;
    GLDATA_POINT m_sLow{}, m_sHigh{};  ///< parallel extents
    double m_dFovy = 0, m_dAspect = 0, m_dNear = 0, m_dFar = 0;
    GLDATA_MATRIX6D m_sEye{};
  };

  // RunPickPass and its steps: PSelectEventPass.cpp.
  void RunPickPass(const GLDATA_POINT& aPoint1, const GLDATA_POINT& aPoint2, int* aArraySize,
                   ULONG* aIDArray) noexcept;
  void ReadView() noexcept;
  ViewRectangle SetupView() const noexcept;
  static void SetupPickMatrix(const ViewRectangle& aView, const GLDATA_POINT& aPoint1,
                              const GLDATA_POINT& aPoint2) noexcept;
  void SetupProjection(double aAspect) const noexcept;
  void SetupClipPlanes() const noexcept;
  int ReadHits(int aHits, const unsigned* aRecords, int aCapacity, ULONG* aIDArray) const noexcept;

  void KeepEnclosed(int aCapacity, ULONG* aScratch) noexcept;
  void SubtractStrip(int aCapacity, ULONG* aScratch, const GLDATA_POINT& aPoint1,
                     const GLDATA_POINT& aPoint2) noexcept;
  void TakeScene() noexcept;

  GLContext& m_Context;
  IGLViewer& m_Viewer;
  GLDATA_POINT* m_pPoint1;
  GLDATA_POINT* m_pPoint2;
  bool m_bSelectClosest;
  bool m_bSelectEnclosed;
  int* m_piArraySize;
  ULONG* m_puIDArray;
  HRESULT m_hResult = S_OK;

  // The scene of this run, taken under a brief m_Lock.
  GLPtr<IGLPainter> m_pPainter;
  std::vector<GLClipPlane> m_aClipPlanes;
  View m_View;
  int m_iWidth = 1, m_iHeight = 1;  // of the window

  const std::shared_ptr<PSelectOutcome> m_pOutcome;
};
