// ListHost: the C++ version of list_host.py. It compiles a mesh into a list, vertex by vertex, and draws it.
// Its painter measures on the draw thread.
//
//   python_list_host MESH FRAMES
//
// Prints milliseconds: the time of the compilation, the CPU time of its thread, the CPU time of the process
// per frame, and then the time of each frame.

#include <gllib/GLLibHost.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <future>
#include <iostream>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration aTime) {
  return std::chrono::duration<double, std::milli>(aTime).count();
}

/// Returns the CPU time of this thread or of the process.
double ProcessorMilliseconds(clockid_t aClock) {
  timespec time = {};
  clock_gettime(aClock, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// Vertices, which are also the normals, and triangles.
struct Mesh {
  explicit Mesh(const char* aPath) {
    std::ifstream file(aPath, std::ios::binary);
    std::array<std::uint32_t, 2> counts = {};
    file.read(reinterpret_cast<char*>(counts.data()), sizeof(counts));
    m_Points.resize(counts[0]);
    m_Triangles.resize(counts[1]);
    file.read(reinterpret_cast<char*>(m_Points.data()),
              static_cast<std::streamsize>(counts[0] * sizeof(m_Points[0])));
    file.read(reinterpret_cast<char*>(m_Triangles.data()),
              static_cast<std::streamsize>(counts[1] * sizeof(m_Triangles[0])));
  }

  std::vector<std::array<float, 3>> m_Points;
  std::vector<std::array<std::uint32_t, 3>> m_Triangles;
};

class MeshPainter final : public GLPainterBase {
 public:
  MeshPainter(const Mesh& aMesh, std::size_t aFrames) : m_Mesh(aMesh), m_uFrames(aFrames) {}

  HRESULT Draw(IGLCanvas* aCanvas, IGLContext*, IGLViewer*) noexcept override {
    const auto start = Clock::now();
    const double thread = ProcessorMilliseconds(CLOCK_THREAD_CPUTIME_ID);
    const double process = ProcessorMilliseconds(CLOCK_PROCESS_CPUTIME_ID);
    if (m_iList == 0) {
      Compile(*aCanvas);
      m_dCompilation = Milliseconds(Clock::now() - start);
      m_dCompilationThread = ProcessorMilliseconds(CLOCK_THREAD_CPUTIME_ID) - thread;
    }
    aCanvas->DrawCompiledList(m_iList);
    if (m_Starts.size() <= m_uFrames) {
      m_Starts.push_back(start);
      if (m_Starts.size() == 2) m_dProcessStart = process;
    } else if (!std::exchange(m_bDone, true)) {
      m_dProcess = process - m_dProcessStart;
      m_Done.set_value();
    }
    return S_OK;
  }

  std::promise<void> m_Done;
  double m_dCompilation = 0, m_dCompilationThread = 0, m_dProcess = 0;
  std::vector<Clock::time_point> m_Starts;

 private:
  void Compile(IGLCanvas& aCanvas) {
    aCanvas.BeginCompileList(&m_iList);
    aCanvas.BeginDrawTriangles();
    for (const auto& triangle : m_Mesh.m_Triangles) {
      for (const std::uint32_t corner : triangle) {
        const auto& point = m_Mesh.m_Points[corner];
        aCanvas.SetVertexNormal3f(point[0], point[1], point[2]);
        aCanvas.Vertex3f(point[0], point[1], point[2]);
      }
    }
    aCanvas.EndDrawVertices();
    aCanvas.EndCompileList();
  }

  const Mesh& m_Mesh;
  const std::size_t m_uFrames;
  int m_iList = 0;
  double m_dProcessStart = 0;
  bool m_bDone = false;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  const Mesh mesh(argv[1]);
  const auto painter = GLMake<MeshPainter>(mesh, std::strtoul(argv[2], nullptr, 10));
  auto context = GLCreate<IGLContext>(CLSID_GLContext);
  if (!context || FAILED(context->Initialize(0))) return 1;
  context->SetViewport(0, 0, 640, 480);
  IGLViewer* viewer = nullptr;
  context->CreateViewer(1, 0, &viewer);
  GLPtr<IGLCoord> eye;
  viewer->GetCoord(eye.Put());
  eye->SetOrigin3d(0, 0, 5);
  IGLLight* light = nullptr;
  context->CreateLight(&light);
  light->Enable(1);
  context.As<IGLContext2>()->SetControlledDrawThread(1, 0);  // frames without pauses
  context->AttachPainter(painter.Get());
  painter->m_Done.get_future().wait();
  context = nullptr;
  std::cout << painter->m_dCompilation << ' ' << painter->m_dCompilationThread << ' '
            << painter->m_dProcess / std::strtod(argv[2], nullptr) << '\n';
  for (std::size_t i = 2; i < painter->m_Starts.size(); ++i)  // the first frame compiles
    std::cout << Milliseconds(painter->m_Starts[i] - painter->m_Starts[i - 1]) << '\n';
}
