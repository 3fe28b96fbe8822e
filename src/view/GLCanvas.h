// GLCanvas: the drawing surface of painters and gauges, a thin typed layer over fixed-function GL.
// Draw thread, with the rendering context current. Any thread may read the cached set-up and access the
// selection flag.

#pragma once

#include <gllib/IGLCanvas.h>
#include <gllib/IGLDrawAttr.h>
#include <gllib/IGLMaterial.h>

#include <array>
#include <deque>

#include "component/GLObject.h"
#include "component/GLSiteLink.h"
#include "thread/Relaxed.h"

class ListRecorder;

class GLCanvas final : public GLObject<GLCanvas, IGLCanvas, IGLCanvas2, IGLCanvas3, IGLCanvas13_1,
                                       IGLCanvas14_2, IGLCanvas14_4> {
 public:
  GLCanvas();

  /// Connects the canvas with its context. Called once, immediately after creation.
  void SetSite(GLSiteLinkPtr aLink) noexcept;

  // IGLCanvas: matrices
  HRESULT SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept override;
  HRESULT ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept override;
  HRESULT SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept override;
  HRESULT ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept override;
  HRESULT PushModelviewMatrix(LONG aLoadIdentity) noexcept override;
  HRESULT PopModelviewMatrix() noexcept override;
  HRESULT Translate(GLDATA_POINT* aOrigin) noexcept override;
  HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept override;
  HRESULT Scale(GLDATA_POINT* aScale) noexcept override;
  HRESULT PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept override;
  HRESULT PopProjectionMatrix() noexcept override;

  // IGLCanvas: GL state that is pushed and popped
  HRESULT EnableClipPlanes(LONG aEnable) noexcept override;
  HRESULT PushDepthAttribute() noexcept override;
  HRESULT PopDepthAttribute() noexcept override;
  HRESULT PushLightAttribute() noexcept override;
  HRESULT PopLightAttribute() noexcept override;

  // IGLCanvas: primitives
  HRESULT BeginDrawPoints() noexcept override;
  HRESULT BeginDrawLines() noexcept override;
  HRESULT BeginDrawLineStrip() noexcept override;
  HRESULT BeginDrawLineLoop() noexcept override;
  HRESULT BeginDrawTriangles() noexcept override;
  HRESULT BeginDrawTriangleStrip() noexcept override;
  HRESULT BeginDrawTriangleFan() noexcept override;
  HRESULT BeginDrawQuads() noexcept override;
  HRESULT BeginDrawQuadStrip() noexcept override;
  HRESULT BeginDrawPolygon() noexcept override;
  HRESULT EndDrawVertices() noexcept override;
  HRESULT Vertex(GLDATA_POINT* aPoint) noexcept override;
  HRESULT Vertex2d(double aX, double aY) noexcept override;
  HRESULT Vertex3d(double aX, double aY, double aZ) noexcept override;
  HRESULT Vertex2f(float aX, float aY) noexcept override;
  HRESULT Vertex3f(float aX, float aY, float aZ) noexcept override;
  HRESULT SetVertexNormal(GLDATA_POINT* Point) noexcept override;
  HRESULT SetVertexNormal3d(double aX, double aY, double aZ) noexcept override;
  HRESULT SetVertexNormal3f(float aX, float aY, float aZ) noexcept override;
  HRESULT SetTestID(ULONG aID) noexcept override;
  HRESULT SetVertexColor(GLDATA_RGBA* aColor) noexcept override;
  HRESULT SetVertexLineWidth(float aValue) noexcept override;
  HRESULT SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept override;
  HRESULT SetVertexPointSize(float aValue) noexcept override;
  HRESULT SetVertexEdgeFlag(LONG aIsEdge) noexcept override;

  // IGLCanvas: attributes and materials
  HRESULT SetDrawAttributes(IGLDrawAttr* aI) noexcept override;
  HRESULT SetMaterial(IGLMaterial* aMaterial) noexcept override;

  // IGLCanvas: compiled lists
  HRESULT BeginCompileList(int* aList) noexcept override;
  HRESULT EndCompileList() noexcept override;
  HRESULT DrawCompiledList(int aList) noexcept override;
  HRESULT DeleteCompiledList(int aList) noexcept override;
  HRESULT IsCompiledList(int aList, LONG* aValid) noexcept override;

  // IGLCanvas2
  HRESULT GetModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept override;
  HRESULT Ortho(double dLeft, double dRight, double dBottom, double dTop, double dZNear,
                double dZFar) noexcept override;
  HRESULT Perspective(double dFovY, double dAspect, double dZNear, double dZFar) noexcept override;
  HRESULT PushAttrib(ULONG dwAttribMask) noexcept override;
  HRESULT PopAttrib() noexcept override;

  // IGLCanvas3
  HRESULT GetWindowCoords(GLDATA_POINT* pModelCoord, LONG bUseCachedSetup,
                          GLDATA_POINT* pWindowCoord) noexcept override;
  HRESULT GetModelCoords(GLDATA_POINT* pWindowCoord, LONG bUseCachedSetup,
                         GLDATA_POINT* pModelCoord) noexcept override;

  // IGLCanvas13_1
  HRESULT GetDrawAttributes(IGLDrawAttr** aI) noexcept override;
  HRESULT ClearTransparentTriangles() noexcept override;
  HRESULT AddTransparentTriangle(GLDATA_POINT arPoints[3], GLDATA_RGBA* pColor) noexcept override;
  HRESULT AddTransparentTriangle2(GLDATA_POINT arPoints[3], GLDATA_RGBA arColors[3]) noexcept override;
  HRESULT AddTransparentTriangle3(GLDATA_POINT arPoints[3], GLDATA_RGBA arColors[3],
                                  GLDATA_POINT arNormals[3]) noexcept override;
  HRESULT GetNumTransparentTriangles(LONG* plCount) noexcept override;
  HRESULT GetTransparentTriangles(LONG lOffset, LONG lCount,
                                  GLDATA_TRANS_TRIANGLE* arTriangles) noexcept override;
  HRESULT PushDepthMask(LONG bNewValue) noexcept override;
  HRESULT SetSelectionMode(LONG bValue) noexcept override;
  HRESULT GetSelectionMode(LONG* pbValue) noexcept override;
  HRESULT GetMaterial(IGLMaterial** aMaterial) noexcept override;

  // IGLCanvas14_2
  HRESULT SetCWWinding(LONG bValue) noexcept override;
  HRESULT GetRawModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept override;

  // IGLCanvas14_4
  HRESULT GenTextures(int nTextures, unsigned int* pnTextureIDs) noexcept override;
  HRESULT BindTexture2D(unsigned int nTextureID) noexcept override;
  HRESULT TexImage2D(int nLevel, int nInternalFormat, int nWidth, int nHeight, int nBorder,
                     eGLTexFormat eFormat, eGLDataType eType, int nDataBytes,
                     unsigned char* pbyPixels) noexcept override;
  HRESULT Enable(eGLEnable eEnable) noexcept override;
  HRESULT Disable(eGLEnable eDisable) noexcept override;
  HRESULT TexGeni(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nValue) noexcept override;
  HRESULT TexGend(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, double dValue) noexcept override;
  HRESULT TexGeniv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                   int* pnValue) noexcept override;
  HRESULT TexGendv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                   double* pdValue) noexcept override;
  HRESULT TexParameteri2D(eGLTextureParameterName ePName, int nValue) noexcept override;
  HRESULT TexEnvi(eGLTextureEnvTarget eTarget, eGLTextureEnvParameter ePName, int nValue) noexcept override;
  HRESULT TexCoord2f(float fS, float fT) noexcept override;
  HRESULT TexCoord2d(double dS, double dT) noexcept override;
  HRESULT Build2DMipmaps(int nInternalFormat, int nWidth, int nHeight, eGLTexFormat eFormat,
                         eGLDataType eType, int nDataBytes, unsigned char* pbyPixels) noexcept override;

  /// Sets the number of the rendering context that is current from now on. If it is another one than before,
  /// the next SetDrawAttributes sends all attributes. Draw thread.
  void NoteRenderingContext(ULONG aNumber) noexcept;
  /// Copies GL's current matrices and viewport to the cached set-up. Draw thread.
  void RefreshCachedSetup() noexcept;

  /// Connects the canvas, during a pass, with the recorder of a list that an earlier pass has left open. Draw
  /// thread.
  class Recording {
   public:
    Recording(GLCanvas& aCanvas, ListRecorder* aRecorder) noexcept : m_Canvas(aCanvas) {
      m_Canvas.m_pRecorder = aRecorder;
    }
    ~Recording() { m_Canvas.m_pRecorder = nullptr; }
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;

   private:
    GLCanvas& m_Canvas;
  };

 private:
  struct Setup;

  bool HasGL() const noexcept;
  void SendVertex(float aX, float aY, float aZ) noexcept;
  void BeginPrimitives(unsigned aMode) noexcept;
  void DrawsWhole() noexcept;

  HRESULT AddTriangle(const GLDATA_POINT* aPoints, const GLDATA_RGBA* aColors,
                      const GLDATA_POINT* aNormals) noexcept;
  void CutStoreTo(std::size_t aTriangles) noexcept;

  GLSiteLinkPtr m_pContext;
  ListRecorder* m_pRecorder = nullptr;  // of the open list; draw thread

  // The attributes and the material applied last, by this canvas.
  GLPtr<IGLDrawAttr> m_pCurrentDrawAttr;
  std::uint32_t m_uAppliedVersion = 0;  // version of m_pCurrentDrawAttr that GL has; 0 if it has none
  ULONG m_uRenderingContext = 0;
  GLPtr<IGLMaterial> m_pCurrentMaterial;

  // The cached set-up, in the layouts of GL. Hosts may read it while the draw thread writes it.
  std::array<Relaxed<double>, 16> m_adCachedModelview;
  std::array<Relaxed<double>, 16> m_adCachedProjection;
  std::array<Relaxed<int>, 4> m_aiCachedViewport;

  // Transparent triangles in order of insertion. Triangle k has elements 3k to 3k + 2 of the first three
  // containers and element k of the last. Deques grow without moving their elements.
  std::deque<GLDATA_POINT> m_lstPoints;
  std::deque<GLDATA_POINT> m_lstNormals;
  std::deque<GLDATA_RGBA> m_lstColors;
  std::deque<GLDATA_POINT> m_lstCentroids;

  Relaxed<LONG> m_bSelectionMode = 0;  // for clients; the component does not use it
};
