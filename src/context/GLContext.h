// GLContext: the GL window, its rendering context, the draw thread, and the scene of a frame.
// Hosts call the interfaces from any thread. Frames, selections and captures run on the draw thread.
// The .cpp files are in one folder per topic: window, frame, selection, capture, lists, control, scene.

#pragma once

#include <gllib/IGLCapture.h>
#include <gllib/IGLContext.h>
#include <gllib/IGLPainter.h>
#include <gllib/IGLViewer.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

#include "component/GLContextSite.h"
#include "component/GLObject.h"
#include "component/GLSiteLink.h"
#include "context/control/ClientSlot.h"
#include "context/frame/GLPass.h"
#include "context/scene/ClipPlanes.h"
#include "context/scene/SceneMembers.h"
#include "context/scene/SceneSettings.h"
#include "context/selection/PSelectEvent.h"
#include "context/window/WindowState.h"
#include "platform/ProcessIdentity.h"
#include "platform/SystemInfo.h"
#include "thread/PCriticalSection.h"
#include "thread/PThread.h"
#include "thread/Relaxed.h"

/// Platform version, queried at the first capture. A size of 0 means not queried yet.
extern OSVERSIONINFOA g_sVersion;

class GLContext final
    : public GLObject<GLContext, IGLContext, IGLContext2, IGLContext12, IGLContext14_2, IGLContext14_3>,
      public GLContextSite {
 public:
  GLContext();
  ~GLContext();

  /// Runs the destructor on the calling thread. If that is a draw thread, runs it on a new thread instead.
  void FinalRelease() noexcept;

  // IGLContext
  HRESULT Initialize(ULONG_PTR aParentWnd) noexcept override;
  HRESULT GetWindow(ULONG_PTR* aHandle) noexcept override;
  HRESULT EnableDepth(LONG aEnable) noexcept override;
  HRESULT IsDepthEnabled(LONG* aEnable) noexcept override;
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetBackgroundColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT GetDrawThreadPars(int* aPriority, ULONG* aPreferredCycle, ULONG* aMustSleepCycle) noexcept override;
  HRESULT SetDrawThreadPars(int aPriority, ULONG aPreferredCycle, ULONG aMustSleepCycle) noexcept override;
  HRESULT AttachPainter(IGLPainter* aPainter) noexcept override;
  HRESULT DetachPainter() noexcept override;
  HRESULT AttachCapture(IGLCapture* aCapture) noexcept override;
  HRESULT DetachCapture() noexcept override;
  HRESULT GetViewportWidth(int* aValue) noexcept override;
  HRESULT GetViewportHeight(int* aValue) noexcept override;
  HRESULT SetViewport(int aX, int aY, int aWidth, int aHeight) noexcept override;
  HRESULT DeviceToSCS(int aWinX, int aWinY, double* aScsX, double* aScsY) noexcept override;
  HRESULT SCSToDevice(double aScsX, double aScsY, int* aWinX, int* aWinY) noexcept override;
  HRESULT CreateViewer(LONG aShow, LONG aOrtho, IGLViewer** aI) noexcept override;
  HRESULT DestroyViewer(IGLViewer* aI) noexcept override;
  HRESULT EnumViewers(IGLCollection* aColl) noexcept override;
  HRESULT ClipPlane(GLDATA_POINT* aPntA, GLDATA_POINT* aPntB, GLDATA_POINT* aPntC) noexcept override;
  HRESULT ResetClipPlanes() noexcept override;
  HRESULT EnableLighting(LONG aEnable) noexcept override;
  HRESULT IsLightingEnabled(LONG* aEnabled) noexcept override;
  HRESULT EnableAmbientLight(LONG aEnable) noexcept override;
  HRESULT IsAmbientLightEnabled(LONG* aEnabled) noexcept override;
  HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept override;
  HRESULT CreateLight(IGLLight** aLight) noexcept override;
  HRESULT DestroyLight(IGLLight* aLight) noexcept override;
  HRESULT EnumLights(IGLCollection* aColl) noexcept override;
  HRESULT GetFog(IGLFog** aFog) noexcept override;
  HRESULT CreateSystemFont(IGLFont** aFont) noexcept override;
  HRESULT CreateRasterFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, int aHeight,
                           int aWidth, IGLFont** aFont) noexcept override;
  HRESULT CreateTrueTypeFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, LONG aExtrusionZ,
                             IGLFont** aFont) noexcept override;
  HRESULT DestroyFont(IGLFont* aFont) noexcept override;
  HRESULT GetDefaultFont(IGLFont** aFont) noexcept override;
  HRESULT SetDefaultFont(IGLFont* aFont) noexcept override;
  HRESULT EnumFonts(IGLCollection* aColl) noexcept override;
  HRESULT Select(IGLViewer* aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2, LONG aSelectClosest,
                 LONG aSelectEnclosed, int* aArraySize, ULONG* aIDArray) noexcept override;

  // IGLContext2
  HRESULT SetControlledDrawThread(LONG bControlled, ULONG dwMaxWait) noexcept override;
  HRESULT TriggerDrawThread() noexcept override;
  HRESULT CreateInternalFont(BSTR aFace, IGLFont** aFont) noexcept override;

  // IGLContext12
  HRESULT SuspendDrawThread() noexcept override;
  HRESULT ResumeDrawThread() noexcept override;

  // IGLContext14_2
  HRESULT GetCanvas(IGLCanvas** ppICanvas) noexcept override;

  // IGLContext14_3
  HRESULT get_bFSAA(LONG* pVal) noexcept override;
  HRESULT put_bFSAA(LONG newVal) noexcept override;
  HRESULT get_lFSAAMaxSamples(LONG* pVal) noexcept override;
  HRESULT put_lFSAAMaxSamples(LONG newVal) noexcept override;

  // GLContextSite
  int ViewportWidth() const noexcept override;
  int ViewportHeight() const noexcept override;
  bool HasClipPlanes() const noexcept override { return !m_ClipPlanes.IsEmpty(); }
  HDC DeviceContext() const noexcept override { return m_Window.m_Target.m_hDC; }
  bool IsCurrentHere() const noexcept override;
  bool IsListOpen() const noexcept override;
  ULONG WindowContextNumber() const noexcept override;
  void LockGL() noexcept override;
  void UnlockGL() noexcept override;
  ULONG GenListKey(int aCount) noexcept override;
  ULONG BeginListKey() noexcept override;
  void EndListKey() noexcept override;
  void CallListKey(ULONG aKey) noexcept override;
  ListRecorder* Recorder() noexcept override;
  void MarkListUnbounded() noexcept override;
  ULONG GetListBase(ULONG aKey) const noexcept override;
  void DeleteListKey(ULONG aKey, int aCount) noexcept override;
  bool IsListKeyValid(ULONG aKey) const noexcept override;
  bool PostTask(PEvent* aTask) noexcept override;

  // Used by the tasks, the message hook and the window procedure.
  HWND Window() const noexcept { return m_Window.m_hWnd; }
  bool HasFont(IGLFont* aFont) noexcept;
  PCriticalSection& Lock() noexcept { return m_Lock; }
  /// Returns the lock that the draw thread holds while it calls clients without m_Lock. Taken before m_Lock.
  PCriticalSection& ClientCalls() noexcept { return m_ClientCalls; }
  GLRenderTarget& WindowTarget() noexcept { return m_Window.m_Target; }
  const ClientSlot<IGLPainter>& Painter() const noexcept { return m_Painter; }
  const ClipPlanes& Planes() const noexcept { return m_ClipPlanes; }
  IGLCanvas* Canvas() const noexcept { return m_Scene.m_pCanvas.Get(); }
  /// Builds new fonts, and fonts whose lists were lost with their rendering context. Called inside a pass.
  void BuildFonts() noexcept;
  /// Returns the number that identifies this context in the log.
  unsigned Number() const noexcept { return m_uNumber; }
  /// Returns the context whose draw thread is the calling thread; null on other threads.
  static GLContext* DrawnHere() noexcept;
  /// Returns whether the context was created before a fork in the parent process. Its draw thread does not
  /// exist in this process.
  bool IsInherited() const noexcept { return m_uProcess != ProcessGeneration(); }
  /// Returns whether the calling thread is this context's draw thread.
  bool IsDrawThread() const noexcept { return DrawnHere() == this; }
  /// Disables all clip planes in the window's GL state if a reset is due. Called inside a pass of the window.
  void ResetGLClipPlanes() noexcept;
  LRESULT WindowProc(HWND hWnd, UINT uMsg, WPARAM wParam, LPARAM lParam) noexcept;

 private:
  friend class DrawThreadWait;  // m_pAwaited

  // Window and rendering context: GLContextWindow.cpp.
  bool CreateGLWindow() noexcept;
  bool StartDrawing(HWND aWindow) noexcept;
  bool WaitForRenderingContext() noexcept;
  void StopDrawThread() noexcept;
  void AllowParks() noexcept;
  void EndDrawThread() noexcept;
  RECT DestroyGLWindow() noexcept;
  bool CreateRenderingContext() noexcept;
  static void ReadLimits() noexcept;
  void DestroyRenderingContext() noexcept;
  void OnSysColorChange() noexcept;
  LRESULT OnQueryNewPalette() noexcept;
  void OnPaletteChanged(WPARAM wParam) noexcept;
  bool NeedsPalette() const noexcept;

  // Pixel format and palette: GLContextPixelFormat.cpp.
  bool SetupPixelFormat(bool* aFormatSet) noexcept;
  bool SetupPalette() noexcept;
  int ChooseFormat() noexcept;
  void ReadUserSwitches() noexcept;

  // Frame cycle: GLContextFrame.cpp.
  static void DrawThreadCallback(void* aContext, unsigned aWake) noexcept;
  static void DrawThreadEnd(void* aContext) noexcept;
  /// Records the context whose draw thread the calling thread is; null for none.
  static void MarkDrawThread(GLContext* aContext) noexcept;
  void DrawFrame() noexcept;
  void SetFrameState() noexcept;
  void SetDepthTestAndBlending() noexcept;
  void DrawViewers() noexcept;
  void NotePainterResult(HRESULT aResult) noexcept;
  void SetupViewerPass(class GLViewer& aViewer) noexcept;
  void SetupClipPlanes() noexcept;
  void SetupLighting() noexcept;
  void ApplyLights() noexcept;

  // Frame capture: GLContextCapture.cpp.
  void CaptureFrame() noexcept;
  bool CaptureFromScreen(IGLCapture& aCapture) noexcept;
  bool CaptureOffscreen(IGLCapture& aCapture) noexcept;
  struct CaptureArea {
    int m_iWidth, m_iHeight;  // of the viewport
    RECT m_Rect;              // the client's part of it, from the top left
  };
  bool ReadCaptureArea(IGLCapture& aCapture, CaptureArea* aArea) noexcept;
  void DrawOffscreen(IGLCapture& aCapture, GLPass& aPass, const class OffscreenSurface& aSurface) noexcept;

  void ReleaseScene() noexcept;
  template <class Client>
  HRESULT Attach(ClientSlot<Client>& aSlot, Client* aClient) noexcept;
  DisplayLists* ListsHere() const noexcept;
  /// Returns the pass on the calling thread if it draws a picture other than the window's; otherwise null.
  const GLPass* PictureHere() const noexcept;
  std::shared_ptr<PThread> DrawThread() const noexcept;
  // Whether a creator adds a reference to the font that it returns. The context keeps one in both cases.
  enum class FontReference { kCounted, kBorrowed };
  template <class Describe>
  HRESULT CreateFont(FontReference aReference, IGLFont** aFont, Describe aDescribe) noexcept;
  HRESULT BeginSelection(const PSelectEvent::Request& aRequest) noexcept;
  HRESULT WaitForSelection() noexcept;
  GLPtr<IGLViewer> FindViewer(IGLViewer* aViewer) noexcept;
  bool IsUsable() const noexcept;
  bool InitializeFails(const char* aStep) const noexcept;

  const unsigned m_uProcess = ProcessGeneration();
  const unsigned m_uNumber;  ///< unique in the process, from 1; used in the log
  WindowState m_Window;
  SceneSettings m_Settings;
  SceneMembers m_Scene;
  ClipPlanes m_ClipPlanes;           // changed under m_Lock
  ClientSlot<IGLPainter> m_Painter;  // changed under m_Lock
  ClientSlot<IGLCapture> m_Capture;  // changed under m_Lock

  PCriticalSection m_ClientCalls;  // taken before m_Lock; see ClientCalls
  PCriticalSection m_Lock;
  std::shared_ptr<PThread> m_pDrawThread;  // guarded by m_DrawThreadLock; read it with DrawThread()
  std::atomic<bool> m_bTearDown{false};
  GLSiteLinkPtr m_pLink;                         // link from the parts to this context; cleared at tear-down
  mutable std::mutex m_DrawThreadLock;           // held only while m_pDrawThread is copied or replaced
  std::mutex m_ReplaceLock;                      // held while window and draw thread are replaced
  std::mutex m_SelectLock;                       // serialises selections
  std::shared_ptr<PSelectEvent> m_pSelectEvent;  // used by all selections; guarded by m_SelectLock
  const GLContext* m_pAwaited = nullptr;         // context that the draw thread waits for; see DrawThreadWait
  std::optional<GLPass> m_TaskPass;              // exists between LockGL and UnlockGL of a task; draw thread
  HRESULT m_hPainterResult = S_OK;               // result of the last IGLPainter::Draw; draw thread
  int m_iTaskLocks = 0;                          // nesting depth of LockGL in m_TaskPass; draw thread
  std::atomic<bool> m_bFontsAdded{false};        // fonts were added that no pass has built yet
  std::atomic_flag m_bReleased;                  // the last reference was released
};
