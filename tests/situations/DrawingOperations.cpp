// Table rows: operations that draw. They draw out of view and restore stacks and state, so that the pass does
// not change.

#include "situations/Operations.h"

namespace {

constexpr ULONG kAllState = 0x000FFFFF;  // GL_ALL_ATTRIB_BITS
GLDATA_POINT g_sOutside{1e4, 0, 0}, g_sNormal{0, 0, 1};
GLDATA_RGBA g_sColor{0.2f, 0.6f, 0.9f, 1};

GLPtr<IGLPixmap> Image() {
  auto image = GLCreate<IGLPixmap>(CLSID_GLPixmap);
  image->Initialize(4, 4, {200, 100, 50, 255});
  return image;
}

HRESULT Compile(Stage& s) {
  int list = 0;
  LONG valid = 0;
  const HRESULT begun = s.canvas->BeginCompileList(&list);
  if (begun != S_OK) return begun;
  return All({s.canvas->BeginDrawPoints(), s.canvas->Vertex(&g_sOutside), s.canvas->EndDrawVertices(),
              s.canvas->EndCompileList(), s.canvas->DrawCompiledList(list),
              s.canvas->IsCompiledList(list, &valid), valid == 1 ? S_OK : E_FAIL,
              s.canvas->DeleteCompiledList(list)});
}

HRESULT PrintNew(Stage& s) {
  GLPtr<IGLFont> font;
  const HRESULT created = s.context->CreateSystemFont(font.Put());
  if (created != S_OK) return created;
  const HRESULT printed = font->Print(GLString("text"), &g_sOutside);
  s.context->DestroyFont(font.Get());
  return printed;
}

HRESULT Map(Stage& s, LONG aCached) {
  GLDATA_POINT window{}, model{};
  const auto mapping = s.canvas.As<IGLCanvas3>();
  return All({mapping->GetWindowCoords(&model, aCached, &window),
              mapping->GetModelCoords(&window, aCached, &model)});
}

constexpr Operation kOperations[] = {
    {"IGLCanvas, matrices",
     [](Stage& s) {
       IGLCanvas& c = *s.canvas;
       GLDATA_MATRIX6D six{1, 2, 3, 0.1, 0.2, 0.3};
       GLDATA_MATRIX16D sixteen{{{2, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
       return All({c.PushModelviewMatrix(1), c.SetModelview6d(&six), c.ResetModelview6d(&six),
                   c.SetModelview16d(&sixteen), c.ResetModelview16d(&sixteen), c.Translate(&g_sNormal),
                   c.Rotate_RAD(0.1, &g_sNormal), c.Scale(&g_sNormal), c.PopModelviewMatrix(),
                   c.PushProjectionMatrix(0, nullptr), s.canvas.As<IGLCanvas2>()->Ortho(-1, 1, -1, 1, -1, 1),
                   s.canvas.As<IGLCanvas2>()->Perspective(30, 1, 1, 9), c.PopProjectionMatrix()});
     }},
    {"IGLCanvas::PushProjectionMatrix",
     [](Stage& s) {
       return All({s.canvas->PushProjectionMatrix(1, At(GLDATA_POINT{})), s.canvas->PopProjectionMatrix()});
     }},
    {"IGLCanvas, attributes",
     [](Stage& s) {
       IGLCanvas& c = *s.canvas;
       const auto more = s.canvas.As<IGLCanvas2>();
       return All({c.PushDepthAttribute(), c.PopDepthAttribute(), c.PushLightAttribute(),
                   c.PopLightAttribute(), s.canvas.As<IGLCanvas13_1>()->PushDepthMask(0),
                   c.PopDepthAttribute(), more->PushAttrib(kAllState),
                   s.canvas.As<IGLCanvas14_2>()->SetCWWinding(1), c.SetVertexLineWidth(2),
                   c.SetVertexLineStipple(0xAAAA, 1), c.SetVertexPointSize(2), c.SetVertexEdgeFlag(0),
                   c.SetDrawAttributes(GLCreate<IGLDrawAttr>(CLSID_GLDrawAttr).Get()),
                   c.SetMaterial(GLCreate<IGLMaterial>(CLSID_GLMaterial).Get()), more->PopAttrib()});
     }},
    {"IGLCanvas, primitives",
     [](Stage& s) {
       s.canvas->SetTestID(9);
       s.canvas->SetVertexColor(&g_sColor);
       s.canvas->SetVertexNormal(&g_sNormal);
       IGLCanvas& c = *s.canvas;
       for (const auto begin :
            {&IGLCanvas::BeginDrawPoints, &IGLCanvas::BeginDrawLines, &IGLCanvas::BeginDrawLineStrip,
             &IGLCanvas::BeginDrawLineLoop, &IGLCanvas::BeginDrawTriangles,
             &IGLCanvas::BeginDrawTriangleStrip, &IGLCanvas::BeginDrawTriangleFan, &IGLCanvas::BeginDrawQuads,
             &IGLCanvas::BeginDrawQuadStrip, &IGLCanvas::BeginDrawPolygon}) {
         (c.*begin)();
         for (int i = 0; i < 4; ++i) c.Vertex3d(1e4, i, 0);
         if (c.EndDrawVertices() != S_OK) return E_FAIL;
       }
       return S_OK;
     }},
    {"IGLCanvas::EnableClipPlanes",
     [](Stage& s) {
       return All({s.canvas->EnableClipPlanes(0), s.canvas->EnableClipPlanes(1)});
     }},
    {"IGLCanvas::BeginCompileList", Compile, kWithoutGL | In({kInOpenList})},
    {"IGLCanvas::DrawCompiledList", [](Stage& s) { return s.canvas->DrawCompiledList(s.list); }, kWithoutGL},
    {"IGLCanvas::DeleteCompiledList", [](Stage& s) { return s.canvas->DeleteCompiledList(0); }, kWithoutGL},
    {"IGLCanvas::IsCompiledList", [](Stage& s) { return s.canvas->IsCompiledList(s.list, At(LONG{0})); },
     kWithoutGL},
    {"IGLCanvas2::GetModelviewMatrix, IGLCanvas14_2::GetRawModelviewMatrix",
     [](Stage& s) {
       return All({Read(*s.canvas.As<IGLCanvas2>(), &IGLCanvas2::GetModelviewMatrix),
                   Read(*s.canvas.As<IGLCanvas14_2>(), &IGLCanvas14_2::GetRawModelviewMatrix)});
     },
     kWithoutGL},
    {"IGLCanvas3, cached", [](Stage& s) { return Map(s, 1); }},
    {"IGLCanvas3, of the moment", [](Stage& s) { return Map(s, 0); }, kWithoutGL},
    {"IGLCanvas13_1, transparent triangles",
     [](Stage& s) {
       const auto store = s.canvas.As<IGLCanvas13_1>();
       GLDATA_POINT points[3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
       GLDATA_TRANS_TRIANGLE triangle{};
       LONG count = 0;
       return All({store->AddTransparentTriangle(points, &g_sColor),
                   store->GetNumTransparentTriangles(&count), store->GetTransparentTriangles(0, 1, &triangle),
                   store->ClearTransparentTriangles()});
     }},
    {"IGLCanvas14_4",
     [](Stage& s) {
       const auto textures = s.canvas.As<IGLCanvas14_4>();
       unsigned name = 0;
       unsigned char pixels[4 * 4 * 4] = {};
       return All({s.canvas.As<IGLCanvas2>()->PushAttrib(kAllState), textures->GenTextures(1, &name),
                   textures->BindTexture2D(name), textures->Enable(GLE_TEXTURE_2D),
                   textures->TexImage2D(0, GLTF_RGBA, 4, 4, 0, GLTF_RGBA, GLDT_UNSIGNED_BYTE, 64, pixels),
                   textures->TexParameteri2D(GLTPN_TEXTURE_MIN_FILTER, 0x2600),
                   textures->TexGeni(GLTCN_S, GLTGP_TEXTURE_GEN_MODE, 0x2401),
                   textures->TexEnvi(GLTET_TEXTURE_ENV, GLTEP_TEXTURE_ENV_MODE, 0x2100),
                   textures->TexCoord2f(0, 0),
                   textures->Build2DMipmaps(GLTF_RGBA, 4, 4, GLTF_RGBA, GLDT_UNSIGNED_BYTE, 64, pixels),
                   textures->Disable(GLE_TEXTURE_2D), s.canvas.As<IGLCanvas2>()->PopAttrib()});
     }},
    {"IGLFont::Print", [](Stage& s) { return s.font->Print(GLString("text"), &g_sOutside); }, kWithoutGL},
    {"IGLFont::Print, a new font", PrintNew, kWithoutGL | In({kInOpenList})},
    {"IGLPixmap::Draw, IGLBitmap::Draw",
     [](Stage& s) {
       const auto stencil = GLCreate<IGLBitmap>(CLSID_GLBitmap);
       return All({stencil->Initialize(8, 8, 1), stencil->Draw(s.context.Get(), &g_sOutside, 0, 0),
                   Image()->Draw(s.context.Get(), &g_sOutside)});
     }},
    {"IGLTexture1D",
     [](Stage& s) {
       const auto texture = GLCreate<IGLTexture1D>(CLSID_GLTexture1D);
       return All({texture->Initialize(Image().Get()),
                   texture->BeginDraw(s.context.Get(), GLTM_DECAL, 1, 1, 0, &g_sNormal, nullptr),
                   texture->Draw(&g_sOutside, 0, &g_sOutside, 1), texture->EndDraw()});
     }},
    {"IGLTexture2D",
     [](Stage& s) {
       const auto texture = GLCreate<IGLTexture2D>(CLSID_GLTexture2D);
       return All({texture->Initialize(Image().Get()),
                   texture->BeginDraw(s.context.Get(), GLTM_MODULATE, 1, 1, 0, &g_sNormal, nullptr),
                   texture->Draw(0, 0, &g_sOutside), texture->EndDraw()});
     }},
};

}  // namespace

std::span<const Operation> DrawingOperations() { return kOperations; }
