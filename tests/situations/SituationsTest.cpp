// Each operation, called from each callback that can reach it, compared with a call while no pass runs.
// Headless display.

#include <EGL/egl.h>
#include <unistd.h>

#include <csignal>

#include "situations/Operations.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kLongestCall(GLLIB_SANITIZED != 0 ? 10 : 1);
constexpr unsigned kTimeLimit = 60;  // seconds
constexpr const char* kNames[kSituations] = {"Frame", "Capture", "Pick",        "Gauge",         "OpenList",
                                             "Task",  "OnData",  "OthersFrame", "OthersCapture", "Teardown"};

/// Ends the process with the name of an operation that hangs, unless the next one begins in time.
void Watch(const std::string& aName) {
  static std::string g_Name;
  g_Name = "hangs: " + aName + '\n';
  std::signal(SIGALRM, [](int) {
    (void)!write(STDERR_FILENO, g_Name.data(), g_Name.size());
    std::abort();
  });
  alarm(kTimeLimit);
}

/// GL state of a callback. The call must not change it.
struct Found {
  EGLContext context = EGL_NO_CONTEXT;
  std::array<GLint, 6> values{};

  static Found Now() {
    Found found{eglGetCurrentContext(), {}};
    GLint* next = found.values.data();
    for (const GLenum name : {GL_LIST_INDEX, GL_LIST_MODE, GL_RENDER_MODE, GL_MODELVIEW_STACK_DEPTH,
                              GL_PROJECTION_STACK_DEPTH, GL_ATTRIB_STACK_DEPTH})
      glGetIntegerv(name, next++);
    return found;
  }
};

/// One call of an operation, on the thread of the situation.
struct Call {
  void Make(const Operation& aOperation, Stage& aStage) {
    before = Found::Now();
    const auto start = Clock::now();
    result = aOperation.m_pfnRun(aStage);
    length = Clock::now() - start;
    after = Found::Now();
    made = true;
  }

  bool made = false;
  HRESULT result = S_OK;
  Clock::duration length{};
  Found before, after;
};

/// Results after an operation.
struct Aftermath {
  Settings settings;
  Outcome frame, capture, pick;
};

Aftermath After(Stage& aStage) {
  aStage.Control();
  Aftermath after{aStage.Read(), {}, {}, {}};
  after.frame = aStage.Frame();
  after.capture = aStage.Capture();
  after.pick = aStage.Pick();
  return after;
}

void ExpectSame(const Outcome& aFound, const Outcome& aWanted, const char* aWhat) {
  EXPECT_EQ(Difference(aFound.picture, aWanted.picture), 0) << "pixels of " << aWhat;
  EXPECT_EQ(aFound.ids, aWanted.ids) << "identifiers of " << aWhat;
  EXPECT_EQ(aFound.error, aWanted.error) << "GL's error in " << aWhat;
}

/// A painter that calls the context once more while the context ends.
class Farewell final : public GLPainterBase {
 public:
  explicit Farewell(std::function<void()> aCall) : m_Call(std::move(aCall)) {}
  ~Farewell() override { m_Call(); }
  HRESULT Draw(IGLCanvas*, IGLContext*, IGLViewer*) noexcept override { return S_OK; }

 private:
  std::function<void()> m_Call;
};

class Situations : public testing::TestWithParam<Situation> {
 protected:
  ~Situations() override { alarm(0); }
  void SetUp() override {
    m_Stage = std::make_unique<Stage>();
    m_Other = std::make_unique<Stage>();
    m_Stage->Reset();
    m_Base = After(*m_Stage);
    EXPECT_GT(m_Base.frame.picture.CountOther(m_Base.frame.picture.At(0, 0)), 200) << "the scene";
    EXPECT_EQ(m_Base.pick.ids, (std::vector<ULONG>{1, 2, 3}));
    m_BasePass = Pass([](Stage&) {});
  }

  /// Runs a pass of the situation, in which a function is called. @return its picture and identifiers
  Outcome Pass(std::function<void(Stage&)> aCall) {
    if (GetParam() == kInTeardown) return Teardown(aCall);
    Stage& stage = *m_Stage;
    const auto call = [&stage, aCall] { aCall(stage); };
    if (GetParam() == kInTask) return stage.Task(call), Outcome();
    static constexpr Place kPlaces[] = {Place::kFrame,  Place::kCapture,  Place::kPick,
                                        Place::kGauge,  Place::kOpenList, Place::kNowhere,
                                        Place::kOnData, Place::kFrame,    Place::kCapture};
    const bool others = GetParam() == kInOthersFrame || GetParam() == kInOthersCapture;
    Stage& calling = others ? *m_Other : stage;
    const Place place = kPlaces[GetParam()];
    calling.Arm(place, call);
    if (place == Place::kPick) return calling.Pick();
    return place == Place::kCapture || place == Place::kOnData ? calling.Capture() : calling.Frame();
  }

  /// Ends a context, in which its painter's destructor makes a call. @return the next frame of another
  /// context
  Outcome Teardown(const std::function<void(Stage&)>& aCall) {
    auto ending = std::make_unique<Stage>();
    IGLContext* const last = ending->context.Detach();
    last->AttachPainter(GLMake<Farewell>([&] {
                          ending->context = GLPtr<IGLContext>::FromBorrowed(last);
                          aCall(*ending);
                          ending->context.Reset();
                        }).Get());
    last->Release();
    return m_Other->Frame();
  }

  enum class Effect { kSettings, kNothing };  // what may differ after the operation

  void Check(const Operation& aOperation, Effect aEffect) {
    const std::string name = std::string(aOperation.m_szName) + " in " + kNames[GetParam()];
    Watch(name);
    SCOPED_TRACE(name);
    Aftermath wanted = m_Base;
    if (aEffect == Effect::kSettings && GetParam() != kInTeardown && !IsRefused(aOperation)) {
      m_Stage->Reset();
      EXPECT_EQ(aOperation.m_pfnRun(*m_Stage), S_OK) << "between two frames";
      wanted = After(*m_Stage);
    }
    m_Stage->Reset();
    m_Stage->Frame();
    Call call;
    ExpectSame(Pass([&](Stage& stage) { call.Make(aOperation, stage); }), m_BasePass, "the pass");
    ASSERT_TRUE(call.made);
    CheckCall(call, IsRefused(aOperation) ? E_GL_BADSTATE : S_OK);
    if (GetParam() == kInTeardown) return;
    const Aftermath after = After(*m_Stage);
    for (std::size_t i = 0; i < wanted.settings.size(); ++i)
      EXPECT_EQ(after.settings[i].second, wanted.settings[i].second) << wanted.settings[i].first;
    ExpectSame(after.frame, wanted.frame, "the next frame");
    ExpectSame(after.capture, wanted.capture, "the next capture");
    ExpectSame(after.pick, wanted.pick, "the next pick");
  }

 private:
  bool IsRefused(const Operation& aOperation) const {
    return (aOperation.m_uRefused & 1u << GetParam()) != 0;
  }

  void CheckCall(const Call& aCall, HRESULT aWanted) {
    const bool refusedAtTheEnd = GetParam() == kInTeardown && aCall.result == E_GL_BADSTATE;
    EXPECT_TRUE(aCall.result == aWanted || refusedAtTheEnd)
        << "the result is " << std::hex << aCall.result << " instead of " << aWanted;
    EXPECT_LT(aCall.length, kLongestCall)
        << "the call takes " << std::chrono::duration<double>(aCall.length).count() << " s";
    EXPECT_EQ(aCall.after.context, aCall.before.context) << "the current rendering context";
    EXPECT_EQ(aCall.after.values, aCall.before.values) << "open list, mode and depth of stacks";
  }

  std::unique_ptr<Stage> m_Stage, m_Other;
  Aftermath m_Base;
  Outcome m_BasePass;
};

}  // namespace

TEST_P(Situations, KeepPassesAndSettings) {
  for (const Operation& operation : ContextOperations()) Check(operation, Effect::kSettings);
  for (const Operation& operation : DrawingOperations()) Check(operation, Effect::kNothing);
}

INSTANTIATE_TEST_SUITE_P(In, Situations,
                         testing::Values(kInFrame, kInCapture, kInPick, kInGauge, kInOpenList, kInTask,
                                         kInOnData, kInOthersFrame, kInOthersCapture, kInTeardown),
                         [](const auto& info) { return std::string(kNames[info.param]); });
