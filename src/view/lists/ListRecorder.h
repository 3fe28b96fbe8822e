// ListRecorder: records the commands that a canvas compiles into a display list, divides the list into runs
// and stores their bounds. Draw thread, with GL current.
//
// The host's list becomes the first run. If there are more runs, a list that calls all of them is drawn
// instead. A run ends after a primitive, or between two primitives of one BeginDraw. So hosts must not mix
// the canvas's vertices with their own glVertex calls inside one BeginDraw.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstdint>
#include <memory>

#include "platform/GL.h"
#include "view/lists/CompiledList.h"

class ListRecorder {
 public:
  bool IsRecording() const noexcept { return m_pList != nullptr; }
  /// Returns whether the display list that the recorder opened is still open.
  bool IsOpen() const noexcept;

  /// Starts recording a list that glNewList has opened. Records nothing if memory is insufficient.
  void Start(unsigned aList) noexcept;
  /// Ends the open list and compiles the list that calls the runs.
  /// @return the list if it has several runs or bounds; otherwise null
  std::unique_ptr<CompiledList> Finish() noexcept;
  /// Discards the list after its rendering context was destroyed.
  void Cancel() noexcept { m_pList.reset(); }

  // Commands that the canvas compiles. Called before the GL command, except where noted.
  void Begin(GLenum aMode) noexcept;
  void End() noexcept;  ///< called after the GL command
  /// Called after the GL command.
  void Vertex(float aX, float aY, float aZ) noexcept {
    m_Box.Add(aX, aY, aZ);
    m_fFinite += (aX + aY + aZ) * 0.0f;
    if (++m_uVertices >= m_uSlowFrom) VertexSlow();
  }
  void Name(ULONG aName) noexcept;
  /// Records a change of the hit state. Called after the GL command.
  void State(const HitState& aState) noexcept;
  /// Compiles the call of a nested list.
  /// @param aList  name of the nested list
  /// @param aWhole list that draws it
  void Call(unsigned aList, unsigned aWhole) noexcept;
  /// Records a command without bounds, or one that changes the meaning of the bounds. The list is drawn
  /// whole.
  void Unbounded() noexcept;

 private:
  void KeepApart(GLenum aMode) noexcept;
  bool StaysAlone() const noexcept;
  void VertexSlow() noexcept;
  std::uint32_t LongestPrimitives() const noexcept;
  bool PrepareSplit() noexcept;
  void Split() noexcept;
  void CloseRun() noexcept;
  void CloseSegment(unsigned aCalled) noexcept;
  void MakeWhole() const noexcept;
  unsigned TakeName() noexcept;

  // Names of runs. They do not fit a list key.
  static constexpr unsigned kFirstName = 0x10000, kLastName = 0x3FFFFFFF;

  std::unique_ptr<CompiledList> m_pList;
  unsigned m_uRun = 0;                // display list that is open
  unsigned m_uNextName = kFirstName;  // last name that was taken
  ListRun m_Now;                      // current names and state
  ListRun m_Start;                    // names and state at the start of the run
  Box m_Box;
  float m_fFinite = 0;  // not 0 after a vertex that is not finite
  std::uint32_t m_uVertices = 0;
  std::uint32_t m_uSlowFrom = 0;        // vertex count from which the run may end
  std::uint32_t m_uPrimitiveStart = 0;  // vertices of the run before the current Begin
  GLenum m_uMode = 0;                   // mode of the last Begin
  bool m_bMayMerge = false;             // the run contains an earlier primitive
  bool m_bMesa = false;
  bool m_bInside = false;     // between Begin and End
  bool m_bContinues = false;  // the run began between Begin and End
  bool m_bNamed = false;      // the run contains an identifier
  bool m_bCulls = false;      // the run enables culling
  bool m_bBounded = true;
};
