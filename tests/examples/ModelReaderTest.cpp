// The readers of OBJ and STL files: models that they read, and files that they refuse. No display.

#include <bit>

#include "shared/model/plain/ObjReader.h"
#include "shared/model/plain/StlReader.h"
#include "support/Test.h"

namespace {

std::vector<Part> Obj(const std::string& aText) {
  std::istringstream file(aText);
  return ReadObj(file, "");
}

std::vector<Part> Stl(const std::string& aBytes) {
  std::istringstream file(aBytes);
  return ReadStl(file);
}

/// Returns a binary STL file. @param aTold number of facets that its header states
std::string BinaryStl(std::uint32_t aTold, const std::vector<std::array<float, 12>>& aFacets) {
  std::string bytes = "solid by a program that begins its binary files so";
  bytes.resize(80);
  const auto put = [&](std::uint32_t aValue) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(aValue >> shift & 0xFF);
  };
  put(aTold);
  for (const auto& facet : aFacets) {
    for (const float value : facet) put(std::bit_cast<std::uint32_t>(value));
    bytes += std::string(2, '\0');
  }
  return bytes;
}

const std::string kPoints = "v 0 0 0\nv 2 0 0\nv 2 2 0\nv 0 2 0\n";
const std::string kTextStl =
    "solid a part\nfacet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex 0 1 0\nvertex 1 0 "
    "0\nendloop\nendfacet\n";

}  // namespace

TEST(ObjReader, CreatesAPartPerObjectAndMaterial) {
  const auto parts =
      Obj("mtllib none.mtl\n" + kPoints +
          "o a\nusemtl x\nf 1 2 3 4\nusemtl y\nf -4 -3 \\\n -2\nusemtl x\nf 3 2 1\no b\nl 1 2\n");
  ASSERT_EQ(parts.size(), 2u) << "a part that is named again continues; lines create no part";
  EXPECT_EQ(parts[0].name, "a");
  EXPECT_EQ(parts[0].triangles.size(), 3u);
  EXPECT_EQ(parts[1].triangles.size(), 1u);
  EXPECT_EQ(parts[1].vertices[1].point, (std::array<float, 3>{2, 0, 0})) << "indices from the end";
}

TEST(ObjReader, SmoothsCornersWithoutNormals) {
  // A roof: two equal faces meet in an edge, whose normal points up.
  const auto roof = Obj("v -1 0 0\nv 0 1 0\nv 0 1 -1\nv -1 0 -1\nv 1 0 0\nv 1 0 -1\nf 1 2 3 4\nf 2 5 6 3\n");
  ASSERT_EQ(roof.at(0).vertices.size(), 6u) << "corners are shared";
  EXPECT_EQ(roof[0].vertices[1].normal, (std::array<float, 3>{0, 1, 0}));
  const auto given = Obj(kPoints + "vn 0 3 4\nf 1//1 2//1 3//1\n");
  EXPECT_EQ(given.at(0).vertices[0].normal, (std::array<float, 3>{0, 0.6f, 0.8f}));
}

TEST(ObjReader, RefusesInvalidLines) {
  for (const std::string text :
       {"f 0 1 2", "f 1 2 5", "f 1 2 -5", "f 1 2 99999999999999999999", "f 1 2 x", "f 1/1 2/1 3/1",
        "f //1 2 3", "f 1//9 2 3", "v 1 2", "v 1 2 3e", "vt a", "vn 1 1"}) {
    EXPECT_THROW(Obj(kPoints + text + "\n"), ModelError) << text;
  }
  EXPECT_TRUE(Obj(std::string("\0\xFF\n\\\n\\", 6) + "f 1 2\nf\n#").empty());
}

TEST(StlReader, ReadsTextAndBinary) {
  const std::array<float, 12> facet = {0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0};
  const auto text = Stl(kTextStl + "endsolid\n" + "solid empty\n"), binary = Stl(BinaryStl(1, {facet}));
  ASSERT_EQ(text.size(), 1u);
  ASSERT_EQ(binary.size(), 1u);
  EXPECT_EQ(text[0].name, "a part");
  for (const auto& parts : {text, binary}) {
    ASSERT_EQ(parts[0].triangles.size(), 1u);
    EXPECT_EQ(parts[0].vertices[1].point, (std::array<float, 3>{0, 1, 0}));
    EXPECT_EQ(parts[0].vertices[1].normal, (std::array<float, 3>{0, 0, -1})) << "the normal of the corners";
  }
}

TEST(StlReader, RefusesTruncatedFiles) {
  const std::array<float, 12> facet = {};
  std::string binary = BinaryStl(2, {facet, facet}), boundless = BinaryStl(0xFFFFFFFF, {facet});
  binary[0] = boundless[0] = 'S';  // text files start with a small s
  for (const std::string& bytes :
       std::vector<std::string>{"Solid", binary.substr(0, 84), binary.substr(0, 183), binary + "x", boundless,
                                kTextStl.substr(0, 60), "solid\nvertex 1 2", "solid\nfacet normal 0 0 x\n",
                                "solid\nfacet normal 0 0 1\nvertex 0 0 0\nendfacet\n"}) {
    EXPECT_THROW(Stl(bytes), ModelError) << testing::PrintToString(bytes);
  }
  EXPECT_TRUE(Stl("solid\nendsolid\n").empty());
}
