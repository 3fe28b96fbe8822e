// PSelectEvent: runs the selections of one context, one at a time, with GL's selection mode.
// Host threads create it, begin selections and wait for them in Select. The draw thread runs them between two
// frames.

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
#include "view/ViewSetup.h"

class GLContext;

/// The object and its buffers are reused, so that a selection of the same size as an earlier one allocates no
/// memory. The queue and the context each hold a reference, since either may be released first.
class PSelectEvent final : public PEvent {
 public:
  /// Arguments of Select. The waiting caller owns all objects that the pointers refer to, including the
  /// reference to the viewer.
  struct Request {
    IGLViewer* m_pViewer;
    GLDATA_POINT* m_pPoint1;
    GLDATA_POINT* m_pPoint2;
    bool m_bSelectClosest, m_bSelectEnclosed;
    int* m_piArraySize;
    ULONG* m_puIDArray;
  };

  explicit PSelectEvent(GLContext& aContext) noexcept;

  // Called in Select, by one thread at a time.

  /// Prepares a selection. The caller then posts the event once.
  /// @param aSelf keeps this object alive until Drop
  /// @return false if a queue still has the object
  bool Begin(const Request& aRequest, std::shared_ptr<PSelectEvent> aSelf) noexcept;
  /// Waits at most 10 ms for the result.
  /// @return whether the selection has ended
  bool Wait() noexcept;
  /// Returns the result of the selection; E_GL_BADSTATE before its end, and if it was dropped before it ran.
  HRESULT Result() noexcept;

  /// Runs the selection. Its result is S_OK, or E_OUTOFMEMORY if there was no memory for the records of a
  /// pass.
  void Run() override;
  /// Ends the selection with E_GL_BADSTATE, unless Run has ended it.
  void Drop() noexcept override;

 private:
  // RunPickPass and its steps: PSelectEventPass.cpp.
  void RunPickPass(const GLDATA_POINT& aPoint1, const GLDATA_POINT& aPoint2, int* aArraySize,
                   ULONG* aIDArray) noexcept;
  void DrawScene(class CompiledLists& aLists) noexcept;
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

  KeptBuffer<unsigned> m_Records;  // for GL's selection mode
  KeptBuffer<ULONG> m_Crossing;    // identifiers that cross an edge of the box

  // The scene of this selection, copied under m_Lock.
  GLPtr<IGLPainter> m_pPainter;
  std::vector<GLClipPlane> m_aClipPlanes;
  ViewSetup m_Setup;  // all passes use it, also if the painter changes the viewer meanwhile

  std::mutex m_OutcomeLock;  // guards the members below
  std::condition_variable m_Ended;
  bool m_bEnded = false;
  HRESULT m_hOutcome = E_GL_BADSTATE;
  std::shared_ptr<PSelectEvent> m_pQueued;  // this object while a queue has it
};
