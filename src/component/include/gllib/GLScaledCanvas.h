/// @file
/// The canvas that GLViewing passes to painters for a picture larger than the window, header only. A part of
/// gllib/GLViewing.h. Draw thread.

#pragma once

#include <gllib/GLLib.h>
#include <gllib/GLPtr.h>

#include <atomic>

/// A canvas that enlarges lines, stipples and points by a factor. It forwards all other operations, and
/// queries for further interfaces, to the component's canvas.
class GLScaledCanvas final : public IGLCanvas {
 public:
  /// @param aCanvas the component's canvas; borrowed for the lifetime of this object
  /// @param aFactor scale factor
  GLScaledCanvas(IGLCanvas& aCanvas, int aFactor) noexcept : m_Canvas(aCanvas), m_iFactor(aFactor) {}
  GLScaledCanvas(const GLScaledCanvas&) = delete;
  GLScaledCanvas& operator=(const GLScaledCanvas&) = delete;

  /// Returns this object for IGLCanvas and IUnknown, and the component's canvas for other interfaces.
  HRESULT QueryInterface(REFIID riid, void** ppv) noexcept override {
    if (ppv == nullptr) return E_POINTER;
    if (riid != IID_IUnknown && riid != GLIdentifierOf<IGLCanvas>())
      return m_Canvas.QueryInterface(riid, ppv);
    *ppv = static_cast<IGLCanvas*>(this);
    AddRef();
    return S_OK;
  }
  /// Counts references, but without effect: the object exists for one pass.
  ULONG AddRef() noexcept override { return ++m_uReferences; }
  /// Counts without effect, as AddRef.
  ULONG Release() noexcept override { return --m_uReferences; }

  HRESULT SetVertexLineWidth(float aValue) noexcept override {
    return m_Canvas.SetVertexLineWidth(aValue * static_cast<float>(m_iFactor));
  }
  HRESULT SetVertexPointSize(float aValue) noexcept override {
    return m_Canvas.SetVertexPointSize(aValue * static_cast<float>(m_iFactor));
  }
  HRESULT SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept override {
    return m_Canvas.SetVertexLineStipple(aPattern, (aFactor < 1 ? 1 : aFactor) * m_iFactor);
  }
  HRESULT SetDrawAttributes(IGLDrawAttr* aI) noexcept override {
    const HRESULT result = m_Canvas.SetDrawAttributes(aI);
    if (FAILED(result)) return result;
    float width = 1.0f, size = 1.0f;
    std::uint16_t pattern = 0xFFFF;
    int factor = 1;
    aI->GetLineWidth(&width);
    aI->GetPointSize(&size);
    aI->GetLineStipplePattern(&pattern);
    aI->GetLineStippleFactor(&factor);
    SetVertexLineWidth(width);
    SetVertexPointSize(size);
    if (pattern != 0xFFFF) SetVertexLineStipple(pattern, factor);
    return result;
  }

  // Forwarded without change.
  HRESULT SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept override {
    return m_Canvas.SetModelview6d(aMatrix);
  }
  HRESULT ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept override {
    return m_Canvas.ResetModelview6d(aMatrix);
  }
  HRESULT SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept override {
    return m_Canvas.SetModelview16d(aMatrix);
  }
  HRESULT ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept override {
    return m_Canvas.ResetModelview16d(aMatrix);
  }
  HRESULT PushModelviewMatrix(LONG aLoadIdentity) noexcept override {
    return m_Canvas.PushModelviewMatrix(aLoadIdentity);
  }
  HRESULT PopModelviewMatrix() noexcept override { return m_Canvas.PopModelviewMatrix(); }
  HRESULT Translate(GLDATA_POINT* aOrigin) noexcept override { return m_Canvas.Translate(aOrigin); }
  HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept override {
    return m_Canvas.Rotate_RAD(aAngle, aVector);
  }
  HRESULT Scale(GLDATA_POINT* aScale) noexcept override { return m_Canvas.Scale(aScale); }
  HRESULT PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept override {
    return m_Canvas.PushProjectionMatrix(aLoadIdentity, aNewExtents);
  }
  HRESULT PopProjectionMatrix() noexcept override { return m_Canvas.PopProjectionMatrix(); }
  HRESULT EnableClipPlanes(LONG aEnable) noexcept override { return m_Canvas.EnableClipPlanes(aEnable); }
  HRESULT PushDepthAttribute() noexcept override { return m_Canvas.PushDepthAttribute(); }
  HRESULT PopDepthAttribute() noexcept override { return m_Canvas.PopDepthAttribute(); }
  HRESULT PushLightAttribute() noexcept override { return m_Canvas.PushLightAttribute(); }
  HRESULT PopLightAttribute() noexcept override { return m_Canvas.PopLightAttribute(); }
  HRESULT BeginDrawPoints() noexcept override { return m_Canvas.BeginDrawPoints(); }
  HRESULT BeginDrawLines() noexcept override { return m_Canvas.BeginDrawLines(); }
  HRESULT BeginDrawLineStrip() noexcept override { return m_Canvas.BeginDrawLineStrip(); }
  HRESULT BeginDrawLineLoop() noexcept override { return m_Canvas.BeginDrawLineLoop(); }
  HRESULT BeginDrawTriangles() noexcept override { return m_Canvas.BeginDrawTriangles(); }
  HRESULT BeginDrawTriangleStrip() noexcept override { return m_Canvas.BeginDrawTriangleStrip(); }
  HRESULT BeginDrawTriangleFan() noexcept override { return m_Canvas.BeginDrawTriangleFan(); }
  HRESULT BeginDrawQuads() noexcept override { return m_Canvas.BeginDrawQuads(); }
  HRESULT BeginDrawQuadStrip() noexcept override { return m_Canvas.BeginDrawQuadStrip(); }
  HRESULT BeginDrawPolygon() noexcept override { return m_Canvas.BeginDrawPolygon(); }
  HRESULT EndDrawVertices() noexcept override { return m_Canvas.EndDrawVertices(); }
  HRESULT Vertex(GLDATA_POINT* aPoint) noexcept override { return m_Canvas.Vertex(aPoint); }
  HRESULT Vertex2d(double aX, double aY) noexcept override { return m_Canvas.Vertex2d(aX, aY); }
  HRESULT Vertex3d(double aX, double aY, double aZ) noexcept override {
    return m_Canvas.Vertex3d(aX, aY, aZ);
  }
  HRESULT Vertex2f(float aX, float aY) noexcept override { return m_Canvas.Vertex2f(aX, aY); }
  HRESULT Vertex3f(float aX, float aY, float aZ) noexcept override { return m_Canvas.Vertex3f(aX, aY, aZ); }
  HRESULT SetVertexNormal(GLDATA_POINT* Point) noexcept override { return m_Canvas.SetVertexNormal(Point); }
  HRESULT SetVertexNormal3d(double aX, double aY, double aZ) noexcept override {
    return m_Canvas.SetVertexNormal3d(aX, aY, aZ);
  }
  HRESULT SetVertexNormal3f(float aX, float aY, float aZ) noexcept override {
    return m_Canvas.SetVertexNormal3f(aX, aY, aZ);
  }
  HRESULT SetTestID(ULONG aID) noexcept override { return m_Canvas.SetTestID(aID); }
  HRESULT SetVertexColor(GLDATA_RGBA* aColor) noexcept override { return m_Canvas.SetVertexColor(aColor); }
  HRESULT SetVertexEdgeFlag(LONG aIsEdge) noexcept override { return m_Canvas.SetVertexEdgeFlag(aIsEdge); }
  HRESULT SetMaterial(IGLMaterial* aMaterial) noexcept override { return m_Canvas.SetMaterial(aMaterial); }
  HRESULT BeginCompileList(int* aList) noexcept override { return m_Canvas.BeginCompileList(aList); }
  HRESULT EndCompileList() noexcept override { return m_Canvas.EndCompileList(); }
  HRESULT DrawCompiledList(int aList) noexcept override { return m_Canvas.DrawCompiledList(aList); }
  HRESULT DeleteCompiledList(int aList) noexcept override { return m_Canvas.DeleteCompiledList(aList); }
  HRESULT IsCompiledList(int aList, LONG* aValid) noexcept override {
    return m_Canvas.IsCompiledList(aList, aValid);
  }

 private:
  IGLCanvas& m_Canvas;
  const int m_iFactor;
  std::atomic<ULONG> m_uReferences{1};
};
