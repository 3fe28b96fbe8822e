/// @file
/// GLCanvas: what painters and gauges draw on, a thin and typed layer over OpenGL 1.1. One a context.

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

/// What can be switched, by GL's own values.
enum eGLEnable : int {
  GLE_COLOR_MATERIAL = 2903,
  GLE_TEXTURE_GEN_S = 3168,
  GLE_TEXTURE_GEN_T = 3169,
  GLE_TEXTURE_2D = 3553
};

/// Texture coordinates, by GL's own values.
enum eGLTextureCoordName : int { GLTCN_S = 8192, GLTCN_T = 8193, GLTCN_R = 8194, GLTCN_Q = 8195 };

/// What of a texture coordinate's making is set, by GL's own values.
enum eGLTextureGenParameter : int {
  GLTGP_TEXTURE_GEN_MODE = 9472,
  GLTGP_OBJECT_PLANE = 9473,
  GLTGP_EYE_PLANE = 9474
};

/// What of a texture is set, by GL's own values.
enum eGLTextureParameterName : int {
  GLTPN_TEXTURE_MAG_FILTER = 10240,
  GLTPN_TEXTURE_MIN_FILTER = 10241,
  GLTPN_TEXTURE_WRAP_S = 10242,
  GLTPN_TEXTURE_WRAP_T = 10243
};

/// What textures meet, by GL's own value.
enum eGLTextureEnvTarget : int { GLTET_TEXTURE_ENV = 8960 };

/// What of that meeting is set, by GL's own values.
enum eGLTextureEnvParameter : int { GLTEP_TEXTURE_ENV_MODE = 8704, GLTEP_TEXTURE_ENV_COLOR = 8705 };

/// Matrices, primitives, attributes and lists.
///
/// Threads: drawing belongs on the draw thread, inside a painter or gauge. On another thread a call reaches
/// no rendering context of the component's and draws nothing; one that the host has made current there takes
/// it. No lock is taken, no operation waits, and what is set stays until something else sets it.
/// Precision: matrices are double. Vertices and normals become float, so a model with large coordinates is
/// best translated and drawn in small ones.
/// Results: S_OK; E_INVALIDARG when a pointer is null, but the operations within a primitive (Vertex... and
/// SetVertex...) test nothing; what else stands at the operation. GL's own errors aren't told: a call that GL
/// refuses does nothing.
struct IGLCanvas : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x06BE8897, 0x88A8, 0x46C5, {0x97, 0xD5, 0x60, 0x29, 0xDC, 0x9F, 0x5D, 0x69}};

  // Matrices. All multiply onto the current matrix from the right: what is set last acts on vertices first.
  // Pushes and pops pair up.

  /// Goes into a coordinate system, such as IGLCoord::GetMatrix6d gives. Acts on whichever matrix is
  /// selected.
  virtual HRESULT SetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Goes out of a coordinate system: the inverse of SetModelview6d.
  virtual HRESULT ResetModelview6d(GLDATA_MATRIX6D* aMatrix) noexcept = 0;
  /// Multiplies by a matrix in GL's order.
  virtual HRESULT SetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Multiplies by the inverse; a matrix that has none is multiplied by as it is.
  /// @return S_OK; E_OUTOFMEMORY, with nothing multiplied
  virtual HRESULT ResetModelview16d(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Saves the model-view matrix; non-zero then loads the identity.
  virtual HRESULT PushModelviewMatrix(LONG aLoadIdentity) noexcept = 0;
  /// Restores what PushModelviewMatrix saved last.
  virtual HRESULT PopModelviewMatrix() noexcept = 0;
  /// Moves the origin.
  /// @param aOrigin where it goes, in the present coordinates
  virtual HRESULT Translate(GLDATA_POINT* aOrigin) noexcept = 0;
  /// Turns about an axis through the origin, counter-clockwise seen from its tip.
  /// @param aAngle  radians
  /// @param aVector the axis, of any length but 0
  virtual HRESULT Rotate_RAD(double aAngle, GLDATA_POINT* aVector) noexcept = 0;
  /// Stretches along the axes. Normals keep their length one: they are made so anew.
  /// @param aScale the factors; negative ones mirror (see IGLCanvas14_2::SetCWWinding)
  virtual HRESULT Scale(GLDATA_POINT* aScale) noexcept = 0;
  /// Saves the projection; non-zero then sets a parallel one for overlays, whose units are the same in x and
  /// y: the window's shorter side runs from -1 to 1, the longer one further by the ratio of the sides (for
  /// the whole window, whatever the viewer's clip), z from -100000 to 100000. In a selection only the saving
  /// is done.
  /// @param aLoadIdentity non-zero sets the overlays' projection
  /// @param aNewExtents receives the widths in x, y and z when the projection is set, else stays; null is
  ///                    allowed
  /// @return S_OK; E_GL_BADSTATE when aLoadIdentity is non-zero and the canvas has no context: nothing is
  ///         pushed
  virtual HRESULT PushProjectionMatrix(LONG aLoadIdentity, GLDATA_POINT* aNewExtents) noexcept = 0;
  /// Restores what PushProjectionMatrix saved last; the model-view matrix is selected afterwards.
  virtual HRESULT PopProjectionMatrix() noexcept = 0;
  /// Switches the context's clip planes on (non-zero) or off while something is drawn; does nothing when
  /// there are none.
  /// @return S_OK; E_GL_BADSTATE when the canvas has no context
  virtual HRESULT EnableClipPlanes(LONG aEnable) noexcept = 0;

  // Groups of GL state.

  /// Saves the depth state and switches the depth test off.
  virtual HRESULT PushDepthAttribute() noexcept = 0;
  /// Restores what was pushed last, PushDepthMask of IGLCanvas13_1 included.
  virtual HRESULT PopDepthAttribute() noexcept = 0;
  /// Saves the lighting state and switches lighting off.
  virtual HRESULT PushLightAttribute() noexcept = 0;
  /// Restores what PushLightAttribute saved last.
  virtual HRESULT PopLightAttribute() noexcept = 0;

  // Primitives. Between Begin and End only vertices, normals, colours, edge flags and texture coordinates may
  // be given. A face is a front face when its vertices run counter-clockwise on the screen.

  /// Each vertex is a point.
  virtual HRESULT BeginDrawPoints() noexcept = 0;
  /// Each two vertices are a line.
  virtual HRESULT BeginDrawLines() noexcept = 0;
  /// A line from vertex to vertex.
  virtual HRESULT BeginDrawLineStrip() noexcept = 0;
  /// A line from vertex to vertex, and back to the first.
  virtual HRESULT BeginDrawLineLoop() noexcept = 0;
  /// Each three vertices are a triangle.
  virtual HRESULT BeginDrawTriangles() noexcept = 0;
  /// Each vertex from the third on makes a triangle with the two before it.
  virtual HRESULT BeginDrawTriangleStrip() noexcept = 0;
  /// Each vertex from the third on makes a triangle with the one before it and the first.
  virtual HRESULT BeginDrawTriangleFan() noexcept = 0;
  /// Each four vertices are a quadrilateral.
  virtual HRESULT BeginDrawQuads() noexcept = 0;
  /// Each further pair of vertices makes a quadrilateral with the pair before it.
  virtual HRESULT BeginDrawQuadStrip() noexcept = 0;
  /// All vertices are one convex polygon.
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

  /// Sets the normal of the vertices that follow, of any length but 0.
  virtual HRESULT SetVertexNormal(GLDATA_POINT* Point) noexcept = 0;
  /// As SetVertexNormal.
  virtual HRESULT SetVertexNormal3d(double aX, double aY, double aZ) noexcept = 0;
  /// As SetVertexNormal.
  virtual HRESULT SetVertexNormal3f(float aX, float aY, float aZ) noexcept = 0;

  /// Gives what is drawn from here on an identifier, which IGLContext::Select finds it by; 0 can't be found.
  /// Has no effect on pictures, and must not be called within a primitive.
  virtual HRESULT SetTestID(ULONG aID) noexcept = 0;
  /// Sets the current colour; components from 0 to 1.
  virtual HRESULT SetVertexColor(GLDATA_RGBA* aColor) noexcept = 0;
  /// Sets the line width in pixels; not within a primitive. Not limited here: 0 or less is refused by GL.
  virtual HRESULT SetVertexLineWidth(float aValue) noexcept = 0;
  /// Sets which pixels of a line are drawn; not within a primitive. SetDrawAttributes with a solid pattern
  /// ends it.
  /// @param aPattern 16 pixels, from the lowest bit on; 0xFFFF is a solid line
  /// @param aFactor how many pixels each bit stands for; below 1 counts as 1
  virtual HRESULT SetVertexLineStipple(std::uint16_t aPattern, int aFactor) noexcept = 0;
  /// Sets the point size in pixels; as SetVertexLineWidth.
  virtual HRESULT SetVertexPointSize(float aValue) noexcept = 0;
  /// Tells whether the edges from the vertices that follow are drawn where faces are drawn as lines.
  virtual HRESULT SetVertexEdgeFlag(LONG aIsEdge) noexcept = 0;

  /// Applies draw attributes: all of them, or the colour alone when the same object was applied last, in the
  /// same rendering context and the same list or none, and is unchanged. In that case whatever else has
  /// changed GL's state meanwhile stays, a list that was drawn among them.
  /// @param aI an object of the component's own class; the canvas holds a reference until another one is
  ///           applied
  virtual HRESULT SetDrawAttributes(IGLDrawAttr* aI) noexcept = 0;
  /// Applies a material, in full each time. One with neither side enabled is left out. See IGLMaterial for
  /// what lighting makes of it.
  /// @param aMaterial the canvas holds a reference until another one is applied
  virtual HRESULT SetMaterial(IGLMaterial* aMaterial) noexcept = 0;

  // Compiled lists. A list is lost with its rendering context: at another Initialize, a change of the
  // system's colours and at every off-screen capture. So ask IsCompiledList before each use, and compile
  // again when it says no. Lists do not nest. All five operations answer E_GL_BADSTATE outside of a painter
  // or gauge, and where the host has made another rendering context current.

  /// Opens a list. What is drawn up to EndCompileList goes into the list, and not to the screen.
  /// Do not mix vertices of the canvas with your own glVertex calls between one BeginDraw... and its
  /// EndDrawVertices: the component may divide a long list between two primitives there. Whole blocks of your
  /// own GL calls are safe.
  /// @param aList receives the list, any non-zero number; 0 on failure
  /// @return S_OK; E_FAIL if GL has no list; E_GL_BADSTATE if the canvas has no context or a list is open
  virtual HRESULT BeginCompileList(int* aList) noexcept = 0;
  /// Closes the list that BeginCompileList opened.
  /// @return S_OK; E_GL_BADSTATE when the canvas has no context or no list is open
  virtual HRESULT EndCompileList() noexcept = 0;
  /// Draws a list. One that is lost isn't recognised: what stands in its place now is drawn.
  /// @return S_OK; E_GL_BADSTATE when the canvas has no context
  virtual HRESULT DrawCompiledList(int aList) noexcept = 0;
  /// Deletes a list; one that is lost does nothing.
  /// @return S_OK; E_GL_BADSTATE when the canvas has no context
  virtual HRESULT DeleteCompiledList(int aList) noexcept = 0;
  /// Tells whether a list is still there.
  /// @param aList  what BeginCompileList gave; 0 is no list
  /// @param aValid receives 1 when the list can be drawn, else 0
  /// @return S_OK; E_GL_BADSTATE when the canvas has no context
  virtual HRESULT IsCompiledList(int aList, LONG* aValid) noexcept = 0;

 protected:
  ~IGLCanvas() = default;
};

/// Projections and attribute groups. Threads and results as at IGLCanvas.
struct IGLCanvas2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x6624D85F, 0x8064, 0x4078, {0xA0, 0x1A, 0x2F, 0x60, 0x76, 0xD5, 0x96, 0xE3}};

  /// Gives the inverse of the model-view matrix: in a painter that has changed nothing, the eye's placement
  /// in the world. A matrix that has none is given as it is.
  /// @return S_OK; E_OUTOFMEMORY and E_GL_BADSTATE (outside of a painter or gauge), with nothing written
  virtual HRESULT GetModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;
  /// Replaces the projection by a parallel one. The selected matrix stays selected. In a selection the pick
  /// then no longer matches the picture: use PushProjectionMatrix there.
  virtual HRESULT Ortho(double dLeft, double dRight, double dBottom, double dTop, double dZNear,
                        double dZFar) noexcept = 0;
  /// Replaces the projection by a perspective one. As Ortho.
  /// @param dFovY   vertical field of view, degrees
  /// @param dAspect width divided by height
  /// @param dZNear, dZFar distances of the planes from the eye; above 0
  virtual HRESULT Perspective(double dFovY, double dAspect, double dZNear, double dZFar) noexcept = 0;
  /// Saves groups of GL state; the mask is GL's own.
  virtual HRESULT PushAttrib(ULONG dwAttribMask) noexcept = 0;
  /// Restores what PushAttrib saved last.
  virtual HRESULT PopAttrib() noexcept = 0;

 protected:
  ~IGLCanvas2() = default;
};

/// From the model to the window and back. Window coordinates are GL's: pixels from the lower left corner, z
/// from 0 at the near plane to 1 at the far one.
///
/// bUseCachedSetup non-zero takes the set-up of the viewer that was drawn last: points of the world, no GL
/// call, any thread. Zero takes the matrices of the moment, on the draw thread: points as the painter draws
/// them now. It also puts them in the place of the cached ones until the next viewer pass. Before the first
/// pass the cached set-up is of no use: identity matrices and an empty viewport.
struct IGLCanvas3 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0xE8AECE70, 0x954B, 0x4659, {0x93, 0xC1, 0xF3, 0x14, 0x46, 0xEC, 0x2B, 0x05}};

  /// Converts a point of the model to the window.
  /// @param pModelCoord     the point
  /// @param bUseCachedSetup see above
  /// @param pWindowCoord    receives the point; stays as it is when there is none
  /// @return S_OK; E_INVALIDARG when a pointer is null; E_GL_BADSTATE without the cached set-up outside of a
  /// painter
  virtual HRESULT GetWindowCoords(GLDATA_POINT* pModelCoord, LONG bUseCachedSetup,
                                  GLDATA_POINT* pWindowCoord) noexcept = 0;
  /// Converts a point of the window to the model.
  /// @param pWindowCoord    the point
  /// @param bUseCachedSetup see above
  /// @param pModelCoord     receives the point; stays as it is when there is none
  /// @return S_OK; E_INVALIDARG when a pointer is null; E_GL_BADSTATE without the cached set-up outside of a
  /// painter
  virtual HRESULT GetModelCoords(GLDATA_POINT* pWindowCoord, LONG bUseCachedSetup,
                                 GLDATA_POINT* pModelCoord) noexcept = 0;

 protected:
  ~IGLCanvas3() = default;
};

/// A store of transparent triangles, and what was applied last. Results as at IGLCanvas.
///
/// The store keeps triangles in order of adding until they are cleared: nothing is drawn, sorted or emptied
/// by itself. A painter adds, fetches, sorts by the distance of the centroids and draws. The store has no
/// lock: one thread at a time, the one that draws.
struct IGLCanvas13_1 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x865105DF, 0xCC17, 0x4E81, {0x9C, 0xC7, 0x73, 0x51, 0x17, 0xF0, 0x24, 0x99}};

  /// @param aI receives the draw attributes applied last, counted; null when there are none
  virtual HRESULT GetDrawAttributes(IGLDrawAttr** aI) noexcept = 0;

  /// Empties the store.
  virtual HRESULT ClearTransparentTriangles() noexcept = 0;
  /// Adds a triangle of one colour, with the normal of its face: towards the side from which the points run
  /// counter-clockwise; 0, 0, 0 when it has no area.
  /// @param arPoints 3 points
  /// @param pColor   of all three
  /// @return S_OK; E_OUTOFMEMORY, with nothing added
  virtual HRESULT AddTransparentTriangle(GLDATA_POINT* arPoints, GLDATA_RGBA* pColor) noexcept = 0;
  /// As AddTransparentTriangle, with 3 colours.
  virtual HRESULT AddTransparentTriangle2(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors) noexcept = 0;
  /// As AddTransparentTriangle, with 3 colours and 3 normals, which are kept as they are.
  virtual HRESULT AddTransparentTriangle3(GLDATA_POINT* arPoints, GLDATA_RGBA* arColors,
                                          GLDATA_POINT* arNormals) noexcept = 0;
  /// @param plCount receives how many triangles the store holds
  virtual HRESULT GetNumTransparentTriangles(LONG* plCount) noexcept = 0;
  /// Copies triangles out, with their centroids, and 0 as distance. One call for all is the fast way.
  /// @param lOffset     the first one; below 0 counts as 0
  /// @param lCount      how many; below 1 copies none
  /// @param arTriangles receives them
  /// @return S_OK; E_INVALIDARG when the store is empty or ends before, with nothing written
  virtual HRESULT GetTransparentTriangles(LONG lOffset, LONG lCount,
                                          GLDATA_TRANS_TRIANGLE* arTriangles) noexcept = 0;

  /// Saves the depth state and switches writes to the depth buffer on (non-zero) or off; the depth test
  /// stays. IGLCanvas::PopDepthAttribute ends it.
  virtual HRESULT PushDepthMask(LONG bNewValue) noexcept = 0;
  /// Keeps a value for the client's own use; the component, Select included, neither reads nor sets it.
  virtual HRESULT SetSelectionMode(LONG bValue) noexcept = 0;
  /// @param pbValue receives the value as it was set; 0 at first
  virtual HRESULT GetSelectionMode(LONG* pbValue) noexcept = 0;
  /// @param aMaterial receives the material applied last, counted; null when there is none
  virtual HRESULT GetMaterial(IGLMaterial** aMaterial) noexcept = 0;

 protected:
  ~IGLCanvas13_1() = default;
};

/// Winding, and the model-view matrix as it stands. Threads and results as at IGLCanvas.
struct IGLCanvas14_2 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x7ED22534, 0xF8F7, 0x43CA, {0x8B, 0xF1, 0x27, 0x7F, 0x34, 0xF2, 0x7F, 0x1D}};

  /// Makes faces whose vertices run clockwise the front faces (non-zero), for mirrored models. The next full
  /// SetDrawAttributes goes back to counter-clockwise.
  virtual HRESULT SetCWWinding(LONG bValue) noexcept = 0;
  /// Gives the model-view matrix.
  /// @return S_OK; E_GL_BADSTATE outside of a painter or gauge, with nothing written
  virtual HRESULT GetRawModelviewMatrix(GLDATA_MATRIX16D* aMatrix) noexcept = 0;

 protected:
  ~IGLCanvas14_2() = default;
};

/// Textures by GL's own names: each operation is the GL call of its name. The counts that GL doesn't take
/// (nDataBytes, nCount) are ignored. Threads as at IGLCanvas. Results: S_OK; E_INVALIDARG when a pointer is
/// null, but TexImage2D takes null as room for an image.
struct IGLCanvas14_4 : IUnknown {
  /// The interface's identifier.
  static constexpr IID Identifier = {
      0x03E21E5C, 0xAD9E, 0x4C71, {0x8F, 0x39, 0xA1, 0x4D, 0x90, 0x01, 0xBB, 0x00}};

  /// Gives unused names (glGenTextures).
  /// @param nTextures    how many
  /// @param pnTextureIDs receives them; room for nTextures
  virtual HRESULT GenTextures(int nTextures, unsigned int* pnTextureIDs) noexcept = 0;
  /// Makes a texture the current two-dimensional one (glBindTexture); 0 is GL's own.
  virtual HRESULT BindTexture2D(unsigned int nTextureID) noexcept = 0;
  /// Loads an image, or with null makes room for one (glTexImage2D).
  virtual HRESULT TexImage2D(int nLevel, int nInternalFormat, int nWidth, int nHeight, int nBorder,
                             eGLTexFormat eFormat, eGLDataType eType, int nDataBytes,
                             unsigned char* pbyPixels) noexcept = 0;
  /// Switches a part of GL on (glEnable).
  virtual HRESULT Enable(eGLEnable eEnable) noexcept = 0;
  /// Switches a part of GL off (glDisable).
  virtual HRESULT Disable(eGLEnable eDisable) noexcept = 0;
  /// Chooses how a texture coordinate is made (glTexGeni).
  virtual HRESULT TexGeni(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nValue) noexcept = 0;
  /// As TexGeni, with a real value (glTexGend).
  virtual HRESULT TexGend(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName,
                          double dValue) noexcept = 0;
  /// As TexGeni, with the four values of a plane (glTexGeniv).
  virtual HRESULT TexGeniv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           int* pnValue) noexcept = 0;
  /// As TexGeniv, with real values (glTexGendv).
  virtual HRESULT TexGendv(eGLTextureCoordName eCoord, eGLTextureGenParameter ePName, int nCount,
                           double* pdValue) noexcept = 0;
  /// Sets a parameter of the current two-dimensional texture (glTexParameteri).
  virtual HRESULT TexParameteri2D(eGLTextureParameterName ePName, int nValue) noexcept = 0;
  /// Sets how textures meet colours (glTexEnvi).
  virtual HRESULT TexEnvi(eGLTextureEnvTarget eTarget, eGLTextureEnvParameter ePName,
                          int nValue) noexcept = 0;
  /// Sets the texture coordinates of the vertices that follow (glTexCoord2f).
  virtual HRESULT TexCoord2f(float fS, float fT) noexcept = 0;
  /// As TexCoord2f (glTexCoord2d).
  virtual HRESULT TexCoord2d(double dS, double dT) noexcept = 0;
  /// Loads an image of any size with all of its levels, and sharpens the choice of levels by half a level.
  virtual HRESULT Build2DMipmaps(int nInternalFormat, int nWidth, int nHeight, eGLTexFormat eFormat,
                                 eGLDataType eType, int nDataBytes, unsigned char* pbyPixels) noexcept = 0;

 protected:
  ~IGLCanvas14_4() = default;
};
