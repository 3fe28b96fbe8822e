// The binary interface that hosts are compiled against: identifiers, slots, structures and constants. No
// display.

#include "component/IdlClasses.h"
#include "platform/GL.h"

namespace {

/// Returns the slot number of an operation, counted from QueryInterface. The supported C++ ABIs store the
/// slot's offset in the first word of a member pointer, and mark a virtual function by the lowest bit of one
/// word.
template <class Operation>
std::size_t SlotOf(Operation aOperation) {
  std::uintptr_t words[2] = {};
  static_assert(sizeof(aOperation) == sizeof(words));
  std::memcpy(words, &aOperation, sizeof(words));
  EXPECT_TRUE(((words[0] | words[1]) & 1) != 0);
  return (words[0] & ~std::uintptr_t{1}) / sizeof(void*);
}

}  // namespace

// test_interfaces.py checks the last slot of each interface.
TEST(InterfaceLayout, SlotsFollowTheDeclarations) {
  EXPECT_EQ(SlotOf(&IGLContext::Select), 42u);
  EXPECT_EQ(SlotOf(&IGLCanvas::IsCompiledList), 50u);
  EXPECT_EQ(SlotOf(&IGLCapture::OnData), 8u);
}

// Only interfaces that the component calls. The tests of the classes check the other identifiers.
TEST(InterfaceLayout, ClientsHaveTheIdentifiersOfTheTypeLibrary) {
  const auto ids = IdlIdentifiers();
  EXPECT_TRUE(IID_IGLPainter == IdentifierFromText(ids.at("IGLPainter")));
  EXPECT_TRUE(IID_IGLViewerGauge == IdentifierFromText(ids.at("IGLViewerGauge")));
  EXPECT_TRUE(IID_IGLCapture == IdentifierFromText(ids.at("IGLCapture")));
  EXPECT_EQ(ids.size(), 1u + 14u + 27u) << "library, classes and interfaces";
}

// Existing hosts are compiled with these values.
static_assert(sizeof(LONG) == 4 && sizeof(ULONG) == 4 && sizeof(GLPOSITION) == 4 && sizeof(eGLDrawMode) == 4);
static_assert(sizeof(GLDATA_RGBA4B) == 4 && sizeof(GLDATA_MATRIX6D) == 48 && sizeof(GLDATA_MATRIX16D) == 128);
static_assert(sizeof(GLDATA_TRANS_TRIANGLE) == 224 && offsetof(GLDATA_TRANS_TRIANGLE, m_sNormals) == 72 &&
              offsetof(GLDATA_TRANS_TRIANGLE, m_sColors) == 144 &&
              offsetof(GLDATA_TRANS_TRIANGLE, m_sCentroid) == 192);

// The canvas passes these enumerators to GL unchanged.
static_assert(GLTF_RGB == GL_RGB && GLTF_RGBA == GL_RGBA && GLDT_BYTE == GL_BYTE &&
              GLDT_UNSIGNED_BYTE == GL_UNSIGNED_BYTE && GLDT_SHORT == GL_SHORT &&
              GLDT_UNSIGNED_SHORT == GL_UNSIGNED_SHORT && GLDT_INT == GL_INT &&
              GLDT_UNSIGNED_INT == GL_UNSIGNED_INT && GLDT_FLOAT == GL_FLOAT && GLDT_2_BYTES == GL_2_BYTES &&
              GLDT_3_BYTES == GL_3_BYTES && GLDT_4_BYTES == GL_4_BYTES && GLDT_DOUBLE == GL_DOUBLE);
static_assert(GLE_COLOR_MATERIAL == GL_COLOR_MATERIAL && GLE_TEXTURE_GEN_S == GL_TEXTURE_GEN_S &&
              GLE_TEXTURE_GEN_T == GL_TEXTURE_GEN_T && GLE_TEXTURE_2D == GL_TEXTURE_2D && GLTCN_S == GL_S &&
              GLTCN_T == GL_T && GLTCN_R == GL_R && GLTCN_Q == GL_Q &&
              GLTGP_TEXTURE_GEN_MODE == GL_TEXTURE_GEN_MODE && GLTGP_OBJECT_PLANE == GL_OBJECT_PLANE &&
              GLTGP_EYE_PLANE == GL_EYE_PLANE);
static_assert(GLTPN_TEXTURE_MAG_FILTER == GL_TEXTURE_MAG_FILTER &&
              GLTPN_TEXTURE_MIN_FILTER == GL_TEXTURE_MIN_FILTER &&
              GLTPN_TEXTURE_WRAP_S == GL_TEXTURE_WRAP_S && GLTPN_TEXTURE_WRAP_T == GL_TEXTURE_WRAP_T &&
              GLTET_TEXTURE_ENV == GL_TEXTURE_ENV && GLTEP_TEXTURE_ENV_MODE == GL_TEXTURE_ENV_MODE &&
              GLTEP_TEXTURE_ENV_COLOR == GL_TEXTURE_ENV_COLOR);
