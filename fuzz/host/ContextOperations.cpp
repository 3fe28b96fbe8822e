// Operations of the context: window, draw thread, callbacks, viewport, selection. Any thread.

#include <algorithm>
#include <vector>

#include "host/Clients.h"
#include "host/Turn.h"

namespace {

constexpr int kMostInitialisations = 6;
constexpr std::size_t kLongestScript = 96;

void Initialize(Turn& aTurn) {
  const auto context = aTurn.Pick<IGLContext>();
  if (!context || (aTurn.IsHost() && ++aTurn.m_World.m_iContexts > kMostInitialisations)) return;
  constexpr ULONG_PTR kParents[] = {0, 0, 0, 0, 0, 0, 0, 1, 0xFFFFFFFF};
  aTurn.Check(context->Initialize(aTurn.m_Bytes.OneOf(kParents)));
}

void SetViewport(Turn& aTurn) {
  const auto context = aTurn.Pick<IGLContext>();
  if (!context) return;
  const int width = std::min(aTurn.m_Bytes.Size(), 256), height = std::min(aTurn.m_Bytes.Size(), 256);
  aTurn.Check(context->SetViewport(aTurn.m_Bytes.Int(), aTurn.m_Bytes.Int(), width, height));
}

void SetDrawThreadPars(Turn& aTurn) {
  const auto context = aTurn.Pick<IGLContext>();
  if (!context) return;
  constexpr ULONG kCycles[] = {0, 1, 5, 6, 10, 20};  // milliseconds; longer cycles would make the run slow
  aTurn.Check(context->SetDrawThreadPars(aTurn.m_Bytes.Int(), aTurn.m_Bytes.OneOf(kCycles),
                                         aTurn.m_Bytes.OneOf(kCycles)));
}

void Select(Turn& aTurn) {
  const auto context = aTurn.Pick<IGLContext>();
  const auto viewer = aTurn.Pick<IGLViewer>();
  if (!context) return;
  Argument<GLDATA_POINT*> first(aTurn, true), second(aTurn, true);
  std::vector<ULONG> ids(64);
  int size = std::min(aTurn.m_Bytes.Int(), static_cast<int>(ids.size()));
  const int room = size;
  const HRESULT result =
      aTurn.Check(context->Select(viewer.Get(), first.Pass(), second.Pass(), aTurn.m_Bytes.Byte() & 1,
                                  aTurn.m_Bytes.Byte() & 1, &size, ids.data()));
  if (result != E_INVALIDARG && room > 0 && (size < 0 || size > room)) std::abort();
}

template <auto kMake>
void MakeClient(Turn& aTurn) {
  const auto part = aTurn.m_Bytes.Take(std::min<std::size_t>(aTurn.m_Bytes.Byte(), kLongestScript));
  aTurn.Keep(kMake(aTurn.m_World, Script(part.begin(), part.end())));
}

/// The context owns the new member and returns it without a reference. CreateMember adds one before it stores
/// the pointer.
template <class Interface, class Create>
void CreateMember(Turn& aTurn, std::atomic<int>& aCount, int aMost, Create aCreate) {
  const auto context = aTurn.Pick<IGLContext>();
  if (!context || ++aCount > aMost) return;
  Interface* member = nullptr;
  if (SUCCEEDED(aTurn.Check(aCreate(*context, &member)))) aTurn.Keep(GLPtr<Interface>::FromBorrowed(member));
}

void CreateViewer(Turn& aTurn) {
  CreateMember<IGLViewer>(aTurn, aTurn.m_World.m_iViewers, 8, [&](IGLContext& aContext, IGLViewer** aViewer) {
    return aContext.CreateViewer(aTurn.m_Bytes.Byte() & 1, aTurn.m_Bytes.Byte() & 1, aViewer);
  });
}

void CreateLight(Turn& aTurn) {
  CreateMember<IGLLight>(aTurn, aTurn.m_World.m_iLights, 24, [](IGLContext& aContext, IGLLight** aLight) {
    return aContext.CreateLight(aLight);
  });
}

GLString Face(Turn& aTurn) {
  constexpr const char* kFaces[] = {"DejaVu Sans", "System", "HAND", "sansserif", "no such face", ""};
  return aTurn.m_Bytes.OneIn(4) ? aTurn.Text() : GLString(aTurn.m_Bytes.OneOf(kFaces));
}

void CreateRasterFont(Turn& aTurn) {
  CreateMember<IGLFont>(aTurn, aTurn.m_World.m_iFonts, 4, [&](IGLContext& aContext, IGLFont** aFont) {
    Bytes& bytes = aTurn.m_Bytes;
    const GLString face = Face(aTurn);
    return aContext.CreateRasterFont(face, bytes.Int(), bytes.Int(), bytes.Float(), bytes.Size(),
                                     bytes.Size(), aFont);
  });
}

void CreateTrueTypeFont(Turn& aTurn) {
  CreateMember<IGLFont>(aTurn, aTurn.m_World.m_iOutlines, 1, [&](IGLContext& aContext, IGLFont** aFont) {
    Bytes& bytes = aTurn.m_Bytes;
    const GLString face = Face(aTurn);
    return aContext.CreateTrueTypeFont(face, bytes.Int(), bytes.Int(), bytes.Float(), bytes.Byte() & 1,
                                       aFont);
  });
}

void CreateCountedFont(Turn& aTurn) {
  const auto context = aTurn.Pick<IGLContext>();
  if (!context || ++aTurn.m_World.m_iFonts > 4) return;
  GLPtr<IGLFont> font;
  if (aTurn.m_Bytes.OneIn(2)) {
    aTurn.Check(context->CreateSystemFont(font.Put()));
  } else {
    aTurn.Check(context.As<IGLContext2>()->CreateInternalFont(Face(aTurn), font.Put()));
  }
  aTurn.Keep(std::move(font));
}

// ResumeDrawThread appears twice, so that contexts mostly draw.
constexpr auto kOperations = Table<
    Operation::kAny, kWaits<Initialize>, kWaits<SetViewport>, kWaits<SetDrawThreadPars>, Select,
    MakeClient<MakePainter>, MakeClient<MakeGauge>, MakeClient<MakeCapture>, CreateViewer, CreateLight,
    kWaits<CreateRasterFont>, kWaits<CreateTrueTypeFont>, kWaits<CreateCountedFont>, &IGLContext::GetWindow,
    &IGLContext::EnableDepth, &IGLContext::IsDepthEnabled, &IGLContext::GetBackgroundColor,
    &IGLContext::SetBackgroundColor, &IGLContext::GetDrawThreadPars, kWaits<&IGLContext::AttachPainter>,
    kWaits<&IGLContext::DetachPainter>, kWaits<&IGLContext::AttachCapture>,
    kWaits<&IGLContext::DetachCapture>, &IGLContext::GetViewportWidth, &IGLContext::GetViewportHeight,
    &IGLContext::DeviceToSCS, &IGLContext::SCSToDevice, &IGLContext::DestroyViewer, &IGLContext::EnumViewers,
    kWaits<&IGLContext::ClipPlane>, kWaits<&IGLContext::ResetClipPlanes>, &IGLContext::EnableLighting,
    &IGLContext::IsLightingEnabled, &IGLContext::EnableAmbientLight, &IGLContext::IsAmbientLightEnabled,
    &IGLContext::GetAmbientLight, &IGLContext::SetAmbientLight, &IGLContext::DestroyLight,
    &IGLContext::EnumLights, &IGLContext::GetFog, kWaits<&IGLContext::DestroyFont>,
    kWaits<&IGLContext::GetDefaultFont>, kWaits<&IGLContext::SetDefaultFont>, &IGLContext::EnumFonts,
    &IGLContext2::SetControlledDrawThread, &IGLContext2::TriggerDrawThread,
    kHostOnly<&IGLContext12::SuspendDrawThread>, kWaits<&IGLContext12::ResumeDrawThread>,
    kWaits<&IGLContext12::ResumeDrawThread>, &IGLContext14_2::GetCanvas, &IGLContext14_3::get_bFSAA,
    &IGLContext14_3::put_bFSAA, &IGLContext14_3::get_lFSAAMaxSamples, &IGLContext14_3::put_lFSAAMaxSamples>();

}  // namespace

std::span<const Operation> ContextOperations() noexcept { return kOperations; }
