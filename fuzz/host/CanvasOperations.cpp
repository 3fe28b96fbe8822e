// Operations of the canvas. A draw thread uses the canvas of the painter's context; a host thread uses a
// canvas without a context. An operation includes all calls that GL requires together: a primitive with its
// vertices, a list with its contents.

#include <algorithm>
#include <vector>

#include "host/Turn.h"

namespace {

constexpr int kMostVertices = 32, kMostTriangles = 64;
constexpr std::array kDeepest = {8, 1, 4};  // largest number of pushes per stack, far below the limits of GL

using Vertices = HRESULT (IGLCanvas::*)() noexcept;

constexpr Vertices kPrimitives[] = {&IGLCanvas::BeginDrawPoints,      &IGLCanvas::BeginDrawLines,
                                    &IGLCanvas::BeginDrawLineStrip,   &IGLCanvas::BeginDrawLineLoop,
                                    &IGLCanvas::BeginDrawTriangles,   &IGLCanvas::BeginDrawTriangleStrip,
                                    &IGLCanvas::BeginDrawTriangleFan, &IGLCanvas::BeginDrawQuads,
                                    &IGLCanvas::BeginDrawQuadStrip,   &IGLCanvas::BeginDrawPolygon};

template <auto... kMembers>
constexpr void (*kUntested[sizeof...(kMembers)])(Turn&) = {CallUntested<kMembers>...};

// Calls that are valid between BeginDraw... and EndDrawVertices.
constexpr auto& kWithin =
    kUntested<&IGLCanvas::Vertex, &IGLCanvas::Vertex2d, &IGLCanvas::Vertex3d, &IGLCanvas::Vertex2f,
              &IGLCanvas::Vertex3f, &IGLCanvas::SetVertexNormal, &IGLCanvas::SetVertexNormal3d,
              &IGLCanvas::SetVertexNormal3f, &IGLCanvas::SetVertexColor, &IGLCanvas::SetVertexEdgeFlag,
              &IGLCanvas14_4::TexCoord2f, &IGLCanvas14_4::TexCoord2d>;

void Primitive(Turn& aTurn) {
  aTurn.Check((aTurn.m_Canvas.*aTurn.m_Bytes.OneOf(kPrimitives))());
  for (int i = aTurn.m_Bytes.Byte() % kMostVertices; i > 0; --i) aTurn.m_Bytes.OneOf(kWithin)(aTurn);
  aTurn.Check(aTurn.m_Canvas.EndDrawVertices());
}

void CompileList(Turn& aTurn) {
  int list = 0;
  if (FAILED(aTurn.Check(aTurn.m_Canvas.BeginCompileList(&list)))) return;
  for (int i = aTurn.m_Bytes.Byte() % 4; i > 0; --i) {
    aTurn.m_Canvas.SetTestID(aTurn.m_Bytes.Word());
    Primitive(aTurn);
  }
  aTurn.Check(aTurn.m_Canvas.EndCompileList());
  aTurn.m_World.m_iList = list;
}

int AnyList(Turn& aTurn) {
  return aTurn.m_Bytes.OneIn(2) ? aTurn.m_World.m_iList.load() : aTurn.m_Bytes.Int();
}

void DrawList(Turn& aTurn) { aTurn.Check(aTurn.m_Canvas.DrawCompiledList(AnyList(aTurn))); }
void DeleteList(Turn& aTurn) { aTurn.Check(aTurn.m_Canvas.DeleteCompiledList(AnyList(aTurn))); }
void IsList(Turn& aTurn) {
  LONG valid = 0;
  aTurn.Check(aTurn.m_Canvas.IsCompiledList(AnyList(aTurn), &valid));
}

/// A push that the painter undoes before it returns.
template <Turn::Stack kStack, void (*kPush)(Turn&)>
void Push(Turn& aTurn) {
  if (aTurn.m_aiPushed[kStack] >= kDeepest[kStack]) return;
  ++aTurn.m_aiPushed[kStack];
  kPush(aTurn);
}
template <Turn::Stack kStack, void (*kPop)(Turn&)>
void Pop(Turn& aTurn) {
  if (aTurn.m_aiPushed[kStack] == 0) return;
  --aTurn.m_aiPushed[kStack];
  kPop(aTurn);
}

/// Counts the push only if it succeeds, since only then there is something to pop.
void PushProjection(Turn& aTurn) {
  if (aTurn.m_aiPushed[Turn::kProjection] >= kDeepest[Turn::kProjection]) return;
  Argument<GLDATA_POINT*> extents(aTurn, true);
  if (SUCCEEDED(aTurn.Check(aTurn.m_Canvas.PushProjectionMatrix(aTurn.m_Bytes.Byte() & 1, extents.Pass()))))
    ++aTurn.m_aiPushed[Turn::kProjection];
}

// Larger than any image here needs, even with the row lengths and skips that a pixmap may have left in GL.
std::array<unsigned char, std::size_t{4} << 20> g_Texels;

void TexImage2D(Turn& aTurn) {
  Bytes& bytes = aTurn.m_Bytes;
  const int width = std::min(bytes.Size(), 64), height = std::min(bytes.Size(), 64);
  constexpr int kFormats[] = {GLTF_RGB, GLTF_RGBA, GLTF_RGBA, 3, 0};
  constexpr int kTypes[] = {
      GLDT_BYTE,         GLDT_UNSIGNED_BYTE, GLDT_SHORT,   GLDT_UNSIGNED_SHORT, GLDT_INT,
      GLDT_UNSIGNED_INT, GLDT_FLOAT,         GLDT_2_BYTES, GLDT_DOUBLE,         0};
  const auto format = static_cast<eGLTexFormat>(bytes.OneOf(kFormats));
  const auto type = static_cast<eGLDataType>(bytes.OneOf(kTypes));
  const int internal = bytes.OneOf(kFormats), level = bytes.Int(), border = bytes.Byte() % 3 - 1;
  unsigned char* texels = bytes.OneIn(8) ? nullptr : g_Texels.data();
  const auto canvas = aTurn.Pick<IGLCanvas14_4>();
  if (bytes.OneIn(2)) {
    aTurn.Check(
        canvas->TexImage2D(level, internal, width, height, border, format, type, bytes.Int(), texels));
  } else {
    aTurn.Check(canvas->Build2DMipmaps(internal, width, height, format, type, bytes.Int(), texels));
  }
}

void GenTextures(Turn& aTurn) {
  unsigned names[4] = {};
  constexpr int kCounts[] = {-1, 0, 1, 4};
  aTurn.Check(aTurn.Pick<IGLCanvas14_4>()->GenTextures(aTurn.m_Bytes.OneOf(kCounts),
                                                       aTurn.m_Bytes.OneIn(8) ? nullptr : names));
}

template <class T, auto kMember>
void TexGenValues(Turn& aTurn) {
  T values[4] = {};
  for (T& value : values) value = Argument<T>::Make(aTurn.m_Bytes);
  constexpr int kCoords[] = {GLTCN_S, GLTCN_T, GLTCN_R, GLTCN_Q, 0};
  constexpr int kParameters[] = {GLTGP_TEXTURE_GEN_MODE, GLTGP_OBJECT_PLANE, GLTGP_EYE_PLANE, 0};
  aTurn.Check(((*aTurn.Pick<IGLCanvas14_4>()).*kMember)(
      static_cast<eGLTextureCoordName>(aTurn.m_Bytes.OneOf(kCoords)),
      static_cast<eGLTextureGenParameter>(aTurn.m_Bytes.OneOf(kParameters)), aTurn.m_Bytes.Int(),
      aTurn.m_Bytes.OneIn(8) ? nullptr : values));
}

void SwitchTexturing(Turn& aTurn) {
  constexpr int kSwitches[] = {GLE_COLOR_MATERIAL, GLE_TEXTURE_GEN_S, GLE_TEXTURE_GEN_T, GLE_TEXTURE_2D, 0};
  const auto which = static_cast<eGLEnable>(aTurn.m_Bytes.OneOf(kSwitches));
  const auto canvas = aTurn.Pick<IGLCanvas14_4>();
  aTurn.Check(aTurn.m_Bytes.OneIn(2) ? canvas->Enable(which) : canvas->Disable(which));
}

void GetTriangles(Turn& aTurn) {
  std::vector<GLDATA_TRANS_TRIANGLE> triangles(kMostTriangles);
  const LONG count = std::min(aTurn.m_Bytes.Int(), kMostTriangles);
  aTurn.Check(aTurn.Pick<IGLCanvas13_1>()->GetTransparentTriangles(
      aTurn.m_Bytes.Int(), count, aTurn.m_Bytes.OneIn(16) ? nullptr : triangles.data()));
}

/// Clears a full store first: a painter adds in every frame, so the store would grow without bound.
template <auto kAdd>
void AddTriangle(Turn& aTurn) {
  LONG count = 0;
  const auto canvas = aTurn.Pick<IGLCanvas13_1>();
  canvas->GetNumTransparentTriangles(&count);
  if (count > kMostTriangles) canvas->ClearTransparentTriangles();
  Call<kAdd>(aTurn);
}

constexpr auto kOperations =
    Table<Operation::kAny, Primitive, Primitive, Primitive, CompileList, DrawList, DeleteList, IsList,
          &IGLCanvas::SetModelview6d, &IGLCanvas::ResetModelview6d, &IGLCanvas::SetModelview16d,
          &IGLCanvas::ResetModelview16d, Push<Turn::kModelview, Call<&IGLCanvas::PushModelviewMatrix>>,
          Pop<Turn::kModelview, Call<&IGLCanvas::PopModelviewMatrix>>, &IGLCanvas::Translate,
          &IGLCanvas::Rotate_RAD, &IGLCanvas::Scale, PushProjection,
          Pop<Turn::kProjection, Call<&IGLCanvas::PopProjectionMatrix>>, &IGLCanvas::EnableClipPlanes,
          Push<Turn::kAttributes, Call<&IGLCanvas::PushDepthAttribute>>,
          Pop<Turn::kAttributes, Call<&IGLCanvas::PopDepthAttribute>>,
          Push<Turn::kAttributes, Call<&IGLCanvas::PushLightAttribute>>,
          Pop<Turn::kAttributes, Call<&IGLCanvas::PopLightAttribute>>,
          Push<Turn::kAttributes, Call<&IGLCanvas2::PushAttrib>>,
          Pop<Turn::kAttributes, Call<&IGLCanvas2::PopAttrib>>,
          Push<Turn::kAttributes, Call<&IGLCanvas13_1::PushDepthMask>>, &IGLCanvas::SetTestID,
          CallUntested<&IGLCanvas::SetVertexColor>, &IGLCanvas::SetVertexLineWidth,
          &IGLCanvas::SetVertexLineStipple, &IGLCanvas::SetVertexPointSize, &IGLCanvas::SetDrawAttributes,
          &IGLCanvas::SetMaterial, &IGLCanvas2::GetModelviewMatrix, &IGLCanvas2::Ortho,
          &IGLCanvas2::Perspective, &IGLCanvas3::GetWindowCoords, &IGLCanvas3::GetModelCoords,
          &IGLCanvas13_1::GetDrawAttributes, &IGLCanvas13_1::GetMaterial,
          &IGLCanvas13_1::ClearTransparentTriangles, AddTriangle<&IGLCanvas13_1::AddTransparentTriangle>,
          AddTriangle<&IGLCanvas13_1::AddTransparentTriangle2>,
          AddTriangle<&IGLCanvas13_1::AddTransparentTriangle3>, &IGLCanvas13_1::GetNumTransparentTriangles,
          GetTriangles, &IGLCanvas13_1::SetSelectionMode, &IGLCanvas13_1::GetSelectionMode,
          &IGLCanvas14_2::SetCWWinding, &IGLCanvas14_2::GetRawModelviewMatrix, TexImage2D, GenTextures,
          SwitchTexturing, &IGLCanvas14_4::BindTexture2D, &IGLCanvas14_4::TexGeni, &IGLCanvas14_4::TexGend,
          TexGenValues<int, &IGLCanvas14_4::TexGeniv>, TexGenValues<double, &IGLCanvas14_4::TexGendv>,
          &IGLCanvas14_4::TexParameteri2D, &IGLCanvas14_4::TexEnvi>();

}  // namespace

std::span<const Operation> CanvasOperations() noexcept { return kOperations; }
