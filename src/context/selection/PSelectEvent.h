// PSelectEvent: the selections of one context, one after the other, by GL's selection mode.
// Made, begun and waited for by host threads in Select, run on the draw thread between two frames.

#pragma once

#include <gllib/GLPtr.h>
#include <gllib/IGLPainter.h>
#include <gllib/IGLViewer.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "context/scene/GLClipPlane.h"
#include "context/selection/KeptBuffer.h"
#include "thread/PEvent.h"

class GLContext;

/// Used again for the next selection, with its buffers: a selection like an earlier one allocates nothing.
/// The queue and the context each hold a reference, since either may go first.
class PSelectEvent final : public PEvent {
 public:
  /// What a caller of Select asks for. All pointers are the caller's, who waits; so is the viewer's
  /// reference.
  struct Request {
    IGLViewer* m_pViewer;
    GLDATA_POINT* m_pPoint1;
    GLDATA_POINT* m_pPoint2;
    bool m_bSelectClosest, m_bSelectEnclosed;
    int* m_piArraySize;
    ULONG* m_puIDArray;
  };

  explicit PSelectEvent(GLContext& aContext) noexcept;

  // Select, one caller at a time.
  /// Prepares a selection, to be posted once. @param aSelf keeps this object until Drop
  /// @return false where a queue still has the object
  bool Begin(const Request& aRequest, std::shared_ptr<PSelectEvent> aSelf) noexcept;
  /// Waits for the outcome, at most 10 ms. @return whether the selection has ended
  bool Wait() noexcept;
  /// E_GL_BADSTATE until the selection has ended, and where it was dropped before it ran.
  HRESULT Result() noexcept;

  /// Outcome: S_OK, or E_OUTOFMEMORY where a pass had no room for its records.
  void Run() override;
  /// Ends the selection, if Run did not.
  void Drop() noexcept override;

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
  void DrawScene(class CompiledLists& aLists) noexcept;
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
  void End(HRESULT aResult) noexcept;

  GLContext& m_Context;
  Request m_Request{};
  HRESULT m_hResult = S_OK;

  KeptBuffer<unsigned> m_Records;  // of GL's selection mode
  KeptBuffer<ULONG> m_Crossing;    // identifiers that cross an edge of the box

  // The scene of this run, taken under a brief m_Lock.
  GLPtr<IGLPainter> m_pPainter;
  std::vector<GLClipPlane> m_aClipPlanes;
  View m_View;
  int m_iWidth = 1, m_iHeight = 1;  // of the window

  std::mutex m_OutcomeLock;  // for the members below
  std::condition_variable m_Ended;
  bool m_bEnded = false;
  HRESULT m_hOutcome = E_GL_BADSTATE;
  std::shared_ptr<PSelectEvent> m_pQueued;  // this object, while a queue has it
};
