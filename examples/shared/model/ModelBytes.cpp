// ModelBytes: writes and checks the block of bytes. Any thread.

#include "shared/model/ModelBytes.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "shared/model/ImageFile.h"

// Layout of the block: magic number; name; number of images; the images, each with width, height and pixels;
// number of parts; the parts, each with name, surface, vertices, colours, texture coordinates, triangles and
// the position of its image (from 1; 0 for none). A text or an array starts with the number of its elements.

namespace {

constexpr std::uint64_t kMark = 0x314C444D4C4C47;  // "GLLMDL1", which contains the version of the layout
constexpr std::uint64_t kLongestName = 4096;
constexpr int kLargestSide = 1 << 15;  // of an image, in pixels

class Writer {
 public:
  explicit Writer(const ByteSink& aSink) : m_sink(aSink) {}

  template <class Value>
  void Put(const Value& aValue) const {
    static_assert(std::is_trivially_copyable_v<Value>);
    m_sink(&aValue, sizeof(aValue));
  }
  template <class Elements>
  void PutAll(const Elements& aElements) const {
    Put(std::uint64_t{aElements.size()});
    m_sink(aElements.data(), aElements.size() * sizeof(*aElements.data()));
  }

 private:
  const ByteSink& m_sink;
};

class Reader {
 public:
  explicit Reader(std::span<const std::byte> aBytes) : m_rest(aBytes) {}

  template <class Value>
  Value Take() {
    static_assert(std::is_trivially_copyable_v<Value>);
    Value value;
    Copy(&value, 1);
    return value;
  }
  template <class Elements>
  Elements TakeAll(std::uint64_t aMost = ~std::uint64_t{0}) {
    const auto count = Take<std::uint64_t>();
    Elements elements;
    Require(count <= aMost && count <= m_rest.size() / sizeof(*elements.data()));
    elements.resize(count);
    Copy(elements.data(), count);
    return elements;
  }
  std::size_t Rest() const { return m_rest.size(); }

  static void Require(bool aHolds) {
    if (!aHolds) throw ModelError("the block that its reader wrote is damaged");
  }

 private:
  template <class Value>
  void Copy(Value* aValues, std::uint64_t aCount) {
    Require(aCount <= m_rest.size() / sizeof(Value));
    const std::size_t size = aCount * sizeof(Value);
    if (size > 0) std::memcpy(aValues, m_rest.data(), size);
    m_rest = m_rest.subspan(size);
  }

  std::span<const std::byte> m_rest;
};

std::vector<IGLPixmap*> ImagesOf(const Model& aModel) {
  std::vector<IGLPixmap*> images;
  for (const Part& part : aModel.parts) {
    if (part.image && std::find(images.begin(), images.end(), part.image.Get()) == images.end()) {
      images.push_back(part.image.Get());
    }
  }
  return images;
}

void WriteImage(const Writer& aWriter, IGLPixmap& aImage) {
  int width = 0;
  int height = 0;
  int size = 0;
  GLDATA_RGBA4B* pixels = nullptr;
  aImage.GetWidth(&width);
  aImage.GetHeight(&height);
  aImage.AccessPixmapData(&size, &pixels);
  aWriter.Put(width);
  aWriter.Put(height);
  aWriter.PutAll(std::span(pixels, static_cast<std::size_t>(size)));
}

GLPtr<IGLPixmap> TakeImage(Reader& aReader) {
  const auto width = aReader.Take<int>();
  const auto height = aReader.Take<int>();
  const auto sideFits = [](int aSide) { return aSide > 0 && aSide <= kLargestSide; };
  Reader::Require(sideFits(width) && sideFits(height));
  Picture picture;
  picture.width = width;
  picture.height = height;
  const auto pixels = aReader.TakeAll<std::vector<GLDATA_RGBA4B>>();
  Reader::Require(pixels.size() == static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(pixels.data());
  picture.pixels.assign(bytes, bytes + pixels.size() * sizeof(GLDATA_RGBA4B));
  return PixmapOf(picture);
}

Part TakePart(Reader& aReader, const std::vector<GLPtr<IGLPixmap>>& aImages) {
  Part part;
  part.name = aReader.TakeAll<std::string>(kLongestName);
  part.surface = aReader.Take<Surface>();
  part.vertices = aReader.TakeAll<std::vector<Vertex>>();
  part.colors = aReader.TakeAll<decltype(part.colors)>();
  part.places = aReader.TakeAll<decltype(part.places)>();
  part.triangles = aReader.TakeAll<decltype(part.triangles)>();
  const auto image = aReader.Take<std::uint64_t>();
  Reader::Require(image <= aImages.size());
  if (image > 0) part.image = aImages[image - 1];
  const std::size_t count = part.vertices.size();
  const auto onePerVertex = [&](std::size_t aCount) { return aCount == 0 || aCount == count; };
  Reader::Require(onePerVertex(part.colors.size()) && onePerVertex(part.places.size()));
  Reader::Require(!part.image || part.places.size() == count);
  for (const auto& triangle : part.triangles) {
    Reader::Require(
        std::all_of(triangle.begin(), triangle.end(), [&](auto aIndex) { return aIndex < count; }));
  }
  return part;
}

}  // namespace

void WriteModel(const Model& aModel, const ByteSink& aSink) {
  const Writer writer(aSink);
  const auto images = ImagesOf(aModel);
  writer.Put(kMark);
  writer.PutAll(aModel.name.substr(0, kLongestName));
  writer.Put(std::uint64_t{images.size()});
  for (IGLPixmap* image : images) WriteImage(writer, *image);
  writer.Put(std::uint64_t{aModel.parts.size()});
  for (const Part& part : aModel.parts) {
    writer.PutAll(part.name.substr(0, kLongestName));
    writer.Put(part.surface);
    writer.PutAll(part.vertices);
    writer.PutAll(part.colors);
    writer.PutAll(part.places);
    writer.PutAll(part.triangles);
    const auto found = std::find(images.begin(), images.end(), part.image.Get());
    writer.Put(part.image ? static_cast<std::uint64_t>(found - images.begin() + 1) : std::uint64_t{0});
  }
}

Model ModelFromBytes(std::span<const std::byte> aBytes) {
  Reader reader(aBytes);
  Reader::Require(reader.Take<std::uint64_t>() == kMark);
  Model model;
  model.name = reader.TakeAll<std::string>(kLongestName);
  std::vector<GLPtr<IGLPixmap>> images;
  for (auto count = reader.Take<std::uint64_t>(); count > 0; --count) images.push_back(TakeImage(reader));
  for (auto count = reader.Take<std::uint64_t>(); count > 0; --count) {
    model.parts.push_back(TakePart(reader, images));
    model.parts.back().id = static_cast<ULONG>(model.parts.size());
  }
  Reader::Require(reader.Rest() == 0 && !model.parts.empty() && Measure(model));
  return model;
}
