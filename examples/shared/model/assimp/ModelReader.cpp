// ModelReader: reads models through the assimp library. Any thread.

#include "shared/model/ModelReader.h"

#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <filesystem>
#include <fstream>

#include "shared/model/assimp/Images.h"

namespace {

/// Forwards the importer's progress.
class ImportProgress final : public Assimp::ProgressHandler {
 public:
  explicit ImportProgress(const ReadProgress& aProgress) : m_progress(aProgress) {}
  bool Update(float aFraction) override {
    if (m_progress) m_progress(std::clamp(aFraction, 0.0f, 1.0f));
    return true;
  }

 private:
  const ReadProgress& m_progress;
};

GLDATA_RGBA ColorOf(const aiColor4D& aColor) { return {aColor.r, aColor.g, aColor.b, aColor.a}; }

Surface SurfaceOf(const aiMaterial& aMaterial) {
  Surface surface;
  aiString name;
  // The importer creates a material of this name for files without materials. The default surface looks
  // better.
  if (aMaterial.Get(AI_MATKEY_NAME, name) == AI_SUCCESS && name == aiString(AI_DEFAULT_MATERIAL_NAME)) {
    return surface;
  }
  aiColor4D color;
  if (aMaterial.Get(AI_MATKEY_COLOR_DIFFUSE, color) == AI_SUCCESS) surface.diffuse = ColorOf(color);
  if (aMaterial.Get(AI_MATKEY_COLOR_SPECULAR, color) == AI_SUCCESS) surface.specular = ColorOf(color);
  float value = 0;
  if (aMaterial.Get(AI_MATKEY_SHININESS, value) == AI_SUCCESS && value > 0) {
    surface.shininess = std::min(value / 128.0f, 1.0f);
  }
  surface.diffuse.m_fAlpha = aMaterial.Get(AI_MATKEY_OPACITY, value) == AI_SUCCESS ? value : 1.0f;
  return surface;
}

/// Sets the image of a mesh's material and its texture coordinates.
void TakeImage(const aiMesh& aMesh, const aiMaterial& aMaterial, Images& aImages, Part& aPart) {
  aiString name;
  if (!aMesh.HasTextureCoords(0) || aMaterial.GetTexture(aiTextureType_DIFFUSE, 0, &name) != AI_SUCCESS)
    return;
  aPart.image = aImages.Find(name.C_Str());
  if (!aPart.image) return;
  aPart.places.reserve(aMesh.mNumVertices);
  for (unsigned i = 0; i < aMesh.mNumVertices; ++i) {
    aPart.places.push_back({aMesh.mTextureCoords[0][i].x, aMesh.mTextureCoords[0][i].y});
  }
}

/// Converts a mesh to a part, in world coordinates.
Part PartOf(const aiMesh& aMesh, const aiNode& aNode, const aiMatrix4x4& aPlacement, const aiScene& aScene,
            Images& aImages) {
  Part part;
  part.name = aMesh.mName.length > 0 ? aMesh.mName.C_Str() : aNode.mName.C_Str();
  part.surface = SurfaceOf(*aScene.mMaterials[aMesh.mMaterialIndex]);
  aiMatrix3x3 turn(aPlacement);
  const bool mirrored = turn.Determinant() < 0;
  turn.Inverse().Transpose();
  part.vertices.reserve(aMesh.mNumVertices);
  for (unsigned i = 0; i < aMesh.mNumVertices; ++i) {
    const aiVector3D p = aPlacement * aMesh.mVertices[i];
    aiVector3D n = turn * aMesh.mNormals[i];
    n.NormalizeSafe();
    part.vertices.push_back({{p.x, p.y, p.z}, {n.x, n.y, n.z}});
  }
  if (aMesh.HasVertexColors(0)) {
    for (unsigned i = 0; i < aMesh.mNumVertices; ++i) part.colors.push_back(ColorOf(aMesh.mColors[0][i]));
  }
  TakeImage(aMesh, *aScene.mMaterials[aMesh.mMaterialIndex], aImages, part);
  part.triangles.reserve(aMesh.mNumFaces);
  for (unsigned i = 0; i < aMesh.mNumFaces; ++i) {
    const aiFace& face = aMesh.mFaces[i];
    if (face.mNumIndices != 3) continue;
    // A mirroring transformation reverses the winding of the faces.
    const auto [second, third] = mirrored ? std::pair{2, 1} : std::pair{1, 2};
    part.triangles.push_back({face.mIndices[0], face.mIndices[second], face.mIndices[third]});
  }
  return part;
}

void AddNode(const aiNode& aNode, const aiMatrix4x4& aParent, const aiScene& aScene, Images& aImages,
             std::vector<Part>& aParts) {
  const aiMatrix4x4 placement = aParent * aNode.mTransformation;
  for (unsigned i = 0; i < aNode.mNumMeshes; ++i) {
    const aiMesh& mesh = *aScene.mMeshes[aNode.mMeshes[i]];
    if (!mesh.HasNormals()) continue;  // meshes of points and lines have no normals
    Part part = PartOf(mesh, aNode, placement, aScene, aImages);
    if (part.triangles.empty()) continue;
    aParts.push_back(std::move(part));
  }
  for (unsigned i = 0; i < aNode.mNumChildren; ++i) {
    AddNode(*aNode.mChildren[i], placement, aScene, aImages, aParts);
  }
}

/// Returns whether the header of a PLY file lacks its end. The importer would search for it in an endless
/// loop.
bool IsCutPly(const std::string& aPath) {
  std::ifstream file(aPath, std::ios::binary);
  std::string line;
  if (!std::getline(file, line) || !line.starts_with("ply")) return false;
  while (std::getline(file, line)) {
    if (line.starts_with("end_header")) return false;
  }
  return true;
}

std::string FirstLine(const std::string& aText) { return aText.substr(0, aText.find('\n')); }

}  // namespace

const char* const kReadableFiles = "any format that assimp reads";

bool IsModelName(const std::string& aName) {
  return Assimp::Importer().IsExtensionSupported(std::filesystem::path(aName).extension().string());
}

std::vector<Part> ReadParts(const std::string& aPath, const ReadProgress& aProgress) {
  if (IsCutPly(aPath)) throw ModelError("its header is not complete");
  Assimp::Importer importer;
  importer.SetProgressHandler(new ImportProgress(aProgress));  // the importer takes ownership
  const aiScene* scene = importer.ReadFile(aPath, aiProcess_Triangulate | aiProcess_JoinIdenticalVertices |
                                                      aiProcess_GenSmoothNormals | aiProcess_SortByPType |
                                                      aiProcess_ValidateDataStructure);
  if (scene == nullptr) throw ModelError(FirstLine(importer.GetErrorString()));
  std::vector<Part> parts;
  if ((scene->mFlags & AI_SCENE_FLAGS_INCOMPLETE) == 0) {
    Images images(*scene, std::filesystem::path(aPath).parent_path());
    AddNode(*scene->mRootNode, aiMatrix4x4(), *scene, images, parts);
  }
  return parts;
}
