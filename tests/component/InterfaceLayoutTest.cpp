// The binary interface that hosts are compiled against: identifiers and structures; test_interfaces.py checks
// slots and constants. No display.

#include "component/IdlClasses.h"

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
