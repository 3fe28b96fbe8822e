// Selection from compiled lists: results of a divided list compared with the whole list, and lists that are
// drawn whole. Headless display.

#include "support/Counting.h"
#include "support/GLRecorder.h"
#include "support/Scene.h"

namespace {

using Ids = std::vector<ULONG>;
using Step = std::function<void(IGLCanvas&)>;
using Steps = std::vector<Step>;

constexpr ULONG kForever = 0xFFFFFFFF;

int Between(std::mt19937& aRandom, int aLow, int aHigh) {
  return std::uniform_int_distribution<int>(aLow, aHigh)(aRandom);
}

double Coordinate(std::mt19937& aRandom, double aReach) {
  return std::uniform_real_distribution<double>(-aReach, aReach)(aRandom);
}

void SetDrawMode(IGLCanvas& aCanvas, int aMode) {
  const auto attributes = GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr);
  for (int bit = 1; bit <= GLDM_SHOW_BACK; bit <<= 1)
    attributes->EnableDrawMode(static_cast<eGLDrawMode>(bit), (aMode & bit) != 0 ? 1 : 0);
  aCanvas.SetDrawAttributes(attributes.Get());
}

/// Draws a small primitive around a random place.
Step RandomPrimitive(std::mt19937& aRandom) {
  static constexpr HRESULT (IGLCanvas::*kBegin[])() noexcept = {
      &IGLCanvas::BeginDrawTriangles,  &IGLCanvas::BeginDrawPoints,    &IGLCanvas::BeginDrawLines,
      &IGLCanvas::BeginDrawLineStrip,  &IGLCanvas::BeginDrawLineLoop,  &IGLCanvas::BeginDrawTriangleStrip,
      &IGLCanvas::BeginDrawQuads,      &IGLCanvas::BeginDrawQuadStrip, &IGLCanvas::BeginDrawPolygon,
      &IGLCanvas::BeginDrawTriangleFan};
  const auto begin =
      kBegin[static_cast<std::size_t>(Between(aRandom, 0, 3) > 0 ? 0 : Between(aRandom, 0, 9))];
  const int vertices = Between(aRandom, 0, 19) == 0 ? 5000 : Between(aRandom, 1, 300);
  const GLDATA_POINT middle{Coordinate(aRandom, 1.2), Coordinate(aRandom, 1.2), Coordinate(aRandom, 5)};
  const int seed = Between(aRandom, 0, 1 << 30);
  return [=](IGLCanvas& aCanvas) {
    std::mt19937 random(static_cast<unsigned>(seed));
    (aCanvas.*begin)();
    for (int i = 0; i < vertices; ++i) {
      if (i % 16 == 0) aCanvas.SetVertexNormal3f(0, 0, 1);
      aCanvas.Vertex3d(middle.x + Coordinate(random, 0.1), middle.y + Coordinate(random, 0.1), middle.z);
    }
    aCanvas.EndDrawVertices();
  };
}

/// An identifier, a change of state, or a primitive. Edge flags are left out: Mesa's selection of faces drawn
/// as lines depends on the flags of all earlier lists.
Step RandomStep(std::mt19937& aRandom) {
  const int kind = Between(aRandom, 0, 19);
  const int value = Between(aRandom, 0, 1 << 20);
  if (kind < 6) return [=](IGLCanvas& c) { c.SetTestID(static_cast<ULONG>(value % 12)); };
  if (kind == 6) return [=](IGLCanvas& c) { SetDrawMode(c, value % (2 * GLDM_SHOW_BACK)); };
  if (kind == 7) {
    return [=](IGLCanvas& c) {
      GLPtr<IGLCanvas14_2> winding;
      c.QueryInterface(IGLCanvas14_2::Identifier, winding.PutVoid());
      winding->SetCWWinding(value % 2);
    };
  }
  return RandomPrimitive(aRandom);
}

/// A part of a scene: steps in one list, called lists, and optional matrix operations.
struct Part {
  Steps steps;
  std::vector<int> nested;  // earlier parts; one is called after every five steps
  bool turned = false;
  double shift = 0;  // translation along x that the painter applies before the list
};

/// A scene with one list per part, which is compiled when it is first needed.
class ListScene {
 public:
  explicit ListScene(std::vector<Part> aParts) : m_Parts(std::move(aParts)), m_Lists(m_Parts.size(), 0) {}

  void Draw(IGLCanvas& aCanvas) {
    SetDrawMode(aCanvas, GLDM_SHOW_FRONT | GLDM_SHOW_BACK);
    for (std::size_t part = 0; part < m_Parts.size(); ++part) {
      GLDATA_POINT shift{m_Parts[part].shift, 0, 0};
      aCanvas.PushModelviewMatrix(0);
      aCanvas.Translate(&shift);
      aCanvas.DrawCompiledList(List(aCanvas, part));
      aCanvas.PopModelviewMatrix();
    }
  }

  void Compile(IGLCanvas& aCanvas) {
    for (std::size_t part = 0; part < m_Parts.size(); ++part) List(aCanvas, part);
  }

  void Delete(IGLCanvas& aCanvas) {
    for (const int list : m_Lists) aCanvas.DeleteCompiledList(list);
  }

 private:
  int List(IGLCanvas& aCanvas, std::size_t aPart) {
    LONG valid = 0;
    aCanvas.IsCompiledList(m_Lists[aPart], &valid);
    if (valid != 0) return m_Lists[aPart];
    for (const int nested : m_Parts[aPart].nested) List(aCanvas, static_cast<std::size_t>(nested));
    aCanvas.BeginCompileList(&m_Lists[aPart]);
    DrawSteps(aCanvas, m_Parts[aPart]);
    aCanvas.EndCompileList();
    return m_Lists[aPart];
  }

  void DrawSteps(IGLCanvas& aCanvas, const Part& aPart) const {
    auto nested = aPart.nested.begin();
    GLDATA_POINT axis{0, 0, 1};
    for (std::size_t i = 0; i < aPart.steps.size(); ++i) {
      if (aPart.turned && i % 4 == 1) aCanvas.Rotate_RAD(0.2, &axis);
      aPart.steps[i](aCanvas);
      if (i % 5 == 4 && nested != aPart.nested.end())
        aCanvas.DrawCompiledList(m_Lists[static_cast<std::size_t>(*nested++)]);
    }
  }

  std::vector<Part> m_Parts;
  std::vector<int> m_Lists;
};

ListScene RandomScene(std::mt19937& aRandom) {
  std::vector<Part> parts(static_cast<std::size_t>(Between(aRandom, 1, 3)));
  for (std::size_t i = 0; i < parts.size(); ++i) {
    for (int steps = Between(aRandom, 4, 20); steps > 0; --steps)
      parts[i].steps.push_back(RandomStep(aRandom));
    while (i > 0 && Between(aRandom, 0, 2) == 0)
      parts[i].nested.push_back(Between(aRandom, 0, static_cast<int>(i) - 1));
    parts[i].turned = Between(aRandom, 0, 9) == 0;
    if (Between(aRandom, 0, 2) == 0) parts[i].shift = Coordinate(aRandom, 0.5);
  }
  return ListScene(std::move(parts));
}

/// A context that draws only for selections. The painter changes only while no selection runs.
class Picked {
 public:
  Picked() {
    GLDATA_POINT low{-1, -1, -10}, high{1, 1, 10};
    m_Drawn.viewer->SetOrthoExtents(&low, &high);
    EyeOf(*m_Drawn.viewer)->SetOrigin3d(0, 0, 0);
    m_Drawn.context.As<IGLContext2>()->SetControlledDrawThread(1, kForever);
    m_Drawn.viewer->Show(0);
  }

  struct Request {
    GLDATA_POINT first, second;
    PickOptions options;
  };

  Ids Pick(const Request& aRequest, DrawFunction aDraw) {
    m_Painter = GLMake<TestPainter>(std::move(aDraw));
    m_Drawn.context->AttachPainter(m_Painter.Get());
    const Selection got =
        ::Pick(*m_Drawn.context, *m_Drawn.viewer, aRequest.first, aRequest.second, aRequest.options);
    EXPECT_EQ(got.result, S_OK);
    return got.ids;
  }

  ~Picked() { m_Drawn.context->DetachPainter(); }

 private:
  const FreeContext m_Drawn{{}, 200, 200};
  GLPtr<TestPainter> m_Painter;
};

constexpr Picked::Request kMiddle{{0, 0, 0}, {0, 0, 0}, {}};
constexpr Picked::Request kAll{{-1, -1, 0}, {1, 1, 0}, {.capacity = 512}};

Picked::Request RandomRequest(std::mt19937& aRandom) {
  const GLDATA_POINT first{Coordinate(aRandom, 1), Coordinate(aRandom, 1), 0};
  const bool point = Between(aRandom, 0, 2) == 0;
  const GLDATA_POINT second = point ? first : GLDATA_POINT{Coordinate(aRandom, 1), Coordinate(aRandom, 1), 0};
  return {first,
          second,
          {.closest = Between(aRandom, 0, 1) == 1,
           .enclosed = Between(aRandom, 0, 2) == 0,
           .capacity = Between(aRandom, 0, 3) == 0 ? 3 : 512}};
}

/// Draws a row of 40 places from left to right, each with 200 equal triangles. The identifier is the number
/// of the place, from 1.
void DrawRow(IGLCanvas& aCanvas, double aBottom = -0.1) {
  for (int place = 0; place < 40; ++place) {
    const double x = -1.0 + place * 0.05;
    aCanvas.SetTestID(static_cast<ULONG>(place + 1));
    aCanvas.BeginDrawTriangles();
    for (int i = 0; i < 200; ++i) {
      aCanvas.Vertex3d(x, aBottom, 0);
      aCanvas.Vertex3d(x + 0.04, aBottom, 0);
      aCanvas.Vertex3d(x, aBottom + 0.2, 0);
    }
    aCanvas.EndDrawVertices();
  }
}

/// Draws a list, which is compiled when it is first needed.
template <class Content>
void DrawList(IGLCanvas& aCanvas, int& aList, Content aContent) {
  if (aList == 0) {
    aCanvas.BeginCompileList(&aList);
    aContent(aCanvas);
    aCanvas.EndCompileList();
  }
  aCanvas.DrawCompiledList(aList);
}

}  // namespace

// The first selection draws a list whole, and the component checks the list before the next one. New lists
// therefore provide the expected result. They are compiled first, because compilation during a selection may
// add hits in Mesa. GLLIB_SCENES sets the number of scenes, GLLIB_SEED selects them; see
// scripts/selection-scenes.
TEST(ListSelection, RunsFindTheSameAsTheWholeList) {
  const auto variable = [](const char* aName, int aDefault) {
    const char* const value = std::getenv(aName);
    return value != nullptr ? std::atoi(value) : aDefault;
  };
  const int scenes = variable("GLLIB_SCENES", 1000), seed = variable("GLLIB_SEED", 20260915);
  std::mt19937 random(static_cast<unsigned>(seed));
  Picked picked;
  std::size_t found = 0, several = 0;
  for (int n = 0; n < scenes && !::testing::Test::HasFailure(); ++n) {
    ListScene divided = RandomScene(random);
    ListScene whole[] = {divided, divided};
    const auto pick = [&](ListScene& lists, const Picked::Request& request) {
      return picked.Pick(request, [&](Scene& s) { lists.Draw(s.Canvas()); });
    };
    picked.Pick(kMiddle, [&](Scene& s) {
      for (ListScene& lists : whole) lists.Compile(s.Canvas());
      divided.Draw(s.Canvas());
    });
    for (ListScene& lists : whole) {
      const Picked::Request request = RandomRequest(random);
      const Ids expected = pick(lists, request);
      EXPECT_EQ(pick(divided, request), expected)
          << "seed " << seed << ", scene " << n << ", request " << (&lists - whole);
      found += expected.size();
      several += expected.size() > 1 ? 1 : 0;
    }
    picked.Pick(kMiddle, [&](Scene& s) {
      for (ListScene* lists : {&divided, &whole[0], &whole[1]}) lists->Delete(s.Canvas());
    });
  }
  EXPECT_GT(found, static_cast<std::size_t>(scenes) / 2);
  EXPECT_GT(several, static_cast<std::size_t>(scenes) / 10);
}

TEST(ListSelection, DrawsOnlyRunsInThePickVolume) {
  Picked picked;
  int list = 0;
  const auto draw = [&](Scene& s) {
    constexpr GLdouble kNothing[] = {0, 0, 0, -1};
    glClipPlane(GL_CLIP_PLANE0, kNothing);  // not enabled, so it has no effect
    GLint depth = 0;
    glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 0) << "the check of the list restores the stack";
    DrawList(s.Canvas(), list, [](IGLCanvas& c) { SetDrawMode(c, GLDM_SHOW_FRONT), DrawRow(c); });
  };
  Picked::Request request = kMiddle;
  request.first.x = request.second.x = 0.01;
  std::vector<int> calls;
  for (int pick = 0; pick < 3; ++pick) {
    const GLRecorder recorder;
    EXPECT_EQ(picked.Pick(request, draw), Ids{21});
    calls.push_back(recorder.Count("glCallList"));
  }
  EXPECT_GT(calls[0], 40) << "compiles each run, and draws the whole list";
  EXPECT_EQ(calls[2], 2) << "one run, and the run that enables culling";
  const GLRecorder recorder;
  EXPECT_EQ(picked.Pick(kAll, draw).size(), 40u);
  EXPECT_EQ(recorder.Count("glCallList"), 1) << "all runs by one call";
}

TEST(ListSelection, FindsTheHostsOwnCallsInAList) {
  static const auto triangle = [](double x) {
    glBegin(GL_TRIANGLES);
    for (const auto& [dx, dy] : {std::pair{-0.1, -0.1}, {0.1, -0.1}, {0.0, 0.1}}) glVertex3d(x + dx, dy, 0);
    glEnd();
  };
  GLuint own = 0;
  const struct {
    const char* what;
    std::function<void(IGLCanvas&)> before,
        after;  // calls before and after the row, which is above the middle
  } kCases[] = {
      {"vertices", [](IGLCanvas&) {}, [](IGLCanvas& c) { triangle(0), c.SetTestID(50); }},
      {"vertices in a list", [&](IGLCanvas&) {}, [&](IGLCanvas& c) { glCallList(own), c.SetTestID(50); }},
      {"a raster position", [](IGLCanvas&) {}, [](IGLCanvas& c) { glRasterPos3d(0, 0, 0), c.SetTestID(50); }},
      {"a matrix", [](IGLCanvas&) { glTranslated(0, -0.6, 0); }, [](IGLCanvas&) {}},
      {"a matrix, restored", [](IGLCanvas&) { glPushMatrix(), glTranslated(0, -0.6, 0); },
       [](IGLCanvas&) { glPopMatrix(); }},
      {"a loaded matrix", [](IGLCanvas&) {},
       [](IGLCanvas& c) { glPushMatrix(), glLoadIdentity(), triangle(0), glPopMatrix(), c.SetTestID(50); }},
      {"an identifier", [](IGLCanvas&) {}, [](IGLCanvas&) { glLoadName(78); }},
      {"a deeper name stack", [](IGLCanvas&) { glPushName(5); }, [](IGLCanvas&) { glPopName(); }},
      {"a polygon mode", [](IGLCanvas&) {}, [](IGLCanvas&) { glPolygonMode(GL_FRONT_AND_BACK, GL_LINE); }},
      {"vertices after culling", [](IGLCanvas&) {},
       [](IGLCanvas& c) { SetDrawMode(c, GLDM_SHOW_FRONT), triangle(0), c.SetTestID(50); }},
      {"a steep face after culling", [](IGLCanvas&) {},
       [](IGLCanvas& c) {
         SetDrawMode(c, GLDM_SHOW_FRONT);
         glBegin(GL_TRIANGLES);
         glVertex3d(-0.06, -0.06, 0.5), glVertex3d(0.14, -0.06, -1.3), glVertex3d(-0.06, 0.14, -0.1);
         glEnd();
         c.SetTestID(50);
       }},
      {"culling", [](IGLCanvas&) {},
       [](IGLCanvas&) { glEnable(GL_CULL_FACE), glCullFace(GL_FRONT_AND_BACK); }},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.what);
    Picked picked;
    int list = 0;
    const auto content = [&](IGLCanvas& canvas) {
      test.before(canvas);
      DrawRow(canvas, 0.5);
      test.after(canvas);
    };
    const auto draw = [&](IGLCanvas& canvas, bool fromList) {
      glDisable(GL_CULL_FACE);
      glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
      if (own == 0) glNewList(own = glGenLists(1), GL_COMPILE), triangle(0), glEndList();
      fromList ? DrawList(canvas, list, content) : content(canvas);
      triangle(0.0);  // with the identifier and the state that the list has left
      triangle(-0.05);
    };
    for (int pick = 0; pick < 4; ++pick) {
      const Ids direct = picked.Pick(kMiddle, [&](Scene& s) { draw(s.Canvas(), false); });
      EXPECT_EQ(picked.Pick(kMiddle, [&](Scene& s) { draw(s.Canvas(), true); }), direct) << pick;
    }
    own = 0;
  }
}

TEST(ListSelection, LeavesAShortListOpenAtANestedCall) {
  Picked picked;
  int nested = 0, list = 0;
  const auto opened = [] {
    GLint name = 0;
    glGetIntegerv(GL_LIST_INDEX, &name);
    return name;
  };
  picked.Pick(kMiddle, [&](Scene& s) {
    DrawList(s.Canvas(), nested, [](IGLCanvas& c) { DrawRow(c); });
    DrawList(s.Canvas(), list, [&](IGLCanvas& c) {
      const GLint name = opened();
      c.BeginDrawPoints();
      for (int i = 0; i < 63; ++i) c.Vertex3d(0, 0, 0);
      c.EndDrawVertices();
      c.DrawCompiledList(nested);
      EXPECT_EQ(opened(), name) << "painters may query the open list";
    });
  });
}

TEST(ListSelection, NeedsNoMemory) {
  Picked picked;
  for (std::size_t left = 0; left < 12; ++left) {
    int list = 0;
    const auto draw = [&](Scene& s) {
      if (list == 0) {
        const ExhaustedHeap heap(left);
        s.Canvas().BeginCompileList(&list);
        DrawRow(s.Canvas());
        s.Canvas().EndCompileList();
      }
      s.Canvas().DrawCompiledList(list);
    };
    for (int pick = 0; pick < 3; ++pick)
      EXPECT_EQ(picked.Pick(kAll, draw).size(), 40u) << left << " allocations, pick " << pick;
  }
}
