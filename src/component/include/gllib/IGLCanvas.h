/// @file
/// GLCanvas: a thin, typed layer over OpenGL 1.1 for painters and gauges. One per context.

#pragma once

#include <gllib/GLTypes.h>

struct IGLDrawAttr;
struct IGLMaterial;

// The enumerations of IGLCanvas14_4. Their values are GL's own.

/// Channels of an image, by GL's own values.
enum eGLTexFormat : int { GLTF_RGB = 6407, GLTF_RGBA = 6408 };

/// Types of a channel, by GL's own values.
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

/// Capabilities that can be switched, by GL's own values.
enum eGLEnable : int {
  GLE_COLOR_MATERIAL = 2903,
  GLE_TEXTURE_GEN_S = 3168,
  GLE_TEXTURE_GEN_T = 3169,
  GLE_TEXTURE_2D = 3553
};

/// Texture coordinates, by GL's own values.
enum eGLTextureCoordName : int { GLTCN_S = 8192, GLTCN_T = 8193, GLTCN_R = 8194, GLTCN_Q = 8195 };

/// Parameters of texture coordinate generation, by GL's own values.
enum eGLTextureGenParameter : int {
  GLTGP_TEXTURE_GEN_MODE = 9472,
  GLTGP_OBJECT_PLANE = 9473,
  GLTGP_EYE_PLANE = 9474
};

/// Texture parameters, by GL's own values.
enum eGLTextureParameterName : int {
  GLTPN_TEXTURE_MAG_FILTER = 10240,
  GLTPN_TEXTURE_MIN_FILTER = 10241,
  GLTPN_TEXTURE_WRAP_S = 10242,
  GLTPN_TEXTURE_WRAP_T = 10243
};

/// Targets of the texture environment, by GL's own value.
enum eGLTextureEnvTarget : int { GLTET_TEXTURE_ENV = 8960 };

/// Parameters of the texture environment, by GL's own values.
enum eGLTextureEnvParameter : int { GLTEP_TEXTURE_ENV_MODE = 8704, GLTEP_TEXTURE_ENV_COLOR = 8705 };

/// Matrices, primitives, attributes and lists.
///
/// Threads: draw on the draw thread, in a painter or gauge. On another thread none of the component's
/// rendering contexts is current, so a call draws nothing. If the host has made a rendering context current
/// there, the call goes to that one. No operation takes a lock or blocks. GL state remains set until another
/// call changes it.
/// Precision: matrices are double. Vertices and normals are converted to float. Draw a model with large
/// coordinates by a translation, so that the coordinates of its vertices are small.
/// Results: S_OK; E_INVALIDARG if a pointer is null, but the operations within a primitive (Vertex... and
/// SetVertex...) check no arguments; other results are documented at the operation. GL errors are not
/// reported: a call that GL refuses has no effect.
struct IGLCanvas : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x06BE8897, 0x88A8, 0x46C5, {0x97, 0xD5, 0x60, 0x29, 0xDC, 0x9F, 0x5D, 0x69}};

  // Matrices. Operations multiply the current matrix from the right, so the last one applies to vertices
  // first. Each push needs a pop.

  /// Multiplies the selected matrix by the transformation from a coordinate system (IGLCoord::GetMatrix6d) to
  /// its parent.
  virtual HRESULT SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Multiplies the selected matrix by the inverse of that transformation; see SetModelview6d.
  virtual HRESULT ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Multiplies the model-view matrix by a matrix in GL's order. This and the following matrix operations
  /// also select the model-view matrix.
  virtual HRESULT SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Multiplies the model-view matrix by the inverse of a matrix, or by the matrix itself if it is singular.
  /// @return S_OK; E_OUTOFMEMORY (nothing changes)
  virtual HRESULT ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Saves the model-view matrix. If aLoadIdentity is non-zero, also loads the identity.
  virtual HRESULT PushModelviewMatrix(LONG aLoadIdentity) noexcept = 0;
  /// Restores the matrix that PushModelviewMatrix saved last.
  virtual HRESULT PopModelviewMatrix() noexcept = 0;
  /// Translates the origin.
  /// @param aOrigin the new origin, in current coordinates
  virtual HRESULT Translate(GLDATA_POINT* aOrigin) noexcept = 0;
  /// Rotates about an axis through the origin, counter-clockwise when seen from its tip.
  /// @param aAngle  radians
  /// @param aVector the axis, of any length but 0
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept = 0;
  /// Scales along the axes. GL normalises normals again.
  /// @param aScale the factors; negative factors mirror (see IGLCanvas14_2::SetCWWinding)
  virtual HRESULT Scale(GLDATA_POINT* aScale) noexcept = 0;
  /// Saves the projection. If aLoadIdentity is non-zero, also sets a parallel projection for overlays with
  /// equal units in x and y. The window's shorter side runs from -1 to 1, the longer side further by the
  /// ratio of the sides, z from -100000 to 100000. It covers the whole window, also in a clipped viewer.
  /// During a selection the operation only saves the projection.
  /// @param aLoadIdentity non-zero sets the projection for overlays
  /// @param aNewExtents receives the widths in x, y and z if the projection is set, else does not change; may
  ///                    be null
  /// @return S_OK; E_GL_BADSTATE if aLoadIdentity is non-zero and the canvas has no context (nothing is
  ///         pushed)
  virtual HRESULT PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept = 0;
  /// Restores the projection that PushProjectionMatrix saved last, and selects the model-view matrix.
  virtual HRESULT PopProjectionMatrix() noexcept = 0;
  /// Switches the context's clip planes on (non-zero) or off while drawing. Does nothing if there are none.
  /// Otherwise it switches all of GL's planes, also those that the painter uses itself.
  /// @return S_OK; E_GL_BADSTATE if the canvas has no context
  virtual HRESULT EnableClipPlanes(LONG aEnable) noexcept = 0;

  // Groups of GL state.

  /// Saves the depth state and switches the depth test off.
  virtual HRESULT PushDepthAttribute() noexcept = 0;
  /// Restores the depth state that PushDepthAttribute or IGLCanvas13_1::PushDepthMask saved last.
  virtual HRESULT PopDepthAttribute() noexcept = 0;
  /// Saves the lighting state and switches lighting off.
  virtual HRESULT PushLightAttribute() noexcept = 0;
  /// Restores the lighting state that PushLightAttribute saved last.
  virtual HRESULT PopLightAttribute() noexcept = 0;

  // Primitives. Between Begin and End only vertices, normals, colours, edge flags and texture coordinates are
  // valid. A front face is a face whose vertices are counter-clockwise on the screen.

  /// Begins points: each vertex is a point.
  virtual HRESULT BeginDrawPoints() noexcept = 0;
  /// Begins lines: each two vertices are a line.
  virtual HRESULT BeginDrawLines() noexcept = 0;
  /// Begins a line from vertex to vertex.
  virtual HRESULT BeginDrawLineStrip() noexcept = 0;
  /// Begins a line from vertex to vertex and back to the first.
  virtual HRESULT BeginDrawLineLoop() noexcept = 0;
  /// Begins triangles: each three vertices are a triangle.
  virtual HRESULT BeginDrawTriangles() noexcept = 0;
  /// Begins a triangle strip: each vertex from the third on forms a triangle with the two before it.
  virtual HRESULT BeginDrawTriangleStrip() noexcept = 0;
  /// Begins a triangle fan: each vertex from the third on forms a triangle with the first and the one before
  /// it.
  virtual HRESULT BeginDrawTriangleFan() noexcept = 0;
  /// Begins quadrilaterals: each four vertices are one.
  virtual HRESULT BeginDrawQuads() noexcept = 0;
  /// Begins a strip of quadrilaterals: each further pair of vertices forms one with the pair before it.
  virtual HRESULT BeginDrawQuadStrip() noexcept = 0;
  /// Begins a polygon: all vertices form one convex polygon.
  virtual HRESULT BeginDrawPolygon() noexcept = 0;
  /// Ends the primitive.
  virtual HRESULT EndDrawVertices() noexcept = 0;

  /// Adds a vertex.
  virtual HRESULT Vertex(GLDATA_POINT* aPoint) noexcept = 0;
  /// Adds a vertex with z 0.
  virtual HRESULT Vertex2d(double aX, double aY) noexcept = 0;
  /// Adds a vertex.
  virtual HRESULT Vertex3d(double aX, double aY, double aZ) noexcept = 0;
  /// Adds a vertex with z 0.
  virtual HRESULT Vertex2f(float aX, float aY) noexcept = 0;
  /// Adds a vertex.
  virtual HRESULT Vertex3f(float aX, float aY, float aZ) noexcept = 0;

  /// Sets the normal of the following vertices, of any length but 0.
  virtual HRESULT SetVertexNormal(GLDATA_POINT* Point) noexcept = 0;
  /// Same as SetVertexNormal.
  virtual HRESULT SetVertexNormal3d(double aX, double aY, double aZ) noexcept = 0;
  /// Same as SetVertexNormal.
  virtual HRESULT SetVertexNormal3f(float aX, float aY, float aZ) noexcept = 0;

  /// Sets the identifier that IGLContext::Select returns for the following primitives; 0 for none. Must not
  /// be called within a primitive. If a painter nests names with glPushName, the innermost one counts.
  virtual HRESULT SetTestID(ULONG aID) noexcept = 0;
  /// Sets the current colour; components from 0 to 1.
  virtual HRESULT SetVertexColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the line width in pixels. Not valid within a primitive. The value is not clamped: GL refuses 0 and
  /// less.
  virtual HRESULT SetVertexLineWidth(float aValue) noexcept = 0;
  /// Sets the stipple pattern of lines. Not valid within a primitive. The next SetDrawAttributes that sends
  /// all attributes replaces it.
  /// @param aPattern 16 pixels, from the lowest bit on; 0xFFFF is a solid line
  /// @param aFactor pixels per bit; below 1 is treated as 1
  virtual HRESULT SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept = 0;
  /// Sets the point size in pixels, with the restrictions of SetVertexLineWidth.
  virtual HRESULT SetVertexPointSize(float aValue) noexcept = 0;
  /// Sets whether edges from the following vertices are drawn where faces are drawn as lines.
  virtual HRESULT SetVertexEdgeFlag(LONG aIsEdge) noexcept = 0;

  /// Applies draw attributes. Only the colour is sent to GL if the same unchanged object was applied last in
  /// the same rendering context, and in the same list or outside lists. In that case other changes of GL
  /// state remain, for example those of a list drawn meanwhile.
  /// @param aI an object of the component's class; the canvas holds a reference until another object is
  ///           applied
  virtual HRESULT SetDrawAttributes(IGLDrawAttr* aI) noexcept = 0;
  /// Applies a material: the values of each enabled side and, while lighting is on, the modes of the light
  /// model. A material with no side enabled is ignored. See IGLMaterial for the effect of lighting.
  /// @param aMaterial the canvas holds a reference until another material is applied
  virtual HRESULT SetMaterial(IGLMaterial* aMaterial) noexcept = 0;

  // Compiled lists. A list is lost with its rendering context: at another Initialize, at a change of the
  // system's colours and at each off-screen capture. Call IsCompiledList before each use, and compile again
  // if it returns 0. One list can be open at a time. All five operations return E_GL_BADSTATE outside a
  // painter or gauge, and if the host has made another rendering context current.

  /// Opens a list. Calls until EndCompileList are compiled into the list and do not draw. Do not mix vertices
  /// of the canvas with your own glVertex calls between one BeginDraw... and its EndDrawVertices: the
  /// component may divide a long list between two primitives there. Whole blocks of your own GL calls are
  /// safe.
  /// @param aList receives the list, any non-zero number; 0 on failure
  /// @return S_OK; E_FAIL if GL has no list; E_GL_BADSTATE if the canvas has no context or a list is open
  virtual HRESULT BeginCompileList(int* aList) noexcept = 0;
  /// Closes the list that BeginCompileList opened.
  /// @return S_OK; E_GL_BADSTATE if the canvas has no context or no list is open
  virtual HRESULT EndCompileList() noexcept = 0;
  /// Draws a list. A lost list is not detected: if its number is in use again, that list is drawn.
  /// @return S_OK; E_GL_BADSTATE if the canvas has no context
  virtual HRESULT DrawCompiledList(int aList) noexcept = 0;
  /// Deletes a list. Does nothing if the list is lost.
  /// @return S_OK; E_GL_BADSTATE if the canvas has no context
  virtual HRESULT DeleteCompiledList(int aList) noexcept = 0;
  /// Returns whether a list still exists.
  /// @param aList  number returned by BeginCompileList; 0 is no list
  /// @param aValid receives 1 if the list can be drawn, else 0
  /// @return S_OK; E_GL_BADSTATE if the canvas has no context
  virtual HRESULT IsCompiledList(int aList, LONG* aValid) noexcept = 0;

 protected:
  ~IGLCanvas() = default;
};

/// Projections and attribute groups. Threads and results as at IGLCanvas.
struct IGLCanvas2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x6624D85F, 0x8064, 0x4078, {0xA0, 0x1A, 0x2F, 0x60, 0x76, 0xD5, 0x96, 0xE3}};

  /// Returns the inverse of the model-view matrix, or the matrix itself if it is singular. In a frame this is
  /// the placement of the eye in the world, if the painter has not changed the matrix.
  /// @return S_OK; E_OUTOFMEMORY or, outside a painter or gauge, E_GL_BADSTATE (nothing is written)
  virtual HRESULT GetModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Replaces the projection by a parallel one. The selected matrix stays selected. During a selection the
  /// hits then no longer match the picture: use PushProjectionMatrix instead.
  virtual HRESULT Ortho(double dLeft, double dRight, double dBottom, double dTop, double dZNear,
                        double dZFar) noexcept = 0;
  /// Replaces the projection by a perspective one. Selected matrix and selections as at Ortho.
  /// @param dFovY   vertical field of view, degrees
  /// @param dAspect width divided by height
  /// @param dZNear, dZFar distances of the planes from the eye; greater than 0
  virtual HRESULT Perspective(double dFovY, double dAspect, double dZNear, double dZFar) noexcept = 0;
  /// Saves groups of GL state (glPushAttrib), by GL's own mask.
  virtual HRESULT PushAttrib(ULONG dwAttribMask) noexcept = 0;
  /// Restores the state that PushAttrib saved last.
  virtual HRESULT PopAttrib() noexcept = 0;

 protected:
  ~IGLCanvas2() = default;
};

/// Conversions between model and window. Window coordinates are GL's: pixels from the lower left corner, z
/// from 0 at the near plane to 1 at the far plane.
///
/// If bUseCachedSetup is non-zero, the set-up of the viewer drawn last is used: model points are world
/// points, and any thread may call. If it is 0, the current matrices of the draw thread are used: model
/// points are points as the painter draws them now. These matrices also replace the cached ones until the
/// next viewer pass. Before the first pass the cached set-up is useless: identity matrices and an empty
/// viewport.
struct IGLCanvas3 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xE8AECE70, 0x954B, 0x4659, {0x93, 0xC1, 0xF3, 0x14, 0x46, 0xEC, 0x2B, 0x05}};

  /// Converts a model point to window coordinates.
  /// @param pModelCoord     the point
  /// @param bUseCachedSetup see above
  /// @param pWindowCoord    receives the point; does not change if there is none
  /// @return S_OK; E_INVALIDARG if a pointer is null; E_GL_BADSTATE without the cached set-up outside a
  ///         painter
  virtual HRESULT GetWindowCoords(GLDATA_POINT* pModelCoord, LONG bUseCachedSetup,
                                  GLDATA_POINT* pWindowCoord) noexcept = 0;
  /// Converts a window point to model coordinates.
  /// @param pWindowCoord    the point
  /// @param bUseCachedSetup see above
  /// @param pModelCoord     receives the point; does not change if there is none
  /// @return S_OK; E_INVALIDARG if a pointer is null; E_GL_BADSTATE without the cached set-up outside a
  ///         painter
  virtual HRESULT GetModelCoords(GLDATA_POINT* pWindowCoord, LONG bUseCachedSetup,
                                 GLDATA_POINT* pModelCoord) noexcept = 0;

 protected:
  ~IGLCanvas3() = default;
};

/// A store of transparent triangles, and the attributes applied last. Results as at IGLCanvas.
///
/// The store keeps triangles in the order of adding until the painter clears it. The component does not draw
/// or sort them: the painter adds triangles, fetches them, sorts them by the distance of their centroids and
/// draws them. The store has no lock: use it on the draw thread only.
struct IGLCanvas13_1 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x865105DF, 0xCC17, 0x4E81, {0x9C, 0xC7, 0x73, 0x51, 0x17, 0xF0, 0x24, 0x99}};

  /// Returns the draw attributes applied last.
  /// @param aI receives a counted reference; null if there are none
  virtual HRESULT GetDrawAttributes(IGLDrawAttr** aI) noexcept = 0;

  /// Empties the store.
  virtual HRESULT ClearTransparentTriangles() noexcept = 0;
  /// Adds a triangle of one colour with the normal of its face. The normal points to the side from which the
  /// points are counter-clockwise; it is 0, 0, 0 if the triangle has no area.
  /// @param arPoints 3 points
  /// @param pColor   colour of all three points
  /// @return S_OK; E_OUTOFMEMORY (nothing is added)
  virtual HRESULT AddTransparentTriangle(GLDATA_POINT* arPoints, GLDATA_RGBA* pColor) noexcept = 0;
  /// Adds a triangle as AddTransparentTriangle, with 3 colours.
  virtual HRESULT AddTransparentTriangle2(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors) noexcept = 0;
  /// Adds a triangle as AddTransparentTriangle, with 3 colours and 3 normals. The normals are not changed.
  virtual HRESULT AddTransparentTriangle3(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors,
                                          GLDATA_POINT* arNormals) noexcept = 0;
  /// Returns the number of triangles in the store.
  /// @param plCount receives the number
  virtual HRESULT GetNumTransparentTriangles(LONG* plCount) noexcept = 0;
  /// Copies triangles from the store, with their centroids and the distance 0. One call for all triangles is
  /// fastest.
  /// @param lOffset     index of the first triangle; below 0 is treated as 0
  /// @param lCount      number of triangles; below 1 copies none
  /// @param arTriangles receives lCount triangles
  /// @return S_OK; E_INVALIDARG if the store is empty or holds fewer triangles (nothing is written)
  virtual HRESULT GetTransparentTriangles(LONG lOffset, LONG lCount,
                                          GLDATA_TRANS_TRIANGLE* arTriangles) noexcept = 0;

  /// Saves the depth state and switches writes to the depth buffer on (non-zero) or off. The depth test does
  /// not change. IGLCanvas::PopDepthAttribute restores the state.
  virtual HRESULT PushDepthMask(LONG bNewValue) noexcept = 0;
  /// Stores a value for the host. The component, including Select, does not use it.
  virtual HRESULT SetSelectionMode(LONG bValue) noexcept = 0;
  /// Returns the value that SetSelectionMode stored.
  /// @param pbValue receives the value; initially 0
  virtual HRESULT GetSelectionMode(LONG* pbValue) noexcept = 0;
  /// Returns the material applied last.
  /// @param aMaterial receives a counted reference; null if there is none
  virtual HRESULT GetMaterial(IGLMaterial** aMaterial) noexcept = 0;

 protected:
  ~IGLCanvas13_1() = default;
};

/// Winding, and the model-view matrix itself. Threads and results as at IGLCanvas.
struct IGLCanvas14_2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x7ED22534, 0xF8F7, 0x43CA, {0x8B, 0xF1, 0x27, 0x7F, 0x34, 0xF2, 0x7F, 0x1D}};

  /// Makes clockwise faces the front faces (non-zero), for mirrored models. The next SetDrawAttributes that
  /// sends all attributes restores counter-clockwise.
  virtual HRESULT SetCWWinding(LONG bValue) noexcept = 0;
  /// Returns the model-view matrix.
  /// @return S_OK; E_GL_BADSTATE outside a painter or gauge (nothing is written)
  virtual HRESULT GetRawModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCanvas14_2() = default;
};

/// Texture calls of GL. Each operation makes the GL call in brackets. Counts that GL does not take
/// (nDataBytes, nCount) are ignored. Threads as at IGLCanvas. Results: S_OK; E_INVALIDARG if a pointer is
/// null, but TexImage2D accepts null.
struct IGLCanvas14_4 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x03E21E5C, 0xAD9E, 0x4C71, {0x8F, 0x39, 0xA1, 0x4D, 0x90, 0x01, 0xBB, 0x00}};

  /// Returns unused texture names (glGenTextures).
  /// @param nTextures    number of names
  /// @param pnTextureIDs receives nTextures names
  virtual HRESULT GenTextures(int nTextures, unsigned int* pnTextureIDs) noexcept = 0;
  /// Binds a two-dimensional texture (glBindTexture); 0 is GL's default texture.
  virtual HRESULT BindTexture2D(unsigned int nTextureID) noexcept = 0;
  /// Loads an image, or allocates it if pbyPixels is null (glTexImage2D).
  virtual HRESULT TexImage2D(int nLevel, int nInternalFormat, int nWidth, int nHeight, int nBorder,
                             eGLTexFormat eFormat, eGLDataType eType, int nDataBytes,
                             unsigned char* pbyPixels) noexcept = 0;
  /// Switches a capability on (glEnable).
  virtual HRESULT Enable(eGLEnable eEnable) noexcept = 0;
  /// Switches a capability off (glDisable).
  virtual HRESULT Disable(eGLEnable eDisable) noexcept = 0;
  /// Sets how a texture coordinate is generated (glTexGeni).
  virtual HRESULT TexGeni(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nValue) noexcept = 0;
  /// Same as TexGeni, with a double value (glTexGend).
  virtual HRESULT TexGend(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName,
                          double dValue) noexcept = 0;
  /// Same as TexGeni, with the four values of a plane (glTexGeniv).
  virtual HRESULT TexGeniv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           int* pnValue) noexcept = 0;
  /// Same as TexGeniv, with double values (glTexGendv).
  virtual HRESULT TexGendv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           double* pdValue) noexcept = 0;
  /// Sets a parameter of the current two-dimensional texture (glTexParameteri).
  virtual HRESULT TexParameteri2D(eGLTextureParameterName ePName, int nValue) noexcept = 0;
  /// Sets how textures and colours are combined (glTexEnvi).
  virtual HRESULT TexEnvi(eGLTextureEnvTarget eTarget, eGLTextureEnvParameter ePName,
                          int nValue) noexcept = 0;
  /// Sets the texture coordinates of the following vertices (glTexCoord2f).
  virtual HRESULT TexCoord2f(float fS, float fT) noexcept = 0;
  /// Same as TexCoord2f, in double (glTexCoord2d).
  virtual HRESULT TexCoord2d(double dS, double dT) noexcept = 0;
  /// Loads an image of any size with all mipmap levels (gluBuild2DMipmaps), and sets a level-of-detail bias
  /// of -0.5, which selects more detailed levels.
  virtual HRESULT Build2DMipmaps(int nInternalFormat, int nWidth, int nHeight, eGLTexFormat eFormat,
                                 eGLDataType eType, int nDataBytes, unsigned char* pbyPixels) noexcept = 0;

 protected:
  ~IGLCanvas14_4() = default;
};
