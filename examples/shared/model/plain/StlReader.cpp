// StlReader: parses text and binary STL files. Any thread.

#include "shared/model/plain/StlReader.h"

#include <bit>
#include <cstring>

#include "shared/model/plain/LineReader.h"
#include "shared/model/plain/ReadingShare.h"
#include "shared/model/plain/Vector.h"

namespace {

constexpr std::streamoff kHeader = 84,
                         kRecord = 50;  // bytes of a binary file's header and facets

void AddFacet(Part& aPart, const Vector& aNormal, const std::array<Vector, 3>& aCorners) {
  const bool given = aNormal != Vector{};
  const Vector normal = Normalized(
      given ? aNormal : Cross(Difference(aCorners[1], aCorners[0]), Difference(aCorners[2], aCorners[0])));
  const auto first = static_cast<std::uint32_t>(aPart.vertices.size());
  for (const Vector& corner : aCorners) aPart.vertices.push_back({corner, normal});
  aPart.triangles.push_back({first, first + 1, first + 2});
}

std::uint32_t LittleEndian(const unsigned char* aBytes) {
  return aBytes[0] | std::uint32_t{aBytes[1]} << 8 | std::uint32_t{aBytes[2]} << 16 |
         std::uint32_t{aBytes[3]} << 24;
}

std::vector<Part> ReadBinary(std::istream& aFile, std::uint32_t aFacets, ReadingShare& aShare) {
  std::vector<Part> parts(1);
  std::array<unsigned char, kRecord> record{};
  for (std::uint32_t facet = 0; facet < aFacets; ++facet) {
    aShare.Step();
    if (!aFile.read(reinterpret_cast<char*>(record.data()), kRecord)) throw ModelError("it is truncated");
    std::array<Vector, 4> values{};  // the normal and three corners
    for (std::size_t i = 0; i < 12; ++i) {
      values[i / 3][i % 3] = std::bit_cast<float>(LittleEndian(&record[4 * i]));
    }
    AddFacet(parts[0], values[0], {values[1], values[2], values[3]});
  }
  if (aFacets == 0) parts.clear();
  return parts;
}

Vector ReadVector(LineReader& aLine) {
  const float x = aLine.Number(), y = aLine.Number();
  return {x, y, aLine.Number()};
}

std::vector<Part> ReadText(std::istream& aFile, ReadingShare& aShare) {
  std::vector<Part> parts;
  LineReader line(aFile);
  Vector normal{};
  std::vector<Vector> corners;
  while (line.Next()) {
    aShare.Step();
    const std::string_view keyword = line.Word();
    if (keyword == "solid") {
      parts.emplace_back().name = line.Rest();
    } else if (keyword == "facet") {
      if (line.Word() != "normal") line.Fail("no normal");
      normal = ReadVector(line);
      corners.clear();
    } else if (keyword == "vertex") {
      corners.push_back(ReadVector(line));
    } else if (keyword == "endfacet") {
      if (parts.empty() || corners.size() != 3) line.Fail("a facet does not have three corners");
      AddFacet(parts.back(), normal, {corners[0], corners[1], corners[2]});
      corners.clear();
    }
  }
  if (!corners.empty()) throw ModelError("it is truncated");
  std::erase_if(parts, [](const Part& aPart) { return aPart.triangles.empty(); });
  return parts;
}

}  // namespace

std::vector<Part> ReadStl(std::istream& aFile, const ReadProgress& aProgress) {
  ReadingShare share(aFile, aProgress);
  std::array<unsigned char, kHeader> header{};
  aFile.read(reinterpret_cast<char*>(header.data()), kHeader);
  const std::streamoff got = aFile.gcount();
  const std::uint32_t facets = LittleEndian(&header[kHeader - 4]);
  // Some binary files begin like text files. Their length identifies them.
  const bool binary = got == kHeader && share.Size() == kHeader + kRecord * std::streamoff{facets};
  if (binary) return ReadBinary(aFile, facets, share);
  if (std::memcmp(header.data(), "solid", 5) != 0) {
    throw ModelError(got == kHeader ? "its length does not match its number of facets" : "it is truncated");
  }
  aFile.clear();
  aFile.seekg(0);
  return ReadText(aFile, share);
}
