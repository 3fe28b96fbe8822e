// The drawing surface of painters and gauges.

#pragma once

#include <gllib/GLTypes.h>

struct IGLDrawAttr;
struct IGLMaterial;

enum eGLTexFormat : int { GLTF_RGB = 6407, GLTF_RGBA = 6408 };
enum eGLDataType : int {
  GLDT_BYTE = 5120,
  GLDT_UNSIGNED_BYTE = 5121,
  GLDT_SHORT = 5122,
  GLDT_UNSIGNED_SHORT = 5123,
  GLDT_INT = 5124,
  GLDT_UNSIGNED_INT = 5125,
  GLDT_FLOAT = 5126,
  GLDT_2_BYTES = 5127,
  GLDT_3_BYTES = 5128,
  GLDT_4_BYTES = 5129,
  GLDT_DOUBLE = 5130
};
enum eGLEnable : int {
  GLE_COLOR_MATERIAL = 2903,
  GLE_TEXTURE_GEN_S = 3168,
  GLE_TEXTURE_GEN_T = 3169,
  GLE_TEXTURE_2D = 3553
};
enum eGLTextureCoordName : int { GLTCN_S = 8192, GLTCN_T = 8193, GLTCN_R = 8194, GLTCN_Q = 8195 };
enum eGLTextureGenParameter : int {
  GLTGP_TEXTURE_GEN_MODE = 9472,
  GLTGP_OBJECT_PLANE = 9473,
  GLTGP_EYE_PLANE = 9474
};
enum eGLTextureParameterName : int {
  GLTPN_TEXTURE_MAG_FILTER = 10240,
  GLTPN_TEXTURE_MIN_FILTER = 10241,
  GLTPN_TEXTURE_WRAP_S = 10242,
  GLTPN_TEXTURE_WRAP_T = 10243
};
enum eGLTextureEnvTarget : int { GLTET_TEXTURE_ENV = 8960 };
enum eGLTextureEnvParameter : int { GLTEP_TEXTURE_ENV_MODE = 8704, GLTEP_TEXTURE_ENV_COLOR = 8705 };

/// Matrices, primitives, attributes and lists.
struct IGLCanvas : IUnknown {
  static constexpr IID Identifier = {
      0x06BE8897, 0x88A8, 0x46C5, {0x97, 0xD5, 0x60, 0x29, 0xDC, 0x9F, 0x5D, 0x69}};

  virtual HRESULT SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  virtual HRESULT ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  virtual HRESULT SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  virtual HRESULT ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  virtual HRESULT PushModelviewMatrix(LONG aLoadIdentity) noexcept = 0;
  virtual HRESULT PopModelviewMatrix() noexcept = 0;
  virtual HRESULT Translate(GLDATA_POINT* aOrigin) noexcept = 0;
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept = 0;
  virtual HRESULT Scale(GLDATA_POINT* aScale) noexcept = 0;
  virtual HRESULT PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept = 0;
  virtual HRESULT PopProjectionMatrix() noexcept = 0;
  virtual HRESULT EnableClipPlanes(LONG aEnable) noexcept = 0;
  virtual HRESULT PushDepthAttribute() noexcept = 0;
  virtual HRESULT PopDepthAttribute() noexcept = 0;
  virtual HRESULT PushLightAttribute() noexcept = 0;
  virtual HRESULT PopLightAttribute() noexcept = 0;
  virtual HRESULT BeginDrawPoints() noexcept = 0;
  virtual HRESULT BeginDrawLines() noexcept = 0;
  virtual HRESULT BeginDrawLineStrip() noexcept = 0;
  virtual HRESULT BeginDrawLineLoop() noexcept = 0;
  virtual HRESULT BeginDrawTriangles() noexcept = 0;
  virtual HRESULT BeginDrawTriangleStrip() noexcept = 0;
  virtual HRESULT BeginDrawTriangleFan() noexcept = 0;
  virtual HRESULT BeginDrawQuads() noexcept = 0;
  virtual HRESULT BeginDrawQuadStrip() noexcept = 0;
  virtual HRESULT BeginDrawPolygon() noexcept = 0;
  virtual HRESULT EndDrawVertices() noexcept = 0;
  virtual HRESULT Vertex(GLDATA_POINT* aPoint) noexcept = 0;
  virtual HRESULT Vertex2d(double aX, double aY) noexcept = 0;
  virtual HRESULT Vertex3d(double aX, double aY, double aZ) noexcept = 0;
  virtual HRESULT Vertex2f(float aX, float aY) noexcept = 0;
  virtual HRESULT Vertex3f(float aX, float aY, float aZ) noexcept = 0;
  virtual HRESULT SetVertexNormal(GLDATA_POINT* Point) noexcept = 0;
  virtual HRESULT SetVertexNormal3d(double aX, double aY, double aZ) noexcept = 0;
  virtual HRESULT SetVertexNormal3f(float aX, float aY, float aZ) noexcept = 0;
  virtual HRESULT SetTestID(ULONG aID) noexcept = 0;
  virtual HRESULT SetVertexColor(GLDATA_RGBA* aColor) noexcept = 0;
  virtual HRESULT SetVertexLineWidth(float aValue) noexcept = 0;
  virtual HRESULT SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept = 0;
  virtual HRESULT SetVertexPointSize(float aValue) noexcept = 0;
  virtual HRESULT SetVertexEdgeFlag(LONG aIsEdge) noexcept = 0;
  virtual HRESULT SetDrawAttributes(IGLDrawAttr* aI) noexcept = 0;
  virtual HRESULT SetMaterial(IGLMaterial* aMaterial) noexcept = 0;
  virtual HRESULT BeginCompileList(int* aList) noexcept = 0;
  virtual HRESULT EndCompileList() noexcept = 0;
  virtual HRESULT DrawCompiledList(int aList) noexcept = 0;
  virtual HRESULT DeleteCompiledList(int aList) noexcept = 0;
  virtual HRESULT IsCompiledList(int aList, LONG* aValid) noexcept = 0;

 protected:
  ~IGLCanvas() = default;
};

/// Projections and attribute groups.
struct IGLCanvas2 : IUnknown {
  static constexpr IID Identifier = {
      0x6624D85F, 0x8064, 0x4078, {0xA0, 0x1A, 0x2F, 0x60, 0x76, 0xD5, 0x96, 0xE3}};

  virtual HRESULT GetModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  virtual HRESULT Ortho(double dLeft, double dRight, double dBottom, double dTop, double dZNear,
                        double dZFar) noexcept = 0;
  virtual HRESULT Perspective(double dFovY, double dAspect, double dZNear, double dZFar) noexcept = 0;
  virtual HRESULT PushAttrib(ULONG dwAttribMask) noexcept = 0;
  virtual HRESULT PopAttrib() noexcept = 0;

 protected:
  ~IGLCanvas2() = default;
};

/// Mapping between window and model.
struct IGLCanvas3 : IUnknown {
  static constexpr IID Identifier = {
      0xE8AECE70, 0x954B, 0x4659, {0x93, 0xC1, 0xF3, 0x14, 0x46, 0xEC, 0x2B, 0x05}};

  virtual HRESULT GetWindowCoords(GLDATA_POINT* pModelCoord, LONG bUseCachedSetup,
                                  GLDATA_POINT* pWindowCoord) noexcept = 0;
  virtual HRESULT GetModelCoords(GLDATA_POINT* pWindowCoord, LONG bUseCachedSetup,
                                 GLDATA_POINT* pModelCoord) noexcept = 0;

 protected:
  ~IGLCanvas3() = default;
};

/// Transparent triangles, and what was applied last.
struct IGLCanvas13_1 : IUnknown {
  static constexpr IID Identifier = {
      0x865105DF, 0xCC17, 0x4E81, {0x9C, 0xC7, 0x73, 0x51, 0x17, 0xF0, 0x24, 0x99}};

  virtual HRESULT GetDrawAttributes(IGLDrawAttr** aI) noexcept = 0;
  virtual HRESULT ClearTransparentTriangles() noexcept = 0;
  virtual HRESULT AddTransparentTriangle(GLDATA_POINT* arPoints, GLDATA_RGBA* pColor) noexcept = 0;
  virtual HRESULT AddTransparentTriangle2(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors) noexcept = 0;
  virtual HRESULT AddTransparentTriangle3(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors,
                                          GLDATA_POINT* arNormals) noexcept = 0;
  virtual HRESULT GetNumTransparentTriangles(LONG* plCount) noexcept = 0;
  virtual HRESULT GetTransparentTriangles(LONG lOffset, LONG lCount,
                                          GLDATA_TRANS_TRIANGLE* arTriangles) noexcept = 0;
  virtual HRESULT PushDepthMask(LONG bNewValue) noexcept = 0;
  virtual HRESULT SetSelectionMode(LONG bValue) noexcept = 0;
  virtual HRESULT GetSelectionMode(LONG* pbValue) noexcept = 0;
  virtual HRESULT GetMaterial(IGLMaterial** aMaterial) noexcept = 0;

 protected:
  ~IGLCanvas13_1() = default;
};

/// Winding, and the modelview matrix as it stands.
struct IGLCanvas14_2 : IUnknown {
  static constexpr IID Identifier = {
      0x7ED22534, 0xF8F7, 0x43CA, {0x8B, 0xF1, 0x27, 0x7F, 0x34, 0xF2, 0x7F, 0x1D}};

  virtual HRESULT SetCWWinding(LONG bValue) noexcept = 0;
  virtual HRESULT GetRawModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCanvas14_2() = default;
};

/// Texturing by GL texture names.
struct IGLCanvas14_4 : IUnknown {
  static constexpr IID Identifier = {
      0x03E21E5C, 0xAD9E, 0x4C71, {0x8F, 0x39, 0xA1, 0x4D, 0x90, 0x01, 0xBB, 0x00}};

  virtual HRESULT GenTextures(int nTextures, unsigned int* pnTextureIDs) noexcept = 0;
  virtual HRESULT BindTexture2D(unsigned int nTextureID) noexcept = 0;
  virtual HRESULT TexImage2D(int nLevel, int nInternalFormat, int nWidth, int nHeight, int nBorder,
                             eGLTexFormat eFormat, eGLDataType eType, int nDataBytes,
                             unsigned char* pbyPixels) noexcept = 0;
  virtual HRESULT Enable(eGLEnable eEnable) noexcept = 0;
  virtual HRESULT Disable(eGLEnable eDisable) noexcept = 0;
  virtual HRESULT TexGeni(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nValue) noexcept = 0;
  virtual HRESULT TexGend(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName,
                          double dValue) noexcept = 0;
  virtual HRESULT TexGeniv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           int* pnValue) noexcept = 0;
  virtual HRESULT TexGendv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           double* pdValue) noexcept = 0;
  virtual HRESULT TexParameteri2D(eGLTextureParameterName ePName, int nValue) noexcept = 0;
  virtual HRESULT TexEnvi(eGLTextureEnvTarget eTarget, eGLTextureEnvParameter ePName,
                          int nValue) noexcept = 0;
  virtual HRESULT TexCoord2f(float fS, float fT) noexcept = 0;
  virtual HRESULT TexCoord2d(double dS, double dT) noexcept = 0;
  virtual HRESULT Build2DMipmaps(int nInternalFormat, int nWidth, int nHeight, eGLTexFormat eFormat,
                                 eGLDataType eType, int nDataBytes, unsigned char* pbyPixels) noexcept = 0;

 protected:
  ~IGLCanvas14_4() = default;
};
