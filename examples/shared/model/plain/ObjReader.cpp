// ObjReader: parses OBJ files and builds parts. Any thread.

#include "shared/model/plain/ObjReader.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <unordered_map>
#include <utility>

#include "shared/model/plain/LineReader.h"
#include "shared/model/plain/Materials.h"
#include "shared/model/plain/ReadingShare.h"
#include "shared/model/plain/Vector.h"

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Indices of a face's corner into the file's lists; kNone for missing ones.
struct Corner {
  std::size_t point = kNone, place = kNone, normal = kNone;
  auto operator<=>(const Corner&) const = default;  // NOLINT(modernize-use-nullptr): reports its own 0
};

/// A part while its file is read.
struct Growing {
  Part part;
  std::map<Corner, std::uint32_t> known;           // vertex of each distinct corner
  std::vector<Corner> corners;                     // one per vertex
  std::unordered_map<std::size_t, Vector> around;  // sum of the face normals at each point
};

class Reader {
 public:
  Reader(std::istream& aFile, const std::filesystem::path& aFolder, const ReadProgress& aProgress)
      : m_share(aFile, aProgress), m_line(aFile), m_materials(aFolder) {}

  std::vector<Part> Read() {
    while (m_line.Next()) {
      m_share.Step();
      ReadLine(m_line.Word());
    }
    std::vector<Part> parts;
    for (Growing& growing : m_growing) {
      Smooth(growing);
      parts.push_back(std::move(growing.part));
    }
    return parts;
  }

 private:
  void ReadLine(std::string_view aKeyword) {
    if (aKeyword == "v") {
      m_points.push_back(ReadVector());
    } else if (aKeyword == "vn") {
      m_normals.push_back(Normalized(ReadVector()));
    } else if (aKeyword == "vt") {
      const float x = m_line.Number();
      m_places.push_back({x, m_line.Number()});
    } else if (aKeyword == "f") {
      ReadFace();
    } else if (aKeyword == "o" || aKeyword == "g") {
      m_object = m_line.Rest();
      m_current = kNone;
    } else if (aKeyword == "usemtl") {
      m_material = m_line.Rest();
      m_current = kNone;
    } else if (aKeyword == "mtllib") {
      m_materials.Read(m_line.Rest());
    }
  }

  Vector ReadVector() {
    const float x = m_line.Number(), y = m_line.Number();
    return {x, y, m_line.Number()};
  }

  /// Returns the position for an index. Indices count from 1; negative ones count from the end.
  /// @return kNone for an empty text
  std::size_t Index(std::string_view aText, std::size_t aCount) const {
    if (aText.empty()) return kNone;
    long long number = 0;
    const auto [end, error] = std::from_chars(aText.data(), aText.data() + aText.size(), number);
    if (error != std::errc{} || end != aText.data() + aText.size()) m_line.Fail("not a number");
    const auto count = static_cast<long long>(aCount);
    if (number == 0 || number > count || number < -count) m_line.Fail("a face has an index out of range");
    return static_cast<std::size_t>(number > 0 ? number - 1 : count + number);
  }

  Corner ReadCorner(std::string_view aWord) const {
    const auto next = [&] {
      const auto end = std::min(aWord.find('/'), aWord.size());
      const std::string_view text = aWord.substr(0, end);
      aWord.remove_prefix(std::min(end + 1, aWord.size()));
      return text;
    };
    Corner corner;
    corner.point = Index(next(), m_points.size());
    corner.place = Index(next(), m_places.size());
    corner.normal = Index(next(), m_normals.size());
    if (corner.point == kNone) m_line.Fail("a corner has no point");
    return corner;
  }

  void ReadFace() {
    std::vector<Corner> face;
    for (std::string_view word = m_line.Word(); !word.empty(); word = m_line.Word())
      face.push_back(ReadCorner(word));
    if (face.size() < 3) return;  // not a polygon
    Growing& growing = Current();
    const std::uint32_t first = VertexOf(growing, face[0]);
    std::uint32_t last = VertexOf(growing, face[1]);
    Vector normal{};  // its length is proportional to the polygon's area
    for (std::size_t i = 2; i < face.size(); ++i) {
      const std::uint32_t next = VertexOf(growing, face[i]);
      growing.part.triangles.push_back({first, last, next});
      last = next;
      const Vector& from = m_points[face[0].point];
      Add(normal,
          Cross(Difference(m_points[face[i - 1].point], from), Difference(m_points[face[i].point], from)));
    }
    for (const Corner& corner : face) Add(growing.around[corner.point], normal);
  }

  /// Returns the part of the current object and material. A part that was left earlier is continued.
  Growing& Current() {
    if (m_current == kNone) {
      m_current = m_byName.try_emplace({m_object, m_material}, m_growing.size()).first->second;
    }
    if (m_current == m_growing.size()) {
      Growing& growing = m_growing.emplace_back();
      const Materials::Material& material = m_materials.Find(m_material);
      growing.part.name = m_object;
      growing.part.surface = material.surface;
      growing.part.image = material.image;
    }
    return m_growing[m_current];
  }

  std::uint32_t VertexOf(Growing& aGrowing, const Corner& aCorner) const {
    Part& part = aGrowing.part;
    const auto [known, isNew] =
        aGrowing.known.try_emplace(aCorner, static_cast<std::uint32_t>(part.vertices.size()));
    if (isNew) {
      aGrowing.corners.push_back(aCorner);
      part.vertices.push_back(
          {m_points[aCorner.point], aCorner.normal == kNone ? Vector{} : m_normals[aCorner.normal]});
      const auto place = aCorner.place == kNone ? std::array<float, 2>{} : m_places[aCorner.place];
      if (part.image) part.places.push_back(place);
    }
    return known->second;
  }

  /// Computes missing normals from the faces around the point, weighted by area.
  static void Smooth(Growing& aGrowing) {
    for (std::size_t i = 0; i < aGrowing.corners.size(); ++i) {
      const Corner& corner = aGrowing.corners[i];
      if (corner.normal == kNone)
        aGrowing.part.vertices[i].normal = Normalized(aGrowing.around[corner.point]);
    }
  }

  ReadingShare m_share;
  LineReader m_line;
  Materials m_materials;
  std::vector<Vector> m_points, m_normals;
  std::vector<std::array<float, 2>> m_places;
  std::string m_object, m_material;
  std::size_t m_current = kNone;  // current part; kNone after a change of object or material
  std::vector<Growing> m_growing;
  std::map<std::pair<std::string, std::string>, std::size_t> m_byName;  // key: object and material
};

}  // namespace

std::vector<Part> ReadObj(std::istream& aFile, const std::filesystem::path& aFolder,
                          const ReadProgress& aProgress) {
  return Reader(aFile, aFolder, aProgress).Read();
}
