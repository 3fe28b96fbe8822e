// The viewing headers against what is drawn: pixels and rays, depths, overlays, kinds of passes, and pictures
// at a factor, which plain GL draws once more.

#include <gllib/GLNavigation.h>
#include <gllib/GLViewing.h>

#include <cmath>
#include <set>

#include "RandomViews.h"
#include "platform/GL.h"
#include "support/Eventually.h"
#include "support/PlainGL.h"
#include "support/Scene.h"
#include "support/TestDisplay.h"

namespace {

using GLVector::Difference;
using GLVector::Length;

constexpr std::uint32_t kBlack = 0x000000FF, kWhite = 0xFFFFFFFF;

/// A context that draws by itself, with a painter that can be exchanged between frames.
class Viewing : public testing::Test {
 protected:
  Viewing() {
    PrepareDisplay();
    EXPECT_EQ(m_Context->Initialize(0), S_OK);
    m_Context.As<IGLContext2>()->SetControlledDrawThread(1, 0xFFFFFFFF);
    m_Context->EnableLighting(0);
    SetSize(90, 60);
    m_pViewer = AddViewer(0);
    m_Viewing = GLMake<GLViewing>(*m_Context.Get());
  }
  void SetSize(int aWidth, int aHeight) { m_Context->SetViewport(0, 0, aWidth, aHeight); }
  IGLViewer* AddViewer(int aOrtho) {
    IGLViewer* viewer = nullptr;
    m_Context->CreateViewer(1, aOrtho, &viewer);
    return viewer;
  }
  /// Adds a viewer under all others, which shows nothing but the background.
  void AddBackdrop() { m_pBackdrop = AddViewer(1); }
  void Paint(DrawFunction aDraw) {
    const auto draw = [draw = std::move(aDraw), backdrop = m_pBackdrop](Scene& scene) {
      if (&scene.Viewer() != backdrop) draw(scene);
    };
    m_Viewing->AttachPainter(GLMake<TestPainter>(draw).Get());
  }
  Picture Take(GLCaptureRequest aRequest = {}) {
    const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
    auto taken = m_Viewing->TakePicture(target.Get(), aRequest);
    if (taken.wait_for(std::chrono::seconds(20)) != std::future_status::ready || !taken.get()) {
      ADD_FAILURE() << "no picture";
      return {};
    }
    int width = 0, height = 0;
    target->GetWidth(&width);
    target->GetHeight(&height);
    Picture picture(width, height);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        GLDATA_RGBA4B p{};
        target->GetPixel(x, y, &p);
        picture.Set(x, y,
                    std::uint32_t{p.m_bRed} << 24 | std::uint32_t{p.m_bGreen} << 16 |
                        std::uint32_t{p.m_bBlue} << 8 | 255u);
      }
    }
    return picture;
  }
  std::optional<GLDATA_POINT> PointUnder(IGLViewer& aViewer, GLPixelPlace aPixel) {
    auto point = m_Viewing->PointUnder(aViewer, aPixel);
    if (point.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
      ADD_FAILURE() << "no answer";
      return std::nullopt;
    }
    return point.get();
  }

  GLPtr<IGLContext> m_Context = GLCreate<IGLContext>(CLSID_GLContext);
  IGLViewer* m_pViewer = nullptr;
  IGLViewer* m_pBackdrop = nullptr;
  GLPtr<GLViewing> m_Viewing;
};

void DrawPoint(IGLCanvas& aCanvas, GLDATA_POINT aPoint) {
  GLDATA_RGBA white{1, 1, 1, 1};
  aCanvas.SetVertexColor(&white);
  aCanvas.BeginDrawPoints();
  aCanvas.Vertex(&aPoint);
  aCanvas.EndDrawVertices();
}

void DrawQuad(IGLCanvas& aCanvas, GLDATA_RGBA aColor, std::array<GLDATA_POINT, 4> aCorners) {
  glDisable(GL_CULL_FACE);
  aCanvas.SetVertexColor(&aColor);
  aCanvas.BeginDrawQuads();
  for (GLDATA_POINT& corner : aCorners) aCanvas.Vertex(&corner);
  aCanvas.EndDrawVertices();
}

TEST_F(Viewing, FindsThePixelOfAPointAsItIsDrawn) {
  RandomViews random(7);
  AddBackdrop();
  int drawn = 0;
  for (int round = 0; round < 40; ++round) {
    SCOPED_TRACE(round);
    random.Randomise(*m_Context.Get(), *m_pViewer);
    m_pViewer->ShowClipFrame(0);
    if (round % 10 == 0) m_pViewer->SetOrtho(0), m_pViewer->SetEyeFovy_DEG(0);  // no perspective at all
    const GLViewGeometry view = GLViewGeometry::Of(*m_Context.Get(), *m_pViewer);
    const GLPixelRectangle& box = view.m_sVisible;
    const GLPixelPlace pixel = {
        box.m_iX + std::floor(random.Number(0, box.m_iWidth)) + random.Number(0.1, 0.9),
        view.m_iWindowHeight - box.m_iY - std::floor(random.Number(0, box.m_iHeight)) -
            random.Number(0.1, 0.9)};
    const GLDATA_POINT point = view.PointAtDepth(pixel, random.Number(0.05, 0.95));
    if (!view.PixelOf(point)->m_bVisible) continue;  // a clip that reaches over the window's picture
    Paint([point](Scene& scene) { DrawPoint(scene.Canvas(), point); });
    const Picture picture = Take();
    const int x = static_cast<int>(pixel.x), y = static_cast<int>(std::floor(pixel.y));
    if (x >= picture.Width() || y < 0) continue;  // outside of the window
    ++drawn;
    EXPECT_EQ(picture.CountOther(kBlack), 1);
    EXPECT_EQ(picture.At(x, y), kWhite);
    const GLRay ray = view.Ray(GLMiddleOfPixel(x, y));
    const auto beside = view.PixelOf(ray.ClosestTo(point));
    ASSERT_TRUE(beside);
    EXPECT_NEAR(beside->m_sPixel.x, x + 0.5, 1e-4);
    EXPECT_NEAR(beside->m_sPixel.y, y + 0.5, 1e-4);
  }
  EXPECT_GT(drawn, 20);
}

TEST_F(Viewing, ReadsThePointOfTheModelUnderAPixel) {
  RandomViews random(11);
  for (int round = 0; round < 24; ++round) {
    SCOPED_TRACE(round);
    random.Randomise(*m_Context.Get(), *m_pViewer);
    SetSize(400, 300);
    m_pViewer->SetClipRectangle(100, 50, 200, 150);
    m_pViewer->SetEyeZNearAndFar(2, 50);
    const GLViewGeometry view = GLViewGeometry::Of(*m_Context.Get(), *m_pViewer);
    const GLPixelPlace pixel = GLMiddleOfPixel(random.Whole(110, 290), random.Whole(110, 240));
    // A plane that leans, through a point in the middle of the depths.
    const GLDATA_POINT centre = view.PointAtDepth({200, 175}, view.m_bOrtho ? 0.5 : 0.9);
    const GLDATA_POINT right = view.m_Eye.VectorToWorld({1, 0, 0.2}),
                       up = view.m_Eye.VectorToWorld({0, 1, -0.1});
    const double size = view.m_bOrtho ? 100 : 12;
    const auto corner = [&](double a, double b) {
      return GLVector::Sum(centre,
                           GLVector::Sum(GLVector::Scaled(right, a * size), GLVector::Scaled(up, b * size)));
    };
    Paint(
        [&, corners = std::array{corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1)}](Scene& scene) {
          glPixelStorei(GL_PACK_SKIP_PIXELS, 7);  // a painter's own, which must do no harm
          glMatrixMode(GL_MODELVIEW);
          glTranslated(0, 0, 0);
          DrawQuad(scene.Canvas(), {1, 0, 0, 1}, corners);
        });
    const auto point = PointUnder(*m_pViewer, pixel);
    const GLRay ray = view.Ray(pixel);
    const GLDATA_POINT normal = GLVector::Cross(right, up);
    const GLDATA_POINT expected = ray.PointAt(GLVector::Dot(Difference(centre, ray.m_sStart), normal) /
                                              GLVector::Dot(ray.m_sDirection, normal));
    const GLDATA_POINT flat = view.m_Eye.VectorToEye(Difference(expected, centre));
    if (std::abs(flat.x) > size || std::abs(flat.y) > size) {
      EXPECT_FALSE(point) << "beside the plane";
    } else {
      ASSERT_TRUE(point);
      EXPECT_LT(Length(Difference(*point, expected)),
                2e-4 * Length(Difference(expected, view.m_Eye.m_sOrigin)));
    }
  }
  m_pViewer->Clip(1);
  EXPECT_FALSE(PointUnder(*m_pViewer, {5, 5})) << "outside of the clip rectangle";
  m_pViewer->Show(0);
  EXPECT_FALSE(PointUnder(*m_pViewer, {200, 175})) << "a hidden viewer draws nothing";
}

TEST_F(Viewing, KnowsTheOrderOfViewersAndWhichIsOnTop) {
  // The painter is called in the order of drawing.
  std::mutex lock;
  std::vector<IGLViewer*> frame, order;
  Paint([&](Scene& scene) {
    if (m_Viewing->Pass() != GLPassKind::Frame) return;
    const std::scoped_lock hold(lock);
    frame.push_back(&scene.Viewer());
  });
  m_Viewing->SetFrameListener([&](const GLFrameInfo&) {
    const std::scoped_lock hold(lock);
    order = std::exchange(frame, {});
  });
  std::vector<IGLViewer*> viewers = {m_pViewer};
  for (const int count : {3, 10, 11, 45, 160}) {
    while (static_cast<int>(viewers.size()) < count) viewers.push_back(AddViewer(1));
    m_Context->DestroyViewer(viewers[1]);
    viewers.erase(viewers.begin() + 1);
    Take();  // a whole frame has passed
    std::vector<IGLViewer*> named;
    for (const auto& viewer : GLViewersOf(*m_Context.Get())) named.push_back(viewer.Get());
    const std::scoped_lock hold(lock);
    EXPECT_EQ(named, order);
    EXPECT_EQ(static_cast<int>(named.size()), count - 1);
  }

  for (IGLViewer* viewer : viewers) viewer->Show(0);
  const auto ordered = GLViewersOf(*m_Context.Get());
  IGLViewer &lower = *ordered[1].Get(), &upper = *ordered[5].Get();
  for (IGLViewer* viewer : {&lower, &upper}) viewer->Show(1), viewer->Clip(1);
  lower.SetClipRectangle(0, 0, 50, 60), upper.SetClipRectangle(30, 0, 40, 60);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {20, 30}).Get(), &lower);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {40, 30}).Get(), &upper);
  EXPECT_FALSE(GLViewerAt(*m_Context.Get(), {80, 30}));
  upper.Show(0);
  EXPECT_EQ(GLViewerAt(*m_Context.Get(), {40, 30}).Get(), &lower);
}

TEST_F(Viewing, TellsThePassAndEachFrame) {
  std::mutex lock;
  std::multiset<GLPassKind> kinds;
  std::vector<GLFrameInfo> frames;
  Paint([&](Scene&) {
    const std::scoped_lock hold(lock);
    kinds.insert(m_Viewing->Pass());
  });
  m_Viewing->SetFrameListener([&](const GLFrameInfo& aFrame) {
    const std::scoped_lock hold(lock);
    frames.push_back(aFrame);
  });
  const auto capture = GLMake<TestCapture>();
  m_Viewing->AttachCapture(capture.Get());
  Take();
  const auto counted = [&](GLPassKind aKind) {
    const std::scoped_lock hold(lock);
    return kinds.count(aKind);
  };
  EXPECT_EQ(counted(GLPassKind::Capture), 1u);
  EXPECT_EQ(counted(GLPassKind::Selection), 0u);
  capture->Request(capture->target.Get());
  m_Context.As<IGLContext2>()->TriggerDrawThread();
  EXPECT_TRUE(Eventually([&] { return capture->answer == 1; })) << "a capture behind it is served";
  EXPECT_EQ(counted(GLPassKind::Capture), 2u);
  const auto before = counted(GLPassKind::Frame);
  EXPECT_GE(before, 2u);

  GLDATA_POINT from{-1, -1, 0}, to{1, 1, 0};
  int count = 10;
  ULONG ids[10];
  EXPECT_EQ(m_Context->Select(m_pViewer, &from, &to, 0, 0, &count, ids), S_OK);
  EXPECT_EQ(counted(GLPassKind::Selection), 1u);
  m_Context->DetachPainter();
  m_Context->DetachCapture();
  ASSERT_GE(frames.size(), before);
  for (std::size_t i = 1; i < frames.size(); ++i) {
    EXPECT_EQ(frames[i].m_uNumber, frames[i - 1].m_uNumber + 1);
    EXPECT_EQ(frames[i].m_Shown - frames[i - 1].m_Shown, frames[i].m_SinceLast);
    EXPECT_GT(frames[i].m_SinceLast.count(), 0);
  }
}

TEST_F(Viewing, DrawsOverlaysOverEverythingAndBringsAllBack) {
  AddBackdrop();
  m_pViewer->Clip(1);
  m_pViewer->SetClipRectangle(20, 10, 60, 40);
  m_pViewer->ShowClipFrame(0);
  GLDATA_POINT a{0, 0, -5}, b{1, 0, -5}, c{0, 1, -5};  // what stands nearer than -5 is cut off
  m_Context->ClipPlane(&a, &c, &b);
  m_Context->EnableLighting(1);
  const GLDATA_POINT distant = {0, 0, -20};
  std::atomic<int> changed{0};
  const auto draw = [&](bool aBracket) {
    return [&, aBracket](Scene& scene) {
      const auto quad = [&](float aGreen, double aZ, double aHalf) {
        DrawQuad(scene.Canvas(), {1, aGreen, 0, 1},
                 {{{-aHalf, -aHalf, aZ}, {aHalf, -aHalf, aZ}, {aHalf, aHalf, aZ}, {-aHalf, aHalf, aZ}}});
      };
      GLint mode = 0, depth[3][2] = {};
      const auto depths = [&](int aIndex) {
        glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth[0][aIndex]);
        glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth[1][aIndex]);
        glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth[2][aIndex]);
      };
      quad(0, -10, 100);
      depths(0);
      if (aBracket) {
        {
          const GLOverlay overlay;
          quad(1, -20, 1);   // behind the first
          quad(1, -3, 0.2);  // on the wrong side of the plane
        }
        const GLOverlay overlay(GLOverlayUnits::Pixels, m_Viewing->Scale());
        EXPECT_EQ(overlay.Width(), 60);
        EXPECT_EQ(overlay.Height(), 40);
        DrawQuad(scene.Canvas(), {0, 0, 1, 1}, {{{2, 3, 0}, {8, 3, 0}, {8, 5, 0}, {2, 5, 0}}});
        const auto place = overlay.PlaceOf(scene.Canvas(), distant);
        const GLPixelPlace pixel =
            GLViewGeometry::Of(scene.Context(), scene.Viewer()).PixelOf(distant)->m_sPixel;
        EXPECT_NEAR(place->x, pixel.x - 20, 1e-3);
        EXPECT_NEAR(place->y, pixel.y - 10, 1e-3);
        EXPECT_FALSE(overlay.PlaceOf(scene.Canvas(), {0, 0, 5})) << "behind the eye";
      }
      depths(1);
      for (const auto& [before, after] : depth) changed += before != after;
      glGetIntegerv(GL_MATRIX_MODE, &mode);
      changed += mode != GL_MODELVIEW;
      quad(0, -30, 1);  // hidden again
      quad(0, -3, 1);   // and cut off again
    };
  };
  Paint(draw(false));
  const Picture plain = Take();
  Paint(draw(true));
  const Picture overlaid = Take();
  EXPECT_EQ(changed, 0);
  const auto isYellow = [&](int aX, int aY) { return overlaid.At(aX, aY) == 0xFFFF00FF; };
  EXPECT_TRUE(isYellow(50, 30)) << "no depth, no plane, no light";
  for (int y = 0; y < 60; ++y) {
    for (int x = 0; x < 90; ++x) {
      const bool blue = x >= 22 && x < 28 && y >= 13 && y < 15;
      if (!blue && isYellow(x, y)) continue;
      EXPECT_EQ(overlaid.At(x, y), blue ? 0x0000FFFFu : plain.At(x, y)) << x << ' ' << y;
    }
  }
}

/// What a viewer of the pictures below shows: a red face, and a wide line, a stippled line and a point.
template <class Line, class Stipple, class Point>
void DrawFigure(Line aLineWidth, Stipple aStipple, Point aPointSize) {
  glColor4f(1, 0, 0, 1);
  glBegin(GL_TRIANGLES);
  glVertex3f(-3, -2, 0), glVertex3f(3, -2.3f, 0), glVertex3f(0.4f, 3, 0);
  glEnd();
  glColor4f(0, 1, 0, 1);
  aLineWidth(2.0f);
  glBegin(GL_LINES);
  glVertex3f(-2.9f, -2.2f, 1), glVertex3f(2.1f, 2.4f, 1);
  glEnd();
  aStipple(0x0F0F);
  glBegin(GL_LINES);
  glVertex3f(-2.9f, 2.2f, 1), glVertex3f(2.1f, 2.2f, 1);
  glEnd();
  glDisable(GL_LINE_STIPPLE);
  glColor4f(0, 0, 1, 1);
  aPointSize(4.0f);
  glBegin(GL_POINTS);
  glVertex3f(0.2f, 0.3f, 1);
  glEnd();
}

TEST_F(Viewing, TakesPicturesOfSeveralViewersAtAFactor) {
  // The later rectangle, in the window's numbers, lies within the earlier one times 3.
  const struct {
    int ortho, x, y, width, height, scaled;
  } places[] = {{0, 3, 2, 40, 50, 1}, {1, 30, 10, 50, 30, 1}, {1, 5, 40, 30, 15, 0}};
  // Drawn in the order from the latest to the earliest.
  std::vector<IGLViewer*> viewers = {AddViewer(1), AddViewer(1), m_pViewer};
  AddBackdrop();
  std::swap(viewers[0], viewers[1]);
  for (int i = 0; i < 3; ++i) {
    IGLViewer& viewer = *viewers[static_cast<std::size_t>(i)];
    const auto& place = places[i];
    viewer.SetOrtho(place.ortho);
    viewer.Clip(1);
    viewer.ScaleClip(place.scaled);
    viewer.SetClipRectangle(place.x, place.y, place.width, place.height);
    viewer.SetFrameOffset(0.05f);
    GLDATA_RGBA color{1, 1, 0, 1};
    viewer.SetFrameColor(&color);
    GLDATA_POINT low{-4, -4, 1}, high{4, 4, 50};
    viewer.SetOrthoExtents(&low, &high);
    viewer.SetEyeZNearAndFar(1, 50);
    GLPtr<IGLCoord> eye;
    viewer.GetCoord(eye.Put());
    eye->SetOrigin3d(0, 0, 15);
  }
  const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  attributes->SetLineWidth(2.0f);
  attributes->EnableDrawMode(static_cast<eGLDrawMode>(GLDM_SHOW_FRONT | GLDM_SHOW_BACK), 1);
  std::atomic<int> seen{0};
  Paint([&](Scene& scene) {
    int x = 0;
    scene.Viewer().GetClipX(&x);
    seen += x == 3 || x == 30 || x == 5 ? 0 : 1;
    IGLCanvas& canvas = scene.Canvas();
    glDepthFunc(GL_LEQUAL);
    attributes->SetLineWidth(1.0f), attributes->SetLineWidth(2.0f);  // a changed object is sent in full
    DrawFigure([&](float) { canvas.SetDrawAttributes(attributes.Get()), glColor4f(0, 1, 0, 1); },
               [&](std::uint16_t aPattern) { canvas.SetVertexLineStipple(aPattern, 1); },
               [&](float aSize) { canvas.SetVertexPointSize(aSize); });
  });
  const auto plain = [&](int f) {
    return DrawPlainGL(90 * f, 60 * f, [&] {
      glClearColor(0.5f, 0.5f, 0.5f, 1);
      glClear(GL_COLOR_BUFFER_BIT);
      glEnable(GL_SCISSOR_TEST);
      glEnable(GL_DEPTH_TEST);
      glDepthFunc(GL_LEQUAL);
      for (const auto& place : places) {
        glScissor(place.x * f, place.y * f, place.width * f, place.height * f);
        if (place.scaled != 0) {
          glViewport(place.x * f, place.y * f, place.width * f, place.height * f);
        } else {
          glViewport(0, 0, 90 * f, 60 * f);
        }
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        const double aspect = static_cast<double>(place.width) / place.height;
        if (place.ortho != 0) {
          glOrtho(-4 * aspect, 4 * aspect, -4, 4, 1, 50);
        } else {
          gluPerspective(27, aspect, 1, 50);
        }
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslated(0, 0, -15);
        const auto factor = static_cast<float>(f);
        DrawFigure([&](float aWidth) { glLineWidth(aWidth * factor); },
                   [&](std::uint16_t aPattern) { glEnable(GL_LINE_STIPPLE), glLineStipple(f, aPattern); },
                   [&](float aSize) { glPointSize(aSize * factor); });
        glLineWidth(factor);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glColor4f(1, 1, 0, 1);
        glBegin(GL_LINE_LOOP);
        for (const auto& [x, y] :
             {std::pair{-0.95f, -0.95f}, {0.95f, -0.95f}, {0.95f, 0.95f}, {-0.95f, 0.95f}}) {
          glVertex2f(x, y);
        }
        glEnd();
      }
    });
  };
  GLCaptureRequest request;
  request.m_sBackground = {0.5f, 0.5f, 0.5f, 1};
  for (const int factor : {1, 2, 3}) {
    SCOPED_TRACE(factor);
    request.m_fZoom = static_cast<float>(factor);
    const Picture picture = Take(request), twin = plain(factor);
    EXPECT_LE(Difference(picture, twin, 1), 0);
  }
  EXPECT_EQ(seen, 0) << "the viewers' own numbers never change";

  GLCaptureRequest part = request;
  part.m_iX = 20, part.m_iY = 10, part.m_iWidth = 33, part.m_iHeight = 400;
  const Picture whole = Take(request), cut = Take(part);
  ASSERT_EQ(cut.Width(), 33 * 3);
  ASSERT_EQ(cut.Height(), 50 * 3);
  int different = 0;
  for (int y = 0; y < cut.Height(); ++y) {
    for (int x = 0; x < cut.Width(); ++x) different += cut.At(x, y) != whole.At(x + 60, y + 30);
  }
  EXPECT_EQ(different, 0);

  const auto refused = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  for (const float zoom : {0.5f, 1e9f, NAN}) {
    part.m_fZoom = zoom;
    EXPECT_FALSE(m_Viewing->TakePicture(refused.Get(), part).get()) << zoom;
  }
  part.m_fZoom = 1, part.m_iX = 90;
  EXPECT_FALSE(m_Viewing->TakePicture(refused.Get(), part).get());
}

TEST_F(Viewing, TakesAPictureWhileViewersAndSizesChange) {
  m_pViewer->Clip(1);
  Paint([](Scene& scene) {
    DrawQuad(scene.Canvas(), {1, 0, 0, 1}, {{{-9, -9, -5}, {9, -9, -5}, {9, 9, -5}, {-9, 9, -5}}});
  });
  std::atomic<bool> over{false};
  std::thread host([&] {
    for (int i = 0; !over; ++i) {
      m_pViewer->Clip(i % 3 != 0);
      SetSize(60 + i % 2, 40);
      std::this_thread::yield();
    }
  });
  const auto target = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  GLCaptureRequest request;
  request.m_fZoom = 2;
  for (int i = 0; i < 10; ++i) {
    auto picture = m_Viewing->TakePicture(target.Get(), request);
    ASSERT_EQ(picture.wait_for(std::chrono::seconds(60)), std::future_status::ready);
    picture.get();  // taken or given up, but answered
  }
  over = true;
  host.join();
  m_pViewer->Clip(0);
  EXPECT_EQ(Take().CountOther(0xFF0000FF), 0) << "afterwards all is as before";
}

TEST_F(Viewing, PrintsTextThatGrowsWithThePicture) {
  GLRasterText text(GLString("DejaVu Sans"), -12);
  Paint([&](Scene& scene) {
    const double scale = m_Viewing->Scale();
    const GLOverlay overlay(GLOverlayUnits::Pixels, scale);
    glColor4f(1, 1, 1, 1);
    EXPECT_EQ(text.Print(scene.Context(), GLString("HHH"), {5, 40, 0}, scale), S_OK);
  });
  // The letters' extents: left, top, right and bottom.
  const auto extents = [](const Picture& aPicture) {
    std::array<int, 4> e = {9999, 9999, 0, 0};
    for (int y = 0; y < aPicture.Height(); ++y) {
      for (int x = 0; x < aPicture.Width(); ++x) {
        if (aPicture.At(x, y) == kBlack) continue;
        e = {std::min(e[0], x), std::min(e[1], y), std::max(e[2], x), std::max(e[3], y)};
      }
    }
    return e;
  };
  const auto once = extents(Take({.m_fZoom = 1})), thrice = extents(Take({.m_fZoom = 3}));
  ASSERT_GT(once[2], once[0] + 10);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(thrice[i], 3 * once[i] + 1, 5) << i;
  m_Context->DetachPainter();
  text.Destroy(*m_Context.Get());
}

}  // namespace
