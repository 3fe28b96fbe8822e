// The context: a GL window, its draw thread, and all that is drawn with.

#pragma once

#include <gllib/GLTypes.h>

struct IGLCanvas;
struct IGLCapture;
struct IGLCollection;
struct IGLFog;
struct IGLFont;
struct IGLLight;
struct IGLPainter;
struct IGLViewer;

/// The context.
struct IGLContext : IUnknown {
  static constexpr IID Identifier = {
      0x1750378C, 0xFDFD, 0x11D3, {0xA3, 0x17, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00}};

  virtual HRESULT Initialize(ULONG_PTR aParentWnd) noexcept = 0;
  virtual HRESULT GetWindow(ULONG_PTR* aHandle) noexcept = 0;
  virtual HRESULT EnableDepth(LONG aEnable) noexcept = 0;
  virtual HRESULT IsDepthEnabled(LONG* aEnable) noexcept = 0;
  virtual HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetBackgroundColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT GetDrawThreadPars(int* aPriority, ULONG* aPreferredCycle,
                                    ULONG* aMustSleepCycle) noexcept = 0;
  virtual HRESULT SetDrawThreadPars(int aPriority, ULONG aPreferredCycle, ULONG aMustSleepCycle) noexcept = 0;
  virtual HRESULT AttachPainter(IGLPainter* aPainter) noexcept = 0;
  virtual HRESULT DetachPainter() noexcept = 0;
  virtual HRESULT AttachCapture(IGLCapture* aCapture) noexcept = 0;
  virtual HRESULT DetachCapture() noexcept = 0;
  virtual HRESULT GetViewportWidth(int* aValue) noexcept = 0;
  virtual HRESULT GetViewportHeight(int* aValue) noexcept = 0;
  virtual HRESULT SetViewport(int aX, int aY, int aWidth, int aHeight) noexcept = 0;
  virtual HRESULT DeviceToSCS(int aWinX, int aWinY, double* aScsX, double* aScsY) noexcept = 0;
  virtual HRESULT SCSToDevice(double aScsX, double aScsY, int* aWinX, int* aWinY) noexcept = 0;
  virtual HRESULT CreateViewer(LONG aShow, LONG aOrtho, IGLViewer** aI) noexcept = 0;
  virtual HRESULT DestroyViewer(IGLViewer* aI) noexcept = 0;
  virtual HRESULT EnumViewers(IGLCollection* aColl) noexcept = 0;
  virtual HRESULT ClipPlane(GLDATA_POINT* aPntA, GLDATA_POINT* aPntB, GLDATA_POINT* aPntC) noexcept = 0;
  virtual HRESULT ResetClipPlanes() noexcept = 0;
  virtual HRESULT EnableLighting(LONG aEnable) noexcept = 0;
  virtual HRESULT IsLightingEnabled(LONG* aEnabled) noexcept = 0;
  virtual HRESULT EnableAmbientLight(LONG aEnable) noexcept = 0;
  virtual HRESULT IsAmbientLightEnabled(LONG* aEnabled) noexcept = 0;
  virtual HRESULT GetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT SetAmbientLight(GLDATA_RGBA* aLight) noexcept = 0;
  virtual HRESULT CreateLight(IGLLight** aLight) noexcept = 0;
  virtual HRESULT DestroyLight(IGLLight* aLight) noexcept = 0;
  virtual HRESULT EnumLights(IGLCollection* aColl) noexcept = 0;
  virtual HRESULT GetFog(IGLFog** aFog) noexcept = 0;
  virtual HRESULT CreateSystemFont(IGLFont** aFont) noexcept = 0;
  virtual HRESULT CreateRasterFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation, int aHeight,
                                   int aWidth, IGLFont** aFont) noexcept = 0;
  virtual HRESULT CreateTrueTypeFont(BSTR aFace, int aFontStyle, int aWeight, float aOrientation,
                                     LONG aExtrusionZ, IGLFont** aFont) noexcept = 0;
  virtual HRESULT DestroyFont(IGLFont* aFont) noexcept = 0;
  virtual HRESULT GetDefaultFont(IGLFont** aFont) noexcept = 0;
  virtual HRESULT SetDefaultFont(IGLFont* aFont) noexcept = 0;
  virtual HRESULT EnumFonts(IGLCollection* aColl) noexcept = 0;
  virtual HRESULT Select(IGLViewer* aViewer, GLDATA_POINT* aPoint1, GLDATA_POINT* aPoint2,
                         LONG aSelectClosest, LONG aSelectEnclosed, int* aArraySize,
                         ULONG* aIDArray) noexcept = 0;

 protected:
  ~IGLContext() = default;
};

/// Draw-thread control and internal fonts.
struct IGLContext2 : IUnknown {
  static constexpr IID Identifier = {
      0x9A6C5A69, 0x5F0E, 0x4D23, {0xB7, 0xDC, 0x8B, 0xC1, 0xE6, 0x57, 0x2E, 0xBB}};

  virtual HRESULT SetControlledDrawThread(LONG bControlled, ULONG dwMaxWait) noexcept = 0;
  virtual HRESULT TriggerDrawThread() noexcept = 0;
  virtual HRESULT CreateInternalFont(BSTR aFace, IGLFont** aFont) noexcept = 0;

 protected:
  ~IGLContext2() = default;
};

/// Suspension of the draw thread.
struct IGLContext12 : IUnknown {
  static constexpr IID Identifier = {
      0xDE4AB195, 0xE238, 0x48A1, {0x9F, 0x8D, 0xDF, 0x00, 0x4F, 0xC1, 0xEE, 0x2A}};

  virtual HRESULT SuspendDrawThread() noexcept = 0;
  virtual HRESULT ResumeDrawThread() noexcept = 0;

 protected:
  ~IGLContext12() = default;
};

/// Access to the canvas.
struct IGLContext14_2 : IUnknown {
  static constexpr IID Identifier = {
      0x0683A4F3, 0x1BD0, 0x4F66, {0x84, 0x00, 0xD2, 0xA8, 0x63, 0x1C, 0xE4, 0x9A}};

  virtual HRESULT GetCanvas(IGLCanvas** ppICanvas) noexcept = 0;

 protected:
  ~IGLContext14_2() = default;
};

/// Requests for multisampling.
struct IGLContext14_3 : IUnknown {
  static constexpr IID Identifier = {
      0xC0BBA8A5, 0xCCEB, 0x4C15, {0xA8, 0x08, 0x34, 0xC8, 0x0F, 0x4A, 0xD3, 0x93}};

  virtual HRESULT get_bFSAA(LONG* pVal) noexcept = 0;
  virtual HRESULT put_bFSAA(LONG newVal) noexcept = 0;
  virtual HRESULT get_lFSAAMaxSamples(LONG* pVal) noexcept = 0;
  virtual HRESULT put_lFSAAMaxSamples(LONG newVal) noexcept = 0;

 protected:
  ~IGLContext14_3() = default;
};
