// The GL calls of the canvas and their order, each beside the same calls written out in plain GL.

#include <gllib/GLClasses.h>
#include <gllib/IGLCanvas.h>
#include <gllib/IGLDrawAttr.h>
#include <gllib/IGLMaterial.h>
#include <gtest/gtest.h>

#include <functional>

#include "component/CreateObject.h"
#include "component/Module.h"
#include "support/GLRecorder.h"
#include "support/PlainGL.h"
#include "view/GLCanvas.h"

namespace {

using Calls = std::vector<std::string>;

Calls CallsOf(const std::function<void()>& aWork) {
  const GLRecorder recorder;
  aWork();
  return recorder.Calls();
}

/// A context of a given size, as far as the canvas asks.
class Site final : public GLContextSite {
 public:
  int ViewportWidth() const noexcept override { return m_iWidth; }
  int ViewportHeight() const noexcept override { return m_iHeight; }
  bool HasClipPlanes() const noexcept override { return m_bClipPlanes; }
  HDC DeviceContext() const noexcept override { return {}; }
  bool IsCurrentHere() const noexcept override { return true; }
  void LockGL() noexcept override {}
  void UnlockGL() noexcept override {}
  ULONG GenListKey(int) noexcept override { return 0; }
  ULONG BeginListKey() noexcept override { return m_uNextKey; }
  void EndListKey() noexcept override {}
  void CallListKey(ULONG aKey) noexcept override { m_uCalled = aKey; }
  ULONG GetListBase(ULONG aKey) const noexcept override { return aKey & 0xFFFF; }
  void DeleteListKey(ULONG, int) noexcept override {}
  bool IsListKeyValid(ULONG aKey) const noexcept override { return aKey != 0; }
  bool PostTask(PEvent*) noexcept override { return false; }

  int m_iWidth = 800, m_iHeight = 400;
  bool m_bClipPlanes = false;
  ULONG m_uNextKey = 0xFFFF0007, m_uCalled = 0;
};

class CanvasOrder : public testing::Test {
 protected:
  CanvasOrder() { static_cast<GLCanvas*>(canvas.Get())->SetSite(std::make_shared<GLSiteLink>(&site)); }

  /// Runs the body of a test where a plain rendering context is current; a GL error left fails the test.
  static void OnGL(const std::function<void()>& aBody) { DrawPlainGL(64, 64, aBody); }

  Site site;
  GLPtr<IGLCanvas> canvas = CreateObject<IGLCanvas>(CLSID_GLCanvas);
  GLPtr<IGLCanvas2> canvas2 = canvas.As<IGLCanvas2>();
  GLPtr<IGLCanvas13_1> canvas13 = canvas.As<IGLCanvas13_1>();
  GLPtr<IGLCanvas14_2> canvas142 = canvas.As<IGLCanvas14_2>();
  GLPtr<IGLCanvas14_4> canvas144 = canvas.As<IGLCanvas14_4>();
};

TEST_F(CanvasOrder, OperationsAreTheirPlainCalls) {
  struct Pair {
    const char* m_szName;
    std::function<void()> m_Canvas, m_Plain;
  };
  constexpr double kDegrees = 57.29577951308;
  GLDATA_MATRIX6D placed{1, 2, 3, 0.1, 0.2, 0.3};
  GLDATA_POINT point{16777217.0, -2, 3};
  unsigned char pixels[16] = {};
  GLint mode = 0;
  const auto set6d = [&] {
    glTranslated(1, 2, 3), glRotated(0.1 * kDegrees, 1, 0, 0);
    glRotated(0.2 * kDegrees, 0, 1, 0), glRotated(0.3 * kDegrees, 0, 0, 1);
  };
  const auto reset6d = [&] {
    glRotated(-0.3 * kDegrees, 0, 0, 1), glRotated(-0.2 * kDegrees, 0, 1, 0);
    glRotated(-0.1 * kDegrees, 1, 0, 0), glTranslated(-1, -2, -3);
  };
  const auto rotate = [] { glMatrixMode(GL_MODELVIEW), glRotated(3 * kDegrees, 16777217.0, -2, 3); };
  const auto open = [] { glMatrixMode(GL_MODELVIEW), glPushMatrix(), glLoadIdentity(), glPopMatrix(); };
  const auto ortho = [&] {
    glGetIntegerv(GL_MATRIX_MODE, &mode), glMatrixMode(GL_PROJECTION), glLoadIdentity();
    glOrtho(1, 2, 3, 4, 5, 6), glMatrixMode(GL_MODELVIEW);
  };
  const auto perspective = [&] {
    glMatrixMode(GL_PROJECTION), glGetIntegerv(GL_MATRIX_MODE, &mode), glLoadIdentity();
    gluPerspective(45, 2, 1, 9);
  };
  const auto depthMask = [] { glPushAttrib(GL_DEPTH_BUFFER_BIT), glDepthMask(GL_FALSE), glPopAttrib(); };
  const auto floats = [] {
    glVertex3f(16777216.0f, -2, 3), glVertex3f(16777216.0f, 0.1f, 2), glVertex2f(0.1f, 1);
    glNormal3f(16777216.0f, -2, 3), glNormal3f(0.1f, 1, 2), glTexCoord2d(0.1, 0.2);
  };
  const auto stipple = [] { glEnable(GL_LINE_STIPPLE), glLineStipple(1, 0x0F0F), glFrontFace(GL_CW); };
  const auto mipmaps = [&] {
    gluBuild2DMipmaps(GL_TEXTURE_2D, 4, 2, 2, GL_RGBA, GL_UNSIGNED_BYTE, pixels);
    glTexEnvf(0x8500, 0x8501, -0.5f);
  };
  const Pair pairs[] = {
      {"SetModelview6d", [&] { canvas->SetModelview6d(&placed); }, set6d},
      {"ResetModelview6d", [&] { canvas->ResetModelview6d(&placed); }, reset6d},
      {"Rotate_RAD", [&] { canvas->Rotate_RAD(3, &point); }, rotate},
      {"PushModelviewMatrix", [&] { canvas->PushModelviewMatrix(2), glPopMatrix(); }, open},
      {"Ortho", [&] { canvas2->Ortho(1, 2, 3, 4, 5, 6); }, ortho},
      {"Perspective", [&] { glMatrixMode(GL_PROJECTION), canvas2->Perspective(45, 2, 1, 9); }, perspective},
      {"PushDepthMask", [&] { canvas13->PushDepthMask(0), canvas->PopDepthAttribute(); }, depthMask},
      {"vertices narrow to float",
       [&] {
         canvas->Vertex(&point), canvas->Vertex3d(16777217.0, 0.1, 2), canvas->Vertex2d(0.1, 1);
         canvas->SetVertexNormal(&point), canvas->SetVertexNormal3d(0.1, 1, 2),
             canvas144->TexCoord2d(0.1, 0.2);
       },
       floats},
      {"stipple", [&] { canvas->SetVertexLineStipple(0x0F0F, -3), canvas142->SetCWWinding(1); }, stipple},
      {"Build2DMipmaps",
       [&] { canvas144->Build2DMipmaps(4, 2, 2, GLTF_RGBA, GLDT_UNSIGNED_BYTE, -1, pixels); }, mipmaps}};
  OnGL([&] {
    for (const Pair& pair : pairs) {
      glMatrixMode(GL_MODELVIEW);
      const Calls wanted = CallsOf(pair.m_Plain);
      glMatrixMode(GL_MODELVIEW);
      EXPECT_EQ(CallsOf(pair.m_Canvas), wanted) << pair.m_szName;
    }
  });
}

TEST_F(CanvasOrder, PrimitivesBeginWithTheirMode) {
  using Begin = HRESULT (IGLCanvas::*)() noexcept;
  constexpr Begin kInOrderOfGL[] = {&IGLCanvas::BeginDrawPoints,      &IGLCanvas::BeginDrawLines,
                                    &IGLCanvas::BeginDrawLineLoop,    &IGLCanvas::BeginDrawLineStrip,
                                    &IGLCanvas::BeginDrawTriangles,   &IGLCanvas::BeginDrawTriangleStrip,
                                    &IGLCanvas::BeginDrawTriangleFan, &IGLCanvas::BeginDrawQuads,
                                    &IGLCanvas::BeginDrawQuadStrip,   &IGLCanvas::BeginDrawPolygon};
  OnGL([&] {
    GLenum mode = GL_POINTS;
    for (const Begin begin : kInOrderOfGL) {
      const Calls wanted = CallsOf([&] { glBegin(mode), glEnd(); });
      EXPECT_EQ(CallsOf([&] { (canvas.Get()->*begin)(), canvas->EndDrawVertices(); }), wanted);
      ++mode;
    }
  });
}

/// What a full application sets, and its calls in plain GL.
struct Look {
  GLenum m_Shade = GL_FLAT, m_Front = GL_FILL, m_Back = GL_FILL;
  bool m_bLineSmooth = false, m_bPointSmooth = false;
  GLenum m_Offset = 0;      // the kind that goes on; 0: both off
  GLenum m_Cull = GL_BACK;  // 0: none
};

void ApplyPlainly(const Look& aLook) {
  const auto set = [](GLenum aWhat, bool aOn) { aOn ? glEnable(aWhat) : glDisable(aWhat); };
  glFrontFace(GL_CCW), glShadeModel(aLook.m_Shade);
  glPolygonMode(GL_FRONT, aLook.m_Front), glPolygonMode(GL_BACK, aLook.m_Back);
  set(GL_LINE_SMOOTH, aLook.m_bLineSmooth), set(GL_POINT_SMOOTH, aLook.m_bPointSmooth);
  if (aLook.m_Offset == 0) glDisable(GL_POLYGON_OFFSET_LINE), glDisable(GL_POLYGON_OFFSET_FILL);
  if (aLook.m_Offset != 0) glEnable(aLook.m_Offset);
  if (aLook.m_Offset == GL_POLYGON_OFFSET_FILL) glPolygonOffset(1, 0);
  if (aLook.m_Offset == GL_POLYGON_OFFSET_LINE) glPolygonOffset(-1, 0);
  set(GL_CULL_FACE, aLook.m_Cull != 0);
  if (aLook.m_Cull != 0) glCullFace(aLook.m_Cull);
  glPointSize(1), glDisable(GL_LINE_STIPPLE), glLineWidth(1), glColor4f(1, 1, 1, 1);
}

TEST_F(CanvasOrder, EachModeBitHasItsEffectAndTheStrongerOneWins) {
  OnGL([&] {
    const std::pair<int, Look> rows[] = {
        {0, {}},
        {GLDM_SHOW_FRONT | GLDM_SMOOTH_LIGHTING, {.m_Shade = GL_SMOOTH}},
        {GLDM_LINE_FRONT, {.m_Front = GL_LINE}},
        {GLDM_LINE_BACK, {.m_Back = GL_LINE}},
        {GLDM_POINT_FRONT, {.m_Front = GL_POINT}},
        {GLDM_POINT_BACK, {.m_Back = GL_POINT}},
        {GLDM_LINE_FRONT | GLDM_POINT_FRONT, {.m_Front = GL_LINE}},
        {GLDM_LINE_BACK | GLDM_POINT_BACK, {.m_Back = GL_LINE}},
        {GLDM_SHOW_FRONT, {}},
        {GLDM_SHOW_BACK, {.m_Cull = GL_FRONT}},
        {GLDM_SHOW_FRONT | GLDM_SHOW_BACK, {.m_Cull = 0}},
        {GLDM_TRANSPARENCY, {}},
        {GLDM_SMOOTH_POINT, {.m_bPointSmooth = true}},
        {GLDM_SMOOTH_LINE, {.m_bLineSmooth = true}},
        {GLDM_POLYGON_OFFSET, {.m_Offset = GL_POLYGON_OFFSET_FILL}},
        {GLDM_POLYGON_OFFSET_REVERSE, {.m_Offset = GL_POLYGON_OFFSET_LINE}},
        {GLDM_POLYGON_OFFSET | GLDM_POLYGON_OFFSET_REVERSE, {.m_Offset = GL_POLYGON_OFFSET_LINE}}};
    for (const auto& [bits, look] : rows) {
      const auto attributes = CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr);
      attributes->EnableDrawMode(static_cast<eGLDrawMode>(0xFFF), 0);
      attributes->EnableDrawMode(static_cast<eGLDrawMode>(bits), 1);
      const Calls wanted = CallsOf([&, plain = look] { ApplyPlainly(plain); });
      EXPECT_EQ(CallsOf([&] { canvas->SetDrawAttributes(attributes.Get()); }), wanted) << "mode " << bits;
    }
  });
}

TEST_F(CanvasOrder, UnchangedAttributesAreOneCall) {
  OnGL([&] {
    const auto attributes = CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr);
    const auto other = CreateObject<IGLDrawAttr>(CLSID_GLDrawAttr);
    const auto apply = [&](IGLDrawAttr* aI) { return CallsOf([&, aI] { canvas->SetDrawAttributes(aI); }); };
    GLPtr<IGLDrawAttr> current;
    canvas13->GetDrawAttributes(current.Put());
    EXPECT_FALSE(current) << "none applied yet";

    const std::size_t full = apply(attributes.Get()).size();
    EXPECT_GT(full, 10u);
    EXPECT_EQ(apply(attributes.Get()), CallsOf([] { glColor4f(1, 1, 1, 1); }));
    attributes->SetRed(1.0f);
    EXPECT_EQ(apply(attributes.Get()).size(), full) << "a setter makes the next application full";
    EXPECT_EQ(apply(attributes.Get()).size(), 1u);
    EXPECT_EQ(apply(other.Get()).size(), full) << "so does another object";
    EXPECT_EQ(apply(attributes.Get()).size(), full);
    canvas13->GetDrawAttributes(current.Put());
    EXPECT_EQ(current, attributes);

    const GLRecorder recorder;
    attributes->SetLineStippleFactor(5);
    canvas->SetDrawAttributes(attributes.Get());
    EXPECT_EQ(recorder.Count("glLineStipple"), 0) << "a solid line has no stipple";
    attributes->SetLineStipplePattern(0x00FF);
    canvas->SetDrawAttributes(attributes.Get());
    const Calls wanted = recorder.CallsOf({"glLineStipple"});
    EXPECT_EQ(wanted, Calls{"glLineStipple(5, 255)"});
  });
}

void FacePlainly(GLenum aFace, const float* aDiffuse, float aShininess) {
  constexpr float kAmbient[] = {0.2f, 0.2f, 0.2f, 1}, kBlack[] = {0, 0, 0, 1};
  glMaterialfv(aFace, GL_AMBIENT, kAmbient), glMaterialfv(aFace, GL_DIFFUSE, aDiffuse);
  glMaterialfv(aFace, GL_SPECULAR, kBlack), glMaterialfv(aFace, GL_EMISSION, kBlack);
  glMaterialf(aFace, GL_SHININESS, aShininess);
}

TEST_F(CanvasOrder, MaterialsSetTheirFacesAndTheLightModelUnderLight) {
  OnGL([&] {
    constexpr float kDiffuse[] = {0.8f, 0.8f, 0.8f, 1}, kRed[] = {1, 0, 0, 1};
    GLDATA_RGBA red{1, 0, 0, 1};
    const auto material = CreateObject<IGLMaterial>(CLSID_GLMaterial);
    material->SetDiffuseReflectance(0, &red), material->SetShininess(0, 1.0f);
    material->EnableDrawMode(GLMM_LIGHT_MODEL_TWO_SIDE, 1);
    const auto apply = [&] { canvas->SetMaterial(material.Get()); };
    const auto front = [&] { FacePlainly(GL_FRONT, kDiffuse, 0), glIsEnabled(GL_LIGHTING); };

    EXPECT_EQ(CallsOf(apply), CallsOf(front)) << "no light: the light model stays";
    glEnable(GL_LIGHTING);
    EXPECT_EQ(CallsOf(apply), CallsOf([&] { front(), glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1); }))
        << "the front alone leaves two-sided lighting";
    material->EnableDrawMode(GLMM_ENABLE_BACK, 1), material->EnableDrawMode(GLMM_LIGHT_MODEL_LOCAL_VIEWER, 0);
    EXPECT_EQ(CallsOf(apply), CallsOf([&] {
                FacePlainly(GL_FRONT, kDiffuse, 0), FacePlainly(GL_BACK, kRed, 128), glIsEnabled(GL_LIGHTING);
                glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0), glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
              }));

    const auto idle = CreateObject<IGLMaterial>(CLSID_GLMaterial);
    idle->EnableDrawMode(GLMM_ENABLE_FRONT, 0);
    EXPECT_EQ(CallsOf([&] { canvas->SetMaterial(idle.Get()); }), Calls());
    GLPtr<IGLMaterial> current;
    canvas13->GetMaterial(current.Put());
    EXPECT_EQ(current, material) << "one that sets no face isn't applied";
  });
}

TEST_F(CanvasOrder, PushedProjectionSpansTheShortSide) {
  OnGL([&] {
    struct Size {
      int m_iWidth, m_iHeight;
      double m_dHalfX, m_dHalfY;
    };
    GLint mode = 0;
    const auto open = [&](double x, double y) {
      glMatrixMode(GL_PROJECTION), glPushMatrix(), glGetIntegerv(GL_RENDER_MODE, &mode), glLoadIdentity();
      glOrtho(-x, x, -y, y, -100000, 100000), glMatrixMode(GL_MODELVIEW);
    };
    for (const Size size : {Size{800, 400, 2, 1}, {400, 800, 1, 2}, {300, 300, 1, 1}}) {
      site.m_iWidth = size.m_iWidth, site.m_iHeight = size.m_iHeight;
      const Calls wanted = CallsOf([&] { open(size.m_dHalfX, size.m_dHalfY); });
      canvas->PopProjectionMatrix();
      GLDATA_POINT extents{};
      EXPECT_EQ(CallsOf([&] { canvas->PushProjectionMatrix(1, &extents); }), wanted);
      canvas->PopProjectionMatrix();
      EXPECT_EQ(CallsOf([&] { canvas->PushProjectionMatrix(1, nullptr); }), wanted);
      canvas->PopProjectionMatrix();
      EXPECT_EQ(extents.x, 2 * size.m_dHalfX);
      EXPECT_EQ(extents.y, 2 * size.m_dHalfY);
      EXPECT_EQ(extents.z, 200000.0);
    }

    GLDATA_POINT untouched{7, 8, 9};
    const Calls copied =
        CallsOf([] { glMatrixMode(GL_PROJECTION), glPushMatrix(), glMatrixMode(GL_MODELVIEW); });
    EXPECT_EQ(CallsOf([&] { canvas->PushProjectionMatrix(0, &untouched); }), copied);
    GLuint hits[4];
    glSelectBuffer(4, hits), glRenderMode(GL_SELECT);
    const Calls picking = CallsOf([&] {
      glMatrixMode(GL_PROJECTION), glPushMatrix(), glGetIntegerv(GL_RENDER_MODE, &mode),
          glMatrixMode(GL_MODELVIEW);
    });
    EXPECT_EQ(CallsOf([&] { canvas->PushProjectionMatrix(1, &untouched); }), picking);
    glRenderMode(GL_RENDER);
    EXPECT_EQ(untouched.x, 7.0) << "extents are told only with a new projection";
  });
}

TEST_F(CanvasOrder, ClipPlanesSwitchOnlyWhereTheyAreInForce) {
  OnGL([&] {
    EXPECT_EQ(CallsOf([&] { canvas->EnableClipPlanes(1); }), Calls());
    site.m_bClipPlanes = true;
    for (const LONG on : {1, 0}) {
      const Calls wanted = CallsOf([on] {
        for (GLenum i = 0; i < static_cast<GLenum>(g_iMaxClipPlanes); ++i) {
          on != 0 ? glEnable(GL_CLIP_PLANE0 + i) : glDisable(GL_CLIP_PLANE0 + i);
        }
      });
      EXPECT_EQ(CallsOf([&] { canvas->EnableClipPlanes(on); }), wanted);
    }
  });
}

TEST_F(CanvasOrder, ListKeysPassThroughWithAllTheirBits) {
  OnGL([&] {
    int list = 1;
    EXPECT_EQ(canvas->BeginCompileList(&list), S_OK);
    canvas->DrawCompiledList(list);
    EXPECT_EQ(site.m_uCalled, 0xFFFF0007u);
    for (const ULONG none : {0u, 0x00010000u}) {
      site.m_uNextKey = none;
      EXPECT_EQ(canvas->BeginCompileList(&list), E_FAIL) << "GL gave no list";
      EXPECT_EQ(list, 0);
    }
  });
}

TEST_F(CanvasOrder, WithoutItsContextACanvasSaysSoAndCallsNothing) {
  OnGL([&] {
    const auto lone = CreateObject<IGLCanvas>(CLSID_GLCanvas);
    int list = 5;
    LONG valid = 5;
    EXPECT_EQ(CallsOf([&] {
                EXPECT_EQ(lone->PushProjectionMatrix(1, nullptr), E_GL_BADSTATE);
                EXPECT_EQ(lone->EnableClipPlanes(1), E_GL_BADSTATE);
                EXPECT_EQ(lone->BeginCompileList(&list), E_GL_BADSTATE);
                EXPECT_EQ(lone->EndCompileList(), E_GL_BADSTATE);
                EXPECT_EQ(lone->DrawCompiledList(1), E_GL_BADSTATE);
                EXPECT_EQ(lone->DeleteCompiledList(1), E_GL_BADSTATE);
                EXPECT_EQ(lone->IsCompiledList(1, &valid), E_GL_BADSTATE);
                EXPECT_EQ(lone->SetModelview6d(nullptr), E_INVALIDARG);
                EXPECT_EQ(lone->SetDrawAttributes(nullptr), E_INVALIDARG);
                EXPECT_EQ(lone->SetMaterial(nullptr), E_INVALIDARG);
              }),
              Calls());
    EXPECT_EQ(lone->PushProjectionMatrix(0, nullptr), S_OK);
  });
}

}  // namespace
