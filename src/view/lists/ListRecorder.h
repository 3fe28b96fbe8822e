// ListRecorder: follows what a canvas compiles into a display list, divides the list into runs and notes
// their bounds. Draw thread, with GL current.
//
// The host's list becomes the first run. If more runs follow, a list that calls all of them is drawn in its
// place. A run ends after a primitive, or between two primitives of one BeginDraw: hosts must not mix the
// canvas's vertices with their own glVertex calls inside one BeginDraw.

#pragma once

#include <gllib/GLPlatform.h>

#include <cstdint>
#include <memory>

#include "platform/GL.h"
#include "view/lists/CompiledList.h"

class ListRecorder {
 public:
  bool IsRecording() const noexcept { return m_pList != nullptr; }
  /// Whether the display list that the recorder opened is still the open one.
  bool IsOpen() const noexcept;

  /// Begins with a list that glNewList has opened. Without memory it records nothing.
  void Start(unsigned aList) noexcept;
  /// Ends the open list and makes the one that calls the runs.
  /// @return the list, if it has several runs or bounds; else null
  std::unique_ptr<CompiledList> Finish() noexcept;
  /// Forgets the list: it is gone with its rendering context.
  void Cancel() noexcept { m_pList.reset(); }

  // What the canvas compiles, before GL gets it where nothing else is said.
  void Begin(GLenum aMode) noexcept;
  void End() noexcept;  ///< after GL has it
  /// After GL has it.
  void Vertex(float aX, float aY, float aZ) noexcept {
    m_Box.Add(aX, aY, aZ);
    m_fFinite += (aX + aY + aZ) * 0.0f;
    if (++m_uVertices >= m_uSlowFrom) VertexSlow();
  }
  void Name(ULONG aName) noexcept;
  /// A change of state that decides about hits; after GL has it.
  void State(const HitState& aState) noexcept;
  /// A nested list. @param aList its name @param aWhole what draws it
  void Call(unsigned aList, unsigned aWhole) noexcept;
  /// Something that has no bounds, or that changes what the bounds mean: the list is drawn whole.
  void Unbounded() noexcept;

 private:
  void KeepApart(GLenum aMode) noexcept;
  void VertexSlow() noexcept;
  bool PrepareSplit() noexcept;
  void Split() noexcept;
  void CloseRun() noexcept;
  void CloseSegment(unsigned aCalled) noexcept;
  void MakeWhole() const noexcept;
  unsigned TakeName() noexcept;

  // Names of runs: no list key holds them.
  static constexpr unsigned kFirstName = 0x10000, kLastName = 0x3FFFFFFF;

  std::unique_ptr<CompiledList> m_pList;
  unsigned m_uRun = 0;                // the display list that is open
  unsigned m_uNextName = kFirstName;  // the last that was taken
  ListRun m_Now;                      // names and state so far
  ListRun m_Start;                    // those at the start of the run
  Box m_Box;
  float m_fFinite = 0;  // not 0 after a vertex that is not finite
  std::uint32_t m_uVertices = 0;
  std::uint32_t m_uSlowFrom = 0;        // number of vertices from which a vertex may end the run
  std::uint32_t m_uPrimitiveStart = 0;  // vertices of the run before the present Begin
  GLenum m_uMode = 0;                   // of the last Begin
  bool m_bMayMerge = false;             // a primitive precedes in the run
  bool m_bMesa = false;
  bool m_bInside = false;  // between Begin and End
  bool m_bNamed = false;   // the run contains an identifier
  bool m_bBounded = true;
};
