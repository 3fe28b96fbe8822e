// The GL calls of the canvas and their order. Plain rendering context.

#include "component/Module.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"
#include "support/TestSite.h"
#include "view/GLCanvas.h"

namespace {

using Calls = std::vector<std::string>;
using Work = std::function<void()>;

Calls CallsOf(const Work& aWork) {
  const GLRecorder recorder;
  aWork();
  return recorder.Calls();
}

class CanvasOrder : public testing::Test {
 protected:
  CanvasOrder() { static_cast<GLCanvas*>(canvas.Get())->SetSite(std::make_shared<GLSiteLink>(&site)); }

  /// Runs the body of a test with a current plain rendering context. A GL error fails the test.
  static void OnGL(const Work& aBody) { DrawPlainGL(64, 64, aBody); }

  TestSite site;
  GLPtr<IGLCanvas> canvas = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  GLPtr<IGLCanvas2> canvas2 = canvas.As<IGLCanvas2>();
  GLPtr<IGLCanvas13_1> canvas13 = canvas.As<IGLCanvas13_1>();
};

TEST_F(CanvasOrder, OperationsMakeTheirGLCalls) {
  GLDATA_POINT point{16777217.0, -2, 3};
  unsigned char pixels[16] = {};
  const auto canvas14 = canvas.As<IGLCanvas14_4>();
  GLint mode = 0;
  const auto noSides = GLCreate<IGLMaterial>(CLSID_GLMaterial);
  noSides->EnableDrawMode(static_cast<eGLMatDrawMode>(GLMM_ENABLE_FRONT | GLMM_ENABLE_BACK), 0);
  const std::tuple<const char*, Work, Work> rows[] = {
      {"Ortho keeps the mode", [&] { canvas2->Ortho(1, 2, 3, 4, 5, 6); },
       [&] {
         glGetIntegerv(GL_MATRIX_MODE, &mode), glMatrixMode(GL_PROJECTION), glLoadIdentity();
         glOrtho(1, 2, 3, 4, 5, 6), glMatrixMode(GL_MODELVIEW);
       }},
      {"Perspective keeps it", [&] { glMatrixMode(GL_PROJECTION), canvas2->Perspective(45, 2, 1, 9); },
       [&] {
         glMatrixMode(GL_PROJECTION), glGetIntegerv(GL_MATRIX_MODE, &mode), glLoadIdentity();
         gluPerspective(45, 2, 1, 9);
       }},
      {"vertices are floats", [&] { canvas->Vertex(&point), canvas->Vertex3d(0.1, 16777217.0, 2); },
       [] { glVertex3f(16777216, -2, 3), glVertex3f(0.1f, 16777216, 2); }},
      {"normals are floats", [&] { canvas->SetVertexNormal(&point), canvas->SetVertexNormal3d(0, 0.1, 1); },
       [] { glNormal3f(16777216, -2, 3), glNormal3f(0, 0.1f, 1); }},
      {"attribute brackets",
       [&] {
         canvas->PushDepthAttribute(), canvas->PopDepthAttribute();
         canvas->PushLightAttribute(), canvas->PopLightAttribute();
         canvas2->PushAttrib(GL_LINE_BIT), canvas2->PopAttrib();
         canvas13->PushDepthMask(0), canvas->PopDepthAttribute();
       },
       [] {
         glPushAttrib(GL_DEPTH_BUFFER_BIT), glDisable(GL_DEPTH_TEST), glPopAttrib();
         glPushAttrib(GL_LIGHTING_BIT), glDisable(GL_LIGHTING), glPopAttrib();
         glPushAttrib(GL_LINE_BIT), glPopAttrib();
         glPushAttrib(GL_DEPTH_BUFFER_BIT), glDepthMask(GL_FALSE), glPopAttrib();
       }},
      {"material without sides",
       [&] { glEnable(GL_LIGHTING), canvas->SetMaterial(noSides.Get()), glDisable(GL_LIGHTING); },
       [] { glEnable(GL_LIGHTING), glDisable(GL_LIGHTING); }},
      {"stipple factor", [&] { canvas->SetVertexLineStipple(255, -3); },
       [] { glEnable(GL_LINE_STIPPLE), glLineStipple(1, 255); }},
      {"mipmaps", [&] { canvas14->Build2DMipmaps(4, 2, 2, GLTF_RGBA, GLDT_UNSIGNED_BYTE, -1, pixels); },
       [&] {
         glGetString(GL_VERSION);  // without GL, GLU is not called
         gluBuild2DMipmaps(GL_TEXTURE_2D, 4, 2, 2, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
         glTexEnvf(0x8500, 0x8501, -0.5f);  // GL_TEXTURE_FILTER_CONTROL, GL_TEXTURE_LOD_BIAS
       }}};
  OnGL([&] {
    for (const auto& [name, work, plain] : rows) {
      glMatrixMode(GL_MODELVIEW);
      const Calls wanted = CallsOf(plain);
      glMatrixMode(GL_MODELVIEW);
      EXPECT_EQ(CallsOf(work), wanted) << name;
    }
    EXPECT_EQ(canvas14->GenTextures(1, nullptr), E_INVALIDARG);
  });
}

/// State set by a full application of attributes, and the corresponding calls of plain GL.
struct Look {
  GLenum m_Shade = GL_FLAT, m_Front = GL_FILL, m_Back = GL_FILL;
  bool m_bLineSmooth = false, m_bPointSmooth = false;
  GLenum m_Offset = 0;      // the enabled kind; 0: both off
  GLenum m_Cull = GL_BACK;  // 0: none
};

void ApplyPlainly(const Look& aLook) {
  const auto set = [](GLenum aWhat, bool aOn) { aOn ? glEnable(aWhat) : glDisable(aWhat); };
  glFrontFace(GL_CCW), glShadeModel(aLook.m_Shade);
  glPolygonMode(GL_FRONT, aLook.m_Front), glPolygonMode(GL_BACK, aLook.m_Back);
  set(GL_LINE_SMOOTH, aLook.m_bLineSmooth), set(GL_POINT_SMOOTH, aLook.m_bPointSmooth);
  if (aLook.m_Offset == 0) glDisable(GL_POLYGON_OFFSET_LINE), glDisable(GL_POLYGON_OFFSET_FILL);
  if (aLook.m_Offset != 0) glEnable(aLook.m_Offset);
  if (aLook.m_Offset != 0) glPolygonOffset(aLook.m_Offset == GL_POLYGON_OFFSET_FILL ? 1 : -1, 0);
  set(GL_CULL_FACE, aLook.m_Cull != 0);
  if (aLook.m_Cull != 0) glCullFace(aLook.m_Cull);
  glPointSize(1), glDisable(GL_LINE_STIPPLE), glLineWidth(1), glColor4f(1, 1, 1, 1);
}

TEST_F(CanvasOrder, EachModeBitHasItsEffect) {
  const std::pair<int, Look> rows[] = {
      {0, {}},
      {GLDM_SHOW_FRONT | GLDM_SMOOTH_LIGHTING, {.m_Shade = GL_SMOOTH}},
      {GLDM_POINT_FRONT, {.m_Front = GL_POINT}},
      {GLDM_POINT_BACK, {.m_Back = GL_POINT}},
      {GLDM_LINE_FRONT | GLDM_POINT_FRONT, {.m_Front = GL_LINE}},
      {GLDM_LINE_BACK | GLDM_POINT_BACK, {.m_Back = GL_LINE}},
      {GLDM_SHOW_BACK, {.m_Cull = GL_FRONT}},
      {GLDM_SHOW_FRONT | GLDM_SHOW_BACK | GLDM_TRANSPARENCY, {.m_Cull = 0}},
      {GLDM_SMOOTH_POINT, {.m_bPointSmooth = true}},
      {GLDM_SMOOTH_LINE, {.m_bLineSmooth = true}},
      {GLDM_POLYGON_OFFSET, {.m_Offset = GL_POLYGON_OFFSET_FILL}},
      {GLDM_POLYGON_OFFSET | GLDM_POLYGON_OFFSET_REVERSE, {.m_Offset = GL_POLYGON_OFFSET_LINE}}};
  OnGL([&] {
    for (const auto& [bits, look] : rows) {
      const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
      attributes->EnableDrawMode(static_cast<eGLDrawMode>(~bits), 0);
      attributes->EnableDrawMode(static_cast<eGLDrawMode>(bits), 1);
      const Calls wanted = CallsOf([plain = look] { ApplyPlainly(plain); });
      EXPECT_EQ(CallsOf([&] { canvas->SetDrawAttributes(attributes.Get()); }), wanted) << "mode " << bits;
    }
  });
}

TEST_F(CanvasOrder, UnchangedAttributesNeedOneCall) {
  const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  const auto other = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  const auto apply = [&](const GLPtr<IGLDrawAttr>& aI) {
    return CallsOf([&] { canvas->SetDrawAttributes(aI.Get()); });
  };
  OnGL([&] {
    const Calls full = apply(attributes);
    EXPECT_EQ(apply(attributes), CallsOf([] { glColor4f(1, 1, 1, 1); }));
    attributes->SetRed(1.0f), attributes->SetLineStippleFactor(5);
    EXPECT_EQ(apply(attributes), full) << "a setter causes a full application; a solid line has no stipple";
    const auto second = GLCreate<IGLCanvas>(CLSID_GLCanvas);
    second->SetDrawAttributes(attributes.Get());
    attributes->SetRed(1.0f);
    EXPECT_EQ(apply(attributes), full);
    EXPECT_EQ(CallsOf([&] { second->SetDrawAttributes(attributes.Get()); }), full) << "on each canvas";
    EXPECT_EQ(apply(other), full) << "another object is applied in full";
    int list = 0;
    EXPECT_EQ(canvas->BeginCompileList(&list), S_OK);
    EXPECT_EQ(apply(other), full) << "in full within a list";
    site.m_bListOpen = true;
    EXPECT_EQ(canvas->EndCompileList(), S_OK);
    EXPECT_EQ(apply(other), full) << "attributes compiled into the list are not in force";
    EXPECT_EQ(apply(attributes), full);
    attributes->SetLineStipplePattern(255);
    const Calls stippled = apply(attributes);
    EXPECT_EQ((Calls{stippled.at(11), stippled.at(12)}),
              CallsOf([] { glEnable(GL_LINE_STIPPLE), glLineStipple(5, 255); }));
  });
  GLPtr<IGLDrawAttr> current;
  canvas13->GetDrawAttributes(current.Put());
  EXPECT_EQ(current, attributes);
}

TEST_F(CanvasOrder, PushedProjectionSpansTheShortSide) {
  GLDATA_POINT extents{7, 8, 9};
  const auto push = [&](LONG load) { return CallsOf([&] { canvas->PushProjectionMatrix(load, &extents); }); };
  const auto plain = [](bool asks, const Work& load) {
    return CallsOf([&] {
      GLint mode = 0;
      glMatrixMode(GL_PROJECTION), glPushMatrix();
      if (asks) glGetIntegerv(GL_RENDER_MODE, &mode);
      load();
      glMatrixMode(GL_MODELVIEW);
    });
  };
  OnGL([&] {
    GLuint hits[4];
    EXPECT_EQ(push(0), plain(false, [] {}));
    glSelectBuffer(4, hits), glRenderMode(GL_SELECT);
    EXPECT_EQ(push(1), plain(true, [] {})) << "a pick keeps its matrices";
    glRenderMode(GL_RENDER);
    EXPECT_EQ(extents.x, 7.0) << "extents are reported only with a new projection";
    for (const auto& [width, height, x, y] : {std::tuple{800, 400, 2.0, 1.0}, {400, 800, 1.0, 2.0}}) {
      site.m_iWidth = width, site.m_iHeight = height;
      EXPECT_EQ(push(1), plain(true, [x = x, y = y] { glLoadIdentity(), glOrtho(-x, x, -y, y, -1e5, 1e5); }));
      EXPECT_TRUE(extents.x == 2 * x && extents.y == 2 * y && extents.z == 200000.0) << width;
      for (int i = 0; i < 2; ++i) canvas->PopProjectionMatrix();
    }
    EXPECT_EQ(canvas->PushProjectionMatrix(1, nullptr), S_OK);
  });
}

TEST_F(CanvasOrder, ClipPlanesSwitchOnlyIfSet) {
  OnGL([&] {
    EXPECT_EQ(CallsOf([&] { canvas->EnableClipPlanes(1); }), Calls());
    site.m_bClipPlanes = true;
    const auto plain = [] {
      for (int i = 0; i < g_iMaxClipPlanes; ++i) glEnable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
      for (int i = 0; i < g_iMaxClipPlanes; ++i) glDisable(GL_CLIP_PLANE0 + static_cast<GLenum>(i));
    };
    EXPECT_EQ(CallsOf([&] { canvas->EnableClipPlanes(1), canvas->EnableClipPlanes(0); }), CallsOf(plain));
  });
}

TEST_F(CanvasOrder, ListKeysKeepAllBits) {
  int list = 1;
  EXPECT_EQ(canvas->BeginCompileList(&list), S_OK);
  canvas->DrawCompiledList(list);
  EXPECT_EQ(site.m_uCalled, 0xFFFF0007u);
  site.m_uNextKey = 0x00010000;
  EXPECT_EQ(canvas->BeginCompileList(&list), E_FAIL) << "GL has no list";
  EXPECT_EQ(list, 0);
  const auto lone = GLCreate<IGLCanvas>(CLSID_GLCanvas);
  EXPECT_EQ(lone->BeginCompileList(&list), E_GL_BADSTATE) << "no context";
  EXPECT_EQ(lone->PushProjectionMatrix(1, nullptr), E_GL_BADSTATE);
}

}  // namespace
