// What a host with headers of its own relies on: identifiers, slots, structures and values of the interfaces.

#include <gllib/GLLib.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <map>

#include "component/PublishedIdentifiers.h"
#include "platform/GL.h"

namespace {

/// The number of an operation's slot, counted from QueryInterface. The C++ ABIs in use keep the slot's offset
/// in the first word of a member pointer and mark it as virtual by the lowest bit of one of the words.
template <class Operation>
std::size_t SlotOf(Operation aOperation) {
  std::uintptr_t words[2] = {};
  static_assert(sizeof(aOperation) == sizeof(words));
  std::memcpy(words, &aOperation, sizeof(words));
  EXPECT_TRUE(((words[0] | words[1]) & 1) != 0);
  return (words[0] & ~std::uintptr_t{1}) / sizeof(void*);
}

struct Slot {
  const char* m_szName;
  std::size_t m_uFound, m_uPublished;
};

#define SLOT(operation, published) \
  { #operation, SlotOf(&operation), published }

}  // namespace

TEST(InterfaceLayout, OperationsStandInTheirPublishedSlots) {
  // The ends of every interface, and where rows of several operations or a change of order would shift the
  // rest.
  const Slot slots[] = {
      SLOT(IGLContext::Initialize, 3),
      SLOT(IGLContext::EnableDepth, 5),
      SLOT(IGLContext::GetBackgroundColor, 7),
      SLOT(IGLContext::GetDrawThreadPars, 9),
      SLOT(IGLContext::AttachPainter, 11),
      SLOT(IGLContext::AttachCapture, 13),
      SLOT(IGLContext::SetViewport, 17),
      SLOT(IGLContext::CreateViewer, 20),
      SLOT(IGLContext::ClipPlane, 23),
      SLOT(IGLContext::GetAmbientLight, 29),
      SLOT(IGLContext::CreateLight, 31),
      SLOT(IGLContext::CreateSystemFont, 35),
      SLOT(IGLContext::GetDefaultFont, 39),
      SLOT(IGLContext::Select, 42),
      SLOT(IGLContext2::SetControlledDrawThread, 3),
      SLOT(IGLContext2::CreateInternalFont, 5),
      SLOT(IGLContext12::ResumeDrawThread, 4),
      SLOT(IGLContext14_2::GetCanvas, 3),
      SLOT(IGLContext14_3::get_bFSAA, 3),
      SLOT(IGLContext14_3::put_lFSAAMaxSamples, 6),
      SLOT(IGLViewer::Show, 3),
      SLOT(IGLViewer::GetEyeFovy_DEG, 15),
      SLOT(IGLViewer::SetOrthoExtents, 23),
      SLOT(IGLViewer::SetClipRectangle, 28),
      SLOT(IGLViewer::AddGauge, 35),
      SLOT(IGLViewer::GetCoord, 39),
      SLOT(IGLViewer::PointSCStoWCS, 41),
      SLOT(IGLViewer2::SetShowAxes, 4),
      SLOT(IGLCanvas::SetModelview6d, 3),
      SLOT(IGLCanvas::PushProjectionMatrix, 12),
      SLOT(IGLCanvas::BeginDrawPoints, 19),
      SLOT(IGLCanvas::BeginDrawPolygon, 28),
      SLOT(IGLCanvas::Vertex, 30),
      SLOT(IGLCanvas::SetVertexNormal, 35),
      SLOT(IGLCanvas::SetTestID, 38),
      SLOT(IGLCanvas::SetDrawAttributes, 44),
      SLOT(IGLCanvas::BeginCompileList, 46),
      SLOT(IGLCanvas::IsCompiledList, 50),
      SLOT(IGLCanvas2::GetModelviewMatrix, 3),
      SLOT(IGLCanvas2::PopAttrib, 7),
      SLOT(IGLCanvas3::GetModelCoords, 4),
      SLOT(IGLCanvas13_1::GetDrawAttributes, 3),
      SLOT(IGLCanvas13_1::GetTransparentTriangles, 9),
      SLOT(IGLCanvas13_1::GetMaterial, 13),
      SLOT(IGLCanvas14_2::GetRawModelviewMatrix, 4),
      SLOT(IGLCanvas14_4::GenTextures, 3),
      SLOT(IGLCanvas14_4::Build2DMipmaps, 16),
      SLOT(IGLDrawAttr::GetContrastColor, 6),
      SLOT(IGLDrawAttr::GetDrawMode, 29),
      SLOT(IGLMaterial::SetShininess, 12),
      SLOT(IGLMaterial::GetDrawMode, 15),
      SLOT(IGLLight::GetCutOffAngle_DEG, 15),
      SLOT(IGLLight::SetDirection, 28),
      SLOT(IGLFog::GetFogEnd, 10),
      SLOT(IGLFog::SetFogColor, 13),
      SLOT(IGLCollection::GetFirst, 8),
      SLOT(IGLCollection::AppendTo, 13),
      SLOT(IGLFont::SetEscapement_DEG, 15),
      SLOT(IGLFont::Print, 17),
      SLOT(IGLBitmap::Draw, 11),
      SLOT(IGLPixmap::AccessPixmapData, 6),
      SLOT(IGLPixmap::Draw, 19),
      SLOT(IGLTexture1D::EndDraw, 6),
      SLOT(IGLTexture2D::EndDraw, 6),
      SLOT(IGLCoord::Rotate_RAD, 14),
      SLOT(IGLCoord::SetMatrix16d, 23),
      SLOT(IGLPainter::Draw, 3),
      SLOT(IGLViewerGauge::IsVisible, 5),
      SLOT(IGLCapture::GetRectangle, 6),
      SLOT(IGLCapture::OnData, 8),
  };
  for (const Slot& slot : slots) EXPECT_EQ(slot.m_uFound, slot.m_uPublished) << slot.m_szName;
}

TEST(InterfaceLayout, HeadersCarryThePublishedIdentifiers) {
#define ID(name) \
  { #name, name }
  const std::map<std::string, GUID> headers = {
      ID(CLSID_GLContext),    ID(CLSID_GLDrawAttr),   ID(CLSID_GLFog),        ID(CLSID_GLFont),
      ID(CLSID_GLLight),      ID(CLSID_GLMaterial),   ID(CLSID_GLViewer),     ID(CLSID_GLCoord),
      ID(CLSID_GLBitmap),     ID(CLSID_GLPixmap),     ID(CLSID_GLTexture1D),  ID(CLSID_GLTexture2D),
      ID(CLSID_GLCollection), ID(CLSID_GLCanvas),     ID(IID_IGLContext),     ID(IID_IGLContext2),
      ID(IID_IGLContext12),   ID(IID_IGLContext14_2), ID(IID_IGLContext14_3), ID(IID_IGLCanvas),
      ID(IID_IGLCanvas2),     ID(IID_IGLCanvas3),     ID(IID_IGLCanvas13_1),  ID(IID_IGLCanvas14_2),
      ID(IID_IGLCanvas14_4),  ID(IID_IGLViewer),      ID(IID_IGLViewer2),     ID(IID_IGLDrawAttr),
      ID(IID_IGLMaterial),    ID(IID_IGLLight),       ID(IID_IGLFog),         ID(IID_IGLCollection),
      ID(IID_IGLFont),        ID(IID_IGLBitmap),      ID(IID_IGLPixmap),      ID(IID_IGLTexture1D),
      ID(IID_IGLTexture2D),   ID(IID_IGLCoord),       ID(IID_IGLPainter),     ID(IID_IGLViewerGauge),
      ID(IID_IGLCapture),
  };
  std::map<std::string, GUID> published;
  for (const PublishedInterface& one : kPublishedCallbacks) {
    published["IID_" + std::string(one.m_szName)] = IdentifierFromText(one.m_szId);
  }
  for (const PublishedClass& one : kPublishedClasses) {
    published["CLSID_" + std::string(one.m_szName)] = IdentifierFromText(one.m_szId);
    for (const PublishedInterface& face : one.m_vInterfaces) {
      published["IID_" + std::string(face.m_szName)] = IdentifierFromText(face.m_szId);
    }
  }
  ASSERT_EQ(published.size(), 41u);
  for (const auto& [name, id] : published) {
    ASSERT_TRUE(headers.contains(name)) << name;
    EXPECT_TRUE(headers.at(name) == id) << name;
  }
}

TEST(InterfaceLayout, StructuresHaveTheirPublishedLayout) {
  const struct {
    const char* m_szName;
    std::size_t m_uFound, m_uPublished;
  } places[] = {
      {"LONG", sizeof(LONG), 4},
      {"ULONG", sizeof(ULONG), 4},
      {"GLPOSITION", sizeof(GLPOSITION), 4},
      {"GLDATA_POINT", sizeof(GLDATA_POINT), 24},
      {"GLDATA_POINT.z", offsetof(GLDATA_POINT, z), 16},
      {"GLDATA_RGBA", sizeof(GLDATA_RGBA), 16},
      {"GLDATA_RGBA.m_fAlpha", offsetof(GLDATA_RGBA, m_fAlpha), 12},
      {"GLDATA_RGBA4B", sizeof(GLDATA_RGBA4B), 4},
      {"GLDATA_RGBA4B.m_bBlue", offsetof(GLDATA_RGBA4B, m_bBlue), 2},
      {"GLDATA_MATRIX6D", sizeof(GLDATA_MATRIX6D), 48},
      {"GLDATA_MATRIX6D.m_dAngleX", offsetof(GLDATA_MATRIX6D, m_dAngleX), 24},
      {"GLDATA_MATRIX16D", sizeof(GLDATA_MATRIX16D), 128},
      {"GLDATA_TRANS_TRIANGLE", sizeof(GLDATA_TRANS_TRIANGLE), 224},
      {"GLDATA_TRANS_TRIANGLE.m_sNormals", offsetof(GLDATA_TRANS_TRIANGLE, m_sNormals), 72},
      {"GLDATA_TRANS_TRIANGLE.m_sColors", offsetof(GLDATA_TRANS_TRIANGLE, m_sColors), 144},
      {"GLDATA_TRANS_TRIANGLE.m_sCentroid", offsetof(GLDATA_TRANS_TRIANGLE, m_sCentroid), 192},
      {"GLDATA_TRANS_TRIANGLE.m_dMidDistance", offsetof(GLDATA_TRANS_TRIANGLE, m_dMidDistance), 216},
      {"eGLDrawMode", sizeof(eGLDrawMode), 4},
      {"eGLTextureMode", sizeof(eGLTextureMode), 4},
  };
  for (const auto& place : places) EXPECT_EQ(place.m_uFound, place.m_uPublished) << place.m_szName;
}

TEST(InterfaceLayout, CanvasEnumerationsAreGLsOwnValues) {
  const struct {
    int m_iOurs;
    GLenum m_uGLs;
  } values[] = {
      {GLTF_RGB, GL_RGB},
      {GLTF_RGBA, GL_RGBA},
      {GLDT_BYTE, GL_BYTE},
      {GLDT_UNSIGNED_BYTE, GL_UNSIGNED_BYTE},
      {GLDT_SHORT, GL_SHORT},
      {GLDT_UNSIGNED_SHORT, GL_UNSIGNED_SHORT},
      {GLDT_INT, GL_INT},
      {GLDT_UNSIGNED_INT, GL_UNSIGNED_INT},
      {GLDT_FLOAT, GL_FLOAT},
      {GLDT_2_BYTES, GL_2_BYTES},
      {GLDT_3_BYTES, GL_3_BYTES},
      {GLDT_4_BYTES, GL_4_BYTES},
      {GLDT_DOUBLE, GL_DOUBLE},
      {GLE_COLOR_MATERIAL, GL_COLOR_MATERIAL},
      {GLE_TEXTURE_GEN_S, GL_TEXTURE_GEN_S},
      {GLE_TEXTURE_GEN_T, GL_TEXTURE_GEN_T},
      {GLE_TEXTURE_2D, GL_TEXTURE_2D},
      {GLTCN_S, GL_S},
      {GLTCN_T, GL_T},
      {GLTCN_R, GL_R},
      {GLTCN_Q, GL_Q},
      {GLTGP_TEXTURE_GEN_MODE, GL_TEXTURE_GEN_MODE},
      {GLTGP_OBJECT_PLANE, GL_OBJECT_PLANE},
      {GLTGP_EYE_PLANE, GL_EYE_PLANE},
      {GLTPN_TEXTURE_MAG_FILTER, GL_TEXTURE_MAG_FILTER},
      {GLTPN_TEXTURE_MIN_FILTER, GL_TEXTURE_MIN_FILTER},
      {GLTPN_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_S},
      {GLTPN_TEXTURE_WRAP_T, GL_TEXTURE_WRAP_T},
      {GLTET_TEXTURE_ENV, GL_TEXTURE_ENV},
      {GLTEP_TEXTURE_ENV_MODE, GL_TEXTURE_ENV_MODE},
      {GLTEP_TEXTURE_ENV_COLOR, GL_TEXTURE_ENV_COLOR},
  };
  for (const auto& value : values) EXPECT_EQ(static_cast<GLenum>(value.m_iOurs), value.m_uGLs);
}
