// Calls of the clients, on the draw thread. Each call of a painter or gauge runs its script from the start. A
// capture begins its script again only after the end.

#include "host/Clients.h"

#include "host/Turn.h"

namespace {

constexpr int kLongestScript = 24;  // operations per call

void RunScript(World& aWorld, const Script& aScript, IGLCanvas& aCanvas, IGLContext& aContext) {
  Bytes bytes(aScript);
  Turn turn{aWorld, bytes, aCanvas, &aContext};
  for (int i = 0; i < kLongestScript && !bytes.IsEmpty(); ++i) RunOperation(turn);
  // Painters must return with the stack depths that they found.
  while (turn.m_aiPushed[Turn::kModelview]-- > 0) aCanvas.PopModelviewMatrix();
  while (turn.m_aiPushed[Turn::kProjection]-- > 0) aCanvas.PopProjectionMatrix();
  while (turn.m_aiPushed[Turn::kAttributes]-- > 0) aCanvas.PopDepthAttribute();
}

/// A painter or a gauge that runs its script when it draws.
template <class Base, class... Viewer>
class Player final : public Base {
 public:
  Player(World& aWorld, Script aScript) : m_World(aWorld), m_Script(std::move(aScript)) {}
  HRESULT Draw(IGLCanvas* aCanvas, IGLContext* aContext, Viewer*...) noexcept override {
    RunScript(m_World, m_Script, *aCanvas, *aContext);
    return S_OK;
  }

 private:
  World& m_World;
  const Script m_Script;
};

/// A capture whose answers come from its script, some of them errors or invalid values. It owns its pixmap,
/// since the draw thread writes into it.
class Capture final : public GLClient<IGLCapture> {
 public:
  Capture(World&, Script aScript)
      : m_Script(std::move(aScript)), m_Bytes(m_Script), m_pPixmap(GLCreate<IGLPixmap>(CLSID_GLPixmap)) {}

  HRESULT IsEnabled(LONG* aEnabled) noexcept override {
    if (m_Bytes.IsEmpty()) m_Bytes = Bytes(m_Script);
    *aEnabled = m_Bytes.OneIn(4) ? 1 : 0;
    return S_OK;
  }
  HRESULT GetPixmap(IGLPixmap** aPixmap) noexcept override {
    if (!m_Bytes.OneIn(8)) *aPixmap = GLPtr(m_pPixmap).Detach();
    return S_OK;
  }
  HRESULT GetPixelZoom(float* aZoom) noexcept override {
    *aZoom = m_Bytes.OneIn(4) ? m_Bytes.Float() : 1.0f;
    return S_OK;
  }
  HRESULT GetRectangle(int* aX, int* aY, int* aWidth, int* aHeight) noexcept override {
    if (m_Bytes.OneIn(8)) return E_FAIL;
    *aX = m_Bytes.OneIn(4) ? m_Bytes.Int() : 0;
    *aY = m_Bytes.OneIn(4) ? m_Bytes.Int() : 0;
    *aWidth = m_Bytes.Size();
    *aHeight = m_Bytes.Size();
    return S_OK;
  }
  HRESULT GetBackgroundColor(GLDATA_RGBA* aColor) noexcept override {
    *aColor = Argument<GLDATA_RGBA>::Make(m_Bytes);
    return S_OK;
  }
  HRESULT OnData(LONG aSuccess) noexcept override {
    int size = 0;
    GLDATA_RGBA4B* pixels = nullptr;
    if (aSuccess != 0 && SUCCEEDED(m_pPixmap->AccessPixmapData(&size, &pixels))) {
      // reads every pixel, so that a sanitizer finds a buffer that is too small
      for (int i = 0; i < size; ++i) m_uSum += pixels[i].m_bRed;
    }
    return S_OK;
  }

 private:
  const Script m_Script;
  Bytes m_Bytes;
  GLPtr<IGLPixmap> m_pPixmap;
  unsigned m_uSum = 0;
};

}  // namespace

GLPtr<IGLPainter> MakePainter(World& aWorld, Script aScript) {
  return GLMake<Player<GLPainterBase, IGLViewer>>(aWorld, std::move(aScript)).As<IGLPainter>();
}
GLPtr<IGLViewerGauge> MakeGauge(World& aWorld, Script aScript) {
  return GLMake<Player<GLViewerGaugeBase>>(aWorld, std::move(aScript)).As<IGLViewerGauge>();
}
GLPtr<IGLCapture> MakeCapture(World& aWorld, Script aScript) {
  return GLMake<Capture>(aWorld, std::move(aScript)).As<IGLCapture>();
}
